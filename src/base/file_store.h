// SPDX-License-Identifier: GPL-3.0-or-later
// Files kept safe: a file is replaced whole or not at all.
//
//   replace, where                              what stands there afterwards
//   ------------------------------------------  ------------------------------------
//   there is no file                            the new one, whole; or none
//   there was none, and one has appeared        the one that appeared
//   there is a regular file                     the old one or the new one, whole, at
//                                               every moment, a crash included
//   the name is a symbolic link                 the link; what it points at is
//                                               replaced, or created
//   the file has more names (hard links)        this name gets the new file, the others
//                                               keep the old one
//   the file's permissions, and its owner       kept; the owner where the system allows
//   the file may not be written                 the old one: it is not replaced either
//   the file holds other bytes than expected    the old one
//   anything but a regular file                 what stood there
//   nothing told                                the new file: it has been flushed to the
//                                               disk, read back and found identical
//   a failure told                              the old file; nothing is left beside it
//   a save before was killed                    what it left beside the file is gone:
//                                               a whole file of this user's, named like a
//                                               temporary, which nobody is writing
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mirelund {

/// Why a file was not read or not replaced.
enum class FileFailure : std::uint8_t {
  None,
  NoSuchFolder,  ///< or no such file, for reading
  NoPermission,
  ReadOnly,  ///< the disk
  NoSpace,   ///< or over the limit that the system sets for a file or a person
  NotAFile,  ///< a folder, a device, a pipe, links that lead in a circle
  TooLarge,
  Changed,  ///< it holds other bytes than expected, or has just appeared
  Other,    ///< the disk failed, or gave back other bytes than it was given
};

struct FileRead {
  FileFailure failure = FileFailure::None;
  std::string bytes;  ///< empty after a failure
};

class FileStore {
 public:
  FileStore() = default;
  FileStore(const FileStore&) = delete;
  FileStore& operator=(const FileStore&) = delete;
  virtual ~FileStore() = default;

  /// The bytes of a regular file of at most `most` bytes. Never reads more than
  /// `most` + 1 bytes, whatever the file's size, and never waits.
  virtual FileRead read(const std::string& path, std::size_t most) = 0;

  /// Replaces the file `path`, or creates it, as the table above says. A file that
  /// is there must hold the bytes `expected`, where they are given.
  virtual FileFailure replace(const std::string& path, std::string_view bytes,
                              const std::optional<std::string>& expected = std::nullopt) = 0;

  /// Where a replace of `path` would put the file, as an absolute path: the links of
  /// the file and of its folders are followed, the file itself need not be there. Two
  /// paths of one file give the same. Where it cannot be told (no such folder, links in
  /// a circle), the path as it is.
  virtual std::string resolved(const std::string& path) = 0;
};

/// The system's files.
FileStore& systemFiles();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Files kept safe: a file is replaced whole or not at all.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mirelund {

/// The operating system's calls that saving and reading are made of, under their
/// own names and rules: -1 and errno for a failure. Handed in, so that any of
/// them can be made to fail.
class FileCalls {
 public:
  FileCalls() = default;
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;
  virtual ~FileCalls() = default;

  virtual int open(const char* path, int flags, mode_t mode);
  virtual ssize_t read(int file, void* to, std::size_t size);
  virtual ssize_t write(int file, const void* from, std::size_t size);
  virtual int fsync(int file);
  virtual int close(int file);
  virtual int fstat(int file, struct stat* status);
  virtual int stat(const char* path, struct stat* status);
  virtual int fchown(int file, uid_t owner, gid_t group);
  virtual int fchmod(int file, mode_t mode);
  virtual ssize_t readlink(const char* path, char* to, std::size_t size);
  virtual int rename(const char* from, const char* to);
  virtual int unlink(const char* path);
};

/// The system's own calls.
FileCalls& systemFiles();

/// The bytes of a regular file of at most `most` bytes; nothing for anything
/// else. Never reads more than `most` + 1 bytes, whatever the file's size.
std::optional<std::string> readFile(FileCalls& files, const std::string& path, std::size_t most);

/// Replaces the file `path`, or creates it, so that at every moment, a crash
/// included, the old file or the new one stands there whole: writes a temporary
/// file beside it, flushes it to the disk, reads it back and compares, renames it
/// into place and flushes the directory. False when any step before the last
/// fails: the old file stands, and the temporary is removed. True only when the
/// new file has read back identical. A directory that cannot be flushed is no
/// failure: the new file is in place by then.
///
/// A symbolic link stays one, and what it points at is replaced, or created where
/// nothing is there. Of hard links, this name gets the new file; the others keep
/// the old one. The file's permissions and, where the system allows, its owner
/// are kept. A file that may not be written is not replaced either; nor is
/// anything but a regular file.
bool replaceFile(FileCalls& files, const std::string& path, std::string_view bytes);

}  // namespace mirelund

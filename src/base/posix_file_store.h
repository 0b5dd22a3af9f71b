// SPDX-License-Identifier: GPL-3.0-or-later
// The file store on a POSIX system, and the calls that it makes.
//
// A new file goes into place in one of two ways:
//
//   step          nameless                         named, where that is not to be had
//   ------------  -------------------------------  -----------------------------------
//   clear away    stale temporaries beside the target are removed
//   make          in the target's folder, without  beside the target, as
//                 a name (O_TMPFILE)               .mirelund-%08x.tmp, if that is free
//   lock          flock, until it is in place      the same; another name if somebody
//                                                  took it for stale before that
//   write         the bytes, then the old file's owner and permissions; until then
//                 nobody else may read it
//   make sure     fsync, read back, compare; compare the old file with what is expected
//   put in place  no old file: link to its name;   rename
//                 else link to a temporary name
//                 and rename
//   flush         fsync of the folder
//
// So a killed save leaves nothing, but for the moment between a nameless file's link
// and its rename, or in the named way, a temporary with the records. It is stale: a
// regular file of exactly that name's pattern and this user's, whose lock is free.
#pragma once

#include <dirent.h>
#include <sys/stat.h>
#include <sys/types.h>

#include "base/file_store.h"

namespace mirelund {

/// The operating system's calls that saving and reading are made of, under their
/// own names and rules: -1 or nullptr, and errno, for a failure. Handed in, so that
/// any of them can be made to fail.
class FileCalls {
 public:
  FileCalls() = default;
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;
  virtual ~FileCalls() = default;

  virtual int open(const char* path, int flags, mode_t mode);
  virtual ssize_t read(int file, void* to, std::size_t size);
  virtual ssize_t write(int file, const void* from, std::size_t size);
  virtual off_t lseek(int file, off_t offset, int from);
  virtual int fsync(int file);
  virtual int flock(int file, int how);
  virtual int close(int file);
  virtual int fstat(int file, struct stat* status);
  virtual int stat(const char* path, struct stat* status);
  virtual int fchown(int file, uid_t owner, gid_t group);
  virtual int fchmod(int file, mode_t mode);
  virtual ssize_t readlink(const char* path, char* to, std::size_t size);
  virtual char* realpath(const char* path, char* to);
  virtual int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags);
  virtual int rename(const char* from, const char* to);
  virtual int unlink(const char* path);
  virtual DIR* opendir(const char* path);
  virtual dirent* readdir(DIR* folder);
  virtual int closedir(DIR* folder);
};

/// Replaces as the table says. A nameless file that cannot be made or linked is no
/// failure, the named way is then gone; nor is a lock that is not to be had, a stale
/// file that stays, or a folder that cannot be flushed: the new file is in place by
/// then.
class PosixFileStore : public FileStore {
 public:
  explicit PosixFileStore(FileCalls& calls) : calls_(calls) {}

  FileRead read(const std::string& path, std::size_t most) override;
  FileFailure replace(const std::string& path, std::string_view bytes,
                      const std::optional<std::string>& expected) override;
  std::string resolved(const std::string& path) override;

 private:
  FileCalls& calls_;
};

}  // namespace mirelund

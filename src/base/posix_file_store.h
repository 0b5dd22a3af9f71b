// SPDX-License-Identifier: GPL-3.0-or-later
// The file store on a POSIX system, and the calls that it makes.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include "base/file_store.h"

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

/// Replaces by writing a temporary file beside the target, flushing it to the
/// disk, reading it back, renaming it into place and flushing the folder. A folder
/// that cannot be flushed is no failure: the new file is in place by then.
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

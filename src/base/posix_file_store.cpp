// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/posix_file_store.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <random>
#include <utility>

#include "base/file_name.h"

namespace mirelund {

int FileCalls::open(const char* path, int flags, mode_t mode) {
  return ::open(path, flags, mode);
}
ssize_t FileCalls::read(int file, void* to, std::size_t size) {
  return ::read(file, to, size);
}
ssize_t FileCalls::write(int file, const void* from, std::size_t size) {
  return ::write(file, from, size);
}
int FileCalls::fsync(int file) {
  return ::fsync(file);
}
int FileCalls::close(int file) {
  return ::close(file);
}
int FileCalls::fstat(int file, struct stat* status) {
  return ::fstat(file, status);
}
int FileCalls::stat(const char* path, struct stat* status) {
  return ::stat(path, status);
}
int FileCalls::fchown(int file, uid_t owner, gid_t group) {
  return ::fchown(file, owner, group);
}
int FileCalls::fchmod(int file, mode_t mode) {
  return ::fchmod(file, mode);
}
ssize_t FileCalls::readlink(const char* path, char* to, std::size_t size) {
  return ::readlink(path, to, size);
}
int FileCalls::rename(const char* from, const char* to) {
  return ::rename(from, to);
}
int FileCalls::unlink(const char* path) {
  return ::unlink(path);
}

FileStore& systemFiles() {
  static FileCalls calls;
  static PosixFileStore files(calls);
  return files;
}

namespace {

constexpr mode_t kPermissionBits = 07777;
constexpr mode_t kNewFile = 0666;
constexpr mode_t kPrivate = 0600;
constexpr int kMostLinks = 40;
constexpr int kMostNames = 100;

// Closes what was opened, on every way out.
class OpenFile {
 public:
  OpenFile(FileCalls& calls, const std::string& path, int flags, mode_t mode = 0)
      : calls_(calls), file_(calls.open(path.c_str(), flags | O_CLOEXEC, mode)) {}
  ~OpenFile() {
    if (isOpen()) calls_.close(file_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool isOpen() const { return file_ >= 0; }
  int number() const { return file_; }

  // What was written late can still fail here.
  bool close() { return calls_.close(std::exchange(file_, -1)) == 0; }

 private:
  FileCalls& calls_;
  int file_;
};

// What the call that has just failed says of the reason.
FileFailure reasonOfErrno() {
  switch (errno) {
    case ENOENT:
    case ENOTDIR:
      return FileFailure::NoSuchFolder;
    case EACCES:
    case EPERM:
      return FileFailure::NoPermission;
    case EROFS:
      return FileFailure::ReadOnly;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return FileFailure::NoSpace;
    default:
      return FileFailure::Other;
  }
}

FileFailure failureUnless(bool good) {
  return good ? FileFailure::None : reasonOfErrno();
}

// Reads to the end of the file, or to more than `most` bytes.
FileFailure readAll(FileCalls& calls, int file, std::size_t most, std::string& bytes) {
  std::array<char, 65'536> room;
  for (;;) {
    const std::size_t wanted = std::min(room.size(), most + 1 - bytes.size());
    const ssize_t got = calls.read(file, room.data(), wanted);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return reasonOfErrno();
    if (got == 0) return FileFailure::None;
    bytes.append(room.data(), static_cast<std::size_t>(got));
    if (bytes.size() > most) return FileFailure::TooLarge;
  }
}

FileFailure writeAll(FileCalls& calls, int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = calls.write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return reasonOfErrno();
    if (written == 0) return FileFailure::Other;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return FileFailure::None;
}

// The directory part of a path, with its slash; empty for the current one.
std::string directoryOf(const std::string& path) {
  return path.substr(0, path.size() - fileName(path).size());
}

// Where the path's links lead; empty when they lead in a circle.
std::string followLinks(FileCalls& calls, std::string path) {
  std::array<char, PATH_MAX> room;
  for (int links = 0; links < kMostLinks; ++links) {
    const ssize_t size = calls.readlink(path.c_str(), room.data(), room.size());
    if (size < 0) return errno == EINVAL || errno == ENOENT ? path : std::string();
    const std::string target(room.data(), static_cast<std::size_t>(size));
    path = target.starts_with('/') ? target : directoryOf(path).append(target);
  }
  return {};
}

// The file that a save replaces, if there is one.
struct Target {
  bool exists = false;
  struct stat status {};
};

// A failure where nothing may be saved.
FileFailure inspect(FileCalls& calls, const std::string& path, Target& target) {
  if (calls.stat(path.c_str(), &target.status) != 0) return failureUnless(errno == ENOENT);
  target.exists = true;
  if (!S_ISREG(target.status.st_mode)) return FileFailure::NotAFile;
  // Renaming asks for no right to the file itself; the user's lock is kept.
  return failureUnless(OpenFile(calls, path, O_WRONLY).isOpen());
}

std::string temporaryName(const std::string& path) {
  std::random_device random;
  std::array<char, 32> name;
  std::snprintf(name.data(), name.size(), ".mirelund-%08x.tmp", random());
  return directoryOf(path) + name.data();
}

// Gives the temporary the old file's owner and permissions. The owner is lost
// where the system does not let it be given away.
FileFailure keepRights(FileCalls& calls, int file, const Target& target) {
  struct stat own {};
  if (calls.fstat(file, &own) != 0) return reasonOfErrno();
  if (own.st_uid != target.status.st_uid || own.st_gid != target.status.st_gid)
    static_cast<void>(calls.fchown(file, target.status.st_uid, target.status.st_gid));
  return failureUnless(calls.fchmod(file, target.status.st_mode & kPermissionBits) == 0);
}

// Whether the file holds just these bytes; `otherwise` where it holds others.
FileFailure compare(FileCalls& calls, const std::string& path, std::string_view bytes,
                    FileFailure otherwise) {
  OpenFile file(calls, path, O_RDONLY);
  if (!file.isOpen()) return reasonOfErrno();
  std::string held;
  const FileFailure failure = readAll(calls, file.number(), bytes.size(), held);
  if (failure == FileFailure::TooLarge || (failure == FileFailure::None && held != bytes))
    return otherwise;
  if (failure != FileFailure::None) return failure;
  return failureUnless(file.close());
}

FileFailure fill(FileCalls& calls, OpenFile& file, const Target& target, std::string_view bytes) {
  FileFailure failure = writeAll(calls, file.number(), bytes);
  if (failure == FileFailure::None && target.exists)
    failure = keepRights(calls, file.number(), target);
  if (failure != FileFailure::None) return failure;
  return failureUnless(calls.fsync(file.number()) == 0 && file.close());
}

// Everything between the temporary's making and its going into place.
FileFailure putInPlace(FileCalls& calls, OpenFile& file, const std::string& temporary,
                       const std::string& place, const Target& target, std::string_view bytes,
                       const std::optional<std::string>& expected) {
  FileFailure failure = fill(calls, file, target, bytes);
  if (failure == FileFailure::None) failure = compare(calls, temporary, bytes, FileFailure::Other);
  if (failure == FileFailure::None && target.exists && expected)
    failure = compare(calls, place, *expected, FileFailure::Changed);
  if (failure != FileFailure::None) return failure;
  return failureUnless(calls.rename(temporary.c_str(), place.c_str()) == 0);
}

}  // namespace

FileRead PosixFileStore::read(const std::string& path, std::size_t most) {
  // Not to wait for a pipe's other end.
  OpenFile file(calls_, path, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (!file.isOpen() || calls_.fstat(file.number(), &status) != 0) return {reasonOfErrno(), {}};
  if (!S_ISREG(status.st_mode)) return {FileFailure::NotAFile, {}};
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > most) return {FileFailure::TooLarge, {}};
  FileRead read;
  read.bytes.reserve(size + 1);
  read.failure = readAll(calls_, file.number(), most, read.bytes);
  if (read.failure != FileFailure::None) read.bytes.clear();
  return read;
}

FileFailure PosixFileStore::replace(const std::string& path, std::string_view bytes,
                                    const std::optional<std::string>& expected) {
  const std::string place = followLinks(calls_, path);
  if (fileName(place).empty()) return FileFailure::NotAFile;
  Target target;
  if (const FileFailure refused = inspect(calls_, place, target); refused != FileFailure::None)
    return refused;

  for (int names = 0; names < kMostNames; ++names) {
    const std::string temporary = temporaryName(place);
    OpenFile file(calls_, temporary, O_WRONLY | O_CREAT | O_EXCL,
                  target.exists ? kPrivate : kNewFile);
    if (!file.isOpen()) {
      if (errno == EEXIST) continue;
      return reasonOfErrno();
    }
    const FileFailure failure = putInPlace(calls_, file, temporary, place, target, bytes, expected);
    if (failure != FileFailure::None) {
      calls_.unlink(temporary.c_str());
      return failure;
    }
    const std::string directory = directoryOf(place);
    OpenFile folder(calls_, directory.empty() ? "." : directory, O_RDONLY | O_DIRECTORY);
    if (folder.isOpen()) static_cast<void>(calls_.fsync(folder.number()));
    return FileFailure::None;
  }
  return FileFailure::Other;
}

std::string PosixFileStore::resolved(const std::string& path) {
  std::error_code failed;
  const auto place = std::filesystem::weakly_canonical(path, failed);
  return failed ? path : place.string();
}

}  // namespace mirelund

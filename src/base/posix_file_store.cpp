// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/posix_file_store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

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
off_t FileCalls::lseek(int file, off_t offset, int from) {
  return ::lseek(file, offset, from);
}
int FileCalls::fsync(int file) {
  return ::fsync(file);
}
int FileCalls::flock(int file, int how) {
  return ::flock(file, how);
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
char* FileCalls::realpath(const char* path, char* to) {
  return ::realpath(path, to);
}
int FileCalls::linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
  return ::linkat(fromFolder, from, toFolder, to, flags);
}
int FileCalls::rename(const char* from, const char* to) {
  return ::rename(from, to);
}
int FileCalls::unlink(const char* path) {
  return ::unlink(path);
}
DIR* FileCalls::opendir(const char* path) {
  return ::opendir(path);
}
dirent* FileCalls::readdir(DIR* folder) {
  return ::readdir(folder);
}
int FileCalls::closedir(DIR* folder) {
  return ::closedir(folder);
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
constexpr std::string_view kTemporaryBegin = ".mirelund-";
constexpr std::size_t kTemporaryDigits = 8;
constexpr std::string_view kTemporaryEnd = ".tmp";

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

 private:
  FileCalls& calls_;
  const int file_;
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
    case ELOOP:
      return FileFailure::NotAFile;
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

// The folder part of a path, with its slash; empty for the current one.
std::string beside(const std::string& path) {
  return path.substr(0, path.size() - fileName(path).size());
}

std::string folderOf(const std::string& path) {
  const std::string folder = beside(path);
  return folder.empty() ? "." : folder;
}

// Puts where the path's links lead in its place.
FileFailure followLinks(FileCalls& calls, std::string& path) {
  std::array<char, PATH_MAX> room;
  for (int links = 0; links < kMostLinks; ++links) {
    const ssize_t size = calls.readlink(path.c_str(), room.data(), room.size());
    if (size < 0) return failureUnless(errno == EINVAL || errno == ENOENT);
    const std::string target(room.data(), static_cast<std::size_t>(size));
    path = target.starts_with('/') ? target : beside(path).append(target);
  }
  return FileFailure::NotAFile;
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
  return beside(path) + name.data();
}

bool isTemporaryName(std::string_view name) {
  return name.size() == kTemporaryBegin.size() + kTemporaryDigits + kTemporaryEnd.size() &&
         name.starts_with(kTemporaryBegin) && name.ends_with(kTemporaryEnd) &&
         name.find_first_not_of("0123456789abcdef", kTemporaryBegin.size()) ==
             kTemporaryBegin.size() + kTemporaryDigits;
}

// The names in a folder that temporaries have; none where it may not be listed.
std::vector<std::string> temporariesIn(FileCalls& calls, const std::string& folder) {
  const auto close = [&calls](DIR* open) { calls.closedir(open); };
  const std::unique_ptr<DIR, decltype(close)> open(calls.opendir(folder.c_str()), close);
  std::vector<std::string> found;
  if (!open) return found;
  while (const dirent* entry = calls.readdir(open.get()))
    if (isTemporaryName(entry->d_name)) found.emplace_back(entry->d_name);
  return found;
}

// Whether a file with such a name is this user's, and nobody writes it.
bool isStale(FileCalls& calls, int file) {
  struct stat status {};
  return calls.fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
         calls.flock(file, LOCK_EX | LOCK_NB) == 0;
}

// What killed saves left beside the path.
void removeStale(FileCalls& calls, const std::string& path) {
  for (const std::string& name : temporariesIn(calls, folderOf(path))) {
    const std::string temporary = beside(path) + name;
    // For writing, because some disks lock nothing else; and never waits for a pipe.
    const OpenFile file(calls, temporary, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
    if (file.isOpen() && isStale(calls, file.number())) calls.unlink(temporary.c_str());
  }
}

// Gives the new file the old one's owner and permissions. The owner is lost where
// the system does not let it be given away.
FileFailure keepRights(FileCalls& calls, int file, const Target& target) {
  struct stat own {};
  if (calls.fstat(file, &own) != 0) return reasonOfErrno();
  if (own.st_uid != target.status.st_uid || own.st_gid != target.status.st_gid)
    static_cast<void>(calls.fchown(file, target.status.st_uid, target.status.st_gid));
  return failureUnless(calls.fchmod(file, target.status.st_mode & kPermissionBits) == 0);
}

// Whether the file holds just these bytes; `otherwise` where it holds others.
FileFailure compare(FileCalls& calls, int file, std::string_view bytes, FileFailure otherwise) {
  std::string held;
  const FileFailure failure = readAll(calls, file, bytes.size(), held);
  if (failure == FileFailure::TooLarge) return otherwise;
  if (failure != FileFailure::None) return failure;
  return held == bytes ? FileFailure::None : otherwise;
}

// The way of one new file into its place.
class Replacement {
 public:
  Replacement(FileCalls& calls, const std::string& place, const Target& target,
              std::string_view bytes, const std::optional<std::string>& expected)
      : calls_(calls), place_(place), target_(target), bytes_(bytes), expected_(expected) {}

  FileFailure run() {
    if (const std::optional<FileFailure> told = goNameless()) return *told;
    return goNamed();
  }

 private:
  mode_t mode() const { return target_.exists ? kPrivate : kNewFile; }

  // Nothing where the system has no such way.
  std::optional<FileFailure> goNameless() {
    const OpenFile file(calls_, folderOf(place_), O_RDWR | O_TMPFILE, mode());
    if (!file.isOpen()) return std::nullopt;
    // Free as yet; and where a disk has no locks, nobody finds a file stale.
    static_cast<void>(calls_.flock(file.number(), LOCK_EX | LOCK_NB));
    if (const FileFailure failure = prepare(file.number()); failure != FileFailure::None)
      return failure;
    return link(file.number());
  }

  FileFailure goNamed() {
    for (int names = 0; names < kMostNames; ++names) {
      const std::string temporary = temporaryName(place_);
      const OpenFile file(calls_, temporary, O_RDWR | O_CREAT | O_EXCL, mode());
      if (!file.isOpen() && errno == EEXIST) continue;
      if (!file.isOpen()) return reasonOfErrno();
      if (isStillThere(file.number())) return rename(temporary, prepare(file.number()));
      calls_.unlink(temporary.c_str());
    }
    return FileFailure::Other;
  }

  // Locks the file, unless somebody took it for stale before that.
  bool isStillThere(int file) {
    if (calls_.flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
    struct stat own {};
    return calls_.fstat(file, &own) != 0 || own.st_nlink > 0;
  }

  // Everything between the file's making and its going into place.
  FileFailure prepare(int file) {
    FileFailure failure = writeAll(calls_, file, bytes_);
    if (failure == FileFailure::None && target_.exists) failure = keepRights(calls_, file, target_);
    if (failure != FileFailure::None) return failure;
    if (calls_.fsync(file) != 0 || calls_.lseek(file, 0, SEEK_SET) != 0) return reasonOfErrno();
    failure = compare(calls_, file, bytes_, FileFailure::Other);
    return failure == FileFailure::None ? compareTarget() : failure;
  }

  // Whether there is still no file, or the one that is expected.
  FileFailure compareTarget() {
    struct stat status {};
    if (!target_.exists && calls_.stat(place_.c_str(), &status) == 0) return FileFailure::Changed;
    if (!target_.exists || !expected_) return FileFailure::None;
    const OpenFile old(calls_, place_, O_RDONLY | O_NONBLOCK);
    if (!old.isOpen()) return reasonOfErrno();
    return compare(calls_, old.number(), *expected_, FileFailure::Changed);
  }

  // Nothing where the system gives the nameless file no name.
  std::optional<FileFailure> link(int file) {
    const std::string own = "/proc/self/fd/" + std::to_string(file);
    for (int names = 0; names < kMostNames; ++names) {
      const std::string name = target_.exists ? temporaryName(place_) : place_;
      if (calls_.linkat(AT_FDCWD, own.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
        return target_.exists ? rename(name, FileFailure::None) : FileFailure::None;
      if (errno != EEXIST) return std::nullopt;
      if (!target_.exists) return FileFailure::Changed;
    }
    return FileFailure::Other;
  }

  // The last step; where it or one before it failed, the name goes.
  FileFailure rename(const std::string& temporary, FileFailure failure) {
    if (failure == FileFailure::None)
      failure = failureUnless(calls_.rename(temporary.c_str(), place_.c_str()) == 0);
    if (failure != FileFailure::None) calls_.unlink(temporary.c_str());
    return failure;
  }

  FileCalls& calls_;
  const std::string& place_;
  const Target& target_;
  const std::string_view bytes_;
  const std::optional<std::string>& expected_;
};

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
  std::string place = path;
  FileFailure failure = followLinks(calls_, place);
  if (failure != FileFailure::None) return failure;
  if (fileName(place).empty()) return FileFailure::NotAFile;
  Target target;
  failure = inspect(calls_, place, target);
  if (failure != FileFailure::None) return failure;

  const std::string beside = folderOf(place);
  removeStale(calls_, place);
  failure = Replacement(calls_, place, target, bytes, expected).run();
  if (failure != FileFailure::None) return failure;
  // The file is there: nothing that could fail comes behind it.
  const OpenFile folder(calls_, beside, O_RDONLY | O_DIRECTORY);
  if (folder.isOpen()) static_cast<void>(calls_.fsync(folder.number()));
  return FileFailure::None;
}

std::string PosixFileStore::resolved(const std::string& path) {
  std::string place = path;
  if (followLinks(calls_, place) != FileFailure::None || fileName(place).empty()) return path;
  std::array<char, PATH_MAX> room;
  if (calls_.realpath(folderOf(place).c_str(), room.data()) == nullptr) return path;
  std::string folder = room.data();
  if (!folder.ends_with('/')) folder += '/';
  return folder.append(fileName(place));
}

}  // namespace mirelund

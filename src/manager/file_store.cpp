// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/file_store.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <random>
#include <utility>

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

FileCalls& systemFiles() {
  static FileCalls files;
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
  OpenFile(FileCalls& files, const std::string& path, int flags, mode_t mode = 0)
      : files_(files), file_(files.open(path.c_str(), flags | O_CLOEXEC, mode)) {}
  ~OpenFile() {
    if (isOpen()) files_.close(file_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool isOpen() const { return file_ >= 0; }
  int number() const { return file_; }

  // What was written late can still fail here.
  bool close() { return files_.close(std::exchange(file_, -1)) == 0; }

 private:
  FileCalls& files_;
  int file_;
};

// Reads to the end of the file; false for an error or more than `most` bytes.
bool readAll(FileCalls& files, int file, std::size_t most, std::string& bytes) {
  std::array<char, 65'536> room;
  for (;;) {
    const std::size_t wanted = std::min(room.size(), most + 1 - bytes.size());
    const ssize_t got = files.read(file, room.data(), wanted);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) return true;
    bytes.append(room.data(), static_cast<std::size_t>(got));
    if (bytes.size() > most) return false;
  }
}

bool writeAll(FileCalls& files, int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = files.write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// The directory part of a path, with its slash; empty for the current one.
std::string directoryOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

// Where the path's links lead; empty when they lead in a circle.
std::string followLinks(FileCalls& files, std::string path) {
  std::array<char, PATH_MAX> room;
  for (int links = 0; links < kMostLinks; ++links) {
    const ssize_t size = files.readlink(path.c_str(), room.data(), room.size());
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

// False where nothing may be saved.
bool inspect(FileCalls& files, const std::string& path, Target& target) {
  if (files.stat(path.c_str(), &target.status) != 0) return errno == ENOENT;
  target.exists = true;
  if (!S_ISREG(target.status.st_mode)) return false;
  // Renaming asks for no right to the file itself; the user's lock is kept.
  return OpenFile(files, path, O_WRONLY).isOpen();
}

std::string temporaryName(const std::string& path) {
  std::random_device random;
  std::array<char, 32> name;
  std::snprintf(name.data(), name.size(), ".mirelund-%08x.tmp", random());
  return directoryOf(path) + name.data();
}

// Gives the temporary the old file's owner and permissions. The owner is lost
// where the system does not let it be given away.
bool keepRights(FileCalls& files, int file, const Target& target) {
  struct stat own {};
  if (files.fstat(file, &own) != 0) return false;
  if (own.st_uid != target.status.st_uid || own.st_gid != target.status.st_gid)
    static_cast<void>(files.fchown(file, target.status.st_uid, target.status.st_gid));
  return files.fchmod(file, target.status.st_mode & kPermissionBits) == 0;
}

bool readsBack(FileCalls& files, const std::string& path, std::string_view bytes) {
  OpenFile file(files, path, O_RDONLY);
  std::string back;
  return file.isOpen() && readAll(files, file.number(), bytes.size(), back) && back == bytes &&
         file.close();
}

bool fill(FileCalls& files, OpenFile& file, const Target& target, std::string_view bytes) {
  return writeAll(files, file.number(), bytes) &&
         (!target.exists || keepRights(files, file.number(), target)) &&
         files.fsync(file.number()) == 0 && file.close();
}

}  // namespace

std::optional<std::string> readFile(FileCalls& files, const std::string& path, std::size_t most) {
  // Not to wait for a pipe's other end.
  OpenFile file(files, path, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (!file.isOpen() || files.fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode) ||
      status.st_size < 0 || static_cast<std::size_t>(status.st_size) > most)
    return std::nullopt;
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(status.st_size) + 1);
  if (!readAll(files, file.number(), most, bytes)) return std::nullopt;
  return bytes;
}

bool replaceFile(FileCalls& files, const std::string& path, std::string_view bytes) {
  const std::string place = followLinks(files, path);
  Target target;
  if (place.empty() || place.ends_with('/') || !inspect(files, place, target)) return false;

  for (int names = 0; names < kMostNames; ++names) {
    const std::string temporary = temporaryName(place);
    OpenFile file(files, temporary, O_WRONLY | O_CREAT | O_EXCL,
                  target.exists ? kPrivate : kNewFile);
    if (!file.isOpen()) {
      if (errno == EEXIST) continue;
      return false;
    }
    if (!fill(files, file, target, bytes) || !readsBack(files, temporary, bytes) ||
        files.rename(temporary.c_str(), place.c_str()) != 0) {
      files.unlink(temporary.c_str());
      return false;
    }
    const std::string directory = directoryOf(place);
    OpenFile folder(files, directory.empty() ? "." : directory, O_RDONLY | O_DIRECTORY);
    if (folder.isOpen()) static_cast<void>(files.fsync(folder.number()));
    return true;
  }
  return false;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of a save, watched: every one says what it is before it is made, and is
// made, or fails, as a test wants it. And the two ways that a save can go.
#pragma once

#include <fcntl.h>
#include <sys/file.h>

#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/posix_file_store.h"

namespace mirelund {

/// How a new file goes into place.
enum class Way { Nameless, Named };

inline std::string wayName(Way way) {
  return way == Way::Nameless ? "Nameless" : "Named";
}

/// Whether the folder's disk has files without a name.
inline bool hasNameless(const std::string& folder) {
  const int file = ::open(folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0600);
  if (file >= 0) ::close(file);
  return file >= 0;
}

/// Whether it is the name of a save's temporary file.
inline bool isTemporary(std::string_view name) {
  constexpr std::string_view kBefore = ".mirelund-";
  constexpr std::string_view kBehind = ".tmp";
  return name.size() == kBefore.size() + 8 + kBehind.size() && name.starts_with(kBefore) &&
         name.ends_with(kBehind) &&
         name.find_first_not_of("0123456789abcdef", kBefore.size()) == kBefore.size() + 8;
}

/// A call is a text: its name, the files without their folders ("*" a temporary, "#"
/// a nameless file, "/" a folder) and what else decides ("open * RDWR|CREAT 0600").
class WatchedCalls : public FileCalls {
 public:
  /// Where the named way is wanted, no file is to be had without a name.
  explicit WatchedCalls(Way way = Way::Nameless) : way_(way) {}

  /// The most that one read or write moves.
  std::size_t chunk = SIZE_MAX;
  /// What every file is said to be, if anything else than it is.
  std::function<void(struct stat&)> pretend;

  int open(const char* path, int flags, mode_t mode) override {
    std::string what = "open " + shortName(path) + ' ' + flagNames(flags);
    if ((flags & O_CREAT) != 0 || isNameless(flags)) what += ' ' + octal(mode);
    return watched(what, [&] {
      if (way_ == Way::Named && isNameless(flags)) return errno = EOPNOTSUPP, -1;
      return FileCalls::open(path, flags, mode);
    });
  }
  ssize_t read(int file, void* to, std::size_t size) override {
    return watched("read", [&] { return FileCalls::read(file, to, std::min(size, chunk)); });
  }
  ssize_t write(int file, const void* from, std::size_t size) override {
    const std::size_t now = std::min(size, chunk);
    return watched("write " + std::to_string(now),
                   [&] { return FileCalls::write(file, from, now); });
  }
  off_t lseek(int file, off_t offset, int from) override {
    return watched("lseek " + std::to_string(offset),
                   [&] { return FileCalls::lseek(file, offset, from); });
  }
  int fsync(int file) override {
    return watched("fsync", [&] { return FileCalls::fsync(file); });
  }
  int flock(int file, int how) override {
    return watched(how == (LOCK_EX | LOCK_NB) ? "flock EX|NB" : "flock " + std::to_string(how),
                   [&] { return FileCalls::flock(file, how); });
  }
  int close(int file) override {
    // The system has closed it even where it says that it failed.
    return watched(
        "close", [&] { return FileCalls::close(file); }, [&] { FileCalls::close(file); });
  }
  int fstat(int file, struct stat* status) override {
    return watched("fstat", [&] { return pretended(FileCalls::fstat(file, status), status); });
  }
  int stat(const char* path, struct stat* status) override {
    return watched("stat " + shortName(path),
                   [&] { return pretended(FileCalls::stat(path, status), status); });
  }
  int fchown(int file, uid_t owner, gid_t group) override {
    return watched("fchown " + std::to_string(owner) + ' ' + std::to_string(group),
                   [&] { return FileCalls::fchown(file, owner, group); });
  }
  int fchmod(int file, mode_t mode) override {
    return watched("fchmod " + octal(mode), [&] { return FileCalls::fchmod(file, mode); });
  }
  ssize_t readlink(const char* path, char* to, std::size_t size) override {
    return watched("readlink " + shortName(path),
                   [&] { return FileCalls::readlink(path, to, size); });
  }
  char* realpath(const char* path, char* to) override {
    return watched("realpath", [&] { return FileCalls::realpath(path, to); });
  }
  int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) override {
    return watched("linkat " + shortName(from) + ' ' + shortName(to),
                   [&] { return FileCalls::linkat(fromFolder, from, toFolder, to, flags); });
  }
  int rename(const char* from, const char* to) override {
    return watched("rename " + shortName(from) + ' ' + shortName(to),
                   [&] { return FileCalls::rename(from, to); });
  }
  int unlink(const char* path) override {
    return watched("unlink " + shortName(path), [&] { return FileCalls::unlink(path); });
  }
  DIR* opendir(const char* path) override {
    return watched("opendir", [&] { return FileCalls::opendir(path); });
  }
  dirent* readdir(DIR* folder) override {
    return watched("readdir", [&] { return FileCalls::readdir(folder); });
  }
  int closedir(DIR* folder) override {
    return watched(
        "closedir", [&] { return FileCalls::closedir(folder); },
        [&] { FileCalls::closedir(folder); });
  }

 protected:
  /// The errno with which the call fails; with 0 it is made.
  virtual int before(const std::string& call) = 0;
  virtual void after() {}

 private:
  template <typename MakeCall, typename MakeFailed>
  auto watched(const std::string& what, MakeCall makeCall, MakeFailed makeFailed)
      -> decltype(makeCall()) {
    using Result = decltype(makeCall());
    if (const int error = before(what); error != 0) {
      makeFailed();
      errno = error;
      if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
      } else {
        return -1;
      }
    }
    const Result result = makeCall();
    after();
    return result;
  }
  template <typename MakeCall>
  auto watched(const std::string& what, MakeCall makeCall) -> decltype(makeCall()) {
    return watched(what, makeCall, [] {});
  }

  int pretended(int result, struct stat* status) const {
    if (pretend) pretend(*status);
    return result;
  }

  static bool isNameless(int flags) { return (flags & O_TMPFILE) == O_TMPFILE; }

  static std::string octal(mode_t mode) {
    char text[16];
    std::snprintf(text, sizeof text, "%04o", mode);
    return text;
  }
  static std::string shortName(const std::string& path) {
    if (path.starts_with("/proc/self/fd/")) return "#";
    const std::string name = path.substr(path.rfind('/') + 1);
    if (name.empty()) return "/";
    return isTemporary(name) ? "*" : name;
  }
  static std::string flagNames(int flags) {
    std::string names = (flags & O_ACCMODE) == O_WRONLY ? "WRONLY"
                        : (flags & O_ACCMODE) == O_RDWR ? "RDWR"
                                                        : "RDONLY";
    if ((flags & O_CREAT) != 0) names += "|CREAT";
    if ((flags & O_EXCL) != 0) names += "|EXCL";
    if (isNameless(flags)) {
      names += "|TMPFILE";
    } else if ((flags & O_DIRECTORY) != 0) {
      names += "|DIRECTORY";
    }
    if ((flags & O_NOFOLLOW) != 0) names += "|NOFOLLOW";
    if ((flags & O_NONBLOCK) != 0) names += "|NONBLOCK";
    if ((flags & O_CLOEXEC) != 0) names += "|CLOEXEC";
    return names;
  }

  Way way_;
};

/// Notes the calls, and lets those fail that a test names.
class NotingCalls : public WatchedCalls {
 public:
  using WatchedCalls::WatchedCalls;

  std::vector<std::string> made;
  std::function<int(const std::string& call)> failing;  ///< its errno, or 0

  std::ptrdiff_t count(std::string_view call) const {
    return std::ranges::count_if(made, [&](const std::string& m) { return m.starts_with(call); });
  }

 protected:
  int before(const std::string& call) override {
    made.push_back(call);
    return failing ? failing(call) : 0;
  }
};

/// Lets the n-th call fail, of one kind or of any.
class FaultyCalls : public WatchedCalls {
 public:
  using WatchedCalls::WatchedCalls;

  int failing = 0;  ///< 1: the first; 0: none
  int error = EIO;
  bool persistent = false;  ///< every later call of the kind fails too
  std::string only;         ///< how the calls begin that count
  std::string failed;       ///< the first that failed
  bool left = false;        ///< it failed to remove a file
  int calls = 0;

 protected:
  int before(const std::string& call) override {
    if (!call.starts_with(only)) return 0;
    ++calls;
    const bool now = calls == failing || (persistent && failing > 0 && calls > failing);
    if (!now) return 0;
    if (failed.empty()) failed = call;
    left = left || call.starts_with("unlink");
    return error;
  }
};

}  // namespace mirelund

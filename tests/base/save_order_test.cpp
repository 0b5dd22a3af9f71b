// SPDX-License-Identifier: GPL-3.0-or-later
// The order in which a save makes its calls, and what each of them decides: a crash
// can come between any two, so the order is the promise.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <functional>

#include "base/posix_file_store.h"
#include "manager/database/databases.h"

namespace mirelund {
namespace {

// Makes the system's calls, notes them, and lets those fail that a test names.
class NotingCalls : public FileCalls {
 public:
  std::vector<std::string> made;
  std::function<int(const std::string& call)> failing;  // its errno, or 0
  std::optional<uid_t> owner;                           // what files say of theirs
  std::optional<gid_t> group;
  bool writesNothing = false;

  int open(const char* path, int flags, mode_t mode) override {
    std::string what = "open " + shortName(path) + ' ' + flagNames(flags);
    if ((flags & O_CREAT) != 0) {
      char octal[8];
      std::snprintf(octal, sizeof octal, " %04o", mode);
      what += octal;
    }
    return noted(what, [&] { return FileCalls::open(path, flags, mode); });
  }
  ssize_t read(int file, void* to, std::size_t size) override {
    return noted("read", [&] { return FileCalls::read(file, to, size); });
  }
  ssize_t write(int file, const void* from, std::size_t size) override {
    return noted("write " + std::to_string(size),
                 [&] { return writesNothing ? ssize_t{0} : FileCalls::write(file, from, size); });
  }
  int fsync(int file) override {
    return noted("fsync", [&] { return FileCalls::fsync(file); });
  }
  int close(int file) override {
    // The system has closed it all the same.
    const int closed = FileCalls::close(file);
    return noted("close", [&] { return closed; });
  }
  int fstat(int file, struct stat* status) override {
    return noted("fstat", [&] { return FileCalls::fstat(file, status); });
  }
  int stat(const char* path, struct stat* status) override {
    return noted("stat " + shortName(path), [&] {
      const int result = FileCalls::stat(path, status);
      if (owner) status->st_uid = *owner;
      if (group) status->st_gid = *group;
      return result;
    });
  }
  int fchown(int file, uid_t user, gid_t toGroup) override {
    return noted("fchown " + std::to_string(user) + ' ' + std::to_string(toGroup),
                 [&] { return FileCalls::fchown(file, getuid(), getgid()); });
  }
  int fchmod(int file, mode_t mode) override {
    char octal[16];
    std::snprintf(octal, sizeof octal, "fchmod %04o", mode);
    return noted(octal, [&] { return FileCalls::fchmod(file, mode); });
  }
  ssize_t readlink(const char* path, char* to, std::size_t size) override {
    return noted("readlink " + shortName(path),
                 [&] { return FileCalls::readlink(path, to, size); });
  }
  int rename(const char* from, const char* to) override {
    return noted("rename " + shortName(from) + ' ' + shortName(to),
                 [&] { return FileCalls::rename(from, to); });
  }
  int unlink(const char* path) override {
    return noted("unlink " + shortName(path), [&] { return FileCalls::unlink(path); });
  }

  std::ptrdiff_t count(const std::string& call) const {
    return std::count_if(made.begin(), made.end(),
                         [&](const std::string& m) { return m.starts_with(call); });
  }

 private:
  template <typename MakeCall>
  auto noted(const std::string& what, MakeCall call) -> decltype(call()) {
    made.push_back(what);
    if (const int error = failing ? failing(what) : 0; error != 0) {
      errno = error;
      return -1;
    }
    return call();
  }
  // The random part of a temporary name as "*", a folder as "/".
  static std::string shortName(const std::string& path) {
    const std::string name = path.substr(path.rfind('/') + 1);
    if (name.empty()) return "/";
    constexpr std::string_view kBefore = ".mirelund-";
    constexpr std::string_view kBehind = ".tmp";
    const bool isTemporary =
        name.size() == kBefore.size() + 8 + kBehind.size() && name.starts_with(kBefore) &&
        name.ends_with(kBehind) &&
        name.find_first_not_of("0123456789abcdef", kBefore.size()) == kBefore.size() + 8;
    return isTemporary ? "*" : name;
  }
  static std::string flagNames(int flags) {
    std::string names = (flags & O_ACCMODE) == O_WRONLY ? "WRONLY" : "RDONLY";
    if ((flags & O_CREAT) != 0) names += "|CREAT";
    if ((flags & O_EXCL) != 0) names += "|EXCL";
    if ((flags & O_DIRECTORY) != 0) names += "|DIRECTORY";
    if ((flags & O_NONBLOCK) != 0) names += "|NONBLOCK";
    if ((flags & O_CLOEXEC) != 0) names += "|CLOEXEC";
    return names;
  }
};

using Calls = std::vector<std::string>;

class SaveOrder : public testing::Test {
 protected:
  FileFailure save(const std::optional<std::string>& expected = std::nullopt) {
    return PosixFileStore(calls).replace(path, "new", expected);
  }
  void expectOldFileAlone() const {
    EXPECT_EQ(contents(path), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
  }

  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
  NotingCalls calls;
};

TEST_F(SaveOrder, OfAFileThatIsThere) {
  write(path, "old");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(calls.made, (Calls{
                            "readlink Mine.PQD",
                            "stat Mine.PQD",
                            "open Mine.PQD WRONLY|CLOEXEC",  // may it be written?
                            "close",
                            "open * WRONLY|CREAT|EXCL|CLOEXEC 0600",  // nobody else's records
                            "write 3",
                            "fstat",
                            "fchmod 0640",
                            "fsync",
                            "close",
                            "open * RDONLY|CLOEXEC",  // it reads back
                            "read",
                            "read",
                            "close",
                            "rename * Mine.PQD",
                            "open / RDONLY|DIRECTORY|CLOEXEC",
                            "fsync",
                            "close",
                        }));
}

TEST_F(SaveOrder, OfANewFile) {
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(calls.made, (Calls{
                            "readlink Mine.PQD",
                            "stat Mine.PQD",
                            "open * WRONLY|CREAT|EXCL|CLOEXEC 0666",
                            "write 3",
                            "fsync",
                            "close",
                            "open * RDONLY|CLOEXEC",
                            "read",
                            "read",
                            "close",
                            "rename * Mine.PQD",
                            "open / RDONLY|DIRECTORY|CLOEXEC",
                            "fsync",
                            "close",
                        }));
}

TEST_F(SaveOrder, AnotherOwnersFileStaysTheirs) {
  write(path, "old");
  calls.owner = getuid() + 1;
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(calls.count("fchown " + std::to_string(getuid() + 1)), 1);
  // Where the system does not let it be given away, the file is saved all the same.
  calls.failing = [](const std::string& call) { return call.starts_with("fchown") ? EPERM : 0; };
  EXPECT_EQ(save(), FileFailure::None);
  calls.owner = getuid();
  calls.made.clear();
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(calls.count("fchown"), 0) << "nothing to give away";
  calls.group = getgid() + 1;
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(calls.count("fchown " + std::to_string(getuid()) + ' ' + std::to_string(getgid() + 1)),
            1);
}

TEST_F(SaveOrder, WhatFailsBeforeTheRenameKeepsTheOldFile) {
  for (const char* failing : {"write", "fstat", "fchmod", "fsync", "close", "read", "rename"}) {
    write(path, "old");
    NotingCalls fresh;
    bool temporary = false;  // the calls on the old file are another test's
    fresh.failing = [&](const std::string& call) {
      temporary = temporary || call.starts_with("open *");
      return temporary && call.starts_with(failing) ? EIO : 0;
    };
    EXPECT_EQ(PosixFileStore(fresh).replace(path, "new", std::nullopt), FileFailure::Other)
        << failing;
    expectOldFileAlone();
    EXPECT_EQ(fresh.count("rename"), std::string(failing) == "rename" ? 1 : 0) << failing;
    EXPECT_EQ(fresh.count("unlink *"), 1) << failing;
  }
}

TEST_F(SaveOrder, ADiskThatTakesNothingIsNotAskedForEver) {
  write(path, "old");
  calls.writesNothing = true;
  EXPECT_EQ(save(), FileFailure::Other);
  EXPECT_EQ(calls.count("write"), 1);
  expectOldFileAlone();
}

TEST_F(SaveOrder, WhatCannotBeAskedForItsSizeIsNotRead) {
  write(path, "old");
  calls.failing = [](const std::string& call) { return call == "fstat" ? EIO : 0; };
  EXPECT_EQ(PosixFileStore(calls).read(path, 100).failure, FileFailure::Other);
  EXPECT_EQ(calls.made.size(), 3U) << "open, fstat, close";
}

TEST_F(SaveOrder, AFolderThatCannotBeFlushedIsNoFailure) {
  for (const char* failing : {"open /", "fsync", "close"}) {
    NotingCalls fresh;
    bool renamed = false;
    fresh.failing = [&](const std::string& call) {
      const bool fails = renamed && call.starts_with(failing);
      renamed = renamed || call.starts_with("rename");
      return fails ? EIO : 0;
    };
    write(path, "old");
    EXPECT_EQ(PosixFileStore(fresh).replace(path, "new", std::nullopt), FileFailure::None);
    EXPECT_EQ(contents(path), "new") << failing;
  }
}

TEST_F(SaveOrder, ATakenNameIsPassedOver) {
  write(path, "old");
  int taken = 0;
  calls.failing = [&](const std::string& call) {
    return call.starts_with("open * WRONLY") && ++taken <= 99 ? EEXIST : 0;
  };
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(taken, 100);
  EXPECT_EQ(contents(path), "new");
}

TEST_F(SaveOrder, WhereAllNamesAreTakenNothingIsSaved) {
  write(path, "old");
  calls.failing = [](const std::string& call) {
    return call.starts_with("open * WRONLY") ? EEXIST : 0;
  };
  EXPECT_EQ(save(), FileFailure::Other);
  EXPECT_EQ(calls.count("open * WRONLY"), 100);
  EXPECT_EQ(calls.count("rename"), 0);
  expectOldFileAlone();
}

TEST_F(SaveOrder, AnotherFailureOfTheNameIsNoReasonToGoOn) {
  write(path, "old");
  calls.failing = [](const std::string& call) {
    return call.starts_with("open * WRONLY") ? ENOSPC : 0;
  };
  EXPECT_EQ(save(), FileFailure::NoSpace);
  EXPECT_EQ(calls.count("open * WRONLY"), 1);
}

struct Reason {
  int error;
  FileFailure failure;
};

TEST_F(SaveOrder, AFailureTellsItsReason) {
  constexpr Reason kReasons[] = {
      {ENOENT, FileFailure::NoSuchFolder}, {ENOTDIR, FileFailure::NoSuchFolder},
      {EACCES, FileFailure::NoPermission}, {EPERM, FileFailure::NoPermission},
      {EROFS, FileFailure::ReadOnly},      {ENOSPC, FileFailure::NoSpace},
      {EDQUOT, FileFailure::NoSpace},      {EFBIG, FileFailure::NoSpace},
      {EIO, FileFailure::Other},           {EMFILE, FileFailure::Other},
  };
  write(path, "old");
  for (const auto& [error, failure] : kReasons) {
    calls.failing = [error = error](const std::string& call) {
      return call.starts_with("open *") ? error : 0;
    };
    EXPECT_EQ(save(), failure) << error;
    calls.failing = [error = error](const std::string& call) {
      return call.starts_with("rename") ? error : 0;
    };
    EXPECT_EQ(save(), failure) << error;
    calls.failing = [error = error](const std::string& call) {
      return call.starts_with("read") && !call.starts_with("readlink") ? error : 0;
    };
    EXPECT_EQ(save(), failure) << error;
    EXPECT_EQ(PosixFileStore(calls).read(path, 100).failure, failure) << error;
    expectOldFileAlone();
  }
}

TEST_F(SaveOrder, WhatIsNoFileSaysSo) {
  PosixFileStore store(calls);
  EXPECT_EQ(store.replace(folder.path(), "new", std::nullopt), FileFailure::NotAFile);
  EXPECT_EQ(store.replace(folder.path() + "/", "new", std::nullopt), FileFailure::NotAFile);
  EXPECT_EQ(store.replace("/dev/null", "new", std::nullopt), FileFailure::NotAFile);
  EXPECT_EQ(store.replace(folder.file("no/such"), "new", std::nullopt), FileFailure::NoSuchFolder);
  EXPECT_EQ(store.read(folder.path(), 10).failure, FileFailure::NotAFile);
  EXPECT_EQ(store.read(folder.file("missing"), 10).failure, FileFailure::NoSuchFolder);
  write(path, "0123456789");
  EXPECT_EQ(store.read(path, 10).failure, FileFailure::None);
  const FileRead tooLarge = store.read(path, 9);
  EXPECT_EQ(tooLarge.failure, FileFailure::TooLarge);
  EXPECT_EQ(tooLarge.bytes, "");
}

TEST_F(SaveOrder, AFileThatHoldsOtherBytesThanExpectedStays) {
  write(path, "old");
  EXPECT_EQ(save("older"), FileFailure::Changed);
  expectOldFileAlone();
  EXPECT_EQ(save("ol"), FileFailure::Changed) << "more bytes than expected";
  EXPECT_EQ(save(""), FileFailure::Changed);
  expectOldFileAlone();
  EXPECT_EQ(calls.count("rename"), 0);
  EXPECT_EQ(save("old"), FileFailure::None);
  EXPECT_EQ(contents(path), "new");
  // A file that is gone is written anew.
  std::filesystem::remove(path);
  EXPECT_EQ(save("old"), FileFailure::None);
  EXPECT_EQ(contents(path), "new");
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The order in which a save makes its calls, and what each of them decides: a crash
// can come between any two, so the order is the promise. All of it in both ways.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <functional>

#include "base/posix_file_store.h"
#include "base/watched_calls.h"
#include "files.h"

namespace mirelund {
namespace {

using Calls = std::vector<std::string>;

class SaveOrder : public testing::TestWithParam<Way> {
 protected:
  void SetUp() override {
    if (isNameless() && !hasNameless(folder.path())) GTEST_SKIP() << "no nameless files here";
  }
  static bool isNameless() { return GetParam() == Way::Nameless; }
  // How the new file is made, and given a name.
  static const char* making() { return isNameless() ? "open / RDWR|TMPFILE" : "open * RDWR|CREAT"; }
  static const char* naming() { return isNameless() ? "linkat # *" : "open * RDWR|CREAT"; }

  FileFailure save(const std::optional<std::string>& expected = std::nullopt) {
    return PosixFileStore(calls).replace(path, "new", expected);
  }
  void expectAlone(const std::string& bytes) const {
    EXPECT_EQ(contents(path), bytes);
    EXPECT_EQ(names(folder.path()), Calls{"Mine.PQD"});
  }
  // What the first such call fails with, when something else has been done before it.
  void atFirst(std::string call, std::function<void()> happens) {
    calls.failing = [call = std::move(call), happens = std::move(happens),
                     happened = false](const std::string& made) mutable {
      if (!happened && made.starts_with(call)) {
        happened = true;
        happens();
      }
      return 0;
    };
  }
  std::string temporary() const {
    for (const std::string& name : names(folder.path()))
      if (isTemporary(name)) return folder.file(name);
    return {};
  }

  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
  NotingCalls calls{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Ways, SaveOrder, testing::Values(Way::Nameless, Way::Named),
                         [](const auto& way) { return wayName(way.param); });

// --- the order --------------------------------------------------------------------

TEST_P(SaveOrder, OfAFileThatIsThere) {
  write(path, "old");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  EXPECT_EQ(save("old"), FileFailure::None);
  Calls expected = {
      "readlink Mine.PQD",
      "stat Mine.PQD",
      "open Mine.PQD WRONLY|CLOEXEC",  // may it be written?
      "close",
      "opendir",  // what killed saves left
      "readdir",
      "readdir",
      "readdir",
      "readdir",
      "closedir",
      "open / RDWR|TMPFILE|CLOEXEC 0600",  // nobody else's records
  };
  const Calls named = {
      "open * RDWR|CREAT|EXCL|CLOEXEC 0600", "flock EX|NB",
      "fstat",  // did somebody take it for stale?
  };
  const Calls both = {
      "write 3",
      "fstat",
      "fchmod 0640",
      "fsync",
      "lseek 0",  // it reads back
      "read",
      "read",
      "open Mine.PQD RDONLY|NONBLOCK|CLOEXEC",  // the old one is as expected
      "read",
      "read",
      "close",
  };
  const Calls behind = {
      "rename * Mine.PQD",
      "close",  // and the lock is gone
      "open / RDONLY|DIRECTORY|CLOEXEC",
      "fsync",
      "close",
  };
  const auto add = [&](const Calls& more) {
    expected.insert(expected.end(), more.begin(), more.end());
  };
  add(isNameless() ? Calls{"flock EX|NB"} : named);
  add(both);
  if (isNameless()) add({"linkat # *"});
  add(behind);
  EXPECT_EQ(calls.made, expected);
}

TEST_P(SaveOrder, OfANewFile) {
  EXPECT_EQ(save(), FileFailure::None);
  Calls expected = {
      "readlink Mine.PQD", "stat Mine.PQD", "opendir",  "readdir",
      "readdir",           "readdir",       "closedir", "open / RDWR|TMPFILE|CLOEXEC 0666",
  };
  const Calls named = {"open * RDWR|CREAT|EXCL|CLOEXEC 0666", "flock EX|NB", "fstat"};
  const Calls both = {
      "write 3",       "fsync", "lseek 0", "read", "read",
      "stat Mine.PQD",  // there is still none
  };
  const Calls behind = {"close", "open / RDONLY|DIRECTORY|CLOEXEC", "fsync", "close"};
  const auto add = [&](const Calls& more) {
    expected.insert(expected.end(), more.begin(), more.end());
  };
  add(isNameless() ? Calls{"flock EX|NB"} : named);
  add(both);
  add({isNameless() ? "linkat # Mine.PQD" : "rename * Mine.PQD"});
  add(behind);
  EXPECT_EQ(calls.made, expected);
}

TEST_P(SaveOrder, TheFileHasNoNameBeforeItIsWhole) {
  write(path, "old");
  calls.failing = [&](const std::string& call) {
    if (call.starts_with("write") || call.starts_with("lseek") || call.starts_with("linkat")) {
      EXPECT_EQ(temporary().empty(), isNameless()) << call;
    }
    return 0;
  };

  EXPECT_EQ(save(), FileFailure::None);
  expectAlone("new");
}

TEST_P(SaveOrder, AnotherOwnersFileStaysTheirs) {
  // What a save tries to give away of a file that is said to be theirs.
  const auto given = [&](uid_t owner, gid_t group, int error) {
    write(path, "old");
    NotingCalls fresh(GetParam());
    bool isTarget = true;  // it is asked for first, the new file after it
    fresh.pretend = [&](struct stat& status) {
      if (isTarget) status.st_uid = owner, status.st_gid = group;
    };
    fresh.failing = [&](const std::string& call) {
      isTarget = isTarget && !call.starts_with("open Mine.PQD");
      return call.starts_with("fchown") ? error : 0;
    };
    EXPECT_EQ(PosixFileStore(fresh).replace(path, "new", std::nullopt), FileFailure::None);
    expectAlone("new");
    Calls found;
    for (const std::string& call : fresh.made)
      if (call.starts_with("fchown")) found.push_back(call);
    std::filesystem::remove(path);
    return found;
  };
  const uid_t mine = getuid();
  const gid_t ours = getgid();
  const auto call = [](uid_t owner, gid_t group) {
    return Calls{"fchown " + std::to_string(owner) + ' ' + std::to_string(group)};
  };
  // Where the system does not let it be given away, the file is saved all the same.
  for (const int error : {0, EPERM}) {
    EXPECT_EQ(given(mine + 1, ours, error), call(mine + 1, ours));
    EXPECT_EQ(given(mine, ours + 1, error), call(mine, ours + 1));
    EXPECT_EQ(given(mine, ours, error), Calls{}) << "nothing to give away";
  }
}

// --- failures ---------------------------------------------------------------------

TEST_P(SaveOrder, WhatFailsBeforeTheRenameKeepsTheOldFile) {
  for (const char* failing : {"write", "fchmod", "fsync", "lseek", "read", "rename"}) {
    SCOPED_TRACE(failing);
    write(path, "old");
    NotingCalls fresh(GetParam());
    bool made = false;  // the calls on the old file are another test's
    fresh.failing = [&](const std::string& call) {
      made = made || call.starts_with(making());
      return made && call.starts_with(failing) ? EIO : 0;
    };
    EXPECT_EQ(PosixFileStore(fresh).replace(path, "new", std::nullopt), FileFailure::Other);
    expectAlone("old");
    const bool renamed = std::string(failing) == "rename";
    EXPECT_EQ(fresh.count("rename"), renamed ? 1 : 0);
    EXPECT_EQ(fresh.count("unlink *"), renamed || !isNameless() ? 1 : 0);
  }
}

TEST_P(SaveOrder, ADiskThatTakesNothingIsNotAskedForEver) {
  write(path, "old");
  calls.chunk = 0;
  EXPECT_EQ(save(), FileFailure::Other);
  EXPECT_EQ(calls.count("write"), 1);
  expectAlone("old");
}

TEST_P(SaveOrder, WhatCannotBeAskedForItsSizeIsNotRead) {
  write(path, "old");
  calls.failing = [](const std::string& call) { return call == "fstat" ? EIO : 0; };
  EXPECT_EQ(PosixFileStore(calls).read(path, 100).failure, FileFailure::Other);
  EXPECT_EQ(calls.made.size(), 3U) << "open, fstat, close";
}

TEST_P(SaveOrder, AFolderThatCannotBeFlushedIsNoFailure) {
  for (const char* failing : {"open /", "fsync", "close"}) {
    NotingCalls fresh(GetParam());
    bool renamed = false;
    fresh.failing = [&](const std::string& call) {
      const bool fails = renamed && call.starts_with(failing);
      renamed = renamed || call.starts_with("rename");
      return fails ? EIO : 0;
    };
    write(path, "old");
    EXPECT_EQ(PosixFileStore(fresh).replace(path, "new", std::nullopt), FileFailure::None);
    expectAlone("new");
  }
}

struct Reason {
  int error;
  FileFailure failure;
};

TEST_P(SaveOrder, AFailureTellsItsReason) {
  constexpr Reason kReasons[] = {
      {ENOENT, FileFailure::NoSuchFolder}, {ENOTDIR, FileFailure::NoSuchFolder},
      {EACCES, FileFailure::NoPermission}, {EPERM, FileFailure::NoPermission},
      {EROFS, FileFailure::ReadOnly},      {ENOSPC, FileFailure::NoSpace},
      {EDQUOT, FileFailure::NoSpace},      {EFBIG, FileFailure::NoSpace},
      {ELOOP, FileFailure::NotAFile},      {EIO, FileFailure::Other},
      {EMFILE, FileFailure::Other},
  };
  const Calls kFailing = {"readlink",
                          "stat Mine.PQD",
                          "open Mine.PQD WRONLY",
                          "write",
                          "fstat",
                          "fchmod",
                          "fsync",
                          "lseek",
                          "read",
                          "rename",
                          "open Mine.PQD RDONLY"};
  write(path, "old");
  for (const auto& [error, failure] : kReasons) {
    for (const std::string& failing : kFailing) {
      SCOPED_TRACE(failing + ", error " + std::to_string(error));
      // No such file is no failure of these two.
      if (error == ENOENT && (failing == "readlink" || failing == "stat Mine.PQD")) continue;
      calls.failing = [&, error = error](const std::string& call) {
        const bool other = failing == "read" && (call.starts_with("readlink") || call == "readdir");
        return call.starts_with(failing) && !other ? error : 0;
      };
      EXPECT_EQ(save("old"), failure);
      expectAlone("old");
    }
    EXPECT_EQ(PosixFileStore(calls).read(path, 100).failure, failure) << error;
    // Neither way can make its file.
    calls.failing = [error = error](const std::string& call) {
      return call.starts_with("open *") || call.starts_with("open / RDWR") ? error : 0;
    };
    EXPECT_EQ(save(), failure) << error;
    expectAlone("old");
  }
}

TEST_P(SaveOrder, WhatIsNoFileSaysSo) {
  PosixFileStore store(calls);
  EXPECT_EQ(store.replace(folder.path(), "new", std::nullopt), FileFailure::NotAFile);
  EXPECT_EQ(store.replace(folder.path() + "/", "new", std::nullopt), FileFailure::NotAFile);
  EXPECT_EQ(store.replace("/dev/null", "new", std::nullopt), FileFailure::NotAFile);
  EXPECT_EQ(store.replace(folder.file("no/such"), "new", std::nullopt), FileFailure::NoSuchFolder);
  EXPECT_EQ(store.read(folder.path(), 10).failure, FileFailure::NotAFile);
  EXPECT_EQ(store.read(folder.file("missing"), 10).failure, FileFailure::NoSuchFolder);
  write(path, "0123456789");
  EXPECT_EQ(store.replace(path + "/b", "new", std::nullopt), FileFailure::NoSuchFolder);
  EXPECT_EQ(store.read(path, 10).failure, FileFailure::None);
  const FileRead tooLarge = store.read(path, 9);
  EXPECT_EQ(tooLarge.failure, FileFailure::TooLarge);
  EXPECT_EQ(tooLarge.bytes, "");
  std::filesystem::create_symlink("circle", folder.file("circle"));
  EXPECT_EQ(store.replace(folder.file("circle"), "new", std::nullopt), FileFailure::NotAFile);
  EXPECT_EQ(store.read(folder.file("circle"), 10).failure, FileFailure::NotAFile);
}

// --- what is expected -------------------------------------------------------------

TEST_P(SaveOrder, AFileThatHoldsOtherBytesThanExpectedStays) {
  write(path, "old");
  EXPECT_EQ(save("older"), FileFailure::Changed);
  expectAlone("old");
  EXPECT_EQ(save("ol"), FileFailure::Changed) << "more bytes than expected";
  EXPECT_EQ(save("odd"), FileFailure::Changed) << "as many";
  EXPECT_EQ(save(""), FileFailure::Changed);
  expectAlone("old");
  EXPECT_EQ(calls.count("rename"), 0);
  EXPECT_EQ(save("old"), FileFailure::None);
  expectAlone("new");
  // A file that is gone is written anew.
  std::filesystem::remove(path);
  EXPECT_EQ(save("old"), FileFailure::None);
  expectAlone("new");
}

TEST_P(SaveOrder, TheFileIsComparedWhenTheNewOneIsWhole) {
  write(path, "old");
  atFirst("lseek", [&] { write(path, "theirs"); });
  EXPECT_EQ(save("old"), FileFailure::Changed);
  expectAlone("theirs");
}

TEST_P(SaveOrder, AFileThatAppearsMeanwhileStays) {
  atFirst("lseek", [&] { write(path, "theirs"); });
  EXPECT_EQ(save(), FileFailure::Changed);
  expectAlone("theirs");
  std::filesystem::remove(path);
  atFirst("lseek", [&] { write(path, "old"); });
  EXPECT_EQ(save("old"), FileFailure::Changed) << "even with the bytes expected";
  expectAlone("old");
}

// --- names ------------------------------------------------------------------------

TEST_P(SaveOrder, ATakenNameIsPassedOver) {
  write(path, "old");
  int taken = 0;
  calls.failing = [&](const std::string& call) {
    return call.starts_with(naming()) && ++taken <= 99 ? EEXIST : 0;
  };
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(taken, 100);
  expectAlone("new");
}

TEST_P(SaveOrder, WhereAllNamesAreTakenNothingIsSaved) {
  write(path, "old");
  calls.failing = [](const std::string& call) { return call.starts_with(naming()) ? EEXIST : 0; };
  EXPECT_EQ(save(), FileFailure::Other);
  EXPECT_EQ(calls.count(naming()), 100);
  EXPECT_EQ(calls.count("rename"), 0);
  expectAlone("old");
}

TEST_P(SaveOrder, AnotherFailureOfTheNameIsNoReasonToGoOn) {
  write(path, "old");
  calls.failing = [](const std::string& call) {
    return call.starts_with(naming()) || call.starts_with("open *") ? ENOSPC : 0;
  };
  EXPECT_EQ(save(), FileFailure::NoSpace);
  EXPECT_EQ(calls.count(naming()), 1);
  expectAlone("old");
}

TEST_P(SaveOrder, TheFileIsLockedFromItsMakingToItsPlace) {
  const auto isLocked = [](const std::string& file) {
    const int other = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
    const bool locked = ::flock(other, LOCK_EX | LOCK_NB) != 0;
    ::close(other);
    return locked;
  };
  write(path, "old");
  int asked = 0;
  calls.failing = [&](const std::string& call) {
    const bool isNamed = call.starts_with("write") || call.starts_with("read") ||
                         call.starts_with("fsync") || call.starts_with("rename");
    if (const std::string file = temporary(); isNamed && !file.empty()) {
      EXPECT_TRUE(isLocked(file)) << call;
      ++asked;
    }
    return 0;
  };
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(asked, isNameless() ? 1 : 5) << "the rename, or all of them";
  EXPECT_FALSE(isLocked(path));
}

TEST_P(SaveOrder, WhereThereAreNoLocksAFileIsSavedAllTheSame) {
  for (const int error : {ENOLCK, EOPNOTSUPP, EINVAL, EBADF}) {
    write(path, "old");
    calls.failing = [&](const std::string& call) { return call.starts_with("flock") ? error : 0; };
    EXPECT_EQ(save(), FileFailure::None);
    expectAlone("new");
  }
}

// --- the one way or the other -----------------------------------------------------

class SaveNameless : public SaveOrder {};
INSTANTIATE_TEST_SUITE_P(Way, SaveNameless, testing::Values(Way::Nameless),
                         [](const auto& way) { return wayName(way.param); });

TEST_P(SaveNameless, WhatAppearsAtTheLastMomentStays) {
  atFirst("linkat", [&] { write(path, "theirs"); });
  EXPECT_EQ(save(), FileFailure::Changed);
  expectAlone("theirs");
  EXPECT_EQ(calls.count("open *"), 0);
  std::filesystem::remove(path);
  atFirst("linkat", [&] { std::filesystem::create_symlink("other", path); });
  EXPECT_EQ(save(), FileFailure::Changed);
  EXPECT_TRUE(std::filesystem::is_symlink(path));
}

TEST_P(SaveNameless, WhereItCannotBeTheNamedWayIsGone) {
  for (const char* failing : {"open / RDWR", "linkat"}) {
    for (const int error : {EOPNOTSUPP, EISDIR, EINVAL, ENOENT, EPERM, EACCES, EXDEV, EMFILE}) {
      for (const bool exists : {true, false}) {
        SCOPED_TRACE(std::string(failing) + ", error " + std::to_string(error));
        std::filesystem::remove(path);
        if (exists) write(path, "old");
        NotingCalls fresh;
        fresh.failing = [&](const std::string& call) {
          return call.starts_with(failing) ? error : 0;
        };
        EXPECT_EQ(PosixFileStore(fresh).replace(path, "new", std::nullopt), FileFailure::None);
        expectAlone("new");
        EXPECT_EQ(fresh.count(failing), 1);
        EXPECT_EQ(fresh.count("open * RDWR|CREAT|EXCL"), 1);
        // The nameless file has given back its room by then.
        const auto named = std::ranges::find_if(
            fresh.made, [](const std::string& call) { return call.starts_with("open *"); });
        EXPECT_EQ(*(named - 1),
                  failing == std::string("linkat")
                      ? "close"
                      : making() + std::string(exists ? "|CLOEXEC 0600" : "|CLOEXEC 0666"));
      }
    }
  }
}

class SaveNamed : public SaveOrder {};
INSTANTIATE_TEST_SUITE_P(Way, SaveNamed, testing::Values(Way::Named),
                         [](const auto& way) { return wayName(way.param); });

TEST_P(SaveNamed, AFileThatWasTakenForStaleBeforeItsLockGetsAnotherName) {
  write(path, "old");
  std::string first;
  // Another save has removed it.
  atFirst("flock", [&] {
    first = temporary();
    std::filesystem::remove(first);
  });
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(calls.count("open * RDWR|CREAT"), 2);
  EXPECT_FALSE(first.empty());
  expectAlone("new");
  // Another save is about to.
  calls.made.clear();
  int other = -1;
  atFirst("flock", [&] {
    other = ::open(temporary().c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
  });
  EXPECT_EQ(save(), FileFailure::None);
  EXPECT_EQ(calls.count("open * RDWR|CREAT"), 2);
  expectAlone("new");
  ::close(other);
}

TEST_P(SaveNamed, WhereEveryFileIsTakenForStaleNothingIsSaved) {
  write(path, "old");
  calls.failing = [](const std::string& call) {
    return call.starts_with("flock") ? EWOULDBLOCK : 0;
  };
  EXPECT_EQ(save(), FileFailure::Other);
  EXPECT_EQ(calls.count("open * RDWR|CREAT"), 100);
  expectAlone("old");
}

TEST_P(SaveNamed, ANewFileIsSavedThatCannotBeAskedForItsNames) {
  calls.failing = [](const std::string& call) { return call == "fstat" ? EIO : 0; };
  EXPECT_EQ(save(), FileFailure::None);
  expectAlone("new");
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// What a save clears away beside its target, and what it leaves: the temporaries of
// killed saves, and nothing else.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

#include "base/posix_file_store.h"
#include "base/watched_calls.h"
#include "files.h"

namespace mirelund {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

constexpr char kStale[] = ".mirelund-0123abcd.tmp";

class StaleFiles : public testing::TestWithParam<Way> {
 protected:
  void SetUp() override { write(path, "old"); }
  void save() {
    EXPECT_EQ(PosixFileStore(calls).replace(path, "new", std::nullopt), FileFailure::None);
    EXPECT_EQ(contents(path), "new");
  }

  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
  NotingCalls calls{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Ways, StaleFiles, testing::Values(Way::Nameless, Way::Named),
                         [](const auto& way) { return wayName(way.param); });

TEST_P(StaleFiles, GoBeforeTheNewFileIsWritten) {
  for (const char* name :
       {kStale, ".mirelund-00000000.tmp", ".mirelund-ffffffff.tmp", ".mirelund-6789def0.tmp"})
    write(folder.file(name), "records");
  save();
  EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
  EXPECT_EQ(calls.count("open * RDWR|NOFOLLOW|NONBLOCK|CLOEXEC"), 4);
  const auto lastUnlinked = std::find(calls.made.rbegin(), calls.made.rend(), "unlink *");
  const auto made = std::ranges::find_if(calls.made, [](const std::string& call) {
    return call.starts_with("open / RDWR|TMPFILE") || call.starts_with("open * RDWR|CREAT");
  });
  EXPECT_LT(lastUnlinked.base() - calls.made.begin(), made + 1 - calls.made.begin());
}

TEST_P(StaleFiles, OfAnyLengthAndPermissionsGo) {
  write(folder.file(kStale), "");
  write(folder.file(".mirelund-00000001.tmp"), "records");
  chmod(folder.file(kStale).c_str(), 0600);
  chmod(folder.file(".mirelund-00000001.tmp").c_str(), 0666);
  fs::create_hard_link(folder.file(kStale), folder.file("kept"));
  save();
  EXPECT_EQ(names(folder.path()), (Names{"Mine.PQD", "kept"}));
}

TEST_P(StaleFiles, OfAnotherPatternStay) {
  Names left = {"Mine.PQD"};
  for (const char* name : {
           ".mirelund-0123abc.tmp",    // seven digits
           ".mirelund-0123abcde.tmp",  // nine
           ".mirelund-0123ABCD.tmp",   // capitals
           ".mirelund-0123abcg.tmp",   // no digit
           ".mirelund-g123abcd.tmp",   // nor here
           ".mirelund-0123abcd.bak",   // another ending
           ".mirelund-0123abcd-tmp",   // as long
           ".mirelund-0123abcd.tmp~",  // a copy
           "mirelund-0123abcd.tmp",    // no point before it
           "xmirelund-0123abcd.tmp",   // as long
           ".Mirelund-0123abcd.tmp",   // a capital
           "a.mirelund-0123abcd.tmp",  // something before it
           ".mirelund-.tmp",           // no digits
           ".mirelund-0123abcd",       // no ending
           "Mine.tmp",                 // somebody else's
       }) {
    write(folder.file(name), "records");
    left.push_back(name);
  }
  std::ranges::sort(left);
  save();
  EXPECT_EQ(names(folder.path()), left);
  EXPECT_EQ(calls.count("unlink"), 0);
}

TEST_P(StaleFiles, ThatAreNoRegularFilesStay) {
  fs::create_directory(folder.file("elsewhere"));
  write(folder.file("elsewhere/theirs"), "records");
  fs::create_symlink("elsewhere/theirs", folder.file(".mirelund-00000001.tmp"));
  fs::create_symlink("nowhere", folder.file(".mirelund-00000002.tmp"));
  fs::create_directory(folder.file(".mirelund-00000003.tmp"));
  ASSERT_EQ(mkfifo(folder.file(".mirelund-00000004.tmp").c_str(), 0600), 0);  // nor waited for
  const Names before = names(folder.path());
  save();
  EXPECT_EQ(names(folder.path()), before);
  EXPECT_EQ(contents(folder.file("elsewhere/theirs")), "records");
  EXPECT_EQ(calls.count("unlink"), 0);
}

TEST_P(StaleFiles, OfAnotherUserStay) {
  write(folder.file(kStale), "records");
  calls.pretend = [](struct stat& status) { ++status.st_uid; };
  save();
  EXPECT_EQ(names(folder.path()), (Names{kStale, "Mine.PQD"}));
  calls.pretend = nullptr;
  save();
  EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
}

TEST_P(StaleFiles, ThatSomebodyWritesStay) {
  write(folder.file(kStale), "records");
  const int writer = ::open(folder.file(kStale).c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(::flock(writer, LOCK_EX | LOCK_NB), 0);
  save();
  EXPECT_EQ(names(folder.path()), (Names{kStale, "Mine.PQD"}));
  ::close(writer);
  save();
  EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
}

TEST_P(StaleFiles, BesideTheTargetGoAndNotBesideTheLinkToIt) {
  fs::create_directory(folder.file("links"));
  fs::create_symlink("../Mine.PQD", folder.file("links/a"));
  write(folder.file(kStale), "records");
  write(folder.file("links/") + kStale, "records");
  EXPECT_EQ(PosixFileStore(calls).replace(folder.file("links/a"), "new", std::nullopt),
            FileFailure::None);
  EXPECT_EQ(names(folder.path()), (Names{"Mine.PQD", "links"}));
  EXPECT_EQ(names(folder.file("links")), (Names{kStale, "a"}));
}

TEST_P(StaleFiles, InTheCurrentFolderGo) {
  write(folder.file(kStale), "records");
  const fs::path here = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_EQ(PosixFileStore(calls).replace("Mine.PQD", "new", std::nullopt), FileFailure::None);
  fs::current_path(here);
  EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
}

TEST_P(StaleFiles, ThatCannotBeClearedAwayAreNoFailure) {
  for (const char* failing :
       {"opendir", "readdir", "open * RDWR|NOFOLLOW", "fstat", "flock", "unlink"}) {
    SCOPED_TRACE(failing);
    write(folder.file(kStale), "records");
    bool clearing = true;
    calls.failing = [&](const std::string& call) {
      clearing = clearing && !call.starts_with("open / RDWR");
      return clearing && call.starts_with(failing) ? EIO : 0;
    };
    save();
    EXPECT_EQ(names(folder.path()), (Names{kStale, "Mine.PQD"}));
    EXPECT_EQ(calls.count("opendir") - calls.count("closedir"), 0 + (calls.count("readdir") == 0));
    calls.made.clear();
  }
}

// Two processes, one folder: neither takes the other's file for stale.
TEST_P(StaleFiles, OfTwoThatSaveAtOnceNeitherLosesItsFile) {
  constexpr int kSaves = 150;
  const auto saveOften = [&](const std::string& name) {
    NotingCalls own(GetParam());
    PosixFileStore store(own);
    for (int i = 1; i <= kSaves; ++i) {
      const std::string bytes = name + std::string(static_cast<std::size_t>(i) * 100, 'x');
      if (store.replace(folder.file(name), bytes, std::nullopt) != FileFailure::None) return false;
      if (contents(folder.file(name)) != bytes) return false;
    }
    return true;
  };
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) _exit(saveOften("theirs") ? 0 : 1);
  EXPECT_TRUE(saveOften("ours"));
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  EXPECT_EQ(names(folder.path()), (Names{"Mine.PQD", "ours", "theirs"}));
}

}  // namespace
}  // namespace mirelund

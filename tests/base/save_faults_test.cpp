// SPDX-License-Identifier: GPL-3.0-or-later
// Saves on disks that fail, lie or are full, in both ways: the old file or the new
// one, whole; nothing beside it; success told only of the new one.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

#include "base/posix_file_store.h"
#include "base/watched_calls.h"
#include "files.h"

namespace mirelund {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

bool replaceFile(FileCalls& calls, const std::string& path, const std::string& bytes) {
  return PosixFileStore(calls).replace(path, bytes, std::nullopt) == FileFailure::None;
}

class SaveUnderFault : public testing::TestWithParam<Way> {
 protected:
  // False when the fault never came.
  bool save(FaultyCalls& files, const std::string& what) {
    SCOPED_TRACE(what);
    const bool exists = fs::exists(path);
    const std::string old = contents(path);
    files.chunk = 100;
    const bool told = replaceFile(files, path, after);
    EXPECT_EQ(contents(path), told ? after : old) << files.failed;
    EXPECT_EQ(fs::exists(path), told || exists) << files.failed;
    if (files.left) replaceFile(unhurt, path, old);  // which clears away what it could not
    for (const std::string& name : names(folder.path())) EXPECT_EQ(name, "Mine.PQD");
    if (files.failed.empty()) {
      EXPECT_TRUE(told);
    }
    return !files.failed.empty();
  }

  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
  const std::string before = madeBytes(300, 1);
  const std::string after = madeBytes(450, 2);
  NotingCalls unhurt{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Ways, SaveUnderFault, testing::Values(Way::Nameless, Way::Named),
                         [](const auto& way) { return wayName(way.param); });

TEST_P(SaveUnderFault, EveryCallInTurnFailsInEveryWay) {
  int cases = 0;
  for (const bool exists : {true, false}) {
    for (const int error : {EIO, ENOSPC, EDQUOT, EACCES, EINVAL, EEXIST, ENOENT}) {
      for (const bool persistent : {false, true}) {
        for (int call = 1;; ++call) {
          fs::remove(path);
          if (exists) write(path, before);
          FaultyCalls files(GetParam());
          files.failing = call;
          files.error = error;
          files.persistent = persistent;
          const std::string what = std::string(exists ? "replacing" : "new") + ", call " +
                                   std::to_string(call) + ", error " + std::to_string(error);
          if (!save(files, what)) break;
          ++cases;
          ASSERT_LT(call, 1000);
        }
      }
    }
  }
  EXPECT_GT(cases, 700);
}

TEST_P(SaveUnderFault, EveryWriteInTurnFails) {
  int cases = 0;
  for (const int error : {EIO, ENOSPC, EDQUOT, EFBIG}) {
    for (const bool persistent : {false, true}) {
      for (int call = 1;; ++call) {
        write(path, before);
        FaultyCalls files(GetParam());
        files.only = "write";
        files.failing = call;
        files.error = error;
        files.persistent = persistent;
        if (!save(files, "write " + std::to_string(call))) break;
        EXPECT_EQ(contents(path), before);
        ++cases;
      }
    }
  }
  EXPECT_EQ(cases, 4 * 2 * 5);
}

TEST_P(SaveUnderFault, ShortWritesAndReadsAreNoFailure) {
  for (const std::size_t chunk : {1U, 7U, 449U, 450U, 451U}) {
    write(path, before);
    unhurt.chunk = chunk;
    EXPECT_TRUE(replaceFile(unhurt, path, after));
    EXPECT_EQ(contents(path), after);
  }
}

TEST_P(SaveUnderFault, ACallThatIsInterruptedIsRepeated) {
  for (const char* call : {"write", "read"}) {
    for (const int count : {1, 2}) {
      NotingCalls files(GetParam());
      int interrupted = 0;
      files.failing = [&](const std::string& made) {
        const bool fails = made.starts_with(call) && !made.starts_with("readlink") &&
                           made != "readdir" && interrupted < count;
        interrupted += fails ? 1 : 0;
        return fails ? EINTR : 0;
      };
      write(path, before);
      EXPECT_TRUE(replaceFile(files, path, after));
      EXPECT_EQ(contents(path), after);
      EXPECT_EQ(interrupted, count);
    }
  }
}

// Says that all is well and writes something else.
class LyingCalls : public NotingCalls {
 public:
  LyingCalls(Way way, int lie) : NotingCalls(way), lie_(lie) {}
  ssize_t write(int file, const void* from, std::size_t size) override {
    std::string bytes(static_cast<const char*>(from), size);
    if (lie_ == 0) return static_cast<ssize_t>(size);
    if (lie_ == 1) bytes.back() = '?';
    if (lie_ == 2) bytes += '?';
    if (lie_ == 3) bytes.pop_back();
    NotingCalls::write(file, bytes.data(), bytes.size());
    return static_cast<ssize_t>(size);
  }

 private:
  int lie_;
};

TEST_P(SaveUnderFault, SuccessIsToldOnlyOfWhatReadsBack) {
  for (const int lie : {0, 1, 2, 3}) {
    LyingCalls files(GetParam(), lie);
    write(path, before);
    EXPECT_EQ(PosixFileStore(files).replace(path, after, std::nullopt), FileFailure::Other) << lie;
    EXPECT_EQ(contents(path), before);
    EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
  }
}

// --- full disks -------------------------------------------------------------------

// A file system of a given size, where mounting is allowed.
class SmallDisk {
 public:
  explicit SmallDisk(std::size_t bytes) {
    const std::string options = "size=" + std::to_string(bytes);
    mounted_ = mount("tmpfs", folder_.path().c_str(), "tmpfs", 0, options.c_str()) == 0;
  }
  ~SmallDisk() {
    if (mounted_) umount2(folder_.path().c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool mounted() const { return mounted_; }
  std::string file(const std::string& name) const { return folder_.file(name); }
  const std::string& path() const { return folder_.path(); }

  void leaveFree(std::size_t bytes) const {
    struct statvfs status {};
    statvfs(folder_.path().c_str(), &status);
    const std::size_t free = status.f_bavail * status.f_bsize;
    if (free > bytes) write(file("filler"), std::string(free - bytes, 'x'));
  }

 private:
  Folder folder_;
  bool mounted_ = false;
};

constexpr std::size_t kPage = 4096;
constexpr std::size_t kDisk = 1 << 20;
constexpr std::size_t kSizes[] = {60,     1'300,  3'900,  4'096,  7'200,
                                  11'000, 15'000, 19'600, 26'200, 39'300};

// What a save says that may write so many bytes.
FileFailure replaceWithin(std::size_t most, Way way, const std::string& path,
                          const std::string& bytes) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{most, most};
    setrlimit(RLIMIT_FSIZE, &limit);
    NotingCalls files(way);
    _exit(static_cast<int>(PosixFileStore(files).replace(path, bytes, std::nullopt)));
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? static_cast<FileFailure>(WEXITSTATUS(status)) : FileFailure::Other;
}

TEST_P(SaveUnderFault, OnAFullDisk) {
  if (!SmallDisk(kDisk).mounted()) GTEST_SKIP() << "mounting is not permitted here";
  int saved = 0;
  int refused = 0;
  for (const std::size_t size : kSizes) {
    const std::string old = madeBytes(size / 2, 1);
    const std::string made = madeBytes(size, 2);
    const std::size_t pages = (size + kPage - 1) / kPage;
    const std::size_t frees[] = {0, 1, 2, pages / 2, pages - 1, pages, pages + 1, pages + 16};
    for (const std::size_t free : frees) {
      SCOPED_TRACE(std::to_string(size) + " bytes, " + std::to_string(free) + " pages free");
      for (const bool exists : {true, false}) {
        const SmallDisk disk(kDisk);
        const std::string file = disk.file("Mine.PQD");
        if (exists) write(file, old);
        disk.leaveFree(free * kPage);
        NotingCalls files(GetParam());
        const FileFailure told = PosixFileStore(files).replace(file, made, std::nullopt);
        EXPECT_EQ(told, free >= pages ? FileFailure::None : FileFailure::NoSpace);
        EXPECT_EQ(contents(file), told == FileFailure::None ? made : exists ? old : "");
        EXPECT_EQ(fs::exists(file), exists || told == FileFailure::None);
        for (const std::string& name : names(disk.path()))
          EXPECT_TRUE(name == "Mine.PQD" || name == "filler") << name;
        ++(told == FileFailure::None ? saved : refused);
      }
    }
  }
  EXPECT_EQ(saved + refused, 160);
  EXPECT_GT(saved, 50);
  EXPECT_GT(refused, 50);
}

TEST_P(SaveUnderFault, OnADiskThatAKilledSaveFilled) {
  const SmallDisk disk(kDisk);
  if (!disk.mounted()) GTEST_SKIP() << "mounting is not permitted here";
  write(disk.file("Mine.PQD"), before);
  write(disk.file(".mirelund-0123abcd.tmp"), after);
  disk.leaveFree(0);
  EXPECT_TRUE(replaceFile(unhurt, disk.file("Mine.PQD"), after));
  EXPECT_EQ(contents(disk.file("Mine.PQD")), after);
  EXPECT_EQ(names(disk.path()), (Names{"Mine.PQD", "filler"}));
}

TEST_P(SaveUnderFault, UnderALimitOnTheSizeOfFiles) {
  for (const std::size_t size : kSizes) {
    const std::string made = madeBytes(size, 2);
    for (const std::size_t most : {std::size_t{0}, std::size_t{1}, size / 2, size - 1, size}) {
      SCOPED_TRACE(std::to_string(size) + " bytes of at most " + std::to_string(most));
      write(path, before);
      const FileFailure told = replaceWithin(most, GetParam(), path, made);
      EXPECT_EQ(told, most >= size ? FileFailure::None : FileFailure::NoSpace);
      EXPECT_EQ(contents(path), most >= size ? made : before);
      EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
    }
  }
}

}  // namespace
}  // namespace mirelund

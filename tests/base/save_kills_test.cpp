// SPDX-License-Identifier: GPL-3.0-or-later
// Saves that are killed: the old file or the new one is there, whole, and after the
// next save nothing else is. MIRELUND_KILLS says how many are killed at random moments.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>

#include "base/posix_file_store.h"
#include "base/watched_calls.h"
#include "files.h"

namespace mirelund {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

constexpr std::size_t kChunk = 4096;

bool replaceFile(FileCalls& calls, const std::string& path, const std::string& bytes) {
  return PosixFileStore(calls).replace(path, bytes, std::nullopt) == FileFailure::None;
}

std::ptrdiff_t temporaries(const std::string& folder) {
  return std::ranges::count_if(names(folder), isTemporary);
}

// The status with which a process ends that does this and then exits with 0 for
// true, 1 for false.
template <typename Work>
int statusOfProcess(Work work) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) _exit(work() ? 0 : 1);
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

enum class Moment { Before, After };

// Ends its process as a power cut would, at the n-th call: before it is made or
// when it has been.
class KillingCalls : public WatchedCalls {
 public:
  KillingCalls(Way way, int call, Moment moment) : WatchedCalls(way), left_(call), moment_(moment) {
    chunk = kChunk;
  }

 protected:
  int before(const std::string&) override {
    if (--left_ == 0 && moment_ == Moment::Before) die();
    return 0;
  }
  void after() override {
    if (left_ == 0) die();
  }

 private:
  [[noreturn]] static void die() {
    ::kill(getpid(), SIGKILL);
    for (;;) pause();
  }

  int left_;
  Moment moment_;
};

class SaveKilled : public testing::TestWithParam<Way> {
 protected:
  void SetUp() override {
    if (GetParam() == Way::Nameless && !hasNameless(folder.path()))
      GTEST_SKIP() << "no nameless files here";
  }

  const Folder folder;
  const std::string path = folder.file("Mine.PQD");
  const std::string before = madeBytes(20'000, 1);
  const std::string after = madeBytes(40'000, 2);
  NotingCalls unhurt{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Ways, SaveKilled, testing::Values(Way::Nameless, Way::Named),
                         [](const auto& way) { return wayName(way.param); });

TEST_P(SaveKilled, AtAnyCallLeavesOneFileWhole) {
  for (const bool exists : {true, false}) {
    for (const Moment moment : {Moment::Before, Moment::After}) {
      int kept = 0;
      int replaced = 0;
      int interrupted = 0;
      for (int call = 1;; ++call) {
        SCOPED_TRACE(std::string(exists ? "replacing" : "new") + ", call " + std::to_string(call) +
                     (moment == Moment::Before ? ", before" : ", after"));
        fs::remove(path);
        if (exists) write(path, before);
        const int status = statusOfProcess([&] {
          KillingCalls files(GetParam(), call, moment);
          return replaceFile(files, path, after);
        });
        if (WIFEXITED(status)) {
          EXPECT_EQ(WEXITSTATUS(status), 0);
          EXPECT_EQ(contents(path), after);
          EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
          break;
        }
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        ASSERT_LT(call, 1000);
        // The old file until some call, the new one from there on.
        if (contents(path) == after) {
          ++replaced;
        } else {
          EXPECT_EQ(replaced, 0);
          EXPECT_EQ(fs::exists(path), exists);
          EXPECT_EQ(contents(path), exists ? before : "");
          ++kept;
        }
        interrupted += temporaries(folder.path()) > 0 ? 1 : 0;
        EXPECT_TRUE(replaceFile(unhurt, path, after));
        EXPECT_EQ(contents(path), after);
        EXPECT_EQ(names(folder.path()), Names{"Mine.PQD"});
      }
      EXPECT_GT(kept, 30);
      EXPECT_GT(replaced, 0);
      if (GetParam() == Way::Named) {
        EXPECT_GT(interrupted, 20);
      } else {
        EXPECT_EQ(interrupted, exists ? 1 : 0) << "between the link and the rename";
      }
    }
  }
}

// Beyond the calls: in the middle of one, wherever that is.
TEST_P(SaveKilled, AtRandomMomentsLeavesOneFileWhole) {
  constexpr int kKills = 300;
  const char* const wanted = std::getenv("MIRELUND_KILLS");
  const int kills = (wanted != nullptr ? std::atoi(wanted) : kKills) / 2;  // of each way
  int torn = 0;
  int interrupted = 0;
  int leftOver = 0;
  std::mt19937 random(100);  // NOLINT(cert-msc51-cpp): any moments will do
  write(path, before);
  for (int kill = 0; kill < kills; ++kill) {
    const bool anew = kill % 2 == 1;  // a new file every time, or the old one replaced
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      NotingCalls files(GetParam());
      for (int i = kill;; ++i) {
        files.made.clear();
        if (anew) ::unlink(path.c_str());
        if (!replaceFile(files, path, i % 2 == 0 ? before : after)) _exit(1);
      }
    }
    std::this_thread::sleep_for(std::chrono::microseconds(100 + random() % 4000));
    ::kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    const std::string now = contents(path);
    const bool isWhole = now == before || now == after || (anew && !fs::exists(path));
    EXPECT_TRUE(isWhole) << "kill " << kill;
    torn += isWhole ? 0 : 1;
    interrupted += temporaries(folder.path()) > 0 ? 1 : 0;
    EXPECT_TRUE(replaceFile(unhurt, path, before));
    const bool isAlone = names(folder.path()) == Names{"Mine.PQD"};
    EXPECT_TRUE(isAlone) << "kill " << kill;
    leftOver += isAlone ? 0 : 1;
    unhurt.made.clear();
  }
  std::printf("%s: %d kills, %d torn files, %d temporaries left, %d after the next save\n",
              wayName(GetParam()).c_str(), kills, torn, interrupted, leftOver);
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/clock.h"

#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>

namespace mirelund::testing {

namespace {

constexpr std::int64_t kNanosInSecond = 1'000'000'000;
constexpr std::int64_t kNanosInMs = 1'000'000;

std::atomic<std::int64_t> stoppedAt = 0;  // 0 while it runs

}  // namespace

void stopClock() {
  // Timers are rounded by the whole time.
  constexpr std::int64_t kAnyTime = 1'000'000 * kNanosInSecond;
  stoppedAt = kAnyTime;
}

void passTime(int ms) {
  stoppedAt += ms * kNanosInMs;
}

namespace {

int readClock(clockid_t clock, timespec* now) {
  const std::int64_t stopped = stoppedAt;
  if (clock != CLOCK_MONOTONIC || stopped == 0)
    return static_cast<int>(syscall(SYS_clock_gettime, clock, now));
  now->tv_sec = stopped / kNanosInSecond;
  now->tv_nsec = stopped % kNanosInSecond;
  return 0;
}

}  // namespace

}  // namespace mirelund::testing

// Takes the place of the C library's for the whole process.
extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept {
  return mirelund::testing::readClock(clock, now);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/diary.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace mirelund::testing::diary {

namespace {

constexpr int kKept = 50;
constexpr unsigned kPatienceSeconds = 120;
constexpr int kFailed = 1;

using Kept = std::array<std::string, kKept>;
// Told after the end of main too, where something leaked.
Kept& kept() {
  static auto* const events = new Kept;
  return *events;
}
int noted = 0;
int wanted = 0;
std::uint64_t seedUsed = 0;
bool told = false;
bool tellsAll = false;

void tell(const char* what) {
  if (told) return;
  told = true;
  std::fprintf(stderr, "\nmonkey: %s\n", what);
  const int first = noted < kKept ? 0 : noted - kKept;
  for (int i = first; i < noted; ++i)
    std::fprintf(stderr, "%7d  %s\n", i + 1, kept()[static_cast<std::size_t>(i % kKept)].c_str());
  std::fprintf(stderr, "monkey: seed %llu failed at event %d: %s\nreplay: scripts/monkey %llu %d\n",
               static_cast<unsigned long long>(seedUsed), noted, what,
               static_cast<unsigned long long>(seedUsed), wanted);
  std::fflush(stderr);
}

void ended(int signal) {
  tell(signal == SIGALRM ? "hung" : "aborted");
  _exit(kFailed);
}

}  // namespace

void begin(std::uint64_t seed, int events) {
  seedUsed = seed;
  wanted = events;
  tellsAll = std::getenv("MONKEY_TELLS_ALL") != nullptr;
  if (__sanitizer_set_death_callback != nullptr)
    __sanitizer_set_death_callback([] { tell("ended by a sanitizer"); });
  else
    std::signal(SIGSEGV, ended);
  std::signal(SIGABRT, ended);
  std::signal(SIGALRM, ended);
  alive();
}

void note(const std::string& event) {
  if (tellsAll) std::fprintf(stderr, "%7d  %s\n", noted + 1, event.c_str());
  kept()[static_cast<std::size_t>(noted++ % kKept)] = event;
}

int events() {
  return noted;
}

void alive() {
  alarm(kPatienceSeconds);
}

void fail(const std::string& what) {
  tell(what.c_str());
  _exit(kFailed);
}

}  // namespace mirelund::testing::diary

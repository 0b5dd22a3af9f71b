// SPDX-License-Identifier: GPL-3.0-or-later
// A measurement beside its limit: the least work that any program would have to
// do for the same result. Both run in the same process, interleaved; ratios.py
// makes the table.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <string>

namespace mirelund::bench {

/// In place of a ratio: nothing is held to it.
inline constexpr double kForInformation = 0.0;

/// Registers `measured` and `limit`, two callables that do one turn of the work.
/// `most` is the ratio that they are held to.
template <typename Measured, typename Limit>
void beside(const std::string& name, double most, Measured measured, Limit limit) {
  const auto loop = [](auto turn) {
    return [turn](benchmark::State& state) mutable {
      for (auto _ : state) turn();
    };
  };
  const std::string key = name + "|" + std::to_string(most) + "|";
  benchmark::RegisterBenchmark((key + "measured").c_str(), loop(measured));
  benchmark::RegisterBenchmark((key + "limit").c_str(), loop(limit));
}

/// The same for work that uses up what it works on: `prepare` runs before each
/// turn, off the clock.
template <typename Prepare, typename Measured, typename PrepareLimit, typename Limit>
void besidePrepared(const std::string& name, double most, Prepare prepare, Measured measured,
                    PrepareLimit prepareLimit, Limit limit) {
  const auto loop = [](auto before, auto turn) {
    return [before, turn](benchmark::State& state) mutable {
      for (auto _ : state) {
        before();
        const auto start = std::chrono::steady_clock::now();
        turn();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(time.count());
      }
    };
  };
  const std::string key = name + "|" + std::to_string(most) + "|";
  benchmark::RegisterBenchmark((key + "measured").c_str(), loop(prepare, measured))
      ->UseManualTime();
  benchmark::RegisterBenchmark((key + "limit").c_str(), loop(prepareLimit, limit))->UseManualTime();
}

/// A number that the compiler cannot work out in advance. (Not DoNotOptimize,
/// which alters floating-point numbers in some versions of the library with GCC.)
template <typename Number>
Number hidden(Number value) {
  asm volatile("" : "+m"(value));
  return value;
}

/// A result that the compiler cannot leave out.
template <typename Result>
void keep(const Result& result) {
  asm volatile("" : : "m"(result) : "memory");
}

/// Where a limit writes: one fixed buffer, integers one behind the other.
template <std::size_t Size>
class Buffer {
 public:
  void restart() { at_ = room_.data(); }
  void number(std::int64_t value) { at_ = std::to_chars(at_, room_.data() + Size, value).ptr; }
  void done() { keep(room_); }

 private:
  std::array<char, Size> room_;
  char* at_ = room_.data();
};

}  // namespace mirelund::bench

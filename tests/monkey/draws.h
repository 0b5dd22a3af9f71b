// SPDX-License-Identifier: GPL-3.0-or-later
// Random choices that a seed repeats, on every machine: no distribution of the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace mirelund::testing {

/// One draw a statement: an expression may evaluate two in either order.
class Draws {
 public:
  explicit Draws(std::uint64_t seed) : engine_(seed) {}

  /// 0 to bound - 1; 0 where there is no choice.
  int below(std::size_t bound) {
    const std::uint64_t drawn = engine_();
    return bound == 0 ? 0 : static_cast<int>(drawn % bound);
  }
  bool oneIn(int times) { return below(static_cast<std::size_t>(times)) == 0; }

  template <typename List>
  decltype(auto) from(const List& list) {
    return list[static_cast<decltype(std::size(list))>(
        below(static_cast<std::size_t>(std::size(list))))];
  }

  /// A row of a table by its `weight`.
  template <typename Row, std::size_t kRows>
  const Row& weighted(const Row (&table)[kRows]) {
    int all = 0;
    for (const Row& row : table) all += row.weight;
    int left = below(static_cast<std::size_t>(all));
    const Row* found = table;
    while (left >= found->weight) left -= (found++)->weight;
    return *found;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace mirelund::testing

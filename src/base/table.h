// SPDX-License-Identifier: GPL-3.0-or-later
// Tables of one row a thing, found by the thing's enumerator.
#pragma once

#include <array>
#include <cstddef>

namespace mirelund {

/// True when every row stands at its enumerator: row i names the enumerator of
/// value i. To be asserted beside a table that rowOf reads.
template <typename Row, std::size_t N, typename Enumerator>
consteval bool standsInOrder(const std::array<Row, N>& table, Enumerator Row::*named) {
  for (std::size_t i = 0; i < N; ++i)
    if (static_cast<std::size_t>(table[i].*named) != i) return false;
  return true;
}

/// The row of an enumerator.
template <typename Row, std::size_t N, typename Enumerator>
constexpr const Row& rowOf(const std::array<Row, N>& table, Enumerator enumerator) {
  return table.at(static_cast<std::size_t>(enumerator));
}

}  // namespace mirelund

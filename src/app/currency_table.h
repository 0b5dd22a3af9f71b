// SPDX-License-Identifier: GPL-3.0-or-later
// A table of amounts, as calculations and valuations leave them for the charts.
#pragma once

#include <cstddef>
#include <vector>

#include "base/currency.h"

namespace mirelund {

/// Addressed (row, column) from 0, all zero after redimension. An index outside
/// it throws ArithmeticError. Clearing costs what was written, not what there is
/// room for.
class CurrencyTable {
 public:
  CurrencyTable() = default;
  CurrencyTable(std::size_t rows, std::size_t columns) { redimension(rows, columns); }

  /// All values zero, indices 0..rows-1 and 0..columns-1.
  void redimension(std::size_t rows, std::size_t columns);

  std::size_t rows() const { return rows_; }
  std::size_t columns() const { return columns_; }

  Currency at(std::size_t row, std::size_t column) const { return cells_[index(row, column)]; }
  Currency& at(std::size_t row, std::size_t column) {
    const std::size_t i = index(row, column);
    if (row >= touchedRows_) touchedRows_ = row + 1;
    return cells_[i];
  }

 private:
  std::size_t index(std::size_t row, std::size_t column) const {
    require(row < rows_ && column < columns_, "place outside the table");
    return row * columns_ + column;
  }

  std::vector<Currency> cells_;
  std::size_t rows_ = 0;
  std::size_t columns_ = 0;
  std::size_t touchedRows_ = 0;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/currency_table.h"

#include <algorithm>
#include <span>

namespace mirelund {

void CurrencyTable::redimension(std::size_t rows, std::size_t columns) {
  if (rows == rows_ && columns == columns_) {
    std::ranges::fill(std::span(cells_).first(touchedRows_ * columns_), Currency());
  } else {
    cells_.assign(rows * columns, Currency());
    rows_ = rows;
    columns_ = columns;
  }
  touchedRows_ = 0;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// A typed table, to be taken along into another program.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "base/currency.h"
#include "base/date.h"

namespace mirelund {

/// An empty cell, a text (UTF-8), a whole number, an amount or rate, several of them, a day.
using Cell =
    std::variant<std::monostate, std::string, std::int64_t, Currency, std::vector<Currency>, Date>;

struct SheetColumn {
  std::string heading;
  int decimals = 0;  ///< of the amounts in it; 0 to 4
};

/// Each row has a cell a column.
struct Sheet {
  std::string name;
  std::vector<SheetColumn> columns;
  std::vector<std::vector<Cell>> rows;
};

}  // namespace mirelund

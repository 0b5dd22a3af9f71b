// SPDX-License-Identifier: GPL-3.0-or-later
// Each fund's calendar years, from what it held at their beginning to what it held at
// their end.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "insights/gains.h"

namespace mirelund {

/// A fund's years, or the total's: opening is the closing before, and the sums of the
/// years are `sums`. A year without records is left out, of a fund one without its own.
struct FundYears {
  std::int16_t fundRow = 0;        ///< 1..FundCount; 0 the total
  std::optional<Refused> refused;  ///< then there are no years
  std::vector<YearSums> years;
  FundSums sums;
};

struct Years {
  std::vector<FundYears> funds;  ///< a row a fund, in table order
  FundYears total;               ///< of those that are not refused
};

/// Throws ArithmeticError, std::bad_alloc. Needs no price.
Years calculateYears(const Database& database, CostMethod method);

}  // namespace mirelund

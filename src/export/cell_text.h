// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers and days as they are written for other programs, whatever the desktop's
// language: a point as decimal, no marks of thousands, days as ISO 8601 has them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/currency.h"
#include "base/date.h"

namespace mirelund {

/// The count of 10^-decimals that is nearest to the amount, a tie to the even one;
/// decimals 0 to 4. Exact with four.
std::int64_t roundedUnits(Currency amount, int decimals);

/// "-1234.50": so many decimals, rounded as above; what rounds to 0 has no sign.
std::string amountText(Currency amount, int decimals);

/// "-12.5000;3.0000": several in one cell.
std::string amountsText(const std::vector<Currency>& amounts, int decimals);

/// "2024-02-29"; empty for no date.
std::string isoDate(Date date);

}  // namespace mirelund

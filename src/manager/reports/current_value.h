// SPDX-License-Identifier: GPL-3.0-or-later
// Current value and what-if: every fund valued at a typed price.
#pragma once

#include <span>
#include <string>

#include "app/global.h"
#include "manager/database/fund_database.h"

namespace mirelund {

/// Values every fund: shares held (sum of C2) and book value (sum of C5) over its
/// records, current total = shares x price, gain = total - book value, gain in
/// percent = gain / book value x 100, share of the whole = total / all totals x
/// 100. Percentages are taken in double precision and kept to four decimals; a
/// zero divisor leaves 0, a negative one follows the formula.
///
/// `prices` holds one price a fund, in table order. Fills `totals`, a row a fund
/// and row 31 their sums: column 0 shares, 1 book value, 3 current total, 4 gain,
/// 5 gain in percent (not summed), 6 share of the whole; the other cells are 0.
/// Throws ArithmeticError when a result leaves the range, `totals` unchanged.
///
/// The table has lines of 85 characters: a heading of two, an underline, one a
/// fund, an underline, the totals. The first 16 places of a fund's line hold the
/// name, at most ten characters, and the number of shares, at least one blank
/// apart; where both do not fit the name gives way.
std::string currentValueTable(const Database& database, std::span<const Currency> prices,
                              CurrencyTable& totals);

}  // namespace mirelund

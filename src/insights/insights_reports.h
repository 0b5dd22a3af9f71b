// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of Insights as fixed-width reports, every line ended by NewLine, and none
// longer than 96 characters but for several rates in one line and what remarks on them.
//
// A column's number ends under the last character of its heading, cut at the column's
// width; money has two decimals, shares, cost per share and what is proved to the
// ten-thousandth have four. A fund that cannot be computed says why, and the totals that
// they are without it. Throws std::bad_alloc, and ArithmeticError where a shown number
// leaves the range.
#pragma once

#include <string>

#include "insights/annual_return.h"
#include "insights/gains.h"
#include "insights/years.h"

namespace mirelund {

/// The fund's name as shown; one without a name by its number. Row 0 is "All funds".
std::string insightsName(const Database& database, std::int16_t fundRow);

/// "Cannot be computed: a sale that adds shares, 5/15/2001".
std::string refusedText(const Refused& refused, const ShortDateFormat& format);

/// Each disposal by fund; what each fund holds; what each fund earned, with Gain/Loss$
/// once by its parts and once as the current-value page has it.
std::string gainsReport(const Database& database, const Gains& gains, CostMethod method,
                        const ShortDateFormat& format);

/// A line a fund and one for all: first and last day, number of flows, rates in percent.
std::string returnReport(const Database& database, const Returns& returns, Date date,
                         const ShortDateFormat& format);

/// A block a fund and one for all, each of two tables: what was held, bought and sold by
/// year, and what came and went besides.
std::string yearsReport(const Database& database, const Years& years, CostMethod method,
                        const ShortDateFormat& format);

/// A rate in percent, rounded to four decimals.
Currency ratePercent(double rate);

}  // namespace mirelund

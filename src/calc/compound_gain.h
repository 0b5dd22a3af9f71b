// SPDX-License-Identifier: GPL-3.0-or-later
// Compound gain: the annual compound growth rate (CAGR) that turns a cost into a
// value over whole years.
#pragma once

#include <string>

#include "app/input_boxes.h"
#include "base/currency.h"

namespace mirelund {

/// The page's boxes.
inline constexpr auto kCompoundGainBoxes = boxTable({
    {"CGInCostofInvest",
     0,
     "Purchase cost of your investment",
     {},
     BoxStore::InputValues,
     1,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(10000)},
    {"CGInValueNow",
     0,
     "Present or future value",
     {},
     BoxStore::InputValues,
     2,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(20000)},
    {"CGInNumOfYrs",
     0,
     "Number of years invested",
     {},
     BoxStore::InputValues,
     3,
     KeyFilter::WholeNumber,
     0,
     "###",
     BoxLook::Years,
     3,
     true,
     Currency::whole(5)},
    {"CGInNameOfInvest",
     0,
     "Name of your investment",
     {},
     BoxStore::None,
     0,
     KeyFilter::Any,
     0,
     "",
     BoxLook::Text,
     0,
     false,
     Currency()},
});

struct CompoundGainInput {
  Currency cost;
  Currency value;
  Currency years;  ///< whole years, 1..40
};

struct CompoundGain {
  /// Fraction a year: e^(ln(value / cost) / years) - 1.
  double annualRate = 0.0;
  /// Fraction over the whole time: (value - cost) / cost.
  double totalGain = 0.0;
};

/// Throws ArithmeticError where an input is zero or a result is no number.
CompoundGain compoundGain(const CompoundGainInput& input);

/// The boxes as the page shows them.
struct CompoundGainTexts {
  std::string cost;
  std::string value;
  std::string years;
  std::string name;
};

/// A block of the report: what was asked and the columns' captions; then the row
/// under them, 45 characters, its underline and an empty line.
void appendCompoundGainHeading(std::string& report, const CompoundGainTexts& texts);
void appendCompoundGainRow(std::string& report, const CompoundGainInput& input,
                           const CompoundGain& gain);

/// CGCalculate: appends a block to ReportLines(1), fills the chart's series and
/// selectors. A zero input gives message 18 and leaves the block's heading and
/// the count behind, as required: the next block stands below the orphan
/// heading (CompoundGain.ZeroInputLeavesItsHeading). A number that leaves its
/// range gives message 3, and leaves the same behind.
Outcome calculateCompoundGain(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                              const CompoundGainTexts& texts) noexcept;

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Capital required: the equal amount invested at the start of every year that
// reaches a capital (a sinking fund of annuity-due payments).
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/input_boxes.h"
#include "base/currency.h"
#include "base/table.h"
#include "calc/calculation.h"

namespace mirelund {

/// The page's boxes.
inline constexpr auto kCapitalRequiredBoxes = boxTable({
    {"CRInCapitalReq", 0, "Amount of capital required $", "Label26", BoxStore::InputValues, 1,
     KeyFilter::Decimal, 0, "####,,###.00", BoxLook::Money, 13, false, Currency::whole(100000)},
    {"CRInIntGrowthRate",
     0,
     "Annual interest/growth rate %",
     {},
     BoxStore::InputValues,
     2,
     KeyFilter::Decimal,
     0,
     "###.00",
     BoxLook::Percent,
     6,
     false,
     Currency::whole(15)},
    {"CRInTimeInYrs",
     0,
     "Number of years",
     {},
     BoxStore::InputValues,
     3,
     KeyFilter::WholeNumber,
     0,
     "###",
     BoxLook::Years,
     3,
     true,
     Currency::whole(25)},
    {"CRInCapitalReq", 1, "Annual income required $", "Label26", BoxStore::InputValues, 1,
     KeyFilter::Decimal, 0, "####,,###.00", BoxLook::Money, 13, false, Currency::whole(40000)},
});

/// CRCapitalChoices, in the order of its elements.
enum class CapitalTarget : std::uint8_t { Capital, AnnualIncome };

struct CapitalTargetRow {
  CapitalTarget target;
  std::int16_t capitalOption;    ///< what the page's CapitalOption holds while it is chosen
  std::string_view caption;      ///< of the option button
  std::string_view reportLabel;  ///< in front of the amount
};

inline constexpr std::array<CapitalTargetRow, 2> kCapitalTargets{{
    {CapitalTarget::Capital, 0, "Amount of capital required", "Amount of capital required:"},
    {CapitalTarget::AnnualIncome, 2, "Annual income required", "Annual income required:    "},
}};
static_assert(standsInOrder(kCapitalTargets, &CapitalTargetRow::target));

struct CapitalRequiredInput {
  CapitalTarget target = CapitalTarget::Capital;
  Currency amount;       ///< the capital, or the income a year that it is to yield
  Currency ratePercent;  ///< a year
  Currency years;        ///< whole years, 1..40
};

struct CapitalRequired {
  /// C * i / ((1 + i) * ((1 + i)^N - 1)), the sinking fund payment due at the
  /// start of the year; unrounded.
  double yearlyInvestment = 0.0;
  /// Year; invested; interest of the year; value.
  std::vector<TableRow> rows;
  /// N + 1; total invested; total interest; final value. The totals are sums of
  /// the unrounded figures, rounded once.
  TableRow totals;
};

/// The value runs in double precision: interest is i * (value + P), value + P +
/// interest the next value. Throws ArithmeticError for a zero rate, for years
/// outside 1..40 and for a number out of range.
CapitalRequired capitalRequired(const CapitalRequiredInput& input);

/// The boxes as the page shows them.
struct CapitalRequiredTexts {
  std::string capital;
  std::string rate;
  std::string years;
};

/// CRCalculate: replaces the report, the year table and the chart selectors. A
/// failure gives message 3 and leaves all of them as they were.
Outcome calculateCapitalRequired(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                 std::int16_t CapitalOption,
                                 const CapitalRequiredTexts& texts) noexcept;

/// The option routine: sets CapitalOption, empties ReportLines(1), loads the
/// option's three initial values. What the boxes and Label26 are to show; nothing where
/// memory lacks, and nothing is changed then.
std::vector<ShownText> switchCapitalOption(BoxState& boxes, Reports& reports,
                                           std::int16_t& CapitalOption,
                                           CapitalTarget target) noexcept;

}  // namespace mirelund

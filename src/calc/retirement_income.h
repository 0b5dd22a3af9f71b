// SPDX-License-Identifier: GPL-3.0-or-later
// Retirement income: how long savings last, taken out as a percentage of the
// value once a year or as a fixed amount every month.
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
inline constexpr auto kRetirementIncomeBoxes = boxTable({
    {"RIInCurrValue",
     0,
     "Starting value of investments",
     {},
     BoxStore::InputValues,
     1,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(100000)},
    {"RIInAnnIntGrowthRate",
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
     Currency::whole(20)},
    {"RIInAnnIncWDrawnRate", 0, "Annual income withdrawn as a (%)", "Label32",
     BoxStore::InputValues, 3, KeyFilter::Decimal, 0, "###.00", BoxLook::Percent, 6, false,
     Currency::whole(15)},
    {"RIInTimeInYrs", 0, "Time in years", "Label33", BoxStore::InputValues, 4,
     KeyFilter::WholeNumber, 0, "###", BoxLook::Years, 6, true, Currency::whole(25)},
    {"RIInAnnIncWDrawnRate", 1, "Monthly amount of cash withdrawn", "Label32",
     BoxStore::InputValues, 3, KeyFilter::Decimal, 0, "####,###.00", BoxLook::Money, 11, false,
     Currency::whole(1000)},
    {"RIInTimeInYrs", 1, "Increase annual income by %", "Label33", BoxStore::InputValues, 4,
     KeyFilter::Decimal, 0, "###.00", BoxLook::Percent, 6, false, Currency::whole(0)},
});

/// RIWDrawalChoice, in the order of its elements.
enum class WithdrawalChoice : std::uint8_t { Percentage, FixedAmount };

struct WithdrawalChoiceRow {
  WithdrawalChoice choice;
  std::int16_t withdrawalOption;    ///< what the page's WithdrawalOption holds meanwhile
  std::string_view caption;         ///< of the option button
  std::string_view withdrawnLabel;  ///< in the report, in front of the third box
  std::string_view lastLabel;       ///< in front of the fourth
};

inline constexpr std::array<WithdrawalChoiceRow, 2> kWithdrawalChoices{{
    {WithdrawalChoice::Percentage, 0, "Percentage of current value",
     "Annual income withdrawn as a (%):     ", "Time in years:                        "},
    {WithdrawalChoice::FixedAmount, 2, "Fixed amount monthly",
     "Monthly amount of cash withdrawn:", "Increase annual income by:            "},
}};
static_assert(standsInOrder(kWithdrawalChoices, &WithdrawalChoiceRow::choice));

struct PercentageIncomeInput {
  Currency value;
  Currency growthPercent;
  Currency withdrawnPercent;  ///< of the value, once a year
  Currency years;             ///< whole years, 1..40
};

struct FixedIncomeInput {
  Currency value;
  Currency growthPercent;
  Currency monthly;
  Currency increasePercent;  ///< of the monthly amount, every year
};

struct RetirementIncome {
  /// More would be withdrawn in a year than there is: no table.
  bool withdrawalTooLarge = false;
  /// Year; interest of the year; income of the year; value.
  std::vector<TableRow> rows;
  /// Number of years; total interest; total income; value at the end.
  TableRow totals;
};

/// (Int(100 x) + 0.05) / 100: whole cents toward minus infinity plus the constant
/// 0.0005, which is required and stays in the value
/// (RetirementIncome.TruncationAddsItsConstant).
Currency TruncateToCents(double x);

/// With g (single precision) and p fractions of the value V at the year's start:
/// income TruncateToCents(V p), value TruncateToCents(V + V (g - p)), interest
/// V g. Throws ArithmeticError for years outside 1..40 and for a number out of
/// range.
RetirementIncome percentageIncome(const PercentageIncomeInput& input);

/// Month by month: V + growth - m, growth = V times the monthly rate (1 + g)^(1/12)
/// - 1 in single precision, rounded to four decimals. At the year's end V is
/// raised by q m with the old m, then m and the annual amount A = 12 m by q of
/// themselves; the total income takes the raised A. Both are required
/// (RetirementIncome.TotalsUseNextYearsAmount), and the totals' value is the
/// raised one. Ends after 40 years or when V is no longer above A: then a last
/// year pays the months that are left, and its income is its interest plus the
/// value it began with. Throws ArithmeticError for a number out of range and for
/// nothing to withdraw from nothing.
RetirementIncome fixedIncome(const FixedIncomeInput& input);

/// The boxes as the page shows them.
struct RetirementIncomeTexts {
  std::string value;
  std::string growth;
  std::string withdrawn;
  std::string last;  ///< the years, or the increase
};

/// RICalculate, by WithdrawalOption: clears the chart selectors, then replaces
/// report, year table and selectors. Message 7 when more would be withdrawn than
/// there is, message 3 for any other failure; report and table stay then, and
/// there is nothing to chart.
Outcome calculateRetirementIncome(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                  std::int16_t WithdrawalOption,
                                  const RetirementIncomeTexts& texts) noexcept;

/// SwitchWithdrawalOption: sets WithdrawalOption, empties ReportLines(1) and loads
/// the option's own values into slots 3 and 4, whose meaning changes; slots 1 and
/// 2 keep theirs. What the four boxes, Label32 and Label33 are to show; nothing where
/// memory lacks, and nothing is changed then.
std::vector<ShownText> SwitchWithdrawalOption(BoxState& boxes, Reports& reports,
                                              std::int16_t& WithdrawalOption,
                                              WithdrawalChoice choice) noexcept;

}  // namespace mirelund

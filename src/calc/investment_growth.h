// SPDX-License-Identifier: GPL-3.0-or-later
// Investment growth: a balance and a contribution at the start of every period,
// compounded at the chosen frequency, with the contribution raised and the value
// deflated.
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
inline constexpr auto kInvestmentGrowthBoxes = boxTable({
    {"IGInBegBal",
     0,
     "Beginning balance",
     {},
     BoxStore::InputValues,
     1,
     KeyFilter::Decimal,
     0,
     "###,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(0)},
    {"IGInEachContrib",
     0,
     "Amount of each contribution",
     {},
     BoxStore::InputValues,
     2,
     KeyFilter::Decimal,
     0,
     "###,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(1000)},
    {"IGInIntGrowthRate",
     0,
     "Annual Interest/growth rate %",
     {},
     BoxStore::InputValues,
     4,
     KeyFilter::Decimal,
     0,
     "##.00",
     BoxLook::Percent,
     5,
     false,
     Currency::whole(15)},
    {"IGInAnnContribRate",
     0,
     "Increase annual contribution rate %",
     {},
     BoxStore::InputValues,
     5,
     KeyFilter::Decimal,
     0,
     "##.00",
     BoxLook::Percent,
     5,
     false,
     Currency::whole(0)},
    {"IGInAnninFlatRate",
     0,
     "Average annual inflation rate %",
     {},
     BoxStore::InputValues,
     6,
     KeyFilter::Decimal,
     0,
     "##.00",
     BoxLook::Percent,
     5,
     false,
     Currency::whole(0)},
    {"IGInYearsInvested",
     0,
     "Number of years invested",
     {},
     BoxStore::InputValues,
     7,
     KeyFilter::WholeNumber,
     0,
     "##",
     BoxLook::Years,
     2,
     true,
     Currency::whole(25)},
});

/// IGInMonthsYrs, in the order of the list.
enum class ContributionFrequency : std::uint8_t { Annually, Quarterly, Monthly };

struct ContributionFrequencyRow {
  ContributionFrequency frequency;
  std::string_view text;  ///< in the list and in the report
  std::int16_t periodsPerYear;
  std::string_view rowLabel;  ///< above the table's period column
};

inline constexpr std::array<ContributionFrequencyRow, 3> kContributionFrequencies{{
    {ContributionFrequency::Annually, "Annually", 1, "Year    "},
    {ContributionFrequency::Quarterly, "Quarterly", 4, "Quarter "},
    {ContributionFrequency::Monthly, "Monthly", 12, "Month   "},
}};
static_assert(standsInOrder(kContributionFrequencies, &ContributionFrequencyRow::frequency));

/// IGResultsChoice, in the order of its elements.
enum class GrowthResults : std::uint8_t { Complete, Comparison };

struct GrowthResultsRow {
  GrowthResults results;
  std::string_view caption;
};

inline constexpr std::array<GrowthResultsRow, 2> kGrowthResults{{
    {GrowthResults::Complete, "Complete calculation"},
    {GrowthResults::Comparison, "Comparison totals"},
}};
static_assert(standsInOrder(kGrowthResults, &GrowthResultsRow::results));

struct InvestmentGrowthInput {
  Currency beginning;
  Currency contribution;      ///< at the start of every period
  Currency growthPercent;     ///< effective, a year
  Currency increasePercent;   ///< of the contribution, effective, a year
  Currency inflationPercent;  ///< effective, a year
  Currency years;             ///< whole years, 1..40
  ContributionFrequency frequency = ContributionFrequency::Annually;
};

struct InvestmentGrowth {
  std::int16_t periodsPerYear = 0;
  std::int16_t years = 0;
  /// Period; invested in it (in the first with the beginning balance); its
  /// interest; value at its end.
  std::vector<TableRow> rows;
  /// Number of periods; total invested; final value less total invested; final
  /// value.
  TableRow totals;
};

/// The rate of one of `periodsPerYear` periods that compounds to `percent` a
/// year: (1 + percent / 100)^(1 / periodsPerYear) - 1, a fraction.
double periodRate(Currency percent, int periodsPerYear);

/// Period p: contribution = (1 + increase) * contribution, rounded to Currency
/// (from period 2 on); interest = RateTimesAmount(value + contribution, growth
/// rate narrowed to single precision); value = (value + contribution + interest)
/// * (1 - inflation), kept unrounded. Throws ArithmeticError for years outside
/// 1..40 and for a number out of range.
InvestmentGrowth investmentGrowth(const InvestmentGrowthInput& input);

/// The boxes as the page shows them, and its choices.
struct InvestmentGrowthTexts {
  std::string beginning;
  std::string contribution;
  ContributionFrequency frequency = ContributionFrequency::Annually;
  std::string growth;
  std::string increase;
  std::string inflation;
  std::string years;
  GrowthResults results = GrowthResults::Complete;
};

/// IGCalculate. Complete: replaces report, period table and chart selectors; a
/// failure (message 3) leaves all of them as they were. Comparison: appends a
/// block to ReportLines(1) and its final value to ComparisonTotals; a failure
/// leaves the block's heading and the count behind.
Outcome calculateInvestmentGrowth(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                  const InvestmentGrowthTexts& texts) noexcept;

}  // namespace mirelund

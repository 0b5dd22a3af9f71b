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

#include "app/currency.h"
#include "app/global.h"
#include "calc/calculation.h"

namespace mirelund {

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

/// IGResultsChoice, in the order of its elements.
enum class GrowthResults : std::uint8_t { Complete, Comparison };

inline constexpr std::array<std::string_view, 2> kGrowthResultsCaptions{"Complete calculation",
                                                                        "Comparison totals"};

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
Outcome calculateInvestmentGrowth(Global& global, const InvestmentGrowthTexts& texts);

/// IGHelp: the page's help text.
std::string investmentGrowthHelp();

}  // namespace mirelund

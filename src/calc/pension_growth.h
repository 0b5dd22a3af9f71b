// SPDX-License-Identifier: GPL-3.0-or-later
// Pension growth: a salary-based plan, year by year, with contributions of
// employee and company that rise with the salary.
#pragma once

#include <string>
#include <vector>

#include "app/input_boxes.h"
#include "base/currency.h"
#include "calc/calculation.h"

namespace mirelund {

/// The page's boxes.
inline constexpr auto kPensionGrowthBoxes = boxTable({
    {"PGInCurrBalance",
     0,
     "Current balance in account",
     {},
     BoxStore::InputValues,
     1,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(0)},
    {"PGInCurrAnnSalary",
     0,
     "My current annual salary",
     {},
     BoxStore::InputValues,
     2,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(40000)},
    {"PGInAnnContribRate",
     0,
     "My annual contribution rate %",
     {},
     BoxStore::InputValues,
     3,
     KeyFilter::Decimal,
     0,
     "###.00",
     BoxLook::Percent,
     6,
     false,
     Currency::whole(4)},
    {"PGInCompAnnContribRate",
     0,
     "Company annual contribution rate %",
     {},
     BoxStore::InputValues,
     4,
     KeyFilter::Decimal,
     0,
     "###.00",
     BoxLook::Percent,
     6,
     false,
     Currency::whole(4)},
    {"PGInEstSalIncrease",
     0,
     "Estimated annual salary increase %",
     {},
     BoxStore::InputValues,
     5,
     KeyFilter::Decimal,
     0,
     "###.00",
     BoxLook::Percent,
     6,
     false,
     Currency::whole(4)},
    {"PGInAnnIntGrowthRate",
     0,
     "Annual interest/growth rate %",
     {},
     BoxStore::InputValues,
     6,
     KeyFilter::Decimal,
     0,
     "###.00",
     BoxLook::Percent,
     6,
     false,
     Currency::whole(10)},
    {"PGInEstAnnFlatRate",
     0,
     "Estimated annual inflation rate %",
     {},
     BoxStore::InputValues,
     7,
     KeyFilter::Decimal,
     0,
     "###.00",
     BoxLook::Percent,
     6,
     false,
     Currency::whole(0)},
    {"PGInNumYearsToRetire",
     0,
     "Number of years to retirement",
     {},
     BoxStore::InputValues,
     8,
     KeyFilter::WholeNumber,
     0,
     "###",
     BoxLook::Years,
     3,
     true,
     Currency::whole(25)},
});

/// All rates are annual, in percent, and used as they are.
struct PensionGrowthInput {
  Currency balance;
  Currency salary;
  Currency ownPercent;      ///< of the salary
  Currency companyPercent;  ///< of the salary
  Currency salaryIncreasePercent;
  Currency growthPercent;
  Currency inflationPercent;
  Currency years;  ///< whole years, 1..40
};

struct PensionGrowth {
  /// Year; contribution; interest; value.
  std::vector<TableRow> rows;
  /// The salary of each row.
  std::vector<Currency> salaries;
  /// Number of years; total contributions (the balance and every contribution
  /// shown); final value less total contributions; final value.
  TableRow totals;
};

/// Year 1 adds balance, contribution and interest. Each later year works on the
/// base that the year before left, value + contribution, and its own
/// contribution enters the next base. So the first contribution is added twice,
/// each later one a year late, the last never: required, and held by
/// PensionGrowth.AddsTheFirstContributionTwice. Salary and contribution rise by
/// the same rate and are rounded to Currency every year; the value is not.
/// Interest is RateTimesAmount with the growth rate in single precision. Throws
/// ArithmeticError for years outside 1..40 and for a number out of range.
PensionGrowth pensionGrowth(const PensionGrowthInput& input);

/// The boxes as the page shows them.
struct PensionGrowthTexts {
  std::string balance;
  std::string salary;
  std::string own;
  std::string company;
  std::string salaryIncrease;
  std::string growth;
  std::string inflation;
  std::string years;
};

/// PGCalculate: replaces the report (59 columns), the year table (column 0 the
/// salary, row 0 column 4 the balance) and the chart selectors. A failure gives
/// message 3 and leaves all of them as they were. The results to show end with a
/// hint to the hidden column that the printed report does not have.
Outcome calculatePensionGrowth(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                               const PensionGrowthTexts& texts) noexcept;

}  // namespace mirelund

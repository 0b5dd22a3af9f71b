// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/pension_growth.h"

#include <cmath>

#include "app/input_boxes.h"
#include "calc/calculator_testing.h"
#include "calc/investment_growth.h"
#include "calc/pension_growth_help.h"
#include "charts/chart_kind.h"
#include "reached.h"

namespace mirelund {
namespace {

struct Figures {
  double balance = 0, salary = 0, own = 0, company = 0, increase = 0, growth = 0, inflation = 0;
  int years = 0;
};

PensionGrowthInput inputOf(const Figures& f) {
  return {ToCurrency(f.balance),   ToCurrency(f.salary),    ToCurrency(f.own),
          ToCurrency(f.company),   ToCurrency(f.increase),  ToCurrency(f.growth),
          ToCurrency(f.inflation), Currency::whole(f.years)};
}

// The page without its window: stores the figures and calculates.
Outcome calculate(Global& global, const PensionGrowthInput& in) {
  auto& slots = global.boxes.InputValues;
  slots = {Currency(),       in.balance,          in.salary,
           in.ownPercent,    in.companyPercent,   in.salaryIncreasePercent,
           in.growthPercent, in.inflationPercent, in.years};
  const auto text = [&](const char* box) {
    return boxText(global.boxes, boxRule(kPensionGrowthBoxes, box));
  };
  return calculatePensionGrowth(
      global.boxes, global.reports, global.chart,
      {text("PGInCurrBalance"), text("PGInCurrAnnSalary"), text("PGInAnnContribRate"),
       text("PGInCompAnnContribRate"), text("PGInEstSalIncrease"), text("PGInAnnIntGrowthRate"),
       text("PGInEstAnnFlatRate"), text("PGInNumYearsToRetire")});
}

Outcome calculate(Global& global, const Figures& f) {
  return calculate(global, inputOf(f));
}

constexpr Figures kInitial{0, 40000, 4, 4, 4, 10, 0, 25};
constexpr Figures kThreeYears{1000, 10000, 5, 5, 10, 10, 0, 3};

TEST(PensionGrowth, ReportsTheYears) {
  Global global;
  const Outcome outcome = calculate(global, kThreeYears);
  // 1000 + 1000, 10 %: 2,200; (2,200 + 1,000) x 1.1 = 3,520; (3,520 + 1,100) x
  // 1.1 = 5,082; contributions 1,000 + 1,000 + 1,100 + 1,210 = 4,310.
  const std::string report =
      "Current balance in account:      $1,000.00\r\n"
      "My current annual salary:       $10,000.00\r\n"
      "My annual contribution rate:          5.00%\r\n"
      "Company annual contribution rate:     5.00%\r\n"
      "Estimated annual salary increase:    10.00%\r\n"
      "Annual interest/growth rate:         10.00%\r\n"
      "Estimated annual inflation rate:       .00%\r\n"
      "Number of years to retirement:            3\r\n"
      "Year    Salary    Contributions    Int/Growth         Value\r\n"
      "___________________________________________________________\r\n"
      "  1     10,000.00      1,000.00        200.00      2,200.00\r\n"
      "  2     11,000.00      1,100.00        320.00      3,520.00\r\n"
      "  3     12,100.00      1,210.00        462.00      5,082.00\r\n"
      "___________________________________________________________\r\n"
      "Total:                 4,310.00        772.00      5,082.00\r\n";
  const Sheet table = sheetOf(outcome.table);
  ASSERT_EQ(table.columns.size(), 5U);
  EXPECT_EQ(table.columns[1].heading, "Salary");
  ASSERT_EQ(table.rows.size(), 3U);
  EXPECT_EQ(table.rows[2], (std::vector<Cell>{std::int64_t{3}, ToCurrency(12100), ToCurrency(1210),
                                              ToCurrency(462), ToCurrency(5082)}));
  EXPECT_EQ(global.reports.ReportLines[1], report);
  EXPECT_EQ(outcome.results, report + "\r\n                            Hidden column >");
  EXPECT_TRUE(outcome.showResults);
  EXPECT_EQ(outcome.message, Message::None);
}

TEST(PensionGrowth, GrowsFromItsInitialValues) {
  Global global;
  calculate(global, kInitial);
  const auto rows = rowsOf(global.reports.ReportLines[1]);
  ASSERT_EQ(rows.size(), 25U);
  // 8 % of 40,000; 10 % of it.
  EXPECT_EQ(rows[0], "  1     40,000.00      3,200.00        320.00      3,520.00");
  // Base (3,520 + 3,200), 10 %; the second contribution 3,200 x 1.04.
  EXPECT_EQ(rows[1], "  2     41,600.00      3,328.00        672.00      7,392.00");
  // 40,000 x 1.04^24 = 102,532.17; 3,200 x 1.04^24 = 8,202.57.
  EXPECT_EQ(rows[24], " 25    102,532.17      8,202.57     42,012.87    462,141.54");
  // 3,200 x (1.04^25 - 1) / 0.04 = 133,266.91.
  EXPECT_EQ(linesOf(global.reports.ReportLines[1]).back(),
            "Total:               133,266.91    328,874.63    462,141.54");
}

TEST(PensionGrowth, AddsTheFirstContributionTwice) {
  // Without growth the value shows what entered it: the first contribution
  // twice, and the last not yet.
  const auto result = pensionGrowth(inputOf({0, 10000, 10, 0, 0, 0, 0, 4}));
  const int values[] = {1000, 2000, 3000, 4000};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(result.rows[i].value, Currency::whole(values[i]));
  const auto raised = pensionGrowth(inputOf({0, 10000, 10, 0, 50, 0, 0, 3}));
  EXPECT_EQ(raised.rows[1].value, Currency::whole(1000 + 1000));
  EXPECT_EQ(raised.rows[2].value, Currency::whole(1000 + 1000 + 1500));
  EXPECT_EQ(raised.totals.second, Currency::whole(1000 + 1500 + 2250));
  EXPECT_EQ(raised.totals.third, Currency::whole(3500 - 4750));
}

TEST(PensionGrowth, FillsTheTableAndTheChart) {
  Global global;
  calculate(global, kThreeYears);
  EXPECT_EQ(global.chart.ChartKind, ChartKind::PensionGrowth);
  EXPECT_EQ(global.chart.ChartCount, 3);
  EXPECT_EQ(global.chart.ChartTitle, " Pension growth over ");
  const CurrencyTable& table = global.reports.ComparisonTable;
  EXPECT_EQ(table.at(0, 4), Currency::whole(1000));
  const int rows[][5] = {{10000, 1, 1000, 200, 2200},
                         {11000, 2, 1100, 320, 3520},
                         {12100, 3, 1210, 462, 5082},
                         {0, 3, 4310, 772, 5082},
                         {0, 0, 0, 0, 0}};
  for (std::size_t row = 1; row <= 5; ++row)
    for (std::size_t column = 0; column < 5; ++column)
      EXPECT_EQ(table.at(row, column), Currency::whole(rows[row - 1][column]))
          << row << ", " << column;
}

TEST(PensionGrowth, TheGrowthRateIsHeldInSinglePrecision) {
  const auto initial = pensionGrowth(inputOf(kInitial));
  EXPECT_EQ(initial.rows[0].third, Currency::whole(320));
  // 10 % is 0.100000001490116: on 1,000,000,000 that shows.
  EXPECT_EQ(pensionGrowth(inputOf({1e9, 0, 0, 0, 0, 10, 0, 1})).rows[0].third.tenThousandths(),
            1'000'000'014'901);
}

TEST(PensionGrowth, SalaryAndContributionAreRoundedEveryYear) {
  // 0.0333 x 1.5 = 0.04995, a tie to even: 0.0500 (exact: 0.0333 x 1.5^2 = 0.0749).
  const auto result = pensionGrowth(inputOf({0, 0.0333, 100, 0, 50, 0, 0, 3}));
  EXPECT_EQ(result.salaries[1].tenThousandths(), 500);
  EXPECT_EQ(result.salaries[2].tenThousandths(), 750);
  EXPECT_EQ(result.rows[2].second.tenThousandths(), 750);
}

TEST(PensionGrowth, InflationTakesItsShareAfterGrowth) {
  // 1,000 x 0.9, and again.
  const auto inflation = pensionGrowth(inputOf({1000, 0, 0, 0, 0, 0, 10, 2}));
  EXPECT_EQ(inflation.rows[0].value, Currency::whole(900));
  EXPECT_EQ(inflation.rows[1].value, Currency::whole(810));
  // 1,000 x 1.5 x 0.5.
  EXPECT_EQ(pensionGrowth(inputOf({1000, 0, 0, 0, 0, 50, 50, 1})).rows[0].value,
            Currency::whole(750));
}

TEST(PensionGrowth, AFailureLeavesScreenReportAndChart) {
  for (const Figures& f :
       {Figures{0, 40000, 4, 4, 4, 10, 0, 0}, Figures{9e14, 9e14, 100, 0, 0, 0, 0, 1},
        Figures{1000, 0, 0, 0, 0, 9e14, 0, 2}, Figures{1000, 0, 0, 0, 0, 0, 9e14, 2},
        Figures{0, 1000, 1, 0, 9e14, 0, 0, 40}, Figures{0, 9e14, 9e14, 0, 0, 0, 0, 1}}) {
    Global global;
    calculate(global, kThreeYears);
    global.reports.StartOver = 1;
    const Shown before(global);
    const Outcome outcome = calculate(global, f);
    EXPECT_EQ(outcome.message, Message::WrongEntry);
    EXPECT_FALSE(outcome.showResults);
    EXPECT_EQ(Shown(global), before);
  }
}

TEST(PensionGrowth, EveryCalculationReplacesTheReport) {
  Global global;
  const std::string first = calculate(global, kThreeYears).results;
  for (int i = 0; i < 12; ++i) EXPECT_EQ(calculate(global, kThreeYears).results, first);
  EXPECT_EQ(global.reports.ComparisonCount, 0);
  showHelp(global.reports, pensionGrowthHelp());
  EXPECT_EQ(calculate(global, kThreeYears).results, first);
}

rc::Gen<PensionGrowthInput> inputOf(const rc::Gen<Currency>& amount,
                                    const rc::Gen<Currency>& rate) {
  using In = PensionGrowthInput;
  return rc::gen::build<In>(
      rc::gen::set(&In::balance, amount), rc::gen::set(&In::salary, amount),
      rc::gen::set(&In::ownPercent, rate), rc::gen::set(&In::companyPercent, rate),
      rc::gen::set(&In::salaryIncreasePercent, rate), rc::gen::set(&In::growthPercent, rate),
      rc::gen::set(&In::inflationPercent, rate), rc::gen::set(&In::years, anyYears()));
}

rc::Gen<PensionGrowthInput> anyInput() {
  return rc::gen::oneOf(inputOf(usualAmount(), usualRate()), inputOf(anyAmount(), anyRate()));
}

TEST(PensionGrowth, AnyInputEndsInAReportOrMessageThree) {
  checkReaching({{"report", 0.35}, {"message 3", 0.15}}, [](Reached& reached) {
    Global global;
    const Outcome outcome = calculate(global, *anyInput());
    RC_ASSERT(outcome.showResults != (outcome.message == Message::WrongEntry));
    RC_ASSERT(!showsNoNumber(outcome.results));
    for (const auto& row : rowsOf(outcome.results)) RC_ASSERT(row.size() == 59U);
    if (outcome.showResults) RC_ASSERT(linesOf(global.reports.ReportLines[1]).back().size() == 59U);
    reached(outcome.showResults ? "report"
                                : "message " + std::to_string(static_cast<int>(outcome.message)));
  });
}

// A balance without contributions grows as a lump sum does.
RC_GTEST_PROP(PensionGrowth, ABalanceAloneIsALumpSum, ()) {
  PensionGrowthInput pension;
  pension.balance = *rc::gen::map(rc::gen::inRange(1, 1'000'000), Currency::whole);
  pension.growthPercent = Currency::fromTenThousandths(*rc::gen::inRange(0, 200'000));
  pension.inflationPercent = Currency::fromTenThousandths(*rc::gen::inRange(0, 200'000));
  pension.years = Currency::whole(*rc::gen::inRange(1, 41));
  InvestmentGrowthInput lump;
  lump.beginning = pension.balance;
  lump.growthPercent = pension.growthPercent;
  lump.inflationPercent = pension.inflationPercent;
  lump.years = pension.years;
  const double value = pensionGrowth(pension).totals.value.toDouble();
  RC_ASSERT(std::abs(value - investmentGrowth(lump).totals.value.toDouble()) <=
            1e-6 * value + 0.01);
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/investment_growth.h"

#include <cmath>

#include "app/input_boxes.h"
#include "calc/calculator_testing.h"
#include "calc/capital_required.h"
#include "calc/compound_gain.h"
#include "calc/investment_growth_help.h"
#include "charts/chart_kind.h"
#include "reached.h"

namespace mirelund {
namespace {

using enum ContributionFrequency;
using enum GrowthResults;

struct Figures {
  double beginning = 0, contribution = 0, growth = 0, increase = 0, inflation = 0;
  int years = 0;
  ContributionFrequency frequency = Annually;
};

InvestmentGrowthInput inputOf(const Figures& f) {
  return {ToCurrency(f.beginning),
          ToCurrency(f.contribution),
          ToCurrency(f.growth),
          ToCurrency(f.increase),
          ToCurrency(f.inflation),
          Currency::whole(f.years),
          f.frequency};
}

// The page without its window: stores the figures and calculates.
Outcome calculate(Global& global, const InvestmentGrowthInput& in, GrowthResults results) {
  auto& slots = global.boxes.InputValues;
  slots[1] = in.beginning;
  slots[2] = in.contribution;
  slots[4] = in.growthPercent;
  slots[5] = in.increasePercent;
  slots[6] = in.inflationPercent;
  slots[7] = in.years;
  const auto text = [&](const char* box) {
    return boxText(global.boxes, boxRule(kInvestmentGrowthBoxes, box));
  };
  return calculateInvestmentGrowth(
      global.boxes, global.reports, global.chart,
      {text("IGInBegBal"), text("IGInEachContrib"), in.frequency, text("IGInIntGrowthRate"),
       text("IGInAnnContribRate"), text("IGInAnninFlatRate"), text("IGInYearsInvested"), results});
}

Outcome calculate(Global& global, const Figures& f, GrowthResults results = Complete) {
  return calculate(global, inputOf(f), results);
}

constexpr Figures kExample1{0, 1000, 20, 0, 0, 25};
constexpr Figures kExample2{1000, 0, 20, 0, 0, 25};
constexpr Figures kExample3{0, 1000, 20, 5, 0, 25};
constexpr Figures kExample4{30000, 0, 0, 0, 5, 25};
constexpr Figures kTwoYears{1000, 100, 10, 0, 0, 2};
constexpr Figures kFails{0, 1000, 15, 0, 0, 0};

const std::string kHeading =
    "Beginning balance:              $1,000.00\r\n"
    "Each contribution:                $100.00\r\n"
    "Frequency of contribution:     Annually\r\n"
    "Annual growth rate:                 10.00%\r\n"
    "Increase annual contribution:         .00%\r\n"
    "Annual inflation rate:                .00%\r\n"
    "Number years invested:                  2\r\n"
    "Year     Invested    Int/Growth         Value\r\n"
    "_____________________________________________\r\n";
// 1,100 x 1.1 = 1,210; (1,210 + 100) x 1.1 = 1,441; 1,441 - 1,200 = 241.
const std::string kTotals = "  2      1,200.00        241.00      1,441.00\r\n";
const std::string kUnderlined = "_____________________________________________\r\n";
const std::string kBlock = kHeading + kTotals + kUnderlined + "\r\n";

TEST(InvestmentGrowth, ReportsEveryPeriod) {
  Global global;
  const Outcome outcome = calculate(global, kTwoYears);
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_EQ(outcome.results, kHeading +
                                 "  1      1,100.00        110.00      1,210.00\r\n"
                                 "  2        100.00        131.00      1,441.00\r\n" +
                                 kUnderlined + kTotals);
  EXPECT_EQ(global.reports.ReportLines[1], outcome.results);
}

TEST(InvestmentGrowth, FillsTheTableAndTheChart) {
  Global global;
  Figures monthly = kTwoYears;
  monthly.frequency = Monthly;
  calculate(global, monthly);
  EXPECT_EQ(global.chart.ChartKind, ChartKind::GrowthYears);
  EXPECT_EQ(global.chart.ChartCount, 2);
  EXPECT_EQ(global.chart.ChartPeriods, 24);
  EXPECT_EQ(global.chart.ChartPeriodsPerYear, 12);
  EXPECT_EQ(global.chart.ChartTitle, "Investment growth over ");
  EXPECT_EQ(global.reports.ComparisonTable.at(1, 2), Currency::whole(1100));
  EXPECT_EQ(global.reports.ComparisonTable.at(24, 1), Currency::whole(24));
  EXPECT_EQ(global.reports.ComparisonTable.at(25, 1), Currency::whole(24));
  EXPECT_EQ(global.reports.ComparisonTable.at(25, 2), Currency::whole(1000 + 24 * 100));
  EXPECT_EQ(global.reports.ComparisonTable.at(25, 4), global.reports.ComparisonTable.at(24, 4));
  EXPECT_EQ(global.reports.ComparisonTable.at(26, 1), Currency());
}

struct Example {
  const char* source;
  Figures figures;
  const char* totals;
};

const Example kExamples[] = {
    {"savings, s-due(25, 20 %) = 566.37732", kExample1,
     " 25     25,000.00    541,377.32    566,377.32"},
    {"lump sum, 1000 x 1.2^25 = 95,396.22", kExample2,
     " 25      1,000.00     94,396.22     95,396.22"},
    {"contribution raised 5 % a year", kExample3, " 25     47,727.10    688,351.84    736,078.94"},
    {"30000 x 0.95^25 = 8,321.69", kExample4, " 25     30,000.00    -21,678.31      8,321.69"},
    {"12 % a year, monthly",
     {0, 1000, 12, 0, 0, 1, Monthly},
     " 12     12,000.00        766.50     12,766.50"},
};

TEST(InvestmentGrowth, AgreesWithWorkedExamples) {
  for (const auto& c : kExamples) {
    Global global;
    EXPECT_EQ(linesOf(calculate(global, c.figures).results).back(), c.totals) << c.source;
  }
}

TEST(InvestmentGrowth, TheFirstYears) {
  EXPECT_EQ(investmentGrowth(inputOf(kExample2)).rows[0].value, Currency::whole(1200));
  EXPECT_EQ(investmentGrowth(inputOf(kExample4)).rows[0].value, Currency::whole(28500));
  // 1000 x 1.05^24 = 3,225.0999; rounding to four decimals every year moves it
  // by no more than a few ten-thousandths.
  EXPECT_EQ(FormatNumber(investmentGrowth(inputOf(kExample3)).rows[24].second, "####,,###.00"),
            "3,225.10");
}

TEST(InvestmentGrowth, TwelvePercentIsNotOnePercentAMonth) {
  // 1.12^(1/12) - 1 = 0.00948879293...
  EXPECT_NEAR(periodRate(Currency::whole(12), 12), 0.00948879293, 1e-11);
  const auto year = investmentGrowth(inputOf({0, 1000, 12, 0, 0, 1, Monthly}));
  EXPECT_EQ(year.rows[0].third.tenThousandths(), 94888);
}

// 1,000,000,000 at 10 % earns 100,000,001.4901 because single precision holds
// 10 % as 0.100000001490116...
TEST(InvestmentGrowth, TheGrowthRateIsHeldInSinglePrecision) {
  const auto year = investmentGrowth(inputOf({1'000'000'000, 0, 10, 0, 0, 1}));
  EXPECT_EQ(year.rows[0].third.tenThousandths(), 1'000'000'014'901);
}

TEST(InvestmentGrowth, CompleteReplacesWhatStoodThere) {
  Global global;
  const std::string first = calculate(global, kTwoYears).results;
  for (int i = 0; i < 12; ++i) {
    const Outcome outcome = calculate(global, kTwoYears);
    EXPECT_EQ(outcome.results, first);
    EXPECT_EQ(outcome.message, Message::None);
    EXPECT_EQ(global.reports.ComparisonCount, 1);
  }
  calculate(global, kTwoYears, Comparison);
  EXPECT_EQ(calculate(global, kTwoYears).results, first);
  showHelp(global.reports, investmentGrowthHelp());
  EXPECT_EQ(calculate(global, kTwoYears).results, first);
}

TEST(InvestmentGrowth, TheTenthShowsAllBlocksAndTheEleventhStartsAgain) {
  Global global;
  std::string blocks;
  for (int i = 1; i <= 9; ++i) {
    blocks += kBlock;
    EXPECT_EQ(calculate(global, kTwoYears, Comparison).results, blocks);
    EXPECT_EQ(global.chart.ChartCount, i);
    EXPECT_EQ(global.chart.ChartKind, ChartKind::GrowthComparisons);
    EXPECT_EQ(global.reports.ComparisonTotals.at(static_cast<std::size_t>(i), 1),
              Currency::whole(1441));
  }
  EXPECT_EQ(global.chart.ChartTitle, "Totals for comparisons, number ");
  const Outcome tenth = calculate(global, kTwoYears, Comparison);
  EXPECT_EQ(tenth.message, Message::MostComparisons);
  EXPECT_EQ(tenth.results, blocks + kBlock);
  EXPECT_EQ(global.reports.ReportLines[1], "");
  EXPECT_EQ(global.chart.ChartCount, 10);
  EXPECT_EQ(calculate(global, kTwoYears, Comparison).results, kBlock);
  EXPECT_EQ(global.reports.ComparisonCount, 1);
}

TEST(InvestmentGrowth, AComparisonAfterACompleteReportStandsBelowIt) {
  Global global;
  const std::string complete = calculate(global, kTwoYears).results;
  EXPECT_EQ(calculate(global, kTwoYears, Comparison).results, complete + kBlock);
  EXPECT_EQ(global.reports.ComparisonCount, 2);
}

TEST(InvestmentGrowth, HelpIsReplacedByTheNextComparison) {
  Global global;
  calculate(global, kTwoYears, Comparison);
  showHelp(global.reports, investmentGrowthHelp());
  EXPECT_EQ(calculate(global, kTwoYears, Comparison).results, kBlock);
}

TEST(InvestmentGrowth, AFailureInCompleteModeLeavesScreenReportAndChart) {
  for (const Figures& f :
       {kFails, Figures{9e14, 9e13, 0, 0, 0, 1}, Figures{1000, 0, 9e14, 0, 0, 40},
        Figures{1, 1, 1, 1, 9e14, 40}, Figures{0, 1, 0, 9e14, 0, 2, Monthly}}) {
    Global global;
    calculate(global, kTwoYears);
    global.reports.StartOver = 1;
    const Shown before(global);
    const Outcome outcome = calculate(global, f);
    EXPECT_EQ(outcome.message, Message::WrongEntry);
    EXPECT_FALSE(outcome.showResults);
    EXPECT_EQ(Shown(global), before);
  }
}

TEST(InvestmentGrowth, AFailedComparisonLeavesItsHeadingAndNeverPassesTen) {
  Global global;
  const std::string orphan = [&] {
    EXPECT_EQ(calculate(global, kFails, Comparison).message, Message::WrongEntry);
    return global.reports.ReportLines[1];
  }();
  EXPECT_EQ(linesOf(orphan).size(), 9U);
  EXPECT_EQ(global.reports.ComparisonCount, 1);
  EXPECT_EQ(global.chart.ChartCount, 0);
  EXPECT_EQ(calculate(global, kTwoYears, Comparison).results, orphan + kBlock);
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(calculate(global, kFails, Comparison).message, Message::WrongEntry);
    EXPECT_LE(global.reports.ComparisonCount, 10);
  }
  EXPECT_EQ(global.reports.ComparisonTotals.at(2, 1), Currency::whole(1441));
  EXPECT_EQ(calculate(global, kTwoYears, Comparison).message, Message::MostComparisons);
  EXPECT_EQ(calculate(global, kTwoYears, Comparison).results, kBlock);
}

TEST(InvestmentGrowth, AFailedFirstComparisonLeavesNoChartOfClearedTotals) {
  Global global;
  for (int i = 0; i < 3; ++i) calculate(global, kTwoYears, Comparison);
  showHelp(global.reports, investmentGrowthHelp());
  EXPECT_EQ(calculate(global, kFails, Comparison).message, Message::WrongEntry);
  EXPECT_EQ(global.chart.ChartCount, 0);
}

rc::Gen<InvestmentGrowthInput> inputOf(const rc::Gen<Currency>& amount,
                                       const rc::Gen<Currency>& rate) {
  using In = InvestmentGrowthInput;
  return rc::gen::build<In>(
      rc::gen::set(&In::beginning, amount), rc::gen::set(&In::contribution, amount),
      rc::gen::set(&In::growthPercent, rate), rc::gen::set(&In::increasePercent, rate),
      rc::gen::set(&In::inflationPercent, rate), rc::gen::set(&In::years, anyYears()),
      rc::gen::set(&In::frequency, rc::gen::element(Annually, Quarterly, Monthly)));
}

rc::Gen<InvestmentGrowthInput> anyInput() {
  return rc::gen::oneOf(inputOf(usualAmount(), usualRate()), inputOf(anyAmount(), anyRate()));
}

TEST(InvestmentGrowth, AnyInputEndsInAReportOrMessageThree) {
  checkReaching({{"report", 0.35}, {"message 3", 0.15}}, [](Reached& reached) {
    Global global;
    const Outcome outcome = calculate(global, *anyInput(), *rc::gen::element(Complete, Comparison));
    RC_ASSERT(outcome.showResults != (outcome.message == Message::WrongEntry));
    RC_ASSERT(!showsNoNumber(outcome.results));
    for (const auto& row : rowsOf(outcome.results)) RC_ASSERT(row.size() == 45U);
    reached(outcome.showResults ? "report"
                                : "message " + std::to_string(static_cast<int>(outcome.message)));
  });
}

// A lump sum that compound gain sees grow must grow at compound gain's rate.
RC_GTEST_PROP(InvestmentGrowth, CompoundGainFindsTheRate, ()) {
  InvestmentGrowthInput input;
  input.beginning = Currency::whole(*rc::gen::inRange(1000, 1'000'000));
  input.growthPercent = Currency::fromTenThousandths(*rc::gen::inRange(10'000, 300'000));
  input.years = Currency::whole(*rc::gen::inRange(1, 41));
  input.frequency = *rc::gen::element(Annually, Quarterly, Monthly);
  const Currency value = investmentGrowth(input).totals.value;
  const double rate = compoundGain({input.beginning, value, input.years}).annualRate;
  RC_ASSERT(std::abs(100 * rate - input.growthPercent.toDouble()) < 1e-4);
}

// Investing what capital required asks for, every year, reaches the capital.
RC_GTEST_PROP(InvestmentGrowth, TheCapitalRequiredIsReached, ()) {
  const Currency capital = Currency::whole(*rc::gen::inRange(10'000, 1'000'000));
  InvestmentGrowthInput input;
  input.growthPercent = Currency::fromTenThousandths(*rc::gen::inRange(10'000, 200'000));
  input.years = Currency::whole(*rc::gen::inRange(1, 41));
  const double payment =
      capitalRequired({CapitalTarget::Capital, capital, input.growthPercent, input.years})
          .yearlyInvestment;
  input.contribution = ToCurrency(payment);
  // The payment is rounded to four decimals and the rate to single precision.
  const double exact = capital.toDouble();
  const double allowed = exact * (0.00005 / payment + 41 * 1e-7) + 0.01;
  RC_ASSERT(std::abs(investmentGrowth(input).totals.value.toDouble() - exact) < allowed);
}

}  // namespace
}  // namespace mirelund

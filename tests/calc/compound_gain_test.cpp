// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/compound_gain.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "app/input_boxes.h"
#include "calc/compound_gain_help.h"
#include "charts/chart_kind.h"
#include "reached.h"

namespace mirelund {
namespace {

// The page without its window: stores the figures and calculates.
Outcome calculate(Global& global, double cost, double value, int years,
                  const std::string& name = "XYZ Mutual Fund") {
  global.boxes.InputValues[1] = ToCurrency(cost);
  global.boxes.InputValues[2] = ToCurrency(value);
  global.boxes.InputValues[3] = Currency::whole(years);
  const auto text = [&](const char* box) {
    return boxText(global.boxes, boxRule(kCompoundGainBoxes, box));
  };
  return calculateCompoundGain(
      global.boxes, global.reports, global.chart,
      {text("CGInCostofInvest"), text("CGInValueNow"), text("CGInNumOfYrs"), name});
}

const std::string kBlock =
    "Cost of Investment:             $10,000.00\r\n"
    "Present/future value:           $20,000.00\r\n"
    "Number of years invested:                5\r\n"
    "Name of investment:        XYZ Mutual Fund\r\n"
    "\r\n"
    "Years     Cost        Value  Annual%   Total%\r\n"
    "_____________________________________________\r\n"
    " 5   10,000.00    20,000.00  14.870%  100.00%\r\n"
    "_____________________________________________\r\n"
    "\r\n";

TEST(CompoundGain, ReportsTheFirstComparison) {
  Global global;
  const Outcome outcome = calculate(global, 10000, 20000, 5);
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_TRUE(outcome.showResults);
  EXPECT_EQ(outcome.results, kBlock);
}

struct Rate {
  const char* source;
  double cost, value;
  int years;
  const char* row;
};

// (value / cost)^(1/years) - 1 by hand calculator, to the digits shown.
constexpr Rate kRates[] = {
    {"doubling in 5 years: 2^(1/5)", 1000, 2000, 5,
     " 5    1,000.00     2,000.00  14.870%  100.00%"},
    {"eightfold in 20 years: 8^(1/20)", 25000, 200000, 20,
     "20   25,000.00   200,000.00  10.957%  700.00%"},
    {"doubling in 6 years: 2^(1/6)", 500, 1000, 6, " 6      500.00     1,000.00  12.246%  100.00%"},
    {"earnings 2.38 to 5.14", 2.38, 5.14, 6, " 6        2.38         5.14  13.692%  115.97%"},
    {"no change", 100, 100, 7, " 7      100.00       100.00    .000%     .00%"},
    {"half lost in one year", 100, 50, 1, " 1      100.00        50.00 -50.000%  -50.00%"},
    {"1 % a year for 40 years: 1.01^40 = 1.4888637", 10000, 14888.64, 40,
     "40   10,000.00    14,888.64   1.000%   48.89%"},
};

TEST(CompoundGain, RatesMatchTheClosedForm) {
  for (const auto& c : kRates) {
    const CompoundGainInput input{ToCurrency(c.cost), ToCurrency(c.value),
                                  Currency::whole(c.years)};
    std::string row;
    appendCompoundGainRow(row, input, compoundGain(input));
    EXPECT_EQ(row.substr(0, row.find('\r')), c.row) << c.source;
  }
}

TEST(CompoundGain, FillsTheChart) {
  Global global;
  calculate(global, 10000, 20000, 5);
  EXPECT_EQ(global.chart.ChartKind, ChartKind::CompoundGain);
  EXPECT_EQ(global.chart.ChartCount, 1);
  EXPECT_EQ(global.chart.ChartTitle, "Percentage gain/loss for comparisions ");
  // 100 x (2^0.2 - 1) = 14.869835...
  EXPECT_EQ(global.reports.ComparisonTotals.at(1, 1).tenThousandths(), 148698);
  // 10000 x 2^(y/5), truncated.
  const int values[] = {11486, 13195, 15157, 17411};
  for (std::size_t year = 1; year <= 4; ++year) {
    EXPECT_EQ(global.reports.ComparisonTable.at(year, 1), Currency::whole(static_cast<int>(year)));
    EXPECT_EQ(global.reports.ComparisonTable.at(year, 4), Currency::whole(values[year - 1]))
        << year;
  }
  // Years count from 1.
  for (std::size_t column = 0; column <= 5; ++column)
    EXPECT_EQ(global.reports.ComparisonTable.at(0, column), Currency()) << column;
}

TEST(CompoundGain, TheTenthShowsAllBlocksAndTheEleventhStartsAgain) {
  Global global;
  std::string blocks;
  for (int i = 1; i <= 9; ++i) {
    blocks += kBlock;
    EXPECT_EQ(calculate(global, 10000, 20000, 5).results, blocks);
    EXPECT_EQ(global.chart.ChartCount, i);
  }
  const Outcome tenth = calculate(global, 10000, 20000, 5);
  EXPECT_EQ(tenth.message, Message::MostComparisons);
  EXPECT_EQ(tenth.results, blocks + kBlock);
  EXPECT_EQ(global.reports.ReportLines[1], "");
  EXPECT_EQ(global.chart.ChartCount, 10);
  const Outcome eleventh = calculate(global, 10000, 20000, 5);
  EXPECT_EQ(eleventh.results, kBlock);
  EXPECT_EQ(global.reports.ComparisonCount, 1);
}

TEST(CompoundGain, ZeroInputLeavesItsHeading) {
  Global global;
  const Outcome refused = calculate(global, 0, 20000, 5);
  EXPECT_EQ(refused.message, Message::AllThreeBoxes);
  EXPECT_FALSE(refused.showResults);
  EXPECT_EQ(global.reports.ComparisonCount, 1);
  EXPECT_EQ(global.chart.ChartCount, 0);
  const std::string orphan =
      "Cost of Investment:                   $.00\r\n" + kBlock.substr(44, 44 * 3 + 2 + 94);
  EXPECT_EQ(calculate(global, 10000, 20000, 5).results, orphan + kBlock);
  EXPECT_EQ(calculate(global, 10000, 0, 5).message, Message::AllThreeBoxes);
  EXPECT_EQ(calculate(global, 10000, 20000, 0).message, Message::AllThreeBoxes);
}

TEST(CompoundGain, AFailedTenthNeverLetsTheCountPassTen) {
  Global global;
  for (int i = 1; i <= 9; ++i) calculate(global, 10000, 20000, 5);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(calculate(global, 0, 20000, 5).message, Message::AllThreeBoxes);
    EXPECT_EQ(global.reports.ComparisonCount, 10);
  }
  EXPECT_EQ(calculate(global, 10000, 20000, 5).message, Message::MostComparisons);
  EXPECT_EQ(global.reports.ComparisonCount, 0);
  EXPECT_EQ(global.chart.ChartCount, 10);
}

TEST(CompoundGain, HelpIsReplacedByTheNextReport) {
  Global global;
  calculate(global, 10000, 20000, 5);
  EXPECT_EQ(showHelp(global.reports, compoundGainHelp()).results, compoundGainHelp());
  EXPECT_EQ(global.reports.StartOver, 1);
  EXPECT_EQ(calculate(global, 10000, 20000, 5).results, kBlock);
  EXPECT_EQ(global.reports.StartOver, 0);
}

TEST(CompoundGain, TheNameFillsTwentyThreePlaces) {
  Global global;
  const auto line = [&](const std::string& name) {
    resetCalculators(global.boxes, global.reports, global.chart);
    const auto report = calculate(global, 1, 2, 3, name).results;
    const auto start = report.find("Name of");
    return report.substr(start, report.find("\r\n", start) - start);
  };
  EXPECT_EQ(line("12345678901234567890123"), "Name of investment:12345678901234567890123");
  EXPECT_EQ(line("123456789012345678901234"), "Name of investment:12345678901234567890123");
  EXPECT_EQ(line(""), "Name of investment:                       ");
  EXPECT_EQ(line("Zürich"), "Name of investment:                 Zürich");
}

TEST(CompoundGain, AResultOutOfRangeIsMessageThree) {
  Global global;
  // The chart's last value leaves the range only through the rate's rounding;
  // the rate itself leaves it here: 9e14 / 0.0001 in one year.
  const Outcome outcome = calculate(global, 0.0001, 900000000000000, 1);
  EXPECT_EQ(outcome.message, Message::WrongEntry);
  EXPECT_FALSE(outcome.showResults);
  EXPECT_EQ(global.chart.ChartCount, 0);
}

// No box lets so many years in.
TEST(CompoundGain, MoreYearsThanTheTableHasRowsAreMessageThree) {
  Global global;
  EXPECT_EQ(calculate(global, 1, 2, 500).message, Message::None);
  EXPECT_EQ(calculate(global, 1, 2, 501).message, Message::WrongEntry);
}

TEST(CompoundGain, TheFirstYearEndIsTheCostTimesOnePlusTheRate) {
  // e^(ln 0.2) - 1 is -0.8 and a trace: 500 (1 - 0.8 - trace) falls short of 100.
  Global global;
  calculate(global, 500, 100, 1);
  EXPECT_LT(500 * (1 + std::exp(std::log(0.2)) - 1), 100.0);
  EXPECT_EQ(global.reports.ComparisonTable.at(1, 4), Currency::whole(99));
}

TEST(CompoundGain, AnyInputEndsInAReportOrAMessage) {
  checkReaching({{"report", 0.7}, {"message 18", 0.01}}, [](Reached& reached) {
    Global global;
    const auto amount = rc::gen::oneOf(
        rc::gen::inRange<std::int64_t>(0, 100'000'000), rc::gen::just<std::int64_t>(1),
        rc::gen::inRange<std::int64_t>(0, std::numeric_limits<std::int64_t>::max()));
    global.boxes.InputValues[1] = Currency::fromTenThousandths(*amount);
    global.boxes.InputValues[2] = Currency::fromTenThousandths(*amount);
    global.boxes.InputValues[3] = Currency::whole(*rc::gen::inRange(0, 41));
    const Outcome outcome =
        calculateCompoundGain(global.boxes, global.reports, global.chart, {"c", "v", "y", "n"});
    RC_ASSERT(outcome.showResults || outcome.message == Message::WrongEntry ||
              outcome.message == Message::AllThreeBoxes);
    RC_ASSERT(outcome.results.find("nan") == std::string::npos);
    RC_ASSERT(outcome.results.find("inf") == std::string::npos);
    reached(outcome.showResults ? "report"
                                : "message " + std::to_string(static_cast<int>(outcome.message)));
  });
}

RC_GTEST_PROP(CompoundGain, TheValueGrowsBackAtTheRate, ()) {
  const CompoundGainInput input{Currency::whole(*rc::gen::inRange(1, 1'000'000)),
                                Currency::whole(*rc::gen::inRange(1, 1'000'000)),
                                Currency::whole(*rc::gen::inRange(1, 41))};
  const double rate = compoundGain(input).annualRate;
  const double grown = input.cost.toDouble() * std::pow(1 + rate, input.years.toDouble());
  RC_ASSERT(std::abs(grown - input.value.toDouble()) < 1e-8 * input.value.toDouble());
}

}  // namespace
}  // namespace mirelund

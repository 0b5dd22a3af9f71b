// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/capital_required.h"

#include <cmath>

#include "app/input_boxes.h"
#include "calc/calculator_testing.h"
#include "calc/capital_required_help.h"
#include "charts/chart_kind.h"
#include "reached.h"

namespace mirelund {
namespace {

// The shared state, and the page's own.
struct Global : mirelund::Global {
  std::int16_t CapitalOption = 0;
};

// The page without its window: stores the figures and calculates.
Outcome calculate(Global& global, Currency amount, Currency rate, Currency years) {
  global.boxes.InputValues[1] = amount;
  global.boxes.InputValues[2] = rate;
  global.boxes.InputValues[3] = years;
  const auto text = [&](const char* box) {
    return boxText(global.boxes, boxRule(kCapitalRequiredBoxes, box));
  };
  return calculateCapitalRequired(
      global.boxes, global.reports, global.chart, global.CapitalOption,
      {text("CRInCapitalReq"), text("CRInIntGrowthRate"), text("CRInTimeInYrs")});
}

Outcome calculate(Global& global, int amount, int rate, int years) {
  return calculate(global, Currency::whole(amount), Currency::whole(rate), Currency::whole(years));
}

TEST(CapitalRequired, ReportsTheYears) {
  Global global;
  const Outcome outcome = calculate(global, 1210, 10, 2);
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_TRUE(outcome.showResults);
  // P = 1210 x 0.1 / (1.1 x 0.21) = 523.8095...; 10 % of it is 52.3810; then
  // 10 % of 576.1905 + 523.8095 = 1,100 is 110.
  EXPECT_EQ(outcome.results,
            "Amount of capital required:    $1,210.00\r\n"
            "Annual interest/growth rate:       10.00%\r\n"
            "Number of years:                       2\r\n"
            "\r\n"
            "Year     Invested    Int/Growth         Value\r\n"
            "_____________________________________________\r\n"
            "  1        523.81         52.38        576.19\r\n"
            "  2        523.81        110.00      1,210.00\r\n"
            "_____________________________________________\r\n"
            "Tot      1,047.62        162.38      1,210.00\r\n");
  EXPECT_EQ(global.reports.ReportLines[1], outcome.results);
}

TEST(CapitalRequired, SavesForAHundredThousand) {
  Global global;
  const Outcome outcome = calculate(global, 100000, 20, 25);
  // 100000 x 0.2 / (1.2 x (1.2^25 - 1)) = 176.5608; 25 times that is 4,414.02.
  EXPECT_EQ(linesOf(outcome.results).back(), "Tot      4,414.02     95,585.98    100,000.00");
  EXPECT_EQ(rowsOf(outcome.results).size(), 25U);
  EXPECT_EQ(rowsOf(outcome.results)[0], "  1        176.56         35.31        211.87");
}

TEST(CapitalRequired, FillsTheTableAndTheChart) {
  Global global;
  calculate(global, 100000, 20, 25);
  EXPECT_EQ(global.chart.ChartCount, 25);
  EXPECT_EQ(global.chart.ChartKind, ChartKind::CapitalRequired);
  EXPECT_EQ(global.chart.ChartTitle, "Growth in capital required over ");
  EXPECT_EQ(global.reports.ComparisonCount, 0);
  const CurrencyTable& table = global.reports.ComparisonTable;
  EXPECT_EQ(table.at(25, 1), Currency::whole(25));
  EXPECT_EQ(table.at(25, 4), Currency::whole(100000));
  EXPECT_EQ(table.at(26, 1), Currency::whole(26));
  EXPECT_EQ(table.at(26, 4), Currency::whole(100000));
  EXPECT_EQ(table.at(27, 1), Currency());
}

TEST(CapitalRequired, AnIncomeIsAHundredthOfTheRateInCapital) {
  Global global;
  global.CapitalOption = 2;
  const Outcome outcome = calculate(global, 40000, 20, 25);
  const auto lines = linesOf(outcome.results);
  EXPECT_EQ(lines[0], "Annual income required:       $40,000.00");
  // 40000 a year at 20 % is 200000 of capital; 25 x 353.12174 = 8,828.04.
  EXPECT_EQ(lines.back(), "Tot      8,828.04    191,171.96    200,000.00");
}

struct Published {
  const char* source;
  int years;
  double rate;
  double factor;  // of the capital, per year
};

// Sinking fund factors i / ((1 + i)^N - 1) of the compound interest tables of
// engineering economy (four or five decimals), for payments at the year's end;
// a payment at the year's start is that over 1 + i.
constexpr Published kSinkingFund[] = {
    {"A/F, 5 %, 10 years", 10, 5, 0.0795},    {"A/F, 8 %, 20 years", 20, 8, 0.02185},
    {"A/F, 10 %, 5 years", 5, 10, 0.16380},   {"A/F, 10 %, 25 years", 25, 10, 0.01017},
    {"A/F, 12 %, 30 years", 30, 12, 0.00414}, {"A/F, 6 %, 40 years", 40, 6, 0.00646},
};

TEST(CapitalRequired, AgreesWithSinkingFundTables) {
  for (const auto& c : kSinkingFund) {
    const auto result = capitalRequired(
        {CapitalTarget::Capital, Currency::whole(1), ToCurrency(c.rate), Currency::whole(c.years)});
    EXPECT_NEAR(result.yearlyInvestment * (1 + c.rate / 100), c.factor, 0.00005) << c.source;
  }
}

struct Refused {
  const char* rule;
  double amount, rate;
  int years;
  int option;
};

constexpr Refused kRefused[] = {
    {"a zero rate divides by zero", 100000, 0, 25, 0},
    {"a zero rate, income", 40000, 0, 25, 2},
    {"no years", 100000, 15, 0, 0},
    {"the power overflows", 100000, 900000000000000, 40, 0},
    {"the denominator overflows", 100000, 900000000000000, 24, 0},
    {"the capital leaves the range", 900000000000000, 0.01, 25, 2},
};

TEST(CapitalRequired, AFailureLeavesScreenReportAndChart) {
  for (const auto& c : kRefused) {
    Global global;
    calculate(global, 100000, 20, 25);
    global.reports.StartOver = 1;
    global.CapitalOption = static_cast<std::int16_t>(c.option);
    const Shown before(global);
    const Outcome outcome =
        calculate(global, ToCurrency(c.amount), ToCurrency(c.rate), Currency::whole(c.years));
    EXPECT_EQ(outcome.message, Message::WrongEntry) << c.rule;
    EXPECT_FALSE(outcome.showResults) << c.rule;
    EXPECT_EQ(Shown(global), before) << c.rule;
  }
}

TEST(CapitalRequired, EveryCalculationReplacesTheReport) {
  Global global;
  const std::string first = calculate(global, 100000, 20, 25).results;
  for (int i = 0; i < 12; ++i) {
    const Outcome outcome = calculate(global, 100000, 20, 25);
    EXPECT_EQ(outcome.results, first);
    EXPECT_EQ(outcome.message, Message::None);
  }
  showHelp(global.reports, capitalRequiredHelp());
  EXPECT_EQ(calculate(global, 100000, 20, 25).results, first);
  EXPECT_EQ(global.reports.StartOver, 0);
}

TEST(CapitalRequired, SwitchingTheOptionEmptiesTheReportAndReloads) {
  Global global;
  calculate(global, 1, 2, 3);
  const auto shown = switchCapitalOption(global.boxes, global.reports, global.CapitalOption,
                                         CapitalTarget::AnnualIncome);
  EXPECT_EQ(global.reports.ReportLines[1], "");
  EXPECT_EQ(global.CapitalOption, 2);
  EXPECT_EQ(global.boxes.InputValues[1], Currency::whole(40000));
  EXPECT_EQ(global.boxes.InputValues[2], Currency::whole(15));
  EXPECT_EQ(global.boxes.InputValues[3], Currency::whole(25));
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"CRInCapitalReq", "   $40,000.00"},
      {"Label26", "Annual income required $"},
      {"CRInIntGrowthRate", " 15.00%"},
      {"CRInTimeInYrs", " 25"}};
  ASSERT_EQ(shown.size(), expected.size());
  for (std::size_t i = 0; i < shown.size(); ++i) {
    EXPECT_EQ(shown[i].control, expected[i].first);
    EXPECT_EQ(shown[i].text, expected[i].second);
  }
  EXPECT_EQ(switchCapitalOption(global.boxes, global.reports, global.CapitalOption,
                                CapitalTarget::Capital)[1]
                .text,
            "Amount of capital required $");
  EXPECT_EQ(global.CapitalOption, 0);
  EXPECT_EQ(global.boxes.InputValues[1], Currency::whole(100000));
}

TEST(CapitalRequired, AnyInputEndsInAReportOrMessageThree) {
  checkReaching({{"report", 0.5}, {"message 3", 0.05}}, [](Reached& reached) {
    Global global;
    global.CapitalOption = *rc::gen::element<std::int16_t>(0, 2);
    const Outcome outcome = calculate(global, *anyAmount(), *anyRate(), *anyYears());
    RC_ASSERT(outcome.showResults != (outcome.message == Message::WrongEntry));
    RC_ASSERT(!showsNoNumber(outcome.results));
    for (const auto& row : rowsOf(outcome.results)) RC_ASSERT(row.size() == 45U);
    if (outcome.showResults) RC_ASSERT(linesOf(outcome.results).back().size() == 45U);
    reached(outcome.showResults ? "report"
                                : "message " + std::to_string(static_cast<int>(outcome.message)));
  });
}

RC_GTEST_PROP(CapitalRequired, TheSinkingFundReachesItsCapital, ()) {
  const CapitalRequiredInput input{CapitalTarget::Capital,
                                   Currency::whole(*rc::gen::inRange(1, 100'000'000)),
                                   Currency::fromTenThousandths(*rc::gen::inRange(100, 500'000)),
                                   Currency::whole(*rc::gen::inRange(1, 41))};
  const auto result = capitalRequired(input);
  const double capital = input.amount.toDouble();
  RC_ASSERT(std::abs(result.totals.value.toDouble() - capital) < 1e-9 * capital + 0.0001);
  const double sum = (result.totals.second + result.totals.third).toDouble();
  RC_ASSERT(std::abs(sum - capital) < 1e-9 * capital + 0.0002);
}

}  // namespace
}  // namespace mirelund

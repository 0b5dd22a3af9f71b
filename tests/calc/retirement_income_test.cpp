// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/retirement_income.h"

#include <cmath>

#include "app/input_boxes.h"
#include "calc/calculator_testing.h"
#include "calc/retirement_income_help.h"
#include "charts/chart_kind.h"
#include "reached.h"

namespace mirelund {
namespace {

using enum WithdrawalChoice;

// The shared state, and the page's own.
struct Global : mirelund::Global {
  std::int16_t WithdrawalOption = 0;
};

// The page without its window: stores the figures and calculates.
Outcome calculate(Global& global, WithdrawalChoice choice, Currency value, Currency growth,
                  Currency third, Currency fourth) {
  const auto option = static_cast<int>(choice);
  SwitchWithdrawalOption(global.boxes, global.reports, global.WithdrawalOption, choice);
  auto& slots = global.boxes.InputValues;
  slots[1] = value;
  slots[2] = growth;
  slots[3] = third;
  slots[4] = fourth;
  const auto text = [&](const char* box) {
    return boxText(global.boxes, boxRule(kRetirementIncomeBoxes, box, option));
  };
  return calculateRetirementIncome(global.boxes, global.reports, global.chart,
                                   global.WithdrawalOption,
                                   {text("RIInCurrValue"), text("RIInAnnIntGrowthRate"),
                                    text("RIInAnnIncWDrawnRate"), text("RIInTimeInYrs")});
}

Outcome calculate(Global& global, WithdrawalChoice choice, double value, double growth,
                  double third, double fourth) {
  return calculate(global, choice, ToCurrency(value), ToCurrency(growth), ToCurrency(third),
                   ToCurrency(fourth));
}

TEST(RetirementIncome, ReportsAPercentage) {
  Global global;
  const Outcome outcome = calculate(global, Percentage, 100000, 20, 15, 2);
  EXPECT_EQ(outcome.message, Message::None);
  // 20 % and 15 % of 100,000; value and income grow by 5 %.
  EXPECT_EQ(outcome.results,
            "Starting value of investments:   $100,000.00\r\n"
            "Annual interest/growth rate:           20.00%\r\n"
            "Annual income withdrawn as a (%):      15.00%\r\n"
            "Time in years:                             2\r\n"
            "\r\n"
            "Year   Int/Growth   Annual Income       Value\r\n"
            "_____________________________________________\r\n"
            "  1     20,000.00     15,000.00    105,000.00\r\n"
            "  2     21,000.00     15,750.00    110,250.00\r\n"
            "_____________________________________________\r\n"
            "Tot     41,000.00     30,750.00    110,250.00\r\n");
  EXPECT_EQ(global.reports.ReportLines[1], outcome.results);
  EXPECT_EQ(global.chart.ChartKind, ChartKind::IncomePercentage);
  EXPECT_EQ(global.chart.ChartCount, 2);
  EXPECT_EQ(global.chart.ChartTitle, "Retirement ending balance over ");
}

TEST(RetirementIncome, ReportsAFixedAmount) {
  Global global;
  const Outcome outcome = calculate(global, FixedAmount, 3000, 0, 100, 10);
  EXPECT_EQ(outcome.message, Message::None);
  // 3,000 - 12 x 100 = 1,800; + 10; - 12 x 110 = 490; + 11 = 501, no more than
  // 12 x 121: the last year pays out 501.
  EXPECT_EQ(outcome.results,
            "Starting value of investments:     $3,000.00\r\n"
            "Annual interest/growth rate:             .00%\r\n"
            "Monthly amount of cash withdrawn:    $100.00\r\n"
            "Increase annual income by:             10.00%\r\n"
            "\r\n"
            "Year   Int/Growth   Annual Income       Value\r\n"
            "_____________________________________________\r\n"
            "  1           .00      1,200.00      1,800.00\r\n"
            "  2           .00      1,320.00        490.00\r\n"
            "  3           .00        501.00           .00\r\n"
            "_____________________________________________\r\n"
            "Tot           .00      3,273.00           .00\r\n");
  EXPECT_EQ(global.chart.ChartKind, ChartKind::IncomeFixedAmount);
  EXPECT_EQ(global.chart.ChartCount, 3);
  EXPECT_EQ(global.chart.ChartTitle, "Retirement beginning balance over ");
}

TEST(RetirementIncome, TotalsUseNextYearsAmount) {
  // Incomes shown: 1,200, 1,320 and 501; the total has 1,320 + 1,452 + 501.
  const auto income =
      fixedIncome({Currency::whole(3000), Currency(), Currency::whole(100), Currency::whole(10)});
  EXPECT_EQ(income.totals.third, Currency::whole(3273));
  // Forty years at 10 %: the totals' value has the last raise, the row has not.
  const auto forty = fixedIncome(
      {Currency::whole(100'000), Currency::whole(10), Currency::whole(500), Currency::whole(3)});
  ASSERT_EQ(forty.rows.size(), 40U);
  // 500 x 1.03^39 x 0.03 = 47.51.
  EXPECT_NEAR((forty.totals.value - forty.rows.back().value).toDouble(), 47.505, 0.01);
}

TEST(RetirementIncome, TruncationAddsItsConstant) {
  const std::pair<double, std::int64_t> cases[] = {
      {0.0, 5}, {0.019, 105}, {1.0, 10'005}, {1.999, 19'905}, {-0.001, -95}, {15000, 150'000'005}};
  for (const auto& [x, units] : cases) EXPECT_EQ(TruncateToCents(x).tenThousandths(), units) << x;
  const auto year = percentageIncome({Currency::whole(100000), Currency::whole(20),
                                      Currency::whole(15), Currency::whole(1)})
                        .rows[0];
  EXPECT_EQ(year.third.tenThousandths(), 150'000'005);
  EXPECT_EQ(year.value.tenThousandths(), 1'050'000'005);
  // 20 % is 0.200000002980232 in single precision.
  EXPECT_EQ(year.second.tenThousandths(), 200'000'003);
}

TEST(RetirementIncome, WithdrawingTheGrowthKeepsTheValue) {
  const auto income = percentageIncome(
      {Currency::whole(100000), Currency::whole(10), Currency::whole(10), Currency::whole(40)});
  for (const auto& row : income.rows) EXPECT_EQ(row.value.tenThousandths(), 1'000'000'005);
}

TEST(RetirementIncome, LessThanTheGrowthLastsFortyYears) {
  Global global;
  const auto report = calculate(global, FixedAmount, 100000, 10, 500, 0).results;
  const auto rows = rowsOf(report);
  ASSERT_EQ(rows.size(), 40U);
  // Computed apart, month by month, in decimal.
  EXPECT_EQ(rows[0], "  1      9,729.73      6,000.00    103,729.73");
  EXPECT_EQ(rows[39], " 40    159,458.97      6,000.00  1,750,751.40");
  EXPECT_EQ(linesOf(report).back(), "Tot  1,890,751.40    240,000.00  1,750,751.40");
}

TEST(RetirementIncome, MoreThanTheGrowthEndsTheCapital) {
  Global global;
  const auto report = calculate(global, FixedAmount, 100000, 10, 1000, 0).results;
  const auto rows = rowsOf(report);
  ASSERT_EQ(rows.size(), 17U);
  EXPECT_EQ(rows[0], "  1      9,459.46     12,000.00     97,459.46");
  EXPECT_EQ(rows[15], " 16      1,387.55     12,000.00      8,668.39");
  // The remaining capital plus its interest: 8,668.39 + 341.79.
  EXPECT_EQ(rows[16], " 17        341.79      9,010.18           .00");
  EXPECT_EQ(linesOf(report).back(), "Tot    101,010.18    201,010.18           .00");
}

TEST(RetirementIncome, FillsTheTable) {
  Global global;
  calculate(global, FixedAmount, 3000, 0, 100, 10);
  const int rows[][4] = {
      {1, 0, 1200, 1800}, {2, 0, 1320, 490}, {3, 0, 501, 0}, {3, 0, 3273, 0}, {0, 0, 0, 0}};
  for (std::size_t row = 1; row <= 5; ++row)
    for (std::size_t column = 1; column <= 4; ++column)
      EXPECT_EQ(global.reports.ComparisonTable.at(row, column),
                Currency::whole(rows[row - 1][column - 1]))
          << row << ", " << column;
}

TEST(RetirementIncome, TheSecondFixedYearHoldsExactlyTheAnnualAmount) {
  // A = V is allowed; after it nothing is left, and the last year pays 0.
  const auto income =
      fixedIncome({Currency::whole(1200), Currency(), Currency::whole(100), Currency()});
  ASSERT_EQ(income.rows.size(), 2U);
  EXPECT_EQ(income.rows[0].value, Currency());
  EXPECT_EQ(income.rows[1].third, Currency());
}

struct Refused {
  const char* rule;
  WithdrawalChoice choice;
  double value, growth, third, fourth;
  Message message;
};

constexpr Refused kRefused[] = {
    {"a year's amount above the value", FixedAmount, 11999.99, 10, 1000, 0,
     Message::WithdrawalTooLarge},
    {"more than everything", Percentage, 100000, 20, 101, 25, Message::WithdrawalTooLarge},
    {"all of it, and the truncation's constant", Percentage, 100000, 20, 100, 25,
     Message::WithdrawalTooLarge},
    {"nothing saved", Percentage, 0, 20, 15, 25, Message::WithdrawalTooLarge},
    {"nothing saved, an amount", FixedAmount, 0, 20, 15, 0, Message::WithdrawalTooLarge},
    {"nothing from nothing", FixedAmount, 0, 20, 0, 0, Message::WrongEntry},
    {"no years", Percentage, 100000, 20, 15, 0, Message::WrongEntry},
    {"the value leaves the range", Percentage, 9e14, 20, 1, 25, Message::WrongEntry},
    {"the growth leaves the range", FixedAmount, 100000, 9e14, 1, 0, Message::WrongEntry},
    {"the yearly amount leaves the range", FixedAmount, 100000, 0, 9e14, 0, Message::WrongEntry},
    {"the increase leaves the range", FixedAmount, 100000, 0, 1000, 9e14, Message::WrongEntry},
};

TEST(RetirementIncome, AFailureLeavesTheReportAndNothingToChart) {
  for (const auto& c : kRefused) {
    Global global;
    calculate(global, Percentage, 100000, 20, 15, 2);
    global.reports.StartOver = 1;
    const Shown before(global);
    global.boxes.InputValues = {Currency(), ToCurrency(c.value), ToCurrency(c.growth),
                                ToCurrency(c.third), ToCurrency(c.fourth)};
    global.WithdrawalOption =
        kWithdrawalChoices[static_cast<std::size_t>(c.choice)].withdrawalOption;
    const Outcome outcome = calculateRetirementIncome(global.boxes, global.reports, global.chart,
                                                      global.WithdrawalOption, {});
    EXPECT_EQ(outcome.message, c.message) << c.rule;
    EXPECT_FALSE(outcome.showResults) << c.rule;
    EXPECT_EQ(global.chart.ChartCount, 0) << c.rule;
    EXPECT_EQ(global.chart.ChartKind, ChartKind{}) << c.rule;
    EXPECT_EQ(global.chart.ChartTitle, "") << c.rule;
    Shown after(global);
    after.kind = before.kind;
    after.count = before.count;
    after.title = before.title;
    EXPECT_EQ(after, before) << c.rule;
  }
}

TEST(RetirementIncome, APercentageCanBecomeTooLargeLater) {
  // Below a cent the truncation hides that 100.5 % is too much: incomes 0.0105 of
  // 0.0199 and 0.3905 of 0.3905, then 7.8305 of 7.8005.
  PercentageIncomeInput input{ToCurrency(0.0199), Currency::whole(2000), ToCurrency(100.5),
                              Currency::whole(2)};
  EXPECT_FALSE(percentageIncome(input).withdrawalTooLarge);
  input.years = Currency::whole(3);
  EXPECT_TRUE(percentageIncome(input).withdrawalTooLarge);
}

TEST(RetirementIncome, SwitchingTheOptionKeepsTheFirstTwo) {
  Global global;
  calculate(global, Percentage, 123, 4, 5, 6);
  const auto texts = [](const std::vector<ShownText>& shown) {
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& s : shown) pairs.emplace_back(s.control, s.text);
    return pairs;
  };
  using Texts = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(texts(SwitchWithdrawalOption(global.boxes, global.reports, global.WithdrawalOption,
                                         FixedAmount)),
            (Texts{{"RIInCurrValue", "      $123.00"},
                   {"RIInAnnIntGrowthRate", "  4.00%"},
                   {"RIInAnnIncWDrawnRate", "  $1,000.00"},
                   {"Label32", "Monthly amount of cash withdrawn"},
                   {"RIInTimeInYrs", "   .00%"},
                   {"Label33", "Increase annual income by %"}}));
  EXPECT_EQ(global.WithdrawalOption, 2);
  EXPECT_EQ(global.reports.ReportLines[1], "");
  EXPECT_EQ(global.boxes.InputValues[3], Currency::whole(1000));
  EXPECT_EQ(texts(SwitchWithdrawalOption(global.boxes, global.reports, global.WithdrawalOption,
                                         Percentage)),
            (Texts{{"RIInCurrValue", "      $123.00"},
                   {"RIInAnnIntGrowthRate", "  4.00%"},
                   {"RIInAnnIncWDrawnRate", " 15.00%"},
                   {"Label32", "Annual income withdrawn as a (%)"},
                   {"RIInTimeInYrs", "    25"},
                   {"Label33", "Time in years"}}));
  EXPECT_EQ(global.WithdrawalOption, 0);
}

TEST(RetirementIncome, EveryCalculationReplacesTheReport) {
  Global global;
  const std::string first = calculate(global, Percentage, 100000, 20, 15, 2).results;
  for (int i = 0; i < 12; ++i)
    EXPECT_EQ(calculate(global, Percentage, 100000, 20, 15, 2).results, first);
  showHelp(global.reports, retirementIncomeHelp(Percentage));
  EXPECT_EQ(calculate(global, Percentage, 100000, 20, 15, 2).results, first);
  EXPECT_EQ(global.reports.ComparisonCount, 0);
}

TEST(RetirementIncome, AnyInputEndsInAReportOrAMessage) {
  checkReaching({{"report", 0.35}, {"message 3", 0.05}, {"message 7", 0.03}}, [](Reached& reached) {
    Global global;
    const bool fixed = *rc::gen::arbitrary<bool>();
    const bool usual = *rc::gen::arbitrary<bool>();
    const auto amount = usual ? usualAmount() : anyAmount();
    const auto rate = usual ? usualRate() : anyRate();
    // Up to 2,000.00 a month, which most usual amounts last for.
    const auto monthly =
        usual ? rc::gen::map(anyIn<std::int64_t>(0, 20'000'000), Currency::fromTenThousandths)
              : anyAmount();
    const Currency third = fixed ? *monthly : *rate;
    const Currency fourth = fixed ? *rate : *anyYears();
    const Outcome outcome =
        calculate(global, fixed ? FixedAmount : Percentage, *amount, *rate, third, fourth);
    RC_ASSERT(outcome.showResults != (outcome.message == Message::WrongEntry ||
                                      outcome.message == Message::WithdrawalTooLarge));
    RC_ASSERT(!showsNoNumber(outcome.results));
    for (const auto& row : rowsOf(outcome.results)) RC_ASSERT(row.size() == 45U);
    if (outcome.showResults) RC_ASSERT(linesOf(outcome.results).back().size() == 45U);
    reached(outcome.showResults ? "report"
                                : "message " + std::to_string(static_cast<int>(outcome.message)));
  });
}

// Without an increase, what was there plus its interest is what was paid out plus
// what is left.
RC_GTEST_PROP(RetirementIncome, AFixedAmountPaysOutWhatThereWas, ()) {
  const FixedIncomeInput input{*rc::gen::map(rc::gen::inRange(1'200, 1'000'000), Currency::whole),
                               Currency::fromTenThousandths(*rc::gen::inRange(0, 200'000)),
                               *rc::gen::map(rc::gen::inRange(1, 100), Currency::whole),
                               Currency()};
  const auto income = fixedIncome(input);
  const double in = input.value.toDouble() + income.totals.second.toDouble();
  const double out = income.totals.third.toDouble() + income.totals.value.toDouble();
  // A month's growth is rounded to four decimals; the last year pays its months'
  // interest out whole.
  RC_ASSERT(std::abs(in - out) < 480 * 0.00005 + 1e-9 * in);
}

// The value falls or grows by growth less withdrawal, to the cents truncated.
RC_GTEST_PROP(RetirementIncome, APercentageIsACompoundRate, ()) {
  const int growth = *rc::gen::inRange(0, 30);
  const int withdrawn = *rc::gen::inRange(0, 30);
  const int years = *rc::gen::inRange(1, 41);
  const auto income = percentageIncome({Currency::whole(100'000'000), Currency::whole(growth),
                                        Currency::whole(withdrawn), Currency::whole(years)});
  RC_ASSERT(!income.withdrawalTooLarge);
  const double expected = 1e8 * std::pow(1 + (growth - withdrawn) / 100.0, years);
  RC_ASSERT(std::abs(income.totals.value.toDouble() - expected) < 1e-5 * expected + 1.0);
}

}  // namespace
}  // namespace mirelund

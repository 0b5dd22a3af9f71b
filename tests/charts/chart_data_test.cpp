// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_data.h"

#include <gtest/gtest.h>

#include "calc/capital_required.h"
#include "calc/compound_gain.h"
#include "calc/investment_growth.h"
#include "calc/mortgage.h"
#include "calc/pension_growth.h"
#include "calc/retirement_income.h"
#include "charts/chart_kind.h"

namespace mirelund {
namespace {

using Texts = std::vector<std::string>;
using Values = std::vector<double>;

void input(Global& global, std::initializer_list<double> values) {
  std::size_t slot = 1;
  for (const double value : values) global.boxes.InputValues[slot++] = ToCurrency(value);
}

TEST(ChartData, CapitalRequired) {
  Global global;
  input(global, {1210, 10, 2});
  calculateCapitalRequired(global.boxes, global.reports, global.chart, 0, {});
  const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
  EXPECT_EQ(view.message, Message::None);
  EXPECT_EQ(view.caption, "Capital required");
  EXPECT_EQ(view.title, "Growth in capital required over 2 Years");
  EXPECT_EQ(view.secondCaption, "");
  EXPECT_EQ(view.categoryTitle, "Year");
  EXPECT_EQ(view.categories, (Texts{"1", "2"}));
  EXPECT_EQ(view.axis, ChartAxis::Money);
  EXPECT_FALSE(view.managerButtons);
  ASSERT_EQ(view.series.size(), 1U);
  // 1210 / 2.31 x 1.1 = 576.1905.
  EXPECT_EQ(view.series[0].values, (Values{576.1905, 1210}));
  EXPECT_EQ(view.series[0].texts, (Texts{"$576.19", "$1,210.00"}));
  EXPECT_EQ(pointText(view, 0, 1), "Year 2: $1,210.00");
}

TEST(ChartData, PensionGrowth) {
  Global global;
  input(global, {0, 40000, 4, 4, 4, 10, 0, 25});
  calculatePensionGrowth(global.boxes, global.reports, global.chart, {});
  const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
  EXPECT_EQ(view.caption, "Pension growth");
  EXPECT_EQ(view.title, " Pension growth over 25 Years");
  ASSERT_EQ(view.series[0].values.size(), 25U);
  EXPECT_EQ(view.series[0].values[0], 3520);
  EXPECT_EQ(view.series[0].values[1], 7392);
  EXPECT_EQ(view.series[0].texts[24], "$462,141.54");
  EXPECT_EQ(view.categories[24], "25");
}

TEST(ChartData, MortgageHasTwoSeriesAndASecondCaption) {
  Global global;
  DaysInYearState days;
  MortgageTexts shown = loadMortgage(global.boxes, days);
  MortgageChoices choices;
  choices.compounding = CompoundingPeriod::Semiannual;
  global.boxes.MortgageInputs[2] = 6;
  calculateMortgage(global.boxes, global.reports, global.chart, days, choices, shown);
  choices.frequency = PaymentFrequency::Monthly;
  calculateMortgage(global.boxes, global.reports, global.chart, days, choices, shown);
  const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
  EXPECT_EQ(view.caption, "Mortgage comparisons");
  EXPECT_EQ(view.title, "");
  EXPECT_EQ(view.secondCaption, "Total interest paid");
  EXPECT_EQ(view.categoryTitle, "Comparison");
  EXPECT_EQ(view.categories, (Texts{"1", "2"}));
  ASSERT_EQ(view.series.size(), 2U);
  EXPECT_EQ(view.series[0].name, "Conventional");
  EXPECT_EQ(view.series[1].name, "At the chosen frequency");
  EXPECT_EQ(view.series[0].texts, (Texts{"$91,941.98", "$91,941.98"}));
  EXPECT_EQ(view.series[1].texts, (Texts{"$74,455.00", "$91,941.98"}));
  EXPECT_EQ(pointText(view, 1, 0), "Comparison 1, At the chosen frequency: $74,455.00");
}

TEST(ChartData, CompoundGain) {
  Global global;
  input(global, {10000, 20000, 5});
  calculateCompoundGain(global.boxes, global.reports, global.chart, {});
  input(global, {100, 50, 1});
  calculateCompoundGain(global.boxes, global.reports, global.chart, {});
  const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
  EXPECT_EQ(view.caption, "Compound gain");
  EXPECT_EQ(view.title, "Annual percentage gain/loss comparisons");
  EXPECT_EQ(view.axis, ChartAxis::Percent);
  EXPECT_EQ(view.valueTitle, "Percent");
  EXPECT_EQ(view.categories, (Texts{"1", "2"}));
  EXPECT_EQ(view.series[0].values, (Values{14.8698, -50}));
  EXPECT_EQ(view.series[0].texts, (Texts{"14.8698%", "-50.0000%"}));
}

TEST(ChartData, GrowthComparisons) {
  Global global;
  InvestmentGrowthTexts texts;
  texts.results = GrowthResults::Comparison;
  for (const double beginning : {1000, 2000, 3000}) {
    input(global, {beginning, 0, 0, 10, 0, 0, 2});
    calculateInvestmentGrowth(global.boxes, global.reports, global.chart, texts);
  }
  const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
  EXPECT_EQ(view.caption, "Investment growth");
  EXPECT_EQ(view.title, "Total growth values for each comparision");
  EXPECT_EQ(view.categories, (Texts{"1", "2", "3"}));
  EXPECT_EQ(view.series[0].values, (Values{1210, 2420, 3630}));
}

TEST(ChartData, CompactsPeriodsToYearEnds) {
  struct Case {
    ContributionFrequency frequency;
    int years;
    std::size_t perYear;
  };
  for (const Case& c :
       {Case{ContributionFrequency::Monthly, 25, 12}, Case{ContributionFrequency::Quarterly, 10, 4},
        Case{ContributionFrequency::Annually, 40, 1},
        Case{ContributionFrequency::Monthly, 40, 12}}) {
    Global global;
    input(global, {0, 100, 0, 12, 0, 0, static_cast<double>(c.years)});
    InvestmentGrowthTexts texts;
    texts.frequency = c.frequency;
    calculateInvestmentGrowth(global.boxes, global.reports, global.chart, texts);
    const auto years = static_cast<std::size_t>(c.years);
    Values ends;
    for (std::size_t year = 1; year <= years; ++year)
      ends.push_back(global.reports.ComparisonTable.at(year * c.perYear, 4).toDouble());
    for (int opening = 1; opening <= 2; ++opening) {
      const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
      EXPECT_EQ(view.caption, "Invested growth");
      EXPECT_EQ(view.title, "Investment growth over " + std::to_string(c.years) + " Years");
      EXPECT_EQ(view.series[0].values, ends) << "opening " << opening;
      EXPECT_EQ(view.categories.size(), years);
      EXPECT_EQ(global.chart.ChartCount, c.years);
    }
    EXPECT_EQ(global.reports.ComparisonTable.at(2, 1), Currency::whole(2))
        << "the year, not the period";
    EXPECT_EQ(global.reports.ComparisonTable.at(2, 5),
              global.reports.ComparisonTable.at(2 * c.perYear, 4));
  }
}

// Four quarters a year; the table's row r holds 10 r + column.
TEST(ChartData, CompactingWritesTheYearAndItsEndValueAlone) {
  Global global;
  CurrencyTable& table = global.reports.ComparisonTable;
  for (std::size_t row = 1; row <= 8; ++row)
    for (std::size_t column = 1; column <= 5; ++column)
      table.at(row, column) = Currency::whole(static_cast<int>(10 * row + column));
  global.chart.ChartKind = ChartKind::GrowthYears;
  global.chart.ChartPeriods = 8;
  global.chart.ChartPeriodsPerYear = 4;
  EXPECT_EQ(makeChartView(global.boxes, global.reports, global.chart).series[0].values,
            (Values{44, 84}));
  const int expected[][5] = {{1, 12, 13, 14, 44}, {2, 22, 23, 24, 84}, {31, 32, 33, 34, 35}};
  for (std::size_t row = 1; row <= 3; ++row)
    for (std::size_t column = 1; column <= 5; ++column)
      EXPECT_EQ(table.at(row, column), Currency::whole(expected[row - 1][column - 1]))
          << row << ' ' << column;
}

TEST(ChartData, RetirementByAmountBeginsWithTheStartingValue) {
  Global global;
  input(global, {3000, 0, 100, 10});
  calculateRetirementIncome(global.boxes, global.reports, global.chart, 2, {});
  const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
  EXPECT_EQ(view.caption, "Retirement income");
  EXPECT_EQ(view.title, "Retirement beginning balance over 3 Years");
  EXPECT_EQ(view.series[0].values, (Values{3000, 1800, 490}));
}

TEST(ChartData, RetirementByPercentageShowsYearEnds) {
  Global global;
  input(global, {100000, 20, 15, 2});
  calculateRetirementIncome(global.boxes, global.reports, global.chart, 0, {});
  const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
  EXPECT_EQ(view.caption, "Retirement income");
  EXPECT_EQ(view.title, "Retirement ending balance over 2 Years");
  EXPECT_EQ(view.series[0].values, (Values{105000.0005, 110250.0005}));
  EXPECT_EQ(view.series[0].texts, (Texts{"$105,000.00", "$110,250.00"}));
}

// The manager's table: 0..31 by 0..6, one row a fund.
Global managed() {
  Global global;
  global.chart.ChartKind = ChartKind::Manager;
  global.chart.ChartCount = 2;
  global.reports.ComparisonTotals.redimension(32, 7);
  for (std::size_t fund = 1; fund <= 2; ++fund)
    for (std::size_t column = 0; column < 7; ++column)
      global.reports.ComparisonTotals.at(fund, column) =
          Currency::whole(static_cast<int>(100 * fund + column));
  global.reports.ComparisonTotals.at(2, 4) = Currency::whole(-50);
  return global;
}

TEST(ChartData, TheManagerHasThreeViews) {
  Global global = managed();
  const Texts funds = {"Alpha Fund", "Beta"};
  global.chart.ChartNames = funds;
  ChartView view =
      makeChartView(global.boxes, global.reports, global.chart, ManagerView::GainDollars);
  EXPECT_EQ(view.caption, "Investment manager charts");
  EXPECT_TRUE(view.managerButtons);
  EXPECT_EQ(view.title, "Gain or Loss in dollars");
  EXPECT_EQ(view.categories, funds);
  EXPECT_EQ(view.series[0].values, (Values{104, -50}));
  EXPECT_EQ(pointText(view, 0, 1), "Beta: $-50.00");
  view = makeChartView(global.boxes, global.reports, global.chart, ManagerView::GainPercent);
  EXPECT_EQ(view.title, "Gain or Loss in percent");
  EXPECT_EQ(view.axis, ChartAxis::Percent);
  EXPECT_EQ(view.series[0].values, (Values{105, 205}));
  view = makeChartView(global.boxes, global.reports, global.chart, ManagerView::TotalValue);
  EXPECT_EQ(view.title, "Current value of each company/fund");
  EXPECT_EQ(view.series[0].values, (Values{103, 203}));
  global.chart.ChartNames = {"", "Beta"};
  EXPECT_EQ(makeChartView(global.boxes, global.reports, global.chart).categories,
            (Texts{"1", "Beta"}))
      << "a fund without a name is shown by its number";
  global.chart.ChartNames.clear();
  EXPECT_EQ(
      makeChartView(global.boxes, global.reports, global.chart, ManagerView::TotalValue).categories,
      (Texts{"1", "2"}));
}

TEST(ChartData, UnknownKindsAreEmpty) {
  for (const int kind : {-1, 0, 1, 2, 12, 100}) {
    Global global;
    global.chart.ChartKind = ChartKind{static_cast<std::int16_t>(kind)};
    global.chart.ChartCount = 5;
    const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
    EXPECT_EQ(view.message, Message::None);
    EXPECT_TRUE(view.series.empty());
    EXPECT_EQ(view.caption, "");
  }
}

TEST(ChartData, FiguresOutsideTheTableAreMessageNine) {
  for (int kind = 3; kind <= 11; ++kind) {
    Global global;
    global.chart.ChartKind = ChartKind{static_cast<std::int16_t>(kind)};
    global.chart.ChartCount = 600;
    global.chart.ChartPeriods = 600;
    global.chart.ChartPeriodsPerYear = 1;
    const ChartView view = makeChartView(global.boxes, global.reports, global.chart);
    EXPECT_EQ(view.message, Message::CannotDraw) << kind;
    EXPECT_TRUE(view.series.empty()) << kind;
    EXPECT_NE(view.caption, "") << kind;
  }
  Global global;
  global.chart.ChartKind = ChartKind::GrowthYears;
  global.chart.ChartPeriods = 12;
  EXPECT_EQ(makeChartView(global.boxes, global.reports, global.chart).message, Message::CannotDraw)
      << "no periods in a year";
}

TEST(ChartData, MarksOfTheValueAxis) {
  const struct {
    ChartAxis axis;
    double step;
    std::vector<double> marks;
    std::vector<std::string> texts;
  } cases[] = {
      {ChartAxis::Money, 50000, {-50000, 0, 1250000}, {"-50,000", "0", "1,250,000"}},
      {ChartAxis::Money, 0.5, {0, 0.5, 0.1 + 0.2 + 0.7}, {"0.00", "0.50", "1.00"}},
      {ChartAxis::Percent, 5, {0, 15}, {"0%", "15%"}},
      {ChartAxis::Percent, 2.5, {-2.5, 0, 5}, {"-2.50%", "0.00%", "5.00%"}},
      {ChartAxis::Percent, 0.025, {0.025, 0.05, 3 * 0.025}, {"0.025%", "0.050%", "0.075%"}},
      {ChartAxis::Percent, 0.005, {0.005, 0.01}, {"0.005%", "0.010%"}},
      {ChartAxis::Percent, 0.0001, {0.0001, 0.0002}, {"0.0001%", "0.0002%"}},
  };
  for (const auto& c : cases) {
    std::vector<std::string> texts;
    for (const double mark : c.marks) texts.push_back(tickText(c.axis, mark, c.step));
    EXPECT_EQ(texts, c.texts) << c.step;
  }
}

TEST(ChartData, MarksAreNoCloserThanAmountsAre) {
  EXPECT_EQ(leastTickStep(0.00005), 0.0001);
  EXPECT_EQ(leastTickStep(0.0002), 0.0002);
  EXPECT_EQ(leastTickStep(0.00025), 0.0005);
  EXPECT_EQ(leastTickStep(0.0025), 0.0025);
  EXPECT_EQ(leastTickStep(2.5), 2.5);
}

TEST(ChartData, LabelsAreThinnedWhenTheyWouldTouch) {
  EXPECT_EQ(labelStep(20, 14), 1U);
  EXPECT_EQ(labelStep(10, 14), 2U);
  EXPECT_EQ(labelStep(5, 14), 5U);
  EXPECT_EQ(labelStep(2, 14), 10U);
  EXPECT_EQ(labelStep(1, 14), 20U);
  EXPECT_EQ(labelStep(14, 14), 2U) << "touching is too near";
  EXPECT_EQ(labelStep(0, 14), 1U);
  EXPECT_EQ(labelStep(1e-9, 14), 1'000'000U) << "no chart is that narrow";
}

// 10 and 5 stand on each other, -4 and -2 hang below: by hand.
ChartView stackOf() {
  ChartView view;
  view.categoryTitle = "Year";
  view.categories = {"2001", "2002"};
  view.series = {{"Income", {10, 0}, {"$10.00", "$.00"}},
                 {"Gain", {-4, 3.5}, {"$-4.00", "$3.50"}},
                 {"Fees", {-2, -1}, {"$-2.00", "$-1.00"}},
                 {"Other", {5, 1}, {"$5.00", "$1.00"}}};
  view.stacked = true;
  return view;
}

TEST(BarBase, StacksEachSideOfZeroByItself) {
  const ChartView view = stackOf();
  const double expected[][2] = {{0, 0}, {0, 0}, {-4, 0}, {10, 3.5}};
  for (std::size_t s = 0; s < 4; ++s)
    for (std::size_t c = 0; c < 2; ++c) EXPECT_EQ(barBase(view, s, c), expected[s][c]) << s << c;
  EXPECT_THROW(barBase(view, 4, 0), std::out_of_range);
  EXPECT_THROW(barBase(view, 0, 2), std::out_of_range);
}

TEST(BarBase, IsZeroWhereNothingIsStacked) {
  ChartView view = stackOf();
  view.stacked = false;
  for (std::size_t s = 0; s < 4; ++s) EXPECT_EQ(barBase(view, s, 0), 0.0);
}

TEST(ValuesText, IsALineACategory) {
  EXPECT_EQ(valuesText(stackOf()),
            "Year\tIncome\tGain\tFees\tOther\n"
            "2001\t10\t-4\t-2\t5\n"
            "2002\t0\t3.5\t-1\t1\n");
  ChartView names;
  names.categoryTitle = "Fund";
  names.categories = {"=1+1", "tab\tand\r\nline"};
  names.series = {{"@now", {922'337'203'685'477.5, 1e-4}, {}}};
  EXPECT_EQ(valuesText(names), "Fund\t'@now\n'=1+1\t922337203685477.5\ntab and  line\t0.0001\n");
  EXPECT_EQ(valuesText(ChartView()), "\n");
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/insights.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "app/report_line.h"
#include "base/text.h"
#include "insights/insights_testing.h"

namespace mirelund {
namespace {

using enum InsightsPage;

const char* const kThree = R"(1,10,100,5,0,1005,"B",#2001-05-15#
2,20,10,0,0,200,"B",#2001-05-15#
3,10,-1,0,0,-10,"S",#2001-06-15#
1,12,-40,6,0,-474,"S",#2001-07-01#
1,0,0,0,50,-50,"C",#2002-07-15#
2,0,0,8,0,8,"F",#2002-08-15#
)";

InsightsAsked asked(const Database& database, const Prices& prices,
                    CostMethod method = CostMethod::AverageCost) {
  return {database, prices, date(2003, 5, 15), method, {}};
}

bool contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

TEST(Insights, TheValuationIsNotBeforeTheLastRecord) {
  const Database database = databaseOf(3, kThree);
  EXPECT_EQ(valuationDate(database, date(2001, 1, 1)), date(2002, 8, 15));
  EXPECT_EQ(valuationDate(database, date(2002, 8, 16)), date(2002, 8, 16));
  EXPECT_EQ(valuationDate(Database(), date(2002, 8, 16)), date(2002, 8, 16));
}

void expectRefused(const InsightsAsked& asked, Message message, Message ofChart) {
  const InsightsShown shown = showInsights(asked);
  EXPECT_EQ(shown.message, message);
  for (const std::string& report : shown.reports) EXPECT_EQ(report, "");
  EXPECT_EQ(shown.lacking, "");
  for (const InsightsPageRow& row : kInsightsPages) {
    const InsightsSheets sheets = insightsSheets(asked, row.page);
    EXPECT_EQ(sheets.message, message);
    EXPECT_TRUE(sheets.sheets.empty());
  }
  const ChartView chart = insightsChart(asked);
  EXPECT_EQ(chart.message, ofChart);
  EXPECT_TRUE(chart.series.empty());
}

TEST(Insights, NoFundsAnEmptyFundAndARangeThatIsLeftAreTold) {
  expectRefused(asked(Database(), {}), Message::NoRecords, Message::NoRecords);
  const Database empty = databaseOf(4, kThree);
  expectRefused(asked(empty, pricesOf(empty, 12)), Message::EmptyFund, Message::EmptyFund);
  const Database large = databaseOf(1, R"(1,1,1,0,0,900000000000000,"B",#2001-05-15#
1,1,1,0,0,900000000000000,"B",#2001-05-16#
)");
  const Prices prices = pricesOf(large, 12);
  for (const InsightsPage page : {Gains, Return, Years})
    EXPECT_EQ(insightsSheets(asked(large, prices), page).message, Message::WrongEntry);
  expectRefused(asked(large, prices), Message::WrongEntry, Message::CannotDraw);
}

TEST(Insights, FundsThatLackAPriceAreNamed) {
  const Database database = databaseOf(3, kThree);
  Prices prices = pricesOf(database, 12);
  EXPECT_EQ(showInsights(asked(database, prices)).lacking, "");
  prices[0] = std::nullopt;
  prices[1] = std::nullopt;
  const InsightsShown shown = showInsights(asked(database, prices));
  EXPECT_EQ(shown.lacking, "No price typed for: Fund 1, Fund 2");
  for (const InsightsPage page : {Gains, Return}) {
    const std::string& report = shown.reports[static_cast<std::size_t>(page)];
    EXPECT_TRUE(
        contains(report, "\r\nNo price typed for: Fund 1\r\nNo price typed for: Fund 2\r\n"));
  }
  EXPECT_FALSE(contains(shown.reports[2], "No price"));
}

TEST(Insights, AFundThatCannotBeComputedSaysWhyAndTheTotalsSaySo) {
  const Database database = databaseOf(3, kThree);
  const Prices prices = pricesOf(database, 12);
  for (const CostMethodRow& method : kCostMethods) {
    const InsightsShown shown = showInsights(asked(database, prices, method.method));
    for (const std::string& report : shown.reports) {
      EXPECT_TRUE(
          contains(report, "Cannot be computed: more shares given up than held, 6/15/2001\r\n"));
      EXPECT_TRUE(
          contains(report, "The totals are without the funds that cannot be computed.\r\n"));
    }
    EXPECT_TRUE(contains(shown.reports[0], method.sentence));
    EXPECT_TRUE(contains(shown.reports[2], method.sentence));
  }
}

TEST(Insights, TheChartHasIncomeGainAndFeesByYear) {
  const Database database = databaseOf(3, kThree);
  const ChartView chart = insightsChart(asked(database, pricesOf(database, 12)));
  EXPECT_EQ(chart.message, Message::None);
  EXPECT_EQ(chart.categories, (std::vector<std::string>{"2001", "2002"}));
  ASSERT_EQ(chart.series.size(), 3U);
  EXPECT_EQ(chart.series[0].values, (std::vector{0.0, 50.0}));
  EXPECT_EQ(chart.series[1].values, (std::vector{72.0, 0.0}));  // 474 - 402
  EXPECT_EQ(chart.series[2].values, (std::vector{0.0, -8.0}));
  EXPECT_EQ(chart.series[1].texts[0], "$72.00");
}

std::string headings(const Sheet& sheet) {
  std::string text;
  for (const SheetColumn& column : sheet.columns)
    text += (text.empty() ? "" : ",") + column.heading;
  return text;
}

TEST(InsightsSheets, BeginWithTheirFirstLines) {
  const Database database = databaseOf(3, kThree);
  const Prices prices = pricesOf(database, 12);
  const auto gains = insightsSheets(asked(database, prices), Gains).sheets;
  ASSERT_EQ(gains.size(), 2U);
  EXPECT_EQ(headings(gains[0]), "fund,date,type,shares,proceeds,cost,gain");
  EXPECT_EQ(
      headings(gains[1]),
      "fund,shares,cost,value,unrealised,realised,income,cash_fees,unit_fees,other,gain_loss");
  EXPECT_EQ(headings(insightsSheets(asked(database, prices), Return).sheets.at(0)),
            "fund,first_date,last_date,flows,rate_percent,remark");
  EXPECT_EQ(headings(insightsSheets(asked(database, prices), Years).sheets.at(0)),
            "year,fund,opening_shares,opening_cost,bought,sold,cash_dividends,reinvested,cash_fees,"
            "unit_fees,other,realised,closing_shares,closing_cost");
}

TEST(InsightsSheets, HoldTheFigures) {
  using Row = std::vector<Cell>;
  const Database database = databaseOf(3, kThree);
  Prices prices = pricesOf(database, 12);
  prices[1] = std::nullopt;
  const auto text = [](const char* value) { return Cell(std::string(value)); };
  const Cell none;
  const auto gains = insightsSheets(asked(database, prices), Gains).sheets;
  EXPECT_EQ(gains[0].rows, (std::vector<Row>{{text("Fund 1"), date(2001, 7, 1), text("S"),
                                              money(40), money(474), money(402), money(72)}}));
  // 60 shares for 603 at 12: 720; 117 + 72 + 50.
  EXPECT_EQ(gains[1].rows,
            (std::vector<Row>{
                {text("Fund 1"), money(60), money(603), money(720), money(117), money(72),
                 money(50), money(0), money(0), money(0), money(239)},
                {text("Fund 2"), money(10), money(200), none, none, money(0), money(0), money(8),
                 money(0), money(0), none},
                {text("Fund 3"), none, none, none, none, none, none, none, none, none, none}}));
  const Sheet returned = insightsSheets(asked(database, prices), Return).sheets.at(0);
  ASSERT_EQ(returned.rows.size(), 3U);
  EXPECT_EQ(returned.rows[0][1], Cell(date(2001, 5, 15)));
  EXPECT_EQ(returned.rows[0][2], Cell(date(2003, 5, 15)));
  EXPECT_EQ(returned.rows[0][3], Cell(std::int64_t{4}));
  EXPECT_TRUE(std::holds_alternative<Currency>(returned.rows[0][4]));
  EXPECT_EQ(returned.rows[0][5], text(""));
  EXPECT_EQ(returned.rows[1], (Row{text("Fund 2"), date(2001, 5, 15), date(2002, 8, 15),
                                   std::int64_t{2}, none, text("no price")}));
  EXPECT_EQ(returned.rows[2],
            (Row{text("Fund 3"), none, none, none, none,
                 text("Cannot be computed: more shares given up than held, 2001-06-15")}));
  const Sheet years = insightsSheets(asked(database, prices), Years).sheets.at(0);
  ASSERT_EQ(years.rows.size(), 4U);
  EXPECT_EQ(years.rows[0], (Row{std::int64_t{2001}, text("Fund 1"), money(0), money(0), money(1005),
                                money(474), money(0), money(0), money(0), money(0), money(0),
                                money(72), money(60), money(603)}));
  EXPECT_EQ(years.rows[1], (Row{std::int64_t{2002}, text("Fund 1"), money(60), money(603), money(0),
                                money(0), money(50), money(0), money(0), money(0), money(0),
                                money(0), money(60), money(603)}));
}

// -100, 500, -600: 100 % and 200 % a year. Bought and valued on one day: none, and the
// plain return. A fund without a name is shown by its number.
TEST(Insights, RatesAndRemarksStandBeside) {
  Database database = databaseOf(4, R"(1,1,100,0,0,100,"B",#2001-01-01#
2,10,100,0,0,1000,"B",#2003-05-15#
3,10,100,0,0,1000,"B",#2003-05-14#
4,.0001,0,0,0,0,"D",#2001-01-01#
1,0,0,0,500,-500,"C",#2002-01-01#
1,0,0,600,0,600,"F",#2003-01-01#
1,1,-100,0,0,0,"U",#2003-01-01#
)");
  database.FundTable[2].name.clear();
  Prices prices = pricesOf(database, 11);
  prices[2] = std::nullopt;
  const Sheet sheet = insightsSheets(asked(database, prices), Return).sheets.at(0);
  EXPECT_EQ(sheet.rows[0][4], Cell(std::vector{money(100), money(200)}));
  EXPECT_EQ(sheet.rows[1][0], Cell(std::string("2")));
  EXPECT_EQ(sheet.rows[1][5], Cell(std::string("none; under 365 days; plain return 10.0000%")));
  EXPECT_EQ(sheet.rows[2][5], Cell(std::string("no price; under 365 days")));
  EXPECT_EQ(sheet.rows[3][1], Cell());
  const std::string report = showInsights(asked(database, prices)).reports[1];
  EXPECT_TRUE(contains(report, " 100.00%;200.00%\r\n"));
  EXPECT_TRUE(contains(report, "          none  under 365 days; plain 10.00%\r\n"));
  // No flows, no days: the columns stay where they are.
  EXPECT_TRUE(contains(report, "\nFund 4" + std::string(48, ' ') + "      0          none\r\n"));
}

// golden/derive.py derived them, and its own check runs beside this one.
TEST(Insights, ReportsMatchTheDerivedOnes) {
  const std::string golden = MIRELUND_TEST_DATA "/golden/DtaSampl.";
  const Database database =
      parseDatabase(contents(std::string(MIRELUND_DATA "/DtaSampl.PQD"))).value();
  const Prices prices = pricesOf(database, 20);
  for (const auto& [method, name] : {std::pair(CostMethod::AverageCost, "average"),
                                     std::pair(CostMethod::FirstInFirstOut, "lots")}) {
    const InsightsShown shown = showInsights({database, prices, date(2026, 1, 1), method, {}});
    EXPECT_EQ(shown.reports[0], contents(golden + "gains." + name + ".txt"));
    EXPECT_EQ(shown.reports[1], contents(golden + "return.txt"));
    EXPECT_EQ(shown.reports[2], contents(golden + "years." + name + ".txt"));
  }
}

// Whatever the names and amounts; a rate's remark takes the room that it needs.
TEST(Insights, NoLineOfGainsAndYearsIsLongerThan96) {
  checkReaching([](Reached& reached) {
    const Database database = drawnHistories(*anyIn(1, 4), *anyIn(1, 60));
    const Prices prices = pricesOf(database, 12);
    const InsightsShown shown = showInsights(asked(database, prices));
    if (shown.message != Message::None) {
      RC_ASSERT(shown.message == Message::EmptyFund);
      reached();
      return;
    }
    for (const InsightsPage page : {Gains, Years}) {
      const std::string& report = shown.reports[static_cast<std::size_t>(page)];
      for (std::size_t at = 0; at < report.size();) {
        const auto end = report.find(NewLine, at);
        RC_ASSERT(end != std::string::npos);
        RC_ASSERT(characterCount(report.substr(at, end - at)) <= 96U);
        at = end + NewLine.size();
      }
    }
    reached();
  });
}

}  // namespace
}  // namespace mirelund

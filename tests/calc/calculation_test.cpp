// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/calculation.h"

#include <gtest/gtest.h>

#include "app/report_line.h"

namespace mirelund {
namespace {

TEST(WholeYears, AreOneToForty) {
  EXPECT_EQ(wholeYears(Currency::whole(1)), 1U);
  EXPECT_EQ(wholeYears(Currency::whole(40)), 40U);
  for (const int years : {0, -1, 41, 1000})
    EXPECT_THROW(static_cast<void>(wholeYears(Currency::whole(years))), ArithmeticError) << years;
}

// The float nearest 0.1 is 0.100000001490116: 3,200 of it is 320.0000 in four
// decimals, 3,200,000,000 is 320,000,004.7684.
TEST(RateTimesAmount, NarrowsTheRateAlone) {
  const float rate = singleRate(Currency::whole(10));
  EXPECT_EQ(RateTimesAmount(3200, rate), Currency::whole(320));
  EXPECT_EQ(RateTimesAmount(3'200'000'000.0, rate).tenThousandths(), 3'200'000'047'684);
}

TEST(StoreTable, PutsTheTotalsBehindTheLastRow) {
  CurrencyTable table(2, 2);
  const auto row = [](int n) {
    return TableRow{Currency::whole(n), Currency::whole(10 * n), Currency::whole(100 * n),
                    Currency::whole(1000 * n)};
  };
  storeTable(table, std::vector{row(1), row(2)}, row(3));
  EXPECT_EQ(table.rows(), 501U);
  EXPECT_EQ(table.columns(), 6U);
  for (int n = 0; n < 5; ++n) {
    const auto at = static_cast<std::size_t>(n);
    const int shown = n <= 3 ? n : 0;
    EXPECT_EQ(table.at(at, 0), Currency());
    EXPECT_EQ(table.at(at, 1), Currency::whole(shown));
    EXPECT_EQ(table.at(at, 2), Currency::whole(10 * shown));
    EXPECT_EQ(table.at(at, 3), Currency::whole(100 * shown));
    EXPECT_EQ(table.at(at, 4), Currency::whole(1000 * shown));
    EXPECT_EQ(table.at(at, 5), Currency());
  }
}

TEST(ReplaceReport, LeavesOneReportAndNoRequestToStartOver) {
  Reports reports;
  reports.StartOver = 1;
  reports.ReportLines = {"0", "1", "2", "3"};
  const Outcome outcome = replaceReport(reports, "new", {});
  EXPECT_EQ(outcome.results, "new");
  EXPECT_TRUE(outcome.showResults);
  EXPECT_FALSE(outcome.handedOver);
  EXPECT_EQ(reports.ReportLines, (std::array<std::string, 4>{"", "new", "", ""}));
  EXPECT_EQ(reports.StartOver, 0);
}

TEST(ReportTable, IsATypedTable) {
  const TableRow rows[] = {
      {periodNumber(1), Currency::whole(10), Currency::whole(-20), Currency::fromTenThousandths(5)},
      {periodNumber(2), Currency(), Currency(), Currency()}};
  constexpr TableHeadings kHeadings{"Growth", {"Year", "In", "Out", "Value"}};
  const Sheet sheet = sheetOf(reportTable(kHeadings, rows));
  EXPECT_EQ(sheet.name, "Growth");
  ASSERT_EQ(sheet.columns.size(), 4U);
  EXPECT_EQ(sheet.columns[0].heading, "Year");
  EXPECT_EQ(sheet.columns[3].heading, "Value");
  EXPECT_EQ(sheet.columns[3].decimals, 4);
  const std::vector<Cell> first = {std::int64_t{1}, Currency::whole(10), Currency::whole(-20),
                                   Currency::fromTenThousandths(5)};
  ASSERT_EQ(sheet.rows.size(), 2U);
  EXPECT_EQ(sheet.rows[0], first);
  EXPECT_TRUE(sheetOf({}).columns.empty());
}

TEST(AppendExample, EndsAtTheReportsEdge) {
  std::string help;
  appendExample(help, "Number of years", "25");
  EXPECT_EQ(help, "Number of years                            25\r\n");
  EXPECT_EQ(help.size(), 45U + NewLine.size());
}

// Amounts longer than their columns are cut at the column's width.
TEST(AppendTableRow, HasColumnsOfThreeAndFourteen) {
  const Currency amount = Currency::fromTenThousandths(1'234'567'890'123'400);
  std::string report;
  appendTableRow(report, {Currency::whole(123456), amount, amount, amount});
  EXPECT_EQ(report, "123123,456,789,01123,456,789,01123,456,789,01\r\n");
  report.clear();
  appendTotals(report, "Tot", {Currency(), amount, amount, amount});
  EXPECT_EQ(report, "Tot123,456,789,01123,456,789,01123,456,789,01\r\n");
}

}  // namespace
}  // namespace mirelund

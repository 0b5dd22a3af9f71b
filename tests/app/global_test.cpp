// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/global.h"

#include <gtest/gtest.h>

namespace mirelund {
namespace {

TEST(Reports, TheManagersIsPrintedWhereThereIsOne) {
  Reports reports;
  EXPECT_EQ(printedReport(reports), "");
  reports.ReportLines[1] = "One\r\n";
  EXPECT_EQ(printedReport(reports), "One\r\n");
  reports.ReportLines[2] = "Two\r\n";
  EXPECT_EQ(printedReport(reports), "Two\r\n");
}

TEST(Reports, AWindowHasItsSizeOfLetters) {
  EXPECT_EQ(reportPoints(Window::Calculators), 11);
  EXPECT_EQ(reportPoints(Window::Manager), 10);
}

TEST(Reports, ResettingThemGivesTheTablesTheirShape) {
  Global global;
  for (CurrencyTable* table : {&global.reports.ComparisonTable, &global.reports.ComparisonTotals})
    table->redimension(1, 1);
  resetCalculators(global.boxes, global.reports, global.chart);
  // 500 periods from 1, five columns from 1; 21 rows from 1, four columns from 1.
  EXPECT_EQ(global.reports.ComparisonTable.rows(), 501U);
  EXPECT_EQ(global.reports.ComparisonTable.columns(), 6U);
  EXPECT_EQ(global.reports.ComparisonTotals.rows(), 22U);
  EXPECT_EQ(global.reports.ComparisonTotals.columns(), 5U);
  global.reports.ComparisonTotals.redimension(1, 1);
  countComparison(global.reports, global.chart);
  EXPECT_EQ(global.reports.ComparisonTotals.rows(), 22U);
  EXPECT_EQ(global.reports.ComparisonTotals.columns(), 5U);
}

TEST(CurrencyTable, RefusesAPlaceOutsideIt) {
  CurrencyTable table(2, 3);
  EXPECT_NO_THROW(static_cast<void>(table.at(1, 2)));
  EXPECT_THROW(static_cast<void>(table.at(2, 0)), ArithmeticError);
  EXPECT_THROW(static_cast<void>(table.at(0, 3)), ArithmeticError);
}

TEST(CurrencyTable, ForgetsWhatItsLargerSelfHeld) {
  CurrencyTable table(9, 9);
  table.at(8, 8) = Currency::whole(1);
  table.redimension(2, 2);
  EXPECT_NO_THROW(table.redimension(2, 2));
  EXPECT_EQ(table.rows(), 2U);
}

TEST(CurrencyTable, IsAllZeroAfterRedimension) {
  CurrencyTable table(3, 2);
  table.at(0, 1) = Currency::whole(1);
  table.at(2, 0) = Currency::whole(2);
  table.redimension(3, 2);
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 2; ++column)
      EXPECT_TRUE(std::as_const(table).at(row, column).isZero());
  table.at(2, 1) = Currency::whole(3);
  table.redimension(3, 3);
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column)
      EXPECT_TRUE(std::as_const(table).at(row, column).isZero());
  table.at(2, 2) = Currency::whole(4);
  table.redimension(4, 5);
  EXPECT_EQ(table.rows(), 4U);
  EXPECT_EQ(table.columns(), 5U);
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t column = 0; column < 5; ++column)
      EXPECT_TRUE(std::as_const(table).at(row, column).isZero());
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/reports/report_sheets.h"

#include <gtest/gtest.h>

#include "export/csv.h"
#include "manager/database/databases.h"

namespace mirelund {
namespace {

// A record of each type.
Database made() {
  Database database;
  addFund(database, "=Alder, Ltd");
  addFund(database, "Birch");
  const auto add = [&](int fund, double price, double shares, double fees, double dividend,
                       double book, Date day, char type) {
    ++database.RecordCount;
    database.RecordTable[static_cast<std::size_t>(database.RecordCount)] = {
        Currency::whole(fund), money(price), money(shares),        money(fees), money(dividend),
        money(book),           day,          database.RecordCount, type};
  };
  add(1, 10, 100, 50, 0, 1050, date(2019, 1, 2), 'B');
  add(2, 20, 50, 0, 0, 1000, date(2019, 2, 3), 'B');
  add(1, 0, 0, 0, 12.5, -12.5, date(2020, 3, 4), 'C');
  add(1, 11, 20, 0, 0, 0, date(2020, 5, 6), 'D');
  add(1, 0, 0, 7.25, 0, 7.25, date(2020, 6, 7), 'F');
  add(1, 12, -0.5, 0, 0, 0, date(2020, 7, 8), 'U');
  add(1, 12.5, -10, 5, 0, -120, date(2021, 9, 10), 'S');
  return database;
}

TEST(ReportSheets, TheRecordList) {
  EXPECT_EQ(csvText(recordSheet(made(), 1)),
            "Fund,Transaction,Trade Date,Share Price,Number Shares,Comm/Fees,Div/Unit Value,"
            "Cash Div'd,Book Value,Rec No.\r\n"
            "\"'=Alder, Ltd\",B,2019-01-02,10.0000,100.0000,50.0000,,0.0000,1050.0000,1\r\n"
            "\"'=Alder, Ltd\",C,2020-03-04,0.0000,0.0000,0.0000,,12.5000,-12.5000,2\r\n"
            "\"'=Alder, Ltd\",D,2020-05-06,11.0000,20.0000,0.0000,220.0000,0.0000,0.0000,3\r\n"
            "\"'=Alder, Ltd\",F,2020-06-07,0.0000,0.0000,7.2500,,0.0000,7.2500,4\r\n"
            "\"'=Alder, Ltd\",U,2020-07-08,12.0000,-0.5000,0.0000,-6.0000,0.0000,0.0000,5\r\n"
            "\"'=Alder, Ltd\",S,2021-09-10,12.5000,-10.0000,5.0000,,0.0000,-120.0000,6\r\n");
}

constexpr char kTransactionHeading[] =
    "Fund,Transaction,Trade Date,Share Price,Number Shares,Comm Fees,Div'd Shares,Cash Div'd,"
    "Book Value\r\n";
constexpr char kAlder[] =
    "\"'=Alder, Ltd\",B,2019-01-02,10.0000,100.0000,50.0000,,0.0000,1050.0000\r\n"
    "\"'=Alder, Ltd\",C,2020-03-04,0.0000,0.0000,0.0000,,12.5000,-12.5000\r\n"
    "\"'=Alder, Ltd\",D,2020-05-06,11.0000,20.0000,0.0000,20.0000,0.0000,0.0000\r\n"
    "\"'=Alder, Ltd\",F,2020-06-07,0.0000,0.0000,7.2500,,0.0000,7.2500\r\n"
    "\"'=Alder, Ltd\",U,2020-07-08,12.0000,-0.5000,0.0000,,0.0000,0.0000\r\n"
    "\"'=Alder, Ltd\",S,2021-09-10,12.5000,-10.0000,5.0000,,0.0000,-120.0000\r\n";
constexpr char kBirch[] = "Birch,B,2019-02-03,20.0000,50.0000,0.0000,,0.0000,1000.0000\r\n";

TEST(ReportSheets, TheTransactionsOfOneFund) {
  EXPECT_EQ(csvText(transactionSheet(made(), 1)), std::string(kTransactionHeading) + kAlder);
  EXPECT_EQ(csvText(transactionSheet(made(), 2)), std::string(kTransactionHeading) + kBirch);
}

TEST(ReportSheets, TheTransactionsOfAllInTableOrder) {
  EXPECT_EQ(csvText(allFundsSheet(made())), std::string(kTransactionHeading) + kAlder + kBirch);
  EXPECT_EQ(csvText(allFundsSheet(Database())), kTransactionHeading);
}

// Alder: 100 + 20 - 0.5 - 10 = 109.5 shares at 12, 1314; book 1050 - 12.5 + 7.25 - 120 =
// 924.75; gain 389.25, 42.0925 %. Birch: 50 at 25, 1250; gain 250, 25 %. Together 2564:
// 51.2480 % and 48.7520 %.
TEST(ReportSheets, TheCurrentValues) {
  const Currency prices[] = {money(12), money(25)};
  EXPECT_EQ(csvText(currentValueSheet(made(), prices)),
            "Fund Name,Number Shares,Book Value,Current Price,Current Total,Gain/Loss$,"
            "Gain/Loss%,% 0f Total\r\n"
            "\"'=Alder, Ltd\",109.5000,924.7500,12.0000,1314.0000,389.2500,42.0925,51.2480\r\n"
            "Birch,50.0000,1000.0000,25.0000,1250.0000,250.0000,25.0000,48.7520\r\n");
}

TEST(ReportSheets, ANameThatIsNoUtf8IsShownAsEverywhere) {
  Database database;
  addFund(database, "Z\xFCrich");
  const Currency prices[] = {money(1)};
  EXPECT_EQ(currentValueSheet(database, prices).rows.at(0).at(0), Cell("Z\xC3\xBCrich"));
}

TEST(ReportSheets, WhatLeavesTheRangeIsThrown) {
  Database database = made();
  database.RecordTable[1].shares = Currency::max();
  const Currency prices[] = {money(12), money(25)};
  EXPECT_THROW(currentValueSheet(database, prices), ArithmeticError);
}

}  // namespace
}  // namespace mirelund

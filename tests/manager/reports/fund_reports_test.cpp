// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/reports/fund_reports.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "app/report_line.h"
#include "line_ends.h"
#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "reached.h"

namespace mirelund {
namespace {

constexpr ShortDateFormat kFormat{};
const std::string kGolden = MIRELUND_TEST_DATA "/golden/";

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = text.find(NewLine, at);
    lines.push_back(text.substr(at, end - at));
    at = end + NewLine.size();
  }
  return lines;
}

Database opened(const std::string& path) {
  return parseDatabase(contents(path)).value();
}

// The expected texts were derived from the data file apart from the program, by
// golden/derive.py.
TEST(FundReports, MatchTheDerivedTexts) {
  for (const auto& [path, name] :
       {std::pair(kGolden + "six_types.PQD", "six_types"),
        std::pair(std::string(MIRELUND_DATA "/DtaSampl.PQD"), "DtaSampl")}) {
    const Database database = opened(path);
    CurrencyTable totals(kTotalsRows, kTotalsColumns);
    std::string blocks;
    for (std::int16_t row = 1; row <= database.FundCount; ++row) {
      const Fund& fund = database.FundTable[static_cast<std::size_t>(row)];
      EXPECT_EQ(recordList(database, fundNumber(fund), kFormat, totals),
                contents(kGolden + name + ".list" + std::to_string(row) + ".txt"))
          << fund.name;
      const FundReport one = transactionReport(database, row, kFormat, totals);
      ASSERT_EQ(one.blocks.size(), 1U);
      EXPECT_EQ(one.blocks[0].firstLine, 0U);
      EXPECT_EQ(one.blocks[0].fundRow, row);
      blocks += one.text;
    }
    const std::string all = allFundsReport(database, kFormat, totals).text;
    EXPECT_EQ(all, contents(kGolden + name + ".funds.txt"));
    // The same blocks, and one more line.
    EXPECT_EQ(all.substr(0, blocks.size()), blocks);
    EXPECT_EQ(linesOf(all.substr(blocks.size())).size(), 1U);
  }
}

TEST(FundReports, AFundWithoutRecordsShowsZeros) {
  Database database;
  addFund(database, "Empty");
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const auto lines = linesOf(recordList(database, 1, kFormat, totals));
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[2], std::string(96, '_'));
  EXPECT_EQ(lines[3], lines[2]);
  EXPECT_EQ(lines[4],
            "Total:                                 .0000        .00     "
            "   .00        .00         .00");
  const auto report = linesOf(transactionReport(database, 1, kFormat, totals).text);
  ASSERT_EQ(report.size(), 6U);
  EXPECT_EQ(
      report[4],
      "Total:                                 .0000        .00      .0000        .00          "
      ".00");
  EXPECT_EQ(report[5], "Average cost per share = 0.0000");
}

TEST(FundReports, ACashDividendAloneHasANegativeBookValue) {
  Database database;
  addFund(database, "Cash");
  database.RecordTable[1] = {Currency::whole(1), {}, {}, {}, money(100), money(-100),
                             date(2001, 5, 15),  1,  'C'};
  database.RecordCount = 1;
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  recordList(database, 1, kFormat, totals);
  EXPECT_EQ(totals.at(31, 1), money(-100));
  EXPECT_EQ(totals.at(31, 5), money(100));
}

TEST(FundReports, Row31HoldsTheFundsTotals) {
  // Birch of six_types.PQD, by hand.
  const Database database = opened(kGolden + "six_types.PQD");
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const auto expectBirch = [&] {
    EXPECT_EQ(totals.at(31, 0), money(170));   // 100 - 20 + 10 - 5 + 85
    EXPECT_EQ(totals.at(31, 1), money(900));   // 1050 - 150 - 100 + 100
    EXPECT_EQ(totals.at(31, 2), money(1050));  // without the sale
    EXPECT_EQ(totals.at(31, 3), money(95));    // 10 + 85
    EXPECT_EQ(totals.at(31, 4), money(200));   // 50 + 50 + 100
    EXPECT_EQ(totals.at(31, 5), money(100));
  };
  recordList(database, 1, kFormat, totals);
  expectBirch();
  EXPECT_EQ(totals.at(31, 6), money(50.0085));  // 100 - 50 + .0085
  transactionReport(database, 2, kFormat, totals);
  expectBirch();
  EXPECT_EQ(totals.at(31, 6), Currency());
  allFundsReport(database, kFormat, totals);
  EXPECT_EQ(totals.at(31, 0), money(5108.2716));  // 4938.2716 + 170 + 0
  EXPECT_EQ(totals.at(31, 3), money(95));
}

TEST(FundReports, LeaveTheRowsOfTheLastValuation) {
  const Database database = opened(kGolden + "six_types.PQD");
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  for (std::size_t row = 0; row < 31; ++row)
    for (std::size_t column = 0; column < 7; ++column) totals.at(row, column) = money(7);
  recordList(database, 1, kFormat, totals);
  transactionReport(database, 1, kFormat, totals);
  allFundsReport(database, kFormat, totals);
  for (std::size_t row = 0; row < 31; ++row)
    for (std::size_t column = 0; column < 7; ++column) EXPECT_EQ(totals.at(row, column), money(7));
}

struct Average {
  const char* source;
  double shares, book, average;
};

TEST(FundTotals, AverageIsTakenOnlyAboveTheLeastHolding) {
  constexpr Average kCases[] = {
      {"1000 / 3 to four decimals", 3, 1000, 333.3333},
      {"nothing held", 0, -475, 0},
      {"0.005 is not enough", .005, 10, 0},
      {"0.0051 is: 10 / .0051", .0051, 10, 1960.7843},
      {"sales brought back more", 10, -25, -2.5},
      {"more sold than held", -10, 25, 0},
  };
  for (const auto& c : kCases) {
    Record record;
    record.shares = money(c.shares);
    record.bookValue = money(c.book);
    FundTotals totals;
    totals.add(record);
    EXPECT_EQ(totals.averageCost(), money(c.average)) << c.source;
  }
}

// Whatever book value a file gives a record, only a sale's is left out.
TEST(FundTotals, OnlySalesBringProceeds) {
  for (const char type : std::string("BSCDFU")) {
    Record record;
    record.type = type;
    record.bookValue = money(7);
    FundTotals totals;
    totals.add(record);
    EXPECT_EQ(totals.of(Total::BookValue), money(7)) << type;
    EXPECT_EQ(totals.of(Total::BookWithoutSales), type == 'S' ? money(0) : money(7)) << type;
  }
}

// A fund's records of 100,000 shares and more.
Database manyShares(const std::string& name) {
  return parseDatabase(withCrLf("3,1,\"All Records\",\"31\"\n\"" + name + R"(","1"
1,12.5,100000,25,0,1250025,"B",#2001-05-15#
1,9,-100000,30,0,-899970,"S",#2002-06-01#
1,.1,1234567.8901,0,0,0,"D",#2003-12-31#
)"))
      .value();
}

// Columns stand side by side where a number fills its own; a longer one loses its
// last decimals.
TEST(FundReports, ManySharesFillTheirColumn) {
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const Database database = manyShares("Alder");
  const auto list = linesOf(recordList(database, 1, kFormat, totals));
  ASSERT_EQ(list.size(), 8U);
  EXPECT_EQ(list[3],
            "Bought     5/15/2001     12.5000100,000.0000      25.00                   .00"
            "1,250,025.00      1");
  EXPECT_EQ(list[4],
            "Sold        6/1/2002      9.0000-100,000.000      30.00                   .00"
            " -899,970.00      2");
  // .1 x 1,234,567.8901 = 123,456.7890
  EXPECT_EQ(list[5],
            "Div/Shrs. 12/31/2003       .10001,234,567.89        .00 123,456.79        .00"
            "         .00      3");
  EXPECT_EQ(list[7],
            "Total:                         1,234,567.890      55.00 123,456.79        .00"
            "  350,055.00");
  const auto report = linesOf(transactionReport(database, 1, kFormat, totals).text);
  ASSERT_EQ(report.size(), 9U);
  EXPECT_EQ(report[3],
            "Bought     5/15/2001     12.5000100,000.0000      25.00                   .00"
            " 1,250,025.00");
  EXPECT_EQ(report[4],
            "Sold        6/1/2002      9.0000-100,000.000      30.00                   .00"
            "  -899,970.00");
  EXPECT_EQ(report[5],
            "Div/Shrs. 12/31/2003       .10001,234,567.89        .001,234,567.8        .00"
            "          .00");
  EXPECT_EQ(report[7],
            "Total:                        1,234,567.8901      55.001,234,567.8        .00"
            "   350,055.00");
  // 350,055 / 1,234,567.8901
  EXPECT_EQ(report[8], "Average cost per share = 0.2835");
}

TEST(FundReports, AFundWithoutANameIsReportedAsAny) {
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const Database named = manyShares("Alder");
  const Database nameless = manyShares("");
  EXPECT_EQ(recordList(nameless, 1, kFormat, totals), recordList(named, 1, kFormat, totals));
  const FundReport all = allFundsReport(nameless, kFormat, totals);
  EXPECT_EQ(all.text, allFundsReport(named, kFormat, totals).text);
  ASSERT_EQ(all.blocks.size(), 1U);
  EXPECT_EQ(all.blocks[0].fundRow, 1);
  EXPECT_EQ(transactionReport(nameless, 1, kFormat, totals).text,
            transactionReport(named, 1, kFormat, totals).text);
}

TEST(FundReports, DateColumnStartsAtTheEleventhCharacter) {
  const Database database = opened(kGolden + "six_types.PQD");
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const auto format = shortDateFormat("dd.MM.yyyy");
  const auto lines = linesOf(recordList(database, 1, format, totals));
  for (std::size_t i = 3; i < 10; ++i) EXPECT_EQ(lines[i].substr(16, 4), "2001") << lines[i];
  EXPECT_EQ(lines[3].substr(0, 20), "Bought    02.01.2001");
}

TEST(FundReports, EveryLineHasItsWidth) {
  checkReaching([](Reached& reached) {
    const Database database = *moderateDatabase();
    CurrencyTable totals(kTotalsRows, kTotalsColumns);
    try {
      for (std::int16_t row = 1; row <= database.FundCount; ++row) {
        const auto number = fundNumber(database.FundTable[static_cast<std::size_t>(row)]);
        for (const auto& line : linesOf(recordList(database, number, kFormat, totals)))
          RC_ASSERT(line.size() == 96U || line.starts_with("Total:"));
      }
      const FundReport all = allFundsReport(database, kFormat, totals);
      for (const auto& line : linesOf(all.text))
        RC_ASSERT(line.size() == 90U || line.starts_with("Average cost per share = "));
      reached();
    } catch (const ArithmeticError&) {
      // A total that left the range.
    }
  });
}

// An amount or two at the ends of the range: totals leave it, or just do not.
rc::Gen<Database> databaseAtTheEnds() {
  return rc::gen::exec([] {
    Database database = *moderateDatabase();
    for (int ends = *anyIn(0, 3); ends > 0; --ends) {
      Record& record = database.records()[*anyIn<std::size_t>(0, database.records().size())];
      Currency* amounts[] = {&record.price, &record.shares, &record.fees, &record.dividend,
                             &record.bookValue};
      *amounts[*anyIn(0, 5)] = *rc::gen::element(Currency::max(), Currency::min());
    }
    return database;
  });
}

TEST(FundReports, CheckTotalsThrowsWhereTheReportDoes) {
  checkReaching({{"throws", 0.25}, {"holds", 0.25}}, [](Reached& reached) {
    const Database database = *databaseAtTheEnds();
    CurrencyTable totals(kTotalsRows, kTotalsColumns);
    const auto throws = [](auto use) {
      try {
        use();
        return false;
      } catch (const ArithmeticError&) {
        return true;
      }
    };
    const bool checked = throws([&] { checkTotals(database); });
    bool lists = throws([&] { allFundsReport(database, kFormat, totals); });
    for (std::int16_t fund = 1; fund <= database.FundCount; ++fund)
      lists = lists || throws([&] { recordList(database, fund, kFormat, totals); });
    RC_ASSERT(checked == lists);
    reached(checked ? "throws" : "holds");
  });
}

// Shares received for 3 x (3 x 10^14), twice: 9 x 10^14 is an amount, 1.8 x 10^15 is
// none, and every other total is 6 x 10^14 at most.
TEST(FundReports, CheckTotalsSumsTheDividendUnits) {
  Database database;
  addFund(database, "Amber");
  for (const std::int16_t row : {std::int16_t{1}, std::int16_t{2}}) {
    Record& record = database.RecordTable[static_cast<std::size_t>(row)];
    record.fund = Currency::whole(1);
    record.price = Currency::whole(3);
    record.shares = Currency::whole(300'000'000'000'000);
    record.type = 'D';
    record.date = date(2001, 1, row);
  }
  database.RecordCount = 1;
  EXPECT_NO_THROW(checkTotals(database));
  database.RecordCount = 2;
  EXPECT_THROW(checkTotals(database), ArithmeticError);
}

TEST(FundReports, LabelFollowsTheBlocks) {
  const Database database = opened(MIRELUND_DATA "/DtaSampl.PQD");
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const FundReport report = allFundsReport(database, kFormat, totals);
  const auto lines = linesOf(report.text);
  ASSERT_EQ(report.blocks.size(), 6U);
  for (const FundBlock& block : report.blocks) {
    EXPECT_TRUE(lines[block.firstLine].starts_with("Trans-"));
    if (block.firstLine > 0) {
      EXPECT_TRUE(lines[block.firstLine - 1].starts_with("Average cost per share = "));
    }
    EXPECT_EQ(fundAtLine(report.blocks, block.firstLine), block.fundRow);
  }
  EXPECT_EQ(fundAtLine(report.blocks, report.blocks[1].firstLine - 1), 1);
  EXPECT_EQ(fundAtLine(report.blocks, lines.size()), 6);
  EXPECT_EQ(fundAtLine({}, 0), 0);
}

TEST(FundReports, TheLargestDatabaseFitsTheBox) {
  const Database database = madeDatabase(18, 600);
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const FundReport report = allFundsReport(database, kFormat, totals);
  EXPECT_EQ(report.blocks.size(), 18U);
  EXPECT_LE(report.text.size(), kReportCapacity);
  EXPECT_EQ(linesOf(report.text).size(), 600U + 18U * 6U + 1U);
}

TEST(FundReports, FundsThatShareANumberCanOutgrowTheBox) {
  Database database = madeDatabase(18, 600);
  for (Fund& fund : database.funds()) fund.number = "1";
  for (Record& record : database.records()) record.fund = Currency::whole(1);
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const FundReport report = allFundsReport(database, kFormat, totals);
  EXPECT_EQ(report.text, "Cannot Display all funds, not enough text space.");
  EXPECT_TRUE(report.blocks.empty());
}

// Amounts longer than their columns: each stands cut at its column's width, so that
// every width is held. 12,345,678.1234 x 12,345,678.5678 = 152,415,773,813,016.7037.
TEST(FundReports, EveryColumnIsCutAtItsWidth) {
  Database database;
  addFund(database, "Wide");
  Record& record = database.RecordTable[1];
  record.fund = Currency::whole(1);
  record.price = Currency::fromTenThousandths(123'456'781'234);
  record.shares = Currency::fromTenThousandths(123'456'785'678);
  record.fees = Currency::fromTenThousandths(1'234'567'891'200);
  record.dividend = Currency::fromTenThousandths(1'234'567'893'400);
  record.bookValue = Currency::fromTenThousandths(12'345'678'905'600);
  record.date = date(2001, 1, 2);
  record.type = 'D';
  record.number = 1;
  database.RecordCount = 1;
  CurrencyTable totals(kTotalsRows, kTotalsColumns);

  const auto list = linesOf(recordList(database, 1, kFormat, totals));
  EXPECT_EQ(list[3],
            "Div/Shrs.   1/2/2001"
            "12,345,678.1"
            "12,345,678.5"
            "123,456,789"
            "152,415,773"
            "123,456,789"
            "1,234,567,89"
            "      1");
  EXPECT_EQ(list[5],
            "Total:                         "
            "12,345,678.56"
            "123,456,789"
            "152,415,773"
            "123,456,789"
            "1,234,567,89");

  const auto report = linesOf(allFundsReport(database, kFormat, totals).text);
  EXPECT_EQ(report[3],
            "Div/Shrs.   1/2/2001"
            "12,345,678.1"
            "12,345,678.5"
            "123,456,789"
            "12,345,678."
            "123,456,789"
            "1,234,567,890");
  const std::string sums =
      "12,345,678.567"
      "123,456,789"
      "12,345,678."
      "123,456,789"
      "1,234,567,890";
  EXPECT_EQ(report[5], "Total:                        " + sums);
  EXPECT_EQ(report[7], "Total all funds:              " + sums);
}

}  // namespace
}  // namespace mirelund

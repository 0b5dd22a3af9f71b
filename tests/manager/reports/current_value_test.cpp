// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/reports/current_value.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "app/report_line.h"
#include "base/text.h"
#include "line_ends.h"
#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "manager/reports/fund_reports.h"
#include "reached.h"

namespace mirelund {
namespace {

const std::string kGolden = MIRELUND_TEST_DATA "/golden/";

// One fund, one purchase.
Database held(const std::string& name, Currency shares, Currency book) {
  Database database;
  addFund(database, name);
  database.RecordTable[1] = {Currency::whole(1), {}, shares, {}, {}, book,
                             date(2001, 5, 15),  1,  'B'};
  database.RecordCount = 1;
  return database;
}

std::string fundLine(const Database& database, Currency price) {
  CurrencyTable totals;
  const Currency prices[] = {price};
  const std::string table = currentValueTable(database, prices, totals);
  constexpr std::size_t start = std::size_t{3} * 87;
  return table.substr(start, table.find(NewLine, start) - start);
}

TEST(CurrentValue, MatchesTheDerivedTables) {
  for (const auto& [path, name] :
       {std::pair(kGolden + "six_types.PQD", "six_types"),
        std::pair(std::string(MIRELUND_DATA "/DtaSampl.PQD"), "DtaSampl")}) {
    const Database database = parseDatabase(contents(path)).value();
    const std::vector<Currency> prices(database.funds().size(), money(20));
    CurrencyTable totals;
    EXPECT_EQ(currentValueTable(database, prices, totals), contents(kGolden + name + ".value.txt"));
    // 20.00 for every fund: each current total is 20 x its shares.
    for (std::size_t row = 1; row <= prices.size(); ++row)
      EXPECT_EQ(totals.at(row, 3), totals.at(row, 0) * money(20));
  }
}

TEST(CurrentValue, FillsARowAFundAndTheirSums) {
  // Cedar Sold of six_types.PQD: bought for 1000, sold for 1475.
  const Database database = parseDatabase(contents(kGolden + "six_types.PQD")).value();
  const Currency prices[] = {money(1), money(20), money(30)};
  CurrencyTable totals(22, 5);
  currentValueTable(database, prices, totals);
  EXPECT_EQ(totals.rows(), 32U);
  EXPECT_EQ(totals.columns(), 7U);
  EXPECT_EQ(totals.at(3, 0), Currency());
  EXPECT_EQ(totals.at(3, 1), money(-475));
  EXPECT_EQ(totals.at(3, 3), Currency());
  EXPECT_EQ(totals.at(3, 4), money(475));
  EXPECT_EQ(totals.at(3, 5), money(-100));
  EXPECT_EQ(totals.at(3, 6), Currency());
  // Birch: 170 shares, book 900; Ascot: 4938.2716 at 1.
  EXPECT_EQ(totals.at(2, 3), money(3400));
  EXPECT_EQ(totals.at(2, 4), money(2500));
  EXPECT_EQ(totals.at(2, 5), money(277.7778));
  EXPECT_EQ(totals.at(2, 6), money(40.7758));  // 3400 / 8338.2716
  EXPECT_EQ(totals.at(31, 0), money(5108.2716));
  EXPECT_EQ(totals.at(31, 3), money(8338.2716));
  EXPECT_EQ(totals.at(31, 4), totals.at(1, 4) + money(2975));
  EXPECT_EQ(totals.at(31, 6), money(100));
  EXPECT_EQ(totals.at(31, 5), Currency());
}

struct FirstColumn {
  const char* name;
  double shares;
  const char* shown;
};

TEST(CurrentValue, TheNameGivesWayToTheNumber) {
  const FirstColumn cases[] = {
      {"Abcdefghijkl", 0, "Abcdefghij .0000"},
      {"Abcdefghijkl", 5, "Abcdefghi 5.0000"},
      {"Abcdefghijkl", 100, "Abcdefg 100.0000"},
      {"Abcdefghijkl", -100, "Abcdef -100.0000"},
      {"Abcdefghijkl", 123456, "Abc 123,456.0000"},
      {"Abcdefghijkl", 1234567, "A 1,234,567.0000"},
      {"Abcdefghijkl", 12345678, " 12,345,678.0000"},
      {"Abcdefghijkl", 123456789, "123,456,789.0000"},
      {"Ab", 100, "Ab      100.0000"},
      {"", 100, "        100.0000"},
      {"Zürich Übersee", 100, "Zürich  100.0000"},
      {"caf\xE9 au lait", 100, "café au 100.0000"},
  };
  for (const auto& c : cases) {
    const std::string line = fundLine(held(c.name, money(c.shares), money(1)), money(1));
    EXPECT_EQ(firstCharacters(line, 16), c.shown);
    EXPECT_EQ(characterCount(line), 85U) << line;
  }
}

// Three funds of 100,000 shares and more, one of them without a name and one short.
TEST(CurrentValue, ManySharesTakeTheNamesRoom) {
  const Database database = parseDatabase(withCrLf(R"(3,3,"All Records","31"
"","1"
"Birch","2"
"Cedar","3"
1,12.5,100000,25,0,1250025,"B",#2001-05-15#
2,.25,1234567.8901,0,0,350055,"B",#2001-05-16#
3,9,-100000,30,0,-899970,"S",#2001-05-17#
)"))
                                .value();
  const Currency prices[] = {money(20), money(2), money(9)};
  CurrencyTable totals;
  // Gains: 749,975 / 1,250,025, 2,119,080.7802 / 350,055, -30 / -899,970; shares of
  // 3,569,135.7802; 2,869,025.7802 / 700,110.
  EXPECT_EQ(
      currentValueTable(database, prices, totals),
      withCrLf(
          "Fund      Number        Book     Current      Current       Gain/     Gain/      % 0f\n"
          "Name      Shares       Value       Price        Total       Loss$     Loss%     Total\n"
          "_____________________________________________________________________________________\n"
          "    100,000.00001,250,025.00       20.00 2,000,000.00  749,975.00    60.00%    56.04%\n"
          "B 1,234,567.8901  350,055.00        2.00 2,469,135.782,119,080.78   605.36%    69.18%\n"
          "Ce -100,000.0000 -899,970.00        9.00  -900,000.00      -30.00      .00%   -25.22%\n"
          "_____________________________________________________________________________________\n"
          "Tot:              700,110.00             3,569,135.782,869,025.78   409.80%          "
          "\n"));
}

TEST(CurrentValue, AZeroDivisorLeavesZeroAndANegativeOneFollowsTheFormula) {
  EXPECT_EQ(
      fundLine(held("F", money(10), money(0)), money(2)),
      "F        10.0000         .00        2.00        20.00       20.00      .00%   100.00%");
  EXPECT_EQ(
      fundLine(held("F", money(10), money(-40)), money(2)),
      "F        10.0000      -40.00        2.00        20.00       60.00  -150.00%   100.00%");
  EXPECT_EQ(
      fundLine(held("F", money(0), money(-40)), money(2)),
      "F          .0000      -40.00        2.00          .00       40.00  -100.00%      .00%");
}

TEST(CurrentValue, AResultOutOfRangeLeavesTheTotals) {
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  totals.at(1, 4) = money(7);
  const Currency prices[] = {money(1e6)};
  EXPECT_THROW(currentValueTable(held("F", money(1e12), money(1)), prices, totals),
               ArithmeticError);
  EXPECT_EQ(totals.at(1, 4), money(7));
}

TEST(CurrentValue, EveryLineIs85Wide) {
  checkReaching([](Reached& reached) {
    const Database database = *moderateDatabase();
    std::vector<Currency> prices;
    for (std::size_t i = 0; i < database.funds().size(); ++i) prices.push_back(*moderatePrice());
    CurrencyTable totals;
    try {
      const std::string table = currentValueTable(database, prices, totals);
      RC_ASSERT(isUtf8(table));
      // Names may hold any control byte; lines are counted, not found.
      std::size_t lines = 0;
      for (std::size_t at = 0; at < table.size(); ++lines) {
        const auto end = table.find(NewLine, at);
        RC_ASSERT(characterCount(table.substr(at, end - at)) == 85U);
        at = end + NewLine.size();
      }
      RC_ASSERT(lines == 5 + database.funds().size());
      reached();
    } catch (const ArithmeticError&) {
      // A percentage of next to nothing.
    }
  });
}

// As in the other reports. 1,234,567.5678 x 123,456,789.12 = 152,415,747,872,275.9023;
// less 123,456,789,012.34 it is a gain of 123,356.7569 %.
TEST(CurrentValue, EveryColumnIsCutAtItsWidth) {
  const Database database = held("Abcdefghijkl", Currency::fromTenThousandths(12'345'675'678),
                                 Currency::fromTenThousandths(1'234'567'890'123'400));
  const Currency prices[] = {Currency::fromTenThousandths(1'234'567'891'200)};
  CurrencyTable totals;
  const std::string table = currentValueTable(database, prices, totals);
  constexpr std::size_t kLine = 85 + NewLine.size();
  EXPECT_EQ(table.substr(3 * kLine, 85),
            "A 1,234,567.5678"
            "123,456,789,"
            "123,456,789."
            "152,415,747,8"
            "152,292,291,"
            "123,356.7%"
            "   100.00%");
  EXPECT_EQ(table.substr(5 * kLine, 85),
            "Tot:      123,456,789,012.34"
            "   152,415,747,872,275.90"
            "152,292,291,"
            "123,356.7%"
            "          ");
}

}  // namespace
}  // namespace mirelund

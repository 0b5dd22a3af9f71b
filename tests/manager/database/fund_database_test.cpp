// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/fund_database.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "manager/database/databases.h"

namespace mirelund {
namespace {

// One record a letter; the letter's day decides the date.
Database lettered(const std::string& letters, const std::string& days) {
  Database database;
  addFund(database, "F");
  for (std::size_t i = 0; i < letters.size(); ++i) {
    Record& record = database.RecordTable[i + 1];
    record.fund = Currency::whole(1);
    record.price = Currency::whole(letters[i]);
    record.date = date(2001, 1, 1 + days[i] - '0');
  }
  database.RecordCount = static_cast<std::int16_t>(letters.size());
  return database;
}

std::string lettersOf(const Database& database) {
  std::string letters;
  for (const Record& record : database.records())
    letters += static_cast<char>(record.price.tenThousandths() / Currency::kScale);
  return letters;
}

struct Order {
  const char* rows;
  const char* days;
  const char* sorted;
};

// Worked out on paper, exchange by exchange, with gaps n/2, n/4, ..., 1.
constexpr Order kOrders[] = {
    {"A", "1", "A"},
    {"AB", "11", "AB"},
    {"AB", "21", "BA"},
    // gap 1 only; equal neighbours stay.
    {"ABC", "111", "ABC"},
    {"ABC", "211", "BCA"},
    // gap 2: A-C exchanged: CBAD. gap 1: nothing. C now stands before B.
    {"ABCD", "5116", "CBAD"},
    {"ABCD", "1111", "ABCD"},
    // gap 2: A-C: CBAD; B-D: CDAB. gap 1: C1 D1 A2 B2: nothing.
    {"ABCD", "2211", "CDAB"},
    // gap 2: A-C: CBADE; B-D equal; A-E: CBEDA, C-E: EBCDA. gap 1: C-D: EBDCA; B-D equal.
    {"ABCDE", "31211", "EBDCA"},
    // gap 3: A-D: DBCAEF; C-F: DBFAEC. gap 1: B-F, D-F: FDBAEC; E-C, A-C: FDBCAE; B-C equal.
    {"ABCDEF", "211130", "FDBCAE"},
    // gap 3: A-D: DBCAEFG; B-E equal; C-F equal; A-G: DBCGEFA, D-G equal.
    // gap 1: D1 B1 C1 G1 E1 F1 A2: nothing.
    {"ABCDEFG", "2111111", "DBCGEFA"},
    // gap 4: A-E: EBCDAFGH; B-F: EFCDABGH; C-G: EFGDABCH; D-H: EFGHABCD. gap 2: nothing;
    // gap 1: nothing.
    {"ABCDEFGH", "22221111", "EFGHABCD"},
    // gap 4: A-E: EBCDAFGH. gap 2: E1 C1 A2 G1: A-G: EBCDGFAH, C-G equal; B1 D1 F1 H1: nothing.
    // gap 1: all 1 but A2, H1: A-H: EBCDGFHA.
    {"ABCDEFGH", "21111111", "EBCDGFHA"},
};

TEST(SortRecords, LeavesEqualDatesAsWorkedOutByHand) {
  for (const auto& c : kOrders) {
    Database database = lettered(c.rows, c.days);
    SortRecords(database);
    EXPECT_EQ(lettersOf(database), c.sorted) << c.rows << ' ' << c.days;
    for (std::int16_t row = 1; row <= database.RecordCount; ++row)
      EXPECT_EQ(database.RecordTable[static_cast<std::size_t>(row)].number, row);
  }
}

// The rule as it is told: rows exchanged whole, one step at a time.
void exchangeByExchange(std::vector<Record>& rows, int count) {
  for (int gap = count / 2; gap > 0; gap /= 2)
    for (int i = gap; i <= count - 1; ++i)
      for (int j = i - gap + 1; j >= 1; j -= gap) {
        auto& earlier = rows.begin()[j];
        auto& later = rows.begin()[j + gap];
        if (later.date >= earlier.date) break;
        std::swap(earlier, later);
      }
  for (int i = 1; i <= count; ++i)
    rows[static_cast<std::size_t>(i)].number = static_cast<std::int16_t>(i);
}

RC_GTEST_PROP(SortRecords, IsTheExchangeOfWholeRows, ()) {
  Database database;
  const int count = *rc::gen::elementOf(std::vector<int>{0, 1, 2, 3, 7, 20, 75, 300, 599, 600});
  const int days = *rc::gen::inRange(1, 40);
  for (int i = 1; i <= count; ++i) {
    Record& record = database.RecordTable[static_cast<std::size_t>(i)];
    record.price = Currency::whole(i);
    const int day = *rc::gen::inRange(0, days);
    record.date = date(2001 + day / 28, 1, 1 + day % 28);
  }
  database.RecordCount = static_cast<std::int16_t>(count);
  auto rows = database.RecordTable;
  exchangeByExchange(rows, count);
  SortRecords(database);
  RC_ASSERT(rows == database.RecordTable);
}

TEST(SortFunds, ComparesBytesAndFollowsARow) {
  Database database;
  for (const char* name : {"zeta", "Alpha", "alpha", "\xC3\x84rger", "Zeta", "~", ""}) {
    const std::int16_t row = ++database.FundCount;
    database.FundTable[static_cast<std::size_t>(row)] = {name, std::to_string(row)};
  }
  EXPECT_EQ(SortFunds(database, 3), 4);
  std::string order;
  for (const Fund& fund : database.funds()) order += fund.name + fund.number + ' ';
  EXPECT_EQ(order, "7 Alpha2 Zeta5 alpha3 zeta1 ~6 \xC3\x84rger4 ");
}

TEST(FundDatabase, StartsEmpty) {
  const Database database;
  EXPECT_EQ(database.FundCount, 0);
  EXPECT_EQ(database.RecordCount, 0);
  EXPECT_EQ(database.FundTable[31].name, "All Records");
  EXPECT_EQ(database.FundTable[31].number, "31");
  EXPECT_EQ(database.RecordTable.size(), 603U);
  EXPECT_EQ(database.FundTable.size(), 32U);
}

TEST(FundDatabase, ANewFundTakesTheCountAsItsNumber) {
  Database database;
  EXPECT_EQ(addFund(database, "B"), 1);
  EXPECT_EQ(addFund(database, "C"), 2);
  EXPECT_EQ(addFund(database, "A"), 1);
  // Rows: A 3, B 1, C 2. Without number 2 the next takes 3 again, as A has it.
  removeFund(database, 3);
  const std::int16_t row = addFund(database, "D");
  EXPECT_EQ(row, 3);
  EXPECT_EQ(database.FundTable[1].number, "3");
  EXPECT_EQ(database.FundTable[3].number, "3");
}

TEST(FundDatabase, TheFundChosenIsTheOneThatGoes) {
  const std::string names[] = {"a", "zzzzzzzzz", "zzzzzzzzzz", "\xFF\xFF\xFF",
                               "~", "\xC3\xA9",  "a"};
  for (std::int16_t chosen = 1; chosen <= 7; ++chosen) {
    Database database;
    for (const auto& name : names) addFund(database, name);
    std::vector<std::string> left;
    for (std::int16_t row = 1; row <= 7; ++row) {
      const Fund& fund = database.FundTable[static_cast<std::size_t>(row)];
      if (row != chosen) left.push_back(fund.name + '/' + fund.number);
    }
    removeFund(database, chosen);
    ASSERT_EQ(database.FundCount, 6);
    std::vector<std::string> got;
    for (const Fund& fund : database.funds()) got.push_back(fund.name + '/' + fund.number);
    std::ranges::sort(left);
    std::ranges::sort(got);
    EXPECT_EQ(got, left) << chosen;
    EXPECT_EQ(database.FundTable[7].name, "");
    EXPECT_EQ(database.FundTable[7].number, "");
  }
}

TEST(FundDatabase, TheLongestNameOfTheHighestByteStays) {
  Database database;
  addFund(database, std::string(kMostNameBytes, '\xFF'));
  removeFund(database, addFund(database, "gone"));
  ASSERT_EQ(database.FundCount, 1);
  EXPECT_EQ(database.FundTable[1].number, "1");
}

TEST(FundDatabase, TheRecordChosenIsTheOneThatGoes) {
  // Dates after the year 2078 are as real as any.
  for (std::int16_t chosen = 1; chosen <= 4; ++chosen) {
    Database database = lettered("ABCD", "1111");
    database.RecordTable[3].date = date(2078, 12, 10);
    database.RecordTable[4].date = date(9999, 12, 31);
    std::string left = "ABCD";
    left.erase(static_cast<std::size_t>(chosen) - 1, 1);
    removeRecord(database, chosen);
    EXPECT_EQ(lettersOf(database), left);
    for (std::int16_t row = 1; row <= 3; ++row)
      EXPECT_EQ(database.RecordTable[static_cast<std::size_t>(row)].number, row);
  }
}

TEST(FundDatabase, FindsRecordsByTheirPlaceInTheFund) {
  Database database = madeDatabase(2, 10);
  for (std::int16_t fund = 1; fund <= 2; ++fund) {
    std::int64_t position = 0;
    for (const Record& record : database.records())
      if (record.fund == Currency::whole(fund)) {
        EXPECT_EQ(findRecord(database, fund, ++position), record.number);
      }
    EXPECT_EQ(position, 5);
    EXPECT_EQ(findRecord(database, fund, 6), 0);
    EXPECT_EQ(findRecord(database, fund, 0), 0);
    EXPECT_EQ(findRecord(database, fund, -1), 0);
  }
  EXPECT_TRUE(FundHasRecords(database, 2));
  EXPECT_FALSE(FundHasRecords(database, 3));
  EXPECT_EQ(firstEmptyFund(database), 0);
  addFund(database, "Empty");
  EXPECT_EQ(firstEmptyFund(database), 1);
}

TEST(FundDatabase, EqualsWhatHoldsTheSameAlone) {
  const Database database = madeDatabase(2, 4);
  const auto differs = [&](auto change) {
    Database other = database;
    change(other);
    EXPECT_FALSE(other == database);
    EXPECT_FALSE(database == other);
  };
  EXPECT_EQ(Database(database), database);
  differs([](Database& d) { d.FundTable[1].name += 'x'; });
  differs([](Database& d) { d.FundTable[2].number = "3"; });
  differs([](Database& d) { d.FundTable[kAllRecordsRow].name = "All"; });
  differs([](Database& d) { d.FundTable[kAllRecordsRow].number = "30"; });
  differs([](Database& d) { d.RecordTable[4].fees += Currency::whole(1); });
  differs([](Database& d) { --d.RecordCount; });
  differs([](Database& d) { --d.FundCount; });
  Database beyond = database;
  beyond.RecordTable[5].fees = Currency::whole(1);
  beyond.FundTable[3].name = "gone";
  EXPECT_EQ(beyond, database) << "rows that are not in use do not count";
}

TEST(FundDatabase, AFundWithoutANameNeedsNoRecords) {
  Database database = madeDatabase(2, 4);
  EXPECT_EQ(firstEmptyFund(database), 0);
  database.FundTable[1] = {"", "9"};
  EXPECT_EQ(firstEmptyFund(database), 0);
  database.FundTable[1] = {"Named", "9"};
  EXPECT_EQ(firstEmptyFund(database), 1);
}

TEST(FundNames, AreWhatAFileCanCarry) {
  for (const std::string& name :
       {std::string("a"), std::string("a,b"), std::string(" "), std::string("Zürich"),
        std::string("\x80\xff"), std::string("1"), std::string(kMostNameBytes, 'x')})
    EXPECT_TRUE(isFundName(name)) << name.substr(0, 20);
  for (const std::string& name :
       {std::string(), std::string("a\"b"), std::string("a\rb"), std::string("a\nb"),
        std::string("a\0b", 3), std::string(kMostNameBytes + 1, 'x')})
    EXPECT_FALSE(isFundName(name)) << name.substr(0, 20);
}

TEST(TransactionTypes, AreSixWithTheirCodesAndWords) {
  std::string codes;
  for (const auto& type : transactionTypes()) {
    codes += type.code;
    EXPECT_EQ(type.reportWord.size(), 10U);
    EXPECT_EQ(transactionType(type.code), &type);
  }
  EXPECT_EQ(codes, "BSCDFU");
  for (const char c : std::string("bAX \"\x01")) EXPECT_EQ(transactionType(c), nullptr);
}

}  // namespace
}  // namespace mirelund

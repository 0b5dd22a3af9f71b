// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/data_file.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>
#include <set>

#include "manager/database/databases.h"
#include "reached.h"

namespace mirelund {
namespace {

// Three records in two funds, every kind of field.
const std::string kFile =
    "3,2,\"All Records\",\"31\"\r\n"
    "\"Amber, Old\",\"2\"\r\n"
    "\"Birch\",\"1\"\r\n"
    "2,10.5,100,50,0,1100,\"B\",#2001-05-15#\r\n"
    "1,.0001,-50,0,0,-.25,\"U\",#2003-11-30#\r\n"
    "2,0,0,0,12.75,-12.75,\"C\",#2004-02-29#\r\n";

// kFile with its first `from` replaced.
std::string with(const std::string& from, const std::string& to) {
  std::string bytes = kFile;
  const auto at = bytes.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return bytes.replace(at, from.size(), to);
}

TEST(DataFile, IsReadAndWrittenByteForByte) {
  const auto database = parseDatabase(kFile);
  ASSERT_TRUE(database);
  EXPECT_EQ(database->FundCount, 2);
  EXPECT_EQ(database->RecordCount, 3);
  EXPECT_EQ(database->FundTable[1].name, "Amber, Old");
  EXPECT_EQ(database->FundTable[2].number, "1");
  const Record& first = database->RecordTable[1];
  EXPECT_EQ(first.fund, Currency::whole(2));
  EXPECT_EQ(first.price.tenThousandths(), 105000);
  EXPECT_EQ(first.shares, Currency::whole(100));
  EXPECT_EQ(first.fees, Currency::whole(50));
  EXPECT_EQ(first.dividend, Currency());
  EXPECT_EQ(first.bookValue, Currency::whole(1100));
  EXPECT_EQ(first.type, 'B');
  EXPECT_EQ(first.date, date(2001, 5, 15));
  EXPECT_EQ(first.number, 1);
  const Record& second = database->RecordTable[2];
  EXPECT_EQ(second.price.tenThousandths(), 1);
  EXPECT_EQ(second.shares, Currency::whole(-50));
  EXPECT_EQ(second.bookValue.tenThousandths(), -2500);
  EXPECT_EQ(writeDatabase(*database), kFile);
}

TEST(DataFile, OneRecordIsThreeLines) {
  const Database database = madeDatabase(1, 1);
  // 10.0037 x 11 + .25 = 110.2907
  EXPECT_EQ(writeDatabase(database),
            "1,1,\"All Records\",\"31\"\r\n\"Fund B\",\"1\"\r\n"
            "1,10.0037,11,.25,0,110.2907,\"B\",#2001-01-02#\r\n");
}

TEST(DataFile, AnEmptyDatabaseOpens) {
  for (const char* bytes : {"0,0,\"All Records\",\"31\"\r\n", "0,0,\"All Records\",\"31\"\n",
                            "0,0,\"All Records\",\"31\""}) {
    const auto database = parseDatabase(bytes);
    ASSERT_TRUE(database) << bytes;
    EXPECT_EQ(*database, Database());
  }
}

struct Amount {
  std::int64_t units;
  const char* text;
};
constexpr Amount kAmounts[] = {
    {0, "0"},
    {1, ".0001"},
    {5000, ".5"},
    {-2500, "-.25"},
    {10000, "1"},
    {-10000, "-1"},
    {100, ".01"},
    {1000, ".1"},
    {12345, "1.2345"},
    {10010, "1.001"},
    {100000, "10"},
    {-1, "-.0001"},
    {9999, ".9999"},
    {-99999, "-9.9999"},
    {123456780, "12345.678"},
    {std::numeric_limits<std::int64_t>::max(), "922337203685477.5807"},
    {-std::numeric_limits<std::int64_t>::max(), "-922337203685477.5807"},
};

TEST(DataFile, AmountsAreWrittenShort) {
  for (const auto& c : kAmounts) {
    Database database = *parseDatabase(kFile);
    database.RecordTable[1].price = Currency::fromTenThousandths(c.units);
    const std::string bytes = writeDatabase(database);
    EXPECT_NE(bytes.find("\r\n2," + std::string(c.text) + ",100,"), std::string::npos) << c.text;
    EXPECT_EQ(parseDatabase(bytes), database) << c.text;
  }
}

// Forms that this program does not write.
struct Accepted {
  const char* name;
  std::string bytes;
};

TEST(DataFile, AcceptsWhatOtherWritersPut) {
  std::string bare = kFile;
  std::erase(bare, '\r');
  const Accepted cases[] = {
      {"a zero before the point", with(",.0001,", ",0.0001,")},
      {"a zero before the point of a negative", with("-.25", "-0.25")},
      {"zeros at the end of a fraction", with("10.5,", "10.5000,")},
      {"a fraction of zeros", with(",100,", ",100.00,")},
      {"LF for CR LF", bare},
      {"LF for some CR LF", with("\"31\"\r\n", "\"31\"\n")},
      {"no last line end", kFile.substr(0, kFile.size() - 2)},
      {"LF at the end", bare.substr(0, bare.size())},
      {"no last line end, LF before", bare.substr(0, bare.size() - 1)},
  };
  for (const auto& c : cases) {
    const auto database = parseDatabase(c.bytes);
    ASSERT_TRUE(database) << c.name;
    EXPECT_EQ(writeDatabase(*database), kFile) << c.name;
  }
}

TEST(DataFile, FundsAreSortedAndRecordsKeptInTheFilesOrder) {
  const auto database = parseDatabase(
      "2,2,\"All Records\",\"31\"\r\n\"b\",\"1\"\r\n\"a\",\"2\"\r\n"
      "1,1,1,0,0,1,\"B\",#2002-01-01#\r\n2,1,1,0,0,1,\"B\",#2001-01-01#\r\n");
  ASSERT_TRUE(database);
  EXPECT_EQ(database->FundTable[1].name, "a");
  EXPECT_EQ(database->FundTable[1].number, "2");
  EXPECT_EQ(database->RecordTable[1].date, date(2002, 1, 1));
  EXPECT_EQ(database->RecordTable[2].number, 2);
}

TEST(DataFile, TheHeadersThirdAndFourthFieldAreRow31) {
  const auto database = parseDatabase("0,0,\"Everything\",\"30\"\r\n");
  ASSERT_TRUE(database);
  EXPECT_EQ(database->FundTable[31].name, "Everything");
  EXPECT_EQ(database->FundTable[31].number, "30");
  EXPECT_EQ(writeDatabase(*database), "0,0,\"Everything\",\"30\"\r\n");
}

// Nothing is refused that another writer of such files can have put.
TEST(DataFile, ARecordMayBeOfAFundThatIsNotInTheFile) {
  for (const char* fund : {"3", "18", "19", "30", "31", "32", "99", "65538", "922337203685477", "0",
                           "-1", "-922337203685477"}) {
    const std::string bytes = with("\r\n2,10.5", "\r\n" + std::string(fund) + ",10.5");
    const auto database = parseDatabase(bytes);
    ASSERT_TRUE(database) << fund;
    EXPECT_EQ(database->RecordCount, 3) << fund;
    EXPECT_EQ(writeDatabase(*database), bytes) << fund;
  }
  const std::string alone = "1,0,\"All Records\",\"31\"\r\n1,1,1,0,0,1,\"B\",#2001-01-01#\r\n";
  const auto database = parseDatabase(alone);
  ASSERT_TRUE(database);
  EXPECT_EQ(database->FundCount, 0);
  EXPECT_EQ(writeDatabase(*database), alone);
}

TEST(DataFile, Row31MayHaveAnyNumber) {
  for (const char* number : {"1", "30", "31", "32", "40", "32767", "65536", "999999999"}) {
    const std::string bytes = with("\"31\"", '"' + std::string(number) + '"');
    const auto database = parseDatabase(bytes);
    ASSERT_TRUE(database) << number;
    EXPECT_EQ(database->FundTable[31].number, number);
    EXPECT_EQ(writeDatabase(*database), bytes) << number;
  }
}

std::string manyRecords(int count) {
  std::string bytes = std::to_string(count) + ",1,\"All Records\",\"31\"\r\n\"a\",\"1\"\r\n";
  for (int i = 0; i < count; ++i) bytes += "1,1,1,0,0,1,\"B\",#2001-01-01#\r\n";
  return bytes;
}

std::string manyFunds(int count) {
  std::string bytes = "0," + std::to_string(count) + ",\"All Records\",\"31\"\r\n";
  for (int i = 1; i <= count; ++i) bytes += "\"a\",\"" + std::to_string(i) + "\"\r\n";
  return bytes;
}

TEST(DataFile, TheLimitsThemselvesOpen) {
  EXPECT_TRUE(parseDatabase(manyRecords(600)));
  EXPECT_TRUE(parseDatabase(manyFunds(18)));
  // A fund numbered 30, and a record of it.
  EXPECT_TRUE(
      parseDatabase("1,1,\"All Records\",\"31\"\r\n\"a\",\"30\"\r\n"
                    "30,1,1,0,0,1,\"B\",#2001-01-01#\r\n"));
}

struct Malformed {
  const char* name;
  std::string bytes;
};

std::vector<Malformed> malformed() {
  return {
      // the file as a whole
      {"nothing", ""},
      {"a line end", "\r\n"},
      {"a blank", " "},
      {"rubbish",
       "\x7f"
       "ELF\x02\x01\x01"},
      {"a NUL", std::string(1, '\0')},
      {"a page of text", "Dear Sir,\r\nthank you for your letter.\r\n"},
      {"a byte order mark in front", "\xEF\xBB\xBF" + kFile},
      {"a blank in front", " " + kFile},
      {"two bytes a character", std::string("3\0,\0", 4)},
      {"another blank line at the end", kFile + "\r\n"},
      {"data after the last record", kFile + "1,1,1,0,0,1,\"B\",#2005-01-01#\r\n"},
      {"a byte after the last record", kFile + "x"},
      {"a NUL after the last record", kFile + std::string(1, '\0')},
      {"an end mark after the last record", kFile + "\x1a"},
      {"the file twice", kFile + kFile},
      {"data after an empty database", "0,0,\"All Records\",\"31\"\r\n\"a\",\"1\"\r\n"},
      // cut short
      {"cut in the header", "3,2,\"All Rec"},
      {"cut after the header", "3,2,\"All Records\",\"31\"\r\n"},
      {"cut in a fund", "3,2,\"All Records\",\"31\"\r\n\"Amber"},
      {"cut before the records", kFile.substr(0, kFile.find("2,10.5"))},
      {"cut in a record", kFile.substr(0, kFile.find("#2003"))},
      {"cut in the last date", kFile.substr(0, kFile.size() - 4)},
      {"cut between CR and LF", kFile.substr(0, kFile.size() - 1)},
      {"one record fewer than counted", kFile.substr(0, kFile.find("2,0,0"))},
      {"one fund fewer than counted", with("\"Birch\",\"1\"\r\n", "")},
      // counts
      {"601 records", manyRecords(601)},
      {"19 funds", manyFunds(19)},
      {"65537 records, 1 when cut to 16 bits", with("3,2,", "65537,2,")},
      {"65538 funds, 2 when cut to 16 bits", with("3,2,", "3,65538,")},
      {"records beyond 64 bits", with("3,2,", "99999999999999999999999,2,")},
      {"-1 records", with("3,2,", "-1,2,")},
      {"a negative number of funds", with("3,2,", "3,-2,")},
      {"a record count with a fraction", with("3,2,", "3.0,2,")},
      {"a record count with a leading zero", with("3,2,", "03,2,")},
      {"a record count with a sign", with("3,2,", "+3,2,")},
      {"no record count", with("3,2,", ",2,")},
      {"a record count in quotes", with("3,2,", "\"3\",2,")},
      {"a fund count that is a word", with("3,2,", "3,two,")},
      {"counts in scientific form", with("3,2,", "3e0,2,")},
      // header
      {"a header without its name", with("\"All Records\",", "")},
      {"a header name without quotes", with("\"All Records\"", "All Records")},
      {"a header number without quotes", with("\"31\"", "31")},
      {"a header number of 0", with("\"31\"", "\"0\"")},
      {"a header number below 0", with("\"31\"", "\"-31\"")},
      {"a header number with a leading zero", with("\"31\"", "\"031\"")},
      {"a header number of ten digits", with("\"31\"", "\"1000000000\"")},
      {"a header number beyond 64 bits", with("\"31\"", "\"99999999999999999999\"")},
      {"an empty header number", with("\"31\"", "\"\"")},
      {"a header number of letters", with("\"31\"", "\"all\"")},
      {"a fifth field in the header", with("\"31\"", "\"31\",0")},
      {"a blank behind a comma", with("3,2,", "3, 2,")},
      {"a semicolon for a comma", with("3,2,", "3;2,")},
      // funds
      {"a name without quotes", with("\"Birch\"", "Birch")},
      {"a name without its second quote", with("\"Birch\"", "\"Birch")},
      {"a name in single quotes", with("\"Birch\"", "'Birch'")},
      {"a quote in a name", with("Birch", "Bi\"rch")},
      {"a doubled quote in a name", with("Birch", "Bi\"\"rch")},
      {"a line end in a name", with("Birch", "Bi\r\nrch")},
      {"a line feed in a name", with("Birch", "Bi\nrch")},
      {"a line feed at a name's end", with("Birch", "Birch\n")},
      {"a carriage return in a name", with("Birch", "Bi\rrch")},
      {"a line feed in the header's name", with("All Records", "All\nRecords")},
      {"a NUL in a name", with("Birch", std::string("Bi\0rch", 6))},
      {"a name beyond the longest", with("Birch", std::string(kMostNameBytes + 1, 'x'))},
      {"a fund without a number", with("\"Birch\",\"1\"", "\"Birch\"")},
      {"an empty fund number", with("\"Birch\",\"1\"", "\"Birch\",\"\"")},
      {"a fund number without quotes", with("\"Birch\",\"1\"", "\"Birch\",1")},
      {"fund number 0", with("\"Birch\",\"1\"", "\"Birch\",\"0\"")},
      {"fund number -1", with("\"Birch\",\"1\"", "\"Birch\",\"-1\"")},
      {"fund number 31", with("\"Birch\",\"1\"", "\"Birch\",\"31\"")},
      {"fund number 01", with("\"Birch\",\"1\"", "\"Birch\",\"01\"")},
      {"fund number 1.5", with("\"Birch\",\"1\"", "\"Birch\",\"1.5\"")},
      {"a fund number of letters", with("\"Birch\",\"1\"", "\"Birch\",\"one\"")},
      {"a fund number of 99999", with("\"Birch\",\"1\"", "\"Birch\",\"99999\"")},
      {"a fund number with a blank", with("\"Birch\",\"1\"", "\"Birch\",\" 1\"")},
      {"a third field in a fund", with("\"Birch\",\"1\"", "\"Birch\",\"1\",\"\"")},
      // records
      {"a record of fund 1.5", with("\r\n2,10.5", "\r\n1.5,10.5")},
      {"a record of fund .0001", with("\r\n2,10.5", "\r\n.0001,10.5")},
      {"a record of fund 02", with("\r\n2,10.5", "\r\n02,10.5")},
      {"a record of a fund in quotes", with("\r\n2,10.5", "\r\n\"2\",10.5")},
      {"a field missing", with("10.5,100,", "10.5,")},
      {"a field too many", with("10.5,100,", "10.5,100,0,")},
      {"an empty amount", with("10.5,100,", ",100,")},
      {"a decimal comma", with("10.5", "10,5")},
      {"five decimals", with("10.5", "10.50000")},
      {"no decimals behind the point", with("10.5", "10.")},
      {"a point alone", with("10.5", ".")},
      {"two points", with("10.5", "1.0.5")},
      {"a sign alone", with("-50", "-")},
      {"two signs", with("-50", "--50")},
      {"a plus sign", with("-50", "+50")},
      {"a sign behind", with("-50", "50-")},
      {"minus zero", with("-50", "-0")},
      {"a leading zero", with("10.5", "010.5")},
      {"a leading zero of a whole amount", with(",100,", ",0100,")},
      {"two zeros before the point", with(".0001", "00.0001")},
      {"a thousands separator", with(",1100,", ",1 100,")},
      {"a money symbol", with("10.5", "$10.5")},
      {"scientific form", with("10.5", "1.05e1")},
      {"hexadecimal", with("10.5", "0x10")},
      {"a NaN", with("10.5", "nan")},
      {"an infinity", with("10.5", "inf")},
      {"a blank in front of an amount", with("10.5", " 10.5")},
      {"a blank behind an amount", with("10.5", "10.5 ")},
      {"a tab", with("10.5", "\t10.5")},
      {"an amount in quotes", with("10.5", "\"10.5\"")},
      {"one ten-thousandth beyond the range", with("10.5", "922337203685477.5808")},
      {"one beyond the negative range", with("10.5", "-922337203685477.5808")},
      {"two beyond the negative range", with("10.5", "-922337203685477.5809")},
      {"an amount of 16 digits", with("10.5", "1000000000000000")},
      {"an amount beyond 64 bits", with("10.5", "99999999999999999999999999")},
      {"an unknown type", with("\"B\"", "\"X\"")},
      {"a small letter", with("\"B\"", "\"b\"")},
      {"no type", with("\"B\"", "\"\"")},
      {"two letters", with("\"B\"", "\"BS\"")},
      {"a type without quotes", with("\"B\"", "B")},
      {"a type as a word", with("\"B\"", "\"Bought\"")},
      {"a date without number signs", with("#2001-05-15#", "2001-05-15")},
      {"a date in quotes", with("#2001-05-15#", "\"2001-05-15\"")},
      {"a date in another order", with("#2001-05-15#", "#05-15-2001#")},
      {"a date with slashes", with("#2001-05-15#", "#2001/05/15#")},
      {"a date of one digit", with("#2001-05-15#", "#2001-5-15#")},
      {"a year of two digits", with("#2001-05-15#", "#01-05-15#")},
      {"a year of five digits", with("#2001-05-15#", "#20011-05-15#")},
      {"a date with a time", with("#2001-05-15#", "#2001-05-15 00:00:00#")},
      {"the year 0", with("#2001-05-15#", "#0000-05-15#")},
      {"month 13", with("#2001-05-15#", "#2001-13-15#")},
      {"month 0", with("#2001-05-15#", "#2001-00-15#")},
      {"day 0", with("#2001-05-15#", "#2001-05-00#")},
      {"31 April", with("#2001-05-15#", "#2001-04-31#")},
      {"29 February of a common year", with("#2001-05-15#", "#2001-02-29#")},
      {"an empty date", with("#2001-05-15#", "##")},
      {"a null date", with("#2001-05-15#", "#NULL#")},
      {"CR alone", with("#\r\n1,", "#\r1,")},
      {"CR CR LF", with("#\r\n1,", "#\r\r\n1,")},
      {"an empty line between records", with("#\r\n1,", "#\r\n\r\n1,")},
      {"two records in a line", with("#\r\n1,", "#,1,")},
      {"a comma at a line's end", with("#\r\n1,", "#,\r\n1,")},
      {"a record over two lines", with("10.5,100", "10.5\r\n100")},
  };
}

TEST(DataFile, EveryMalformedFileIsRefused) {
  const auto cases = malformed();
  EXPECT_GE(cases.size(), 60U);
  std::set<std::string> names;
  for (const auto& c : cases) {
    EXPECT_FALSE(parseDatabase(c.bytes)) << c.name;
    EXPECT_TRUE(names.insert(c.name).second) << c.name;
  }
}

// A file whose every number is 10 or 9, and where each may be put otherwise: ten or
// nine records of ten or nine funds.
struct Spelling {
  std::string amount, year, pair;
};

constexpr std::size_t kNumericFields = 13;

std::string spelledFile(const Spelling& plain, const Spelling& odd, std::size_t oddField) {
  std::size_t field = 0;
  const auto amount = [&] { return field++ == oddField ? odd.amount : plain.amount; };
  const auto year = [&] { return field++ == oddField ? odd.year : plain.year; };
  const auto pair = [&] { return field++ == oddField ? odd.pair : plain.pair; };
  const int count = std::stoi(plain.amount);
  std::string bytes = amount();
  bytes += ',' + amount();
  bytes += ",\"All Records\",\"" + amount() + "\"\r\n";
  for (int i = 1; i < count; ++i) bytes += "\"a\",\"" + std::to_string(i) + "\"\r\n";
  bytes += "\"a\",\"" + amount() + "\"\r\n";
  for (int record = 0; record < count; ++record) {
    for (int i = 0; i < 6; ++i) bytes += amount() + ',';
    bytes += "\"B\",#" + year();
    bytes += '-' + pair();
    bytes += '-' + pair() + "#\r\n";
  }
  return bytes;
}

// ':' follows '9' and '/' stands before '0': who takes a digit for its distance from
// '0' reads ":" as 10 and "1/" as 9.
TEST(DataFile, TheNeighboursOfTheDigitsAreRefusedInEveryNumber) {
  const std::pair<Spelling, Spelling> spellings[] = {
      {{"10", "2010", "10"}, {":", "200:", "0:"}},
      {{"9", "2009", "09"}, {"1/", "201/", "1/"}},
  };
  for (const auto& [plain, odd] : spellings) {
    ASSERT_TRUE(parseDatabase(spelledFile(plain, plain, 0))) << plain.amount;
    for (std::size_t field = 0; field < kNumericFields; ++field)
      EXPECT_FALSE(parseDatabase(spelledFile(plain, odd, field))) << odd.amount << ' ' << field;
  }
  // Wherever a digit stands, behind the point too.
  for (std::size_t at = 0; at < kFile.size(); ++at) {
    if (kFile[at] < '0' || kFile[at] > '9') continue;
    for (const char neighbour : {'/', ':'}) {
      std::string bytes = kFile;
      bytes[at] = neighbour;
      EXPECT_FALSE(parseDatabase(bytes)) << bytes;
      EXPECT_FALSE(parseDatabase(std::string(kFile).insert(at, 1, neighbour))) << at;
    }
  }
}

RC_GTEST_PROP(DataFile, AnyDatabaseComesBackTheSame, ()) {
  const Database database = *anyDatabase();
  const std::string bytes = writeDatabase(database);
  RC_ASSERT(bytes.size() <= kMostFileBytes);
  const auto back = parseDatabase(bytes);
  RC_ASSERT(back.has_value());
  RC_ASSERT(*back == database);
  RC_ASSERT(writeDatabase(*back) == bytes);
}

// Funds that are in the file, funds that are not, and what is no fund at all.
TEST(DataFile, RecordsOfUnknownFundsComeBackByteForByte) {
  checkReaching({{"unknown", 0.5}, {"end"}}, [](Reached& reached) {
    Database database = *anyDatabase();
    if (database.RecordCount == 0) database.RecordCount = 1;
    database.RecordTable[1].number = 1;
    if (database.RecordTable[1].date == Date()) database.RecordTable[1].date = *anyDate();
    database.FundTable[31].number = std::to_string(*anyIn(1, 1'000'000'000));
    bool unknown = false;
    for (Record& record : database.records()) {
      const auto fund = *rc::gen::oneOf(anyIn<std::int64_t>(1, 31), anyIn<std::int64_t>(-5, 60),
                                        anyIn<std::int64_t>(-100'000'000'000, 100'000'000'000));
      record.fund = Currency::whole(fund);
      unknown = unknown || fund < 1 || fund > database.FundCount;
    }
    const std::string bytes = writeDatabase(database);
    const auto back = parseDatabase(bytes);
    RC_ASSERT(back.has_value());
    RC_ASSERT(*back == database);
    RC_ASSERT(writeDatabase(*back) == bytes);
    if (unknown) reached("unknown");
    reached();
  });
}

TEST(DataFile, ABrokenByteIsRefusedOrReadAndWrittenStably) {
  checkReaching({{"read", 0.05}, {"refused", 0.5}}, [](Reached& reached) {
    std::string bytes = writeDatabase(*anyDatabase());
    const auto at = *rc::gen::inRange<std::size_t>(0, bytes.size());
    bytes[at] = *rc::gen::arbitrary<char>();
    if (const auto database = parseDatabase(bytes)) {
      const std::string written = writeDatabase(*database);
      const auto again = parseDatabase(written);
      RC_ASSERT(again.has_value());
      RC_ASSERT(writeDatabase(*again) == written);
      reached("read");
    } else {
      reached("refused");
    }
  });
}

TEST(DataFile, TheLargestDatabaseComesBackTheSame) {
  Database database;
  for (int i = 0; i < kMostFunds; ++i)
    addFund(database, std::string(kMostNameBytes - 1, '\xE9') + static_cast<char>('a' + i));
  database.FundTable[31].name = std::string(kMostNameBytes, ' ');
  database.RecordCount = kMostRecords;
  int i = 0;
  for (Record& record : database.records()) {
    record.fund = Currency::whole(1 + i % 18);
    record.price = record.fees = record.bookValue = Currency::min();
    record.shares = record.dividend = Currency::max();
    record.date = date(9999, 12, 31);
    record.type = "BSCDFU"[i % 6];
    record.number = static_cast<std::int16_t>(++i);
  }
  const std::string bytes = writeDatabase(database);
  EXPECT_LE(bytes.size(), kMostFileBytes);
  EXPECT_GT(bytes.size(), kMostFileBytes * 9 / 10);
  const auto back = parseDatabase(bytes);
  ASSERT_TRUE(back);
  EXPECT_EQ(*back, database);
  EXPECT_EQ(writeDatabase(*back), bytes);
}

TEST(DataFile, NamesAreBytes) {
  for (const std::string& name :
       {std::string("Comma, and; semicolon"), std::string("Zürich – 株式"),
        std::string("caf\xE9 \x80 \x93quoted\x94"), std::string("'single' #2001-01-01#"),
        std::string("tab\there"), std::string("\x01\x7f\xff"), std::string(" blanks "),
        std::string()}) {
    Database database = madeDatabase(1, 2);
    database.FundTable[1].name = name;
    const auto back = parseDatabase(writeDatabase(database));
    ASSERT_TRUE(back) << name;
    EXPECT_EQ(back->FundTable[1].name, name);
  }
}

// Nothing in a data file is filler: whatever byte becomes another that stands
// nowhere, the file is refused; but for the letters of a name.
TEST(DataFile, EveryByteCounts) {
  const std::string bytes = writeDatabase(madeDatabase(2, 3));
  ASSERT_TRUE(parseDatabase(bytes));
  int names = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const char wrong : {'\x01', 'x'}) {
      std::string broken = bytes;
      broken[i] = wrong;
      if (parseDatabase(broken)) ++names;
    }
  }
  // "All Records" and two of "Fund ?", in both ways.
  EXPECT_EQ(names, 2 * (11 + 6 + 6));
}

}  // namespace
}  // namespace mirelund

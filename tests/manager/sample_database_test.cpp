// SPDX-License-Identifier: GPL-3.0-or-later
#include "sample_database.h"

#include <gtest/gtest.h>

#include <set>

#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "manager/reports/fund_reports.h"
#include "manager/transaction_entry.h"

namespace mirelund {
namespace {

TEST(SampleDatabase, IsTheFileThatIsShipped) {
  const std::string bytes = contents(MIRELUND_DATA "/DtaSampl.PQD");
  EXPECT_EQ(writeDatabase(sampleDatabase()), bytes);
  const auto database = parseDatabase(bytes);
  ASSERT_TRUE(database);
  EXPECT_EQ(*database, sampleDatabase());
}

TEST(SampleDatabase, HasWhatTheHelpWalksThrough) {
  const Database database = sampleDatabase();
  EXPECT_EQ(database.FundCount, 6);
  EXPECT_EQ(database.RecordCount, 90);
  EXPECT_EQ(database.RecordTable[1].date.year(), 2008);
  EXPECT_EQ(database.RecordTable[90].date.year(), 2022);
  std::set<char> types;
  for (const Record& record : database.records()) types.insert(record.type);
  EXPECT_EQ(types.size(), 6U);

  const auto record = [&](std::int16_t fund, int position) -> const Record& {
    return database.RecordTable[static_cast<std::size_t>(findRecord(database, fund, position))];
  };
  const Record& split = record(1, 11);
  EXPECT_EQ(split.type, 'D');
  EXPECT_EQ(split.price.tenThousandths(), 1);
  EXPECT_EQ(split.shares, Currency::whole(450));
  const Record& reverse = record(5, 6);
  EXPECT_EQ(reverse.type, 'U');
  EXPECT_EQ(reverse.price.tenThousandths(), 1);
  EXPECT_EQ(reverse.shares, Currency::whole(-200));
  FundTotals sold;
  for (const Record& r : database.records())
    if (r.fund == Currency::whole(6)) sold.add(r);
  EXPECT_EQ(sold.of(Total::Shares), Currency());
  EXPECT_LT(sold.of(Total::BookValue), Currency());
}

TEST(SampleDatabase, EveryRecordCouldHaveBeenTyped) {
  const ShortDateFormat format;
  const Database database = sampleDatabase();
  for (const Record& record : database.records()) {
    const EntryRow row = entryRow(record);
    Date day;
    EXPECT_EQ(checkEntry(row, formatDate(record.date, format), format, false, day), Message::None);
    Record again = buildRecord(row, 0, day);
    again.fund = record.fund;
    again.number = record.number;
    EXPECT_EQ(again, record);
  }
}

// Fund by fund, no more shares leave than are held.
TEST(SampleDatabase, HoldingsAreNeverNegative) {
  const Database database = sampleDatabase();
  for (std::int16_t fund = 1; fund <= 6; ++fund) {
    Currency held;
    for (const Record& record : database.records()) {
      if (record.fund != Currency::whole(fund)) continue;
      held += record.shares;
      EXPECT_GE(held, Currency());
    }
  }
}

}  // namespace
}  // namespace mirelund

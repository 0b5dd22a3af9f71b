// SPDX-License-Identifier: GPL-3.0-or-later
#include "fund_sample.h"

#include <map>
#include <random>
#include <string>

namespace mirelund::bench {

Database fundSample(std::int16_t records) {
  std::mt19937_64 random(static_cast<std::uint64_t>(records));
  const auto between = [&random](std::int64_t least, std::int64_t most) {
    return std::uniform_int_distribution<std::int64_t>(least, most)(random);
  };
  Database database;
  for (std::int16_t fund = 1; fund <= kMostFunds; ++fund)
    addFund(database, "Fund number " + std::to_string(fund));
  database.RecordCount = records;
  for (Record& record : database.records()) {
    const TransactionType& type = transactionTypes()[static_cast<std::size_t>(between(0, 5))];
    const std::int64_t sign = type.leavesHolding ? -1 : 1;
    record.fund = Currency::whole(between(1, kMostFunds));
    record.type = type.code;
    if (type.need(EntryBox::Price) != Need::None) {
      record.price = Currency::fromTenThousandths(between(500, 10'000) * 100);
      record.shares = Currency::fromTenThousandths(sign * between(10'000, 5'000'000));
    }
    if (type.need(EntryBox::Fees) != Need::None)
      record.fees = Currency::fromTenThousandths(between(1, 9'999) * 100);
    if (type.need(EntryBox::Dividend) != Need::None)
      record.dividend = Currency::fromTenThousandths(between(1, 99'999) * 100);
    if (type.book == BookRule::Trade) record.bookValue = record.price * record.shares + record.fees;
    if (type.book == BookRule::CashReceived) record.bookValue = -record.dividend;
    if (type.book == BookRule::CashPaid) record.bookValue = record.fees;
    record.date = *Date::of(static_cast<int>(between(1990, 2020)), static_cast<int>(between(1, 12)),
                            static_cast<int>(between(1, 28)));
  }
  SortRecords(database);
  return database;
}

Database tradedSample(std::int16_t records) {
  Database database = fundSample(records);
  std::map<std::int64_t, Currency> held;
  for (Record& record : database.records()) {
    Currency& shares = held[record.fund.tenThousandths()];
    if (shares + record.shares < Currency()) {
      record.type = 'B';
      record.shares = -record.shares;
      record.bookValue = record.price * record.shares + record.fees;
    }
    shares += record.shares;
  }
  return database;
}

}  // namespace mirelund::bench

// SPDX-License-Identifier: GPL-3.0-or-later
// Databases and amounts for the manager's tests.
#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdint>
#include <limits>
#include <string>

#include "files.h"
#include "manager/database/fund_database.h"
#include "reached.h"

namespace mirelund {

inline Currency money(double value) {
  return ToCurrency(value);
}

inline Date date(int year, int month, int day) {
  return *Date::of(year, month, day);
}

/// `count` records in `funds` funds, each value another, sorted by date.
inline Database madeDatabase(int funds, int count) {
  Database database;
  for (int i = 1; i <= funds; ++i) addFund(database, "Fund " + std::string(1, char('A' + i)));
  for (int i = 1; i <= count; ++i) {
    Record& record = database.RecordTable[static_cast<std::size_t>(i)];
    record.fund = Currency::whole(1 + i % funds);
    record.price = Currency::fromTenThousandths(100'000 + i * 37);
    record.shares = Currency::whole(10 + i);
    record.fees = Currency::fromTenThousandths(i * 2500);
    record.bookValue = record.price * record.shares + record.fees;
    record.date = date(2001 + i / 300, 1 + i / 28 % 12, 1 + i % 28);
    record.type = 'B';
    record.number = static_cast<std::int16_t>(i);
  }
  database.RecordCount = static_cast<std::int16_t>(count);
  SortRecords(database);
  return database;
}

inline rc::Gen<Currency> anyAmount() {
  return rc::gen::map(rc::gen::oneOf(rc::gen::inRange<std::int64_t>(-20'000, 20'000),
                                     rc::gen::inRange(-std::numeric_limits<std::int64_t>::max(),
                                                      std::numeric_limits<std::int64_t>::max()),
                                     rc::gen::just(-std::numeric_limits<std::int64_t>::max()),
                                     rc::gen::just(std::numeric_limits<std::int64_t>::max())),
                      Currency::fromTenThousandths);
}

inline rc::Gen<Date> anyDate() {
  return rc::gen::map(rc::gen::tuple(rc::gen::inRange(100, 10000), rc::gen::inRange(1, 13),
                                     rc::gen::inRange(1, 32)),
                      [](const std::tuple<int, int, int>& parts) {
                        const auto [year, month, day] = parts;
                        return Date::of(year, month, day).value_or(*Date::of(year, month, 28));
                      });
}

/// Names of any bytes that may be in one.
inline rc::Gen<std::string> anyFundName() {
  return rc::gen::nonEmpty(
      rc::gen::container<std::string>(rc::gen::suchThat(rc::gen::arbitrary<char>(), [](char c) {
        return c != '"' && c != '\r' && c != '\n' && c != '\0';
      })));
}

/// So many funds and records, sorted by date, prices and other amounts from the two
/// generators. To be called while a case is drawn.
inline Database drawnDatabase(int funds, int count, const rc::Gen<Currency>& price,
                              const rc::Gen<Currency>& amount) {
  Database database;
  for (int i = 0; i < funds; ++i) addFund(database, *anyFundName());
  database.RecordCount = static_cast<std::int16_t>(count);
  for (Record& record : database.records()) {
    record.fund = Currency::whole(*rc::gen::inRange(1, funds + 1));
    record.price = *price;
    record.shares = *amount;
    record.fees = *amount;
    record.dividend = *amount;
    record.bookValue = *amount;
    record.type = *rc::gen::elementOf(std::string("BSCDFU"));
    record.date = *anyDate();
  }
  SortRecords(database);
  return database;
}

/// Any amounts: totals of more than a few of them leave the range.
inline rc::Gen<Database> anyDatabase() {
  return rc::gen::exec([] {
    const int funds = *rc::gen::inRange(0, kMostFunds + 1);
    const int count = funds == 0 ? 0 : *rc::gen::inRange(0, 40);
    return drawnDatabase(funds, count, anyAmount(), anyAmount());
  });
}

/// Amounts up to a thousand million, as often below ten or a hundred thousand.
inline rc::Gen<Currency> moderateAmount() {
  const auto below = [](std::int64_t whole) {
    return anyIn(-whole * Currency::kScale, whole * Currency::kScale + 1);
  };
  return rc::gen::map(rc::gen::oneOf(below(10), below(100'000), below(1'000'000'000)),
                      Currency::fromTenThousandths);
}

/// Prices up to a thousand.
inline rc::Gen<Currency> moderatePrice() {
  return rc::gen::map(anyIn<std::int64_t>(1, 1000 * Currency::kScale + 1),
                      Currency::fromTenThousandths);
}

/// A fund and a record at least, whose sums, products and averages stay in range
/// nearly always.
inline rc::Gen<Database> moderateDatabase() {
  return rc::gen::exec([] {
    return drawnDatabase(*anyIn(1, kMostFunds + 1), *anyIn(1, 60), moderatePrice(),
                         moderateAmount());
  });
}

}  // namespace mirelund

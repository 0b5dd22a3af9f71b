// SPDX-License-Identifier: GPL-3.0-or-later
// Databases for the tests of Insights.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "line_ends.h"
#include "manager/database/data_file.h"
#include "manager/database/databases.h"

namespace mirelund {

/// So many funds, "Fund 1" and so on with these numbers, and the records of a data file.
inline Database databaseOf(int funds, const std::string& records) {
  std::string file = std::to_string(std::ranges::count(records, '\n')) + ',' +
                     std::to_string(funds) + ",\"All Records\",\"31\"\n";
  for (int i = 1; i <= funds; ++i)
    file += "\"Fund " + std::to_string(i) + "\",\"" + std::to_string(i) + "\"\n";
  return parseDatabase(withCrLf(file + records)).value();
}

using Prices = std::vector<std::optional<Currency>>;

inline Prices pricesOf(const Database& database, double price) {
  return Prices(database.funds().size(), money(price));
}

/// Records such as a person enters: types that match their signs, prices up to a hundred,
/// sales of no more than is held most of the time, splits both ways, book values by the
/// entry's rules and now and then another, dates of some years. To be drawn in a case.
inline Database drawnHistories(int funds, int count) {
  Database database;
  for (int i = 1; i <= funds; ++i) addFund(database, "Fund " + std::to_string(i));
  std::vector<std::int64_t> held(static_cast<std::size_t>(funds) + 1);
  int day = 0;
  for (int i = 0; i < count; ++i) {
    Record& record = database.RecordTable[static_cast<std::size_t>(++database.RecordCount)];
    const int fund = *anyIn(1, funds + 1);
    std::int64_t& mine = held[static_cast<std::size_t>(fund)];
    day += *anyIn(0, 90);
    record.date = date(2000 + day / 336, 1 + day / 28 % 12, 1 + day % 28);
    record.fund = Currency::whole(fund);
    record.type = *rc::gen::elementOf(std::string("BBBSCDFUDU"));
    if (mine == 0 && (record.type == 'S' || record.type == 'U')) record.type = 'B';
    const auto units = [](std::int64_t most) {
      return Currency::fromTenThousandths(*anyIn<std::int64_t>(1, most + 1));
    };
    record.price = units(1'000'000);
    switch (record.type) {
      case 'B':
        record.shares = units(10'000'000);
        record.fees = units(500'000);
        record.bookValue = record.price * record.shares + record.fees;
        break;
      case 'S':
        record.shares = -(*anyIn(0, 4) == 0 ? Currency::fromTenThousandths(mine) : units(mine));
        record.fees = units(500'000);
        record.bookValue = record.price * record.shares + record.fees;
        break;
      case 'C':
        record.dividend = units(5'000'000);
        record.bookValue = -record.dividend;
        break;
      case 'F':
        record.fees = units(500'000);
        record.bookValue = record.fees;
        break;
      case 'D':
        record.shares = units(1'000'000);
        if (*anyIn(0, 2) == 0) record.price = Currency::fromTenThousandths(1);
        break;
      default:
        record.shares = -(*anyIn(0, 6) == 0 ? Currency::fromTenThousandths(mine) : units(mine));
        if (*anyIn(0, 2) == 0) record.price = Currency::fromTenThousandths(1);
        break;
    }
    if (*anyIn(0, 20) == 0)
      record.bookValue = Currency::fromTenThousandths(*anyIn(-90'000, 90'000));
    mine += record.shares.tenThousandths();
  }
  SortRecords(database);
  return database;
}

}  // namespace mirelund

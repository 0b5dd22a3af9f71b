// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/fund_database.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <utility>

namespace mirelund {

namespace {

// What the record sort moves in place of whole rows: the order of the keys
// decides, and the rows follow once.
struct Key {
  std::int32_t date;
  std::uint16_t row;  // from 0
};

// `less(a, b)`: a belongs before b. Rows count from 0. Moving the one item down
// its chain of gaps leaves what exchanging it step by step would.
template <typename Item, typename Less>
void shellSort(std::span<Item> rows, Less less) {
  for (std::size_t gap = rows.size() / 2; gap > 0; gap /= 2) {
    for (std::size_t i = gap; i < rows.size(); ++i) {
      if (!less(rows[i], rows[i - gap])) continue;
      Item item = std::move(rows[i]);
      std::size_t hole = i;
      do {
        rows[hole] = std::move(rows[hole - gap]);
        hole -= gap;
      } while (hole >= gap && less(item, rows[hole - gap]));
      rows[hole] = std::move(item);
    }
  }
}

// Brings rows[keys[i].row] to rows[i], each row moved once.
void arrange(std::span<Record> rows, std::span<Key> keys) {
  for (std::size_t start = 0; start < rows.size(); ++start) {
    if (keys[start].row == start) continue;
    const Record first = rows[start];
    std::size_t to = start;
    for (std::size_t from = keys[to].row; from != start; from = keys[to].row) {
      rows[to] = rows[from];
      keys[to].row = static_cast<std::uint16_t>(to);
      to = from;
    }
    rows[to] = first;
    keys[to].row = static_cast<std::uint16_t>(to);
  }
}

}  // namespace

bool isFundName(std::string_view name) {
  using std::string_view_literals::operator""sv;
  constexpr auto kNotInAFile = "\"\r\n\0"sv;
  return !name.empty() && name.size() <= kMostNameBytes &&
         name.find_first_of(kNotInAFile) == std::string_view::npos;
}

std::int16_t fundNumber(const Fund& fund) {
  std::int16_t number = 0;
  std::from_chars(fund.number.data(), std::to_address(fund.number.end()), number);
  return number;
}

Database::Database() : RecordTable(kRecordRows) {
  FundTable[kAllRecordsRow] = {"All Records", "31"};
}

bool operator==(const Database& a, const Database& b) {
  return std::ranges::equal(a.funds(), b.funds()) && std::ranges::equal(a.records(), b.records()) &&
         a.FundTable[kAllRecordsRow] == b.FundTable[kAllRecordsRow];
}

void SortRecords(Database& database) {
  const auto rows = database.records();
  std::array<Key, kRecordRows> room;
  const std::span<Key> keys(room.data(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i)
    keys[i] = {rows[i].date.key(), static_cast<std::uint16_t>(i)};
  shellSort(keys, [](Key a, Key b) { return a.date < b.date; });
  arrange(rows, keys);
  std::int16_t number = 0;
  for (Record& record : rows) record.number = ++number;
}

std::int16_t SortFunds(Database& database, std::int16_t follow) {
  struct Row {
    Fund fund;
    std::int16_t from;
  };
  std::vector<Row> rows;
  rows.reserve(kMostFunds);
  std::int16_t from = 0;
  for (Fund& fund : database.funds()) rows.push_back({std::move(fund), ++from});
  shellSort(std::span(rows), [](const Row& a, const Row& b) { return a.fund.name < b.fund.name; });
  std::int16_t to = 0;
  std::int16_t followed = 0;
  for (Row& row : rows) {
    ++to;
    if (row.from == follow) followed = to;
    database.FundTable[static_cast<std::size_t>(to)] = std::move(row.fund);
  }
  return followed;
}

std::int16_t addFund(Database& database, std::string_view name) {
  const std::int16_t row = ++database.FundCount;
  database.FundTable[static_cast<std::size_t>(row)] = {std::string(name), std::to_string(row)};
  return SortFunds(database, row);
}

void removeRecord(Database& database, std::int16_t number) {
  database.RecordTable[static_cast<std::size_t>(number)].date = Date::afterAll();
  SortRecords(database);
  --database.RecordCount;
}

void removeFund(Database& database, std::int16_t row) {
  // Longer than any name, of the highest byte there is.
  database.FundTable[static_cast<std::size_t>(row)].name.assign(kMostNameBytes + 1, '\xFF');
  SortFunds(database);
  database.FundTable[static_cast<std::size_t>(database.FundCount)] = {};
  --database.FundCount;
}

bool FundHasRecords(const Database& database, std::int16_t number) {
  return findRecord(database, number, 1) != 0;
}

std::int16_t firstEmptyFund(const Database& database) {
  std::int16_t row = 0;
  for (const Fund& fund : database.funds()) {
    ++row;
    if (!fund.name.empty() && !FundHasRecords(database, fundNumber(fund))) return row;
  }
  return 0;
}

std::int16_t findRecord(const Database& database, std::int16_t fund, std::int64_t position) {
  const Currency number = Currency::whole(fund);
  for (const Record& record : database.records())
    if (record.fund == number && --position == 0) return record.number;
  return 0;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The fund database at four sizes, with all its 18 funds, beside the bare reading
// and writing of its fields and the bare exchanges of its sort.
#include <algorithm>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "beside.h"
#include "fund_sample.h"
#include "manager/database/data_file.h"
#include "manager/reports/fund_reports.h"
#include "registered.h"

namespace mirelund::bench {

namespace {

// Reads every number of the file where it stands, and checks nothing.
void readFields(const std::string& bytes, std::int16_t records) {
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  for (int line = 0; line <= kMostFunds; ++line) at = std::find(at, end, '\n') + 1;
  for (std::int16_t row = 0; row < records; ++row) {
    for (int field = 0; field < 6; ++field) {
      double value = 0.0;
      at = std::from_chars(at, end, value).ptr + 1;
      keep(value);
    }
    at += 5;  // "B",#
    for (int part = 0; part < 3; ++part) {
      int number = 0;
      at = std::from_chars(at, end, number).ptr + 1;
      keep(number);
    }
    at += 2;
  }
}

template <std::size_t Size>
void writeDate(Buffer<Size>& buffer, Date date) {
  buffer.number(date.year());
  buffer.number(date.month());
  buffer.number(date.day());
}

using BigBuffer = Buffer<131'072>;

void writeFields(BigBuffer& buffer, const Database& database) {
  buffer.restart();
  for (const Record& record : database.records()) {
    for (const Currency value :
         {record.fund, record.price, record.shares, record.fees, record.dividend, record.bookValue})
      buffer.number(value.tenThousandths());
    writeDate(buffer, record.date);
  }
  buffer.done();
}

// The figures of every line, and each fund's totals and average.
void writeReportFields(BigBuffer& buffer, const Database& database) {
  struct Sums {
    std::int64_t shares = 0, fees = 0, dividendShares = 0, dividends = 0, book = 0;
  };
  std::array<Sums, kMostFunds + 1> funds{};
  buffer.restart();
  for (const Record& record : database.records()) {
    Sums& sums = funds[static_cast<std::size_t>(record.fund.tenThousandths() / Currency::kScale)];
    const std::int64_t shares = record.shares.tenThousandths();
    writeDate(buffer, record.date);
    buffer.number(record.price.tenThousandths());
    buffer.number(shares);
    buffer.number(record.fees.tenThousandths());
    if (record.type == 'D') {
      buffer.number(shares);
      sums.dividendShares += shares;
    }
    buffer.number(record.dividend.tenThousandths());
    buffer.number(record.bookValue.tenThousandths());
    sums.shares += shares;
    sums.fees += record.fees.tenThousandths();
    sums.dividends += record.dividend.tenThousandths();
    sums.book += record.bookValue.tenThousandths();
  }
  for (const Sums& sums : funds) {  // the first stands for the totals of all
    for (const std::int64_t sum :
         {sums.shares, sums.fees, sums.dividendShares, sums.dividends, sums.book})
      buffer.number(sum);
    const double average = static_cast<double>(sums.book) / static_cast<double>(sums.shares | 1);
    buffer.number(static_cast<std::int64_t>(average * 10'000.0));
  }
  buffer.done();
}

void exchangeDates(std::vector<std::int32_t>& dates) {
  for (std::size_t gap = dates.size() / 2; gap > 0; gap /= 2)
    for (std::size_t i = gap; i < dates.size(); ++i)
      for (std::size_t at = i; at >= gap && dates[at] < dates[at - gap]; at -= gap)
        std::swap(dates[at], dates[at - gap]);
  keep(dates);
}

// `arrange` brings records, or dates, into the order that is to be sorted.
template <typename Arrange>
void sortBench(const std::string& name, const Database& sorted, Arrange arrange) {
  auto database = std::make_shared<Database>(sorted);
  auto dates = std::make_shared<std::vector<std::int32_t>>();
  for (const Record& record : sorted.records()) dates->push_back(record.date.key());
  besidePrepared(
      name, 3, [database, arrange]() mutable { arrange(database->records()); },
      [database] { SortRecords(*database); }, [dates, arrange]() mutable { arrange(*dates); },
      [dates] { exchangeDates(*dates); });
}

}  // namespace

void registerManager() {
  for (const std::int16_t count : std::array<std::int16_t, 4>{75, 150, 300, 600}) {
    const std::string size = "/" + std::to_string(count);
    Database database = fundSample(count);
    const std::string bytes = writeDatabase(database);
    beside(
        "Open the database" + size, 2.5, [bytes] { keep(parseDatabase(bytes)); },
        [bytes, count] { readFields(bytes, count); });
    beside(
        "Save the database" + size, 2.5, [database] { keep(writeDatabase(database)); },
        [database, buffer = BigBuffer()]() mutable { writeFields(buffer, database); });
    beside(
        "Report of all funds" + size, 2.5,
        [database, totals = CurrencyTable(kTotalsRows, kTotalsColumns)]() mutable {
          keep(allFundsReport(database, ShortDateFormat{}, totals));
        },
        [database, buffer = BigBuffer()]() mutable { writeReportFields(buffer, database); });

    // What a turn sorts, the next one finds sorted.
    sortBench("Record sort, sorted" + size, database, [](auto&&) {});
    sortBench("Record sort, reversed" + size, database,
              [](auto&& rows) { std::ranges::reverse(rows); });
    // Another order each time: a processor learns a single one by heart.
    sortBench(
        "Record sort, random" + size, database,
        [random = std::mt19937(3)](auto&& rows) mutable { std::ranges::shuffle(rows, random); });
  }
}

}  // namespace mirelund::bench

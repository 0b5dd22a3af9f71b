// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/data_file.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace mirelund {

namespace {

constexpr std::int32_t kMostFundNumber = 30;
constexpr std::int32_t kMostRow31Number = 999'999'999;

bool isDigit(char c) {
  return static_cast<unsigned char>(c - '0') < 10;
}

// Reads in place. The bytes end with a NUL, which no rule accepts, so that no
// step has to ask where they end.
class Scanner {
 public:
  explicit Scanner(const std::string& bytes)
      : at_(bytes.c_str()), end_(bytes.c_str() + bytes.size()) {}

  bool skip(char c) {
    if (*at_ != c) return false;
    ++at_;
    return true;
  }

  // CR LF or LF; on the last line also the end of the bytes.
  bool lineEnd(bool last) {
    if (last && at_ == end_) return true;
    if (*at_ == '\r') ++at_;
    return skip('\n');
  }

  bool atEnd() const { return at_ == end_; }

  // A whole number without leading zeros.
  template <typename Number>
  bool whole(Number most, Number& number) {
    if (!isDigit(*at_) || (*at_ == '0' && isDigit(at_[1]))) return false;
    std::int64_t value = 0;
    while (isDigit(*at_)) {
      value = value * 10 + (*at_++ - '0');
      if (value > most) return false;
    }
    number = static_cast<Number>(value);
    return true;
  }

  // Walks on a pointer of its own, which `out` cannot be thought to share.
  bool amount(Currency& out) {
    const char* at = at_;
    const bool negative = *at == '-';
    if (negative) ++at;
    const char* const start = at;
    std::uint64_t units = 0;
    while (isDigit(*at)) {
      if (at - start == kMostIntegerDigits) return false;
      units = units * 10 + static_cast<std::uint64_t>(*at++ - '0');
    }
    if (*start == '0' && at - start > 1) return false;
    bool any = at != start;
    if (*at == '.') {
      const char* const point = at++;
      while (isDigit(*at)) {
        if (at - point > kDecimals) return false;
        units = units * 10 + static_cast<std::uint64_t>(*at++ - '0');
      }
      const auto decimals = at - point - 1;
      if (decimals == 0) return false;
      any = true;
      units *= kScales[static_cast<std::size_t>(decimals)];
    } else {
      units *= kScales[0];
    }
    constexpr auto kMost = static_cast<std::uint64_t>(Currency::max().tenThousandths());
    if (!any || units > kMost || (negative && units == 0)) return false;
    const auto magnitude = static_cast<std::int64_t>(units);
    out = Currency::fromTenThousandths(negative ? -magnitude : magnitude);
    at_ = at;
    return true;
  }

  bool text(std::string& out) {
    if (!skip('"')) return false;
    const char* const start = at_;
    while (*at_ != '"') {
      if (*at_ == '\0' || *at_ == '\r' || *at_ == '\n') return false;
      ++at_;
    }
    const auto size = static_cast<std::size_t>(at_ - start);
    if (size > kMostNameBytes) return false;
    out.assign(start, size);
    return skip('"');
  }

  bool fundNumber(std::int32_t most, std::string& out) {
    std::int32_t number = 0;
    if (!skip('"')) return false;
    const char* const start = at_;
    if (!whole(most, number) || number == 0) return false;
    out.assign(start, static_cast<std::size_t>(at_ - start));
    return skip('"');
  }

  bool type(char& out) {
    if (!skip('"') || transactionType(*at_) == nullptr) return false;
    out = *at_++;
    return skip('"');
  }

  bool date(Date& out) {
    int year = 0;
    int month = 0;
    int day = 0;
    if (!skip('#') || !digits(4, year) || !skip('-') || !digits(2, month) || !skip('-') ||
        !digits(2, day) || !skip('#'))
      return false;
    const auto date = Date::of(year, month, day);
    if (!date) return false;
    out = *date;
    return true;
  }

 private:
  static constexpr int kMostIntegerDigits = 15;
  static constexpr int kDecimals = 4;
  static constexpr std::array<std::uint64_t, 5> kScales = {10'000, 1'000, 100, 10, 1};

  bool digits(int count, int& number) {
    for (; count > 0; --count) {
      if (!isDigit(*at_)) return false;
      number = number * 10 + (*at_++ - '0');
    }
    return true;
  }

  const char* at_;
  const char* end_;
};

bool readRecord(Scanner& in, Record& record) {
  return in.amount(record.fund) && in.skip(',') && in.amount(record.price) && in.skip(',') &&
         in.amount(record.shares) && in.skip(',') && in.amount(record.fees) && in.skip(',') &&
         in.amount(record.dividend) && in.skip(',') && in.amount(record.bookValue) &&
         in.skip(',') && in.type(record.type) && in.skip(',') && in.date(record.date);
}

bool read(Scanner& in, Database& database) {
  Fund& all = database.FundTable[kAllRecordsRow];
  std::int16_t records = 0;
  std::int16_t funds = 0;
  if (!in.whole(kMostRecords, records) || !in.skip(',') || !in.whole(kMostFunds, funds) ||
      !in.skip(',') || !in.text(all.name) || !in.skip(',') ||
      !in.fundNumber(kMostRow31Number, all.number) || !in.lineEnd(records == 0 && funds == 0))
    return false;

  for (std::int16_t row = 1; row <= funds; ++row) {
    Fund& fund = database.FundTable[static_cast<std::size_t>(row)];
    if (!in.text(fund.name) || !in.skip(',') || !in.fundNumber(kMostFundNumber, fund.number) ||
        !in.lineEnd(records == 0 && row == funds))
      return false;
  }

  for (std::int16_t row = 1; row <= records; ++row) {
    Record& record = database.RecordTable[static_cast<std::size_t>(row)];
    if (!readRecord(in, record) || !in.lineEnd(row == records)) return false;
    if (record.fund.tenThousandths() % Currency::kScale != 0) return false;
    record.number = row;
  }
  if (!in.atEnd()) return false;
  database.RecordCount = records;
  database.FundCount = funds;
  return true;
}

// A line but for its name, built in place.
class Line {
 public:
  void put(char c) { *at_++ = c; }

  void put(std::string_view text) {
    std::memcpy(at_, text.data(), text.size());
    at_ += text.size();
  }

  void number(int value) { integer(static_cast<std::uint64_t>(value)); }

  void amount(Currency value) {
    const auto units = value.tenThousandths();
    const auto magnitude =
        units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    const auto whole = magnitude / Currency::kScale;
    auto fraction = static_cast<unsigned>(magnitude % Currency::kScale);
    if (units < 0) put('-');
    if (whole > 0 || fraction == 0) integer(whole);
    if (fraction == 0) return;
    put('.');
    for (unsigned place = 1000; fraction > 0; place /= 10) {
      put(static_cast<char>('0' + fraction / place));
      fraction %= place;
    }
  }

  void date(Date date) {
    put('#');
    pair(date.year() / 100);
    pair(date.year() % 100);
    put('-');
    pair(date.month());
    put('-');
    pair(date.day());
    put('#');
  }

  void appendTo(std::string& out) {
    put("\r\n");
    out.append(room_.data(), at_);
    at_ = room_.data();
  }

 private:
  void pair(int number) {
    put(static_cast<char>('0' + number / 10));
    put(static_cast<char>('0' + number % 10));
  }
  void integer(std::uint64_t value) {
    at_ = std::to_chars(at_, room_.data() + room_.size(), value).ptr;
  }

  std::array<char, kMostLineBytes> room_;
  char* at_ = room_.data();
};

void appendQuoted(std::string& out, std::string_view text) {
  out += '"';
  out += text;
  out += '"';
}

void appendFund(std::string& out, const Fund& fund) {
  appendQuoted(out, fund.name);
  out += ',';
  appendQuoted(out, fund.number);
  out += "\r\n";
}

}  // namespace

std::optional<Database> parseDatabase(const std::string& bytes) {
  std::optional<Database> database(std::in_place);
  Scanner in(bytes);
  if (!read(in, *database)) return std::nullopt;
  SortFunds(*database);
  return database;
}

std::string writeDatabase(const Database& database) {
  std::string out;
  constexpr std::size_t kUsualLineBytes = 64;
  out.reserve((2 + database.funds().size() + database.records().size()) * kUsualLineBytes);
  out += std::to_string(database.RecordCount);
  out += ',';
  out += std::to_string(database.FundCount);
  out += ',';
  appendFund(out, database.FundTable[kAllRecordsRow]);
  for (const Fund& fund : database.funds()) appendFund(out, fund);
  Line line;
  for (const Record& record : database.records()) {
    for (const Currency value : {record.fund, record.price, record.shares, record.fees,
                                 record.dividend, record.bookValue}) {
      line.amount(value);
      line.put(',');
    }
    line.put('"');
    line.put(record.type);
    line.put("\",");
    line.date(record.date);
    line.appendTo(out);
  }
  return out;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/dates.h"

#include <cstring>

namespace mirelund {

namespace {

constexpr char kBackspace = 8;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isSeparator(char c) {
  return c == '/' || c == '.' || c == '-';
}

// " 0" to "99", and "00" to "99".
consteval std::array<char, 200> digitPairs(char front) {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = i < 10 ? front : static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}
constexpr auto kPairs = digitPairs(' ');
constexpr auto kPaddedPairs = digitPairs('0');

// Reads up to four digits; the number of digits read.
std::size_t readDigits(std::string_view text, std::size_t& at, int& number) {
  const std::size_t start = at;
  number = 0;
  while (at < text.size() && isDigit(text[at])) {
    if (at - start == 4) return 0;
    number = number * 10 + (text[at++] - '0');
  }
  return at - start;
}

void skipBlanks(std::string_view text, std::size_t& at) {
  while (at < text.size() && text[at] == ' ') ++at;
}

bool skipSeparator(std::string_view text, std::size_t& at) {
  const std::size_t start = at;
  skipBlanks(text, at);
  if (at < text.size() && isSeparator(text[at])) {
    ++at;
    skipBlanks(text, at);
  }
  return at > start;
}

constexpr int kFirstShortYear = 1930;

int fullYear(int twoDigits) {
  const int year = kFirstShortYear / 100 * 100 + twoDigits;
  return year < kFirstShortYear ? year + 100 : year;
}

}  // namespace

char* writeDate(char* end, Date date, const ShortDateFormat& format) {
  // The blank in front of one digit is covered by the next part: quicker than to
  // ask, and no date has more than its width of places.
  const auto putPair = [&end](int number, bool padded) {
    const auto& pairs = padded ? kPaddedPairs : kPairs;
    std::memcpy(end - 2, &pairs[2 * static_cast<std::size_t>(number)], 2);
    end -= padded || number >= 10 ? 2 : 1;
  };
  for (std::size_t i = format.order.size(); i-- > 0;) {
    const DatePart part = format.order[i];
    if (part == DatePart::Year) {
      putPair(date.year() % 100, true);
      putPair(date.year() / 100, true);
    } else {
      const bool isDay = part == DatePart::Day;
      putPair(isDay ? date.day() : date.month(), isDay ? format.paddedDay : format.paddedMonth);
    }
    if (i > 0) *--end = format.separator;
  }
  return end;
}

ShortDateFormat shortDateFormat(std::string_view pattern) {
  ShortDateFormat format;
  format.separator = 0;
  std::size_t parts = 0;
  bool quoted = false;
  bool blank = false;
  for (std::size_t i = 0; i < pattern.size();) {
    const char c = pattern[i];
    std::size_t run = 1;
    while (i + run < pattern.size() && pattern[i + run] == c) ++run;
    if (c == '\'') {
      quoted = quoted != (run % 2 == 1);
    } else if (!quoted && (c == 'd' || c == 'M' || c == 'y')) {
      if (parts == format.order.size()) return {};
      format.order[parts++] = c == 'd'   ? DatePart::Day
                              : c == 'M' ? DatePart::Month
                                         : DatePart::Year;
      if (c == 'd') format.paddedDay = run >= 2;
      if (c == 'M') format.paddedMonth = run >= 2;
    } else if (!quoted && parts > 0) {
      if (isSeparator(c) && format.separator == 0) format.separator = c;
      blank = blank || c == ' ';
    }
    i += run;
  }
  const auto& [first, second, third] = format.order;
  if (parts != 3 || first == second || second == third || first == third) return {};
  if (format.separator == 0) format.separator = blank ? ' ' : '/';
  return format;
}

std::string formatDate(Date date, const ShortDateFormat& format) {
  std::array<char, kDateWidth> room;
  char* const end = room.data() + room.size();
  return {writeDate(end, date, format), end};
}

void appendDateColumn(std::string& out, Date date, const ShortDateFormat& format) {
  out.append(kDateWidth, ' ');
  writeDate(out.data() + out.size(), date, format);
}

std::optional<Date> parseDate(std::string_view text, const ShortDateFormat& format) {
  int year = 0;
  int month = 0;
  int day = 0;
  std::size_t at = 0;
  skipBlanks(text, at);
  for (std::size_t i = 0; i < format.order.size(); ++i) {
    if (i > 0 && !skipSeparator(text, at)) return std::nullopt;
    int number = 0;
    const std::size_t digits = readDigits(text, at, number);
    if (format.order[i] == DatePart::Year) {
      if (digits != 2 && digits != 4) return std::nullopt;
      year = digits == 2 ? fullYear(number) : number;
    } else {
      if (digits != 1 && digits != 2) return std::nullopt;
      (format.order[i] == DatePart::Day ? day : month) = number;
    }
  }
  skipBlanks(text, at);
  if (at != text.size()) return std::nullopt;
  return Date::of(year, month, day);
}

bool isDateKey(char character) {
  return isDigit(character) || isSeparator(character) || character == ' ' ||
         character == kBackspace;
}

}  // namespace mirelund

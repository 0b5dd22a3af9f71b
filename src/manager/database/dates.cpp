// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/dates.h"

#include <algorithm>
#include <cstring>
#include <vector>

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

void skipSeparator(std::string_view text, std::size_t& at) {
  skipBlanks(text, at);
  if (at < text.size() && isSeparator(text[at])) {
    ++at;
    skipBlanks(text, at);
  }
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

namespace {

// A pattern's letters and what stands between them, run by run of one character,
// without the texts in quotes.
template <typename Use>
void forEachRun(std::string_view pattern, Use use) {
  bool quoted = false;
  for (std::size_t i = 0; i < pattern.size();) {
    const std::size_t next = pattern.find_first_not_of(pattern[i], i);
    const std::size_t length = std::min(next, pattern.size()) - i;
    if (pattern[i] == '\'')
      quoted = quoted != (length % 2 == 1);
    else if (!quoted)
      use(pattern[i], length);
    i += length;
  }
}

std::optional<DatePart> partOf(char letter) {
  switch (letter) {
    case 'd':
      return DatePart::Day;
    case 'M':
      return DatePart::Month;
    case 'y':
      return DatePart::Year;
    default:
      return std::nullopt;
  }
}

bool namesEachPartOnce(const std::vector<DatePart>& parts) {
  return parts.size() == 3 && parts[0] != parts[1] && parts[1] != parts[2] && parts[0] != parts[2];
}

// The first separator between or behind the parts, else a blank where there is one.
char separatorOf(std::string_view between) {
  const auto found = std::ranges::find_if(between, isSeparator);
  if (found != between.end()) return *found;
  return between.find(' ') == std::string_view::npos ? '/' : ' ';
}

}  // namespace

ShortDateFormat shortDateFormat(std::string_view pattern) {
  ShortDateFormat format;
  std::vector<DatePart> parts;
  std::string between;
  forEachRun(pattern, [&](char c, std::size_t length) {
    const auto part = partOf(c);
    if (part) parts.push_back(*part);
    if (!part && !parts.empty()) between += c;
    if (part == DatePart::Day) format.paddedDay = length >= 2;
    if (part == DatePart::Month) format.paddedMonth = length >= 2;
  });
  if (!namesEachPartOnce(parts)) return {};
  std::ranges::copy(parts, format.order.begin());
  format.separator = separatorOf(between);
  return format;
}

std::string formText(const ShortDateFormat& format) {
  std::string text;
  for (const DatePart part : format.order) {
    if (!text.empty()) text += format.separator;
    text += part == DatePart::Day ? "dd" : part == DatePart::Month ? "mm" : "yyyy";
  }
  return text;
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
    // Where none stands, no digit does: it would have belonged to the part before.
    if (i > 0) skipSeparator(text, at);
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

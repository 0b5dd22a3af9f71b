// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/formatting.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "app/text.h"

namespace mirelund {

namespace {

constexpr auto kDigitPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

void writePair(char* to, std::uint64_t number) {
  std::memcpy(to, &kDigitPairs[2 * number], 2);
}

// A number as text, written from its last character backwards.
struct Digits {
  char* first;

  void put(char c) { *--first = c; }
};

// ",000" to ",999".
constexpr auto kGroups = [] {
  std::array<char, 4000> groups{};
  for (std::size_t i = 0; i < 1000; ++i) {
    groups[4 * i] = ',';
    groups[4 * i + 1] = static_cast<char>('0' + i / 100);
    groups[4 * i + 2] = static_cast<char>('0' + i / 10 % 10);
    groups[4 * i + 3] = static_cast<char>('0' + i % 10);
  }
  return groups;
}();

// The digits before the point: none for 0 unless the pattern forces one.
inline void putInteger(Digits& out, std::uint64_t number, const Pattern& pattern) {
  if (pattern.grouped) {
    while (number >= 1000) {
      const std::uint64_t rest = number / 1000;
      out.first -= 4;
      std::memcpy(out.first, &kGroups[4 * (number - 1000 * rest)], 4);
      number = rest;
    }
    if (number >= 100) {
      out.first -= 3;
      std::memcpy(out.first, &kGroups[4 * number + 1], 3);
      return;
    }
  }
  while (number >= 100) {
    out.first -= 2;
    writePair(out.first, number % 100);
    number /= 100;
  }
  if (number >= 10) {
    out.first -= 2;
    writePair(out.first, number);
  } else if (number > 0 || pattern.zeroShown) {
    out.put(static_cast<char>('0' + number));
  }
}

// `magnitude` counts units of the pattern's last decimal place.
inline void putMagnitude(Digits& out, std::uint64_t magnitude, bool negative,
                         const Pattern& pattern) {
  if (pattern.percent) out.put('%');
  if (pattern.decimals == 2 && pattern.minDecimals == 2) {
    out.first -= 3;
    out.first[0] = '.';
    writePair(out.first + 1, magnitude % 100);
    magnitude /= 100;
  } else if (pattern.decimals == 4 && pattern.minDecimals == 4) {
    const std::uint64_t fraction = magnitude % 10'000;
    out.first -= 5;
    out.first[0] = '.';
    writePair(out.first + 1, fraction / 100);
    writePair(out.first + 3, fraction % 100);
    magnitude /= 10'000;
  } else if (pattern.point) {
    int dropped = pattern.decimals - pattern.minDecimals;
    for (int i = pattern.decimals; i > 0; --i) {
      const auto digit = magnitude % 10;
      magnitude /= 10;
      if (dropped > 0 && digit == 0) {
        --dropped;
        continue;
      }
      dropped = 0;
      out.put(static_cast<char>('0' + digit));
    }
    out.put('.');
  }
  putInteger(out, magnitude, pattern);
  if (negative) out.put('-');
}

// Units of ten-thousandths in one unit of the pattern's last decimal place.
std::uint64_t roundedTo(std::uint64_t tenThousandths, int decimals) {
  switch (decimals) {
    case 0:
      return (tenThousandths + 5000) / 10000;
    case 1:
      return (tenThousandths + 500) / 1000;
    case 2:
      return (tenThousandths + 50) / 100;
    case 3:
      return (tenThousandths + 5) / 10;
    default:
      return tenThousandths;
  }
}

// A number in units of a pattern's last decimal place.
struct Units {
  std::uint64_t magnitude = 0;
  bool negative = false;
};

inline Units unitsOf(Currency value, const Pattern& pattern) {
  const auto units = value.tenThousandths();
  const bool negative = units < 0;
  auto magnitude =
      negative ? -static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
  if (pattern.percent) {
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (magnitude > kMost / 100) detail::throwOverflow();
    magnitude *= 100;
  }
  return {roundedTo(magnitude, pattern.decimals), negative};
}

constexpr std::array<double, 7> kPowersOfTen = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

// The 15-digit decimal of `value`, rounded half away from zero to `places`
// decimals, as its digits (an integer text without leading zeros).
std::string roundedDigits(double value, int places) {
  char text[32];
  const auto end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 14).ptr;
  // d.dddddddddddddde±xx
  std::string digits(1, text[0]);
  digits.append(text + 2, 14);
  int exponent = 0;
  std::from_chars(text[17] == '+' ? text + 18 : text + 17, end, exponent);
  const int kept = exponent + 1 + places;  // digits before the cut
  if (kept < 0) return {};
  if (kept >= 15) {
    digits.append(static_cast<std::size_t>(kept) - 15, '0');
    return digits;
  }
  const bool up = digits[static_cast<std::size_t>(kept)] >= '5';
  digits.resize(static_cast<std::size_t>(kept));
  if (up) {
    auto i = digits.size();
    while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (i > 0)
      ++digits[i - 1];
    else
      digits.insert(digits.begin(), '1');
  }
  const auto first = digits.find_first_not_of('0');
  digits.erase(0, std::min(first, digits.size()));
  return digits;
}

// Numbers of more digits than 64 bits hold: plain, and rare.
std::string formatLong(const std::string& digits, bool negative, const Pattern& pattern) {
  const std::size_t decimals = pattern.decimals;
  std::string integer = digits.substr(0, digits.size() - decimals);
  std::string fraction = digits.substr(digits.size() - decimals);
  while (fraction.size() > pattern.minDecimals && fraction.back() == '0') fraction.pop_back();
  if (pattern.grouped)
    for (auto at = static_cast<std::ptrdiff_t>(integer.size()) - 3; at > 0; at -= 3)
      integer.insert(static_cast<std::size_t>(at), 1, ',');
  std::string out(negative ? "-" : "");
  out += integer;
  if (pattern.point) out += '.';
  out += fraction;
  if (pattern.percent) out += '%';
  return out;
}

// `value` as units; false where it has more digits than those hold.
inline bool unitsOf(double value, const Pattern& pattern, Units& units) {
  units.negative = std::signbit(finite(value)) && value != 0.0;
  const double magnitude = std::abs(value);
  const int places = pattern.decimals + (pattern.percent ? 2 : 0);

  // Far enough from a tie, neither the multiplication nor the cut at 15 digits
  // can turn the rounding.
  const double scaled = magnitude * kPowersOfTen[static_cast<std::size_t>(places)];
  if (scaled < 1e13) {
    const auto low = static_cast<std::int64_t>(scaled);
    const double rest = scaled - static_cast<double>(low);
    if (std::abs(rest - 0.5) > scaled * 1e-14) {
      units.magnitude = static_cast<std::uint64_t>(low) + (rest > 0.5 ? 1 : 0);
      return true;
    }
  }
  const std::string digits = roundedDigits(magnitude, places);
  if (digits.size() > 18) return false;
  std::from_chars(digits.data(), digits.data() + digits.size(), units.magnitude);
  return true;
}

std::string formatLong(double value, const Pattern& pattern) {
  return formatLong(roundedDigits(std::abs(value), pattern.decimals + (pattern.percent ? 2 : 0)),
                    value < 0.0, pattern);
}

constexpr auto kTens = [] {
  std::array<std::uint64_t, 20> tens{1};
  for (std::size_t i = 1; i < tens.size(); ++i) tens[i] = 10 * tens[i - 1];
  return tens;
}();

// By how many characters there are, the units that surely fit behind a point and
// so many decimals.
consteval std::array<std::uint64_t, 27> unitsThatFit(std::size_t decimals) {
  std::array<std::uint64_t, 27> fit{};
  for (std::size_t width = decimals + 2; width < fit.size(); ++width) {
    std::size_t integer = 0;
    while (integer + decimals < 19 && integer + 1 + integer / 3 + 1 + decimals <= width) ++integer;
    fit[width] = kTens[integer + decimals] - 1;
  }
  return fit;
}

// The form of every amount, and of prices and numbers of shares.
constexpr auto kAmountsThatFit = unitsThatFit(2);
constexpr auto kSharesThatFit = unitsThatFit(4);

// Whether the pattern surely shows these units in `width` characters.
inline bool fits(Units units, const Pattern& pattern, std::size_t width) {
  // The shortest form: a sign, a digit, the point and its decimals, a percent sign.
  if (width < pattern.decimals + std::size_t{4}) return false;
  width -= units.negative ? 1 : 0;
  if (pattern.decimals == 2 && !pattern.percent && width < kAmountsThatFit.size())
    return units.magnitude <= kAmountsThatFit[width];
  if (pattern.decimals == 4 && !pattern.percent && width < kSharesThatFit.size())
    return units.magnitude <= kSharesThatFit[width];
  // 1233 / 4096 is just above the decimal logarithm of 2.
  const auto guess = static_cast<std::size_t>(std::bit_width(units.magnitude)) * 1233 / 4096;
  const std::size_t digits = guess + (units.magnitude >= kTens[guess] ? 1 : 0);
  const std::size_t decimals = pattern.decimals;
  const std::size_t integer = digits > decimals ? digits - decimals : 1;
  return integer + integer / 3 + decimals + 2 <= width;  // a point, a percent sign
}

// The longest 64-bit number, grouped, signed, with a point, a percent sign and a
// symbol in front, takes 30.
constexpr std::size_t kMostShown = 32;

// The number, behind the symbol where there is one, at the end of [to, to +
// width), which holds blanks; a text that is longer is cut on the right.
template <bool withSymbol>
inline void place(char* to, std::size_t width, Units units, const Pattern& pattern) {
  constexpr std::string_view kSymbol = withSymbol ? MoneySymbol : std::string_view();
  const auto put = [&](Digits& digits) {
    putMagnitude(digits, units.magnitude, units.negative, pattern);
    for (std::size_t i = kSymbol.size(); i > 0; --i) digits.put(kSymbol[i - 1]);
  };
  if (width > kSymbol.size() && fits(units, pattern, width - kSymbol.size())) {
    Digits digits{to + width};
    put(digits);
    return;
  }
  std::array<char, kMostShown> room;
  Digits digits{room.data() + room.size()};
  put(digits);
  const auto length = static_cast<std::size_t>(room.data() + room.size() - digits.first);
  const std::size_t shown = std::min(length, width);
  std::memcpy(to + (width - shown), digits.first, shown);
}

// `width` blanks behind what `out` holds.
inline char* grow(std::string& out, std::size_t width) {
  constexpr std::string_view kBlanks = "                                                ";
  if (width <= kBlanks.size())
    out.append(kBlanks.data(), width);
  else
    out.append(width, ' ');
  return out.data() + (out.size() - width);
}

// `text` as `width` blanks.
inline char* blank(std::string& text, std::size_t width) {
  if (text.size() != width) text.resize(width);
  char* const to = text.data();
  constexpr std::uint64_t kEight = 0x2020202020202020U;
  if (width >= sizeof kEight && width <= 2 * sizeof kEight) {
    std::memcpy(to, &kEight, sizeof kEight);
    std::memcpy(to + (width - sizeof kEight), &kEight, sizeof kEight);
  } else {
    std::memset(to, ' ', width);
  }
  return to;
}

std::string format(Units units, const Pattern& pattern) {
  std::array<char, kMostShown> room;
  Digits digits{room.data() + room.size()};
  putMagnitude(digits, units.magnitude, units.negative, pattern);
  return {digits.first, room.data() + room.size()};
}

}  // namespace

std::string FormatNumber(Currency value, const Pattern& pattern) {
  return format(unitsOf(value, pattern), pattern);
}

std::string FormatNumber(double value, const Pattern& pattern) {
  Units units;
  return unitsOf(value, pattern, units) ? format(units, pattern) : formatLong(value, pattern);
}

namespace {

bool isAscii(std::string_view text) {
  std::uint64_t high = 0;
  std::size_t i = 0;
  for (; i + sizeof high <= text.size(); i += sizeof high) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data() + i, sizeof eight);
    high |= eight;
  }
  for (; i < text.size(); ++i) high |= static_cast<unsigned char>(text[i]);
  return (high & 0x8080808080808080U) == 0;
}

void appendAscii(std::string& out, std::string_view text, std::size_t width) {
  const std::size_t shown = std::min(text.size(), width);
  out.append(width - shown, ' ');
  out.append(text.data(), shown);
}

}  // namespace

void appendRight(std::string& out, std::string_view text, std::size_t width) {
  if (isAscii(text)) {
    appendAscii(out, text, width);
    return;
  }
  const std::size_t length = characterCount(text);
  if (length < width) out.append(width - length, ' ');
  out += firstCharacters(text, width);
}

std::string RightJustify(std::string_view text, std::size_t width) {
  if (text.size() <= width && isAscii(text)) {
    std::string out(width, ' ');
    std::memcpy(out.data() + (width - text.size()), text.data(), text.size());
    return out;
  }
  std::string out;
  appendRight(out, text, width);
  return out;
}

namespace {

template <bool withSymbol>
inline void setNumber(std::string& text, Currency value, const Pattern& pattern,
                      std::size_t width) {
  const Units units = unitsOf(value, pattern);
  place<withSymbol>(blank(text, width), width, units, pattern);
}

template <bool withSymbol>
inline void setNumber(std::string& text, double value, const Pattern& pattern, std::size_t width) {
  Units units;
  if (unitsOf(value, pattern, units)) {
    place<withSymbol>(blank(text, width), width, units, pattern);
    return;
  }
  std::string whole(withSymbol ? MoneySymbol : std::string_view());
  whole += formatLong(value, pattern);
  text.clear();
  appendAscii(text, whole, width);
}

}  // namespace

void appendColumn(std::string& out, Currency value, const Pattern& pattern, std::size_t width) {
  const Units units = unitsOf(value, pattern);
  place<false>(grow(out, width), width, units, pattern);
}

void appendColumn(std::string& out, double value, const Pattern& pattern, std::size_t width) {
  Units units;
  if (unitsOf(value, pattern, units))
    place<false>(grow(out, width), width, units, pattern);
  else
    appendAscii(out, formatLong(value, pattern), width);
}

void setColumn(std::string& text, Currency value, const Pattern& pattern, std::size_t width) {
  setNumber<false>(text, value, pattern, width);
}

void setColumn(std::string& text, double value, const Pattern& pattern, std::size_t width) {
  setNumber<false>(text, value, pattern, width);
}

void setMoney(std::string& text, Currency value, const Pattern& pattern, std::size_t width) {
  setNumber<true>(text, value, pattern, width);
}

void setMoney(std::string& text, double value, const Pattern& pattern, std::size_t width) {
  setNumber<true>(text, value, pattern, width);
}

ReportLine::ReportLine(std::string& out, std::size_t width) : out_(out), start_(out.size()) {
  char* const line = grow(out, width + NewLine.size());
  std::memcpy(line + width, NewLine.data(), NewLine.size());
}

void ReportLine::put(Currency value, const Pattern& pattern, std::size_t edge, std::size_t width) {
  mirelund::place<false>(place(edge - width), width, unitsOf(value, pattern), pattern);
}

void appendRow(std::string& out, std::initializer_list<Column> columns) {
  std::size_t width = 0;
  for (const Column& column : columns) width += column.width;
  char* to = grow(out, width + NewLine.size());
  std::memcpy(to + width, NewLine.data(), NewLine.size());
  for (const Column& column : columns) {
    place<false>(to, column.width, unitsOf(column.value, column.pattern), column.pattern);
    to += column.width;
  }
}

}  // namespace mirelund

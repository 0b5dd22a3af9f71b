// SPDX-License-Identifier: GPL-3.0-or-later
// Digits written where they stand: what number_text and report_line are made of.
// Here because every figure of every report comes this way, and a call between
// would cost as much as the figure.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "app/number_text.h"

namespace mirelund::digits {

inline constexpr auto kDigitPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

inline void writePair(char* to, std::uint64_t number) {
  std::memcpy(to, &kDigitPairs[2 * number], 2);
}

// A number as text, written from its last character backwards.
struct Digits {
  char* first;

  void put(char c) { *--first = c; }
};

// ",000" to ",999".
inline constexpr auto kGroups = [] {
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

// Ten-thousandths in units of the last of so many decimal places, half away from zero.
constexpr std::uint64_t roundedTo(std::uint64_t tenThousandths, int decimals) {
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
    require(magnitude <= kMost / 100, "amount out of range in percent");
    magnitude *= 100;
  }
  return {roundedTo(magnitude, pattern.decimals), negative};
}

inline constexpr std::array<double, 7> kPowersOfTen = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

/// `magnitude` taken at its 15 significant digits, in units of the last of `places`
/// decimal places; false where it has more than 18 of them.
bool unitsByDigits(double magnitude, int places, std::uint64_t& units);

/// The text of a number that has more.
std::string longNumber(double value, const Pattern& pattern);

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
  return unitsByDigits(magnitude, places, units.magnitude);
}

// By how many decimals there are and how many characters, the units that surely
// fit: digits, their commas, and a point.
inline constexpr std::size_t kWidths = 27;
inline constexpr auto kUnitsThatFit = [] {
  std::array<std::array<std::uint64_t, kWidths>, 5> fit{};
  for (std::size_t decimals = 0; decimals < fit.size(); ++decimals) {
    for (std::size_t width = decimals + 2; width < kWidths; ++width) {
      std::uint64_t units = 1;
      for (std::size_t i = 0; i < decimals; ++i) units *= 10;
      std::size_t integer = 0;
      while (integer + decimals < 19 && integer + 1 + integer / 3 + 1 + decimals <= width) {
        ++integer;
        units *= 10;
      }
      fit[decimals][width] = units - 1;
    }
  }
  return fit;
}();

// Whether the pattern surely shows these units in `width` characters.
inline bool fits(Units units, const Pattern& pattern, std::size_t width) {
  const std::size_t signs = (units.negative ? 1U : 0U) + (pattern.percent ? 1U : 0U);
  if (width < signs + pattern.decimals + 2) return false;
  return units.magnitude <= kUnitsThatFit[pattern.decimals][std::min(width - signs, kWidths - 1)];
}

// The longest 64-bit number, grouped, signed, with a point, a percent sign and a
// symbol in front, takes 30.
inline constexpr std::size_t kMostShown = 32;

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

}  // namespace mirelund::digits

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/number_text.h"

#include <charconv>
#include <memory>

#include "app/number_place.h"

namespace mirelund {

namespace {

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
  // Digits before the cut. None asks for a number below a tenth of a unit.
  const int kept = exponent + 1 + places;
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
  return digits;
}

// Numbers of more digits than 64 bits hold: plain, and rare. Of their 15 digits none
// stands behind the point.
std::string longText(const std::string& digits, bool negative, const Pattern& pattern) {
  const std::size_t decimals = pattern.decimals;
  std::string integer = digits.substr(0, digits.size() - decimals);
  if (pattern.grouped)
    for (auto at = static_cast<std::ptrdiff_t>(integer.size()) - 3; at > 0; at -= 3)
      integer.insert(static_cast<std::size_t>(at), 1, ',');
  std::string out(negative ? "-" : "");
  out += integer;
  if (pattern.point) out += '.';
  out.append(pattern.minDecimals, '0');
  if (pattern.percent) out += '%';
  return out;
}

std::string format(digits::Units units, const Pattern& pattern) {
  std::array<char, digits::kMostShown> room;
  digits::Digits text{room.data() + room.size()};
  digits::putMagnitude(text, units.magnitude, units.negative, pattern);
  return {text.first, room.data() + room.size()};
}

}  // namespace

bool digits::unitsByDigits(double magnitude, int places, std::uint64_t& units) {
  const std::string text = roundedDigits(magnitude, places);
  if (text.size() > 18) return false;
  std::from_chars(text.data(), std::to_address(text.end()), units);
  return true;
}

std::string digits::longNumber(double value, const Pattern& pattern) {
  return longText(roundedDigits(std::abs(value), pattern.decimals + (pattern.percent ? 2 : 0)),
                  value < 0.0, pattern);
}

std::string FormatNumber(Currency value, const Pattern& pattern) {
  return format(digits::unitsOf(value, pattern), pattern);
}

std::string FormatNumber(double value, const Pattern& pattern) {
  digits::Units units;
  return digits::unitsOf(value, pattern, units) ? format(units, pattern)
                                                : digits::longNumber(value, pattern);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/parse_number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

namespace mirelund {

namespace {

struct Typed {
  const char* at;
  const char* end;
};

void skipBlanks(Typed& text) {
  while (text.at != text.end && (*text.at == ' ' || *text.at == '\t' || *text.at == '\n'))
    ++text.at;
}

bool takeSign(Typed& text) {
  if (text.at == text.end || (*text.at != '-' && *text.at != '+')) return false;
  return *text.at++ == '-';
}

constexpr std::array<double, 16> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
constexpr std::uint64_t kExactBelow = 1'000'000'000'000'000;

// The digits as one whole number, and how many of them stand behind the point. Up
// to 15 of both, the quotient of two exact doubles is correctly rounded.
struct Digits {
  std::uint64_t mantissa = 0;
  std::size_t decimals = 0;

  bool isExact() const { return mantissa < kExactBelow && decimals < kPowersOfTen.size(); }
  double value() const { return static_cast<double>(mantissa) / kPowersOfTen[decimals]; }
};

Digits readDigits(Typed text) {
  Digits read;
  bool point = false;
  for (; text.at != text.end; ++text.at) {
    const auto digit = static_cast<unsigned>(static_cast<unsigned char>(*text.at)) - '0';
    if (digit < 10) {
      read.mantissa = read.mantissa * 10 + digit;
      read.decimals += point ? 1 : 0;
      if (read.mantissa >= kExactBelow) break;
    } else if (*text.at == '.' && !point) {
      point = true;
    } else if (*text.at != ' ') {
      break;
    }
  }
  return read;
}

// The number without its blanks; a second point may follow.
std::string plainNumber(Typed text) {
  std::string plain = "0";
  for (; text.at != text.end; ++text.at) {
    if ((*text.at >= '0' && *text.at <= '9') || *text.at == '.')
      plain += *text.at;
    else if (*text.at != ' ')
      break;
  }
  return plain;
}

double readLong(Typed text) {
  const std::string plain = plainNumber(text);
  double value = 0.0;
  const auto read = std::from_chars(plain.data(), std::to_address(plain.end()), value);
  if (read.ec != std::errc::result_out_of_range) return value;
  // Too large or too small for a double: the integer part tells which.
  return plain[plain.find_first_not_of('0')] == '.' ? 0.0 : HUGE_VAL;
}

}  // namespace

double ParseNumber(std::string_view text) {
  Typed typed{text.data(), text.data() + text.size()};
  skipBlanks(typed);
  const bool negative = takeSign(typed);
  const Digits digits = readDigits(typed);
  const double value = digits.isExact() ? digits.value() : readLong(typed);
  return negative ? -value : value;
}

}  // namespace mirelund

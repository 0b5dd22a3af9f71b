// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/parse_number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace mirelund {

double ParseNumber(std::string_view text) {
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end && (*at == ' ' || *at == '\t' || *at == '\n')) ++at;
  bool negative = false;
  if (at != end && (*at == '-' || *at == '+')) negative = *at++ == '-';

  // Up to 15 digits the quotient of two exact doubles is correctly rounded.
  const char* const start = at;
  std::uint64_t mantissa = 0;
  int digits = 0;
  int decimals = 0;
  bool point = false;
  for (; at != end; ++at) {
    const auto digit = static_cast<unsigned>(static_cast<unsigned char>(*at)) - '0';
    if (digit < 10) {
      if (mantissa > 0 || digit > 0) ++digits;
      if (digits > 15) break;
      mantissa = mantissa * 10 + digit;
      decimals += point ? 1 : 0;
    } else if (*at == '.' && !point) {
      point = true;
    } else if (*at != ' ') {
      break;
    }
  }
  constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  double value = 0.0;
  if (digits <= 15 && decimals <= 22) {
    value = static_cast<double>(mantissa) / kPowers[static_cast<std::size_t>(decimals)];
  } else {
    std::string plain = "0";
    point = false;
    for (at = start; at != end; ++at) {
      const bool isPoint = *at == '.' && !point;
      if ((*at >= '0' && *at <= '9') || isPoint)
        plain += *at;
      else if (*at != ' ')
        break;
      point = point || isPoint;
    }
    const auto read = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
      // Too large or too small for a double: the integer part tells which.
      const auto significant = plain.find_first_not_of('0');
      value = plain[significant] == '.' ? 0.0 : HUGE_VAL;
    }
  }
  return negative ? -value : value;
}

}  // namespace mirelund

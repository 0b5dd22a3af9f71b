// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/currency.h"

#include <charconv>
#include <cmath>
#include <cstddef>

namespace mirelund {

namespace {

// True when the shortest decimal of `value` ends exactly with a 5 in the fifth
// decimal place: d.dddd5.
bool isDecimalTie(double value) {
  char text[32];
  const auto end =
      std::to_chars(text, text + sizeof text, std::abs(value), std::chars_format::scientific).ptr;
  // d[.ddd]e±xx: the last digit of the mantissa has the place exponent - count.
  const char* e = end;
  while (*--e != 'e') {
  }
  int exponent = 0;
  std::from_chars(e[1] == '+' ? e + 2 : e + 1, end, exponent);
  const auto digits = e - text;
  const auto decimals = digits > 1 ? static_cast<int>(digits) - 2 : 0;
  return e[-1] == '5' && exponent - decimals == -5;
}

}  // namespace

Currency operator*(Currency a, Currency b) {
  __extension__ using Wide = __int128;
  const Wide product = static_cast<Wide>(a.units_) * b.units_;
  Wide quotient = product / Currency::kScale;
  const Wide remainder = product % Currency::kScale;
  const Wide twice = 2 * (remainder < 0 ? -remainder : remainder);
  if (twice > Currency::kScale || (twice == Currency::kScale && quotient % 2 != 0))
    quotient += product < 0 ? -1 : 1;
  require(quotient <= Currency::max().units_ && quotient >= Currency::min().units_,
          kBeyondCurrency);
  return Currency(static_cast<std::int64_t>(quotient));
}

Currency detail::ToCurrencyInDoubt(double value) {
  const double product = value * 10'000.0;
  const double lost = std::fma(value, 10'000.0, -product);  // exact
  // Beyond 2^52 the product is whole, and may have been rounded up past its floor.
  const double low = std::floor(product);
  const double rest = product - low;
  const double whole = rest == 0.0 ? std::floor(lost) : 0.0;
  // The last double within the range is 1,024 from its end, what it lost at most half of that.
  const auto units = static_cast<std::int64_t>(low) + static_cast<std::int64_t>(whole);
  bool up = false;
  if (isDecimalTie(value)) {
    up = units % 2 != 0;
  } else {
    const double aboveHalf = (rest - 0.5) + (lost - whole);
    up = aboveHalf > 0.0 || (aboveHalf == 0.0 && units % 2 != 0);
  }
  // A count near the end of the range is whole, and is not rounded up.
  return Currency::fromTenThousandths(units + (up ? 1 : 0));
}

}  // namespace mirelund

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

std::uint64_t magnitude(std::int64_t value) {
  return static_cast<std::uint64_t>(value < 0 ? -value : value);
}

template <typename Unsigned>
Unsigned quotientToEven(Unsigned dividend, Unsigned divisor) {
  const Unsigned quotient = dividend / divisor;
  const Unsigned remainder = dividend % divisor;
  const Unsigned missing = divisor - remainder;
  const bool up = remainder > missing || (remainder == missing && quotient % 2 != 0);
  return up ? quotient + 1 : quotient;
}

// a x b / c, rounded once, a tie to even. Most products of a fund have 64 bits, which
// the processor divides many times faster than 128.
inline std::int64_t productOver(std::int64_t a, std::int64_t b, std::int64_t c) {
  __extension__ using Wide = unsigned __int128;
  const std::uint64_t divisor = magnitude(c);
  std::uint64_t quotient = 0;
  std::uint64_t product = 0;
  if (!__builtin_mul_overflow(magnitude(a), magnitude(b), &product)) {
    quotient = quotientToEven(product, divisor);
    require(quotient <= magnitude(Currency::max().tenThousandths()), kBeyondCurrency);
  } else {
    const Wide wide = quotientToEven(Wide{magnitude(a)} * magnitude(b), Wide{divisor});
    require(wide <= magnitude(Currency::max().tenThousandths()), kBeyondCurrency);
    quotient = static_cast<std::uint64_t>(wide);
  }
  const auto units = static_cast<std::int64_t>(quotient);
  const bool negative = ((a < 0) != (b < 0)) != (c < 0);
  return negative ? -units : units;
}

}  // namespace

Currency operator*(Currency a, Currency b) {
  return Currency::fromTenThousandths(productOver(a.units_, b.units_, Currency::kScale));
}

Currency scaled(Currency amount, Currency part, Currency whole) {
  require(!whole.isZero(), "division by zero");
  return Currency::fromTenThousandths(productOver(amount.units_, part.units_, whole.units_));
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

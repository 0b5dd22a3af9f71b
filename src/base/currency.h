// SPDX-License-Identifier: GPL-3.0-or-later
// Money: a signed 64-bit count of ten-thousandths, exact in every sum.
#pragma once

#include <cmath>
#include <compare>
#include <cstdint>
#include <limits>

#include "base/errors.h"

namespace mirelund {

inline constexpr char kBeyondCurrency[] = "amount out of range";

/// An amount with four decimals, held as ten-thousandths: from
/// -922,337,203,685,477.5807 to 922,337,203,685,477.5807, so that every amount has its
/// negative. Sums and differences are exact; whatever leaves the range throws
/// ArithmeticError, a count of 64 bits below it too. There is no way in from a double but
/// ToCurrency, which names its rounding.
class Currency {
 public:
  static constexpr std::int64_t kScale = 10'000;

  constexpr Currency() = default;

  static constexpr Currency fromTenThousandths(std::int64_t units) { return inRange(false, units); }

  /// A whole number: Currency::whole(25) is 25.0000.
  static constexpr Currency whole(std::int64_t number) {
    std::int64_t units = 0;
    const bool overflown = __builtin_mul_overflow(number, kScale, &units);
    return inRange(overflown, units);
  }

  static constexpr Currency max() { return Currency(std::numeric_limits<std::int64_t>::max()); }
  static constexpr Currency min() { return Currency(-max().units_); }

  constexpr std::int64_t tenThousandths() const { return units_; }

  /// The nearest double, for magnitudes below 2^53 ten-thousandths; beyond, the
  /// count is rounded to a double before it is divided.
  constexpr double toDouble() const { return static_cast<double>(units_) / 10'000.0; }

  constexpr bool isZero() const { return units_ == 0; }

  friend constexpr bool operator==(Currency, Currency) = default;
  friend constexpr auto operator<=>(Currency, Currency) = default;

  friend constexpr Currency operator+(Currency a, Currency b) {
    std::int64_t sum = 0;
    const bool overflown = __builtin_add_overflow(a.units_, b.units_, &sum);
    return inRange(overflown, sum);
  }
  friend constexpr Currency operator-(Currency a, Currency b) {
    std::int64_t difference = 0;
    const bool overflown = __builtin_sub_overflow(a.units_, b.units_, &difference);
    return inRange(overflown, difference);
  }
  friend constexpr Currency operator-(Currency a) { return Currency(-a.units_); }

  /// The product through 128 bits, rounded once to four decimals, a tie to the
  /// even ten-thousandth.
  friend Currency operator*(Currency a, Currency b);

  /// amount x part / whole, the product through 128 bits and exact, the quotient rounded
  /// once to four decimals, a tie to the even ten-thousandth: what `part` of `whole`
  /// shares have of an amount. Throws ArithmeticError where `whole` is 0, too.
  friend Currency scaled(Currency amount, Currency part, Currency whole);

  constexpr Currency& operator+=(Currency other) { return *this = *this + other; }

 private:
  explicit constexpr Currency(std::int64_t units) : units_(units) {}

  // 64 bits have one count more below 0 than above: it is no amount.
  static constexpr Currency inRange(bool overflown, std::int64_t units) {
    require(!overflown && units != std::numeric_limits<std::int64_t>::min(), kBeyondCurrency);
    return Currency(units);
  }

  std::int64_t units_ = 0;
};

Currency scaled(Currency amount, Currency part, Currency whole);

namespace detail {
/// ToCurrency where the product is a tie, or too near to one to be trusted.
Currency ToCurrencyInDoubt(double value);
}  // namespace detail

/// Rounds the product of `value` and 10,000 to the nearest integer, a tie to the
/// even one. A tie is what a reader of the number calls one: it is judged on the
/// shortest decimal that reads back as the same double, so 0.00015 is a tie
/// (0.0002) although its binary product falls just short. Throws
/// ArithmeticError when the result leaves the range or `value` is a NaN.
inline Currency ToCurrency(double value) {
  const double product = value * 10'000.0;
  // NaN fails both comparisons.
  require(product > -0x1p63 && product < 0x1p63, kBeyondCurrency);
  const auto units = static_cast<std::int64_t>(product);  // toward zero
  const double rest = product - static_cast<double>(units);
  // Only this near to one half can the rounding of the product, or the decimal
  // that a reader sees, decide otherwise than `rest` does.
  const double aboveHalf = std::abs(rest) - 0.5;
  if (!(std::abs(aboveHalf) > std::abs(product) * 0x1p-51)) return detail::ToCurrencyInDoubt(value);
  if (aboveHalf < 0.0) return Currency::fromTenThousandths(units);
  return Currency::fromTenThousandths(rest > 0.0 ? units + 1 : units - 1);
}

/// `value` itself when it is finite; throws ArithmeticError for a NaN or an
/// infinity. The processor does not stop at them, so formulas do it here.
inline double finite(double value) {
  require(value - value == 0.0, "not a finite number");
  return value;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/currency.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "base/parse_number.h"

namespace mirelund {
namespace {

struct Rounding {
  const char* rule;
  double value;
  std::int64_t units;
};

// Expected numbers worked out by hand from the decimal that the literal shows.
constexpr Rounding kRoundings[] = {
    {"a tie goes to the even unit below", 0.00005, 0},
    {"a tie goes to the even unit above", 0.00015, 2},
    {"a tie at an even unit stays", 0.00025, 2},
    {"a negative tie goes to the even unit", -0.00015, -2},
    {"just below a tie rounds down", 0.000149, 1},
    {"just above a tie rounds up", 0.0000501, 1},
    {"a tie with an integer part", 1.00005, 10000},
    {"a tie with an integer part, odd below", 1.00015, 10002},
    {"a tie in the thousands", 1234.56785, 12345678},
    {"whole", 2.5, 25000},
    {"binary noise", 0.1 + 0.2, 3000},
    {"a large amount keeps its quarter", 922337203685477.25, 9223372036854772500},
    // Doubles stand an eighth apart at the ends of ±922,337,203,685,477.5807.
    {"the last double below the upper end", 922337203685477.5, 9223372036854775000},
    {"the last double above the lower end", -922337203685477.5, -9223372036854775000},
    // 3/32: the double stands between two units, where no reader sees a tie: its
    // shortest decimal ends in .1. The exact number does, odd below.
    {"a binary tie beyond 2^52", 140737488355328.09375, 1407374883553280938},
    {"a binary tie beyond 2^52, even below", 140737488355328.03125, 1407374883553280312},
    {"beyond 2^52 the lost fraction counts", 1000000000000.0001, 10000000000000001},
    // Here the product is rounded to a whole number before it can be looked at.
    {"a tie beyond 2^52, even below", 476094018439.53625, 4760940184395362},
    {"a tie beyond 2^52, even below, 342.529 in binary", 527074416843.73425, 5270744168437342},
    {"a negative tie beyond 2^52, even away", -487517601990.17615, -4875176019901762},
    {"a negative tie beyond 2^52, odd below", -503102335412.58655, -5031023354125866},
    {"zero", 0.0, 0},
    {"negative zero", -0.0, 0},
    {"the smallest double", std::numeric_limits<double>::denorm_min(), 0},
};

TEST(ToCurrency, RoundsToTheNearestUnitTiesToEven) {
  for (const auto& c : kRoundings)
    EXPECT_EQ(ToCurrency(c.value).tenThousandths(), c.units) << c.rule;
}

TEST(ToCurrency, RefusesWhatLeavesTheRange) {
  for (const double value :
       {922337203685477.625, -922337203685477.625, 922337203685477.75, -922337203685478.0, 1e15,
        1e300, -1e300, std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
    EXPECT_THROW(ToCurrency(value), ArithmeticError) << value;
}

RC_GTEST_PROP(ToCurrency, ReadsBackWhatToDoubleGives, ()) {
  // Below 2^39 whole units two neighbouring doubles are less than a unit apart.
  constexpr std::int64_t kDense = (1LL << 39) * Currency::kScale;
  const auto units = *rc::gen::inRange<std::int64_t>(-kDense, kDense);
  RC_ASSERT(ToCurrency(Currency::fromTenThousandths(units).toDouble()).tenThousandths() == units);
}

RC_GTEST_PROP(ToCurrency, IsWithinHalfAUnit, ()) {
  const double value = *rc::gen::map(rc::gen::inRange<std::int64_t>(-(1LL << 50), 1LL << 50),
                                     [](std::int64_t n) { return static_cast<double>(n) / 7e6; });
  const double units = static_cast<double>(ToCurrency(value).tenThousandths());
  RC_ASSERT(std::abs(units - value * 1e4) <= 0.5 + std::abs(value) * 1e-11);
}

RC_GTEST_PROP(ToCurrency, IsNeverAUnitOff, ()) {
  // Sixty-fourths times 10,000 are exact in 64 bits. A tie that a reader sees may be
  // up to 0.31 units beside the binary one.
  const auto sixtyFourths = *rc::gen::inRange<std::int64_t>(-(1LL << 49), 1LL << 49);
  const auto units = ToCurrency(static_cast<double>(sixtyFourths) / 64.0).tenThousandths();
  RC_ASSERT(std::abs(64 * units - 10'000 * sixtyFourths) < 64 * 0.82);
}

TEST(Currency, SumsAreCheckedAtBothEnds) {
  const auto unit = Currency::fromTenThousandths(1);
  EXPECT_THROW(Currency::max() + unit, ArithmeticError);
  EXPECT_THROW(Currency::min() - unit, ArithmeticError);
  EXPECT_EQ((Currency::max() - unit) + unit, Currency::max());
}

// ±922,337,203,685,477.5807: 64 bits go one ten-thousandth further below.
TEST(Currency, TheRangeIsSymmetric) {
  EXPECT_EQ(Currency::max().tenThousandths(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(Currency::min().tenThousandths(), -std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(-Currency::min(), Currency::max());
  EXPECT_EQ(-Currency::max(), Currency::min());
  EXPECT_EQ(Currency::min() * Currency::whole(-1), Currency::max());
  EXPECT_EQ(Currency::fromTenThousandths(-std::numeric_limits<std::int64_t>::max()),
            Currency::min());
}

struct OneBelow {
  const char* operation;
  Currency (*result)();
};

// Each would be -922,337,203,685,477.5808.
constexpr OneBelow kOneBelow[] = {
    {"a count",
     [] { return Currency::fromTenThousandths(std::numeric_limits<std::int64_t>::min()); }},
    {"a sum", [] { return Currency::min() + Currency::fromTenThousandths(-1); }},
    {"a sum of halves",
     [] {
       const auto half = Currency::fromTenThousandths(std::numeric_limits<std::int64_t>::min() / 2);
       return half + half;
     }},
    {"a sum in place",
     [] {
       Currency sum = Currency::min();
       return sum += Currency::fromTenThousandths(-1);
     }},
    {"a difference", [] { return Currency::min() - Currency::fromTenThousandths(1); }},
    {"a difference from nothing",
     [] { return Currency() - Currency::max() - Currency::fromTenThousandths(1); }},
    {"a product",
     [] {
       return Currency::fromTenThousandths(std::numeric_limits<std::int64_t>::min() / 2) *
              Currency::whole(2);
     }},
    {"a rounded product",
     [] {
       return Currency::fromTenThousandths(-6'148'914'691'236'517'205) *
              Currency::fromTenThousandths(15'000);
     }},
    {"a double", [] { return ToCurrency(-922337203685477.5808); }},
    {"a typed text", [] { return ToCurrency(ParseNumber("-922337203685477.5808")); }},
    {"a whole number", [] { return Currency::whole(-922'337'203'685'478); }},
};

TEST(Currency, NothingIsOneBelowTheRange) {
  for (const auto& c : kOneBelow) EXPECT_THROW(c.result(), ArithmeticError) << c.operation;
}

struct Product {
  const char* rule;
  std::int64_t a, b, product;  // ten-thousandths
};

constexpr Product kProducts[] = {
    {"10.5 x 100 = 1050", 105000, 1000000, 10500000},
    {"0.0001 x 0.5 is a tie at 0: even", 1, 5000, 0},
    {"0.0003 x 0.5 is a tie at 1: up to 2", 3, 5000, 2},
    {"-0.0003 x 0.5", -3, 5000, -2},
    {"0.3333 x 3.0000", 3333, 30000, 9999},
    {"0.0001 x 0.4999 rounds down", 1, 4999, 0},
    {"0.0001 x 0.5001 rounds up", 1, 5001, 1},
    {"the lower end x 1", -std::numeric_limits<std::int64_t>::max(), 10000,
     -std::numeric_limits<std::int64_t>::max()},
    {"the upper end x 1", std::numeric_limits<std::int64_t>::max(), 10000,
     std::numeric_limits<std::int64_t>::max()},
    {"through 128 bits", 9'000'000'000'000'000, 10'0000, 90'000'000'000'000'000},
};

TEST(Currency, ProductsAreRoundedOnceTiesToEven) {
  for (const auto& c : kProducts)
    EXPECT_EQ(
        (Currency::fromTenThousandths(c.a) * Currency::fromTenThousandths(c.b)).tenThousandths(),
        c.product)
        << c.rule;
  EXPECT_THROW(Currency::max() * Currency::whole(2), ArithmeticError);
  EXPECT_THROW(Currency::min() * Currency::whole(2), ArithmeticError);
}

struct Part {
  const char* rule;
  std::int64_t amount, part, whole, result;  // ten-thousandths
};

constexpr std::int64_t kEnd = std::numeric_limits<std::int64_t>::max();

constexpr Part kParts[] = {
    {"10 x 1 / 4 = 2.5", 100000, 10000, 40000, 25000},
    {"a third is rounded down", 100000, 10000, 30000, 33333},
    {"two thirds are rounded up", 100000, 20000, 30000, 66667},
    {"a tie at 0: even", 1, 1, 2, 0},
    {"a tie at 1: up to 2", 3, 1, 2, 2},
    {"a tie at 2 stays", 5, 1, 2, 2},
    {"a negative tie at 1", -3, 1, 2, -2},
    {"a negative part", 3, -1, 2, -2},
    {"a negative whole", 3, 1, -2, -2},
    {"two negatives", -3, 1, -2, 2},
    {"three negatives", -3, -1, -2, -2},
    {"nothing of it", kEnd, 0, kEnd, 0},
    {"all of it, through 128 bits", kEnd, kEnd, kEnd, kEnd},
    {"of the lower end", -kEnd, kEnd, kEnd, -kEnd},
    // (2^63 - 1) / 2 = 4611686018427387903.5: up to the even ...904.
    {"a tie through 128 bits", kEnd, kEnd - 1, 2 * (kEnd / 2), kEnd},
    {"a half of the end is a tie", kEnd, 4, 8, 4'611'686'018'427'387'904},
};

TEST(Currency, PartsAreRoundedOnceTiesToEven) {
  const auto amount = Currency::fromTenThousandths;
  for (const Part& c : kParts)
    EXPECT_EQ(scaled(amount(c.amount), amount(c.part), amount(c.whole)).tenThousandths(), c.result)
        << c.rule;
  // Once below and once beyond 64 bits.
  EXPECT_THROW(scaled(amount(kEnd), amount(2), amount(1)), ArithmeticError);
  EXPECT_THROW(scaled(amount(kEnd), amount(kEnd), amount(1)), ArithmeticError);
  EXPECT_THROW(scaled(amount(1), amount(1), Currency()), ArithmeticError);
}

// The part and what it leaves: what is scaled is within half a unit of the fraction.
RC_GTEST_PROP(Currency, APartIsTheNearest, ()) {
  const auto any = [] { return *rc::gen::inRange<std::int64_t>(1, kEnd); };
  const std::int64_t whole = any();
  const std::int64_t part = *rc::gen::inRange<std::int64_t>(0, whole);
  const std::int64_t amount = any();
  __extension__ using Wide = __int128;
  const Wide result =
      scaled(Currency::fromTenThousandths(amount), Currency::fromTenThousandths(part),
             Currency::fromTenThousandths(whole))
          .tenThousandths();
  const Wide off = Wide{amount} * part - result * whole;
  RC_ASSERT(2 * (off < 0 ? -off : off) <= Wide{whole});
}

TEST(Currency, WholeNumbersAreCheckedToo) {
  EXPECT_EQ(Currency::whole(25).tenThousandths(), 250000);
  EXPECT_THROW(Currency::whole(922'337'203'685'478), ArithmeticError);
}

TEST(Finite, StopsANanAndAnInfinity) {
  EXPECT_EQ(finite(1.5), 1.5);
  EXPECT_THROW(finite(std::log(-1.0)), ArithmeticError);
  EXPECT_THROW(finite(1.0 / std::numeric_limits<double>::denorm_min()), ArithmeticError);
}

}  // namespace
}  // namespace mirelund

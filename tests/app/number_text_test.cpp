// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/report_line.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "app/number_place.h"
#include "base/parse_number.h"

namespace mirelund {
namespace {

struct Shown {
  const char* rule;
  std::string text;
  const char* expected;
};

Currency units(std::int64_t tenThousandths) {
  return Currency::fromTenThousandths(tenThousandths);
}

TEST(FormatNumber, ShowsCurrencyFromItsInteger) {
  const Shown cases[] = {
      {"grouped money", FormatNumber(Currency::whole(10000), "####,,###.00"), "10,000.00"},
      {"zero has no digit before the point", FormatNumber(Currency(), "####,,###.00"), ".00"},
      {"money, investment growth", FormatNumber(Currency::whole(1000), "###,,###.00"), "1,000.00"},
      {"one comma groups too", FormatNumber(units(12345000), "####,###.00"), "1,234.50"},
      {"four decimals", FormatNumber(units(125000), "###,###.0000"), "12.5000"},
      {"four decimals, two commas", FormatNumber(units(125000), "####,,###.0000"), "12.5000"},
      {"a 0 forces the digit", FormatNumber(Currency(), "####,,##0.0000"), "0.0000"},
      {"a 0 forces no second digit", FormatNumber(units(123456), "####,,##0.0000"), "12.3456"},
      {"narrow money", FormatNumber(units(-9500000), "#,###.00"), "-950.00"},
      {"rate", FormatNumber(Currency::whole(4), "###.00"), "4.00"},
      {"rate, two places", FormatNumber(Currency::whole(4), "##.00"), "4.00"},
      {"optional decimals leave the point", FormatNumber(Currency::whole(4), "##.##"), "4."},
      {"one optional decimal", FormatNumber(units(45000), "##.##"), "4.5"},
      {"inner zero is no trailing one", FormatNumber(units(40500), "##.##"), "4.05"},
      {"three decimals", FormatNumber(units(65000), "###.000"), "6.500"},
      {"whole number", FormatNumber(Currency::whole(5), "###"), "5"},
      {"whole zero is empty", FormatNumber(Currency(), "###"), ""},
      {"more digits than places", FormatNumber(Currency::whole(12345), "##"), "12345"},
      {"no grouping without a comma", FormatNumber(Currency::whole(1234567), "###.00"),
       "1234567.00"},
      {"half goes away from zero", FormatNumber(units(10050), "###.00"), "1.01"},
      {"negative half goes away from zero", FormatNumber(units(-10050), "###.00"), "-1.01"},
      {"below half", FormatNumber(units(10049), "###.00"), "1.00"},
      {"half of a whole", FormatNumber(units(5000), "###"), "1"},
      {"below half of a whole", FormatNumber(units(4999), "###"), ""},
      {"a negative that rounds to zero keeps its sign", FormatNumber(units(-1), "###.00"), "-.00"},
      {"percent", FormatNumber(units(717), "###.00%"), "7.17%"},
      {"one half", FormatNumber(units(5000), "###.00"), ".50"},
      {"999.995 carries", FormatNumber(units(9999950), "####,,###.00"), "1,000.00"},
      {"the largest", FormatNumber(Currency::max(), "####,,###.0000"), "922,337,203,685,477.5807"},
      {"the smallest", FormatNumber(Currency::min(), "####,,###.0000"),
       "-922,337,203,685,477.5807"},
      {"the smallest, two decimals", FormatNumber(Currency::min(), "####,,###.00"),
       "-922,337,203,685,477.58"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.text, c.expected) << c.rule;
  EXPECT_THROW(FormatNumber(Currency::max(), "###.00%"), ArithmeticError);
}

TEST(FormatNumber, TakesADoubleAtFifteenDigits) {
  const Shown cases[] = {
      {"half", FormatNumber(0.5, "###.00"), ".50"},
      {"zero", FormatNumber(0.0, "####,,###.00"), ".00"},
      {"negative zero is zero", FormatNumber(-0.0, "####,,###.00"), ".00"},
      {"percent shifts the point", FormatNumber(0.07177, "###.000%"), "7.177%"},
      {"percent of zero", FormatNumber(0.0, "###.000%"), ".000%"},
      {"percent of one", FormatNumber(1.0, "###.00%"), "100.00%"},
      {"1.005 is a tie at 15 digits", FormatNumber(1.005, "###.00"), "1.01"},
      {"2.675 too", FormatNumber(2.675, "###.00"), "2.68"},
      {"1.115 too", FormatNumber(1.115, "###.00"), "1.12"},
      {"a negative tie", FormatNumber(-1.005, "###.00"), "-1.01"},
      {"0.285 in percent, no binary product", FormatNumber(0.00285, "###.0%"), ".3%"},
      {"1.4985 % is a tie", FormatNumber(0.014985, "###.000%"), "1.499%"},
      {"0.145 % to two places", FormatNumber(0.00145, "###.00%"), ".15%"},
      {"0.29499999999999998 is 0.295", FormatNumber(0.295, "###.00"), ".30"},
      {"noise below fifteen digits is dropped", FormatNumber(0.1 + 0.7, "###.0000"), ".8000"},
      {"not a tie at fifteen digits", FormatNumber(0.00499999999999, "###.00"), ".00"},
      {"a tie made by the cut", FormatNumber(0.12499999999999999, "###.00"), ".13"},
      {"small negative keeps its sign", FormatNumber(-0.001, "###.00"), "-.00"},
      {"sixteen digits show fifteen", FormatNumber(123456789012345678.0, "####,,###.00"),
       "123,456,789,012,346,000.00"},
      {"tie at the cut", FormatNumber(9007199254740993.0, "###"), "9007199254740990"},
      {"large, not cut", FormatNumber(999999999999.99, "####,,###.00"), "999,999,999,999.99"},
      {"carry through all nines", FormatNumber(999999999999999.9, "###.00"), "1000000000000000.00"},
      {"optional decimals", FormatNumber(25.0, "##.##"), "25."},
      {"optional decimals of 20.966", FormatNumber(20.966, "##.##"), "20.97"},
      {"optional decimals of 20.9", FormatNumber(20.9, "##.##"), "20.9"},
      {"tiny", FormatNumber(5e-324, "###.00"), ".00"},
      {"1e20", FormatNumber(1e20, "####,,###.00"), "100,000,000,000,000,000,000.00"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.text, c.expected) << c.rule;
  EXPECT_EQ(FormatNumber(1e300, "####,,###.00").size(), 301U + 100U + 3U);
  EXPECT_THROW(FormatNumber(std::numeric_limits<double>::infinity(), "###"), ArithmeticError);
  EXPECT_THROW(FormatNumber(std::nan(""), "###"), ArithmeticError);
}

TEST(RightJustify, FillsOrCutsToItsWidth) {
  EXPECT_EQ(RightJustify("$10,000.00", 13), "   $10,000.00");
  EXPECT_EQ(RightJustify("$1,000,000,000.00", 13), "$1,000,000,00");
  EXPECT_EQ(RightJustify("", 3), "   ");
  EXPECT_EQ(RightJustify("abc", 3), "abc");
  EXPECT_EQ(RightJustify("abc", 0), "");
  EXPECT_EQ(RightJustify("K\u00f6ln", 6), "  K\u00f6ln") << "characters, not bytes";
  EXPECT_EQ(RightJustify("\u00e5\u00e4\u00f6", 2), "\u00e5\u00e4") << "no character is split";
}

RC_GTEST_PROP(FormatNumber, ParsesBackToTheAmount, ()) {
  const auto number = *rc::gen::inRange<std::int64_t>(-(1LL << 52), 1LL << 52);
  const auto text = FormatNumber(units(number), "####.0000");
  RC_ASSERT(ToCurrency(ParseNumber(text)).tenThousandths() == number);
}

RC_GTEST_PROP(FormatNumber, GroupingOnlyInsertsCommas, ()) {
  const auto number = units(*rc::gen::arbitrary<std::int64_t>());
  auto grouped = FormatNumber(number, "####,,###.00");
  std::erase(grouped, ',');
  RC_ASSERT(grouped == FormatNumber(number, "###.00"));
}

RC_GTEST_PROP(FormatNumber, ADoubleOfFewDigitsShowsAsItsCurrency, ()) {
  const auto number = *rc::gen::inRange<std::int64_t>(-99'999'999'999'999, 99'999'999'999'999);
  const auto amount = units(number);
  RC_ASSERT(FormatNumber(amount.toDouble(), "####,,###.00") ==
            FormatNumber(amount, "####,,###.00"));
  RC_ASSERT(FormatNumber(amount.toDouble(), "##.##") == FormatNumber(amount, "##.##"));
}

RC_GTEST_PROP(AppendColumn, IsExactlyItsWidth, ()) {
  const auto amount = units(*rc::gen::arbitrary<std::int64_t>());
  const auto width = *rc::gen::inRange<std::size_t>(0, 40);
  std::string column;
  appendColumn(column, amount, "####,,###.00", width);
  RC_ASSERT(column.size() == width);
  RC_ASSERT(column == RightJustify(FormatNumber(amount, "####,,###.00"), width));
}

// Whatever writes a number in place writes what the plain rules give.
RC_GTEST_PROP(Columns, ShowTheFormattedNumber, ()) {
  const auto number = *rc::gen::oneOf(rc::gen::arbitrary<std::int64_t>(),
                                      rc::gen::inRange<std::int64_t>(-100'000'000, 100'000'000));
  const auto amount = units(number);
  const auto width = *rc::gen::inRange<std::size_t>(0, 60);
  const double plain = amount.toDouble() * *rc::gen::element(1.0, 1e-3, 1e12, 1e290);
  std::string text = *rc::gen::element<std::string>("", "what stood there");
  const auto check = [&](const Pattern& pattern) {
    const std::string shown = FormatNumber(amount, pattern);
    const std::string shownPlain = FormatNumber(plain, pattern);
    setColumn(text, amount, pattern, width);
    RC_ASSERT(text == RightJustify(shown, width));
    setColumn(text, plain, pattern, width);
    RC_ASSERT(text == RightJustify(shownPlain, width));
    setMoney(text, amount, pattern, width);
    RC_ASSERT(text == RightJustify("$" + shown, width));
    setMoney(text, plain, pattern, width);
    RC_ASSERT(text == RightJustify("$" + shownPlain, width));
    appendColumn(text, plain, pattern, width);
    RC_ASSERT(text.substr(width) == RightJustify(shownPlain, width));
    text.clear();
    appendRow(text, {{amount, pattern, width}, {amount, "###", 3}});
    RC_ASSERT(text ==
              RightJustify(shown, width) + RightJustify(FormatNumber(amount, "###"), 3) + "\r\n");
  };
  check("####,,###.00");
  check("####,,##0.0000");
  check("##.##");
  check("###");
}

// Where a number just fits its field, or just does not: no character too many.
TEST(Columns, KeepWithinTheNarrowestFields) {
  const std::int64_t numbers[] = {0,       1,      -1,      49,      -49,      50,       -50,
                                  9999,    -9999,  10000,   -10000,  99999,    -99999,   999949,
                                  -999949, 999950, -999950, 9999999, -9999999, 10000000, -10000000};
  const auto check = [&](const Pattern& pattern) {
    for (const auto number : numbers)
      for (std::size_t width = 0; width < 16; ++width) {
        const std::string shown = FormatNumber(units(number), pattern);
        std::string text = "<";
        appendColumn(text, units(number), pattern, width);
        EXPECT_EQ(text, "<" + RightJustify(shown, width)) << number << " in " << width;
        setMoney(text, units(number), pattern, width);
        EXPECT_EQ(text, RightJustify("$" + shown, width)) << number << " in " << width;
      }
  };
  check("####,,###.00");
  check("####,,##0.0000");
  check("###.0000");
  check("##.##");
  check("###");
  check("##0");
  check("###.00%");
}

struct Optional {
  const char* source;
  double value;
  const char* two;   // "##.##"
  const char* four;  // "###.####"
  const char* one;   // "#.#"
};

// Optional places show nothing for a zero at the end, and only there.
TEST(FormatNumber, DropsOptionalZerosFromTheEnd) {
  constexpr Optional kCases[] = {
      {"no fraction", 25, "25.", "25.", "25."},
      {"one digit", 0.5, ".5", ".5", ".5"},
      {"a zero inside stays", 1.05, "1.05", "1.05", "1.1"},
      {"a zero at the end goes", 1.5, "1.5", "1.5", "1.5"},
      {"two zeros at the end go", 1.05, "1.05", "1.05", "1.1"},
      {"a zero inside four", 1.0203, "1.02", "1.0203", "1."},
      {"half away from zero in one place", 0.25, ".25", ".25", ".3"},
      {"just below", 0.2499, ".25", ".2499", ".2"},
      {"rounded up to the next whole", 9.96, "9.96", "9.96", "10."},
      {"nothing", 0, ".", ".", "."},
      {"more digits than 64 bits hold", 1e20, "100000000000000000000.", "100000000000000000000.",
       "100000000000000000000."},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(FormatNumber(c.value, "##.##"), c.two) << c.source;
    EXPECT_EQ(FormatNumber(c.value, "###.####"), c.four) << c.source;
    EXPECT_EQ(FormatNumber(c.value, "#.#"), c.one) << c.source;
    if (c.value > 1e14) continue;
    EXPECT_EQ(FormatNumber(ToCurrency(c.value), "##.##"), c.two) << c.source;
    EXPECT_EQ(FormatNumber(ToCurrency(c.value), "###.####"), c.four) << c.source;
    EXPECT_EQ(FormatNumber(ToCurrency(c.value), "#.#"), c.one) << c.source;
  }
}

// The greatest number that surely fits: room is kept for a point, also where none is
// shown, and for a comma in front of every three digits.
struct Room {
  Pattern pattern;
  std::size_t width;
  std::uint64_t most;  // in units of the last decimal place
};
constexpr Room kRooms[] = {
    {"####,##0", 2, 9},
    {"####,##0", 4, 999},
    {"####,##0", 5, 999},
    {"####,##0", 6, 9999},
    {"####,##0", 26, 9'999'999'999'999'999'999U},
    {"####,##0", 40, 9'999'999'999'999'999'999U},
    {"#.#", 3, 99},
    {"####,,###.00", 4, 9'99},
    {"####,,###.00", 7, 999'99},
    {"####,,###.00", 8, 9999'99},
    {"####,,###.00", 14, 999'999'999'99},
    {"###.000", 5, 9'999},
    {"####,,##0.0000", 6, 9'9999},
    {"####,,##0.0000", 9, 999'9999},
    {"####,,##0.0000", 10, 9999'9999},
    {"###.00%", 5, 9'99},
    {"###.00%", 9, 9999'99},
};

TEST(Digits, FitWhereThereIsRoomForThePointTheCommasAndTheSign) {
  for (const auto& c : kRooms) {
    EXPECT_TRUE(digits::fits({c.most, false}, c.pattern, c.width)) << c.width << ' ' << c.most;
    EXPECT_FALSE(digits::fits({c.most + 1, false}, c.pattern, c.width)) << c.width << ' ' << c.most;
    EXPECT_TRUE(digits::fits({c.most, true}, c.pattern, c.width + 1)) << c.width << ' ' << c.most;
    EXPECT_FALSE(digits::fits({c.most + 1, true}, c.pattern, c.width + 1)) << c.width;
  }
  EXPECT_FALSE(digits::fits({0, false}, "###.00", 3));
  EXPECT_FALSE(digits::fits({0, true}, "###.00", 4));
  EXPECT_FALSE(digits::fits({0, false}, "###.00%", 4));
}

// Every column is RightJustify of the number's text, whatever the way it is made.
TEST(AppendColumn, FitsOrIsCutAtEveryWidth) {
  for (const double value :
       {0.0, 1.0,         9.99, 12.5, 99.0, 100.0,  999.99, 1000.0, 12345.678, 999999.0,
        1e6, 123456789.0, 1e9,  1e12, 9e14, -0.004, -1.0,   -12.5,  -1234.5,   -1e9})
    for (const Pattern pattern :
         {Pattern("##"), Pattern("####,##0"), Pattern("#.#"), Pattern("##.##"), Pattern("###.000"),
          Pattern("####,,###.00"), Pattern("####,,##0.0000"), Pattern("###.00%"),
          Pattern("###.000%"), Pattern("#,##0%")})
      for (std::size_t width = 0; width < 34; ++width) {
        if (pattern.percent && value > 1e12) continue;
        const std::string number = FormatNumber(value, pattern);
        std::string column = "x";
        appendColumn(column, value, pattern, width);
        EXPECT_EQ(column, "x" + RightJustify(number, width));
        const Currency amount = ToCurrency(value);
        column.clear();
        appendColumn(column, amount, pattern, width);
        EXPECT_EQ(column, RightJustify(FormatNumber(amount, pattern), width));
        setMoney(column, value, pattern, width);
        EXPECT_EQ(column, RightJustify("$" + number, width));
        setMoney(column, amount, pattern, width);
        EXPECT_EQ(column, RightJustify("$" + FormatNumber(amount, pattern), width));
        setColumn(column, amount, pattern, width);
        EXPECT_EQ(column, RightJustify(FormatNumber(amount, pattern), width));
      }
}

TEST(FormatNumber, AHundredfoldMustBeAnAmount) {
  // 92,233,720,368,547.7580 x 100 is the last one.
  EXPECT_EQ(FormatNumber(Currency::fromTenThousandths(92'233'720'368'547'758), "#.00%"),
            "922337203685477.58%");
  EXPECT_THROW(FormatNumber(Currency::fromTenThousandths(92'233'720'368'547'759), "#.00%"),
               ArithmeticError);
}

RC_GTEST_PROP(RightJustify, IsExactlyItsWidth, (const std::string& text)) {
  const auto width = *rc::gen::inRange<std::size_t>(0, 50);
  std::string ascii = text;
  for (char& c : ascii) c = static_cast<char>(c & 0x7f);
  RC_ASSERT(RightJustify(ascii, width).size() == width);
}

RC_GTEST_PROP(ReportLine, PutsWhatAppendColumnAppends, ()) {
  const Currency value = Currency::fromTenThousandths(*rc::gen::oneOf(
      rc::gen::inRange<std::int64_t>(-2'000'000, 2'000'000), rc::gen::arbitrary<std::int64_t>(),
      rc::gen::elementOf(std::vector<std::int64_t>{99'994'999, 99'995'000, -99'995'000, 9'999'950,
                                                   -std::numeric_limits<std::int64_t>::max()})));
  const auto width = *rc::gen::inRange<std::size_t>(0, 30);
  for (const Pattern pattern :
       {Pattern("####,,###.00"), Pattern("###.0000"), Pattern("##"), Pattern("##,##0.0000")}) {
    std::string expected = "before";
    appendColumn(expected, value, pattern, width);
    expected += "  \r\n";
    std::string line = "before";
    ReportLine(line, width + 2).put(value, pattern, width, width);
    RC_ASSERT(line == expected);
  }
}

TEST(ReportLine, IsBlankWhereNothingIsPut) {
  std::string report = "x";
  ReportLine line(report, 10);
  *line.place(2) = 'a';
  line.put(Currency::whole(1), "##", 7, 2);
  EXPECT_EQ(report, "x  a   1   \r\n");
}

}  // namespace
}  // namespace mirelund

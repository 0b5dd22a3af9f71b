// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/parse_number.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

namespace mirelund {
namespace {

struct Typed {
  const char* rule;
  const char* text;
  double value;
};

constexpr Typed kTyped[] = {
    {"plain", "1250.5", 1250.5},
    {"leading blanks, then a percent sign", "  4.00%", 4.0},
    {"a dollar ends it at once", "$10,000.00", 0.0},
    {"a comma ends it", "1,000", 1.0},
    {"blanks between digits", "1 2 5.5 0", 125.5},
    {"the second point ends it", "1.2.3", 1.2},
    {"empty", "", 0.0},
    {"a point alone", ".", 0.0},
    {"no integer part", ".5", 0.5},
    {"no fraction", "5.", 5.0},
    {"minus", "-5", -5.0},
    {"plus", "+5", 5.0},
    {"two signs", "--5", 0.0},
    {"tabs and line feeds in front", "\t\n 7", 7.0},
    {"a carriage return is another character", "\r7", 0.0},
    {"letters", "abc", 0.0},
    {"no exponent", "1e5", 1.0},
    {"leading zeros", "000000000000000000000012", 12.0},
    {"seventeen digits with a blank", "1234567890 1234567", 12345678901234567.0},
    {"seventeen digits, ended by what is below 0", "12345678901234567/1", 12345678901234567.0},
    {"seventeen digits, ended by what is above 9", "12345678901234567:1", 12345678901234567.0},
    {"seventeen digits, a second point", "1234567890123456.5.5", 1234567890123456.5},
    {"a slash, just below 0", "1/2", 1.0},
    {"a colon, just above 9", "1:2", 1.0},
    {"fifteen digits", "123456789012345", 123456789012345.0},
    {"sixteen digits", "1234567890123456", 1234567890123456.0},
    {"seventeen digits", "12345678901234567", 12345678901234567.0},
    {"sixteen digits, the least number", "1000000000000000", 1000000000000000.0},
    {"seventeen digits that begin as it does", "10000000000000008", 10000000000000008.0},
    {"sixteen digits behind a sign and a blank", "- 1234567890123456", -1234567890123456.0},
    {"twenty digits with a point", "1234567890.1234567890", 1234567890.1234567890},
};

TEST(ParseNumber, ReadsTheNumberAtTheFront) {
  for (const auto& c : kTyped) EXPECT_EQ(ParseNumber(c.text), c.value) << c.rule;
}

TEST(ParseNumber, HasNoLimitOnLength) {
  EXPECT_EQ(ParseNumber(std::string(400, '9')), std::numeric_limits<double>::infinity());
  EXPECT_EQ(ParseNumber("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(ParseNumber("0." + std::string(30, '0') + "1"), 1e-31);
}

TEST(ParseNumber, ReadsNothingBehindItsEnd) {
  const std::string_view text = "1234567890123456789";
  EXPECT_EQ(ParseNumber(text.substr(0, 3)), 123.0);
  EXPECT_EQ(ParseNumber(text.substr(0, 16)), 1234567890123456.0);
}

// A digit at every place behind the point; the C library reads the same.
TEST(ParseNumber, EveryDecimalPlaceHasItsPower) {
  for (std::size_t place = 1; place <= 30; ++place) {
    const std::string text = "0." + std::string(place - 1, '0') + "7";
    EXPECT_EQ(ParseNumber(text), std::strtod(text.c_str(), nullptr)) << text;
  }
}

RC_GTEST_PROP(ParseNumber, ReadsWhatAnyOtherReaderReads, ()) {
  const auto number = *rc::gen::arbitrary<std::uint64_t>();
  const auto decimals = *rc::gen::inRange<std::size_t>(0, 25);
  std::string text = std::to_string(number);
  if (text.size() <= decimals) text.insert(0, decimals + 1 - text.size(), '0');
  text.insert(text.size() - decimals, ".");
  RC_ASSERT(ParseNumber(text) == std::strtod(text.c_str(), nullptr));
}

}  // namespace
}  // namespace mirelund

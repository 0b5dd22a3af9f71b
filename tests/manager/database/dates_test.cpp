// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/dates.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <chrono>

#include "manager/database/databases.h"
#include "reached.h"

namespace mirelund {
namespace {

constexpr ShortDateFormat kAmerican{};
constexpr ShortDateFormat kGerman{
    {DatePart::Day, DatePart::Month, DatePart::Year}, '.', true, true};
constexpr ShortDateFormat kIso{{DatePart::Year, DatePart::Month, DatePart::Day}, '-', true, true};

TEST(Date, TheCalendarDecides) {
  EXPECT_TRUE(Date::of(2000, 2, 29));   // divisible by 400
  EXPECT_FALSE(Date::of(1900, 2, 29));  // divisible by 100
  EXPECT_TRUE(Date::of(2004, 2, 29));
  EXPECT_FALSE(Date::of(2001, 2, 29));
  EXPECT_FALSE(Date::of(2001, 4, 31));
  EXPECT_FALSE(Date::of(2001, 0, 1));
  EXPECT_FALSE(Date::of(2001, 13, 1));
  EXPECT_FALSE(Date::of(2001, 1, 0));
  EXPECT_FALSE(Date::of(99, 1, 1));
  EXPECT_TRUE(Date::of(100, 1, 1));
  EXPECT_TRUE(Date::of(9999, 12, 31));
  EXPECT_FALSE(Date::of(10000, 1, 1));
}

TEST(Date, EveryMonthEndsOnItsDay) {
  constexpr int kCommon[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int month = 1; month <= 12; ++month) {
    EXPECT_TRUE(Date::of(2001, month, kCommon[month - 1])) << month;
    EXPECT_FALSE(Date::of(2001, month, kCommon[month - 1] + 1)) << month;
  }
}

TEST(Date, ExistsWhenTheStandardCalendarHasIt) {
  checkReaching({{"a date", 0.3}, {"no date", 0.2}}, [](Reached& reached) {
    const int year = *rc::gen::inRange(100, 10000);
    const int month = *rc::gen::inRange(-1, 15);
    const int day = *rc::gen::inRange(-1, 35);
    const std::chrono::year_month_day standard{std::chrono::year(year),
                                               std::chrono::month(static_cast<unsigned>(month)),
                                               std::chrono::day(static_cast<unsigned>(day))};
    const auto mine = Date::of(year, month, day);
    RC_ASSERT(mine.has_value() == standard.ok());
    if (mine) RC_ASSERT(mine->year() == year && mine->month() == month && mine->day() == day);
    reached(mine ? "a date" : "no date");
  });
}

RC_GTEST_PROP(Date, OrdersAsTheDaysDo, ()) {
  const Date a = *anyDate();
  const Date b = *anyDate();
  const auto days = [](Date d) {
    return std::chrono::sys_days(std::chrono::year(d.year()) /
                                 std::chrono::month(static_cast<unsigned>(d.month())) /
                                 std::chrono::day(static_cast<unsigned>(d.day())));
  };
  RC_ASSERT((a < b) == (days(a) < days(b)));
  RC_ASSERT((a == b) == (days(a) == days(b)));
  RC_ASSERT(a < Date::afterAll());
}

struct Shown {
  const char* pattern;
  const char* text;  // 5 March 2001
};
// Patterns of the systems' own locales; the year is widened, literals dropped.
constexpr Shown kShown[] = {
    {"M/d/yy", "3/5/2001"},        {"dd.MM.yy", "05.03.2001"},  {"dd/MM/yyyy", "05/03/2001"},
    {"yyyy-MM-dd", "2001-03-05"},  {"d. M. yyyy", "5.3.2001"},  {"yyyy. MM. dd.", "2001.03.05"},
    {"d.MM.yy 'г'.", "5.03.2001"}, {"yyyy/M/d", "2001/3/5"},    {"d MMM yyyy", "5 03 2001"},
    {"dd-MM-yyyy", "05-03-2001"},  {"'d' d/M/yy", "5/3/2001"},  {"", "3/5/2001"},
    {"dd/MM", "3/5/2001"},         {"d/d/yyyy", "3/5/2001"},    {"EEEE d M y", "5 3 2001"},
    {"ddMMyyyy", "05/03/2001"},    {"yyyyMMdd", "2001/03/05"},  {"dMy", "5/3/2001"},
    {"dd.MM.dd", "3/5/2001"},      {"MM-MM-yyyy", "3/5/2001"},  {"yyyy.d.yyyy", "3/5/2001"},
    {"dd.MM.yyyy.dd", "3/5/2001"}, {"d.M.y d.M.y", "3/5/2001"},
};

TEST(ShortDateFormat, TakesOrderSeparatorAndPaddingFromThePattern) {
  for (const auto& c : kShown)
    EXPECT_EQ(formatDate(date(2001, 3, 5), shortDateFormat(c.pattern)), c.text) << c.pattern;
}

struct Typed {
  const char* text;
  const ShortDateFormat& format;
  int year, month, day;  // 0: refused
};
constexpr Typed kTyped[] = {
    {"5/15/2001", kAmerican, 2001, 5, 15},
    {"5.15.2001", kAmerican, 2001, 5, 15},
    {"5-15-2001", kAmerican, 2001, 5, 15},
    {"5 15 2001", kAmerican, 2001, 5, 15},
    {"05/15/2001", kAmerican, 2001, 5, 15},
    {" 5 / 15 /  2001 ", kAmerican, 2001, 5, 15},
    {"5/15-2001", kAmerican, 2001, 5, 15},
    {"15.5.2001", kGerman, 2001, 5, 15},
    {"15. 5. 2001", kGerman, 2001, 5, 15},
    {"15/05/01", kGerman, 2001, 5, 15},
    {"2001-5-15", kIso, 2001, 5, 15},
    {"01-5-15", kIso, 2001, 5, 15},
    {"1/1/29", kAmerican, 2029, 1, 1},
    {"1/1/30", kAmerican, 1930, 1, 1},
    {"1/1/00", kAmerican, 2000, 1, 1},
    {"12/31/99", kAmerican, 1999, 12, 31},
    {"12/10/2078", kAmerican, 2078, 12, 10},
    {"12/31/9999", kAmerican, 9999, 12, 31},
    {"2/29/2000", kAmerican, 2000, 2, 29},
    {"2/29/1900", kAmerican, 0, 0, 0},
    {"2/30/2000", kAmerican, 0, 0, 0},
    {"4/31/2001", kAmerican, 0, 0, 0},
    {"13/1/2001", kAmerican, 0, 0, 0},
    {"0/1/2001", kAmerican, 0, 0, 0},
    {"1/0/2001", kAmerican, 0, 0, 0},
    {"15/5/2001", kAmerican, 0, 0, 0},
    {"5/15/2001", kGerman, 0, 0, 0},
    {"5/15", kAmerican, 0, 0, 0},
    {"5/15/", kAmerican, 0, 0, 0},
    {"5/15/1", kAmerican, 0, 0, 0},
    {"5/15/201", kAmerican, 0, 0, 0},
    {"5/15/20011", kAmerican, 0, 0, 0},
    {"5/15/0099", kAmerican, 0, 0, 0},
    {"005/15/2001", kAmerican, 0, 0, 0},
    {"5//15/2001", kAmerican, 0, 0, 0},
    {"5/ /15/2001", kAmerican, 0, 0, 0},
    {"/5/15/2001", kAmerican, 0, 0, 0},
    {"5/15/2001/", kAmerican, 0, 0, 0},
    {"5/15/2001 1", kAmerican, 0, 0, 0},
    {"5/15/2001/1", kAmerican, 0, 0, 0},
    {"5/15/20/01", kAmerican, 0, 0, 0},
    {"5.15.1.2001", kAmerican, 0, 0, 0},
    {"15.5.2001.2001", kGerman, 0, 0, 0},
    {"2001-5-15-1", kIso, 0, 0, 0},
    {"5152001", kAmerican, 0, 0, 0},
    {"515/2001", kAmerican, 0, 0, 0},
    {"5/152001", kAmerican, 0, 0, 0},
    {"5x15/2001", kAmerican, 0, 0, 0},
    {"200105-15", kIso, 0, 0, 0},
    {"May 15 2001", kAmerican, 0, 0, 0},
    {"5/15/2001x", kAmerican, 0, 0, 0},
    {"2001-05-15", kAmerican, 0, 0, 0},
    {"", kAmerican, 0, 0, 0},
    {"   ", kAmerican, 0, 0, 0},
    {"-5/15/2001", kAmerican, 0, 0, 0},
    {"5/\t15/2001", kAmerican, 0, 0, 0},
};

TEST(ParseDate, TakesWhatThePersonTypes) {
  for (const auto& c : kTyped) {
    const auto got = parseDate(c.text, c.format);
    if (c.year == 0)
      EXPECT_FALSE(got) << c.text;
    else
      EXPECT_EQ(got, Date::of(c.year, c.month, c.day)) << c.text;
  }
}

RC_GTEST_PROP(ParseDate, ReadsWhatIsShown, ()) {
  ShortDateFormat format;
  const int order = *rc::gen::inRange(0, 6);
  for (int i = 0; i < order; ++i) std::next_permutation(format.order.begin(), format.order.end());
  format.separator = *rc::gen::elementOf(std::string("/.- "));
  format.paddedDay = *rc::gen::arbitrary<bool>();
  format.paddedMonth = *rc::gen::arbitrary<bool>();
  const Date day = *anyDate();
  const std::string text = formatDate(day, format);
  RC_ASSERT(text.size() <= 10U);
  RC_ASSERT(parseDate(text, format) == day);
  std::string column;
  appendDateColumn(column, day, format);
  RC_ASSERT(column == std::string(10 - text.size(), ' ') + text);
}

TEST(ShortDateFormat, HasATextOfItsOwn) {
  EXPECT_EQ(formText({}), "mm/dd/yyyy");
  EXPECT_EQ(formText(shortDateFormat("dd.MM.yy")), "dd.mm.yyyy");
  EXPECT_EQ(formText(shortDateFormat("yyyy-MM-dd")), "yyyy-mm-dd");
}

TEST(DateKey, OnlyDigitsAndSeparatorsPass) {
  for (const char c : std::string("0123456789/.- \b")) EXPECT_TRUE(isDateKey(c)) << c;
  for (const char c : std::string("aZ,:\"#+\t\r\x7f\xe9")) EXPECT_FALSE(isDateKey(c)) << c;
}

TEST(ShortDateFormat, NamesEachPartOnceOrIsTheDefault) {
  const ShortDateFormat usual;
  for (const char* pattern :
       {"", "d", "d/M", "M/d", "d/d/y", "d/M/d", "d/M/M", "y/y/y", "d/M/y/d", "'d/M/y'", "x/y/z"})
    EXPECT_EQ(shortDateFormat(pattern), usual) << pattern;
}

}  // namespace
}  // namespace mirelund

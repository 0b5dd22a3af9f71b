// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/date.h"

#include <gtest/gtest.h>

namespace mirelund {
namespace {

// Of every day of the calendar the number is one more than that of the day before.
TEST(Date, DaysAreNumberedWithoutAGap) {
  std::int32_t number = Date::of(100, 1, 1)->dayNumber();
  int days = 0;
  for (int year = 100; year <= 9999; ++year)
    for (int month = 1; month <= 12; ++month)
      for (int day = 1; day <= 31; ++day) {
        const auto date = Date::of(year, month, day);
        if (!date) continue;
        ASSERT_EQ(date->dayNumber(), number) << year << '-' << month << '-' << day;
        ++number;
        ++days;
      }
  // 1/1/100 to 12/31/9999, both counted.
  EXPECT_EQ(days, 3'615'900);
}

TEST(Date, DaysBetween) {
  const auto days = [](std::optional<Date> from, std::optional<Date> to) {
    return to->dayNumber() - from->dayNumber();
  };
  EXPECT_EQ(days(Date::of(2001, 1, 1), Date::of(2002, 1, 1)), 365);
  EXPECT_EQ(days(Date::of(2004, 1, 1), Date::of(2005, 1, 1)), 366);
  EXPECT_EQ(days(Date::of(1900, 2, 28), Date::of(1900, 3, 1)), 1);
  EXPECT_EQ(days(Date::of(2000, 2, 28), Date::of(2000, 3, 1)), 2);
  EXPECT_EQ(days(Date::of(1600, 7, 4), Date::of(2000, 7, 4)), 146'097);
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Days of the calendar.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

namespace mirelund {

/// A day of the calendar, of the years 100 to 9999: a year of two digits never
/// stands for itself. Dates compare as they follow each other.
class Date {
 public:
  /// No date; earlier than every date.
  constexpr Date() = default;

  /// Nothing when the calendar has no such day.
  static constexpr std::optional<Date> of(int year, int month, int day) {
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1) return std::nullopt;
    if (day > daysIn(year, month)) return std::nullopt;
    return Date(year << 9 | month << 5 | day);
  }

  /// Later than every date: what a record is given to be sorted last.
  static constexpr Date afterAll() { return Date(std::numeric_limits<std::int32_t>::max()); }

  constexpr int year() const { return key_ >> 9; }
  constexpr int month() const { return key_ >> 5 & 15; }
  constexpr int day() const { return key_ & 31; }

  /// A number that orders as the dates do.
  constexpr std::int32_t key() const { return key_; }

  /// Days since the first of March of the year 0 of the same calendar continued
  /// backward: the difference of two is the days between them. Of a day of the
  /// calendar alone. Years begin in March here, so that a leap day ends one; months then
  /// have 153 days in every five.
  constexpr std::int32_t dayNumber() const {
    const int y = month() > 2 ? year() : year() - 1;
    const int m = month() > 2 ? month() - 3 : month() + 9;
    return 365 * y + y / 4 - y / 100 + y / 400 + (153 * m + 2) / 5 + day() - 1;
  }

  friend constexpr bool operator==(Date, Date) = default;
  friend constexpr auto operator<=>(Date, Date) = default;

 private:
  explicit constexpr Date(std::int32_t key) : key_(key) {}

  static constexpr int daysIn(int year, int month) {
    constexpr std::array<int, 13> kDays = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[static_cast<std::size_t>(month)];
  }

  std::int32_t key_ = 0;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Calendar dates: how they are kept, typed and shown.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

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

enum class DatePart : std::uint8_t { Day, Month, Year };

/// The system's short date: the order of its parts, the character between them
/// and whether days and months below ten get a zero in front. The year always
/// has four digits, so that no date is shown in more than ten characters.
struct ShortDateFormat {
  std::array<DatePart, 3> order = {DatePart::Month, DatePart::Day, DatePart::Year};
  char separator = '/';
  bool paddedDay = false;
  bool paddedMonth = false;

  friend bool operator==(const ShortDateFormat&, const ShortDateFormat&) = default;
};

/// Reads the usual pattern letters ("dd.MM.yy", "M/d/yyyy", "yyyy. MM. dd."; text
/// in single quotes is skipped). The separator is the first of "/", "." and "-"
/// behind the first part, else a blank where there is one, else "/". A pattern
/// that does not name each part once gives the default.
ShortDateFormat shortDateFormat(std::string_view pattern);

/// Characters of the longest date.
inline constexpr std::size_t kDateWidth = 10;

/// Writes the date in the short form so that it ends just before `end`; returns
/// where it begins. The kDateWidth characters before `end` must be blank, and are
/// so in front of the date.
char* writeDate(char* end, Date date, const ShortDateFormat& format);

/// The short form as one writes about it: "mm/dd/yyyy".
std::string formText(const ShortDateFormat& format);

/// The date in the short form.
std::string formatDate(Date date, const ShortDateFormat& format);

/// The same, appended flush right in kDateWidth places.
void appendDateColumn(std::string& out, Date date, const ShortDateFormat& format);

/// A typed date: three numbers in the format's order, between them one "/", "."
/// or "-" with any blanks around it, or blanks alone, whatever the format's own
/// separator is. Days and months have one or two digits; the year has four, or
/// two, which mean 1930 to 2029. Nothing for anything else and for a day that
/// the calendar does not have.
std::optional<Date> parseDate(std::string_view text, const ShortDateFormat& format);

/// What may be typed into a date box; anything else is swallowed with a beep.
bool isDateKey(char character);

}  // namespace mirelund

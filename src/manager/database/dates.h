// SPDX-License-Identifier: GPL-3.0-or-later
// Calendar dates as they are typed and shown.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"

namespace mirelund {

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

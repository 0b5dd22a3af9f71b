// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers to text: patterns and fixed-width fields.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "app/currency.h"

namespace mirelund {

/// The money symbol in front of amounts in boxes, labels and help texts.
inline constexpr std::string_view MoneySymbol = "$";

/// Ends every report line.
inline constexpr std::string_view NewLine = "\r\n";

/// A numeric format pattern, read when the program is compiled: "#" a digit
/// shown only when significant, "0" a digit always shown (before the point: the
/// last one), "." the point, "," between digits turns grouping by three on, "%"
/// at the end shows the value times 100 with a percent sign. A pattern that is
/// not of this form does not compile.
class Pattern {
 public:
  // Implicit, so that a pattern is written where it is used.
  template <std::size_t N>
  consteval Pattern(const char (&text)[N]) : Pattern(std::string_view(text, N - 1)) {}

  consteval explicit Pattern(std::string_view text) {
    std::size_t i = 0;
    for (; i < text.size() && (text[i] == '#' || text[i] == ','); ++i)
      if (text[i] == ',') grouped = true;
    if (i < text.size() && text[i] == '0') {
      zeroShown = true;
      ++i;
    }
    if (i < text.size() && text[i] == '.') {
      point = true;
      for (++i; i < text.size() && (text[i] == '#' || text[i] == '0'); ++i) {
        ++decimals;
        if (text[i] == '0') minDecimals = decimals;
      }
    }
    if (i < text.size() && text[i] == '%') {
      percent = true;
      ++i;
    }
    if (i != text.size() || decimals > 4) throw "not a pattern";
  }

  unsigned char decimals = 0;     ///< most digits after the point
  unsigned char minDecimals = 0;  ///< digits forced after the point
  bool zeroShown = false;         ///< 0 shows a digit before the point
  bool point = false;             ///< the point is shown, even with nothing behind it
  bool grouped = false;
  bool percent = false;
};

/// The value as the pattern shows it, rounded to the pattern's decimals half
/// away from zero. All integer digits are shown, however few places the pattern
/// has. A negative value keeps its "-" even where it rounds to zero ("-.00").
/// Currency is formatted from its integer; with "%" its hundredfold must be a
/// Currency too, else ArithmeticError is thrown.
std::string FormatNumber(Currency value, const Pattern& pattern);

/// The same for a double, which is first taken at its 15 significant decimal
/// digits, so that binary noise never decides a digit; "%" shifts the decimal
/// point. Throws ArithmeticError for a NaN or an infinity.
std::string FormatNumber(double value, const Pattern& pattern);

/// Exactly `width` characters: the text flush right behind blanks or, when it
/// is longer, its first `width` characters. Characters are Unicode code points.
std::string RightJustify(std::string_view text, std::size_t width);

/// RightJustify(text, width) appended to `out`.
void appendRight(std::string& out, std::string_view text, std::size_t width);

/// RightJustify(FormatNumber(value, pattern), width) appended to `out`, made in
/// place: the one column writer of every report.
void appendColumn(std::string& out, Currency value, const Pattern& pattern, std::size_t width);
void appendColumn(std::string& out, double value, const Pattern& pattern, std::size_t width);

/// RightJustify(FormatNumber(value, pattern), width), made in place of `text`; with
/// the money symbol in front of the number: how boxes and labels show them.
void setColumn(std::string& text, Currency value, const Pattern& pattern, std::size_t width);
void setColumn(std::string& text, double value, const Pattern& pattern, std::size_t width);
void setMoney(std::string& text, Currency value, const Pattern& pattern, std::size_t width);
void setMoney(std::string& text, double value, const Pattern& pattern, std::size_t width);

/// One number of a table's row.
struct Column {
  Currency value;
  Pattern pattern;
  std::size_t width;
};

/// appendColumn for each, then NewLine: a row of a table, appended at once.
void appendRow(std::string& out, std::initializer_list<Column> columns);

/// The parts one after the other, then NewLine: one line of a report.
template <typename... Parts>
void appendLine(std::string& out, const Parts&... parts) {
  (out.append(parts), ...);
  out.append(NewLine);
}

/// The same, for the parts of several lines: room for all is made at once.
template <typename... Parts>
void appendLines(std::string& out, const Parts&... parts) {
  const std::size_t start = out.size();
  out.append((std::string_view(parts).size() + ... + NewLine.size()), ' ');
  char* to = out.data() + start;
  const auto put = [&to](std::string_view part) { to += part.copy(to, part.size()); };
  (put(parts), ...);
  put(NewLine);
}

/// A line of `width` blanks and NewLine, appended to `out`, whose columns are then
/// filled in place: for reports of many lines. Columns are named by their right
/// edge, the place of their last character counted from 1; nothing else may be
/// appended to `out` until the line is filled. A field stays within the line.
class ReportLine {
 public:
  ReportLine(std::string& out, std::size_t width);

  /// The place `at`, counted from 0.
  char* place(std::size_t at) { return out_.data() + start_ + at; }

  /// What appendColumn(out, value, pattern, width) would write up to `edge`.
  void put(Currency value, const Pattern& pattern, std::size_t edge, std::size_t width);

 private:
  std::string& out_;
  std::size_t start_;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of fixed-width fields: the one column writer of every report, box and label.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "app/number_text.h"

namespace mirelund {

/// Ends every report line.
inline constexpr std::string_view NewLine = "\r\n";

/// Exactly `width` characters: the text flush right behind blanks or, when it
/// is longer, its first `width` characters. Characters are Unicode code points.
std::string RightJustify(std::string_view text, std::size_t width);

/// RightJustify(text, width) appended to `out`.
void appendRight(std::string& out, std::string_view text, std::size_t width);

/// RightJustify(FormatNumber(value, pattern), width) appended to `out`, made in
/// place.
void appendColumn(std::string& out, Currency value, const Pattern& pattern, std::size_t width);
void appendColumn(std::string& out, double value, const Pattern& pattern, std::size_t width);

/// The same, made in place of `text`; with the money symbol in front of the
/// number: how boxes and labels show them.
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

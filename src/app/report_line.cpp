// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/report_line.h"

#include "app/number_place.h"
#include "base/text.h"

namespace mirelund {

namespace {

using digits::Units;
using digits::unitsOf;

// `width` blanks behind what `out` holds.
inline char* grow(std::string& out, std::size_t width) {
  constexpr std::string_view kBlanks = "                                                ";
  if (width <= kBlanks.size())
    out.append(kBlanks.data(), width);
  else
    out.append(width, ' ');
  return out.data() + (out.size() - width);
}

// `text` as `width` blanks.
inline char* blank(std::string& text, std::size_t width) {
  if (text.size() != width) text.resize(width);
  char* const to = text.data();
  constexpr std::uint64_t kEight = 0x2020202020202020U;
  if (width >= sizeof kEight && width <= 2 * sizeof kEight) {
    std::memcpy(to, &kEight, sizeof kEight);
    std::memcpy(to + (width - sizeof kEight), &kEight, sizeof kEight);
  } else {
    std::memset(to, ' ', width);
  }
  return to;
}

void appendAscii(std::string& out, std::string_view text, std::size_t width) {
  const std::size_t shown = std::min(text.size(), width);
  out.append(width - shown, ' ');
  out.append(text.data(), shown);
}

template <bool withSymbol>
void setNumber(std::string& text, Currency value, const Pattern& pattern, std::size_t width) {
  const Units units = unitsOf(value, pattern);
  digits::place<withSymbol>(blank(text, width), width, units, pattern);
}

template <bool withSymbol>
void setNumber(std::string& text, double value, const Pattern& pattern, std::size_t width) {
  Units units;
  if (unitsOf(value, pattern, units)) {
    digits::place<withSymbol>(blank(text, width), width, units, pattern);
    return;
  }
  std::string whole(withSymbol ? MoneySymbol : std::string_view());
  whole += digits::longNumber(value, pattern);
  text.clear();
  appendAscii(text, whole, width);
}

}  // namespace

void appendRight(std::string& out, std::string_view text, std::size_t width) {
  if (isAscii(text)) {
    appendAscii(out, text, width);
    return;
  }
  const std::string_view shown = firstCharacters(text, width);
  out.append(width - characterCount(shown), ' ');
  out += shown;
}

std::string RightJustify(std::string_view text, std::size_t width) {
  std::string out;
  appendRight(out, text, width);
  return out;
}

void appendColumn(std::string& out, Currency value, const Pattern& pattern, std::size_t width) {
  const Units units = unitsOf(value, pattern);
  digits::place<false>(grow(out, width), width, units, pattern);
}

void appendColumn(std::string& out, double value, const Pattern& pattern, std::size_t width) {
  Units units;
  if (unitsOf(value, pattern, units))
    digits::place<false>(grow(out, width), width, units, pattern);
  else
    appendAscii(out, digits::longNumber(value, pattern), width);
}

void setColumn(std::string& text, Currency value, const Pattern& pattern, std::size_t width) {
  setNumber<false>(text, value, pattern, width);
}

void setColumn(std::string& text, double value, const Pattern& pattern, std::size_t width) {
  setNumber<false>(text, value, pattern, width);
}

void setMoney(std::string& text, Currency value, const Pattern& pattern, std::size_t width) {
  setNumber<true>(text, value, pattern, width);
}

void setMoney(std::string& text, double value, const Pattern& pattern, std::size_t width) {
  setNumber<true>(text, value, pattern, width);
}

ReportLine::ReportLine(std::string& out, std::size_t width) : out_(out), start_(out.size()) {
  char* const line = grow(out, width + NewLine.size());
  std::memcpy(line + width, NewLine.data(), NewLine.size());
}

void ReportLine::put(Currency value, const Pattern& pattern, std::size_t edge, std::size_t width) {
  digits::place<false>(place(edge - width), width, unitsOf(value, pattern), pattern);
}

void appendRow(std::string& out, std::initializer_list<Column> columns) {
  std::size_t width = 0;
  for (const Column& column : columns) width += column.width;
  char* to = grow(out, width + NewLine.size());
  std::memcpy(to + width, NewLine.data(), NewLine.size());
  for (const Column& column : columns) {
    digits::place<false>(to, column.width, unitsOf(column.value, column.pattern), column.pattern);
    to += column.width;
  }
}

}  // namespace mirelund

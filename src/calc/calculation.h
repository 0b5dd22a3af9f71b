// SPDX-License-Identifier: GPL-3.0-or-later
// What several calculators share: the year or period table, the report parts and
// the rules of a calculation that replaces the one before.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/global.h"
#include "app/shown_text.h"
#include "base/currency.h"

namespace mirelund {

/// The line above and below a table of 45 columns.
inline constexpr std::string_view kUnderline = "_____________________________________________";

/// A row of a year or period table, as columns 1 to 4 of ComparisonTable hold
/// it; each calculator says what its second and third columns are.
struct TableRow {
  Currency period;
  Currency second;
  Currency third;
  Currency value;  ///< at the end of the period

  friend bool operator==(const TableRow&, const TableRow&) = default;
};

/// The years of a calculation, 1 to 40. Throws ArithmeticError for any other
/// number: no year is a failed calculation, not an empty table.
std::size_t wholeYears(Currency years);

/// The number of a period, as tables store it.
constexpr Currency periodNumber(std::size_t period) {
  return Currency::whole(static_cast<std::int64_t>(period));
}

/// Percent to fraction in single precision: the division is done in double, the
/// quotient narrowed once.
inline float singleRate(Currency percent) {
  return static_cast<float>(percent.toDouble() / 100.0);
}

/// A period's interest: the amount at full double precision times the rate,
/// rounded once to four decimals, a tie to the even one.
inline Currency RateTimesAmount(double amount, float rate) {
  return ToCurrency(amount * static_cast<double>(rate));
}

/// "###" in 3 places, then the three amounts in 14 places each: 45 characters,
/// and the line end.
void appendTableRow(std::string& report, const TableRow& row);

/// The same with a label in place of the period.
void appendTotals(std::string& report, std::string_view label, const TableRow& totals);

/// A help text's example input: the page's label and, right-justified to the
/// end of column 45, the value as its box shows it.
void appendExample(std::string& help, std::string_view label, std::string_view value);

/// Replaces ComparisonTable: rows 1 upward, the totals behind the last. Asks for no
/// memory where the table was as large before.
void storeTable(CurrencyTable& table, std::span<const TableRow> rows, const TableRow& totals);

/// The rows as a table to take along, of four columns.
ReportTable reportTable(const TableHeadings& headings, std::span<const TableRow> rows);

/// Replaces the report of a page that keeps no comparisons.
void setReport(Reports& reports, std::string report) noexcept;

/// The same, and shows it with its table. Until this is called a failed calculation has left
/// screen, report and chart alone; where it throws, for want of memory, it has changed nothing.
Outcome replaceReport(Reports& reports, std::string report, ReportTable table);

}  // namespace mirelund

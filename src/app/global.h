// SPDX-License-Identifier: GPL-3.0-or-later
// The state that crosses windows: one instance for the process, made of parts. A
// function takes the part that it uses.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/currency_table.h"
#include "app/outcome.h"
#include "dialogs/dialog_state.h"

namespace mirelund {

/// The input boxes' part.
struct BoxState {
  /// Numeric inputs of the calculator page shown, slot 1 upward.
  std::array<Currency, 9> InputValues{};
  /// 1 principal, 2 annual rate in percent, 3 years, 4 monthly payment.
  std::array<double, 6> MortgageInputs{};
  std::int16_t BoxEdited = 0;      ///< the focused box was typed into
  std::string BoxText;             ///< the box's text before the key being filtered
  std::int16_t ExtraDecimals = 0;  ///< one-shot: decimals for the next filtered digit
};

inline constexpr std::size_t kComparisonTableRows = 501;
inline constexpr std::size_t kComparisonTableColumns = 6;
inline constexpr std::size_t kComparisonTotalsRows = 22;
inline constexpr std::size_t kComparisonTotalsColumns = 5;
inline constexpr std::int16_t kMostComparisons = 10;
inline constexpr int kMostYears = 40;

/// Reports as texts, and the tables behind them.
struct Reports {
  /// 1: report or help text of the calculator page; 2: the manager's, for printing.
  std::array<std::string, 4> ReportLines;
  /// Year or period series of the last calculation: column 1 the year or
  /// period, column 4 the value at its end.
  CurrencyTable ComparisonTable{kComparisonTableRows, kComparisonTableColumns};
  /// One row per comparison; in the manager one row per fund, 31 the totals.
  CurrencyTable ComparisonTotals{kComparisonTotalsRows, kComparisonTotalsColumns};
  std::int16_t ComparisonCount = 0;  ///< 0..10
  std::int16_t StartOver = 0;        ///< set by Help: the next Calculate starts a new report
};

/// The views of the chart window, listed by the charts.
enum class ChartKind : std::int16_t;

/// What the chart window is to draw.
struct ChartSelectors {
  mirelund::ChartKind ChartKind{};  ///< 0: nothing
  std::int16_t ChartCount = 0;
  std::string ChartTitle;
  std::int16_t ChartPeriods = 0;
  std::int16_t ChartPeriodsPerYear = 0;
  /// What the manager's bars stand for: the funds, as shown, in table order.
  std::vector<std::string> ChartNames;
};

struct Global {
  DialogState dialogs;
  BoxState boxes;
  Reports reports;
  ChartSelectors chart;
  std::int16_t CurrentTab = 0;  ///< the calculator page shown last
};

/// What a page switch clears: reports, counters, flags, tables and inputs.
void resetCalculators(BoxState& boxes, Reports& reports, ChartSelectors& chart) noexcept;

/// "Clear results": the report texts only; inputs and counters are kept.
void clearReports(Reports& reports) noexcept;

/// What is printed: ReportLines(2) or, when that is empty, ReportLines(1).
const std::string& printedReport(const Reports& reports) noexcept;

/// Starts a comparison report: when Help asked for it, the report is emptied and
/// the count set to 0.
void startOverIfAsked(Reports& reports) noexcept;

/// Counts a comparison, at most to 10, which only a failed tenth leaves behind.
/// The first clears the totals of the run before, and with them its chart.
void countComparison(Reports& reports, ChartSelectors& chart) noexcept;

/// What the next comparison is appended to: ReportLines(1), or nothing where Help asked
/// for a new report. A copy, so that all that takes memory is done before anything is
/// changed.
std::string comparisonsSoFar(const Reports& reports);

/// Shows `shown`, the same as ReportLines(1). After the tenth comparison the report is
/// handed over, the count returns to 0 and message 8 is asked for, so that the next
/// calculation starts a new report.
Outcome showComparisons(Reports& reports, std::string shown) noexcept;

/// Help: `text` takes the place of the report, and the next Calculate starts over.
Outcome showHelp(Reports& reports, std::string text) noexcept;

}  // namespace mirelund

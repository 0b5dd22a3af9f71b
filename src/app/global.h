// SPDX-License-Identifier: GPL-3.0-or-later
// The state that crosses windows: one instance for the process, handed to each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/currency.h"
#include "dialogs/messages.h"

namespace mirelund {

/// A table of amounts addressed (row, column) from 0, all zero after
/// redimension. An index outside it throws ArithmeticError. Clearing costs what
/// was written, not what there is room for.
class CurrencyTable {
 public:
  CurrencyTable() = default;
  CurrencyTable(std::size_t rows, std::size_t columns) { redimension(rows, columns); }

  /// All values zero, indices 0..rows-1 and 0..columns-1.
  void redimension(std::size_t rows, std::size_t columns);

  std::size_t rows() const { return rows_; }
  std::size_t columns() const { return columns_; }

  Currency at(std::size_t row, std::size_t column) const { return cells_[index(row, column)]; }
  Currency& at(std::size_t row, std::size_t column) {
    const std::size_t i = index(row, column);
    if (row >= touchedRows_) touchedRows_ = row + 1;
    return cells_[i];
  }

 private:
  std::size_t index(std::size_t row, std::size_t column) const {
    if (row >= rows_ || column >= columns_) detail::throwOverflow();
    return row * columns_ + column;
  }

  std::vector<Currency> cells_;
  std::size_t rows_ = 0;
  std::size_t columns_ = 0;
  std::size_t touchedRows_ = 0;
};

/// What a handler of core asks its window to do: show a message (0: none), and
/// put `results` into the report box when `showResults` is set.
struct Outcome {
  int message = 0;
  bool showResults = false;
  std::string results;

  static Outcome failed(int number) { return {number, false, {}}; }
  static Outcome report(std::string text) { return {0, true, std::move(text)}; }
};

/// Pages of the calculator window, in tab order.
enum class CalculatorPageIndex : std::int16_t {
  PensionGrowth,
  Mortgage,
  InvestmentGrowth,
  RetirementIncome,
  CompoundGain,
  CapitalRequired,
};

inline constexpr std::size_t kComparisonTableRows = 501;
inline constexpr std::size_t kComparisonTableColumns = 6;
inline constexpr std::size_t kComparisonTotalsRows = 22;
inline constexpr std::size_t kComparisonTotalsColumns = 5;
inline constexpr std::int16_t kMostComparisons = 10;
inline constexpr int kMostYears = 40;

struct Global {
  /// Numeric inputs of the calculator page shown, slot 1 upward.
  std::array<Currency, 9> InputValues{};
  /// 1 principal, 2 annual rate in percent, 3 years, 4 monthly payment.
  std::array<double, 6> MortgageInputs{};
  /// Days in year of the mortgage's two-weekly and weekly schedules: the button
  /// chosen (6: not applicable) and what it stands for.
  std::int16_t DaysOption = 1;
  Currency DaysInYear = Currency::whole(365);
  double BiweeklyPerYear = 365.0 / 14.0;
  double WeeklyPerYear = 365.0 / 7.0;
  /// 1: report or help text of the calculator page; 2: the manager's, for printing.
  std::array<std::string, 4> ReportLines;
  /// Year or period series of the last calculation: column 1 the year or
  /// period, column 4 the value at its end.
  CurrencyTable ComparisonTable{kComparisonTableRows, kComparisonTableColumns};
  /// One row per comparison; in the manager one row per fund, 31 the totals.
  CurrencyTable ComparisonTotals{kComparisonTotalsRows, kComparisonTotalsColumns};

  std::int16_t ComparisonCount = 0;  ///< 0..10
  std::int16_t StartOver = 0;        ///< set by Help: the next Calculate starts a new report
  std::int16_t BoxEdited = 0;        ///< the focused box was typed into
  std::int16_t CurrentTab = 0;
  std::int16_t CapitalOption = 0;     ///< 2: the capital page works on an annual income
  std::int16_t WithdrawalOption = 0;  ///< 2: the retirement page takes a fixed amount
  std::int16_t ActiveWindow = 0;      ///< 1 calculator window, 2 manager
  std::int16_t MessageNumber = 0;
  std::int16_t QuestionNumber = 0;
  MessageDetails Details;  ///< what messages and questions name
  std::int16_t FundCount = 0;
  std::int32_t CalculationCount = 0;  ///< compound gain calculations of three numbers

  std::string BoxText;             ///< the box's text before the key being filtered
  std::int16_t ExtraDecimals = 0;  ///< one-shot: decimals for the next filtered digit

  std::int16_t ChartKind = 0;
  std::int16_t ChartCount = 0;
  std::string ChartTitle;
  std::int16_t ChartPeriods = 0;
  std::int16_t ChartPeriodsPerYear = 0;
  /// What the manager's bars stand for: the funds, as shown, in table order.
  std::vector<std::string> ChartNames;

  /// The header line typed before printing; "1" when the dialog was cancelled.
  std::string PrintHeader;
};

/// What a page switch clears: reports, counters, flags, tables and inputs.
void resetCalculators(Global& global);

/// "Clear results": the report texts only; inputs and counters are kept.
void clearReports(Global& global);

/// Starts a comparison report: when Help asked for it, the report is emptied and
/// the count set to 0.
void startOverIfAsked(Global& global);

/// Counts a comparison, at most to 10, which only a failed tenth leaves behind.
/// The first clears the totals of the run before, and with them its chart.
void countComparison(Global& global);

/// Shows ReportLines(1). After the tenth comparison the report is handed over,
/// the count returns to 0 and message 8 is asked for, so that the next
/// calculation starts a new report.
Outcome showComparisons(Global& global);

/// Help: `text` takes the place of the report, and the next Calculate starts over.
Outcome showHelp(Global& global, std::string text);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/global.h"

#include <algorithm>
#include <utility>

namespace mirelund {

void CurrencyTable::redimension(std::size_t rows, std::size_t columns) {
  if (rows == rows_ && columns == columns_) {
    std::fill_n(cells_.begin(), touchedRows_ * columns_, Currency());
  } else {
    cells_.assign(rows * columns, Currency());
    rows_ = rows;
    columns_ = columns;
  }
  touchedRows_ = 0;
}

void clearReports(Global& global) {
  for (auto& lines : global.ReportLines) lines.clear();
}

void resetCalculators(Global& global) {
  clearReports(global);
  global.ComparisonCount = 0;
  global.BoxEdited = 0;
  global.StartOver = 0;
  global.CapitalOption = 0;
  global.ChartCount = 0;
  global.ChartKind = 0;
  global.ComparisonTable.redimension(kComparisonTableRows, kComparisonTableColumns);
  global.ComparisonTotals.redimension(kComparisonTotalsRows, kComparisonTotalsColumns);
  global.InputValues.fill(Currency());
}

void startOverIfAsked(Global& global) {
  if (global.StartOver != 1) return;
  global.StartOver = 0;
  global.ReportLines[1].clear();
  global.ComparisonCount = 0;
}

void countComparison(Global& global) {
  global.ComparisonCount =
      std::min(static_cast<std::int16_t>(global.ComparisonCount + 1), kMostComparisons);
  if (global.ComparisonCount > 1) return;
  global.ComparisonTotals.redimension(kComparisonTotalsRows, kComparisonTotalsColumns);
  // The totals that a chart stood on are gone, and the run may yet fail.
  global.ChartCount = 0;
}

Outcome showComparisons(Global& global) {
  if (global.ComparisonCount < kMostComparisons) return Outcome::report(global.ReportLines[1]);
  Outcome outcome = Outcome::report(std::exchange(global.ReportLines[1], {}));
  global.ComparisonCount = 0;
  outcome.message = message::kMostComparisons;
  return outcome;
}

Outcome showHelp(Global& global, std::string text) {
  global.StartOver = 1;
  global.ReportLines[1] = std::move(text);
  return Outcome::report(global.ReportLines[1]);
}

}  // namespace mirelund

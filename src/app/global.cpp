// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/global.h"

#include <algorithm>
#include <utility>

namespace mirelund {

void clearReports(Reports& reports) {
  for (auto& lines : reports.ReportLines) lines.clear();
}

void resetCalculators(BoxState& boxes, Reports& reports, ChartSelectors& chart) {
  clearReports(reports);
  reports.ComparisonCount = 0;
  reports.StartOver = 0;
  reports.ComparisonTable.redimension(kComparisonTableRows, kComparisonTableColumns);
  reports.ComparisonTotals.redimension(kComparisonTotalsRows, kComparisonTotalsColumns);
  boxes.BoxEdited = 0;
  boxes.InputValues.fill(Currency());
  chart.ChartCount = 0;
  chart.ChartKind = {};
}

const std::string& printedReport(const Reports& reports) {
  return reports.ReportLines[reports.ReportLines[2].empty() ? 1 : 2];
}

void startOverIfAsked(Reports& reports) {
  if (reports.StartOver != 1) return;
  reports.StartOver = 0;
  reports.ReportLines[1].clear();
  reports.ComparisonCount = 0;
}

void countComparison(Reports& reports, ChartSelectors& chart) {
  reports.ComparisonCount =
      std::min(static_cast<std::int16_t>(reports.ComparisonCount + 1), kMostComparisons);
  if (reports.ComparisonCount > 1) return;
  reports.ComparisonTotals.redimension(kComparisonTotalsRows, kComparisonTotalsColumns);
  // The totals that a chart stood on are gone, and the run may yet fail.
  chart.ChartCount = 0;
}

Outcome showComparisons(Reports& reports) {
  if (reports.ComparisonCount < kMostComparisons) return Outcome::report(reports.ReportLines[1]);
  reports.ComparisonCount = 0;
  return {Message::MostComparisons, true, std::exchange(reports.ReportLines[1], {}), true};
}

Outcome showHelp(Reports& reports, std::string text) {
  reports.StartOver = 1;
  reports.ReportLines[1] = std::move(text);
  return Outcome::report(reports.ReportLines[1]);
}

}  // namespace mirelund

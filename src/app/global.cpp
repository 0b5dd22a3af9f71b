// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/global.h"

#include <algorithm>
#include <utility>

#include "base/attempt.h"

namespace mirelund {

void clearReports(Reports& reports) noexcept {
  for (auto& lines : reports.ReportLines) lines.clear();
}

// The tables were as large before: no memory is asked for, here and below.
void resetCalculators(BoxState& boxes, Reports& reports, ChartSelectors& chart) noexcept {
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

const std::string& printedReport(const Reports& reports) noexcept {
  return reports.ReportLines[reports.ReportLines[2].empty() ? 1 : 2];
}

void startOverIfAsked(Reports& reports) noexcept {
  if (reports.StartOver != 1) return;
  reports.StartOver = 0;
  reports.ReportLines[1].clear();
  reports.ComparisonCount = 0;
}

void countComparison(Reports& reports, ChartSelectors& chart) noexcept {
  reports.ComparisonCount =
      std::min(static_cast<std::int16_t>(reports.ComparisonCount + 1), kMostComparisons);
  if (reports.ComparisonCount > 1) return;
  reports.ComparisonTotals.redimension(kComparisonTotalsRows, kComparisonTotalsColumns);
  // The totals that a chart stood on are gone, and the run may yet fail.
  chart.ChartCount = 0;
}

std::string comparisonsSoFar(const Reports& reports) {
  return reports.StartOver == 1 ? std::string() : reports.ReportLines[1];
}

Outcome showComparisons(Reports& reports, std::string shown) noexcept {
  if (reports.ComparisonCount < kMostComparisons) return Outcome::report(std::move(shown));
  reports.ComparisonCount = 0;
  reports.ReportLines[1].clear();
  return {Message::MostComparisons, true, std::move(shown), true};
}

Outcome showHelp(Reports& reports, std::string text) noexcept {
  return attempt(Outcome::failed(Message::WrongEntry), [&] {
    Outcome outcome = Outcome::report(text);
    reports.StartOver = 1;
    reports.ReportLines[1] = std::move(text);
    return outcome;
  });
}

}  // namespace mirelund

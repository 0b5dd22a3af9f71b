// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_kind.h"

namespace mirelund {

namespace {

Currency yearEnd(const ChartFigures& figures, std::size_t i) {
  return figures.reports.ComparisonTable.at(i, 4);
}

Currency compactedYearEnd(const ChartFigures& figures, std::size_t i) {
  return figures.reports.ComparisonTable.at(i, 5);
}

Currency yearBeginning(const ChartFigures& figures, std::size_t i) {
  return i == 1 ? figures.boxes.InputValues[1] : yearEnd(figures, i - 1);
}

Currency firstTotal(const ChartFigures& figures, std::size_t i) {
  return figures.reports.ComparisonTotals.at(i, 1);
}

Currency secondTotal(const ChartFigures& figures, std::size_t i) {
  return figures.reports.ComparisonTotals.at(i, 2);
}

constexpr std::string_view kYear = "Year";
constexpr std::string_view kComparison = "Comparison";
constexpr SeriesRow kNone{};
using enum ChartAxis;

// clang-format off
constexpr std::array<ChartViewRow, 9> kViews{{
  {ChartKind::CapitalRequired, Money, "Capital required", {}, {}, kYear,
   {{{"Value at the end of the year", yearEnd}, kNone}}},
  {ChartKind::PensionGrowth, Money, "Pension growth", {}, {}, kYear,
   {{{"Value at the end of the year", yearEnd}, kNone}}},
  {ChartKind::Mortgage, Money, "Mortgage comparisons", {}, "Total interest paid", kComparison,
   {{{"Conventional", firstTotal}, {"At the chosen frequency", secondTotal}}}},
  {ChartKind::CompoundGain, Percent, "Compound gain",
   "Annual percentage gain/loss comparisons", {}, kComparison,
   {{{"Annual gain or loss", firstTotal}, kNone}}},
  // "comparision" is required: ChartData.GrowthComparisons.
  {ChartKind::GrowthComparisons, Money, "Investment growth",
   "Total growth values for each comparision", {}, kComparison,
   {{{"Final value", firstTotal}, kNone}}},
  {ChartKind::Manager, Money, "Investment manager charts", {}, {}, "Company/fund",
   {{kNone, kNone}}},
  {ChartKind::GrowthYears, Money, "Invested growth", {}, {}, kYear,
   {{{"Value at the end of the year", compactedYearEnd}, kNone}}},
  {ChartKind::IncomeFixedAmount, Money, "Retirement income", {}, {}, kYear,
   {{{"Value at the beginning of the year", yearBeginning}, kNone}}},
  {ChartKind::IncomePercentage, Money, "Retirement income", {}, {}, kYear,
   {{{"Value at the end of the year", yearEnd}, kNone}}},
}};
// clang-format on

constexpr std::size_t placeOf(ChartKind kind) {
  return static_cast<std::size_t>(kind) - static_cast<std::size_t>(kViews.front().kind);
}

consteval bool everyViewStandsAtItsKind() {
  for (std::size_t i = 0; i < kViews.size(); ++i)
    if (placeOf(kViews[i].kind) != i) return false;
  return true;
}
static_assert(everyViewStandsAtItsKind());

}  // namespace

const ChartViewRow* chartView(ChartKind kind) {
  return placeOf(kind) < kViews.size() ? &kViews[placeOf(kind)] : nullptr;
}

}  // namespace mirelund

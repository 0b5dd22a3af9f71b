// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_data.h"

#include <algorithm>
#include <cmath>

#include "app/formatting.h"
#include "charts/chart_kind.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

using ValueOf = Currency (*)(const Global&, std::size_t);

Currency yearEnd(const Global& global, std::size_t i) {
  return global.ComparisonTable.at(i, 4);
}

Currency compactedYearEnd(const Global& global, std::size_t i) {
  return global.ComparisonTable.at(i, 5);
}

Currency yearBeginning(const Global& global, std::size_t i) {
  return i == 1 ? global.InputValues[1] : yearEnd(global, i - 1);
}

Currency firstTotal(const Global& global, std::size_t i) {
  return global.ComparisonTotals.at(i, 1);
}

Currency secondTotal(const Global& global, std::size_t i) {
  return global.ComparisonTotals.at(i, 2);
}

void compactToYearEnds(Global& global) {
  const int periods = global.ChartPeriods;
  const int perYear = global.ChartPeriodsPerYear;
  if (perYear == 0) detail::throwOverflow();
  CurrencyTable& table = global.ComparisonTable;
  std::int16_t years = 0;
  for (int period = 1; period <= periods; ++period) {
    if (period % perYear != 0) continue;
    ++years;
    const auto row = static_cast<std::size_t>(years);
    table.at(row, 1) = Currency::whole(years);
    table.at(row, 5) = table.at(static_cast<std::size_t>(period), 4);
  }
  global.ChartCount = years;
}

struct SeriesRow {
  std::string_view name;
  ValueOf value;
};

// A title that is empty is made of ChartTitle, the count and " Years".
struct ViewRow {
  std::int16_t kind;
  ChartAxis axis;
  std::string_view caption;
  std::string_view title;
  std::string_view secondCaption;
  std::string_view categoryTitle;
  std::array<SeriesRow, 2> series;
};

constexpr std::string_view kYear = "Year";
constexpr std::string_view kComparison = "Comparison";
constexpr SeriesRow kNone{};

// clang-format off
constexpr ViewRow kViews[] = {
  {chart::kCapitalRequired, ChartAxis::Money, "Capital required", {}, {}, kYear,
   {{{"Value at the end of the year", yearEnd}, kNone}}},
  {chart::kPensionGrowth, ChartAxis::Money, "Pension growth", {}, {}, kYear,
   {{{"Value at the end of the year", yearEnd}, kNone}}},
  {chart::kMortgage, ChartAxis::Money, "Mortgage comparisons", {},
   "Total interest paid", kComparison,
   {{{"Conventional", firstTotal}, {"At the chosen frequency", secondTotal}}}},
  {chart::kCompoundGain, ChartAxis::Percent, "Compound gain",
   "Annual percentage gain/loss comparisons", {}, kComparison,
   {{{"Annual gain or loss", firstTotal}, kNone}}},
  // "comparision" is required: ChartData.GrowthComparisons.
  {chart::kGrowthComparisons, ChartAxis::Money, "Investment growth",
   "Total growth values for each comparision", {}, kComparison,
   {{{"Final value", firstTotal}, kNone}}},
  {chart::kGrowthYears, ChartAxis::Money, "Invested growth", {}, {}, kYear,
   {{{"Value at the end of the year", compactedYearEnd}, kNone}}},
  {chart::kIncomeFixedAmount, ChartAxis::Money, "Retirement income", {}, {}, kYear,
   {{{"Value at the beginning of the year", yearBeginning}, kNone}}},
  {chart::kIncomePercentage, ChartAxis::Money, "Retirement income", {}, {}, kYear,
   {{{"Value at the end of the year", yearEnd}, kNone}}},
};
// clang-format on

std::size_t countOf(const Global& global) {
  return global.ChartCount > 0 ? static_cast<std::size_t>(global.ChartCount) : 0;
}

std::string valueText(ChartAxis axis, Currency value) {
  if (axis == ChartAxis::Percent) return FormatNumber(value, "###,###.0000") + '%';
  std::string text(MoneySymbol);
  text += FormatNumber(value, "####,,###.00");
  return text;
}

std::string valueTitle(ChartAxis axis) {
  return axis == ChartAxis::Money ? "Amount (" + std::string(MoneySymbol) + ")" : "Percent";
}

template <typename Value>
ChartSeries makeSeries(std::string_view name, ChartAxis axis, std::size_t count, Value value) {
  ChartSeries series{std::string(name), {}, {}};
  series.values.reserve(count);
  series.texts.reserve(count);
  for (std::size_t i = 1; i <= count; ++i) {
    const Currency amount = value(i);
    series.values.push_back(amount.toDouble());
    series.texts.push_back(valueText(axis, amount));
  }
  return series;
}

std::vector<std::string> numbers(std::size_t count) {
  std::vector<std::string> texts;
  texts.reserve(count);
  for (std::size_t i = 1; i <= count; ++i) texts.push_back(std::to_string(i));
  return texts;
}

void fillCalculatorView(ChartView& view, const ViewRow& row, Global& global) {
  view.caption = row.caption;
  view.axis = row.axis;
  view.valueTitle = valueTitle(row.axis);
  view.categoryTitle = row.categoryTitle;
  view.secondCaption = row.secondCaption;
  if (row.kind == chart::kGrowthYears) compactToYearEnds(global);
  const std::size_t count = countOf(global);
  for (const SeriesRow& series : row.series)
    if (series.value != nullptr)
      view.series.push_back(makeSeries(series.name, row.axis, count,
                                       [&](std::size_t i) { return series.value(global, i); }));
  view.categories = numbers(count);
  if (!row.title.empty())
    view.title = row.title;
  else if (row.secondCaption.empty())
    view.title = global.ChartTitle + std::to_string(count) + " Years";
}

void fillManagerView(ChartView& view, const ManagerViewRow& row, const Global& global,
                     std::span<const std::string> fundNames) {
  view.caption = "Investment manager charts";
  view.managerButtons = true;
  view.axis = row.axis;
  view.valueTitle = valueTitle(row.axis);
  view.categoryTitle = "Company/fund";
  const std::size_t count = countOf(global);
  view.series.push_back(makeSeries(row.seriesName, row.axis, count, [&](std::size_t i) {
    return global.ComparisonTotals.at(i, row.column);
  }));
  view.categories = numbers(count);
  for (std::size_t i = 0; i < count && i < fundNames.size(); ++i)
    if (!fundNames[i].empty()) view.categories[i] = fundNames[i];
  view.title = row.title;
}

}  // namespace

ChartView makeChartView(Global& global, ManagerView manager,
                        std::span<const std::string> fundNames) {
  ChartView view;
  try {
    if (global.ChartKind == chart::kManager)
      fillManagerView(view, kManagerViews.at(static_cast<std::size_t>(manager)), global, fundNames);
    for (const ViewRow& row : kViews)
      if (row.kind == global.ChartKind) fillCalculatorView(view, row, global);
  } catch (const ArithmeticError&) {
    view.series.clear();
    view.categories.clear();
    view.message = message::kCannotDraw;
  }
  return view;
}

std::string pointText(const ChartView& view, std::size_t series, std::size_t category) {
  const ChartSeries& shown = view.series.at(series);
  std::string text;
  if (!view.managerButtons) text = view.categoryTitle + ' ';
  text += view.categories.at(category);
  if (view.series.size() > 1) text += ", " + shown.name;
  return text + ": " + shown.texts.at(category);
}

double leastTickStep(double step) {
  if (step < 0.0001) return 0.0001;
  return step > 0.0002001 && step < 0.0005 ? 0.0005 : step;
}

std::string tickText(ChartAxis axis, double value, double step) {
  constexpr std::array<Pattern, 4> kMarks = {"####,,##0", "####,,##0.00", "####,,##0.000",
                                             "####,,##0.0000"};
  std::size_t mark = 0;
  for (const double unit : {1.0, 0.01, 0.001}) {
    const double steps = step / unit;
    if (std::abs(steps - std::round(steps)) <= 1e-9 * steps) break;
    ++mark;
  }
  std::string text = FormatNumber(value, kMarks.at(mark));
  if (axis == ChartAxis::Percent) text += '%';
  return text;
}

std::size_t labelStep(double slot, double widest) {
  if (!(slot > 0.0)) return 1;
  for (std::size_t decade = 1; decade < 1'000'000; decade *= 10)
    for (const std::size_t step : {decade, 2 * decade, 5 * decade})
      if (static_cast<double>(step) * slot > widest) return step;
  return 1'000'000;
}

}  // namespace mirelund

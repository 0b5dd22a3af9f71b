// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_data.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "app/report_line.h"
#include "base/attempt.h"

namespace mirelund {

namespace {

void compactToYearEnds(CurrencyTable& table, ChartSelectors& chart) {
  const int perYear = chart.ChartPeriodsPerYear;
  require(perYear != 0, "no periods in a year");
  std::int16_t years = 0;
  for (int period = 1; period <= chart.ChartPeriods; ++period) {
    if (period % perYear != 0) continue;
    ++years;
    const auto row = static_cast<std::size_t>(years);
    table.at(row, 1) = Currency::whole(years);
    table.at(row, 5) = table.at(static_cast<std::size_t>(period), 4);
  }
  chart.ChartCount = years;
}

std::size_t countOf(const ChartSelectors& chart) {
  return chart.ChartCount > 0 ? static_cast<std::size_t>(chart.ChartCount) : 0;
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

void fillCalculatorView(ChartView& view, const ChartViewRow& row, const ChartFigures& figures,
                        const std::string& titlePrefix, std::size_t count) {
  for (const SeriesRow& series : row.series)
    if (series.value != nullptr)
      view.series.push_back(makeSeries(series.name, row.axis, count,
                                       [&](std::size_t i) { return series.value(figures, i); }));
  if (!row.title.empty())
    view.title = row.title;
  else if (row.secondCaption.empty())
    view.title = titlePrefix + std::to_string(count) + " Years";
}

void fillManagerView(ChartView& view, const ManagerViewRow& row, const CurrencyTable& totals,
                     const std::vector<std::string>& names, std::size_t count) {
  view.series.push_back(makeSeries(row.seriesName, row.axis, count,
                                   [&](std::size_t i) { return totals.at(i, row.column); }));
  for (std::size_t i = 0; i < count && i < names.size(); ++i)
    if (!names[i].empty()) view.categories[i] = names[i];
  view.title = row.title;
}

ChartView viewOf(const BoxState& boxes, Reports& reports, ChartSelectors& chart,
                 ManagerView manager) {
  ChartView view;
  const ChartViewRow* const row = chartView(chart.ChartKind);
  if (row == nullptr) return view;
  view.caption = row->caption;
  view.secondCaption = row->secondCaption;
  view.categoryTitle = row->categoryTitle;
  view.managerButtons = row->kind == ChartKind::Manager;
  const ManagerViewRow& managerRow = rowOf(kManagerViews, manager);
  view.axis = view.managerButtons ? managerRow.axis : row->axis;
  view.valueTitle = valueTitle(view.axis);
  try {
    if (row->kind == ChartKind::GrowthYears) compactToYearEnds(reports.ComparisonTable, chart);
    const std::size_t count = countOf(chart);
    view.categories = numbers(count);
    if (view.managerButtons)
      fillManagerView(view, managerRow, reports.ComparisonTotals, chart.ChartNames, count);
    else
      fillCalculatorView(view, *row, {boxes, reports}, chart.ChartTitle, count);
  } catch (const ArithmeticError&) {
    view.series.clear();
    view.categories.clear();
    view.message = Message::CannotDraw;
  }
  return view;
}

}  // namespace

ChartView makeChartView(const BoxState& boxes, Reports& reports, ChartSelectors& chart,
                        ManagerView manager) noexcept {
  ChartView failed;
  failed.message = Message::CannotDraw;
  return attempt(
      std::move(failed),
      [&](Reports& figures, ChartSelectors& selectors) {
        return viewOf(boxes, figures, selectors, manager);
      },
      reports, chart);
}

std::string pointText(const ChartView& view, std::size_t series, std::size_t category) {
  const ChartSeries& shown = view.series.at(series);
  std::string text;
  if (!view.managerButtons) text = view.categoryTitle + ' ';
  text += view.categories.at(category);
  if (view.series.size() > 1) text += ", " + shown.name;
  return text + ": " + shown.texts.at(category);
}

std::string valuesText(const ChartView& view) {
  std::string text;
  const auto appendName = [&text](std::string_view name) {
    if (!name.empty() && std::string_view("=+-@").find(name.front()) != std::string_view::npos)
      text += '\'';
    for (const char character : name)
      text += character == '\t' || character == '\r' || character == '\n' ? ' ' : character;
  };
  appendName(view.categoryTitle);
  for (const ChartSeries& series : view.series) {
    text += '\t';
    appendName(series.name);
  }
  text += '\n';
  for (std::size_t c = 0; c < view.categories.size(); ++c) {
    appendName(view.categories[c]);
    for (const ChartSeries& series : view.series) {
      text += '\t';
      // Shortest, of any double: sign, digits, point.
      std::array<char, 400> digits{};
      const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                     series.values.at(c), std::chars_format::fixed);
      text.append(digits.data(), end.ptr);
    }
    text += '\n';
  }
  return text;
}

double barBase(const ChartView& view, std::size_t series, std::size_t category) {
  const double value = view.series.at(series).values.at(category);
  double base = 0.0;
  for (std::size_t below = 0; view.stacked && below < series; ++below) {
    const double other = view.series[below].values.at(category);
    if ((other < 0.0) == (value < 0.0)) base += other;
  }
  return base;
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

// SPDX-License-Identifier: GPL-3.0-or-later
// What a chart shows, without a window: from the figures that the last
// calculation or valuation left in Global to captions, bars and their texts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/global.h"
#include "base/table.h"
#include "charts/chart_kind.h"

namespace mirelund {

/// The manager's three views, one button each; the first is shown on opening.
enum class ManagerView : std::uint8_t { GainDollars, GainPercent, TotalValue };

struct ManagerViewRow {
  ManagerView view;
  std::string_view title;
  std::size_t column;  ///< of ComparisonTotals
  ChartAxis axis;
  std::string_view seriesName;
};

inline constexpr std::array<ManagerViewRow, 3> kManagerViews{{
    {ManagerView::GainDollars, "Gain or Loss in dollars", 4, ChartAxis::Money, "Gain or loss"},
    {ManagerView::GainPercent, "Gain or Loss in percent", 5, ChartAxis::Percent, "Gain or loss"},
    {ManagerView::TotalValue, "Current value of each company/fund", 3, ChartAxis::Money,
     "Current value"},
}};
static_assert(standsInOrder(kManagerViews, &ManagerViewRow::view));

/// One bar a category; all series of a view have as many.
struct ChartSeries {
  std::string name;                ///< in the legend
  std::vector<double> values;      ///< money, or percent as a number of percent
  std::vector<std::string> texts;  ///< each value to the last digit: "$1,000.00", "14.8698%"
};

struct ChartView {
  /// CannotDraw when the figures could not be read: there are no series then.
  Message message = Message::None;
  std::string caption;  ///< of the window
  std::string title;
  std::string secondCaption;  ///< a text below the chart, or empty
  std::string categoryTitle;
  std::vector<std::string> categories;  ///< year or comparison numbers, fund names
  std::string valueTitle;
  ChartAxis axis = ChartAxis::Money;
  std::vector<ChartSeries> series;  ///< none: the chart is empty
  bool managerButtons = false;      ///< the manager's three buttons are seen
  /// The series stand on each other and not side by side: from 0 upward what is not
  /// negative, and downward what is.
  bool stacked = false;
};

/// Where a bar begins, on the value axis: 0, or the sum of the bars of its category and
/// its side of 0 that it is stacked on. Throws std::out_of_range for a bar that is not
/// there.
double barBase(const ChartView& view, std::size_t series, std::size_t category);

/// The view that ChartKind asks for; an unknown kind gives an empty chart. For
/// investment growth by periods (kind 9) the table is first compacted to year
/// ends: ComparisonTable(m, 1) becomes the year m and (m, 5) its end value,
/// ChartCount the number of whole years; that overwrites the period numbers of
/// the first rows, as required (ChartData.CompactsPeriodsToYearEnds). `manager`
/// and ChartNames serve kind 8 alone; a fund without a name is shown by its number.
/// Throws nothing: where memory lacks the view is an empty one with CannotDraw, and
/// nothing is changed.
ChartView makeChartView(const BoxState& boxes, Reports& reports, ChartSelectors& chart,
                        ManagerView manager = ManagerView::GainDollars) noexcept;

/// What a bar's tooltip says: its category, its series where there are several,
/// its value. Throws std::out_of_range for a bar that is not there.
std::string pointText(const ChartView& view, std::size_t series, std::size_t category);

/// The chart's values for a spreadsheet to paste: a line a category, cells apart by tabs,
/// under a line of headings; numbers as they are, with a point and no marks of thousands
/// or money. Tabs and line ends in a text are blanks there, and one that begins with =, +,
/// - or @ has an apostrophe in front.
std::string valuesText(const ChartView& view);

/// A mark of the value axis, whose marks are `step` apart: thousands separated, as
/// many decimals as the step asks for (four at most), "%" behind a percentage. Throws
/// ArithmeticError for a value that is no number.
std::string tickText(ChartAxis axis, double value, double step);

/// The least step from `step` (1, 2, 2.5 or 5 times a power of ten) upward whose
/// marks need no more decimals than an amount has.
double leastTickStep(double step);

/// Every how many categories one is labelled (1, 2, 5, 10, 20, ...), so that
/// labels `widest` wide do not touch where each category has `slot`.
std::size_t labelStep(double slot, double widest);

}  // namespace mirelund

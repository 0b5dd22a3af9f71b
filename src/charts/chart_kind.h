// SPDX-License-Identifier: GPL-3.0-or-later
// ChartKind: which view the chart window draws, and what each view is made of.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "app/global.h"

namespace mirelund {

enum class ChartKind : std::int16_t {
  CapitalRequired = 3,
  PensionGrowth,
  Mortgage,
  CompoundGain,
  GrowthComparisons,
  Manager,
  GrowthYears,
  IncomeFixedAmount,
  IncomePercentage,
};

/// What the value axis counts.
enum class ChartAxis : std::uint8_t { Money, Percent };

/// The figures that a calculation left, as a view reads them.
struct ChartFigures {
  const BoxState& boxes;
  const Reports& reports;
};

/// One series: its name in the legend, and its value i, counted from 1.
struct SeriesRow {
  std::string_view name;
  Currency (*value)(const ChartFigures& figures, std::size_t i);  ///< null: no series
};

/// All that is known of a view. A title that is empty is made of ChartTitle, the
/// count and " Years", unless the second caption stands for it.
struct ChartViewRow {
  ChartKind kind;
  ChartAxis axis;
  std::string_view caption;  ///< of the window
  std::string_view title;
  std::string_view secondCaption;  ///< below the chart
  std::string_view categoryTitle;
  std::array<SeriesRow, 2> series;  ///< of the manager's view: see ManagerView
};

/// The row of a kind; null for a number that is none.
const ChartViewRow* chartView(ChartKind kind);

}  // namespace mirelund

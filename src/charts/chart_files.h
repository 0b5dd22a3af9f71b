// SPDX-License-Identifier: GPL-3.0-or-later
// A chart taken along: as a file, and on the clipboard.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

class QMimeData;

namespace mirelund {

class BarChart;

/// A kind of file that a chart can be saved as.
struct ChartFile {
  std::string_view ending;
  std::string_view filter;
  /// The chart as it is on paper: black, in colour, on white, of the size that it has on
  /// the screen. Nothing where it could not be drawn.
  std::optional<std::string> (*bytes)(BarChart& chart);
};

/// Twice the screen's pixels; lines and letters; lines and letters on a page of the
/// chart's size.
extern const std::array<ChartFile, 3> kChartFiles;

/// The file that a path's ending names; the first for another.
const ChartFile& chartFile(std::string_view path);

/// The chart as an image of twice the screen's pixels and, for what takes no images, its
/// values (valuesText).
QMimeData* chartToCopy(BarChart& chart);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/bar_colors.h"

#include <array>

#include "app/readable_palette.h"

namespace mirelund {

namespace {

using Bars = std::array<QColor, 2>;

}  // namespace

QColor barColor(std::size_t series, const QColor& ground) {
  const Bars onLight{QColor(0, 70, 125), QColor(205, 105, 0)};
  const Bars onDark{QColor(195, 230, 255), QColor(200, 100, 0)};
  const QColor black(Qt::black);
  const QColor white(Qt::white);
  const bool light = contrastOf(black, ground) > contrastOf(white, ground);
  const QColor& wanted = (light ? onLight : onDark).at(series % 2);
  QColor color = wanted;
  // A ground in between leaves less room: towards what is farthest from it.
  constexpr int kSteps = 20;
  for (int step = 1; step <= kSteps && contrastOf(color, ground) < kLeastContrast; ++step)
    color = between(wanted, light ? black : white, static_cast<float>(step) / kSteps);
  return color;
}

QColor greyBarColor(std::size_t series) {
  const Bars bars{QColor(60, 60, 60), QColor(140, 140, 140)};
  return bars.at(series % 2);
}

BarFill barFill(std::size_t series) {
  constexpr std::array kFills{BarFill::Solid, BarFill::RisingLines, BarFill::FallingLines,
                              BarFill::CrossedLines};
  return kFills.at(series % kFills.size());
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/bar_colors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirelund {

namespace {

double linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

QColor mixed(const QColor& color, const QColor& other, float share) {
  const auto mix = [share](float a, float b) { return a + (b - a) * share; };
  return QColor::fromRgbF(mix(color.redF(), other.redF()), mix(color.greenF(), other.greenF()),
                          mix(color.blueF(), other.blueF()));
}

using Bars = std::array<QColor, 2>;

}  // namespace

double contrastRatio(const QColor& one, const QColor& other) {
  const auto [low, high] = std::minmax({luminance(one), luminance(other)});  // by value
  return (high + 0.05) / (low + 0.05);
}

QColor barColor(std::size_t series, const QColor& ground) {
  const Bars onLight{QColor(0, 70, 125), QColor(205, 105, 0)};
  const Bars onDark{QColor(195, 230, 255), QColor(200, 100, 0)};
  const QColor black(Qt::black);
  const QColor white(Qt::white);
  const bool light = contrastRatio(black, ground) > contrastRatio(white, ground);
  const QColor& wanted = (light ? onLight : onDark).at(series % 2);
  QColor color = wanted;
  // A ground in between leaves less room: towards what is farthest from it.
  constexpr int kSteps = 20;
  for (int step = 1; step <= kSteps && contrastRatio(color, ground) < kLeastContrast; ++step)
    color = mixed(wanted, light ? black : white, static_cast<float>(step) / kSteps);
  return color;
}

QColor greyBarColor(std::size_t series) {
  const Bars bars{QColor(60, 60, 60), QColor(140, 140, 140)};
  return bars.at(series % 2);
}

}  // namespace mirelund

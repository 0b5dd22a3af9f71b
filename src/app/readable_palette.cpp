// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/readable_palette.h"

#include <algorithm>
#include <cmath>

namespace mirelund {

namespace {

double luminance(const QColor& color) {
  const auto part = [](float value) {
    const double level = value;
    return level <= 0.04045 ? level / 12.92 : std::pow((level + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

}  // namespace

QColor between(const QColor& one, const QColor& other, float share) {
  const auto part = [share](float a, float b) { return a + (b - a) * share; };
  return QColor::fromRgbF(part(one.redF(), other.redF()), part(one.greenF(), other.greenF()),
                          part(one.blueF(), other.blueF()));
}

double contrastOf(const QColor& one, const QColor& other) {
  const auto [low, high] = std::minmax({luminance(one), luminance(other)});
  return (high + 0.05) / (low + 0.05);
}

QPalette readablePalette(const QPalette& desktop) {
  constexpr float kStep = 0.05F;
  QPalette palette = desktop;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    const QColor text = desktop.color(group, QPalette::HighlightedText);
    const QColor ground = desktop.color(group, QPalette::Highlight);
    const QColor far =
        contrastOf(text, Qt::black) > contrastOf(text, Qt::white) ? Qt::black : Qt::white;
    float share = 0.0F;
    while (share < 1.0F && contrastOf(between(ground, far, share), text) < kReadable)
      share = std::min(share + kStep, 1.0F);
    if (share > 0.0F) palette.setColor(group, QPalette::Highlight, between(ground, far, share));
  }
  return palette;
}

}  // namespace mirelund

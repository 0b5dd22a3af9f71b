// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/hatched_bars.h"

#include <algorithm>
#include <cmath>

namespace mirelund {

namespace {

constexpr double kBetweenLines = 9.0;  // across, in pixels
constexpr double kLineWidth = 2.0;

// The lines x + y = n * kBetweenLines within the bar: two bars of a stack go on in each
// other's lines.
QVector<QLineF> risingLines(const QRectF& bar) {
  QVector<QLineF> lines;
  const auto first = static_cast<int>(std::ceil((bar.left() + bar.top()) / kBetweenLines));
  const auto last = static_cast<int>(std::floor((bar.right() + bar.bottom()) / kBetweenLines));
  for (int n = first; n <= last; ++n) {
    const double sum = n * kBetweenLines;
    const double left = std::max(bar.left(), sum - bar.bottom());
    const double right = std::min(bar.right(), sum - bar.top());
    if (left < right) lines << QLineF(left, sum - left, right, sum - right);
  }
  return lines;
}

// The same mirrored at the bar's middle.
QVector<QLineF> fallingLines(const QRectF& bar) {
  QVector<QLineF> lines = risingLines(bar);
  const auto mirrored = [&](double x) { return bar.left() + bar.right() - x; };
  for (QLineF& line : lines)
    line = QLineF(mirrored(line.x1()), line.y1(), mirrored(line.x2()), line.y2());
  return lines;
}

}  // namespace

void HatchedBars::drawBar(QCPPainter* painter, const QRectF& bar) const {
  applyDefaultAntialiasingHint(painter);
  const QRectF whole = bar.normalized();
  painter->setPen(Qt::NoPen);
  if (fill_ == BarFill::Solid) {
    painter->setBrush(brush());
    painter->drawRect(whole);
  } else {
    painter->setPen(QPen(brush().color(), kLineWidth, Qt::SolidLine, Qt::FlatCap));
    if (fill_ != BarFill::FallingLines) painter->drawLines(risingLines(whole));
    if (fill_ != BarFill::RisingLines) painter->drawLines(fallingLines(whole));
  }
  painter->setPen(pen());
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(whole);
}

void HatchedBars::draw(QCPPainter* painter) {
  for (const QCPBarsData& point : *data()) drawBar(painter, getBarRect(point.key, point.value));
}

void HatchedBars::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
  constexpr double kShare = 0.67;  // as other bars have it
  QRectF icon(QPointF(), rect.size() * kShare);
  icon.moveCenter(rect.center());
  drawBar(painter, icon);
}

}  // namespace mirelund

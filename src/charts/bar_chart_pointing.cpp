// SPDX-License-Identifier: GPL-3.0-or-later
// A chart's bars by pointer and by keys.
#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "base/ui_text.h"
#include "charts/bar_chart_widget.h"

namespace mirelund {

int BarChart::barAt(QPoint position) const {
  if (!axisRect()->rect().contains(position)) return -1;
  const double key = xAxis->pixelToCoord(position.x());
  const auto category = std::llround(key);
  if (category < 1 || category > std::ssize(view_.categories)) return -1;
  const double within = (key - static_cast<double>(category)) / groupWidth() + 0.5;
  if (within < 0.0 || within >= 1.0) return -1;
  if (view_.stacked) return nearestInStack(static_cast<int>(category - 1), position.y());
  const auto series = static_cast<double>(view_.series.size());
  return static_cast<int>((static_cast<double>(category - 1) + within) * series);
}

int BarChart::nearestInStack(int category, int y) const {
  const auto series = static_cast<int>(view_.series.size());
  int nearest = -1;
  int least = 0;
  for (int s = 0; s < series; ++s) {
    if (view_.series[static_cast<std::size_t>(s)].values[static_cast<std::size_t>(category)] == 0.0)
      continue;
    const QRect bar = rectOfBar(category * series + s);
    const int beside = std::max({bar.top() - y, y - bar.bottom(), 0});
    if (nearest >= 0 && beside >= least) continue;
    nearest = category * series + s;
    least = beside;
  }
  return nearest;
}

QString BarChart::textAt(QPoint position) const {
  return textOfBar(barAt(position));
}

int BarChart::barCount() const {
  return static_cast<int>(view_.series.size() * view_.categories.size());
}

QString BarChart::textOfBar(int bar) const {
  if (bar < 0 || bar >= barCount()) return {};
  const auto place = static_cast<std::size_t>(bar);
  return toQString(pointText(view_, place % view_.series.size(), place / view_.series.size()));
}

QRect BarChart::rectOfBar(int bar) const {
  if (bar < 0 || bar >= barCount()) return {};
  const auto place = static_cast<std::size_t>(bar);
  const std::size_t series = place % view_.series.size();
  const std::size_t category = place / view_.series.size();
  const double width = barWidth();
  const double left = static_cast<double>(category + 1) - groupWidth() / 2 +
                      (view_.stacked ? 0.0 : width * static_cast<double>(series));
  const double base = barBase(view_, series, category);
  const QPointF corner(xAxis->coordToPixel(left),
                       yAxis->coordToPixel(base + view_.series[series].values[category]));
  const QPointF foot(xAxis->coordToPixel(left + width), yAxis->coordToPixel(base));
  return QRectF(corner, foot).normalized().toAlignedRect() | QRect(corner.toPoint(), QSize(1, 1));
}

void BarChart::choose(int bar) {
  chosen_ = bar;
  update();
  QToolTip::showText(mapToGlobal(rectOfBar(bar).topLeft()), plainToolTip(textOfBar(bar)), this);
  QAccessibleEvent event(this, QAccessible::Focus);
  event.setChild(bar);
  QAccessible::updateAccessibility(&event);
}

void BarChart::focusInEvent(QFocusEvent* event) {
  QCustomPlot::focusInEvent(event);
  update();
}

void BarChart::focusOutEvent(QFocusEvent* event) {
  QCustomPlot::focusOutEvent(event);
  QToolTip::hideText();
  update();
}

void BarChart::keyPressEvent(QKeyEvent* event) {
  const int last = barCount() - 1;
  const auto step = [&] {
    switch (event->key()) {
      case Qt::Key_Left:
      case Qt::Key_Up:
        return std::max(chosen_ - 1, 0);
      case Qt::Key_Right:
      case Qt::Key_Down:
        return std::min(chosen_ + 1, last);
      case Qt::Key_Home:
        return 0;
      case Qt::Key_End:
        return last;
      default:
        return -1;
    }
  };
  const int bar = last < 0 ? -1 : step();
  if (bar < 0)
    QCustomPlot::keyPressEvent(event);
  else
    choose(bar);
}

void BarChart::paintEvent(QPaintEvent* event) {
  QCustomPlot::paintEvent(event);
  if (!hasFocus() || chosen_ < 0) return;
  constexpr int kThick = 2;
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Text), kThick));
  painter.drawRect(rectOfBar(chosen_).adjusted(-2, -2, 2, 2));
}

void BarChart::mouseMoveEvent(QMouseEvent* event) {
  QCustomPlot::mouseMoveEvent(event);
  QToolTip::showText(event->globalPosition().toPoint(),
                     plainToolTip(textAt(event->position().toPoint())), this);
}

}  // namespace mirelund

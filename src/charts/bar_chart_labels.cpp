// SPDX-License-Identifier: GPL-3.0-or-later
// The names and numbers along a chart's axes, and the room that they ask for.
#include <QtMath>
#include <algorithm>
#include <cmath>
#include <vector>

#include "app/short_names.h"
#include "base/ui_text.h"
#include "charts/bar_chart_widget.h"

namespace mirelund {

namespace {

constexpr QMargins kLeastMargins(15, 15, 15, 15);

struct Labels {
  QStringList texts;
  double widest = 0.0;
};

Labels measured(const ChartView& view, const QFontMetricsF& metrics) {
  Labels labels;
  for (const std::string& category : view.categories) {
    labels.texts << toQString(category);
    labels.widest = std::max(labels.widest, metrics.horizontalAdvance(labels.texts.back()));
  }
  return labels;
}

}  // namespace

// Names that lean take height from the values, and marks of the values width from the
// names: twice, so that both know what the other has taken.
void BarChart::fitLabels() {
  if (view_.categories.empty()) return;
  constexpr int kPasses = 2;
  for (int pass = 0; pass < kPasses; ++pass) {
    axes_->setMinimumMargins(kLeastMargins);
    updateLayout();
    if (besideAxes_ != width() - axes_->width()) {
      besideAxes_ = width() - axes_->width();
      updateGeometry();
    }
    if (view_.managerButtons)
      fitNames();
    else
      fitNumbers(axes_->width() / xAxis->range().size());
    updateLayout();
    // The step that a ticker finds may be a third less than it was asked for.
    constexpr double kLinesToAMark = 1.7;
    constexpr int kMostMarks = 5;
    const double line = QFontMetricsF(yAxis->tickLabelFont()).height();
    yAxis->ticker()->setTickCount(
        std::clamp(static_cast<int>(axes_->height() / (kLinesToAMark * line)), 1, kMostMarks));
  }
}

// Numbers that would touch are left out, for they can be counted on.
void BarChart::fitNumbers(double slot) {
  const QFontMetricsF metrics(xAxis->tickLabelFont());
  const auto [labels, widest] = measured(view_, metrics);
  setCategories(labels, 0.0, labelStep(slot, widest + metrics.averageCharWidth()));
}

// Names lean upwards, each ending below its bar, where they do not fit side by side:
// no more than their letters' height asks for.
void BarChart::fitNames() {
  const QFontMetricsF metrics(xAxis->tickLabelFont());
  const auto [names, widest] = measured(view_, metrics);
  const double besideEachOther =
      axes_->width() / xAxis->range().size() - metrics.averageCharWidth();
  if (widest <= besideEachOther) return setCategories(names, 0.0);

  // What leaning names may have of the chart: a part of its height, and of its width to
  // the left of the first bar.
  constexpr double kHeightShare = 0.4;
  constexpr double kLeftShare = 0.3;
  const double left = std::max(kLeftShare * width(), static_cast<double>(axes_->left()));
  const double slot = (axes_->width() + axes_->left() - left) / xAxis->range().size();
  constexpr int kMostUpright = 90;
  int lean = 35;
  while (lean < kMostUpright && slot * std::sin(qDegreesToRadians(lean)) < metrics.height())
    lean += 5;
  const double sine = std::sin(qDegreesToRadians(lean));
  const double cosine = lean == kMostUpright ? 0.0 : std::cos(qDegreesToRadians(lean));
  const double tall = (kHeightShare * height() - metrics.height() * cosine) / sine;
  const auto beforeTick = [&](qsizetype i) { return (static_cast<double>(i) + 0.6) * slot; };
  std::vector<double> widths;
  for (qsizetype i = 0; i < names.size(); ++i) {
    const double longest = left + beforeTick(i) - metrics.height();
    widths.push_back(cosine > 0.0 ? std::min(tall, longest / cosine) : tall);
  }
  if (besideEachOther > *std::max_element(widths.begin(), widths.end()))
    return setCategories(shortNames(names, metrics, besideEachOther), 0.0);

  const QStringList labels = shortNames(names, metrics, widths);
  double beforeAxes = kLeastMargins.left();
  for (qsizetype i = 0; i < labels.size(); ++i)
    beforeAxes = std::max(beforeAxes, metrics.horizontalAdvance(labels[i]) * cosine +
                                          metrics.height() - beforeTick(i));
  QMargins margins = kLeastMargins;
  margins.setLeft(static_cast<int>(std::ceil(beforeAxes)));
  axes_->setMinimumMargins(margins);
  setCategories(labels, -lean);
}

void BarChart::setCategories(const QStringList& labels, double rotation, std::size_t every) {
  QMap<double, QString> ticks;
  const auto step = static_cast<qsizetype>(every);
  for (qsizetype i = step; i <= labels.size(); i += step)
    ticks[static_cast<double>(i)] = labels[i - 1];
  categories_->setTicks(ticks);
  xAxis->setTickLabelRotation(rotation);
}

QSize BarChart::minimumSizeHint() const {
  constexpr QSize kLeast(320, 220);
  constexpr int kLines = 12;
  const int line = fontMetrics().height();
  // Upright, a name is as wide as a line is high.
  const double names = view_.managerButtons ? xAxis->range().size() * line : 0.0;
  return QCustomPlot::minimumSizeHint().expandedTo(kLeast).expandedTo(
      {besideAxes_ + static_cast<int>(std::ceil(names)), kLines * line});
}

QSize BarChart::sizeHint() const {
  constexpr int kLines = 18;
  return minimumSizeHint().expandedTo({0, kLines * fontMetrics().height()});
}

}  // namespace mirelund

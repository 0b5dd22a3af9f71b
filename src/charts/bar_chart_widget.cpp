// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/bar_chart_widget.h"

#include <QMouseEvent>
#include <QToolTip>
#include <QtMath>
#include <algorithm>
#include <cmath>

#include "base/ui_text.h"

namespace mirelund {

namespace {

constexpr double kGroupWidth = 0.8;  // of a category, for all its bars together

// Marks of the value axis as the program writes numbers.
class ValueTicker : public QCPAxisTicker {
 public:
  explicit ValueTicker(ChartAxis axis) : axis_(axis) {}

 protected:
  double getTickStep(const QCPRange& range) override {
    step_ = leastTickStep(QCPAxisTicker::getTickStep(range));
    return step_;
  }
  QString getTickLabel(double tick, const QLocale& /*locale*/, QChar /*format*/,
                       int /*precision*/) override {
    return toQString(tickText(axis_, tick, step_));
  }

 private:
  ChartAxis axis_;
  double step_ = 1.0;
};

// Far apart in brightness too, so that they stay apart in a grey print.
QBrush seriesBrush(std::size_t series) {
  return series == 0 ? QBrush(QColor(0, 90, 156)) : QBrush(QColor(255, 178, 64));
}

}  // namespace

BarChart::BarChart(QWidget* parent)
    : QCustomPlot(parent), categories_(QSharedPointer<QCPAxisTickerText>::create()) {
  setMinimumSize(320, 220);
  QFont bold = font();
  bold.setBold(true);
  title_ = new QCPTextElement(this, "", bold);
  title_->setObjectName("ChartTitle");
  secondCaption_ = new QCPTextElement(this, "", font());
  secondCaption_->setObjectName("ChartSecondCaption");

  // From the top: title, axes, legend, second caption.
  plotLayout()->insertRow(0);
  plotLayout()->addElement(0, 0, title_);
  auto* legendRow = new QCPLayoutGrid;
  plotLayout()->addElement(2, 0, legendRow);
  legendRow->addElement(0, 0, legend);
  legendRow->setMargins(QMargins(0, 0, 0, 4));
  legend->setVisible(true);
  legend->setFillOrder(QCPLegend::foColumnsFirst);
  legend->setFont(font());
  plotLayout()->setRowStretchFactor(2, 0.001);
  plotLayout()->addElement(3, 0, secondCaption_);

  xAxis->setTicker(categories_);
  xAxis->setSubTicks(false);
  xAxis->grid()->setVisible(false);
  for (QCPAxis* axis : {xAxis, yAxis}) {
    axis->setTickLabelFont(font());
    axis->setLabelFont(font());
  }
  connect(this, &QCustomPlot::beforeReplot, this, &BarChart::fitCategories);
}

void BarChart::setView(ChartView view) {
  view_ = std::move(view);
  title_->setText(toQString(view_.title));
  secondCaption_->setText(toQString(view_.secondCaption));
  secondCaption_->setVisible(!view_.secondCaption.empty());
  xAxis->setLabel(toQString(view_.categoryTitle));
  yAxis->setLabel(toQString(view_.valueTitle));
  yAxis->setTicker(QSharedPointer<ValueTicker>::create(view_.axis));

  QStringList said;
  for (std::size_t s = 0; s < view_.series.size(); ++s)
    for (std::size_t c = 0; c < view_.categories.size(); ++c)
      said << toQString(pointText(view_, s, c));
  setAccessibleName(toQString(view_.title));
  setAccessibleDescription(said.join("; "));

  addBars();
  setRanges();
  setColors();
  step_ = 0;
  replot(QCustomPlot::rpQueuedReplot);
}

void BarChart::addBars() {
  clearPlottables();
  auto* group = new QCPBarsGroup(this);
  group->setSpacingType(QCPBarsGroup::stAbsolute);
  group->setSpacing(0);
  for (std::size_t s = 0; s < view_.series.size(); ++s) {
    const ChartSeries& series = view_.series[s];
    auto* bars = new QCPBars(xAxis, yAxis);
    bars->setName(toQString(series.name));
    bars->setWidth(kGroupWidth / static_cast<double>(view_.series.size()));
    bars->setBrush(seriesBrush(s));
    bars->setBarsGroup(group);
    QVector<QCPBarsData> points;
    for (std::size_t c = 0; c < series.values.size(); ++c)
      points.append(QCPBarsData(static_cast<double>(c + 1), series.values[c]));
    bars->data()->set(points, true);
  }
}

void BarChart::setRanges() {
  double low = 0.0;
  double high = 0.0;
  for (const ChartSeries& series : view_.series)
    for (const double value : series.values) {
      low = std::min(low, value);
      high = std::max(high, value);
    }
  if (low == high) high = 1.0;
  const double space = (high - low) * 0.06;
  yAxis->setRange(low < 0.0 ? low - space : 0.0, high > 0.0 ? high + space : 0.0);
  xAxis->setRange(0.4, static_cast<double>(view_.categories.size()) + 0.6);
}

void BarChart::setColors() {
  const QColor paper = palette().color(QPalette::Base);
  const QColor ink = palette().color(QPalette::Text);
  QColor grid = ink;
  grid.setAlphaF(0.25F);
  setBackground(QBrush(paper));
  title_->setTextColor(ink);
  secondCaption_->setTextColor(ink);
  legend->setBrush(QBrush(paper));
  legend->setTextColor(ink);
  legend->setBorderPen(QPen(grid));
  for (QCPAxis* axis : {xAxis, yAxis}) {
    axis->setBasePen(QPen(ink));
    axis->setTickPen(QPen(ink));
    axis->setSubTickPen(QPen(ink));
    axis->setTickLabelColor(ink);
    axis->setLabelColor(ink);
  }
  yAxis->grid()->setPen(QPen(grid, 1, Qt::DotLine));
  yAxis->grid()->setZeroLinePen(QPen(ink));
  for (int i = 0; i < plottableCount(); ++i) plottable(i)->setPen(QPen(ink, 1));
}

void BarChart::fitCategories() {
  if (view_.categories.empty()) return;
  const QFontMetricsF metrics(xAxis->tickLabelFont());
  double widest = 0.0;
  for (const std::string& category : view_.categories)
    widest = std::max(widest, metrics.horizontalAdvance(toQString(category)));
  // What the axis keeps of the width beside the marks of the value axis.
  constexpr double kAxisShare = 0.8;
  const double slot = width() * kAxisShare / xAxis->range().size();
  const std::size_t step = labelStep(slot, widest + metrics.averageCharWidth());
  if (step == step_) return;
  step_ = step;

  // Numbers that would touch are left out, for they can be counted on; names lean.
  const bool lean = view_.managerButtons && step > 1;
  constexpr double kLean = -35.0;  // upwards, so that a name ends below its bar
  constexpr int kNameColumns = 16;
  xAxis->setTickLabelRotation(lean ? kLean : 0.0);
  // A name that would stick out to the left is not drawn.
  const double longest = std::min(widest, metrics.averageCharWidth() * kNameColumns);
  constexpr int kLeast = 15;
  const int left = lean ? static_cast<int>(longest * std::cos(qDegreesToRadians(kLean))) : 0;
  axisRect()->setMinimumMargins({std::max(kLeast, left), kLeast, kLeast, kLeast});
  QMap<double, QString> ticks;
  for (std::size_t c = 0; c < view_.categories.size(); ++c)
    if (lean || (c + 1) % step == 0)
      ticks[static_cast<double>(c + 1)] =
          metrics.elidedText(toQString(view_.categories[c]), Qt::ElideRight,
                             lean ? metrics.averageCharWidth() * kNameColumns : widest + 1);
  categories_->setTicks(ticks);
}

void BarChart::setFineness(double ratio) {
  setBufferDevicePixelRatio(ratio);
  replot();
}

QString BarChart::textAt(QPoint position) const {
  if (!axisRect()->rect().contains(position)) return {};
  const double key = xAxis->pixelToCoord(position.x());
  const auto category = std::llround(key);
  if (category < 1 || category > std::ssize(view_.categories)) return {};
  const double within = (key - static_cast<double>(category)) / kGroupWidth + 0.5;
  if (within < 0.0 || within >= 1.0) return {};
  const auto series = static_cast<std::size_t>(within * static_cast<double>(view_.series.size()));
  return toQString(pointText(view_, series, static_cast<std::size_t>(category - 1)));
}

void BarChart::mouseMoveEvent(QMouseEvent* event) {
  QCustomPlot::mouseMoveEvent(event);
  QToolTip::showText(event->globalPosition().toPoint(),
                     plainToolTip(textAt(event->position().toPoint())), this);
}

void BarChart::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  setColors();
  replot();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/bar_chart_widget.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
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
  setFocusPolicy(Qt::StrongFocus);
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
  chosen_ = -1;
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
  setAccessibleName(toQString(view_.title.empty() ? view_.secondCaption : view_.title));
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

int BarChart::barAt(QPoint position) const {
  if (!axisRect()->rect().contains(position)) return -1;
  const double key = xAxis->pixelToCoord(position.x());
  const auto category = std::llround(key);
  if (category < 1 || category > std::ssize(view_.categories)) return -1;
  const double within = (key - static_cast<double>(category)) / kGroupWidth + 0.5;
  if (within < 0.0 || within >= 1.0) return -1;
  const auto series = static_cast<double>(view_.series.size());
  return static_cast<int>((static_cast<double>(category - 1) + within) * series);
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
  const double width = kGroupWidth / static_cast<double>(view_.series.size());
  const double left =
      static_cast<double>(category + 1) - kGroupWidth / 2 + width * static_cast<double>(series);
  const QPointF corner(xAxis->coordToPixel(left),
                       yAxis->coordToPixel(view_.series[series].values[category]));
  const QPointF foot(xAxis->coordToPixel(left + width), yAxis->coordToPixel(0.0));
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
  // Not on paper, which is drawn finer than the screen.
  if (!hasFocus() || chosen_ < 0 || bufferDevicePixelRatio() != devicePixelRatioF()) return;
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

void BarChart::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  setColors();
  replot();
}

}  // namespace mirelund

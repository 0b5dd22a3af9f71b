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
#include <vector>

#include "app/short_names.h"
#include "base/ui_text.h"
#include "charts/bar_colors.h"
#include "charts/hatched_bars.h"

namespace mirelund {

namespace {

constexpr double kGroupWidth = 0.8;  // of a category, for all its bars together
constexpr double kStackWidth = 0.6;
constexpr QMargins kLeastMargins(15, 15, 15, 15);

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

}  // namespace

BarChart::BarChart(QWidget* parent)
    : QCustomPlot(parent),
      axes_(axisRect()),
      title_(new QCPTextElement(this)),
      secondCaption_(new QCPTextElement(this)),
      legendRow_(new QCPLayoutGrid),
      categories_(QSharedPointer<QCPAxisTickerText>::create()) {
  // Labels kept as pixels would be enlarged on paper and on finer screens.
  setPlottingHint(QCP::phCacheLabels, false);
  setFocusPolicy(Qt::StrongFocus);
  title_->setObjectName("ChartTitle");
  secondCaption_->setObjectName("ChartSecondCaption");
  plotLayout()->addElement(legendRow_);
  legendRow_->addElement(0, 0, legend);
  legendRow_->setMargins(QMargins(8, 0, 8, 6));
  legend->setVisible(true);
  legend->setFillOrder(QCPLegend::foColumnsFirst);

  xAxis->setTicker(categories_);
  xAxis->setSubTicks(false);
  xAxis->grid()->setVisible(false);
  setFonts(Ground::Screen);
  connect(this, &QCustomPlot::beforeReplot, this, &BarChart::fitLabels);
}

// From the top: title, axes, legend, second caption; what is empty takes no place.
void BarChart::stackElements() {
  const std::initializer_list<QCPLayoutElement*> all = {title_, axes_, legendRow_, secondCaption_};
  for (QCPLayoutElement* element : all)
    if (element->layout() == plotLayout()) plotLayout()->take(element);
  plotLayout()->simplify();
  title_->setVisible(!title_->text().isEmpty());
  secondCaption_->setVisible(!secondCaption_->text().isEmpty());
  int row = 0;
  for (QCPLayoutElement* element : all) {
    if (!element->visible()) continue;
    plotLayout()->addElement(row, 0, element);
    plotLayout()->setRowStretchFactor(row, element == axes_ ? 1.0 : 0.001);
    ++row;
  }
}

void BarChart::setView(ChartView view) {
  view_ = std::move(view);
  chosen_ = -1;
  title_->setText(toQString(view_.title));
  secondCaption_->setText(toQString(view_.secondCaption));
  stackElements();
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
  setColors(Ground::Screen);
  replot(QCustomPlot::rpQueuedReplot);
}

// Of a bar, in categories.
double BarChart::barWidth() const {
  return view_.stacked ? kStackWidth : kGroupWidth / static_cast<double>(view_.series.size());
}

void BarChart::addBars() {
  clearPlottables();
  auto* group = new QCPBarsGroup(this);
  group->setSpacingType(QCPBarsGroup::stAbsolute);
  group->setSpacing(0);
  QCPBars* below = nullptr;
  for (std::size_t s = 0; s < view_.series.size(); ++s) {
    const ChartSeries& series = view_.series[s];
    QCPBars* const bars = view_.stacked || view_.series.size() > 2
                              ? new HatchedBars(xAxis, yAxis, barFill(s))
                              : new QCPBars(xAxis, yAxis);
    bars->setName(toQString(series.name));
    bars->setWidth(barWidth());
    if (view_.stacked)
      bars->moveAbove(std::exchange(below, bars));
    else
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
  for (std::size_t s = 0; s < view_.series.size(); ++s)
    for (std::size_t c = 0; c < view_.series[s].values.size(); ++c) {
      const double end = barBase(view_, s, c) + view_.series[s].values[c];
      low = std::min(low, end);
      high = std::max(high, end);
    }
  if (low == high) high = 1.0;
  const double space = (high - low) * 0.06;
  yAxis->setRange(low < 0.0 ? low - space : 0.0, high > 0.0 ? high + space : 0.0);
  xAxis->setRange(0.4, static_cast<double>(view_.categories.size()) + 0.6);
}

void BarChart::setFonts(Ground ground) {
  QFont plain = font();
  if (ground != Ground::Screen) {
    // Sized and spaced by the chart's units and not by the paper's points.
    plain.setPixelSize(fontInfo().pixelSize());
    plain.setHintingPreference(QFont::PreferNoHinting);
  }
  QFont bold = plain;
  bold.setBold(true);
  title_->setFont(bold);
  secondCaption_->setFont(plain);
  legend->setFont(plain);
  for (QCPAxis* axis : {xAxis, yAxis}) {
    axis->setTickLabelFont(plain);
    axis->setLabelFont(plain);
  }
}

void BarChart::setColors(Ground ground) {
  const bool screen = ground == Ground::Screen;
  const QColor paper = screen ? palette().color(QPalette::Base) : Qt::white;
  const QColor ink = screen ? palette().color(QPalette::Text) : Qt::black;
  // A quarter of the ink: opaque, since not every printer knows transparency.
  const auto faint = [](int on, int of) { return (3 * on + of) / 4; };
  const QColor grid(faint(paper.red(), ink.red()), faint(paper.green(), ink.green()),
                    faint(paper.blue(), ink.blue()));
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
  for (int i = 0; i < plottableCount(); ++i) {
    const auto series = static_cast<std::size_t>(i);
    plottable(i)->setPen(QPen(ink, 1));
    plottable(i)->setBrush(ground == Ground::GreyPaper ? greyBarColor(series)
                                                       : barColor(series, paper));
  }
}

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
  QStringList labels;
  double widest = 0.0;
  for (const std::string& category : view_.categories) {
    labels << toQString(category);
    widest = std::max(widest, metrics.horizontalAdvance(labels.back()));
  }
  setCategories(labels, 0.0, labelStep(slot, widest + metrics.averageCharWidth()));
}

// Names lean upwards, each ending below its bar, where they do not fit side by side:
// no more than their letters' height asks for.
void BarChart::fitNames() {
  const QFontMetricsF metrics(xAxis->tickLabelFont());
  QStringList names;
  double widest = 0.0;
  for (const std::string& category : view_.categories) {
    names << toQString(category);
    widest = std::max(widest, metrics.horizontalAdvance(names.back()));
  }
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

void BarChart::print(QCPPainter& painter, bool color) {
  const Ground paper = color ? Ground::Paper : Ground::GreyPaper;
  setFonts(paper);
  setColors(paper);
  fitLabels();
  painter.setMode(QCPPainter::pmVectorized);
  toPainter(&painter, width(), height());
  setFonts(Ground::Screen);
  setColors(Ground::Screen);
  replot();
}

QImage BarChart::image(int scale) {
  QImage image(size() * scale, QImage::Format_RGB32);
  image.fill(Qt::white);
  QCPPainter painter(&image);
  painter.scale(scale, scale);
  print(painter, true);
  return image;
}

int BarChart::barAt(QPoint position) const {
  if (!axisRect()->rect().contains(position)) return -1;
  const double key = xAxis->pixelToCoord(position.x());
  const auto category = std::llround(key);
  if (category < 1 || category > std::ssize(view_.categories)) return -1;
  const double group = view_.stacked ? kStackWidth : kGroupWidth;
  const double within = (key - static_cast<double>(category)) / group + 0.5;
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
  const double left =
      static_cast<double>(category + 1) -
      (view_.stacked ? width / 2 : kGroupWidth / 2 - width * static_cast<double>(series));
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

void BarChart::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() == QEvent::PaletteChange)
    setColors(Ground::Screen);
  else if (event->type() == QEvent::FontChange)
    setFonts(Ground::Screen);
  else
    return;
  updateGeometry();
  replot();
}

}  // namespace mirelund

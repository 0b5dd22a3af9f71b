// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/bar_chart_widget.h"

#include <algorithm>
#include <utility>

#include "base/ui_text.h"
#include "charts/bar_colors.h"
#include "charts/hatched_bars.h"

namespace mirelund {

namespace {

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

double BarChart::groupWidth() const {
  return view_.stacked ? 0.6 : 0.8;
}

double BarChart::barWidth() const {
  return view_.stacked ? groupWidth() : groupWidth() / static_cast<double>(view_.series.size());
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

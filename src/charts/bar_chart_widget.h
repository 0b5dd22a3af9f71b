// SPDX-License-Identifier: GPL-3.0-or-later
// A bar chart of one or several series.
#pragma once

#include <qcustomplot.h>

#include "charts/chart_data.h"

namespace mirelund {

/// Draws a ChartView: title, bars, gridlines, axis titles, a legend, and a second
/// caption below. Pointing at a bar shows its exact value, and so do the arrow keys,
/// Home and End, which walk the bars while the chart has the focus. The colours follow
/// the window's palette, the letters its font. Labels never touch: numbers are left
/// out, names lean, and are shortened in the middle where they are too long for that.
/// Stacked series, and more than two, are hatched: none needs its colour.
class BarChart : public QCustomPlot {
  Q_OBJECT

 public:
  explicit BarChart(QWidget* parent);

  void setView(ChartView view);

  /// Draws the chart as lines and letters, of the widget's size in the painter's units;
  /// black on white, in greys unless `color`.
  void print(QCPPainter& painter, bool color);

  /// As many pixels for one of the widget's, black and in colour on white.
  QImage image(int scale);

  /// What the labels need at the desktop's font, and what shows the values well.
  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

  /// What pointing at `position` shows; empty beside the bars.
  QString textAt(QPoint position) const;

  const ChartView& view() const { return view_; }

  /// The bars, category by category and in each series by series, counted from 0.
  int barCount() const;
  /// What pointing at a bar shows; empty for one that is not there.
  QString textOfBar(int bar) const;
  /// Where it is drawn; a bar of no height has a line's.
  QRect rectOfBar(int bar) const;
  /// Whose place this is, from the top of the chart to its bottom (of stacked ones, the
  /// nearest of those that have a height); -1 beside the bars.
  int barAt(QPoint position) const;
  /// The one that the keys have come to; -1 before that.
  int chosenBar() const { return chosen_; }

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// On what is drawn: the window, or white paper.
  enum class Ground : std::uint8_t { Screen, Paper, GreyPaper };

  void stackElements();
  void addBars();
  void setRanges();
  void setFonts(Ground ground);
  void setColors(Ground ground);
  void fitLabels();
  void fitNumbers(double slot);
  void fitNames();
  void setCategories(const QStringList& labels, double rotation, std::size_t every = 1);
  /// In categories: of a bar, and of all the bars of a category together.
  double barWidth() const;
  double groupWidth() const;
  int nearestInStack(int category, int y) const;
  void choose(int bar);

  ChartView view_;
  QCPAxisRect* axes_;
  QCPTextElement* title_;
  QCPTextElement* secondCaption_;
  QCPLayoutGrid* legendRow_;
  QSharedPointer<QCPAxisTickerText> categories_;
  int besideAxes_ = 0;  // of the width
  int chosen_ = -1;
};

}  // namespace mirelund

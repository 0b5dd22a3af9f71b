// SPDX-License-Identifier: GPL-3.0-or-later
// A bar chart of one or several series.
#pragma once

#include <qcustomplot.h>

#include "charts/chart_data.h"

namespace mirelund {

/// Draws a ChartView: title, bars, gridlines, axis titles, a legend, and a second
/// caption below. Pointing at a bar shows its exact value. The colours follow the
/// window's palette.
class BarChart : public QCustomPlot {
  Q_OBJECT

 public:
  explicit BarChart(QWidget* parent);

  void setView(ChartView view);

  /// Pixels drawn for one of the screen's.
  void setFineness(double ratio);

  /// What pointing at `position` shows; empty beside the bars.
  QString textAt(QPoint position) const;

  const ChartView& view() const { return view_; }

 protected:
  void mouseMoveEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void addBars();
  void setRanges();
  void setColors();
  void fitCategories();

  ChartView view_;
  QCPTextElement* title_;
  QCPTextElement* secondCaption_;
  QSharedPointer<QCPAxisTickerText> categories_;
  std::size_t step_ = 0;
};

}  // namespace mirelund

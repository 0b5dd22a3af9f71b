// SPDX-License-Identifier: GPL-3.0-or-later
// The chart window: draws what the last calculation or valuation left behind, or
// what it is handed.
#pragma once

#include <QDialog>
#include <functional>

#include "charts/chart_data.h"

class QCPPainter;
class QPushButton;

namespace mirelund {

class BarChart;
class Prompts;
class PrintTarget;

class PQGraph : public QDialog {
  Q_OBJECT

 public:
  /// What Global's chart selectors ask for.
  PQGraph(Global& global, Prompts& prompts, PrintTarget& printing, QWidget* over);
  /// A view that is finished: no Global is read or written.
  PQGraph(const ChartView& view, Prompts& prompts, PrintTarget& printing, QWidget* over);

 private:
  void CVGainDollars_Click() { showManagerView(ManagerView::GainDollars); }
  void CVGainPercent_Click() { showManagerView(ManagerView::GainPercent); }
  void CVTotValue_Click() { showManagerView(ManagerView::TotalValue); }
  void PQGSave_Click();
  void PQGCopy_Click();
  void PQGPrint_Click();
  void PQGExit_Click();

  using ViewOf = std::function<ChartView(ManagerView)>;
  PQGraph(ViewOf viewOf, Prompts& prompts, PrintTarget& printing, QWidget* over);

  void Form_Load();
  void showManagerView(ManagerView view);
  void show(ChartView view);
  using QDialog::show;
  QPushButton* addButton(QLayout* row, const char* name, const QString& caption,
                         void (PQGraph::*clicked)());
  QSize openingSize() const;
  void drawPrinted(QCPPainter& painter, double width, bool color);

  ViewOf viewOf_;
  Prompts& prompts_;
  PrintTarget& printing_;
  BarChart* MSChart1_;
  QList<QPushButton*> managerButtons_;
  QList<QPushButton*> takingAlong_;  ///< not on paper
};

/// Shows a view in a chart window over `over` and waits until it is closed.
void showChart(const ChartView& view, Prompts& prompts, PrintTarget& printing, QWidget* over);

}  // namespace mirelund

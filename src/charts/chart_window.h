// SPDX-License-Identifier: GPL-3.0-or-later
// The chart window: draws what the last calculation or valuation left behind.
#pragma once

#include <QDialog>

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
  PQGraph(Global& global, Prompts& prompts, PrintTarget& printing, QWidget* over);

 private:
  void CVGainDollars_Click() { showManagerView(ManagerView::GainDollars); }
  void CVGainPercent_Click() { showManagerView(ManagerView::GainPercent); }
  void CVTotValue_Click() { showManagerView(ManagerView::TotalValue); }
  void PQGPrint_Click();
  void PQGExit_Click();

  void Form_Load();
  ChartView viewOf(ManagerView manager);
  void showManagerView(ManagerView view);
  void show(ChartView view);
  using QDialog::show;
  QPushButton* addButton(QLayout* row, const char* name, const QString& caption,
                         void (PQGraph::*clicked)());
  QSize openingSize() const;
  void drawPrinted(QCPPainter& painter, double width, bool color);

  Global& global_;
  Prompts& prompts_;
  PrintTarget& printing_;
  BarChart* MSChart1_;
  QList<QPushButton*> managerButtons_;
};

}  // namespace mirelund

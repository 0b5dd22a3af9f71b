// SPDX-License-Identifier: GPL-3.0-or-later
// The calculator window: six pages and the report box that they share.
#pragma once

#include <QWidget>
#include <functional>
#include <span>
#include <vector>

#include "app/calculator_page.h"
#include "app/page_holder.h"
#include "base/file_store.h"

class QPushButton;
class QTabWidget;

namespace mirelund {

class ActionMenu;
class BoxFocus;
class PrintTarget;
class ReportBox;

class PQInvest : public QWidget, private PageHost {
  Q_OBJECT

 public:
  /// What the window is made with: the pages, in tab order, which of them it opens
  /// with, and the way out to the person, the printer, the chart and the disk.
  struct Parts {
    Global& global;
    Prompts& prompts;
    PrintTarget& printing;
    std::span<const CalculatorPageEntry> pages;
    CalculatorPageIndex startPage;
    std::function<void(QWidget* over)> showChart;
    FileStore& files = systemFiles();
  };

  explicit PQInvest(const Parts& parts);

 private:
  void Form_Load();
  void SSTab1_Click(int index);
  void AllGraphs_Click();
  void HowToUse_Click();
  void ClearResults_Click();
  void ExitProgram_Click();

  Global& global() override { return parts_.global; }
  Prompts& prompts() override { return parts_.prompts; }
  PrintTarget& printing() override { return parts_.printing; }
  bool leaveFocused() override;
  void click(QAbstractButton* button) override;
  void moveFocusTo(QWidget* control) override;
  void afterClick(std::function<void()> action) override;
  void show(const Outcome& outcome) override;
  void emptyReport() override;
  void print() override;
  void exportTable();
  using QWidget::show;

  CalculatorPage* page(int index);
  QWidget* makeLeftSide();
  ActionMenu* makeActions();
  QPushButton* addButton(const char* name, const QString& caption, void (PQInvest::*clicked)());

  Parts parts_;
  BoxFocus* boxFocus_;
  QTabWidget* SSTab1_;
  std::vector<PageHolder<CalculatorPage>*> pages_;
  ReportBox* Results_;
  /// The report is on screen alone.
  bool handedOver_ = false;
  /// What it shows, where that is one.
  ReportTable table_;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The investment manager's window: its pages, and what is seen from all of them.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "app/page_holder.h"
#include "manager/manager_page.h"

class QSessionManager;
class QTabWidget;

namespace mirelund {

class ActionMenu;
class BoxFocus;
class FilePage;
class PrintTarget;

class PQManagement : public QWidget, private ManagerHost {
  Q_OBJECT

 public:
  /// The ways out to the person, the printer, the chart, the insights and the disk.
  struct Parts {
    Global& global;
    Prompts& prompts;
    PrintTarget& printing;
    std::function<void(QWidget* over)> showChart;
    std::function<void(QWidget* over, const Manager& manager)> showInsights;
    FileStore& files = systemFiles();
  };

  explicit PQManagement(const Parts& parts);

  /// Asks about unsaved changes, where there are any: false when the person wants to
  /// go back to them.
  bool mayEnd() { return mayDiscard(); }

  /// The desktop's session is about to end: true when it must not. Only where
  /// something unsaved would be lost is `mayAsk` called, which may wait until the
  /// person can be asked; false from it lets the session end unasked.
  bool keepsSession(const std::function<bool()>& mayAsk);

 protected:
  void closeEvent(QCloseEvent* event) override;
  /// A data file is opened where it is dropped.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void Form_Load();
  /// Asks before unsaved changes are given up; every way of closing comes here.
  void Form_QueryUnload(QCloseEvent* event);
  void SSTab2_Click(int index);
  void endSession(QSessionManager& session);

  Manager& manager() override { return manager_; }
  Global& global() override { return parts_.global; }
  Prompts& prompts() override { return parts_.prompts; }
  QWidget* over() override { return this; }
  bool leaveFocused() override;
  void tell(Message message) override;
  bool ask(Question question, const std::string& recordNumber) override;
  bool mayDiscard() override;
  void showCounters() override;
  /// The file's name, and whether it has changes.
  void showTitle();
  void showEntryPage() override;
  void showChart() override;
  void print(QString report) override;
  void exportReport(const SheetMade& report) override;
  void leave() override;

  ManagerPage* page(int index);
  ActionMenu* makeActions();
  /// Undoes or redoes a step of the database.
  void restore(Direction way);
  void makePages();
  QLayout* makeCounters();
  /// Choosing a file page with the mouse starts it, also when it is shown.
  void startFilePage(int index);

  Parts parts_;
  Manager manager_;
  BoxFocus* boxFocus_;
  ActionMenu* actions_;
  QTabWidget* SSTab2_;
  std::vector<PageHolder<ManagerPage>*> pages_;
  QLabel* ENumFunds_;
  QLabel* ENumRec_;
  QLabel* EDatabase_;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The insights window: gains, returns and years as reports, of the manager's records at
// the prices typed there.
#pragma once

#include <QDialog>
#include <array>
#include <optional>
#include <vector>

#include "app/global.h"
#include "app/input_boxes.h"
#include "base/file_store.h"
#include "insights/insights.h"

class QButtonGroup;
class QHBoxLayout;
class QLabel;
class QTabWidget;

namespace mirelund {

class BoxFocus;
class ElidedLine;
class Manager;
class PrintTarget;
class Prompts;
class ReportBox;
class ValuationDateEdit;

/// Changes nothing of the manager's or of what crosses windows; modal, so that the
/// records and prices stay as they are while it stands.
class PQInsights : public QDialog {
  Q_OBJECT

 public:
  struct Parts {
    const Manager& manager;
    Global& global;  ///< for what messages name
    Prompts& prompts;
    PrintTarget& printing;
    FileStore& files = systemFiles();
  };

  PQInsights(const Parts& parts, QWidget* over);

  /// What refuses the records, if anything: the window is not to be opened then.
  Message refused() const { return shown_.message; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void IVDate_Left();
  void IVMethod_Click(int index);
  void IVTabs_Click(int index);
  void IVGraph_Click();
  void IVPrint_Click();
  void IVExport_Click();
  void IVExit_Click();

  QLayout* makeChoices();
  void makePages();
  QLayout* makeButtons();
  void makeKeys();
  QPushButton* addButton(QHBoxLayout* row, const char* name, const QString& caption,
                         void (PQInsights::*clicked)());

  /// The later of today and the last record.
  Date firstDate() const;
  /// Takes the date typed; one before firstDate, or none, goes back to that. What is no
  /// date is refused.
  BoxLeft leaveDate(std::string_view text);
  InsightsAsked asked() const;
  InsightsPage page() const;
  ReportBox* report() const;
  /// Works everything out anew and shows the page in view.
  void recalculate();
  void showPage();
  void copy();
  bool leaveFocused();
  void tell(Message message);

  Parts parts_;
  BoxState boxes_;  ///< its own: what is typed here is no edit of another window
  std::vector<std::optional<Currency>> prices_;
  Date date_;
  CostMethod method_ = CostMethod::AverageCost;
  InsightsShown shown_;
  Date workedOut_;  ///< the date that it is of

  BoxFocus* focus_;
  ValuationDateEdit* IVDate_;
  QButtonGroup* methods_;
  QLabel* sentence_;
  QTabWidget* IVTabs_;
  std::array<ReportBox*, kInsightsPages.size()> reports_{};
  ElidedLine* lacking_;
};

/// Opens the window over `over`, which owns it until it is closed; tells the message
/// instead where the records are refused. Nobody waits for it.
void openInsights(const PQInsights::Parts& parts, QWidget* over);

}  // namespace mirelund

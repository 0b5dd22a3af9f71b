// SPDX-License-Identifier: GPL-3.0-or-later
// The payment schedule's window: a mortgage as the page shows it, payment by payment.
#pragma once

#include <QDialog>
#include <array>
#include <string_view>

#include "app/global.h"
#include "calc/mortgage_schedule.h"

class QButtonGroup;
class QGridLayout;
class QGroupBox;
class QLayout;
class QPushButton;

namespace mirelund {

class BoxEdit;
class BoxFocus;
class PrintTarget;
class Prompts;
class ReportBox;

/// Touches nothing of the page below it: its boxes store in a state of its own, its
/// report and its chart are nowhere else.
class PQSchedule : public QDialog {
  Q_OBJECT

 public:
  /// `mortgage` is what the page's results were solved from.
  PQSchedule(const MortgageInput& mortgage, Prompts& prompts, PrintTarget& printing, QWidget* over);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void SCKind_Click(ScheduleKind kind);
  void SCGraph_Click();
  void SCPrint_Click();
  void SCExport_Click();
  void SCExit_Click();

  QGroupBox* makeKinds();
  BoxEdit* addBox(QGridLayout* grid, std::string_view name);
  QPushButton* addButton(QLayout* row, const char* name, const QString& caption,
                         void (PQSchedule::*clicked)());
  void boxLeft();
  void calculate();

  Prompts& prompts_;
  PrintTarget& printing_;
  BoxState boxes_;
  ScheduleInput input_;
  ShownSchedule shown_;

  BoxFocus* boxFocus_;
  QButtonGroup* SCKind_ = nullptr;
  BoxEdit* SCExtra_ = nullptr;
  BoxEdit* SCYearly_ = nullptr;
  ReportBox* SCResults_ = nullptr;
  /// Need a schedule.
  std::array<QPushButton*, 3> takingAlong_{};
};

}  // namespace mirelund

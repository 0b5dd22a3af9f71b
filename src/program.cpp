// SPDX-License-Identifier: GPL-3.0-or-later
#include "program.h"

#include <QApplication>
#include <QDialog>
#include <QFontDatabase>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>

#include "app/calculator_window.h"
#include "calc/pages.h"
#include "charts/chart_window.h"
#include "dialogs/prompts.h"
#include "dialogs/standing_dialog.h"
#include "insights/insights_window.h"
#include "manager/manager_window.h"

namespace mirelund {

Program::Program(Prompts& prompts, PrintTarget& printing, Global& global)
    : global_(global), start_(windows(prompts, printing)) {}

PQStart::Windows Program::windows(Prompts& prompts, PrintTarget& printing) {
  const auto showChart = [&](QWidget* over) {
    if (prompts.cancelsAll()) return;
    StandingDialog<PQGraph>(global_, prompts, printing, over).wait();
  };
  const auto showInsights = [&](QWidget* over, const Manager& manager) {
    openInsights({manager, global_, prompts, printing}, over);
  };
  return {
      [=, this, &prompts, &printing] {
        return new PQInvest({global_, prompts, printing, calculatorPages(), kStartPage, showChart});
      },
      [=, this, &prompts, &printing] {
        manager_ = new PQManagement({global_, prompts, printing, showChart, showInsights});
        return manager_.data();
      }};
}

void Program::end() {
  if (ending_) return;
  ending_ = true;
  global_.dialogs.cancelsAll = true;
  cancelDialogs();
}

void Program::cancelDialogs() {
  if (QWidget* popup = QApplication::activePopupWidget())
    popup->close();
  else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
    dialog->reject();
  // What waits for a dialog goes on first, and may have another one under it.
  constexpr int kOwnLoop = 1;
  if (QThread::currentThread()->loopLevel() > kOwnLoop ||
      QApplication::activeModalWidget() != nullptr) {
    constexpr int kSoon = 5;
    QTimer::singleShot(kSoon, this, &Program::cancelDialogs);
    return;
  }
  global_.dialogs.cancelsAll = false;
  const auto asked = qScopeGuard([this] { ending_ = false; });
  if (manager_ == nullptr || manager_->mayEnd()) QApplication::exit(0);
}

void useProgramFont() {
  const QString family = "MS Sans Serif";
  if (!QFontDatabase::hasFamily(family)) return;
  QFont font = QApplication::font();
  font.setFamily(family);
  QApplication::setFont(font);
}

}  // namespace mirelund

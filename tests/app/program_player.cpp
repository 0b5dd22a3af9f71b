// SPDX-License-Identifier: GPL-3.0-or-later
// Linked with the program's own main: presses its buttons from within, as the
// variable MIRELUND_PLAY says ("StartCalc Alt+C, ExitProgram Mouse"), each when it
// is there. "PQStart Close" closes that window.
#include <QTimer>
#include <cstdlib>

#include "app/pressing.h"

namespace mirelund::testing {
namespace {

constexpr int kNothingToPress = 9;
constexpr int kPatienceMs = 20'000;

QWidget* find(const QString& name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible()) continue;
    if (window->objectName() == name) return window;
    if (auto* control = window->findChild<QWidget*>(name)) return control;
  }
  return nullptr;
}

void play() {
  auto* timer = new QTimer(qApp);
  timer->callOnTimeout([steps = qEnvironmentVariable("MIRELUND_PLAY").split(", ")]() mutable {
    if (steps.isEmpty()) return;
    const QStringList step = steps.front().split(' ');
    QWidget* control = find(step.value(0));
    if (control == nullptr) return;
    if (!control->isActiveWindow()) {
      control->activateWindow();
      return;
    }
    steps.removeFirst();
    if (step.value(1) == "Close")
      control->close();
    else if (auto* tabs = qobject_cast<QTabWidget*>(control))
      tabs->setCurrentIndex(step.value(1).toInt());
    else
      press(qobject_cast<QPushButton*>(control), step.value(1));
  });
  timer->start(10);
  QTimer::singleShot(kPatienceMs, [] { std::_Exit(kNothingToPress); });
}
Q_COREAPP_STARTUP_FUNCTION(play)

}  // namespace
}  // namespace mirelund::testing

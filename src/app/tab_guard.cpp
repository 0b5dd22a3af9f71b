// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tab_guard.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTabBar>
#include <QTabWidget>
#include <utility>

#include "app/box_focus.h"

namespace mirelund {

namespace {

bool turnsPage(const QEvent& event) {
  if (event.type() == QEvent::Shortcut || event.type() == QEvent::Wheel) return true;
  if (event.type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  const bool isTab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
  return isTab && key.modifiers().testFlag(Qt::ControlModifier);
}

}  // namespace

TabGuard::TabGuard(QTabWidget* tabs, BoxFocus* focus) : QObject(tabs), tabs_(tabs), focus_(focus) {
  tabs->installEventFilter(this);
  tabs->tabBar()->installEventFilter(this);
}

bool TabGuard::eventFilter(QObject* watched, QEvent* event) {
  const bool isPress = event->type() == QEvent::MouseButtonPress;
  const bool isMouse = isPress || event->type() == QEvent::MouseButtonRelease;
  // The tabs hear of their own end too, when they are no tabs any more: not to be asked then.
  if (isMouse && watched == tabs_->tabBar()) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const int tab = mouse->button() == Qt::LeftButton ? tabs_->tabBar()->tabAt(mouse->pos()) : -1;
    return isPress ? pressed(tab) : released(tab);
  }
  return turnsPage(*event) && refused(focus_->leaveNow());
}

bool TabGuard::pressed(int tab) {
  pressed_ = tab;
  held_ = tab >= 0 && tab != tabs_->currentIndex() && focus_->leaveUntold();
  return held_;
}

bool TabGuard::released(int tab) {
  const bool held = std::exchange(held_, false);
  const bool again = tab >= 0 && tab == std::exchange(pressed_, -1);
  const bool turns = !held || !refused(focus_->tellNow());
  if (held && turns && again) tabs_->setCurrentIndex(tab);
  if (turns && again) {
    // When the tabs are done with the mouse: a dialog has a loop of its own.
    QMetaObject::invokeMethod(
        this,
        [this, tab] {
          if (tabs_->currentIndex() == tab) emit clicked(tab);
        },
        Qt::QueuedConnection);
  }
  return held;
}

bool TabGuard::refused(bool accepted) {
  if (!accepted) focus_->moveOn(tabs_->tabBar());
  return !accepted;
}

}  // namespace mirelund

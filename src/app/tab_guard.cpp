// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tab_guard.h"

#include <QMouseEvent>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <utility>

#include "app/box_focus.h"

namespace mirelund {

namespace {

bool turnsPage(const QEvent& event) {
  return event.type() == QEvent::Shortcut || event.type() == QEvent::Wheel;
}

struct TurningKey {
  QKeyCombination key;
  int pages;
};

// Shortcuts, because lists, reports and what stands beside the pages keep their keys.
constexpr TurningKey kTurningKeys[] = {
    {Qt::CTRL | Qt::Key_Tab, 1},
    {Qt::CTRL | Qt::Key_PageDown, 1},
    {Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1},
    {Qt::CTRL | Qt::Key_PageUp, -1},
};

}  // namespace

TabGuard::TabGuard(QTabWidget* tabs, BoxFocus* focus) : QObject(tabs), tabs_(tabs), focus_(focus) {
  tabs->installEventFilter(this);
  tabs->tabBar()->installEventFilter(this);
  for (const TurningKey& turning : kTurningKeys)
    connect(new QShortcut(turning.key, tabs->window()), &QShortcut::activated, this,
            [this, pages = turning.pages] { turn(pages); });
}

void TabGuard::turn(int pages) {
  if (refused(focus_->leaveNow())) return;
  tabs_->setCurrentIndex((tabs_->currentIndex() + pages + tabs_->count()) % tabs_->count());
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

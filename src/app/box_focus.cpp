// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/box_focus.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QTimer>
#include <utility>

#include "app/filtered_edit.h"

namespace mirelund {

namespace {

bool isMouseDown() {
  return QGuiApplication::mouseButtons() != Qt::NoButton;
}

}  // namespace

BoxFocus::BoxFocus(QWidget* window, std::function<void(Message)> tell)
    : QObject(window), window_(window), tell_(std::move(tell)) {
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*old*/, QWidget* now) { follow(now); });
}

void BoxFocus::follow(QWidget* now) {
  if (now == nullptr || now == inside_ || now->window() != window_) return;
  if (qobject_cast<QMenuBar*>(now) != nullptr) return;
  const QPointer<QWidget> before = std::exchange(inside_, now);
  if (before != nullptr) leave(before);
  // What a leave told may have moved the focus on.
  auto* box = qobject_cast<FilteredEdit*>(now);
  if (inside_ == now && box != nullptr) box->enter();
}

void BoxFocus::leave(QWidget* control) {
  if (auto* box = qobject_cast<FilteredEdit*>(control)) {
    const BoxLeft gone = box->leave();
    if (gone.message != Message::None) {
      refused_ = gone.refused;
      untold_.push_back({gone.message, box});
      if (!leaving_ && isMouseDown())
        watchMouse();
      else if (!leaving_)
        tellNow();
    }
  }
  emit left(control);
}

bool BoxFocus::leaveUntold() {
  const QScopedValueRollback leaving(leaving_, true);
  if (inside_ != nullptr) leave(inside_);
  return !untold_.empty();
}

bool BoxFocus::tellNow() {
  const bool refused = std::exchange(refused_, false);
  for (const Untold& each : std::exchange(untold_, {}))
    if (each.box != nullptr && each.box->isVisible()) tell_(each.message);
  return !refused;
}

void BoxFocus::click(QAbstractButton* button) {
  {
    const QScopedValueRollback leaving(leaving_, true);
    button->setFocus(Qt::TabFocusReason);
  }
  if (tellNow()) button->click();
  runWaiting();
}

void BoxFocus::moveTo(QWidget* control) {
  control->setFocus(Qt::OtherFocusReason);
  if (window_->focusWidget() == control) follow(control);
}

void BoxFocus::moveOn(QWidget* control) {
  inside_ = control;
  control->setFocus(Qt::OtherFocusReason);
}

void BoxFocus::afterClick(std::function<void()> action) {
  if (!leaving_ && !isMouseDown()) return action();
  waiting_.push_back(std::move(action));
  if (isMouseDown())
    watchMouse();
  else
    QTimer::singleShot(0, this, &BoxFocus::runWaiting);
}

void BoxFocus::watchMouse() {
  if (!std::exchange(watching_, true)) qApp->installEventFilter(this);
}

bool BoxFocus::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWidgetType()) return false;
  if (event->type() == QEvent::MouseButtonRelease) return released(static_cast<QWidget*>(watched));
  if (event->type() != QEvent::MouseButtonPress || untold_.empty()) return false;
  pressedList_ = qobject_cast<QComboBox*>(watched);
  return pressedList_ != nullptr;
}

bool BoxFocus::released(QWidget* over) {
  qApp->removeEventFilter(this);
  watching_ = false;
  const QPointer<QComboBox> list = std::exchange(pressedList_, nullptr);
  const QPointer<QAbstractButton> button = qobject_cast<QAbstractButton*>(over);
  const bool pressed = button != nullptr && button->isDown();
  const bool toTell = !untold_.empty();
  if (toTell) {
    const bool accepted = tellNow();
    // The dialog has taken the focus, and with it the button's press.
    if (accepted && pressed && button != nullptr && button->isEnabled()) button->click();
    if (accepted && list != nullptr && list->isEnabled()) list->showPopup();
  }
  QTimer::singleShot(0, this, &BoxFocus::runWaiting);
  return toTell && (pressed || list != nullptr);
}

void BoxFocus::runWaiting() {
  if (waiting_.empty()) return;
  // The click's handler has opened a dialog: it is not done.
  if (QApplication::activeModalWidget() != nullptr) {
    constexpr int kSoon = 50;
    QTimer::singleShot(kSoon, this, &BoxFocus::runWaiting);
    return;
  }
  for (const auto& action : std::exchange(waiting_, {})) action();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/box_focus.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <utility>

#include "app/filtered_edit.h"

namespace mirelund {

BoxFocus::BoxFocus(QWidget* window, std::function<void(Message)> tell)
    : QObject(window), window_(window), tell_(std::move(tell)) {
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*old*/, QWidget* now) { follow(now); });
}

void BoxFocus::follow(QWidget* now) {
  if (now == nullptr || now == inside_ || now->window() != window_) return;
  const QPointer<QWidget> before = std::exchange(inside_, now);
  if (before != nullptr) leave(before);
  // What a leave told may have moved the focus on.
  auto* box = qobject_cast<FilteredEdit*>(now);
  if (inside_ == now && box != nullptr) box->enter();
}

void BoxFocus::leave(QWidget* control) {
  if (auto* box = qobject_cast<FilteredEdit*>(control)) {
    const BoxLeft gone = box->leave();
    refused_ = gone.refused;
    if (gone.message != Message::None)
      afterClick([this, number = gone.message, where = QPointer<QWidget>(box)] {
        // The click may have closed the window, or turned to another page.
        if (where != nullptr && where->isVisible()) tell_(number);
      });
  }
  emit left(control);
  // Told by now, and no reason to stop whatever is pressed next.
  if (waiting_.empty()) refused_ = false;
}

bool BoxFocus::leaveNow() {
  clicking_ = true;
  if (inside_ != nullptr) leave(inside_);
  clicking_ = false;
  const bool refused = refused_;
  runWaiting();
  return !refused;
}

void BoxFocus::click(QAbstractButton* button) {
  clicking_ = true;
  button->setFocus(Qt::TabFocusReason);
  clicking_ = false;
  button->click();
  runWaiting();
}

void BoxFocus::moveTo(QWidget* control) {
  control->setFocus(Qt::OtherFocusReason);
  if (window_->focusWidget() == control) follow(control);
}

void BoxFocus::afterClick(std::function<void()> action) {
  if (clicking_) {
    waiting_.push_back(std::move(action));
  } else if (QGuiApplication::mouseButtons() != Qt::NoButton) {
    if (waiting_.empty()) qApp->installEventFilter(this);
    waiting_.push_back(std::move(action));
  } else {
    action();
  }
}

bool BoxFocus::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    qApp->removeEventFilter(this);
    QTimer::singleShot(0, this, &BoxFocus::runWaiting);
  }
  return false;
}

void BoxFocus::runWaiting() {
  refused_ = false;
  for (const auto& action : std::exchange(waiting_, {})) action();
}

}  // namespace mirelund

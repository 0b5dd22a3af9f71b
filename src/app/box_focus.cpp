// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/box_focus.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <utility>

#include "app/filtered_edit.h"

namespace mirelund {

BoxFocus::BoxFocus(QWidget* window, std::function<void(int)> tell)
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
    if (gone.message != 0) whenMouseIsUp([this, number = gone.message] { tell_(number); });
  }
  emit left(control);
}

bool BoxFocus::leaveNow() {
  if (inside_ != nullptr) leave(inside_);
  const bool refused = std::exchange(refused_, false);
  runWaiting();
  return !refused;
}

void BoxFocus::whenMouseIsUp(std::function<void()> action) {
  if (QGuiApplication::mouseButtons() == Qt::NoButton) {
    action();
    return;
  }
  if (waiting_.empty()) qApp->installEventFilter(this);
  waiting_.push_back(std::move(action));
}

bool BoxFocus::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    qApp->removeEventFilter(this);
    QTimer::singleShot(0, this, &BoxFocus::runWaiting);
  }
  return false;
}

void BoxFocus::runWaiting() {
  for (const auto& action : std::exchange(waiting_, {})) action();
}

}  // namespace mirelund

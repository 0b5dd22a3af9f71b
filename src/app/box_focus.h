// SPDX-License-Identifier: GPL-3.0-or-later
// Got-focus and lost-focus of the boxes of one window.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

namespace mirelund {

/// Enters and leaves the boxes of a window as the focus moves among its
/// controls. Another window or a dialog that takes the focus for a while is no
/// leave. What a leave has to tell is told at once or, where a mouse button is
/// down, when it is let go: a dialog in between would swallow the click.
class BoxFocus : public QObject {
  Q_OBJECT

 public:
  /// `tell` shows a message by its number.
  BoxFocus(QWidget* window, std::function<void(int)> tell);

  /// Leaves the focused control where it stands, for a handler that reads it now: a
  /// mnemonic moves no focus. False when a value just typed was refused, which
  /// has been told by then.
  bool leaveNow();

  /// Runs `action` now or, while a mouse button is down, when it is let go.
  void whenMouseIsUp(std::function<void()> action);

 signals:
  /// A control of the window was left: a box (stored by then), a list, a button.
  void left(QWidget* control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void follow(QWidget* now);
  void leave(QWidget* control);
  void runWaiting();

  QWidget* window_;
  std::function<void(int)> tell_;
  QPointer<QWidget> inside_;
  std::vector<std::function<void()>> waiting_;
  bool refused_ = false;
};

}  // namespace mirelund

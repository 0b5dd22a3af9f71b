// SPDX-License-Identifier: GPL-3.0-or-later
// Got-focus and lost-focus of the boxes of one window.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "dialogs/messages.h"

class QAbstractButton;

namespace mirelund {

/// Enters and leaves the boxes of a window as the focus moves among its
/// controls. Another window or a dialog that takes the focus for a while is no
/// leave. What a leave has to tell is told at once or, where a click is under way,
/// when it is over: a dialog in between would swallow the click.
class BoxFocus : public QObject {
  Q_OBJECT

 public:
  /// `tell` shows a message.
  BoxFocus(QWidget* window, std::function<void(Message)> tell);

  /// Leaves the focused control where it stands, for a handler that reads it now: a
  /// mnemonic moves no focus. False when this leave, or the one that the same
  /// click caused, refused a value; that has been told by then.
  bool leaveNow();

  /// Gives `button` the focus and clicks it, as one mouse click does.
  void click(QAbstractButton* button);

  /// Runs `action` now or, while a click is under way, when it is over.
  void afterClick(std::function<void()> action);

  /// Moves the focus. The toolkit reports that only while the window is active,
  /// which it is not right after a dialog, or when something is dropped.
  void moveTo(QWidget* control);

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
  std::function<void(Message)> tell_;
  QPointer<QWidget> inside_;
  std::vector<std::function<void()>> waiting_;
  bool clicking_ = false;  ///< what a leave has to tell waits
  bool refused_ = false;   ///< a refused value waits to be told
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Got-focus and lost-focus of the boxes of one window.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "dialogs/messages.h"

class QAbstractButton;
class QComboBox;

namespace mirelund {

/// Enters and leaves the boxes of a window as the focus moves among its
/// controls. Another window or a dialog that takes the focus for a while is no
/// leave, nor is the menu bar. What a box has to tell when it is left is told at once or, where a
/// mouse button is down, when it is released: a dialog in between would swallow the click. What was
/// clicked takes effect after that, unless the box's value was refused.
class BoxFocus : public QObject {
  Q_OBJECT

 public:
  /// `tell` shows a message.
  BoxFocus(QWidget* window, std::function<void(Message)> tell);

  /// Leaves the focused control where it stands, for a handler that reads it now: a
  /// mnemonic moves no focus. What it has to tell has been told by then. False when
  /// its value was refused.
  bool leaveNow() {
    leaveUntold();
    const bool accepted = tellNow();
    runWaiting();
    return accepted;
  }

  /// The same in two steps. The first returns whether there is something to tell,
  /// which the second tells; false from that when a value was refused.
  bool leaveUntold();
  bool tellNow();

  /// The control that has been entered last and not been left: the menu bar is none.
  QWidget* inside() const { return inside_; }

  /// Gives `button` the focus and clicks it, as one mouse click does.
  void click(QAbstractButton* button);

  /// Runs `action` now or, while a click is under way, when its handler is done.
  void afterClick(std::function<void()> action);

  /// Moves the focus. The toolkit reports that only while the window is active,
  /// which it is not right after a dialog, or when something is dropped.
  void moveTo(QWidget* control);
  /// The same from a control that has just been left, and is not left again.
  void moveOn(QWidget* control);

 signals:
  /// A control of the window was left: a box (stored by then), a list, a button.
  void left(QWidget* control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Untold {
    Message message;
    QPointer<QWidget> box;
  };

  void follow(QWidget* now);
  void leave(QWidget* control);
  void watchMouse();
  bool released(QWidget* over);
  void runWaiting();

  QWidget* window_;
  std::function<void(Message)> tell_;
  QPointer<QWidget> inside_;
  std::vector<Untold> untold_;
  std::vector<std::function<void()>> waiting_;
  QPointer<QComboBox> pressedList_;  ///< would have opened under the message
  bool watching_ = false;
  bool leaving_ = false;  ///< what a leave has to tell waits for tellNow
  bool refused_ = false;  ///< a refused value waits to be told
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// A dialog that a function waits for.
#pragma once

#include <QDialog>
#include <QPointer>
#include <utility>

namespace mirelund {

/// Made on the heap, for its window owns it: were it on the stack too, it would be
/// destroyed twice where the window goes first. Gone with this, or before.
template <typename Dialog>
class StandingDialog {
 public:
  template <typename... Arguments>
  explicit StandingDialog(Arguments&&... arguments)
      : dialog_(new Dialog(std::forward<Arguments>(arguments)...)) {}
  ~StandingDialog() { delete dialog_.data(); }
  StandingDialog(const StandingDialog&) = delete;
  StandingDialog& operator=(const StandingDialog&) = delete;

  Dialog* operator->() const { return dialog_; }

  /// Shows the dialog until it is answered; false when it went unanswered with its
  /// window: nothing can be asked of it then. So is a window that has been closed, which
  /// the dialog's loop would destroy under whoever waits.
  bool wait() {
    const QWidget* over = dialog_->parentWidget();
    if (over != nullptr && hasBeenClosed(over->window())) return false;
    dialog_->exec();
    return dialog_ != nullptr;
  }

 private:
  /// Hidden again: one that has not been shown yet may ask.
  static bool hasBeenClosed(const QWidget* window) {
    return window->isHidden() && window->testAttribute(Qt::WA_WState_ExplicitShowHide);
  }

  QPointer<Dialog> dialog_;
};

}  // namespace mirelund

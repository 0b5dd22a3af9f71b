// SPDX-License-Identifier: GPL-3.0-or-later
// The program's own small dialogs: one message, one question.
#pragma once

#include <QDialog>

#include "dialogs/dialog_state.h"

namespace mirelund {

/// A modal dialog that stands centred over its parent, whole on the screen, where
/// the window system allows a window to place itself. It asks for its place before
/// it is shown: asking afterwards races with the window manager's own placement.
class CentredDialog : public QDialog {
  Q_OBJECT

 public:
  explicit CentredDialog(QWidget* over);

  void setVisible(bool visible) override;
};

/// Shows MessageNumber's text.
class AMsgbox : public CentredDialog {
  Q_OBJECT

 public:
  AMsgbox(const DialogState& state, QWidget* over);

 private:
  void AMsgExit_Click();
};

/// Asks QuestionNumber's question; Yes sets it to AnsweredYes. A question that
/// is dismissed without an answer (Escape, the window's frame) takes the one that
/// gives nothing up: no, but yes where going back keeps unsaved changes.
class AllYesNo : public CentredDialog {
  Q_OBJECT

 public:
  AllYesNo(DialogState& state, QWidget* over);

  void reject() override;

 private:
  void AllYes_Click();
  void AllNo_Click();

  DialogState& state_;
};

}  // namespace mirelund

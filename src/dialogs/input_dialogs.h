// SPDX-License-Identifier: GPL-3.0-or-later
// The program's own small dialogs: one line of text, one record number.
#pragma once

#include <optional>

#include "dialogs/message_dialogs.h"

class QLineEdit;
class QPushButton;

namespace mirelund {

/// Asks for one line: the header of a printout, or the name of a new fund. The
/// answer is left in PrintHeader: the line, or "1" when cancelled. The
/// double quote and line breaks enter by no way. Enter in the box moves on to the
/// accepting button and does not press it.
class PrinterHeaderInput : public CentredDialog {
  Q_OBJECT

 public:
  PrinterHeaderInput(DialogState& state, const QString& caption, const QString& prompt,
                     QWidget* over);

  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Acept_Click();
  void NAcept_Click();

  DialogState& state_;
  QLineEdit* InFName_;
  QPushButton* Acept_;
};

/// Asks for a record number: digits only.
class FundCurValInput : public CentredDialog {
  Q_OBJECT

 public:
  FundCurValInput(const QString& prompt, QWidget* over);

  /// The number typed, or nothing when it was cancelled. An empty or endless
  /// number is 0, which is no record's.
  std::optional<int> number() const { return number_; }

 private:
  void FCVAcept_Click();

  QLineEdit* box_;
  std::optional<int> number_;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/dialog_prompts.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include "base/file_name.h"
#include "base/ui_text.h"
#include "dialogs/input_dialogs.h"
#include "dialogs/message_dialogs.h"

namespace mirelund {

namespace {

// The path with the ending of "... (*.PQD)" where its name has none.
QString withEndingOf(const QString& filter, const QString& path) {
  const QString ending = filter.section('*', -1).remove(')');
  return fromPathBytes(withEnding(toPathBytes(path), toStdString(ending)));
}

}  // namespace

void DialogPrompts::tell(QWidget* over, Message message) {
  state_.MessageNumber = message;
  AMsgbox(state_, over).exec();
}

void DialogPrompts::warn(QWidget* over, const QString& text) {
  QMessageBox box(QMessageBox::Warning, "Mirelund", text, QMessageBox::Ok, over);
  box.exec();
}

bool DialogPrompts::ask(QWidget* over, Question question) {
  state_.QuestionNumber = question;
  AllYesNo(state_, over).exec();
  return state_.QuestionNumber == Question::AnsweredYes;
}

std::optional<QString> DialogPrompts::askLine(QWidget* over, const QString& caption,
                                              const QString& prompt) {
  PrinterHeaderInput(state_, caption, prompt, over).exec();
  if (state_.PrintHeader == kCancelledLine) return std::nullopt;
  return toQString(state_.PrintHeader);
}

std::optional<int> DialogPrompts::askRecordNumber(QWidget* over, const QString& prompt) {
  FundCurValInput dialog(prompt, over);
  dialog.exec();
  return dialog.number();
}

QString DialogPrompts::askOpenPath(QWidget* over, const QString& title, const QString& initial,
                                   const QString& filter) {
  return QFileDialog::getOpenFileName(over, title, initial, filter);
}

QString DialogPrompts::askSavePath(QWidget* over, const QString& title, const QString& initial,
                                   const QString& filter) {
  QString shown = initial;
  for (;;) {
    const QString typed = QFileDialog::getSaveFileName(over, title, shown, filter);
    if (typed.isEmpty()) return {};
    shown = withEndingOf(filter, typed);
    // The dialog has asked about the name as it was typed, and about no other.
    if (shown == typed || !QFileInfo::exists(shown)) return shown;
    if (QMessageBox::question(over, title,
                              QString("%1 already exists.\nDo you want to replace it?")
                                  .arg(QFileInfo(shown).fileName()),
                              QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No) == QMessageBox::Yes)
      return shown;
  }
}

}  // namespace mirelund

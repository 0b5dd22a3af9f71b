// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/dialog_prompts.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include "dialogs/input_dialogs.h"
#include "dialogs/message_dialogs.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

// The path with the ending of "... (*.PQD)" where its name has none.
QString withEndingOf(const QString& filter, const QString& path) {
  if (QFileInfo(path).fileName().lastIndexOf('.') > 0) return path;
  return path + filter.section('*', -1).remove(')');
}

}  // namespace

void DialogPrompts::tell(QWidget* over, int message) {
  global_.MessageNumber = static_cast<std::int16_t>(message);
  AMsgbox(global_, over).exec();
}

void DialogPrompts::warn(QWidget* over, const QString& text) {
  QMessageBox box(QMessageBox::Warning, "Mirelund", text, QMessageBox::Ok, over);
  box.exec();
}

bool DialogPrompts::ask(QWidget* over, int question) {
  global_.QuestionNumber = static_cast<std::int16_t>(question);
  AllYesNo(global_, over).exec();
  return global_.QuestionNumber == question::kAnswerYes;
}

void DialogPrompts::askLine(QWidget* over, const QString& caption, const QString& prompt) {
  PrinterHeaderInput(global_, caption, prompt, over).exec();
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
                                  .arg(QFileInfo(shown).fileName())) == QMessageBox::Yes)
      return shown;
  }
}

}  // namespace mirelund

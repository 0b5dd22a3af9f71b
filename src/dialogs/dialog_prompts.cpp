// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/dialog_prompts.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>
#include <memory>

#include "base/file_name.h"
#include "base/ui_text.h"
#include "dialogs/input_dialogs.h"
#include "dialogs/message_dialogs.h"
#include "dialogs/standing_dialog.h"

namespace mirelund {

namespace {

constexpr QLatin1String kBetweenFilters(";;");

// ".PQD" of "... (*.PQD)".
std::string endingIn(const QString& filter) {
  return toStdString(filter.section('*', -1).remove(')'));
}

// The path with the ending of `chosen` where its name has none, or none of several.
QString withEndingOf(const QString& filters, const QString& chosen, const QString& path) {
  const std::string bytes = toPathBytes(path);
  const QStringList all = filters.split(kBetweenFilters);
  if (all.size() == 1) return fromPathBytes(withEnding(bytes, endingIn(filters)));
  for (const QString& each : all)
    if (endingOf(bytes) == endingIn(each)) return path;
  return fromPathBytes(bytes + endingIn(chosen));
}

}  // namespace

void DialogPrompts::tell(QWidget* over, Message message) {
  if (cancelsAll()) return;
  state_.MessageNumber = message;
  StandingDialog<AMsgbox>(state_, over).wait();
}

void DialogPrompts::warn(QWidget* over, const QString& text) {
  if (cancelsAll()) return;
  StandingDialog<QMessageBox>(QMessageBox::Warning, "Mirelund", text, QMessageBox::Ok, over).wait();
}

void DialogPrompts::inform(QWidget* over, const QString& title, const QString& text) {
  if (cancelsAll()) return;
  StandingDialog<QMessageBox>(QMessageBox::Information, title, text, QMessageBox::Ok, over).wait();
}

bool DialogPrompts::browse(const QString& path) {
  return cancelsAll() || QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool DialogPrompts::confirm(QWidget* over, const QString& text, const QString& accept) {
  if (cancelsAll()) return false;
  StandingDialog<QMessageBox> box(QMessageBox::Warning, "Mirelund", text, QMessageBox::Cancel,
                                  over);
  const QAbstractButton* const accepting = box->addButton(accept, QMessageBox::AcceptRole);
  box->setDefaultButton(QMessageBox::Cancel);
  box->setEscapeButton(QMessageBox::Cancel);
  return box.wait() && box->clickedButton() == accepting;
}

bool DialogPrompts::ask(QWidget* over, Question question) {
  // The answer that gives nothing up.
  const bool dismissed = question == Question::DiscardChanges;
  if (cancelsAll()) return dismissed;
  state_.QuestionNumber = question;
  if (!StandingDialog<AllYesNo>(state_, over).wait()) return dismissed;
  return state_.QuestionNumber == Question::AnsweredYes;
}

std::optional<QString> DialogPrompts::askLine(QWidget* over, const QString& caption,
                                              const QString& prompt) {
  if (cancelsAll()) return std::nullopt;
  StandingDialog<PrinterHeaderInput> dialog(state_, caption, prompt, over);
  if (!dialog.wait() || state_.PrintHeader == kCancelledLine) return std::nullopt;
  return toQString(state_.PrintHeader);
}

std::optional<int> DialogPrompts::askRecordNumber(QWidget* over, const QString& prompt) {
  if (cancelsAll()) return std::nullopt;
  StandingDialog<FundCurValInput> dialog(prompt, over);
  return dialog.wait() ? dialog->number() : std::nullopt;
}

DialogPrompts::Chosen DialogPrompts::askPath(QWidget* over, const QString& title,
                                             const QString& initial, const QString& filters,
                                             bool toOpen) {
  if (cancelsAll()) return {};
  StandingDialog<QFileDialog> dialog(over, title, initial, filters);
  dialog->setAcceptMode(toOpen ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog->setFileMode(toOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  if (!QFileInfo(initial).isDir()) dialog->selectFile(initial);
  // Keys that come on the heels of the one that accepts still change the name shown,
  // which nobody has asked about.
  const auto accepted = std::make_shared<QString>();
  QObject::connect(dialog.operator->(), &QFileDialog::fileSelected,
                   [accepted](const QString& path) { *accepted = path; });
  if (!dialog.wait() || dialog->result() != QDialog::Accepted) return {};
  return {*accepted, dialog->selectedNameFilter()};
}

QString DialogPrompts::askOpenPath(QWidget* over, const QString& title, const QString& initial,
                                   const QString& filter) {
  return askPath(over, title, initial, filter, true).path;
}

QString DialogPrompts::askSavePath(QWidget* over, const QString& title, const QString& initial,
                                   const QString& filter) {
  QString shown = initial;
  for (;;) {
    const auto [typed, chosen] = askPath(over, title, shown, filter, false);
    if (typed.isEmpty()) return {};
    shown = withEndingOf(filter, chosen, typed);
    // The dialog has asked about the name as it was typed, and about no other.
    if (shown == typed || !QFileInfo::exists(shown)) return shown;
    StandingDialog<QMessageBox> box(
        QMessageBox::Question, title,
        QString("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(shown).fileName()),
        QMessageBox::Yes | QMessageBox::No, over);
    box->setDefaultButton(QMessageBox::No);
    if (box.wait() && box->result() == QMessageBox::Yes) return shown;
  }
}

}  // namespace mirelund

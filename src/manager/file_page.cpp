// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/file_page.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>

#include "base/ui_text.h"
#include "dialogs/busy_pointer.h"
#include "dialogs/prompts.h"

namespace mirelund {

namespace {
constexpr int kTextCharacters = 76;

// Beside the program's folder, where it is installed and where it is built.
QString samplePath() {
  return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                         "/../share/mirelund/DtaSampl.PQD");
}
}  // namespace

void FilePage::addTexts(const Look& look) {
  auto* title = new QLabel(look.title, this);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.3);
  title->setFont(large);
  auto* explanation = new QLabel(look.explanation, this);
  explanation->setTextFormat(Qt::PlainText);
  explanation->setWordWrap(true);
  const int width = kTextCharacters * fontMetrics().averageCharWidth();
  explanation->setMaximumWidth(width);
  explanation->setMinimumHeight(explanation->heightForWidth(width));
  column()->addWidget(title);
  column()->addWidget(explanation);
}

void FilePage::addEnd(QHBoxLayout* row, const Look& look) {
  done_ = new QLabel(" ", this);
  done_->setObjectName(look.doneLabel);
  done_->setTextFormat(Qt::PlainText);
  done_->setWordWrap(true);
  const int unit = fontMetrics().averageCharWidth();
  column()->setContentsMargins(3 * unit, 3 * unit, 3 * unit, 2 * unit);
  column()->setSpacing(2 * unit);
  column()->addLayout(row);
  column()->addWidget(done_);
  column()->addStretch();
}

void FilePage::addButtons(QHBoxLayout*) {}

void FilePage::setDone(const QString& text) {
  done_->setText(text);
}

void FilePage::shown() {
  setDone(" ");
}

// --- opening --------------------------------------------------------------------

OpenPage::OpenPage(ManagerHost& host) : FilePage(host) {
  make({"Open a database from disk",
        "A .PQD file is a database of this program: one text file with the names of the funds and "
        "a line for each record, which you can copy and keep like any other.\n\n"
        "Choose a file whose name ends in .PQD, or drop it on this window. Its funds and records "
        "take the place of those in memory; if these have changed since they were saved, you are "
        "asked first.\n\n"
        "A file that is not exactly a database is refused, and what is in memory stays as it "
        "is.\n\n"
        "To look around, open the sample database; saving it asks for a name of your own. To start "
        "a database of your "
        "own, go to the Data entry page and add a fund name.",
        "OFOpen", "Choose a &file...", "OFExit", "OFDone"},
       this, &OpenPage::OFOpen_Click, &OpenPage::OFExit_Click);
}

void OpenPage::addButtons(QHBoxLayout* row) {
  addButton(row, "OFSample", "Open the s&ample", this, &OpenPage::OFSample_Click);
}

bool OpenPage::mayReplace() {
  host().leaveFocused();
  return host().mayDiscard();
}

void OpenPage::OFOpen_Click() {
  if (!mayReplace()) return;
  manager().setFileDialog(FileDialog::Opening);
  const QString path = host().prompts().askOpenPath(host().over(), "Open database",
                                                    fromPathBytes(manager().state().DatabasePath),
                                                    toQString(kFileFilter));
  if (path.isEmpty()) return manager().setFileDialog(FileDialog::Cancelled);
  load(path);
}

void OpenPage::open(const QString& path) {
  if (mayReplace()) load(path);
}

void OpenPage::load(const QString& path) {
  Message refused = Message::None;
  {
    const BusyPointer busy;
    refused = manager().OpenDatabase(toPathBytes(path));
  }
  show(refused);
}

void OpenPage::OFSample_Click() {
  if (mayReplace()) show(manager().openSample(toPathBytes(samplePath())));
}

void OpenPage::show(Message refused) {
  host().showCounters();
  if (refused != Message::None) return host().tell(refused);
  host().showEntryPage();
}

void OpenPage::OFExit_Click() {
  host().leave();
}

// --- saving ---------------------------------------------------------------------

SavePage::SavePage(ManagerHost& host) : FilePage(host) {
  make({"Save the database to disk",
        "Nothing is saved automatically: all changes are in memory until you save them here.\n\n"
        "Choose a place and a name in the form MYFILE.PQD; a name without an ending gets .PQD. "
        "A file of that name is replaced only when the new one has been written completely.",
        "SFSave", "Choose a &name...", "SFExit", "SFDone"},
       this, &SavePage::SFSave_Click, &SavePage::SFExit_Click);
}

bool SavePage::begin() {
  host().leaveFocused();
  setDone(" ");
  const Message refused = manager().checkSave();
  host().tell(refused);
  return refused == Message::None;
}

void SavePage::SFSave_Click() {
  if (!begin()) return;
  manager().setFileDialog(FileDialog::Saving);
  const QString path = host().prompts().askSavePath(host().over(), "Save database",
                                                    fromPathBytes(manager().state().DatabasePath),
                                                    toQString(kFileFilter));
  if (path.isEmpty()) return manager().setFileDialog(FileDialog::Cancelled);
  saveTo(path);
}

void SavePage::saveAgain() {
  const QString path = fromPathBytes(manager().state().DatabasePath);
  if (path.isEmpty()) return SFSave_Click();
  if (begin()) saveTo(path);
}

void SavePage::saveTo(const QString& path) {
  const Saved saved = save(path);
  host().showCounters();
  if (saved.reason == FileFailure::Changed) return;
  if (saved.message != Message::None) {
    host().tell(saved.message);
    const std::string_view reason = failureText(saved.reason);
    if (!reason.empty()) host().prompts().warn(host().over(), toQString(reason));
    return;
  }
  setDone("Saved as " + fromPathBytes(manager().state().DatabasePath) + ".");
}

Saved SavePage::save(const QString& path) {
  const std::string bytes = toPathBytes(path);
  const auto saved = [&](Replacing what) {
    const BusyPointer busy;
    return manager().SaveDatabase(bytes, what);
  };
  const Saved first = saved(Replacing::Unchanged);
  if (first.reason != FileFailure::Changed) return first;
  const QString text =
      QString("%1 has been changed by another program since it was opened or saved here.")
          .arg(QFileInfo(path).fileName());
  if (!host().prompts().confirm(host().over(), text, "Replace it")) return first;
  return saved(Replacing::Anything);
}

void SavePage::SFExit_Click() {
  host().leave();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/message_dialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "base/ui_text.h"

namespace mirelund {

namespace {

constexpr int kTextColumns = 44;

QLabel* makeTextArea(const std::string& text, const char* name, QWidget* parent) {
  auto* label = new QLabel(toQString(text), parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMinimumWidth(label->fontMetrics().averageCharWidth() * kTextColumns);
  return label;
}

}  // namespace

CentredDialog::CentredDialog(QWidget* over) : QDialog(over) {
  setWindowTitle("Mirelund");
  setModal(true);
}

void CentredDialog::setVisible(bool visible) {
  if (visible && parentWidget() != nullptr) {
    adjustSize();
    const QWidget* over = parentWidget()->window();
    QRect frame({}, size() + over->frameGeometry().size() - over->size());
    frame.moveCenter(over->frameGeometry().center());
    const QRect screen = over->screen()->availableGeometry();
    frame.moveRight(std::min(frame.right(), screen.right()));
    frame.moveBottom(std::min(frame.bottom(), screen.bottom()));
    move(std::max(frame.left(), screen.left()), std::max(frame.top(), screen.top()));
  }
  QDialog::setVisible(visible);
}

AMsgbox::AMsgbox(const DialogState& state, QWidget* over) : CentredDialog(over) {
  setObjectName("AMsgbox");
  auto* text = makeTextArea(messageText(state.MessageNumber, state.Details), "AMsgText", this);
  setAccessibleDescription(text->text());
  auto* exit = new QPushButton("&OK", this);
  exit->setObjectName("AMsgExit");
  exit->setAccessibleDescription(text->text());
  exit->setDefault(true);
  connect(exit, &QPushButton::clicked, this, &AMsgbox::AMsgExit_Click);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text, 1);
  layout->addWidget(exit, 0, Qt::AlignHCenter);
}

void AMsgbox::AMsgExit_Click() {
  accept();
}

AllYesNo::AllYesNo(DialogState& state, QWidget* over) : CentredDialog(over), state_(state) {
  setObjectName("AllYesNo");
  auto* text = makeTextArea(questionText(state.QuestionNumber, state.Details), "Label1", this);
  setAccessibleDescription(text->text());
  auto* yes = new QPushButton("&Yes", this);
  yes->setObjectName("AllYes");
  yes->setAccessibleDescription(text->text());
  auto* no = new QPushButton("&No", this);
  no->setObjectName("AllNo");
  connect(yes, &QPushButton::clicked, this, &AllYesNo::AllYes_Click);
  connect(no, &QPushButton::clicked, this, &AllYesNo::AllNo_Click);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(yes);
  buttons->addWidget(no);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text, 1);
  layout->addLayout(buttons);
}

void AllYesNo::AllYes_Click() {
  state_.QuestionNumber = Question::AnsweredYes;
  accept();
}

void AllYesNo::AllNo_Click() {
  QDialog::reject();
}

void AllYesNo::reject() {
  if (state_.QuestionNumber == Question::DiscardChanges)
    AllYes_Click();
  else
    QDialog::reject();
}

}  // namespace mirelund

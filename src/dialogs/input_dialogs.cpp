// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/input_dialogs.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "base/ui_text.h"

namespace mirelund {

namespace {

struct Form {
  QLineEdit* box;
  QPushButton* accept;
  QPushButton* cancel;
};

// A label, a box that takes only what `allowed` matches, and two buttons.
Form makeForm(QDialog* dialog, const QString& prompt, const QString& allowed,
              const QString& acceptText, const QString& cancelText) {
  auto* label = new QLabel(prompt, dialog);
  label->setObjectName("FName");
  auto* box = new QLineEdit(dialog);
  box->setValidator(new QRegularExpressionValidator(QRegularExpression(allowed), box));
  box->setAccessibleName(prompt.simplified());
  label->setBuddy(box);
  const Form form{box, new QPushButton(acceptText, dialog), new QPushButton(cancelText, dialog)};
  form.accept->setDefault(true);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(form.accept);
  buttons->addWidget(form.cancel);
  auto* layout = new QVBoxLayout(dialog);
  layout->addWidget(label);
  layout->addWidget(box);
  layout->addLayout(buttons);
  return form;
}

}  // namespace

PrinterHeaderInput::PrinterHeaderInput(DialogState& state, const QString& caption,
                                       const QString& prompt, QWidget* over)
    : CentredDialog(over), state_(state) {
  setObjectName("PrinterHeaderInput");
  setWindowTitle(caption);
  const Form form = makeForm(this, prompt, R"([^"\p{Cc}]*)", "Continue &Printout", "&Cancel");
  InFName_ = form.box;
  InFName_->setObjectName("InFName");
  form.accept->setObjectName("Acept");
  form.cancel->setObjectName("NAcept");
  Acept_ = form.accept;
  connect(form.accept, &QPushButton::clicked, this, &PrinterHeaderInput::Acept_Click);
  connect(form.cancel, &QPushButton::clicked, this, &PrinterHeaderInput::NAcept_Click);
}

void PrinterHeaderInput::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && InFName_->hasFocus())
    Acept_->setFocus();
  else
    QDialog::keyPressEvent(event);
}

void PrinterHeaderInput::Acept_Click() {
  state_.PrintHeader = toStdString(InFName_->text());
  accept();
}

void PrinterHeaderInput::NAcept_Click() {
  reject();
}

void PrinterHeaderInput::reject() {
  state_.PrintHeader = kCancelledLine;
  QDialog::reject();
}

FundCurValInput::FundCurValInput(const QString& prompt, QWidget* over) : CentredDialog(over) {
  setObjectName("FundCurValInput");
  const Form form = makeForm(this, prompt, "[0-9]*", "&Accept", "&Cancel");
  box_ = form.box;
  box_->setObjectName("FCVIn");
  form.accept->setObjectName("FCVAcept");
  form.cancel->setObjectName("FCVNAcept");
  connect(form.accept, &QPushButton::clicked, this, &FundCurValInput::FCVAcept_Click);
  connect(form.cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void FundCurValInput::FCVAcept_Click() {
  number_ = box_->text().toInt();
  accept();
}

}  // namespace mirelund

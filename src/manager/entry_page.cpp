// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/entry_page.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>

#include "base/ui_text.h"
#include "dialogs/busy_pointer.h"
#include "dialogs/prompts.h"
#include "manager/drop_down.h"
#include "manager/entry_edits.h"
#include "manager/entry_help.h"

namespace mirelund {

namespace {
constexpr int kListColumns = 96;
constexpr int kDateCharacters = 14;
constexpr int kAmountCharacters = 18;
constexpr char kNoTypeText[] = "Click dn/arrow for types";
constexpr char kToBegin[] =
    "To begin, add a fund name, choose a transaction type and type the row.\n"
    "Or open a database on the Open file page: the sample is there to look around.";

// Green and enabled, or neither. A palette is only set when it changes: it costs.
void showUse(FilteredEdit* box, bool used) {
  if (box->isEnabled() == used) return;
  box->setEnabled(used);
  if (used)
    box->setGreen(true);
  else
    box->setPalette({});
}

}  // namespace

EntryPage::EntryPage(ManagerHost& host) : ReportPage(host) {
  makeFundRow();
  makeEntryRow();
  makeButtons();
  column()->addWidget(makeReport("EResults", "Records of the active fund", kListColumns), 1);
  QPalette colors;
  colors.setColor(QPalette::PlaceholderText, colors.color(QPalette::Text));
  report()->setPalette(colors);
  showRow();
}

void EntryPage::makeFundRow() {
  auto* row = new QHBoxLayout;
  EFunds_ = new DropDown("EFunds", toQString(kNoFundText), this);
  EFunds_->setMaxVisibleItems(kMostFunds);
  row->addWidget(addLabel("Fund name", EFunds_));
  row->addWidget(EFunds_);
  ECreateFund_ = addButton(row, "ECreateFund", toQString(kFundNameCaption), this,
                           &EntryPage::ECreateFund_Click);
  ECorrecting_ = new QLabel(this);
  ECorrecting_->setObjectName("ECorrecting");
  // Half a line is better than a wider window.
  ECorrecting_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->addWidget(ECorrecting_, 1);
  column()->addLayout(row);
  connect(EFunds_, &DropDown::activated, this, &EntryPage::EFunds_Click);
  connect(EFunds_, &DropDown::keyDown, this, &EntryPage::EFunds_KeyDown);
}

void EntryPage::makeEntryRow() {
  auto* grid = new QGridLayout;
  ETransType_ = new DropDown("ETransType", kNoTypeText, this);
  for (const TransactionType& type : transactionTypes()) {
    ETransType_->addItem(toQString(type.listText));
    ETransType_->setItemData(ETransType_->count() - 1, toQString(type.hint), Qt::ToolTipRole);
  }
  connect(ETransType_, &DropDown::activated, this, &EntryPage::ETransType_Click);
  connect(ETransType_, &DropDown::keyDown, this, &EntryPage::ETransType_KeyDown);
  grid->addWidget(addLabel("Transaction type", ETransType_), 0, 0);
  grid->addWidget(ETransType_, 1, 0);
  for (const EntryBoxRule& rule : kEntryRow) {
    FilteredEdit* box = makeBox(rule);
    const int place = grid->columnCount();
    grid->addWidget(addLabel(toQString(rule.caption), box), 0, place);
    grid->addWidget(box, 1, place);
  }
  grid->setColumnStretch(grid->columnCount(), 1);
  column()->addLayout(grid);
}

FilteredEdit* EntryPage::makeBox(const EntryBoxRule& rule) {
  const EntryBox which = rule.box;
  const bool isDate = which == EntryBox::Date;
  FilteredEdit* box = nullptr;
  if (isDate) {
    box = new DateEdit(
        host().global().boxes,
        [this](std::string_view text) { return manager().leaveDateBox(text); }, this);
    box->setPlaceholderText(toQString(formText(manager().dateFormat())));
  } else {
    box = new AmountEdit(
        host().global().boxes,
        [this, which](std::string_view text) { return manager().leaveValueBox(which, text); },
        this);
  }
  box->setObjectName(toQString(rule.name));
  box->setCharacters(isDate ? kDateCharacters : kAmountCharacters);
  // The captions stay where they are while the boxes are hidden.
  QSizePolicy policy = box->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  box->setSizePolicy(policy);
  connect(box, &FilteredEdit::enterPressed, this, [this, which] { enterPressedIn(which); });
  edits_[static_cast<std::size_t>(which)] = box;
  return box;
}

void EntryPage::makeButtons() {
  auto* row = new QHBoxLayout;
  EAddaRec_ = addButton(row, "EAddaRec", "Add &Record", this, &EntryPage::EAddaRec_Click);
  addButton(row, "ECorrectRec", "&Correct", this, &EntryPage::ECorrectRec_Click);
  addButton(row, "EDelRec", "&Delete", this, &EntryPage::EDelRec_Click);
  row->addStretch();
  addHelpButton(row, "EHelp", this, &EntryPage::EHelp_Click);
  addPrintButton(row, "EPrint", this, &EntryPage::EPrint_Click);
  addButton(row, "EExit", "E&xit to menu", this, &EntryPage::EExit_Click);
  column()->addLayout(row);
}

void EntryPage::shown() {
  fillFunds();
  showRow();
  show(manager().showRecordList());
}

void EntryPage::restored(const Restored& step) {
  fillFunds();
  if (!step.rowKept) showRow();
  show(step.outcome);
}

QWidget* EntryPage::firstControl() {
  return EFunds_;
}

void EntryPage::restoreReport() {
  show(manager().showRecordList());
}

SheetMade EntryPage::sheets() {
  return manager().recordSheet();
}

// --- funds ----------------------------------------------------------------------

void EntryPage::EFunds_Click(int index) {
  host().leaveFocused();
  const Outcome outcome = manager().chooseFund(static_cast<std::int16_t>(index + 1));
  showRow();
  show(outcome);
}

void EntryPage::EFunds_KeyDown(int key) {
  if (key == Qt::Key_Return) ETransType_->setFocus(Qt::TabFocusReason);
}

void EntryPage::ECreateFund_Click() {
  host().leaveFocused();
  const auto name = host().prompts().askLine(host().over(), toQString(kFundNameCaption),
                                             toQString(kFundNamePrompt));
  if (!name) return;
  const Outcome outcome = manager().addFund(toStdString(*name));
  if (outcome.showResults) {
    fillFunds();
    showRow();
    host().showCounters();
  }
  show(outcome);
}

std::string EntryPage::fundText() const {
  return toStdString(EFunds_->currentText());
}

void EntryPage::fillFunds() {
  const ManagerState& state = manager().state();
  if (fundsShown_ != state.fundsRevision) {
    fundsShown_ = state.fundsRevision;
    EFunds_->clear();
    for (const std::string& name : manager().fundNames()) EFunds_->addItem(toQString(name));
  }
  EFunds_->setCurrentIndex(state.ActiveFundRow - 1);
  report()->setPlaceholderText(EFunds_->count() == 0 ? kToBegin : "");
}

// --- the entry row --------------------------------------------------------------

void EntryPage::ETransType_Click(int index) {
  host().leaveFocused();
  const Message refused = manager().chooseType(static_cast<std::size_t>(index));
  showRow();
  host().tell(refused);
}

void EntryPage::ETransType_KeyDown(int key) {
  if (key == Qt::Key_Delete) {
    manager().clearEntryRow();
    showRow();
  } else if (manager().state().entry.type != nullptr) {
    edit(EntryBox::Date)->setFocus(Qt::TabFocusReason);
  }
}

void EntryPage::enterPressedIn(EntryBox box) {
  const TransactionType* type = manager().state().entry.type;
  const auto next = type == nullptr ? std::nullopt : nextEntryBox(*type, box);
  if (next)
    edit(*next)->setFocus(Qt::TabFocusReason);
  else
    EAddaRec_->click();
}

void EntryPage::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape || manager().state().CorrectingRecord == 0)
    return ReportPage::keyPressEvent(event);
  // What was typed is given up, and need not be right.
  const Outcome outcome = manager().chooseFund(manager().state().ActiveFundRow);
  showRow();
  ETransType_->setFocus(Qt::OtherFocusReason);
  show(outcome);
}

void EntryPage::showRow() {
  const ManagerState& state = manager().state();
  const TransactionType* type = state.entry.type;
  const bool correcting = state.CorrectingRecord != 0;
  for (QWidget* locked : {static_cast<QWidget*>(EFunds_), static_cast<QWidget*>(ECreateFund_),
                          static_cast<QWidget*>(ETransType_)})
    locked->setEnabled(!correcting);
  ECorrecting_->setText(toQString(manager().correctingText()));
  ETransType_->setCurrentIndex(
      type == nullptr ? -1 : static_cast<int>(type - transactionTypes().data()));
  for (const EntryBoxRule& rule : kEntryRow) {
    FilteredEdit* box = edit(rule.box);
    const bool used = type != nullptr && type->need(rule.box) != Need::None;
    if (!correcting)
      box->clear();
    else
      box->setText(toQString(rule.box == EntryBox::Date ? manager().correctingDateText()
                                                        : manager().valueText(rule.box)));
    showUse(box, used);
    box->setVisible(type != nullptr);
  }
}

void EntryPage::EAddaRec_Click() {
  if (!host().leaveFocused()) return;
  Outcome outcome;
  {
    const BusyPointer busy;
    outcome = manager().addRecord(toStdString(edit(EntryBox::Date)->text()), fundText());
  }
  if (outcome.showResults) {
    showRow();
    host().showCounters();
    // Ready for the next one.
    ETransType_->setFocus(Qt::OtherFocusReason);
  }
  show(outcome);
}

// --- correcting and deleting ----------------------------------------------------

void EntryPage::ECorrectRec_Click() {
  host().leaveFocused();
  if (const Message refused = manager().checkFund(fundText()); refused != Message::None)
    return host().tell(refused);
  const auto number = host().prompts().askRecordNumber(host().over(), toQString(kCorrectPrompt));
  if (!number) return;
  if (const Message refused = manager().correctRecord(fundText(), std::to_string(*number));
      refused != Message::None)
    return host().tell(refused);
  showRow();
  edit(EntryBox::Date)->setFocus(Qt::OtherFocusReason);
}

void EntryPage::EDelRec_Click() {
  host().leaveFocused();
  const bool correcting = manager().state().CorrectingRecord != 0;
  const DeleteAsked asked = manager().askDelete(fundText());
  if (asked.message != Message::None) return host().tell(asked.message);
  if (correcting) showRow();
  if (asked.wholeFund) {
    if (!host().ask(Question::DeleteFund)) return;
    host().tell(manager().deleteFund());
    shown();
  } else {
    const auto typed = host().prompts().askRecordNumber(host().over(), toQString(kDeletePrompt));
    if (!typed) return;
    const std::string number = std::to_string(*typed);
    if (const Message refused = manager().checkRecordNumber(number); refused != Message::None)
      return host().tell(refused);
    if (!host().ask(Question::DeleteRecord, number)) return;
    Outcome outcome;
    {
      const BusyPointer busy;
      outcome = manager().deleteRecord(number);
    }
    show(outcome);
  }
  host().showCounters();
}

// --------------------------------------------------------------------------------

void EntryPage::EHelp_Click() {
  host().leaveFocused();
  toggleHelp(entryHelp(manager().dateFormat()));
}

void EntryPage::EPrint_Click() {
  printShown();
}

void EntryPage::EExit_Click() {
  host().leave();
}

void EntryPage::show(const Outcome& outcome) {
  if (outcome.showResults) showReport(outcome.results);
  host().tell(outcome.message);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/current_value_page.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>

#include "base/ui_text.h"
#include "dialogs/busy_pointer.h"
#include "manager/current_value_help.h"
#include "manager/entry_edits.h"
#include "manager/fund_names.h"

namespace mirelund {

namespace {
constexpr int kReportColumns = 85;
constexpr int kPriceCharacters = 18;
// Funds are listed down the columns, all of them in three.
constexpr int kRowsInColumn = 6;
// A name, a box, a gap.
constexpr int kPlacesInColumn = 3;
static_assert(kRowsInColumn * 3 == kMostFunds);
}  // namespace

CurrentValuePage::CurrentValuePage(ManagerHost& host) : ReportPage(host) {
  hint_ = new QLabel(this);
  hint_->setObjectName("CVHint");
  column()->addWidget(hint_);
  makeButtons();
  QPlainTextEdit* box = makeReport("CVResults", "Current value of the funds", kReportColumns);
  column()->addWidget(box, 1);
  behindPrices_.push_back(box);
}

void CurrentValuePage::makeButtons() {
  auto* row = new QHBoxLayout;
  CVCalc_ = addButton(row, "CVCalc", "&Calculate", this, &CurrentValuePage::CVCalc_Click);
  addButton(row, "CVGraph", "&Graph", this, &CurrentValuePage::CVGraph_Click);
  row->addStretch();
  addHelpButton(row, "CVHelp", this, &CurrentValuePage::CVHelp_Click);
  addPrintButton(row, "CVPrint", this, &CurrentValuePage::CVPrint_Click);
  addButton(row, "CVExit", "E&xit to menu", this, &CurrentValuePage::CVExit_Click);
  for (int i = 0; i < row->count(); ++i)
    if (QWidget* button = row->itemAt(i)->widget()) behindPrices_.push_back(button);
  column()->addLayout(row);
}

void CurrentValuePage::makePriceBoxes() {
  delete prices_;
  prices_ = new FundNames(this);
  auto* grid = new QGridLayout(prices_);
  grid->setContentsMargins(0, 0, 0, 0);
  CVInPrice_.assign(1, nullptr);
  const std::int16_t funds = manager().database().FundCount;
  for (std::int16_t row = 1; row <= funds; ++row) addPriceBox(grid, row);
  grid->setColumnStretch(grid->columnCount(), 1);
  column()->insertWidget(1, prices_);
  hint_->setText(funds == 0 ? "There are no funds yet: open a file, or add funds and records on "
                              "the Data entry page."
                            : "Current or what-if price of a share:");
  QWidget* before = nullptr;
  for (QWidget* control : behindPrices_) {
    if (before == nullptr && funds > 0) before = CVInPrice_.back();
    if (before != nullptr) setTabOrder(before, control);
    before = control;
  }
}

void CurrentValuePage::addPriceBox(QGridLayout* grid, std::int16_t fundRow) {
  auto* box = new AmountEdit(
      host().global().boxes,
      [this, fundRow](std::string_view text) { return manager().leavePriceBox(fundRow, text); },
      prices_);
  box->setObjectName(QString("CVInPrice_%1").arg(fundRow));
  box->setCharacters(kPriceCharacters);
  box->setText(toQString(manager().priceText(fundRow)));
  connect(box, &FilteredEdit::enterPressed, this, [this, fundRow] { enterPressedIn(fundRow); });
  CVInPrice_.push_back(box);

  const QString name = toQString(manager().fundName(fundRow));
  box->setAccessibleName("Price of " + name);
  QLabel* label = prices_->addName(name, box);
  const int row = (fundRow - 1) % kRowsInColumn;
  const int place = (fundRow - 1) / kRowsInColumn * kPlacesInColumn;
  grid->addWidget(label, row, place);
  grid->addWidget(box, row, place + 1);
  grid->setColumnMinimumWidth(place + 2, 2 * fontMetrics().averageCharWidth());
}

void CurrentValuePage::enterPressedIn(std::int16_t fundRow) {
  const auto next = static_cast<std::size_t>(fundRow) + 1;
  if (next < CVInPrice_.size())
    CVInPrice_[next]->setFocus(Qt::TabFocusReason);
  else
    CVCalc_->click();
}

void CurrentValuePage::shown() {
  const ManagerState& state = manager().state();
  if (prices_ == nullptr || fundsShown_ != state.fundsRevision) {
    fundsShown_ = state.fundsRevision;
    makePriceBoxes();
  }
  if (dataShown_ != state.dataRevision || helpShown()) {
    dataShown_ = state.dataRevision;
    restoreReport();
  }
}

QWidget* CurrentValuePage::firstControl() {
  return CVInPrice_.size() > 1 ? CVInPrice_[1] : static_cast<QWidget*>(CVCalc_);
}

void CurrentValuePage::restoreReport() {
  showReport(manager().state().CVResults);
}

SheetMade CurrentValuePage::sheets() {
  return manager().currentValueSheet();
}

void CurrentValuePage::CVCalc_Click() {
  if (!host().leaveFocused()) return;
  Outcome outcome;
  {
    const BusyPointer busy;
    outcome = manager().calculateCurrentValue();
  }
  showReport(outcome.results);
  host().tell(outcome.message);
}

void CurrentValuePage::CVGraph_Click() {
  host().leaveFocused();
  if (const Message refused = manager().graphCurrentValue(); refused != Message::None)
    return host().tell(refused);
  host().global().chart.ChartNames = manager().fundNames();
  host().showChart();
}

void CurrentValuePage::CVHelp_Click() {
  host().leaveFocused();
  toggleHelp(currentValueHelp());
}

void CurrentValuePage::CVPrint_Click() {
  printShown();
}

void CurrentValuePage::CVExit_Click() {
  host().leave();
}

}  // namespace mirelund

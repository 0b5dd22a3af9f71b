// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/display_page.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QShortcut>
#include <utility>

#include "base/ui_text.h"
#include "dialogs/busy_pointer.h"
#include "manager/display_help.h"

namespace mirelund {

namespace {
constexpr int kReportColumns = 90;
constexpr int kListCharacters = 22;
constexpr int kNameCharacters = 80;
}  // namespace

DisplayPage::DisplayPage(ManagerHost& host) : ReportPage(host) {
  auto* row = new QHBoxLayout;
  makeList(row);
  makeReportSide(row);
  column()->addLayout(row, 1);
  makeButtons();
}

void DisplayPage::makeList(QHBoxLayout* row) {
  DDispFunds_ = new QListWidget(this);
  DDispFunds_->setObjectName("DDispFunds");
  DDispFunds_->setFixedWidth(kListCharacters * fontMetrics().averageCharWidth());
  auto* side = new QVBoxLayout;
  side->addWidget(addLabel("Funds", DDispFunds_));
  side->addWidget(DDispFunds_, 1);
  addButton(side, "DDisplall", "Display &All Funds", this, &DisplayPage::DDisplall_Click);
  row->addLayout(side);
  // Not by what the desktop calls activation: that may be a single click.
  connect(DDispFunds_, &QListWidget::itemDoubleClicked, this, &DisplayPage::DDispFunds_DblClick);
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(key, DDispFunds_);
    enter->setContext(Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, [this] {
      if (QListWidgetItem* item = DDispFunds_->currentItem()) DDispFunds_DblClick(item);
    });
  }
}

void DisplayPage::makeReportSide(QHBoxLayout* row) {
  QPlainTextEdit* box = makeReport("DDResults", "Transactions of the funds", kReportColumns);
  DDFund_ = addLabel(" ", box);
  DDFund_->setObjectName("DDFund");
  DDFund_->setTextFormat(Qt::PlainText);
  DDFund_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  QFont bold = DDFund_->font();
  bold.setBold(true);
  DDFund_->setFont(bold);
  auto* side = new QVBoxLayout;
  side->addWidget(DDFund_);
  side->addWidget(box, 1);
  row->addLayout(side, 1);
  connect(box->verticalScrollBar(), &QScrollBar::valueChanged, this, &DisplayPage::nameFundInView);
  // The box scrolls by the keyboard without a word from its bar.
  connect(box, &QPlainTextEdit::updateRequest, this, &DisplayPage::nameFundInView);
}

void DisplayPage::makeButtons() {
  auto* row = new QHBoxLayout;
  row->addStretch();
  addHelpButton(row, "DDHelp", this, &DisplayPage::DDHelp_Click);
  addPrintButton(row, "DDPrint", this, &DisplayPage::DDPrint_Click);
  addButton(row, "DDExit", "E&xit to menu", this, &DisplayPage::DDExit_Click);
  column()->addLayout(row);
}

void DisplayPage::shown() {
  const ManagerState& state = manager().state();
  if (fundsShown_ != state.fundsRevision) {
    fundsShown_ = state.fundsRevision;
    DDispFunds_->clear();
    for (const std::string& name : manager().fundNames()) DDispFunds_->addItem(toQString(name));
  }
  if (dataShown_ != state.dataRevision || helpShown()) {
    // A report of records that have changed since is no report.
    if (dataShown_ != state.dataRevision) {
      shownReport_ = {};
      shownFunds_ = kNoFund;
    }
    dataShown_ = state.dataRevision;
    restoreReport();
  }
}

QWidget* DisplayPage::firstControl() {
  return DDispFunds_;
}

void DisplayPage::restoreReport() {
  showReport(shownReport_.text);
  nameFundInView();
}

SheetMade DisplayPage::sheets() {
  if (shownReport_.text.empty()) return {};
  return shownFunds_ == kAllFunds ? manager().allFundsSheet() : manager().fundSheet(shownFunds_);
}

// Rows mean other funds when the funds have changed; all of them are all of them.
void DisplayPage::restored(const Restored& /*step*/) {
  const bool sameFunds = fundsShown_ == manager().state().fundsRevision;
  const std::int16_t again = sameFunds || shownFunds_ == kAllFunds ? shownFunds_ : kNoFund;
  shown();
  if (again != kNoFund) showFunds(again);
}

void DisplayPage::showFunds(std::int16_t which) {
  ReportShown shown;
  {
    const BusyPointer busy;
    shown = which == kAllFunds ? manager().showAllFunds() : manager().showFund(which);
  }
  shownFunds_ = which;
  shownReport_ = std::move(shown.report);
  restoreReport();
  host().tell(shown.message);
}

void DisplayPage::DDispFunds_DblClick(QListWidgetItem* item) {
  showFunds(static_cast<std::int16_t>(DDispFunds_->row(item) + 1));
}

void DisplayPage::DDisplall_Click() {
  showFunds(kAllFunds);
}

void DisplayPage::DDHelp_Click() {
  toggleHelp(displayHelp());
  nameFundInView();
}

void DisplayPage::DDPrint_Click() {
  printShown();
}

void DisplayPage::DDExit_Click() {
  host().leave();
}

void DisplayPage::nameFundInView() {
  // Without line wrap the bar counts lines.
  const auto top = static_cast<std::size_t>(report()->verticalScrollBar()->value());
  const std::int16_t row = helpShown() ? std::int16_t{0} : fundAtLine(shownReport_.blocks, top);
  const QString name = toQString(manager().fundName(row));
  DDFund_->setText(elidedName(DDFund_, name, kNameCharacters).replace('&', "&&"));
  setPlainToolTip(DDFund_, name);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/capital_required_page.h"

#include <QGridLayout>

#include "app/filtered_edit.h"
#include "base/ui_text.h"
#include "calc/capital_required.h"
#include "calc/capital_required_help.h"

namespace mirelund {

CapitalRequiredPage::CapitalRequiredPage(PageHost& host)
    : CalculatorPage(host, kCapitalRequiredBoxes) {
  QStringList captions;
  for (const auto& row : kCapitalTargets) captions << toQString(row.caption);
  const Options options = makeOptions("CRCapitalChoices", "Select option", captions);
  CRCapitalChoices_ = options.group;
  connect(CRCapitalChoices_, &QButtonGroup::idClicked, this,
          &CapitalRequiredPage::CRCapitalChoices_Click);
  addWidget(options.frame);
  auto* grid = new QGridLayout;
  addAllBoxRows(grid);
  addContent(grid);
  // A report of other figures than the boxes show would mislead.
  for (auto* edit : findChildren<BoxEdit*>())
    connect(edit, &FilteredEdit::emptied, this, [this] { this->host().emptyReport(); });
  addButtons("CR", this, &CapitalRequiredPage::CRCalculate_Click,
             &CapitalRequiredPage::CRHelp_Click, &CapitalRequiredPage::CRPrint_Click);
}

void CapitalRequiredPage::load() {
  CRCapitalChoices_->button(0)->setChecked(true);
  choose(0);
}

void CapitalRequiredPage::choose(int option) {
  setOption(option, switchCapitalOption(boxes(), reports(), CapitalOption_,
                                        static_cast<CapitalTarget>(option)));
}

void CapitalRequiredPage::CRCapitalChoices_Click(int option) {
  // Not a change: it is in force.
  if (CapitalOption_ == kCapitalTargets[static_cast<std::size_t>(option)].capitalOption) return;
  host().leaveFocused();
  host().emptyReport();
  choose(option);
}

void CapitalRequiredPage::CRCalculate_Click() {
  if (!host().leaveFocused()) return;
  host().show(calculateCapitalRequired(
      boxes(), reports(), chart(), CapitalOption_,
      {textOf("CRInCapitalReq"), textOf("CRInIntGrowthRate"), textOf("CRInTimeInYrs")}));
}

void CapitalRequiredPage::CRHelp_Click() {
  host().show(showHelp(reports(), capitalRequiredHelp()));
}

void CapitalRequiredPage::CRPrint_Click() {
  host().print();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/retirement_income_page.h"

#include <QGridLayout>

#include "base/ui_text.h"
#include "calc/retirement_income.h"
#include "calc/retirement_income_help.h"

namespace mirelund {

RetirementIncomePage::RetirementIncomePage(PageHost& host)
    : CalculatorPage(host, kRetirementIncomeBoxes) {
  QStringList captions;
  for (const auto& row : kWithdrawalChoices) captions << toQString(row.caption);
  const Options options = makeOptions("RIWDrawalChoice", "Withdrawal option", captions);
  RIWDrawalChoice_ = options.group;
  connect(RIWDrawalChoice_, &QButtonGroup::idClicked, this,
          &RetirementIncomePage::RIWDrawalChoice_Click);
  addWidget(options.frame);
  auto* grid = new QGridLayout;
  addAllBoxRows(grid);
  addContent(grid);
  addButtons("RI", this, &RetirementIncomePage::RICalculate_Click,
             &RetirementIncomePage::RIHelp_Click, &RetirementIncomePage::RIPrint_Click);
}

void RetirementIncomePage::load() {
  RIWDrawalChoice_->button(0)->setChecked(true);
  choose(0);
  CalculatorPage::load();
}

void RetirementIncomePage::choose(int option) {
  setOption(option, SwitchWithdrawalOption(boxes(), reports(), WithdrawalOption_,
                                           static_cast<WithdrawalChoice>(option)));
}

void RetirementIncomePage::RIWDrawalChoice_Click(int option) {
  // Not a change: it is in force.
  if (WithdrawalOption_ == kWithdrawalChoices[static_cast<std::size_t>(option)].withdrawalOption)
    return;
  host().leaveFocused();
  host().emptyReport();
  choose(option);
}

void RetirementIncomePage::RICalculate_Click() {
  if (!host().leaveFocused()) return;
  host().show(calculateRetirementIncome(boxes(), reports(), chart(), WithdrawalOption_,
                                        {textOf("RIInCurrValue"), textOf("RIInAnnIntGrowthRate"),
                                         textOf("RIInAnnIncWDrawnRate"), textOf("RIInTimeInYrs")}));
}

void RetirementIncomePage::RIHelp_Click() {
  const auto choice = static_cast<WithdrawalChoice>(RIWDrawalChoice_->checkedId());
  host().show(showHelp(reports(), retirementIncomeHelp(choice)));
}

void RetirementIncomePage::RIPrint_Click() {
  host().print();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/compound_gain_page.h"

#include <QGridLayout>

#include "app/filtered_edit.h"
#include "calc/compound_gain.h"
#include "calc/compound_gain_help.h"

namespace mirelund {

CompoundGainPage::CompoundGainPage(PageHost& host) : CalculatorPage(host, kCompoundGainBoxes) {
  auto* grid = new QGridLayout;
  addAllBoxRows(grid);
  addContent(grid);
  addButtons("CG", this, &CompoundGainPage::CGCalculate_Click, &CompoundGainPage::CGHelp_Click,
             &CompoundGainPage::CGPrint_Click);
}

void CompoundGainPage::load() {
  CalculatorPage::load();
  box("CGInNameOfInvest")->setText("XYZ Mutual Fund");
}

void CompoundGainPage::CGCalculate_Click() {
  if (!host().leaveFocused()) return;
  host().show(calculateCompoundGain(boxes(), reports(), chart(),
                                    {textOf("CGInCostofInvest"), textOf("CGInValueNow"),
                                     textOf("CGInNumOfYrs"), textOf("CGInNameOfInvest")}));
}

void CompoundGainPage::CGHelp_Click() {
  host().show(showHelp(reports(), compoundGainHelp()));
}

void CompoundGainPage::CGPrint_Click() {
  host().print();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/pension_growth_page.h"

#include <QGridLayout>

#include "calc/pension_growth.h"
#include "calc/pension_growth_help.h"

namespace mirelund {

PensionGrowthPage::PensionGrowthPage(PageHost& host) : CalculatorPage(host, kPensionGrowthBoxes) {
  auto* grid = new QGridLayout;
  addAllBoxRows(grid);
  addContent(grid);
  addButtons("PG", this, &PensionGrowthPage::PGCalculate_Click, &PensionGrowthPage::PGHelp_Click,
             &PensionGrowthPage::PGPrint_Click);
}

void PensionGrowthPage::PGCalculate_Click() {
  if (!host().leaveFocused()) return;
  host().show(calculatePensionGrowth(boxes(), reports(), chart(),
                                     {.balance = textOf("PGInCurrBalance"),
                                      .salary = textOf("PGInCurrAnnSalary"),
                                      .own = textOf("PGInAnnContribRate"),
                                      .company = textOf("PGInCompAnnContribRate"),
                                      .salaryIncrease = textOf("PGInEstSalIncrease"),
                                      .growth = textOf("PGInAnnIntGrowthRate"),
                                      .inflation = textOf("PGInEstAnnFlatRate"),
                                      .years = textOf("PGInNumYearsToRetire")}));
}

void PensionGrowthPage::PGHelp_Click() {
  host().show(showHelp(reports(), pensionGrowthHelp()));
}

void PensionGrowthPage::PGPrint_Click() {
  host().print();
}

}  // namespace mirelund

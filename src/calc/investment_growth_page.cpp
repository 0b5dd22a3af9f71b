// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/investment_growth_page.h"

#include <QComboBox>
#include <QGridLayout>

#include "base/ui_text.h"
#include "calc/investment_growth.h"
#include "calc/investment_growth_help.h"

namespace mirelund {

InvestmentGrowthPage::InvestmentGrowthPage(PageHost& host)
    : CalculatorPage(host, kInvestmentGrowthBoxes) {
  QStringList frequencies;
  for (const auto& row : kContributionFrequencies) frequencies << toQString(row.text);
  QStringList captions;
  for (const auto& row : kGrowthResults) captions << toQString(row.caption);

  auto* grid = new QGridLayout;
  addBoxRow(grid, "IGInBegBal");
  addBoxRow(grid, "IGInEachContrib");
  IGInMonthsYrs_ = addListRow(grid, "IGInMonthsYrs", "Frequency of contribution", frequencies);
  addBoxRow(grid, "IGInIntGrowthRate");
  addBoxRow(grid, "IGInAnnContribRate");
  addBoxRow(grid, "IGInAnninFlatRate");
  addBoxRow(grid, "IGInYearsInvested");
  addContent(grid);
  const Options options = makeOptions("IGResultsChoice", "Show results", captions);
  IGResultsChoice_ = options.group;
  addWidget(options.frame);
  addButtons("IG", this, &InvestmentGrowthPage::IGCalculate_Click,
             &InvestmentGrowthPage::IGHelp_Click, &InvestmentGrowthPage::IGPrint_Click);
}

void InvestmentGrowthPage::load() {
  CalculatorPage::load();
  // Contributions a year, as the list starts.
  boxes().InputValues[3] = Currency::whole(kContributionFrequencies[0].periodsPerYear);
  IGInMonthsYrs_->setCurrentIndex(0);
  IGResultsChoice_->button(0)->setChecked(true);
}

void InvestmentGrowthPage::IGCalculate_Click() {
  if (!host().leaveFocused()) return;
  const auto frequency = static_cast<std::size_t>(IGInMonthsYrs_->currentIndex());
  host().show(calculateInvestmentGrowth(
      boxes(), reports(), chart(),
      {.beginning = textOf("IGInBegBal"),
       .contribution = textOf("IGInEachContrib"),
       .frequency = kContributionFrequencies[frequency].frequency,
       .growth = textOf("IGInIntGrowthRate"),
       .increase = textOf("IGInAnnContribRate"),
       .inflation = textOf("IGInAnninFlatRate"),
       .years = textOf("IGInYearsInvested"),
       .results = static_cast<GrowthResults>(IGResultsChoice_->checkedId())}));
}

void InvestmentGrowthPage::IGHelp_Click() {
  host().show(showHelp(reports(), investmentGrowthHelp()));
}

void InvestmentGrowthPage::IGPrint_Click() {
  host().print();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/calculator_page.h"

namespace mirelund {

class InvestmentGrowthPage : public CalculatorPage {
  Q_OBJECT

 public:
  explicit InvestmentGrowthPage(PageHost& host);

  void load() override;

 private:
  void IGCalculate_Click();
  void IGHelp_Click();
  void IGPrint_Click();

  QComboBox* IGInMonthsYrs_;
  QButtonGroup* IGResultsChoice_;
};

}  // namespace mirelund

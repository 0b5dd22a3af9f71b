// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/calculator_page.h"

namespace mirelund {

class CapitalRequiredPage : public CalculatorPage {
  Q_OBJECT

 public:
  explicit CapitalRequiredPage(PageHost& host);

  void load() override;

 private:
  void CRCapitalChoices_Click(int option);
  void CRCalculate_Click();
  void CRHelp_Click();
  void CRPrint_Click();

  void choose(int option);

  QButtonGroup* CRCapitalChoices_;
  std::int16_t CapitalOption_ = 0;  ///< 2: the page works on an annual income
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/calculator_page.h"

namespace mirelund {

class RetirementIncomePage : public CalculatorPage {
  Q_OBJECT

 public:
  explicit RetirementIncomePage(PageHost& host);

  void load() override;

 private:
  void RIWDrawalChoice_Click(int option);
  void RICalculate_Click();
  void RIHelp_Click();
  void RIPrint_Click();

  void choose(int option);

  QButtonGroup* RIWDrawalChoice_;
  std::int16_t WithdrawalOption_ = 0;  ///< 2: a fixed amount is taken
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/calculator_page.h"

namespace mirelund {

class PensionGrowthPage : public CalculatorPage {
  Q_OBJECT

 public:
  explicit PensionGrowthPage(PageHost& host);

 private:
  void PGCalculate_Click();
  void PGHelp_Click();
  void PGPrint_Click();
};

}  // namespace mirelund

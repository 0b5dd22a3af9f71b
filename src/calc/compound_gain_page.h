// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/calculator_page.h"

namespace mirelund {

class CompoundGainPage : public CalculatorPage {
  Q_OBJECT

 public:
  explicit CompoundGainPage(PageHost& host);

  void load() override;

 private:
  void CGCalculate_Click();
  void CGHelp_Click();
  void CGPrint_Click();
};

}  // namespace mirelund

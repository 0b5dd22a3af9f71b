// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/compound_gain_help.h"

#include <string_view>

#include "app/report_line.h"

namespace mirelund {

std::string compoundGainHelp() {
  constexpr std::string_view kDollar = MoneySymbol;
  std::string help;
  appendLine(help, "Compare up to 10 different investments on");
  appendLine(help, "an annual compound yield basis. Click");
  appendLine(help, "Calculate after each change made.");
  appendLine(help);
  appendLine(help, "Enter the Cost of your Investment, then the");
  appendLine(help, "Present or Future Value and the term in");
  appendLine(help, "years it has or will be held.");
  appendLine(help);
  appendLine(help, "Example 1. Amount invested in Mutual Fund.");
  appendLine(help, "Cost = ", kDollar, "1,000.00, 5 years later with all");
  appendLine(help, "dividends and capital gains reinvested its ");
  appendLine(help, "value is ", kDollar, "2,000.00 for an annual compound");
  appendLine(help, "growth rate of 14.870%.");
  appendLine(help);
  appendLine(help, "Example 2. House cost ", kDollar, "25,000.00, 20 years");
  appendLine(help, "ago now valued ", kDollar, "200,000 for an annual");
  appendLine(help, "compound growth rate of 10.957%.");
  appendLine(help);
  appendLine(help, "Example 3. Stripped Bond with a redemption");
  appendLine(help, "value of ", kDollar, "1,000.00 in 6 years, cost ", kDollar, "500.00.");
  appendLine(help, "Annual compound growth = 12.246%.");
  appendLine(help);
  appendLine(help, "Example 4. Growth in earnings per share.");
  appendLine(help, "Earnings: (Cost) 1995 = ", kDollar, "2.38, (Value) 2001");
  appendLine(help, " = ", kDollar, "5.14. Annual compound growth rate for the");
  appendLine(help, "6 years = 13.692%.");
  return help;
}

}  // namespace mirelund

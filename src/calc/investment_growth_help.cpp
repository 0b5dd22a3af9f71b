// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/investment_growth_help.h"

#include <string_view>

#include "app/report_line.h"

namespace mirelund {

std::string investmentGrowthHelp() {
  std::string help;
  // The rows are the page's inputs, from top to bottom.
  appendLine(help, "Example 1  Example 2   Example 3   Example 4");
  appendLine(help, "      .00   1,000.00         .00   30,000.00");
  // "1.000.00" is required, as is "annnual" below (HelpText.InvestmentGrowth).
  appendLine(help, " 1,000.00        .00    1.000.00         .00");
  appendLine(help, " Annually   Annually    Annually    Annually");
  appendLine(help, "       20%        20%         20%        .00%");
  appendLine(help, "      .00%       .00%       5.00%        .00%");
  appendLine(help, "      .00%       .00%        .00%       5.00%");
  appendLine(help, "       25         25          25          25");
  appendLine(help);
  const std::string_view dollar = MoneySymbol;
  appendLine(help, "Example 1: Shows future value of ", dollar, "1,000.00");
  appendLine(help, "invested each year for 25 years at a 20%");
  appendLine(help, "Interest/Growth Rate compounded annually.");
  appendLine(help);
  appendLine(help, "Example 2: Shows future value of a lump sum");
  appendLine(help, "of ", dollar, "1,000.00 invested for 25 years at a 20%");
  appendLine(help, "Interest/Growth Rate compounded annually.");
  appendLine(help);
  appendLine(help, "Example 3: Shows future value of ", dollar, "1,000.00");
  appendLine(help, "invested the first year and increased by a");
  appendLine(help, "5% annual Rate in each year, for 25 years at");
  appendLine(help, "20% Interest/Growth Rate compounded annually.");
  appendLine(help);
  appendLine(help, "Example 4: Shows what the future purchasing");
  appendLine(help, "value would be of ", dollar, "30,000.00 at a 5% annnual");
  appendLine(help, "inflation Rate for 25 years.");
  appendLine(help);
  appendLine(help, "Any combination of entries can be used.");
  appendLine(help);
  appendLine(help, "When changing frequency, be sure contribution");
  appendLine(help, "amount is scaled to it.");
  appendLine(help);
  appendLine(help, "Compounding takes place at the frequency");
  appendLine(help, "chosen: Annually, once a year. Quarterly,");
  appendLine(help, "4 times a year. Monthly, 12 times a year.");
  appendLine(help);
  appendLine(help, "All percentage rates used in monthly and");
  appendLine(help, "quarterly calculations are adjusted for");
  appendLine(help, "the annual percentage rate.");
  return help;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/capital_required_help.h"

#include <string_view>

#include "calc/capital_required.h"

namespace mirelund {

std::string capitalRequiredHelp() {
  const auto labelOf = [](std::string_view box, CapitalTarget target) {
    return boxRule(kCapitalRequiredBoxes, box, static_cast<int>(target)).label;
  };
  const std::string dollar(MoneySymbol);
  std::string help;
  appendLine(help, "    Amount of Capital Required Option");
  appendLine(help);
  appendExample(help, labelOf("CRInCapitalReq", CapitalTarget::Capital), dollar + "100,000.00");
  appendExample(help, labelOf("CRInIntGrowthRate", CapitalTarget::Capital), "        20%");
  appendExample(help, labelOf("CRInTimeInYrs", CapitalTarget::Capital), "         25");
  appendLine(help);
  appendLine(help, "Example. Will show how much annual savings");
  appendLine(help, "are required for 25 years when compounded");
  appendLine(help, "annually at 20% interest/growth rate to");
  appendLine(help, "build your capital to ", dollar, "100,000.00.");
  appendLine(help);
  appendLine(help, "    Annual Income Required Option");
  appendLine(help);
  appendExample(help, labelOf("CRInCapitalReq", CapitalTarget::AnnualIncome), dollar + "40,000.00");
  appendExample(help, labelOf("CRInIntGrowthRate", CapitalTarget::AnnualIncome), "       20%");
  appendExample(help, labelOf("CRInTimeInYrs", CapitalTarget::AnnualIncome), "        25");
  appendLine(help);
  appendLine(help, "Example. Will show how much annual savings");
  appendLine(help, "are required for 25 years when compounded");
  appendLine(help, "annually at 20% to build your capital to");
  appendLine(help, "give an annual income of ", dollar, "40,000.00.");
  return help;
}

}  // namespace mirelund

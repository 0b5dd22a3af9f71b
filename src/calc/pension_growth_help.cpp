// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/pension_growth_help.h"

#include <string_view>

#include "app/report_line.h"

namespace mirelund {

// "have already have" is required: HelpText.PensionGrowth.
std::string pensionGrowthHelp() {
  std::string help;
  appendLine(help, "To view the hidden Value column on the");
  appendLine(help, "right use the scroll bar.");
  appendLine(help);
  appendLine(help, "If you have already have a plan, type the");
  appendLine(help, "current balance. If none type 0.");
  appendLine(help);
  appendLine(help, "Type in your current annual salary.");
  appendLine(help);
  appendLine(help, "Type in your annual contribution rate.");
  appendLine(help);
  appendLine(help, "Your company contribution rate. If none");
  appendLine(help, "type 0.");
  appendLine(help);
  appendLine(help, "Type in the estimated percentage of annual");
  appendLine(help, "salary increase.");
  appendLine(help);
  appendLine(help, "Type estimated annual interest/growth rate.");
  appendLine(help);
  appendLine(help, "Type in inflation rate. Current Value each");
  appendLine(help, "year will be reduced at this rate.");
  appendLine(help);
  appendLine(help, "Type in the estimated number of years to");
  appendLine(help, "retirement.");
  appendLine(help);
  appendLine(help, "In USA also use for 401(k) investment plan.");
  return help;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage_help.h"

#include <string_view>

#include "app/report_line.h"

namespace mirelund {

std::string mortgageHelp() {
  constexpr std::string_view kLines[] = {
      "Calculations are automatic, change the",
      "values in any green input box and on",
      "leaving the box a new result is calculated",
      "and shown in the white result boxes.",
      "",
      "Compare up to 10 different Mortgages.",
      "Click Calculate to show results in the",
      "Results textbox after each change made.",
      "",
      "Conventional Mortgage: Calculation, inputs",
      "and results are for normal (conventional)",
      "mortgages. Interest compounding periods per",
      "year: U.S.A. = Monthly, Canada = Semiannual.",
      "",
      "Select to find: Change to Principal, Years or",
      "Payment to solve for these. White result box",
      "shows beside whichever one is selected.",
      "",
      "Example: To solve for how much Principal you",
      "could afford for a given Monthly payment.",
      "In Select to find: click on Principal, then",
      "type in the Monthly payment, on leaving the",
      "box, results will show in the white boxes.",
      "",
      "When using Select to find: - Years: Box",
      "will show results to two decimal places but",
      "will only allow whole year input.",
      "",
      "Since a (conventional) normal mortgage is",
      "based on 360 days per year, use Monthly",
      "settings for loans also.",
      "",
      "Accelerated Mortgage: Biweekly(acl) and",
      "Weekly(acl). Shows results for selected",
      "'Frequency and type of payment'.",
      "",
      "Days in year: Some lenders use different",
      "days in year to calculate accelerated",
      "mortgages. Most use 365 days. Monthly or",
      "Semimonthly calculations are not affected",
      "and the option button is disabled when",
      "using these.",
  };
  std::string help;
  for (const std::string_view line : kLines) appendLine(help, line);
  return help;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/capital_required.h"

#include <cmath>

#include "app/formatting.h"
#include "app/input_boxes.h"
#include "charts/chart_kind.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

const CapitalTargetRow& targetRow(std::int16_t capitalOption) {
  return kCapitalTargets[capitalOption == kCapitalTargets[1].capitalOption ? 1 : 0];
}

std::string reportOf(const CapitalTargetRow& target, const CapitalRequiredTexts& texts,
                     const CapitalRequired& result) {
  std::string report;
  report.reserve(320 + 47 * result.rows.size());
  appendLine(report, target.reportLabel, texts.capital);
  appendLine(report, "Annual interest/growth rate:      ", texts.rate);
  appendLine(report, "Number of years:                     ", texts.years);
  appendLine(report);
  appendLine(report, "Year     Invested    Int/Growth         Value");
  appendLine(report, kUnderline);
  for (const TableRow& row : result.rows) appendTableRow(report, row);
  appendLine(report, kUnderline);
  appendTotals(report, "Tot", result.totals);
  return report;
}

}  // namespace

CapitalRequired capitalRequired(const CapitalRequiredInput& input) {
  const std::size_t years = wholeYears(input.years);
  const double rate = input.ratePercent.toDouble();
  const double i = rate / 100.0;
  double capital = input.amount.toDouble();
  if (input.target == CapitalTarget::AnnualIncome) capital *= 100.0 / rate;

  // An infinite denominator would make a plausible 0 of the quotient.
  const double denominator =
      finite((1.0 + i) * (std::pow(1.0 + i, static_cast<double>(years)) - 1.0));
  CapitalRequired result;
  result.yearlyInvestment = finite(capital * i / denominator);

  const Currency invested = ToCurrency(result.yearlyInvestment);
  double value = 0.0;
  double totalInvested = 0.0;
  double totalInterest = 0.0;
  result.rows.reserve(years);
  for (std::size_t year = 1; year <= years; ++year) {
    const double interest = i * (value + result.yearlyInvestment);
    value = value + result.yearlyInvestment + interest;
    totalInvested += result.yearlyInvestment;
    totalInterest += interest;
    result.rows.push_back({periodNumber(year), invested, ToCurrency(interest), ToCurrency(value)});
  }
  result.totals = {periodNumber(years + 1), ToCurrency(totalInvested), ToCurrency(totalInterest),
                   ToCurrency(value)};
  return result;
}

Outcome calculateCapitalRequired(Global& global, const CapitalRequiredTexts& texts) {
  global.BoxEdited = 0;
  const CapitalTargetRow& target = targetRow(global.CapitalOption);
  try {
    const CapitalRequired result = capitalRequired(
        {target.target, global.InputValues[1], global.InputValues[2], global.InputValues[3]});
    std::string report = reportOf(target, texts, result);
    storeTable(global.ComparisonTable, result.rows, result.totals);
    global.ChartCount = static_cast<std::int16_t>(result.rows.size());
    global.ChartKind = chart::kCapitalRequired;
    global.ChartTitle = "Growth in capital required over ";
    return replaceReport(global, std::move(report));
  } catch (const ArithmeticError&) {
    return Outcome::failed(message::kWrongEntry);
  }
}

std::vector<ShownText> switchCapitalOption(Global& global, CapitalTarget target) {
  const auto option = static_cast<int>(target);
  global.CapitalOption = kCapitalTargets[static_cast<std::size_t>(option)].capitalOption;
  global.ReportLines[1].clear();
  std::vector<ShownText> shown;
  for (const char* box : {"CRInCapitalReq", "CRInIntGrowthRate", "CRInTimeInYrs"}) {
    const BoxRule& rule = boxRule(box, option);
    shown.push_back({rule.name, loadBox(global, rule)});
    if (!rule.labelName.empty()) shown.push_back({rule.labelName, std::string(rule.label)});
  }
  return shown;
}

std::string capitalRequiredHelp() {
  const auto labelOf = [](std::string_view box, CapitalTarget target) {
    return boxRule(box, static_cast<int>(target)).label;
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

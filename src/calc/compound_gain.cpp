// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/compound_gain.h"

#include <cmath>

#include "app/formatting.h"
#include "calc/calculation.h"
#include "charts/chart_kind.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

// Year ends at the constant rate, whole currency units (truncated).
void fillSeries(CurrencyTable& table, const CompoundGainInput& input, double annualRate) {
  const auto years = static_cast<std::size_t>(input.years.toDouble());
  double running = input.cost.toDouble() * (1.0 + annualRate);
  for (std::size_t year = 1; year <= years; ++year) {
    if (year > 1) running += annualRate * running;
    table.at(year, 1) = Currency::whole(static_cast<std::int64_t>(year));
    table.at(year, 4) = ToCurrency(std::trunc(running));
  }
}

}  // namespace

CompoundGain compoundGain(const CompoundGainInput& input) {
  const double cost = input.cost.toDouble();
  const double value = input.value.toDouble();
  CompoundGain gain;
  gain.annualRate = finite(std::exp(std::log(value / cost) / input.years.toDouble()) - 1.0);
  gain.totalGain = finite((value - cost) / cost);
  return gain;
}

void appendCompoundGainHeading(std::string& report, const CompoundGainTexts& texts) {
  appendLines(report, "Cost of Investment:          ", texts.cost, NewLine,
              "Present/future value:        ", texts.value, NewLine,
              "Number of years invested:              ", texts.years);
  report += "Name of investment:";
  appendRight(report, texts.name, 23);
  appendLines(report, NewLine, NewLine, "Years     Cost        Value  Annual%   Total%", NewLine,
              kUnderline);
}

void appendCompoundGainRow(std::string& report, const CompoundGainInput& input,
                           const CompoundGain& gain) {
  appendColumn(report, input.years, "##", 2);
  appendColumn(report, input.cost, "####,,###.00", 12);
  appendColumn(report, input.value, "####,,###.00", 13);
  appendColumn(report, gain.annualRate, "###.000%", 9);
  appendColumn(report, gain.totalGain, "###.00%", 9);
  appendLines(report, NewLine, kUnderline, NewLine);
}

Outcome calculateCompoundGain(Global& global, const CompoundGainTexts& texts) {
  startOverIfAsked(global);
  global.BoxEdited = 0;
  countComparison(global);
  global.ComparisonTable.redimension(kComparisonTableRows, kComparisonTableColumns);
  std::string& report = global.ReportLines[1];
  appendCompoundGainHeading(report, texts);

  const CompoundGainInput input{global.InputValues[1], global.InputValues[2],
                                global.InputValues[3]};
  if (input.cost.isZero() || input.value.isZero() || input.years.isZero())
    return Outcome::failed(message::kAllThreeBoxes);
  try {
    ++global.CalculationCount;
    const CompoundGain gain = compoundGain(input);
    fillSeries(global.ComparisonTable, input, gain.annualRate);
    appendCompoundGainRow(report, input, gain);
    const auto row = static_cast<std::size_t>(global.ComparisonCount);
    global.ComparisonTotals.at(row, 1) = ToCurrency(100.0 * gain.annualRate);
  } catch (const ArithmeticError&) {
    return Outcome::failed(message::kWrongEntry);
  }
  global.ChartCount = global.ComparisonCount;
  global.ChartKind = chart::kCompoundGain;
  // "comparisions" is required: CompoundGain.FillsTheChart.
  global.ChartTitle = "Percentage gain/loss for comparisions ";
  return showComparisons(global);
}

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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/compound_gain.h"

#include <cmath>

#include "calc/calculation.h"
#include "charts/chart_kind.h"

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

Outcome calculateCompoundGain(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                              const CompoundGainTexts& texts) {
  startOverIfAsked(reports);
  boxes.BoxEdited = 0;
  countComparison(reports, chart);
  reports.ComparisonTable.redimension(kComparisonTableRows, kComparisonTableColumns);
  std::string& report = reports.ReportLines[1];
  appendCompoundGainHeading(report, texts);

  const CompoundGainInput input{boxes.InputValues[1], boxes.InputValues[2], boxes.InputValues[3]};
  if (input.cost.isZero() || input.value.isZero() || input.years.isZero())
    return Outcome::failed(Message::AllThreeBoxes);
  try {
    const CompoundGain gain = compoundGain(input);
    fillSeries(reports.ComparisonTable, input, gain.annualRate);
    appendCompoundGainRow(report, input, gain);
    const auto row = static_cast<std::size_t>(reports.ComparisonCount);
    reports.ComparisonTotals.at(row, 1) = ToCurrency(100.0 * gain.annualRate);
  } catch (const ArithmeticError&) {
    return Outcome::failed(Message::WrongEntry);
  }
  chart.ChartCount = reports.ComparisonCount;
  chart.ChartKind = ChartKind::CompoundGain;
  // "comparisions" is required: CompoundGain.FillsTheChart.
  chart.ChartTitle = "Percentage gain/loss for comparisions ";
  return showComparisons(reports);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/compound_gain.h"

#include <cmath>
#include <utility>
#include <vector>

#include "base/attempt.h"
#include "calc/calculation.h"
#include "charts/chart_kind.h"

namespace mirelund {

namespace {

// Year ends at the constant rate, whole currency units (truncated).
std::vector<Currency> yearEnds(const CompoundGainInput& input, double annualRate) {
  const auto years = static_cast<std::size_t>(input.years.toDouble());
  require(years < kComparisonTableRows, "more years than the table has rows");
  std::vector<Currency> ends;
  ends.reserve(years);
  double running = input.cost.toDouble() * (1.0 + annualRate);
  for (std::size_t year = 1; year <= years; ++year) {
    if (year > 1) running += annualRate * running;
    ends.push_back(ToCurrency(std::trunc(running)));
  }
  return ends;
}

// All figures of a comparison, or the message that stands for them.
struct Comparison {
  CompoundGain gain;
  Currency annualPercent;
  std::vector<Currency> yearEnds;
  Message refused = Message::None;
};

Comparison compared(const CompoundGainInput& input) {
  Comparison comparison;
  if (input.cost.isZero() || input.value.isZero() || input.years.isZero()) {
    comparison.refused = Message::AllThreeBoxes;
    return comparison;
  }
  try {
    comparison.gain = compoundGain(input);
    comparison.annualPercent = ToCurrency(100.0 * comparison.gain.annualRate);
    comparison.yearEnds = yearEnds(input, comparison.gain.annualRate);
  } catch (const ArithmeticError&) {
    comparison.refused = Message::WrongEntry;
  }
  return comparison;
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
                              const CompoundGainTexts& texts) noexcept {
  boxes.BoxEdited = 0;
  return attempt(Outcome::failed(Message::WrongEntry), [&] {
    const CompoundGainInput input{boxes.InputValues[1], boxes.InputValues[2], boxes.InputValues[3]};
    const Comparison comparison = compared(input);
    const bool good = comparison.refused == Message::None;
    std::string report = comparisonsSoFar(reports);
    appendCompoundGainHeading(report, texts);
    if (good) appendCompoundGainRow(report, input, comparison.gain);
    std::string shown = report;
    // "comparisions" is required: CompoundGain.FillsTheChart.
    std::string title = "Percentage gain/loss for comparisions ";

    startOverIfAsked(reports);
    countComparison(reports, chart);
    reports.ReportLines[1] = std::move(report);
    reports.ComparisonTable.redimension(kComparisonTableRows, kComparisonTableColumns);
    if (!good) return Outcome::failed(comparison.refused);
    std::size_t year = 0;
    for (const Currency end : comparison.yearEnds) {
      ++year;
      reports.ComparisonTable.at(year, 1) = Currency::whole(static_cast<std::int64_t>(year));
      reports.ComparisonTable.at(year, 4) = end;
    }
    const auto row = static_cast<std::size_t>(reports.ComparisonCount);
    reports.ComparisonTotals.at(row, 1) = comparison.annualPercent;
    chart.ChartCount = reports.ComparisonCount;
    chart.ChartKind = ChartKind::CompoundGain;
    chart.ChartTitle = std::move(title);
    return showComparisons(reports, std::move(shown));
  });
}

}  // namespace mirelund

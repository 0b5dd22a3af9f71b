// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/investment_growth.h"

#include <cmath>

#include "app/formatting.h"
#include "app/input_boxes.h"
#include "charts/chart_kind.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

const ContributionFrequencyRow& rowOf(ContributionFrequency frequency) {
  return kContributionFrequencies.at(static_cast<std::size_t>(frequency));
}

InvestmentGrowthInput inputOf(const Global& global, ContributionFrequency frequency) {
  const auto& slots = global.InputValues;
  return {slots[1], slots[2], slots[4], slots[5], slots[6], slots[7], frequency};
}

void appendHeading(std::string& report, const InvestmentGrowthTexts& texts) {
  const ContributionFrequencyRow& frequency = rowOf(texts.frequency);
  appendLine(report, "Beginning balance:          ", texts.beginning);
  appendLine(report, "Each contribution:          ", texts.contribution);
  appendLine(report, "Frequency of contribution:     ", frequency.text);
  appendLine(report, "Annual growth rate:                 ", texts.growth);
  appendLine(report, "Increase annual contribution:       ", texts.increase);
  appendLine(report, "Annual inflation rate:              ", texts.inflation);
  appendLine(report, "Number years invested:                 ", texts.years);
  appendLine(report, frequency.rowLabel, " Invested    Int/Growth         Value");
  appendLine(report, kUnderline);
}

Outcome showComplete(Global& global, const InvestmentGrowthTexts& texts,
                     const InvestmentGrowth& result) {
  std::string report;
  report.reserve(512 + 47 * result.rows.size());
  appendHeading(report, texts);
  for (const TableRow& row : result.rows) appendTableRow(report, row);
  appendLine(report, kUnderline);
  appendTableRow(report, result.totals);

  global.ComparisonCount = 0;
  countComparison(global);
  storeTable(global.ComparisonTable, result.rows, result.totals);
  global.ChartKind = chart::kGrowthYears;
  global.ChartCount = result.years;
  global.ChartPeriodsPerYear = result.periodsPerYear;
  global.ChartPeriods = static_cast<std::int16_t>(result.rows.size());
  global.ChartTitle = "Investment growth over ";
  return replaceReport(global, std::move(report));
}

Outcome showComparison(Global& global, const InvestmentGrowth& result) {
  std::string& report = global.ReportLines[1];
  appendTableRow(report, result.totals);
  appendLine(report, kUnderline);
  appendLine(report);

  storeTable(global.ComparisonTable, result.rows, result.totals);
  global.ComparisonTotals.at(static_cast<std::size_t>(global.ComparisonCount), 1) =
      result.totals.value;
  global.ChartCount = global.ComparisonCount;
  global.ChartKind = chart::kGrowthComparisons;
  global.ChartTitle = "Totals for comparisons, number ";
  return showComparisons(global);
}

}  // namespace

double periodRate(Currency percent, int periodsPerYear) {
  const double k = periodsPerYear;
  const double effective = std::pow(1.0 + percent.toDouble() / 100.0, 1.0 / k) - 1.0;
  const double nominalPercent = effective * k * 100.0;
  return finite(nominalPercent / k / 100.0);
}

InvestmentGrowth investmentGrowth(const InvestmentGrowthInput& input) {
  InvestmentGrowth result;
  result.periodsPerYear = rowOf(input.frequency).periodsPerYear;
  const std::size_t years = wholeYears(input.years);
  result.years = static_cast<std::int16_t>(years);
  const std::size_t periods = years * static_cast<std::size_t>(result.periodsPerYear);
  const auto growth = static_cast<float>(periodRate(input.growthPercent, result.periodsPerYear));
  const double increase = periodRate(input.increasePercent, result.periodsPerYear);
  const double inflation = periodRate(input.inflationPercent, result.periodsPerYear);

  Currency contribution = input.contribution;
  Currency totalInvested = input.beginning + contribution;
  Currency interest = RateTimesAmount(totalInvested.toDouble(), growth);
  double value = (input.beginning + (contribution + interest)).toDouble();
  value = value - value * inflation;
  result.rows.reserve(periods);
  result.rows.push_back({periodNumber(1), totalInvested, interest, ToCurrency(value)});
  for (std::size_t period = 2; period <= periods; ++period) {
    contribution = ToCurrency(contribution.toDouble() * increase + contribution.toDouble());
    const double base = value + contribution.toDouble();
    interest = RateTimesAmount(base, growth);
    value = interest.toDouble() + base;
    value = value - value * inflation;
    totalInvested += contribution;
    result.rows.push_back({periodNumber(period), contribution, interest, ToCurrency(value)});
  }
  const Currency finalValue = result.rows.back().value;
  result.totals = {periodNumber(periods), totalInvested, finalValue - totalInvested, finalValue};
  return result;
}

Outcome calculateInvestmentGrowth(Global& global, const InvestmentGrowthTexts& texts) {
  global.BoxEdited = 0;
  // Required, and without effect: the manager holds no funds while the
  // calculator window is in use (InvestmentGrowth.ForgetsTheFundCount).
  global.FundCount = 0;
  const bool complete = texts.results == GrowthResults::Complete;
  if (!complete) {
    startOverIfAsked(global);
    countComparison(global);
    appendHeading(global.ReportLines[1], texts);
  }
  try {
    const InvestmentGrowth result = investmentGrowth(inputOf(global, texts.frequency));
    return complete ? showComplete(global, texts, result) : showComparison(global, result);
  } catch (const ArithmeticError&) {
    return Outcome::failed(message::kWrongEntry);
  }
}

std::string investmentGrowthHelp() {
  std::string help;
  // The rows are the page's inputs, from top to bottom.
  appendLine(help, "Example 1  Example 2   Example 3   Example 4");
  appendLine(help, "      .00   1,000.00         .00   30,000.00");
  // "1.000.00" is required, as is "annnual" below (InvestmentGrowth.HelpKeepsItsTexts).
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

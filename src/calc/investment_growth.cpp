// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/investment_growth.h"

#include <array>
#include <cmath>
#include <optional>

#include "base/attempt.h"
#include "charts/chart_kind.h"

namespace mirelund {

namespace {

InvestmentGrowthInput inputOf(const BoxState& boxes, ContributionFrequency frequency) {
  const auto& slots = boxes.InputValues;
  return {slots[1], slots[2], slots[4], slots[5], slots[6], slots[7], frequency};
}

void appendHeading(std::string& report, const InvestmentGrowthTexts& texts) {
  const ContributionFrequencyRow& frequency = rowOf(kContributionFrequencies, texts.frequency);
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

// By frequency.
constexpr auto kTables = [] {
  std::array<TableHeadings, kContributionFrequencies.size()> tables{};
  for (const ContributionFrequencyRow& row : kContributionFrequencies)
    tables[static_cast<std::size_t>(row.frequency)] = {
        "Investment growth",
        {row.rowLabel.substr(0, row.rowLabel.find(' ')), "Invested", "Int/Growth", "Value"}};
  return tables;
}();

Outcome showComplete(Reports& reports, ChartSelectors& chart, const InvestmentGrowthTexts& texts,
                     const InvestmentGrowth& result) {
  std::string report;
  report.reserve(512 + 47 * result.rows.size());
  appendHeading(report, texts);
  for (const TableRow& row : result.rows) appendTableRow(report, row);
  appendLine(report, kUnderline);
  appendTableRow(report, result.totals);
  std::string title = "Investment growth over ";
  Outcome outcome =
      replaceReport(reports, std::move(report),
                    reportTable(kTables[static_cast<std::size_t>(texts.frequency)], result.rows));

  reports.ComparisonCount = 0;
  countComparison(reports, chart);
  storeTable(reports.ComparisonTable, result.rows, result.totals);
  chart.ChartKind = ChartKind::GrowthYears;
  chart.ChartCount = result.years;
  chart.ChartPeriodsPerYear = result.periodsPerYear;
  chart.ChartPeriods = static_cast<std::int16_t>(result.rows.size());
  chart.ChartTitle = std::move(title);
  return outcome;
}

// Nothing where a number leaves its range.
std::optional<InvestmentGrowth> growthOf(const InvestmentGrowthInput& input) {
  try {
    return investmentGrowth(input);
  } catch (const ArithmeticError&) {
    return std::nullopt;
  }
}

Outcome showComparison(Reports& reports, ChartSelectors& chart, const InvestmentGrowthTexts& texts,
                       const std::optional<InvestmentGrowth>& result) {
  std::string report = comparisonsSoFar(reports);
  appendHeading(report, texts);
  if (result) {
    appendTableRow(report, result->totals);
    appendLine(report, kUnderline);
    appendLine(report);
  }
  std::string shown = report;
  std::string title = "Totals for comparisons, number ";

  startOverIfAsked(reports);
  countComparison(reports, chart);
  reports.ReportLines[1] = std::move(report);
  if (!result) return Outcome::failed(Message::WrongEntry);
  storeTable(reports.ComparisonTable, result->rows, result->totals);
  reports.ComparisonTotals.at(static_cast<std::size_t>(reports.ComparisonCount), 1) =
      result->totals.value;
  chart.ChartCount = reports.ComparisonCount;
  chart.ChartKind = ChartKind::GrowthComparisons;
  chart.ChartTitle = std::move(title);
  return showComparisons(reports, std::move(shown));
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
  result.periodsPerYear = rowOf(kContributionFrequencies, input.frequency).periodsPerYear;
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

Outcome calculateInvestmentGrowth(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                  const InvestmentGrowthTexts& texts) noexcept {
  boxes.BoxEdited = 0;
  return attempt(Outcome::failed(Message::WrongEntry), [&] {
    const InvestmentGrowthInput input = inputOf(boxes, texts.frequency);
    if (texts.results == GrowthResults::Complete)
      return showComplete(reports, chart, texts, investmentGrowth(input));
    return showComparison(reports, chart, texts, growthOf(input));
  });
}

}  // namespace mirelund

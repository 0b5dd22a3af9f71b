// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/pension_growth.h"

#include "base/attempt.h"
#include "charts/chart_kind.h"

namespace mirelund {

namespace {

constexpr std::string_view kWideUnderline =
    "___________________________________________________________";

PensionGrowthInput inputOf(const BoxState& boxes) {
  const auto& slots = boxes.InputValues;
  return {slots[1], slots[2], slots[3], slots[4], slots[5], slots[6], slots[7], slots[8]};
}

std::string reportOf(const PensionGrowthTexts& texts, const PensionGrowth& result) {
  std::string report;
  report.reserve(640 + 61 * result.rows.size());
  appendLine(report, "Current balance in account:  ", texts.balance);
  appendLine(report, "My current annual salary:    ", texts.salary);
  appendLine(report, "My annual contribution rate:        ", texts.own);
  appendLine(report, "Company annual contribution rate:   ", texts.company);
  appendLine(report, "Estimated annual salary increase:   ", texts.salaryIncrease);
  appendLine(report, "Annual interest/growth rate:        ", texts.growth);
  appendLine(report, "Estimated annual inflation rate:    ", texts.inflation);
  appendLine(report, "Number of years to retirement:          ", texts.years);
  appendLine(report, "Year    Salary    Contributions    Int/Growth         Value");
  appendLine(report, kWideUnderline);
  for (std::size_t i = 0; i < result.rows.size(); ++i) {
    const TableRow& row = result.rows[i];
    appendRow(report, {{row.period, "###", 3},
                       {result.salaries[i], "####,,###.00", 14},
                       {row.second, "####,,###.00", 14},
                       {row.third, "####,###.00", 14},
                       {row.value, "####,###.00", 14}});
  }
  appendLine(report, kWideUnderline);
  appendTotals(report, "Total:           ", result.totals);
  return report;
}

constexpr TableHeadings kTable{"Pension growth",
                               {"Year", "Salary", "Contributions", "Int/Growth", "Value"}};

ReportTable tableOf(const PensionGrowth& result) {
  ReportTable table{&kTable, {}};
  table.values.reserve(5 * result.rows.size());
  for (std::size_t i = 0; i < result.rows.size(); ++i) {
    const TableRow& row = result.rows[i];
    for (const Currency value : {row.period, result.salaries[i], row.second, row.third, row.value})
      table.values.push_back(value);
  }
  return table;
}

}  // namespace

PensionGrowth pensionGrowth(const PensionGrowthInput& input) {
  const std::size_t years = wholeYears(input.years);
  const double contributionRate =
      input.ownPercent.toDouble() / 100.0 + input.companyPercent.toDouble() / 100.0;
  const double increase = input.salaryIncreasePercent.toDouble() / 100.0;
  const double inflation = input.inflationPercent.toDouble() / 100.0;
  const float growth = singleRate(input.growthPercent);

  PensionGrowth result;
  result.rows.reserve(years);
  result.salaries.reserve(years);
  Currency salary = input.salary;
  const double first = contributionRate * salary.toDouble();
  Currency contribution = ToCurrency(first);
  const double balance = input.balance.toDouble();
  Currency interest = RateTimesAmount(balance + first, growth);
  double value = first + (balance + interest.toDouble());
  value = value - value * inflation;
  Currency totalContributions = input.balance + contribution;
  result.rows.push_back({periodNumber(1), contribution, interest, ToCurrency(value)});
  result.salaries.push_back(salary);

  double base = first + value;
  for (std::size_t year = 2; year <= years; ++year) {
    salary = ToCurrency(salary.toDouble() * increase + salary.toDouble());
    contribution = ToCurrency(contribution.toDouble() * increase + contribution.toDouble());
    interest = RateTimesAmount(base, growth);
    value = interest.toDouble() + base;
    value = value - value * inflation;
    totalContributions += contribution;
    result.rows.push_back({periodNumber(year), contribution, interest, ToCurrency(value)});
    result.salaries.push_back(salary);
    base = value + contribution.toDouble();
  }
  const Currency finalValue = result.rows.back().value;
  result.totals = {periodNumber(years), totalContributions, finalValue - totalContributions,
                   finalValue};
  return result;
}

Outcome calculatePensionGrowth(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                               const PensionGrowthTexts& texts) noexcept {
  boxes.BoxEdited = 0;
  return attempt(Outcome::failed(Message::WrongEntry), [&] {
    const PensionGrowthInput input = inputOf(boxes);
    const PensionGrowth result = pensionGrowth(input);
    std::string report = reportOf(texts, result);
    Outcome outcome = Outcome::report(report);
    outcome.table = tableOf(result);
    appendLine(outcome.results);
    outcome.results += "                            Hidden column >";
    std::string title = " Pension growth over ";
    setReport(reports, std::move(report));
    storeTable(reports.ComparisonTable, result.rows, result.totals);
    reports.ComparisonTable.at(0, 4) = input.balance;
    for (std::size_t i = 0; i < result.salaries.size(); ++i)
      reports.ComparisonTable.at(i + 1, 0) = result.salaries[i];
    chart.ChartCount = static_cast<std::int16_t>(result.rows.size());
    chart.ChartKind = ChartKind::PensionGrowth;
    chart.ChartTitle = std::move(title);
    return outcome;
  });
}

}  // namespace mirelund

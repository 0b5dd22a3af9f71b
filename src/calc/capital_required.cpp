// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/capital_required.h"

#include <cmath>

#include "base/attempt.h"
#include "charts/chart_kind.h"

namespace mirelund {

namespace {

constexpr TableHeadings kTable{"Capital required", {"Year", "Invested", "Int/Growth", "Value"}};

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

Outcome calculateCapitalRequired(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                 std::int16_t CapitalOption,
                                 const CapitalRequiredTexts& texts) noexcept {
  boxes.BoxEdited = 0;
  return attempt(Outcome::failed(Message::WrongEntry), [&] {
    const CapitalTargetRow& target = targetRow(CapitalOption);
    const CapitalRequired result = capitalRequired(
        {target.target, boxes.InputValues[1], boxes.InputValues[2], boxes.InputValues[3]});
    std::string title = "Growth in capital required over ";
    Outcome outcome =
        replaceReport(reports, reportOf(target, texts, result), reportTable(kTable, result.rows));
    storeTable(reports.ComparisonTable, result.rows, result.totals);
    chart.ChartCount = static_cast<std::int16_t>(result.rows.size());
    chart.ChartKind = ChartKind::CapitalRequired;
    chart.ChartTitle = std::move(title);
    return outcome;
  });
}

std::vector<ShownText> switchCapitalOption(BoxState& boxes, Reports& reports,
                                           std::int16_t& CapitalOption,
                                           CapitalTarget target) noexcept {
  const auto choose = [&](BoxState& loaded) {
    std::vector<ShownText> shown;
    for (const char* box : {"CRInCapitalReq", "CRInIntGrowthRate", "CRInTimeInYrs"}) {
      const BoxRule& rule = boxRule(kCapitalRequiredBoxes, box, static_cast<int>(target));
      shown.push_back({rule.name, loadBox(loaded, rule)});
      if (!rule.labelName.empty()) shown.push_back({rule.labelName, std::string(rule.label)});
    }
    CapitalOption = rowOf(kCapitalTargets, target).capitalOption;
    reports.ReportLines[1].clear();
    return shown;
  };
  return attempt(std::vector<ShownText>(), choose, boxes);
}

}  // namespace mirelund

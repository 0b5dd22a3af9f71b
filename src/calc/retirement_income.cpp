// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/retirement_income.h"

#include <cmath>
#include <optional>

#include "base/attempt.h"
#include "charts/chart_kind.h"

namespace mirelund {

namespace {

constexpr TableHeadings kTable{"Retirement income",
                               {"Year", "Int/Growth", "Annual Income", "Value"}};

const WithdrawalChoiceRow& choiceRow(std::int16_t WithdrawalOption) {
  return kWithdrawalChoices[WithdrawalOption == kWithdrawalChoices[1].withdrawalOption ? 1 : 0];
}

// One month: the value grows and gives the monthly amount. The interest is the
// unrounded growth.
struct MonthlyAccount {
  Currency value;
  float monthlyRate;
  double totalInterest = 0.0;

  double payMonths(std::int64_t months, Currency monthly) {
    double yearInterest = 0.0;
    for (std::int64_t month = 0; month < months; ++month) {
      const double growth = value.toDouble() * static_cast<double>(monthlyRate);
      value = (value + ToCurrency(growth)) - monthly;
      yearInterest += growth;
      totalInterest += growth;
    }
    return yearInterest;
  }
};

// Nothing where a number leaves its range.
std::optional<RetirementIncome> incomeOf(const BoxState& boxes, WithdrawalChoice choice) {
  const auto& values = boxes.InputValues;
  try {
    if (choice == WithdrawalChoice::FixedAmount)
      return fixedIncome({values[1], values[2], values[3], values[4]});
    return percentageIncome({values[1], values[2], values[3], values[4]});
  } catch (const ArithmeticError&) {
    return std::nullopt;
  }
}

std::string reportOf(const WithdrawalChoiceRow& choice, const RetirementIncomeTexts& texts,
                     const RetirementIncome& income) {
  std::string report;
  report.reserve(400 + 47 * income.rows.size());
  appendLine(report, "Starting value of investments: ", texts.value);
  appendLine(report, "Annual interest/growth rate:          ", texts.growth);
  appendLine(report, choice.withdrawnLabel, texts.withdrawn);
  appendLine(report, choice.lastLabel, texts.last);
  appendLine(report);
  appendLine(report, "Year   Int/Growth   Annual Income       Value");
  appendLine(report, kUnderline);
  for (const TableRow& row : income.rows) appendTableRow(report, row);
  appendLine(report, kUnderline);
  appendTotals(report, "Tot", income.totals);
  return report;
}

void clearChart(ChartSelectors& chart) noexcept {
  chart.ChartCount = 0;
  chart.ChartKind = {};
  chart.ChartTitle.clear();
  chart.ChartPeriods = 0;
  chart.ChartPeriodsPerYear = 0;
}

}  // namespace

Currency TruncateToCents(double x) {
  return ToCurrency((std::floor(100.0 * x) + 0.05) / 100.0);
}

RetirementIncome percentageIncome(const PercentageIncomeInput& input) {
  const std::size_t years = wholeYears(input.years);
  const auto growth = static_cast<double>(singleRate(input.growthPercent));
  const double withdrawn = input.withdrawnPercent.toDouble() / 100.0;
  RetirementIncome result;
  result.rows.reserve(years);
  Currency value = input.value;
  Currency totalIncome;
  double totalInterest = 0.0;
  for (std::size_t year = 1; year <= years; ++year) {
    const double opening = value.toDouble();
    const Currency income = TruncateToCents(opening * withdrawn);
    if (income > value) {
      result.withdrawalTooLarge = true;
      return result;
    }
    const double interest = opening * growth;
    value = TruncateToCents(opening + opening * (growth - withdrawn));
    totalInterest += interest;
    totalIncome += income;
    result.rows.push_back({periodNumber(year), ToCurrency(interest), income, value});
  }
  result.totals = {periodNumber(years), ToCurrency(totalInterest), totalIncome, value};
  return result;
}

RetirementIncome fixedIncome(const FixedIncomeInput& input) {
  const auto growth = static_cast<double>(singleRate(input.growthPercent));
  MonthlyAccount account{input.value, static_cast<float>(std::pow(1.0 + growth, 1.0 / 12.0) - 1.0)};
  Currency monthly = input.monthly;
  Currency annual = Currency::whole(12) * monthly;
  const Currency increase = ToCurrency(input.increasePercent.toDouble() / 100.0);

  RetirementIncome result;
  if (annual > account.value) {
    result.withdrawalTooLarge = true;
    return result;
  }
  result.rows.reserve(kMostYears);
  Currency totalIncome;
  std::size_t year = 1;
  do {
    const double interest = account.payMonths(12, monthly);
    result.rows.push_back({periodNumber(year), ToCurrency(interest), annual, account.value});
    const Currency raise = increase * monthly;
    account.value += raise;
    monthly += raise;
    annual += increase * annual;
    totalIncome += annual;
    ++year;
  } while (year <= kMostYears && account.value > annual);

  if (year <= kMostYears) {
    require(!monthly.isZero(), "nothing to withdraw");
    const Currency opening = account.value;
    const std::int64_t months = opening.tenThousandths() / monthly.tenThousandths();
    const double interest = account.payMonths(months, monthly);
    const Currency income = ToCurrency(interest + opening.toDouble());
    account.value = Currency();
    totalIncome += income;
    result.rows.push_back({periodNumber(year), ToCurrency(interest), income, account.value});
  }
  result.totals = {periodNumber(result.rows.size()), ToCurrency(account.totalInterest), totalIncome,
                   account.value};
  return result;
}

Outcome calculateRetirementIncome(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                  std::int16_t WithdrawalOption,
                                  const RetirementIncomeTexts& texts) noexcept {
  boxes.BoxEdited = 0;
  return attempt(Outcome::failed(Message::WrongEntry), [&] {
    const WithdrawalChoiceRow& choice = choiceRow(WithdrawalOption);
    const std::optional<RetirementIncome> income = incomeOf(boxes, choice.choice);
    if (!income || income->withdrawalTooLarge) {
      clearChart(chart);
      return Outcome::failed(income ? Message::WithdrawalTooLarge : Message::WrongEntry);
    }
    const bool fixed = choice.choice == WithdrawalChoice::FixedAmount;
    std::string title =
        fixed ? "Retirement beginning balance over " : "Retirement ending balance over ";
    Outcome outcome =
        replaceReport(reports, reportOf(choice, texts, *income), reportTable(kTable, income->rows));
    storeTable(reports.ComparisonTable, income->rows, income->totals);
    clearChart(chart);
    chart.ChartCount = static_cast<std::int16_t>(income->rows.size());
    chart.ChartKind = fixed ? ChartKind::IncomeFixedAmount : ChartKind::IncomePercentage;
    chart.ChartTitle = std::move(title);
    return outcome;
  });
}

std::vector<ShownText> SwitchWithdrawalOption(BoxState& boxes, Reports& reports,
                                              std::int16_t& WithdrawalOption,
                                              WithdrawalChoice choice) noexcept {
  const auto choose = [&](BoxState& loaded) {
    const auto option = static_cast<int>(choice);
    std::vector<ShownText> shown;
    for (const char* box : {"RIInCurrValue", "RIInAnnIntGrowthRate"}) {
      const BoxRule& rule = boxRule(kRetirementIncomeBoxes, box, option);
      shown.push_back({rule.name, boxText(loaded, rule)});
    }
    for (const char* box : {"RIInAnnIncWDrawnRate", "RIInTimeInYrs"}) {
      const BoxRule& rule = boxRule(kRetirementIncomeBoxes, box, option);
      shown.push_back({rule.name, loadBox(loaded, rule)});
      shown.push_back({rule.labelName, std::string(rule.label)});
    }
    WithdrawalOption = rowOf(kWithdrawalChoices, choice).withdrawalOption;
    reports.ReportLines[1].clear();
    return shown;
  };
  return attempt(std::vector<ShownText>(), choose, boxes);
}

}  // namespace mirelund

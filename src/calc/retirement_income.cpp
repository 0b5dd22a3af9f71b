// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/retirement_income.h"

#include <cmath>

#include "app/formatting.h"
#include "app/input_boxes.h"
#include "charts/chart_kind.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

const WithdrawalChoiceRow& rowOf(const Global& global) {
  return kWithdrawalChoices[global.WithdrawalOption == kWithdrawalChoices[1].withdrawalOption ? 1
                                                                                              : 0];
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

RetirementIncome incomeOf(const Global& global, WithdrawalChoice choice) {
  const auto& slots = global.InputValues;
  if (choice == WithdrawalChoice::FixedAmount)
    return fixedIncome({slots[1], slots[2], slots[3], slots[4]});
  return percentageIncome({slots[1], slots[2], slots[3], slots[4]});
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

void clearChart(Global& global) {
  global.ChartCount = 0;
  global.ChartKind = 0;
  global.ChartTitle.clear();
  global.ChartPeriods = 0;
  global.ChartPeriodsPerYear = 0;
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
    if (monthly.isZero()) detail::throwOverflow();
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

Outcome calculateRetirementIncome(Global& global, const RetirementIncomeTexts& texts) {
  global.BoxEdited = 0;
  clearChart(global);
  const WithdrawalChoiceRow& choice = rowOf(global);
  try {
    const RetirementIncome income = incomeOf(global, choice.choice);
    if (income.withdrawalTooLarge) return Outcome::failed(message::kWithdrawalTooLarge);
    std::string report = reportOf(choice, texts, income);
    storeTable(global.ComparisonTable, income.rows, income.totals);
    const bool fixed = choice.choice == WithdrawalChoice::FixedAmount;
    global.ChartCount = static_cast<std::int16_t>(income.rows.size());
    global.ChartKind = fixed ? chart::kIncomeFixedAmount : chart::kIncomePercentage;
    global.ChartTitle =
        fixed ? "Retirement beginning balance over " : "Retirement ending balance over ";
    return replaceReport(global, std::move(report));
  } catch (const ArithmeticError&) {
    return Outcome::failed(message::kWrongEntry);
  }
}

std::vector<ShownText> switchWithdrawalOption(Global& global, WithdrawalChoice choice) {
  const auto option = static_cast<int>(choice);
  global.WithdrawalOption = kWithdrawalChoices[static_cast<std::size_t>(option)].withdrawalOption;
  global.ReportLines[1].clear();
  std::vector<ShownText> shown;
  for (const char* box : {"RIInCurrValue", "RIInAnnIntGrowthRate"}) {
    const BoxRule& rule = boxRule(box, option);
    shown.push_back({rule.name, boxText(rule, global.InputValues[rule.slot])});
  }
  for (const char* box : {"RIInAnnIncWDrawnRate", "RIInTimeInYrs"}) {
    const BoxRule& rule = boxRule(box, option);
    shown.push_back({rule.name, loadBox(global, rule)});
    shown.push_back({rule.labelName, std::string(rule.label)});
  }
  return shown;
}

// "neccessary" is required: RetirementIncome.HelpKeepsItsTexts.
std::string retirementIncomeHelp(WithdrawalChoice choice) {
  const std::string dollar(MoneySymbol);
  std::string help;
  const auto example = [&](std::string_view box, std::string_view value) {
    appendExample(help, boxRule(box, static_cast<int>(choice)).label, value);
  };
  if (choice == WithdrawalChoice::Percentage) {
    appendLine(help, "       Using Percentage Option");
    appendLine(help);
    example("RIInCurrValue", dollar + "100,000.00");
    example("RIInAnnIntGrowthRate", "        20%");
    example("RIInAnnIncWDrawnRate", "        15%");
    example("RIInTimeInYrs", "        25");
    appendLine(help);
    appendLine(help, "Shows ", dollar, "100,000.00 amount invested on");
    appendLine(help, "retirement at 20% Interest/Growth rate");
    appendLine(help, "compounded annually for 25 years, after");
    appendLine(help, "withdrawing 15% each year.");
    appendLine(help);
    appendLine(help, "Notice that both the Annual Income and the");
    appendLine(help, "current Value each increase by 5% annually.");
    appendLine(help, "This would compensate for inflation.");
    appendLine(help);
    appendLine(help, "Annual Income is defined as being made up");
    appendLine(help, "of Annual Interest/Growth and the sale of");
    appendLine(help, "some investments if neccessary to give the");
    appendLine(help, "Income you require.");
    return help;
  }
  appendLine(help, "       Using Fixed Amount Option");
  appendLine(help);
  example("RIInCurrValue", dollar + "100,000.00");
  example("RIInAnnIntGrowthRate", "     10.00%");
  example("RIInAnnIncWDrawnRate", "   1,000.00");
  example("RIInTimeInYrs", "          0%");
  appendLine(help);
  appendLine(help, "Shows taking out a fixed amount monthly.");
  appendLine(help);
  appendLine(help, "If you are taking out more cash annually");
  appendLine(help, "than is being generated by the Interest");
  appendLine(help, "Growth rate, shows number of years before");
  appendLine(help, "the Capital is gone.");
  appendLine(help);
  appendLine(help, "Increase annual income by % = 3.00%.");
  appendLine(help, "Compensates for inflation by increasing the");
  appendLine(help, "annual amount withdrawn by 3%.");
  appendLine(help);
  appendLine(help, "If the Annual Income is less than the");
  appendLine(help, "Interest/Growth rate then the calculation");
  appendLine(help, "ends at 40 years. Table shows annual totals");
  appendLine(help, "based on monthly calculation of Income,");
  appendLine(help, "Interest/Growth and Current Value.");
  appendLine(help);
  appendLine(help, "Annual Amount of Cash Withdrawn is defined");
  appendLine(help, "as being made up of Annual Interest/Growth");
  appendLine(help, "and the sale of some of your investments");
  appendLine(help, "if neccessary to give the Income you");
  appendLine(help, "require.");
  return help;
}

}  // namespace mirelund

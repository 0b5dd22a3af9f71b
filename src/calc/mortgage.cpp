// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage.h"

#include <algorithm>
#include <cmath>

#include "app/formatting.h"
#include "app/input_boxes.h"
#include "charts/chart_kind.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

constexpr double kMonths = 12.0;
constexpr double kMostSolvedYears = 40.004;  // what "40.00" may still hide

const PaymentFrequencyRow& rowOf(PaymentFrequency frequency) {
  return kPaymentFrequencies.at(static_cast<std::size_t>(frequency));
}

const CompoundingPeriodRow& rowOf(CompoundingPeriod period) {
  return kCompoundingPeriods.at(static_cast<std::size_t>(period));
}

// Years until `payment`, made `perYear` times a year at `rate` a time, has
// repaid `principal`.
double yearsToRepay(double payment, double principal, double rate, double perYear) {
  return finite((std::log(payment) - std::log(payment - rate * principal)) /
                (perYear * std::log(1.0 + rate)));
}

// Stops at the first number that is none, or with a known problem.
void solveUnknown(Mortgage& mortgage, const MortgageInput& input, double r) {
  double& principal = mortgage.principal;
  double& years = mortgage.years;
  double& payment = mortgage.payment;
  if (input.choices.solveFor == SolveFor::Years) {
    if (r == 0.0) detail::throwOverflow();
    mortgage.status = SolveStatus::PaymentTooSmall;
    const double solved = yearsToRepay(payment, principal, r, kMonths);
    if (solved > kMostSolvedYears) detail::throwOverflow();
    if (payment >= principal) {
      mortgage.status = SolveStatus::PaymentTooLarge;
      detail::throwOverflow();
    }
    years = solved;
  } else {
    const double X = std::pow(1.0 + r, kMonths * years);
    if (input.choices.solveFor == SolveFor::Payment) {
      if (principal == 0.0) detail::throwOverflow();
      payment = finite(r * X * principal / (X - 1.0));
    } else {
      if (payment == 0.0) detail::throwOverflow();
      principal = payment / finite(r * X / (X - 1.0));
    }
  }
  mortgage.solved = true;
}

void schedule(Mortgage& mortgage, const PaymentFrequencyRow& frequency, double i) {
  if (frequency.frequency == PaymentFrequency::Monthly) {
    mortgage.yearsToFinalPayment = mortgage.years;
    mortgage.eachPayment = mortgage.payment;
    mortgage.interestPaid = mortgage.totalInterest;
    return;
  }
  const double perYear = frequency.paymentsPerYear;
  const double payment = mortgage.payment * frequency.times / frequency.parts;
  const double years = yearsToRepay(payment, mortgage.principal, i, perYear);
  const double X = std::pow(1.0 + i, perYear * years);
  const double each = finite(i * X * mortgage.principal / (X - 1.0));
  mortgage.yearsToFinalPayment = years;
  mortgage.eachPayment = each;
  mortgage.interestPaid = finite(each * perYear * years - mortgage.principal);
  mortgage.interestSaved = mortgage.totalInterest - mortgage.interestPaid;
}

constexpr Pattern kMoney = "####,,###.00";

void showMoney(std::string& text, double amount) {
  setMoney(text, amount, kMoney, 13);
}

void showSolved(Global& global, const Mortgage& mortgage, SolveFor solveFor, MortgageTexts& shown) {
  auto& inputs = global.MortgageInputs;
  switch (solveFor) {
    case SolveFor::Payment:
      inputs[4] = mortgage.payment;
      showMoney(shown.payment, mortgage.payment);
      break;
    case SolveFor::Principal:
      inputs[1] = mortgage.principal;
      showMoney(shown.principal, mortgage.principal);
      break;
    case SolveFor::Years:
      if (!mortgage.solved) return;
      inputs[3] = mortgage.years;
      shown.term = FormatNumber(mortgage.years, "##.##");
      break;
  }
}

void showResults(const Mortgage& mortgage, PaymentFrequency frequency, MortgageTexts& shown) {
  showMoney(shown.totalPmts, mortgage.totalInterest);
  setColumn(shown.numPmts, Currency::whole(mortgage.paymentsPerYear), "##", 2);
  if (frequency == PaymentFrequency::Monthly) {
    shown.numYrs = FormatNumber(mortgage.years, "##.00");
    showMoney(shown.piPmt, mortgage.payment);
    showMoney(shown.totIntSaved, 0.0);
    shown.totIntPaid = shown.totalPmts;
    return;
  }
  setColumn(shown.numYrs, mortgage.yearsToFinalPayment, "##.00", 5);
  showMoney(shown.piPmt, mortgage.eachPayment);
  showMoney(shown.totIntSaved, mortgage.interestSaved);
  showMoney(shown.totIntPaid, mortgage.interestPaid);
}

void emptyResults(MortgageTexts& shown) {
  for (const auto label :
       {&MortgageTexts::totalPmts, &MortgageTexts::numPmts, &MortgageTexts::numYrs,
        &MortgageTexts::piPmt, &MortgageTexts::totIntSaved, &MortgageTexts::totIntPaid})
    (shown.*label).clear();
}

MortgageOutcome failureOf(SolveStatus status) {
  switch (status) {
    case SolveStatus::PaymentTooSmall:
      return {{}, kPaymentTooSmall};
    case SolveStatus::PaymentTooLarge:
      return {{}, kPaymentTooLarge};
    default:
      return {Outcome::failed(message::kWrongEntry), {}};
  }
}

Mortgage recalculate(Global& global, const MortgageChoices& choices, MortgageTexts& shown) {
  const auto& inputs = global.MortgageInputs;
  const Mortgage mortgage = solveMortgage({inputs[1], inputs[2], inputs[3], inputs[4],
                                           global.BiweeklyPerYear, global.WeeklyPerYear, choices});
  showSolved(global, mortgage, choices.solveFor, shown);
  if (mortgage.solved) {
    if (countsDays(choices.frequency))
      setColumn(shown.daysInYear, global.DaysInYear, "###.00", 6);
    else
      shown.daysInYear = "Normal";
  }
  if (mortgage.complete)
    showResults(mortgage, choices.frequency, shown);
  else
    emptyResults(shown);
  return mortgage;
}

void appendBlock(std::string& report, const MortgageChoices& choices, const MortgageTexts& shown) {
  const auto justified = [&report](std::string_view label, std::string_view text,
                                   std::size_t width) {
    report += label;
    appendRight(report, text, width);
    appendLine(report);
  };
  appendLine(report, "           Conventional Mortgage");
  justified("Compound interest periods/yr:     ", rowOf(choices.compounding).text, 10);
  appendLine(report, "Principal amount of mortgage:  ", shown.principal);
  appendLine(report, "Annual interest rate %:               ", shown.rate);
  appendLine(report, "Amortization period in years:          ", shown.term);
  appendLine(report, "Monthly principal + interest:  ", shown.payment);
  appendLine(report, "Total interest paid:           ", shown.totalPmts);
  appendLine(report);
  appendLine(report, "             Accelerated Mortgage");
  justified("Frequency/type of payment:     ", rowOf(choices.frequency).text, 13);
  appendLine(report, "Number of payments each year:             ", shown.numPmts);
  appendLine(report, "Number of days in year used:          ", shown.daysInYear);
  appendLine(report, "Interest saved v normal mtge:  ", shown.totIntSaved);
  appendLine(report, "No. of years to final payment:         ", shown.numYrs);
  appendLine(report, "Each payment, Principal + int: ", shown.piPmt);
  appendLine(report, "Total interest paid:           ", shown.totIntPaid);
  appendLine(report, "____________________________________________");
  appendLine(report);
}

}  // namespace

MortgageRates ComputeMortgageRates(double ratePercent, const MortgageChoices& choices,
                                   double biweeklyPerYear, double weeklyPerYear) {
  const PaymentFrequencyRow& frequency = rowOf(choices.frequency);
  const auto k = rowOf(choices.compounding).timesPerYear;
  const auto a = static_cast<float>(ratePercent / 100.0);
  const float perCompounding = a / static_cast<float>(k);
  const double base = 1.0 + static_cast<double>(perCompounding);
  double n = frequency.paymentsPerYear;
  if (frequency.rateCount == RateCount::BiweeklyPerYear) n = biweeklyPerYear;
  if (frequency.rateCount == RateCount::WeeklyPerYear) n = weeklyPerYear;
  return {frequency.paymentsPerYear, std::pow(base, k / kMonths) - 1.0,
          std::pow(base, k / n) - 1.0};
}

Mortgage solveMortgage(const MortgageInput& input) {
  Mortgage mortgage;
  const MortgageRates rates = ComputeMortgageRates(input.ratePercent, input.choices,
                                                   input.biweeklyPerYear, input.weeklyPerYear);
  mortgage.paymentsPerYear = rates.paymentsPerYear;
  const SolveFor solveFor = input.choices.solveFor;
  mortgage.principal = solveFor == SolveFor::Principal ? 0.0 : input.principal;
  mortgage.payment = solveFor == SolveFor::Payment ? 0.0 : input.payment;
  mortgage.years = input.years;
  try {
    solveUnknown(mortgage, input, rates.monthlyRate);
    mortgage.totalInterest =
        finite(mortgage.payment * kMonths * mortgage.years - mortgage.principal);
    schedule(mortgage, rowOf(input.choices.frequency), rates.periodRate);
    mortgage.complete = true;
  } catch (const ArithmeticError&) {
    // `complete` stays false.
  }
  return mortgage;
}

MortgageTexts loadMortgage(Global& global) {
  const Global fresh;
  global.MortgageInputs = fresh.MortgageInputs;
  global.DaysOption = fresh.DaysOption;
  global.DaysInYear = fresh.DaysInYear;
  global.BiweeklyPerYear = fresh.BiweeklyPerYear;
  global.WeeklyPerYear = fresh.WeeklyPerYear;
  MortgageTexts shown;
  shown.principal = loadBox(global, boxRule("MTInPrincipal"));
  shown.rate = loadBox(global, boxRule("MTInRate"));
  shown.term = loadBox(global, boxRule("MTInTerm"));
  shown.payment = loadBox(global, boxRule("MTInMthPayment"));
  return shown;
}

bool countsDays(PaymentFrequency frequency) {
  return rowOf(frequency).rateCount != RateCount::Whole;
}

std::int16_t leaveDaysInYear(Global& global, PaymentFrequency frequency) {
  if (!countsDays(frequency))
    global.DaysOption = kDaysNotApplicable;
  else if (global.DaysOption == kDaysNotApplicable)
    global.DaysOption = 1;
  if (global.DaysOption != kDaysNotApplicable) {
    const DaysInYearRow& row = kDaysInYear.at(static_cast<std::size_t>(global.DaysOption));
    global.DaysInYear = row.days;
    global.BiweeklyPerYear = row.biweeklyPerYear;
    global.WeeklyPerYear = row.weeklyPerYear;
  }
  return global.DaysOption;
}

MortgageOutcome recalculateMortgage(Global& global, const MortgageChoices& choices,
                                    MortgageTexts& shown) {
  const Mortgage mortgage = recalculate(global, choices, shown);
  return mortgage.complete ? MortgageOutcome{} : failureOf(mortgage.status);
}

MortgageOutcome calculateMortgage(Global& global, const MortgageChoices& choices,
                                  MortgageTexts& shown) {
  const Mortgage mortgage = recalculate(global, choices, shown);
  if (!mortgage.complete) return failureOf(mortgage.status);
  try {
    const Currency conventional = ToCurrency(mortgage.totalInterest);
    const Currency atFrequency = ToCurrency(mortgage.interestPaid);
    startOverIfAsked(global);
    countComparison(global);
    appendBlock(global.ReportLines[1], choices, shown);
    const auto comparison = static_cast<std::size_t>(global.ComparisonCount);
    global.ComparisonTotals.at(comparison, 1) = conventional;
    global.ComparisonTotals.at(comparison, 2) = atFrequency;
  } catch (const ArithmeticError&) {
    return failureOf(SolveStatus::NoKnownProblem);
  }
  global.ChartCount = global.ComparisonCount;
  global.ChartKind = chart::kMortgage;
  global.ChartTitle = "Totals for comparisons, number ";
  return {showComparisons(global), {}};
}

std::string mortgageHelp() {
  constexpr std::string_view kLines[] = {
      "Calculations are automatic, change the",
      "values in any green input box and on",
      "leaving the box a new result is calculated",
      "and shown in the white result boxes.",
      "",
      "Compare up to 10 different Mortgages.",
      "Click Calculate to show results in the",
      "Results textbox after each change made.",
      "",
      "Conventional Mortgage: Calculation, inputs",
      "and results are for normal (conventional)",
      "mortgages. Interest compounding periods per",
      "year: U.S.A. = Monthly, Canada = Semiannual.",
      "",
      "Select to find: Change to Principal, Years or",
      "Payment to solve for these. White result box",
      "shows beside whichever one is selected.",
      "",
      "Example: To solve for how much Principal you",
      "could afford for a given Monthly payment.",
      "In Select to find: click on Principal, then",
      "type in the Monthly payment, on leaving the",
      "box, results will show in the white boxes.",
      "",
      "When using Select to find: - Years: Box",
      "will show results to two decimal places but",
      "will only allow whole year input.",
      "",
      "Since a (conventional) normal mortgage is",
      "based on 360 days per year, use Monthly",
      "settings for loans also.",
      "",
      "Accelerated Mortgage: Biweekly(acl) and",
      "Weekly(acl). Shows results for selected",
      "'Frequency and type of payment'.",
      "",
      "Days in year: Some lenders use different",
      "days in year to calculate accelerated",
      "mortgages. Most use 365 days. Monthly or",
      "Semimonthly calculations are not affected",
      "and the option button is disabled when",
      "using these.",
  };
  std::string help;
  for (const std::string_view line : kLines) appendLine(help, line);
  return help;
}

}  // namespace mirelund

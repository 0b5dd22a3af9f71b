// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage.h"

#include <algorithm>
#include <cmath>

#include "base/attempt.h"
#include "charts/chart_kind.h"

namespace mirelund {

namespace {

constexpr double kMonths = 12.0;
constexpr double kMostSolvedYears = 40.004;  // what "40.00" may still hide

// Years until `payment`, made `perYear` times a year at `rate` a time, has
// repaid `principal`; no finite number where it never does.
double yearsToRepay(double payment, double principal, double rate, double perYear) {
  return (std::log(payment) - std::log(payment - rate * principal)) /
         (perYear * std::log(1.0 + rate));
}

// Whether the unknown was found, and what is known of the reason where it was not
// or where the figures that follow from it fail.
struct Solving {
  bool solved = false;
  SolveStatus status = SolveStatus::NoKnownProblem;
};

Solving solveYears(Mortgage& mortgage, double r) {
  const double years = yearsToRepay(mortgage.payment, mortgage.principal, r, kMonths);
  if (!std::isfinite(years) || years > kMostSolvedYears)
    return {false, SolveStatus::PaymentTooSmall};
  if (mortgage.payment >= mortgage.principal) return {false, SolveStatus::PaymentTooLarge};
  mortgage.years = years;
  return {true, SolveStatus::PaymentTooSmall};
}

Solving solvePayment(Mortgage& mortgage, double r) {
  if (mortgage.principal == 0.0) return {};
  const double X = std::pow(1.0 + r, kMonths * mortgage.years);
  const double payment = r * X * mortgage.principal / (X - 1.0);
  if (!std::isfinite(payment)) return {};
  mortgage.payment = payment;
  return {true};
}

Solving solvePrincipal(Mortgage& mortgage, double r) {
  if (mortgage.payment == 0.0) return {};
  const double X = std::pow(1.0 + r, kMonths * mortgage.years);
  const double paymentOfOne = r * X / (X - 1.0);
  if (!std::isfinite(paymentOfOne)) return {};
  mortgage.principal = mortgage.payment / paymentOfOne;
  return {true};
}

Solving solveUnknown(Mortgage& mortgage, SolveFor solveFor, double r) {
  switch (solveFor) {
    case SolveFor::Years:
      return solveYears(mortgage, r);
    case SolveFor::Principal:
      return solvePrincipal(mortgage, r);
    case SolveFor::Payment:
      break;
  }
  return solvePayment(mortgage, r);
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
  const double years = finite(yearsToRepay(payment, mortgage.principal, i, perYear));
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

void showSolved(BoxState& boxes, const Mortgage& mortgage, SolveFor solveFor,
                MortgageTexts& shown) {
  auto& inputs = boxes.MortgageInputs;
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
      return {Outcome::failed(Message::WrongEntry), {}};
  }
}

// Never throws.
Mortgage solve(const BoxState& boxes, const DaysInYearState& days, const MortgageChoices& choices) {
  const auto& inputs = boxes.MortgageInputs;
  return solveMortgage({inputs[1], inputs[2], inputs[3], inputs[4], days.BiweeklyPerYear,
                        days.WeeklyPerYear, choices});
}

void show(const Mortgage& mortgage, const DaysInYearState& days, const MortgageChoices& choices,
          BoxState& boxes, MortgageTexts& shown) {
  showSolved(boxes, mortgage, choices.solveFor, shown);
  if (mortgage.solved) {
    if (countsDays(choices.frequency))
      setColumn(shown.daysInYear, days.DaysInYear, "###.00", 6);
    else
      shown.daysInYear = "Normal";
  }
  if (mortgage.complete)
    showResults(mortgage, choices.frequency, shown);
  else
    emptyResults(shown);
}

// Whether all figures are numbers so short that showing them asks for no memory, as
// nearly all are: their digits have room in any string.
bool isShort(const Mortgage& mortgage) {
  constexpr double kShort = 1e11;
  const double figures[] = {mortgage.principal,    mortgage.years,
                            mortgage.payment,      mortgage.totalInterest,
                            mortgage.eachPayment,  mortgage.yearsToFinalPayment,
                            mortgage.interestPaid, mortgage.interestSaved};
  return std::ranges::all_of(figures, [](double figure) { return std::abs(figure) < kShort; });
}

void appendBlock(std::string& report, const MortgageChoices& choices, const MortgageTexts& shown) {
  const auto justified = [&report](std::string_view label, std::string_view text,
                                   std::size_t width) {
    report += label;
    appendRight(report, text, width);
    appendLine(report);
  };
  appendLine(report, "           Conventional Mortgage");
  justified("Compound interest periods/yr:     ",
            rowOf(kCompoundingPeriods, choices.compounding).text, 10);
  appendLine(report, "Principal amount of mortgage:  ", shown.principal);
  appendLine(report, "Annual interest rate %:               ", shown.rate);
  appendLine(report, "Amortization period in years:          ", shown.term);
  appendLine(report, "Monthly principal + interest:  ", shown.payment);
  appendLine(report, "Total interest paid:           ", shown.totalPmts);
  appendLine(report);
  appendLine(report, "             Accelerated Mortgage");
  justified("Frequency/type of payment:     ", rowOf(kPaymentFrequencies, choices.frequency).text,
            13);
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
  const PaymentFrequencyRow& frequency = rowOf(kPaymentFrequencies, choices.frequency);
  const auto k = rowOf(kCompoundingPeriods, choices.compounding).timesPerYear;
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
  const Solving solving = solveUnknown(mortgage, solveFor, rates.monthlyRate);
  mortgage.solved = solving.solved;
  mortgage.status = solving.status;
  if (!mortgage.solved) return mortgage;
  try {
    mortgage.totalInterest =
        finite(mortgage.payment * kMonths * mortgage.years - mortgage.principal);
    schedule(mortgage, rowOf(kPaymentFrequencies, input.choices.frequency), rates.periodRate);
    mortgage.complete = true;
  } catch (const ArithmeticError&) {
    // `complete` stays false.
  }
  return mortgage;
}

MortgageTexts loadMortgage(BoxState& boxes, DaysInYearState& days) {
  boxes.MortgageInputs = {};
  days = {};
  MortgageTexts shown;
  shown.principal = loadBox(boxes, boxRule(kMortgageBoxes, "MTInPrincipal"));
  shown.rate = loadBox(boxes, boxRule(kMortgageBoxes, "MTInRate"));
  shown.term = loadBox(boxes, boxRule(kMortgageBoxes, "MTInTerm"));
  shown.payment = loadBox(boxes, boxRule(kMortgageBoxes, "MTInMthPayment"));
  return shown;
}

bool countsDays(PaymentFrequency frequency) {
  return rowOf(kPaymentFrequencies, frequency).rateCount != RateCount::Whole;
}

std::int16_t leaveDaysInYear(DaysInYearState& days, PaymentFrequency frequency) {
  if (!countsDays(frequency))
    days.DaysOption = kDaysNotApplicable;
  else if (days.DaysOption == kDaysNotApplicable)
    days.DaysOption = 1;
  if (days.DaysOption != kDaysNotApplicable) {
    const DaysInYearRow& row = kDaysInYear.at(static_cast<std::size_t>(days.DaysOption));
    days.DaysInYear = row.days;
    days.BiweeklyPerYear = row.biweeklyPerYear;
    days.WeeklyPerYear = row.weeklyPerYear;
  }
  return days.DaysOption;
}

MortgageOutcome RecalculateMortgage(BoxState& boxes, const DaysInYearState& days,
                                    const MortgageChoices& choices, MortgageTexts& shown) noexcept {
  const Mortgage mortgage = solve(boxes, days, choices);
  const auto showIn = [&](BoxState& inputs, MortgageTexts& texts) {
    show(mortgage, days, choices, inputs, texts);
    return mortgage.complete ? MortgageOutcome{} : failureOf(mortgage.status);
  };
  // Copies would cost as much as all the rest.
  const MortgageOutcome failed = failureOf(SolveStatus::NoKnownProblem);
  if (isShort(mortgage)) return attempt(failed, [&] { return showIn(boxes, shown); });
  return attempt(failed, showIn, boxes, shown);
}

MortgageOutcome calculateMortgage(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                  const DaysInYearState& days, const MortgageChoices& choices,
                                  MortgageTexts& shown) noexcept {
  const auto calculate = [&](BoxState& inputs, MortgageTexts& texts) -> MortgageOutcome {
    const Mortgage mortgage = solve(inputs, days, choices);
    show(mortgage, days, choices, inputs, texts);
    if (!mortgage.complete) return failureOf(mortgage.status);
    Currency conventional;
    Currency atFrequency;
    try {
      conventional = ToCurrency(mortgage.totalInterest);
      atFrequency = ToCurrency(mortgage.interestPaid);
    } catch (const ArithmeticError&) {
      return failureOf(SolveStatus::NoKnownProblem);
    }
    std::string report = comparisonsSoFar(reports);
    appendBlock(report, choices, texts);
    std::string all = report;
    std::string title = "Totals for comparisons, number ";

    startOverIfAsked(reports);
    countComparison(reports, chart);
    reports.ReportLines[1] = std::move(report);
    const auto comparison = static_cast<std::size_t>(reports.ComparisonCount);
    reports.ComparisonTotals.at(comparison, 1) = conventional;
    reports.ComparisonTotals.at(comparison, 2) = atFrequency;
    chart.ChartCount = reports.ComparisonCount;
    chart.ChartKind = ChartKind::Mortgage;
    chart.ChartTitle = std::move(title);
    return {showComparisons(reports, std::move(all)), {}};
  };
  return attempt(failureOf(SolveStatus::NoKnownProblem), calculate, boxes, shown);
}

}  // namespace mirelund

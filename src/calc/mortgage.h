// SPDX-License-Identifier: GPL-3.0-or-later
// Mortgage: a conventional loan of monthly payments, solved for its payment, its
// principal or its years, beside the same loan paid at another frequency.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/input_boxes.h"
#include "base/currency.h"
#include "base/table.h"

namespace mirelund {

/// The page's boxes.
inline constexpr auto kMortgageBoxes = boxTable({
    {"MTInPrincipal",
     0,
     "Principal amount of mortgage",
     {},
     BoxStore::MortgageInputs,
     1,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(100000)},
    {"MTInRate",
     0,
     "Annual interest rate %",
     {},
     BoxStore::MortgageInputs,
     2,
     KeyFilter::Decimal,
     3,
     "###.000",
     BoxLook::Percent,
     6,
     false,
     Currency::fromTenThousandths(65000)},
    {"MTInTerm",
     0,
     "Amortization period in years",
     {},
     BoxStore::MortgageInputs,
     3,
     KeyFilter::WholeNumber,
     0,
     "###",
     BoxLook::Years,
     5,
     true,
     Currency::whole(25)},
    {"MTInMthPayment",
     0,
     "Monthly principal + interest",
     {},
     BoxStore::MortgageInputs,
     4,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(0)},
});

/// MTCompPeriod, in the order of the list.
enum class CompoundingPeriod : std::uint8_t { Monthly, Bimonthly, Quarterly, Semiannual, Annual };

struct CompoundingPeriodRow {
  CompoundingPeriod period;
  std::string_view text;
  std::int16_t timesPerYear;
};

inline constexpr std::array<CompoundingPeriodRow, 5> kCompoundingPeriods{{
    {CompoundingPeriod::Monthly, "Monthly", 12},
    {CompoundingPeriod::Bimonthly, "Bimonthly", 6},
    // Required: "Quarterly" counts three times a year (Mortgage.QuarterlyIsThree).
    {CompoundingPeriod::Quarterly, "Quarterly", 3},
    {CompoundingPeriod::Semiannual, "Semiannual", 2},
    {CompoundingPeriod::Annual, "Annual", 1},
}};
static_assert(standsInOrder(kCompoundingPeriods, &CompoundingPeriodRow::period));

/// MTFreqPmt, in the order of the list.
enum class PaymentFrequency : std::uint8_t {
  Monthly,
  Semimonthly,
  TwoWeeks,
  OneWeek,
  BiweeklyAccelerated,
  WeeklyAccelerated
};

/// Where the payments per year of the rate conversion come from.
enum class RateCount : std::uint8_t { Whole, BiweeklyPerYear, WeeklyPerYear };

struct PaymentFrequencyRow {
  PaymentFrequency frequency;
  std::string_view text;
  std::string_view shortCode;  ///< goes with the selection, shown nowhere
  std::int16_t paymentsPerYear;
  RateCount rateCount;
  /// Payment per period: monthly payment * times / parts.
  double times;
  double parts;
};

inline constexpr std::array<PaymentFrequencyRow, 6> kPaymentFrequencies{{
    {PaymentFrequency::Monthly, "Monthly", "1m  ", 12, RateCount::Whole, 1, 1},
    {PaymentFrequency::Semimonthly, "Semimonthly", "sm  ", 24, RateCount::Whole, 1, 2},
    {PaymentFrequency::TwoWeeks, "2 Weeks", "2wk ", 26, RateCount::BiweeklyPerYear, 12, 26},
    {PaymentFrequency::OneWeek, "1 Week", "1wk ", 52, RateCount::WeeklyPerYear, 12, 52},
    {PaymentFrequency::BiweeklyAccelerated, "Biweekly(acl)", "b(a)", 26, RateCount::BiweeklyPerYear,
     1, 2},
    {PaymentFrequency::WeeklyAccelerated, "Weekly(acl)", "w(a)", 52, RateCount::WeeklyPerYear, 1,
     4},
}};
static_assert(standsInOrder(kPaymentFrequencies, &PaymentFrequencyRow::frequency));

/// MTIRFactor, elements 0 to 5. The per-year counts are days / 14 and days / 7 as
/// printed with eight decimals: constants, not computed. Until the list or a button
/// is left, DaysInYearState has the quotients themselves: required (Mortgage.LoadsThePage).
struct DaysInYearRow {
  std::string_view caption;
  Currency days;
  double biweeklyPerYear;
  double weeklyPerYear;
};

inline constexpr std::array<DaysInYearRow, 6> kDaysInYear{{
    {"365,25", Currency::fromTenThousandths(3'652'500), 26.08928571, 52.17857143},
    {"365", Currency::fromTenThousandths(3'650'000), 26.07142857, 52.14285714},
    {"364.50", Currency::fromTenThousandths(3'645'000), 26.03571429, 52.07142857},
    {"364", Currency::fromTenThousandths(3'640'000), 26, 52},
    {"363.50", Currency::fromTenThousandths(3'635'000), 25.96428571, 51.92857143},
    {"363", Currency::fromTenThousandths(3'630'000), 25.92857143, 51.85714286},
}};

/// The seventh button, without a caption: Monthly and Semimonthly count no days.
inline constexpr std::int16_t kDaysNotApplicable = 6;

/// Days in year of the two-weekly and weekly schedules: the button chosen and what
/// it stands for.
struct DaysInYearState {
  std::int16_t DaysOption = 1;
  Currency DaysInYear = Currency::whole(365);
  double BiweeklyPerYear = 365.0 / 14.0;
  double WeeklyPerYear = 365.0 / 7.0;
};

/// "Select to find:", one option button each.
enum class SolveFor : std::uint8_t { Payment, Principal, Years };

struct SolveForRow {
  SolveFor solveFor;
  std::string_view option;  ///< the option button
  std::string_view caption;
  std::string_view box;  ///< becomes the result box, the other two stay input boxes
};

inline constexpr std::array<SolveForRow, 3> kSolveFor{{
    {SolveFor::Payment, "MTPaymentOpt", "Payment", "MTInMthPayment"},
    {SolveFor::Principal, "MTPrincipalOpt", "Principal", "MTInPrincipal"},
    {SolveFor::Years, "MTTermOpt", "Years", "MTInTerm"},
}};
static_assert(standsInOrder(kSolveFor, &SolveForRow::solveFor));

/// The page's lists and options.
struct MortgageChoices {
  CompoundingPeriod compounding = CompoundingPeriod::Monthly;
  PaymentFrequency frequency = PaymentFrequency::BiweeklyAccelerated;
  SolveFor solveFor = SolveFor::Payment;

  bool operator==(const MortgageChoices&) const = default;
};

struct MortgageRates {
  std::int16_t paymentsPerYear = 0;
  double monthlyRate = 0.0;  ///< effective, a fraction
  double periodRate = 0.0;   ///< effective per payment of the chosen frequency
};

/// (1 + a / k)^(k / n) - 1, the effective rate of one of n periods of a nominal
/// rate a compounded k times a year. a is narrowed to single precision and
/// divided by k there; the rest is double. For the two-weekly and weekly
/// schedules n is biweeklyPerYear or weeklyPerYear, not the whole number.
MortgageRates ComputeMortgageRates(double ratePercent, const MortgageChoices& choices,
                                   double biweeklyPerYear, double weeklyPerYear);

enum class SolveStatus : std::uint8_t { NoKnownProblem, PaymentTooSmall, PaymentTooLarge };

struct MortgageInput {
  double principal = 0.0;
  double ratePercent = 0.0;
  double years = 0.0;
  double payment = 0.0;  ///< a month
  double biweeklyPerYear = 0.0;
  double weeklyPerYear = 0.0;
  MortgageChoices choices;
};

struct Mortgage {
  /// All figures stand; else `status` tells what is known of the reason.
  bool complete = false;
  SolveStatus status = SolveStatus::NoKnownProblem;
  /// The unknown is found, even where the schedule then fails.
  bool solved = false;
  std::int16_t paymentsPerYear = 0;

  double principal = 0.0;  ///< the unknown solved; principal and payment 0 if not
  double years = 0.0;
  double payment = 0.0;
  double totalInterest = 0.0;  ///< conventional

  // At the chosen frequency.
  double eachPayment = 0.0;
  double yearsToFinalPayment = 0.0;
  double interestPaid = 0.0;
  double interestSaved = 0.0;
};

/// The annuity formulas. With r a month, X = (1 + r)^(12 T): M = r X P / (X - 1);
/// T = (ln M - ln(M - r P)) / (12 ln(1 + r)). At the chosen frequency the same
/// with the period's rate i, but with the whole number N of payments a year for
/// the count of payments: that mixture is required
/// (Mortgage.RatesWithDaysButCountsWhole). Nothing is rounded. Never throws: a
/// number out of range leaves `complete` false. Solving for years, every failure is a
/// payment too small, that of a zero rate too, by which the formula divides; or too
/// large where it is at least the principal and the years are no more than 40.
Mortgage solveMortgage(const MortgageInput& input);

/// The texts of the page's boxes and result labels, as shown.
struct MortgageTexts {
  std::string principal;  ///< MTInPrincipal
  std::string rate;       ///< MTInRate
  std::string term;       ///< MTInTerm
  std::string payment;    ///< MTInMthPayment

  std::string totalPmts;    ///< MTTotalPmts
  std::string numPmts;      ///< MTNumPmts
  std::string daysInYear;   ///< MTDaysInYear
  std::string totIntSaved;  ///< MTTotIntSaved
  std::string numYrs;       ///< MTNumYrs
  std::string piPmt;        ///< MTPiPmt
  std::string totIntPaid;   ///< MTTotIntPaid
};

/// The two texts that the platform's message box shows; after it the focus is in
/// MTInMthPayment.
inline constexpr std::string_view kPaymentTooLarge =
    "Payment is too large. Greater than principal.";
inline constexpr std::string_view kPaymentTooSmall =
    "Payment is too small, repayment would take over 40 years.";

struct MortgageOutcome {
  Outcome outcome;
  /// Not empty: the platform's message box shows it, then the payment box gets
  /// the focus. The program's own message is none then.
  std::string_view platformMessage;
};

/// The page as it starts: MortgageInputs, days in year and the four boxes'
/// initial texts. Nothing is calculated yet, the result labels are empty.
MortgageTexts loadMortgage(BoxState& boxes, DaysInYearState& days);

/// Whether the days in year matter: Monthly and Semimonthly count months.
bool countsDays(PaymentFrequency frequency);

/// Leaving MTFreqPmt or an MTIRFactor button: Monthly and Semimonthly turn the
/// days off (6), another frequency turns them on again at 365; then DaysInYear,
/// BiweeklyPerYear and WeeklyPerYear follow DaysOption. The button to select.
std::int16_t leaveDaysInYear(DaysInYearState& days, PaymentFrequency frequency);

/// Solves for the unknown, writes it back to MortgageInputs
/// and into its box's text, fills the result labels' texts. A failure empties the
/// labels (MTDaysInYear stays) and says what to show; typed values stay. Where memory
/// lacks it is message 3, and nothing is another than before.
MortgageOutcome RecalculateMortgage(BoxState& boxes, const DaysInYearState& days,
                                    const MortgageChoices& choices, MortgageTexts& shown) noexcept;

/// MTCalculate: recalculates, appends the block to ReportLines(1), stores the two
/// totals of comparison i, taken from the numbers behind the texts, in
/// ComparisonTotals(i, 1) and (i, 2). When the recalculation fails, or a total is
/// beyond Currency (message 3), nothing is appended, counted or charted.
MortgageOutcome calculateMortgage(BoxState& boxes, Reports& reports, ChartSelectors& chart,
                                  const DaysInYearState& days, const MortgageChoices& choices,
                                  MortgageTexts& shown) noexcept;

}  // namespace mirelund

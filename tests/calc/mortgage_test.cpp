// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage.h"

#include <cmath>

#include "app/input_boxes.h"
#include "calc/calculator_testing.h"
#include "calc/mortgage_help.h"
#include "charts/chart_kind.h"
#include "reached.h"

namespace mirelund {
namespace {

using enum SolveFor;
using Compounding = CompoundingPeriod;
using Frequency = PaymentFrequency;

constexpr double kBiweekly = 26.07142857;  // 365 days
constexpr double kWeekly = 52.14285714;

MortgageInput loan(double principal, double rate, double years, double payment,
                   MortgageChoices choices) {
  return {principal, rate, years, payment, kBiweekly, kWeekly, choices};
}

// The page without its window: the boxes as loaded, figures typed into them.
struct Page {
  Global global;
  DaysInYearState days;
  MortgageTexts shown = loadMortgage(global.boxes, days);
  MortgageChoices choices;

  MortgageOutcome type(const char* box, std::string MortgageTexts::*text, double value) {
    const BoxRule& rule = boxRule(kMortgageBoxes, box);
    global.boxes.MortgageInputs[rule.slot] = value;
    shown.*text = boxText(global.boxes, rule);
    return RecalculateMortgage(global.boxes, days, choices, shown);
  }
  MortgageOutcome principal(double value) {
    return type("MTInPrincipal", &MortgageTexts::principal, value);
  }
  MortgageOutcome rate(double value) { return type("MTInRate", &MortgageTexts::rate, value); }
  MortgageOutcome term(double value) { return type("MTInTerm", &MortgageTexts::term, value); }
  MortgageOutcome payment(double value) {
    return type("MTInMthPayment", &MortgageTexts::payment, value);
  }
  MortgageOutcome frequency(Frequency frequency) {
    choices.frequency = frequency;
    leaveDaysInYear(days, frequency);
    return RecalculateMortgage(global.boxes, days, choices, shown);
  }
  MortgageOutcome calculate() {
    return calculateMortgage(global.boxes, global.reports, global.chart, days, choices, shown);
  }
};

TEST(Mortgage, LoadsThePage) {
  Page page;
  EXPECT_EQ(page.shown.principal, "  $100,000.00");
  EXPECT_EQ(page.shown.rate, " 6.500%");
  EXPECT_EQ(page.shown.term, "   25");
  EXPECT_EQ(page.shown.payment, "         $.00");
  EXPECT_EQ(page.shown.totalPmts, "") << "nothing is calculated before a box is left";
  EXPECT_EQ(page.shown.daysInYear, "");
  EXPECT_EQ(page.days.DaysOption, 1);
  EXPECT_EQ(page.days.BiweeklyPerYear, 365.0 / 14);
  EXPECT_EQ(page.days.WeeklyPerYear, 365.0 / 7);
  page.global.boxes.MortgageInputs[3] = 7;
  page.global.boxes.MortgageInputs[5] = 7;
  leaveDaysInYear(page.days, Frequency::Monthly);
  loadMortgage(page.global.boxes, page.days);
  EXPECT_EQ(page.global.boxes.MortgageInputs, (std::array<double, 6>{0, 100000, 6.5, 25, 0, 0}));
  EXPECT_EQ(page.days.DaysOption, 1);
}

struct Published {
  const char* source;
  double rate;
  int years;
  double payment;  // per 1,000 of principal
};

// Monthly payments per 1,000 as amortization tables of U.S. lenders print them,
// compounded monthly.
constexpr Published kPublished[] = {
    {"6 %, 30 years", 6, 30, 5.9955},   {"6 %, 15 years", 6, 15, 8.4386},
    {"7 %, 30 years", 7, 30, 6.6530},   {"7 %, 15 years", 7, 15, 8.9883},
    {"8 %, 25 years", 8, 25, 7.7182},   {"8 %, 30 years", 8, 30, 7.3376},
    {"10 %, 20 years", 10, 20, 9.6502}, {"12 %, 30 years", 12, 30, 10.2861},
    {"5 %, 30 years", 5, 30, 5.3682},   {"6.5 %, 25 years", 6.5, 25, 6.7521},
};

TEST(Mortgage, AgreesWithPaymentTables) {
  for (const auto& c : kPublished) {
    const auto mortgage = solveMortgage(
        loan(1000, c.rate, c.years, 0, {Compounding::Monthly, Frequency::Monthly, Payment}));
    EXPECT_TRUE(mortgage.complete);
    EXPECT_NEAR(mortgage.payment, c.payment, 0.00005) << c.source;
  }
}

TEST(Mortgage, CanadaCompoundsTwiceAYear) {
  Page page;
  page.choices.compounding = Compounding::Semiannual;
  page.rate(6);
  // 1.03^(1/6) - 1 = 0.00493862...; M = 639.8066.
  EXPECT_EQ(page.shown.payment, "      $639.81");
  EXPECT_EQ(page.shown.totalPmts, "   $91,941.98");
  EXPECT_EQ(page.shown.numPmts, "26");
  EXPECT_EQ(page.shown.daysInYear, "365.00");
  EXPECT_EQ(page.shown.piPmt, "      $319.90");
  EXPECT_EQ(page.shown.numYrs, "20.97");
  EXPECT_EQ(page.shown.totIntPaid, "   $74,455.00");
  EXPECT_EQ(page.shown.totIntSaved, "   $17,486.98");
  EXPECT_NEAR(page.global.boxes.MortgageInputs[4], 639.806616, 0.000001)
      << "written back unrounded";
  page.choices.compounding = Compounding::Monthly;
  page.rate(6);
  EXPECT_EQ(page.shown.payment, "      $644.30");
}

TEST(Mortgage, RatesWithDaysButCountsWhole) {
  Page page;
  page.choices.compounding = Compounding::Semiannual;
  page.rate(6);
  page.frequency(Frequency::TwoWeeks);
  // 12/26 of 639.81; what is saved comes from rating with 26.07142857 payments
  // a year and counting 26.
  EXPECT_EQ(page.shown.piPmt, "      $295.30");
  EXPECT_EQ(page.shown.numYrs, "24.84");
  EXPECT_EQ(page.shown.totIntSaved, "    $1,252.04");
}

struct Days {
  int option;
  const char* shown;
  const char* years;
  const char* interest;
};

// Computed apart, in double precision, from the formulas and the constants.
constexpr Days kDays[] = {
    {0, "365.25", "20.96", "   $74,338.28"}, {1, "365.00", "20.97", "   $74,455.00"},
    {2, "364.50", "21.00", "   $74,689.64"}, {3, "364.00", "21.03", "   $74,925.88"},
    {4, "363.50", "21.06", "   $75,163.74"}, {5, "363.00", "21.09", "   $75,403.24"},
};

TEST(Mortgage, CountsTheDaysChosen) {
  for (const auto& c : kDays) {
    Page page;
    page.choices.compounding = Compounding::Semiannual;
    page.rate(6);
    page.days.DaysOption = static_cast<std::int16_t>(c.option);  // a click
    page.frequency(Frequency::BiweeklyAccelerated);              // the button is left
    EXPECT_EQ(page.shown.daysInYear, c.shown);
    EXPECT_EQ(page.shown.numYrs, c.years) << c.shown;
    EXPECT_EQ(page.shown.totIntPaid, c.interest) << c.shown;
  }
}

TEST(Mortgage, MonthlyTurnsTheDaysOff) {
  DaysInYearState days;
  days.DaysOption = 4;
  EXPECT_EQ(leaveDaysInYear(days, Frequency::OneWeek), 4);
  EXPECT_EQ(days.DaysInYear, ToCurrency(363.5));
  EXPECT_EQ(days.BiweeklyPerYear, 25.96428571);
  EXPECT_EQ(days.WeeklyPerYear, 51.92857143);
  EXPECT_EQ(leaveDaysInYear(days, Frequency::Semimonthly), 6);
  EXPECT_EQ(leaveDaysInYear(days, Frequency::Monthly), 6);
  EXPECT_EQ(leaveDaysInYear(days, Frequency::WeeklyAccelerated), 1);
  EXPECT_EQ(days.DaysInYear, Currency::whole(365));
  days.DaysOption = 3;  // a click that Monthly does not keep
  EXPECT_EQ(leaveDaysInYear(days, Frequency::Monthly), 6);
}

TEST(Mortgage, MonthlyShowsNormalAndNothingSaved) {
  Page page;
  page.frequency(Frequency::Monthly);
  EXPECT_EQ(page.shown.daysInYear, "Normal");
  EXPECT_EQ(page.shown.numPmts, "12");
  EXPECT_EQ(page.shown.numYrs, "25.00");
  EXPECT_EQ(page.shown.totIntSaved, "         $.00");
  EXPECT_EQ(page.shown.piPmt, page.shown.payment);
  EXPECT_EQ(page.shown.totIntPaid, page.shown.totalPmts);
  page.term(9);
  EXPECT_EQ(page.shown.numYrs, "9.00") << "not padded";
  page.frequency(Frequency::Semimonthly);
  EXPECT_EQ(page.shown.daysInYear, "Normal");
  EXPECT_EQ(page.shown.numPmts, "24");
  EXPECT_EQ(page.shown.numYrs, " 8.98") << "in 5 places";
}

TEST(Mortgage, MonthlyIsTheConventionalSchedule) {
  const Mortgage mortgage =
      solveMortgage({100000, 6.5, 25, 0, kBiweekly, kWeekly, {{}, Frequency::Monthly, Payment}});
  ASSERT_TRUE(mortgage.complete);
  EXPECT_EQ(mortgage.yearsToFinalPayment, 25.0);
  EXPECT_EQ(mortgage.eachPayment, mortgage.payment);
  EXPECT_EQ(mortgage.interestPaid, mortgage.totalInterest);
  EXPECT_EQ(mortgage.interestSaved, 0.0);
}

TEST(Mortgage, QuarterlyIsThree) {
  // (1 + 0.12 / 3)^(3 / 12) - 1 = 0.0098534, not (1 + 0.12 / 4)^(4 / 12) - 1.
  const auto rates = ComputeMortgageRates(12, {Compounding::Quarterly, Frequency::Monthly, Payment},
                                          kBiweekly, kWeekly);
  EXPECT_NEAR(rates.monthlyRate, 0.00985340, 1e-8);
}

TEST(Mortgage, TheRateIsNarrowedAndDividedInSinglePrecision) {
  // 6 % is 0.0599999986588954..., a twelfth of it 0.00499999988824129 in single
  // precision.
  const auto rates = ComputeMortgageRates(6, {Compounding::Monthly, Frequency::Monthly, Payment},
                                          kBiweekly, kWeekly);
  EXPECT_NEAR(rates.monthlyRate, 0.00499999988824129, 1e-17 + 2e-16);
}

TEST(Mortgage, SolvesForThePrincipal) {
  Page page;
  page.choices.solveFor = Principal;
  page.rate(6);
  page.payment(1000);
  // 1000 x (1 - 1.005^-300) / 0.005 = 155,206.86 with 6 % exact; single precision
  // makes it 155,206.87.
  EXPECT_EQ(page.shown.principal, "  $155,206.87");
  EXPECT_NEAR(page.global.boxes.MortgageInputs[1], 155206.86598, 0.00001);
}

TEST(Mortgage, SolvesForTheYears) {
  Page page;
  page.choices.solveFor = Years;
  page.rate(6);
  EXPECT_EQ(page.payment(1000).platformMessage, "");
  // ln(1000 / 500) / (12 ln 1.005) = 11.5813
  EXPECT_EQ(page.shown.term, "11.58");
  EXPECT_NEAR(page.global.boxes.MortgageInputs[3], 11.58131, 0.00001);
  EXPECT_EQ(page.shown.numYrs, "10.31");
  page.payment(644.30);
  EXPECT_EQ(page.shown.term, "25.") << "a whole term, not padded";
}

TEST(Mortgage, KeepsWhatItSolvedForTheNextSolve) {
  Page page;
  page.rate(6);
  page.choices.solveFor = Principal;
  page.term(25);
  EXPECT_NEAR(page.global.boxes.MortgageInputs[1], 100000, 1e-6);
  page.choices.solveFor = Years;
  page.principal(100000);
  EXPECT_NEAR(page.global.boxes.MortgageInputs[3], 25, 1e-6);
}

struct Failure {
  const char* rule;
  SolveFor solveFor;
  double principal, rate, years, payment;
  Message message;
  std::string_view platform;
};

constexpr Failure kFailures[] = {
    {"no principal", Payment, 0, 6, 25, 0, Message::WrongEntry, {}},
    {"no payment", Principal, 0, 6, 25, 0, Message::WrongEntry, {}},
    {"a zero rate divides by zero", Payment, 100000, 0, 25, 0, Message::WrongEntry, {}},
    {"a zero rate, principal", Principal, 0, 0, 25, 500, Message::WrongEntry, {}},
    {"a zero rate, years", Years, 100000, 0, 25, 500, Message::None, kPaymentTooSmall},
    {"a zero rate, years, no payment", Years, 100000, 0, 25, 0, Message::None, kPaymentTooSmall},
    {"a zero rate, years, no principal", Years, 0, 0, 25, 0, Message::None, kPaymentTooSmall},
    {"a zero rate, years, the payment exceeds the principal", Years, 1000, 0, 25, 1001,
     Message::None, kPaymentTooSmall},
    {"no years", Payment, 100000, 6, 0, 0, Message::WrongEntry, {}},
    {"no years, principal", Principal, 0, 6, 0, 500, Message::WrongEntry, {}},
    {"the power overflows", Payment, 100000, 9e14, 40, 0, Message::WrongEntry, {}},
    {"the power overflows, principal", Principal, 100000, 9e14, 40, 500, Message::WrongEntry, {}},
    {"the payment is the interest", Years, 100000, 12, 25, 999, Message::None, kPaymentTooSmall},
    {"the payment is zero", Years, 100000, 12, 25, 0, Message::None, kPaymentTooSmall},
    {"41 years", Years, 100000, 12, 25, 1007.53, Message::None, kPaymentTooSmall},
    {"a rate beyond any payment", Years, 100000, 9e14, 25, 500, Message::None, kPaymentTooSmall},
    {"the payment is the principal", Years, 1000, 12, 25, 1000, Message::None, kPaymentTooLarge},
    {"the payment exceeds it", Years, 1000, 12, 25, 1001, Message::None, kPaymentTooLarge},
    {"no principal, years", Years, 0, 12, 25, 100, Message::None, kPaymentTooLarge},
};

TEST(Mortgage, AFailureEmptiesTheLabelsAndCountsNothing) {
  for (const auto& c : kFailures) {
    Page page;
    page.calculate();
    const std::string report = page.global.reports.ReportLines[1];
    page.choices.solveFor = c.solveFor;
    page.global.boxes.MortgageInputs = {0, c.principal, c.rate, c.years, c.payment, 0};
    const std::string days = page.shown.daysInYear;
    const std::string term = page.shown.term;
    page.global.reports.StartOver = 1;
    for (const auto& outcome :
         {RecalculateMortgage(page.global.boxes, page.days, page.choices, page.shown),
          page.calculate()}) {
      EXPECT_EQ(outcome.outcome.message, c.message) << c.rule;
      EXPECT_EQ(outcome.platformMessage, c.platform) << c.rule;
      EXPECT_FALSE(outcome.outcome.showResults) << c.rule;
      const MortgageTexts& s = page.shown;
      EXPECT_EQ(s.totalPmts + s.numPmts + s.numYrs + s.piPmt + s.totIntSaved + s.totIntPaid, "")
          << c.rule;
      EXPECT_EQ(s.daysInYear, days) << c.rule;
      EXPECT_EQ(s.term, term) << c.rule;
    }
    EXPECT_EQ(page.global.boxes.MortgageInputs[2], c.rate) << c.rule;
    EXPECT_EQ(page.global.boxes.MortgageInputs[3], c.years) << c.rule;
    if (c.solveFor == Payment) {
      EXPECT_EQ(page.shown.payment, "         $.00") << c.rule;
    } else if (c.solveFor == Principal) {
      EXPECT_EQ(page.shown.principal, "         $.00") << c.rule;
    }
    EXPECT_EQ(page.global.reports.ReportLines[1], report) << c.rule;
    EXPECT_EQ(page.global.reports.ComparisonCount, 1) << c.rule;
    EXPECT_EQ(page.global.chart.ChartCount, 1) << c.rule;
    EXPECT_EQ(page.global.reports.StartOver, 1) << c.rule;
  }
}

// 40.00 years are shown and allowed up to 40.004.
TEST(Mortgage, FortyYearsMayBeShort) {
  const MortgageChoices years{Compounding::Monthly, Frequency::Monthly, Years};
  const double payment =
      solveMortgage(loan(100000, 8, 40, 0, {Compounding::Monthly, Frequency::Monthly, Payment}))
          .payment;
  EXPECT_TRUE(solveMortgage(loan(100000, 8, 0, payment, years)).complete);
  EXPECT_TRUE(solveMortgage(loan(100000, 8, 0, payment - 0.001, years)).complete);
  EXPECT_FALSE(solveMortgage(loan(100000, 8, 0, payment - 0.01, years)).complete);
}

// No button counts so few weeks that this happens; were it so, the solved payment
// would stay and the labels be empty.
TEST(Mortgage, AScheduleThatNeverEndsFailsAfterTheSolution) {
  Page page;
  page.choices.frequency = Frequency::OneWeek;
  page.days.WeeklyPerYear = 20;
  const MortgageOutcome outcome = page.rate(6);
  EXPECT_EQ(outcome.outcome.message, Message::WrongEntry);
  EXPECT_EQ(page.shown.payment, "      $644.30");
  EXPECT_EQ(page.shown.daysInYear, "365.00");
  EXPECT_EQ(page.shown.totalPmts, "");
  page.choices.solveFor = Years;
  EXPECT_EQ(page.rate(6).platformMessage, kPaymentTooSmall);
}

TEST(Mortgage, ReportsABlock) {
  Page page;
  page.choices.compounding = Compounding::Semiannual;
  page.rate(6);
  const Outcome outcome = page.calculate().outcome;
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_EQ(outcome.results,
            "           Conventional Mortgage\r\n"
            "Compound interest periods/yr:     Semiannual\r\n"
            "Principal amount of mortgage:    $100,000.00\r\n"
            "Annual interest rate %:                6.000%\r\n"
            "Amortization period in years:             25\r\n"
            "Monthly principal + interest:        $639.81\r\n"
            "Total interest paid:              $91,941.98\r\n"
            "\r\n"
            "             Accelerated Mortgage\r\n"
            "Frequency/type of payment:     Biweekly(acl)\r\n"
            "Number of payments each year:             26\r\n"
            "Number of days in year used:          365.00\r\n"
            "Interest saved v normal mtge:     $17,486.98\r\n"
            "No. of years to final payment:         20.97\r\n"
            "Each payment, Principal + int:       $319.90\r\n"
            "Total interest paid:              $74,455.00\r\n"
            "____________________________________________\r\n"
            "\r\n");
  EXPECT_EQ(page.global.chart.ChartKind, ChartKind::Mortgage);
  EXPECT_EQ(page.global.chart.ChartCount, 1);
  EXPECT_EQ(page.global.chart.ChartTitle, "Totals for comparisons, number ");
  // 91,941.9847 and 74,455.0036: the numbers behind the texts, in four decimals.
  EXPECT_EQ(page.global.reports.ComparisonTotals.at(1, 1).tenThousandths(), 919'419'847);
  EXPECT_EQ(page.global.reports.ComparisonTotals.at(1, 2).tenThousandths(), 744'550'036);
}

TEST(Mortgage, TheTenthShowsAllBlocksAndTheEleventhStartsAgain) {
  Page page;
  const std::string block = page.calculate().outcome.results;
  std::string blocks = block;
  for (int i = 2; i <= 9; ++i) {
    blocks += block;
    EXPECT_EQ(page.calculate().outcome.results, blocks);
    EXPECT_EQ(page.global.chart.ChartCount, i);
  }
  const Outcome tenth = page.calculate().outcome;
  EXPECT_EQ(tenth.message, Message::MostComparisons);
  EXPECT_EQ(tenth.results, blocks + block);
  EXPECT_EQ(page.global.chart.ChartCount, 10);
  EXPECT_EQ(page.global.reports.ReportLines[1], "");
  EXPECT_EQ(page.calculate().outcome.results, block);
  showHelp(page.global.reports, mortgageHelp());
  EXPECT_EQ(page.calculate().outcome.results, block);
  EXPECT_EQ(page.global.reports.ComparisonCount, 1);
}

TEST(Mortgage, TotalsBeyondMoneyAreMessageThree) {
  Page page;
  EXPECT_EQ(page.principal(9e14).outcome.message, Message::None);
  page.rate(15);
  EXPECT_EQ(page.shown.totalPmts, "$2,558,242,69") << "cut to its 13 places";
  EXPECT_EQ(page.calculate().outcome.message, Message::WrongEntry);
  EXPECT_EQ(page.global.reports.ComparisonCount, 0);
  EXPECT_EQ(page.global.reports.ReportLines[1], "");
}

TEST(Mortgage, DaysInYearAreRoundedToEightDecimals) {
  for (const auto& row : kDaysInYear) {
    EXPECT_NEAR(row.biweeklyPerYear, row.days.toDouble() / 14, 5e-9);
    EXPECT_NEAR(row.weeklyPerYear, row.days.toDouble() / 7, 5e-9);
  }
}

rc::Gen<MortgageChoices> anyChoices() {
  return rc::gen::build<MortgageChoices>(
      rc::gen::set(
          &MortgageChoices::compounding,
          rc::gen::map(rc::gen::inRange(0, 5), [](int i) { return static_cast<Compounding>(i); })),
      rc::gen::set(
          &MortgageChoices::frequency,
          rc::gen::map(rc::gen::inRange(0, 6), [](int i) { return static_cast<Frequency>(i); })),
      rc::gen::set(&MortgageChoices::solveFor, rc::gen::map(rc::gen::inRange(0, 3), [](int i) {
        return static_cast<SolveFor>(i);
      })));
}

TEST(Mortgage, AnyInputEndsInFiguresOrAMessage) {
  checkReaching({{"report", 0.3}, {"message", 0.2}}, [](Reached& reached) {
    Page page;
    page.choices = *anyChoices();
    page.days.DaysOption = static_cast<std::int16_t>(*rc::gen::inRange(0, 6));
    leaveDaysInYear(page.days, page.choices.frequency);
    page.principal((*anyAmount()).toDouble());
    page.rate((*anyRate()).toDouble());
    page.payment((*anyAmount()).toDouble());
    page.term((*anyYears()).toDouble());
    const MortgageOutcome outcome = page.calculate();
    RC_ASSERT(outcome.outcome.showResults ==
              (outcome.outcome.message == Message::None && outcome.platformMessage.empty()));
    RC_ASSERT(outcome.outcome.message == Message::None ||
              outcome.outcome.message == Message::WrongEntry);
    const MortgageTexts& s = page.shown;
    for (const auto& text : {s.principal, s.rate, s.term, s.payment, s.totalPmts, s.numPmts,
                             s.daysInYear, s.totIntSaved, s.numYrs, s.piPmt, s.totIntPaid})
      RC_ASSERT(!showsNoNumber(text));
    for (const auto& text : {s.totalPmts, s.totIntSaved, s.piPmt, s.totIntPaid})
      RC_ASSERT(text.empty() || text.size() == 13U);
    if (!outcome.outcome.showResults) {
      reached("message");
      return;
    }
    const auto lines = linesOf(outcome.outcome.results);
    RC_ASSERT(lines.size() == 18U);
    reached("report");
  });
}

// Paid month by month, the balance of a solved mortgage ends at 0.
TEST(Mortgage, TheBalanceEndsAtZero) {
  checkReaching([](Reached& reached) {
    MortgageChoices choices = *anyChoices();
    choices.solveFor = Payment;
    const double principal = *rc::gen::inRange(1000, 1'000'000);
    const double rate = *rc::gen::inRange(1, 250) / 10.0;
    const int years = *rc::gen::inRange(1, 41);
    const auto input = loan(principal, rate, years, 0, choices);
    const Mortgage mortgage = solveMortgage(input);
    RC_PRE(mortgage.complete);
    const double r = ComputeMortgageRates(rate, choices, kBiweekly, kWeekly).monthlyRate;
    double balance = principal;
    double worst = 1.0;
    for (int month = 0; month < 12 * years; ++month) {
      balance = balance * (1 + r) - mortgage.payment;
      worst *= 1 + r;
    }
    RC_ASSERT(std::abs(balance) < 1e-12 * principal * worst * 12 * years);
    reached();
  });
}

// Solved for the payment, then for the other two from it: the loan comes back.
TEST(Mortgage, TheThreeSolutionsAgree) {
  checkReaching([](Reached& reached) {
    MortgageChoices choices = *anyChoices();
    choices.solveFor = Payment;
    auto input = loan(*rc::gen::inRange(1000, 1'000'000), *rc::gen::inRange(1, 150) / 10.0,
                      *rc::gen::inRange(1, 41), 0, choices);
    const Mortgage paid = solveMortgage(input);
    RC_PRE(paid.complete);
    RC_ASSERT(std::abs(paid.eachPayment -
                       paid.payment *
                           kPaymentFrequencies[static_cast<std::size_t>(choices.frequency)].times /
                           kPaymentFrequencies[static_cast<std::size_t>(choices.frequency)].parts) <
              1e-7 * paid.payment);
    input.payment = paid.payment;
    input.choices.solveFor = Principal;
    RC_ASSERT(std::abs(solveMortgage(input).principal - input.principal) < 1e-7 * input.principal);
    input.choices.solveFor = Years;
    RC_ASSERT(std::abs(solveMortgage(input).years - input.years) < 1e-4);
    reached();
  });
}

}  // namespace
}  // namespace mirelund

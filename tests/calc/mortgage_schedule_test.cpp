// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage_schedule.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <optional>

#include "base/parse_number.h"
#include "calc/calculator_testing.h"
#include "reached.h"

namespace mirelund {
namespace {

using Compounding = CompoundingPeriod;
using Frequency = PaymentFrequency;
using enum ScheduleKind;

constexpr double kBiweekly = 26.07142857;  // 365 days
constexpr double kWeekly = 52.14285714;

Currency cents(std::int64_t count) {
  return Currency::fromTenThousandths(count * 100);
}

MortgageInput mortgage(double principal, double rate, double years, MortgageChoices choices = {}) {
  return {principal, rate, years, 0.0, kBiweekly, kWeekly, choices};
}

// The page as it starts: 100,000.00, 6.5 %, 25 years.
const MortgageInput kAsLoaded = mortgage(100'000, 6.5, 25);

ScheduleRow row(std::int64_t payment, std::int64_t extra, std::int64_t interest,
                std::int64_t principal, std::int64_t balance) {
  return {cents(payment), cents(extra), cents(interest), cents(principal), cents(balance)};
}

std::string shown(const ScheduleRow& row) {
  std::string text;
  for (const Currency amount : {row.payment, row.extra, row.interest, row.principal, row.balance})
    text += FormatNumber(amount, "####,,##0.00") + ' ';
  return text;
}

void expectRows(const std::vector<ScheduleRow>& rows, const std::vector<ScheduleRow>& expected,
                const char* rule) {
  ASSERT_EQ(rows.size(), expected.size()) << rule;
  for (std::size_t i = 0; i < rows.size(); ++i)
    EXPECT_EQ(rows[i], expected[i]) << rule << ", payment " << i + 1 << ": " << shown(rows[i]);
}

struct Worked {
  const char* rule;
  LoanTerms loan;
  ExtraPayments extras;
  std::vector<ScheduleRow> rows;
};

const LoanTerms kThousand{cents(100'000), 0.01, cents(34'002), 3, 12};

// By hand, on paper. 1,000.00 at 1 % and 340.02 a period: 10.00 interest leaves 669.98, whose
// 6.6998 are 6.70 and leave 336.66, whose 3.3666 are 3.37.
const Worked kWorked[] = {
    {"the last payment is above the others",
     kThousand,
     {},
     {row(34'002, 0, 1'000, 33'002, 66'998), row(34'002, 0, 670, 33'332, 33'666),
      row(34'003, 0, 337, 33'666, 0)}},
    // A lesson's table of 300 at 10 % in quarters ("Building an Amortization Schedule": 79.75,
    // then 79.72 at the end): 7.50, 5.69 (5.6937...), 3.84 (3.8422...), 1.94 (1.9445).
    {"the last payment is below the others",
     {cents(30'000), 0.025, cents(7'975), 4, 4},
     {},
     {row(7'975, 0, 750, 7'225, 22'775), row(7'975, 0, 569, 7'406, 15'369),
      row(7'975, 0, 384, 7'591, 7'778), row(7'972, 0, 194, 7'778, 0)}},
    // 569.98 x 1 % = 5.6998, 135.66 x 1 % = 1.3566; the last takes what is left: no extra.
    {"an extra with each payment",
     kThousand,
     {cents(10'000), {}},
     {row(34'002, 10'000, 1'000, 43'002, 56'998), row(34'002, 10'000, 570, 43'432, 13'566),
      row(13'702, 0, 136, 13'566, 0)}},
    // 369.98 and 3.70 interest are 373.68: 340.02 and an extra cut to 33.66.
    {"an extra is cut to the balance and ends the loan",
     kThousand,
     {cents(30'000), {}},
     {row(34'002, 30'000, 1'000, 63'002, 36'998), row(34'002, 3'366, 370, 36'998, 0)}},
    {"an extra greater than the loan",
     kThousand,
     {cents(1'000'000), {}},
     {row(34'002, 66'998, 1'000, 100'000, 0)}},
    // 669.98 + 6.70 - 540.02 = 136.66, whose 1.3666 are 1.37.
    {"a sum at the year's end",
     {cents(100'000), 0.01, cents(34'002), 3, 2},
     {{}, cents(20'000)},
     {row(34'002, 0, 1'000, 33'002, 66'998), row(34'002, 20'000, 670, 53'332, 13'666),
      row(13'803, 0, 137, 13'666, 0)}},
    // 669.98 - 50.00 = 619.98; 6.20; 619.98 + 6.20 - 340.02 - 50.00 - 200.00 = 36.16; 0.36.
    {"both kinds stand in one column",
     {cents(100'000), 0.01, cents(34'002), 3, 2},
     {cents(5'000), cents(20'000)},
     {row(34'002, 5'000, 1'000, 38'002, 61'998), row(34'002, 25'000, 620, 58'382, 3'616),
      row(3'652, 0, 36, 3'616, 0)}},
    {"a payment that covers all ends the loan early",
     {cents(100), 0.01, cents(60), 12, 12},
     {},
     {row(60, 0, 1, 59, 41), row(41, 0, 0, 41, 0)}},
    {"one payment",
     {cents(100'000), 0.01, cents(1'000), 1, 12},
     {},
     {row(101'000, 0, 1'000, 100'000, 0)}},
    {"without interest",
     {cents(100), 0.0, cents(50), 2, 12},
     {},
     {row(50, 0, 0, 50, 50), row(50, 0, 0, 50, 0)}},
    // 0.004 of an extra is none, 0.005 a cent.
    {"extras are whole cents, half up",
     {cents(100), 0.0, cents(50), 2, 1},
     {Currency::fromTenThousandths(49), Currency::fromTenThousandths(50)},
     {row(50, 1, 0, 51, 49), row(49, 0, 0, 49, 0)}},
};

TEST(MortgageSchedule, IsAsWorkedByHand) {
  for (const Worked& c : kWorked) expectRows(amortize(c.loan, c.extras), c.rows, c.rule);
}

struct Product {
  const char* rule;
  std::int64_t cents;
  double rate;
  std::int64_t interest;
};

// Each as an exact fraction: balance x rate in cents, then half up.
const Product kProducts[] = {
    {"1.5 is 2", 12, 0.125, 2},
    {"2.5 is 3, not the even cent", 20, 0.125, 3},
    {"a rate just below falls short of the tie", 12, std::nextafter(0.125, 0.0), 1},
    {"a rate just above", 20, std::nextafter(0.125, 1.0), 3},
    {"0.4 is nothing", 4, 0.1, 0},
    {"a rate of next to nothing", 9'000'000'000'000'000, std::numeric_limits<double>::denorm_min(),
     0},
    {"none", 9'000'000'000'000'000, 0.0, 0},
    {"a rate above 1", 100, 1.5, 150},
    // 6e16 x (0.5 - 2^-54) = 3e16 - 3.33...: a double has no such cents.
    {"every cent counts", 60'000'000'000'000'000, std::nextafter(0.5, 0.0), 29'999'999'999'999'997},
};

TEST(MortgageSchedule, InterestIsExactAndRoundedOnce) {
  for (const Product& c : kProducts)
    EXPECT_EQ(amortize({cents(c.cents), c.rate, {}, 1, 12}, {}).front().interest, cents(c.interest))
        << c.rule;
}

struct Refused {
  const char* rule;
  LoanTerms loan;
};

const Refused kRefused[] = {
    {"the payment is the interest", {cents(100'000), 0.01, cents(1'000), 5, 12}},
    {"the payment is below it", {cents(100'000), 0.01, cents(999), 5, 12}},
    {"no payment", {cents(100'000), 0.01, {}, 5, 12}},
    {"nothing to repay", {{}, 0.01, cents(100), 5, 12}},
    {"less than nothing", {cents(-1), 0.01, cents(100), 5, 12}},
    {"a negative rate", {cents(100), -0.01, cents(100), 1, 12}},
    {"a rate beyond all", {cents(100), 0x1p20, cents(100), 1, 12}},
    {"no number", {cents(100), std::nan(""), cents(100), 1, 12}},
    {"interest beyond money", {cents(90'000'000'000'000'000), 1.1, {}, 1, 12}},
    {"what is owed is beyond money", {cents(90'000'000'000'000'000), 0.5, {}, 1, 12}},
};

TEST(MortgageSchedule, RefusesABalanceThatDoesNotFall) {
  for (const Refused& c : kRefused) EXPECT_THROW(amortize(c.loan, {}), ArithmeticError) << c.rule;
  EXPECT_NO_THROW(amortize(kRefused[0].loan, {cents(1), {}})) << "an extra lets it fall";
}

struct Part {
  std::size_t first, last;  // payments
  double interest, principal, balance;
};

struct Published {
  const char* source;
  MortgageInput loan;
  double payment;
  std::vector<Part> parts;
};

// Interest and balances rounded to cents a payment, as these makers of financial calculators
// document it for theirs; amounts summed over payments `first` to `last`.
const Published kPublished[] = {
    {"HP 12C Platinum user's guide, Amortization, pages 54 to 56 (50,000)",
     mortgage(50'000, 13.25, 25),
     573.35,
     {{1, 1, 552.08, 21.27, 49'978.73},
      {2, 2, 551.85, 21.50, 49'957.23},
      {13, 24, 6'570.72, 309.48, 49'419.21}}},
    {"HP 12c user's guide, Amortization, pages 69 to 71 (250,000, 25 years)",
     mortgage(250'000, 5.25, 25),
     1498.12,
     {{1, 1, 1'093.75, 404.37, 249'595.63}, {2, 2, 1'091.98, 406.14, 249'189.49}}},
    {"HP 12c user's guide, Amortization, page 71 (250,000, 30 years)",
     mortgage(250'000, 5.25, 30),
     1380.51,
     {{1, 1, 1'093.75, 286.76, 249'713.24}}},
    {"HP, HP 12C Loan Amortizations, version 1.0, examples 1 and 2",
     mortgage(180'000, 7.75, 30),
     1289.54,
     {{1, 12, 13'894.66, 1'579.82, 178'420.18}, {13, 24, 13'767.79, 1'706.69, 176'713.49}}},
    {"Texas Instruments, solution 11219, amortization on the BA II PLUS",
     mortgage(150'000, 7, 30),
     997.95,
     {{1, 60, 51'074.64, 8'802.36, 141'197.64}}},
};

TEST(MortgageSchedule, AgreesWithPublishedTables) {
  for (const Published& c : kPublished) {
    const PaymentSchedule schedule = makeSchedule({c.loan, Conventional, {}});
    EXPECT_EQ(schedule.loan.payment, ToCurrency(c.payment)) << c.source;
    for (const Part& part : c.parts) {
      Currency interest;
      Currency principal;
      for (std::size_t number = part.first; number <= part.last; ++number) {
        interest += schedule.rows[number - 1].interest;
        principal += schedule.rows[number - 1].principal;
      }
      EXPECT_EQ(interest, ToCurrency(part.interest)) << c.source;
      EXPECT_EQ(principal, ToCurrency(part.principal)) << c.source;
      EXPECT_EQ(schedule.rows[part.last - 1].balance, ToCurrency(part.balance)) << c.source;
    }
  }
}

struct Canadian {
  const char* source;
  double principal, rate, years, payment;
  std::size_t payments;
};

constexpr Canadian kCanadian[] = {
    {"HP 10bII+ user's guide, Canadian mortgages", 130'000, 12, 30, 1308.30, 360},
    {"HP support, HP 12c: calculating Canadian mortgages", 30'000, 9, 30, 237.85, 360},
    // There solved for the number of payments, which it rounds up: 437.
    {"HP support, HP 12c: 440 a month", 56'000, 9.25, 0, 440, 437},
};

TEST(MortgageSchedule, CountsCanadianPayments) {
  for (const Canadian& c : kCanadian) {
    MortgageInput input = mortgage(c.principal, c.rate, c.years,
                                   {Compounding::Semiannual, Frequency::Monthly,
                                    c.years > 0 ? SolveFor::Payment : SolveFor::Years});
    input.payment = c.payment;
    const LoanTerms loan = loanOf(input, Conventional);
    EXPECT_EQ(loan.payment, ToCurrency(c.payment)) << c.source;
    EXPECT_EQ(loan.payments, c.payments) << c.source;
    EXPECT_EQ(amortize(loan, {}).size(), c.payments) << c.source;
  }
}

TEST(MortgageSchedule, OfThePageAsItStarts) {
  const PaymentSchedule schedule = makeSchedule({kAsLoaded, Conventional, {}});
  EXPECT_NEAR(schedule.pageInterest, 102'562.15, 0.005) << "shown on the page";
  EXPECT_EQ(schedule.total.interest, cents(10'256'106));
  EXPECT_EQ(schedule.rows.size(), 300U);
  EXPECT_EQ(schedule.rows.back().payment, cents(67'327));
  EXPECT_EQ(schedule.loan.payment, cents(67'521));
  EXPECT_EQ(schedule.years.size(), 25U);
  EXPECT_EQ(schedule.plainPayments, 300U);
  EXPECT_EQ(schedule.plainInterest, schedule.total.interest);
}

TEST(MortgageSchedule, OfTheChosenFrequency) {
  const PaymentSchedule schedule = makeSchedule({kAsLoaded, AtFrequency, {}});
  // The page shows 20.68 years: 537.6... payments.
  EXPECT_EQ(schedule.rows.size(), 538U);
  EXPECT_EQ(schedule.loan.payments, 538U);
  EXPECT_EQ(schedule.loan.perYear, 26U);
  EXPECT_EQ(schedule.loan.payment, cents(33'760));
  EXPECT_NEAR(schedule.pageInterest, 81'557.27, 0.005) << "shown on the page";
  EXPECT_EQ(schedule.years.size(), 21U);
  const MortgageRates rates = ComputeMortgageRates(6.5, kAsLoaded.choices, kBiweekly, kWeekly);
  EXPECT_EQ(schedule.loan.rate, rates.periodRate);
  EXPECT_EQ(loanOf(kAsLoaded, Conventional).rate, rates.monthlyRate);
}

TEST(MortgageSchedule, PaysMonthlyAtTheFrequencyMonthly) {
  const MortgageInput monthly =
      mortgage(100'000, 6.5, 25, {Compounding::Monthly, Frequency::Monthly, SolveFor::Payment});
  const PaymentSchedule schedule = makeSchedule({monthly, AtFrequency, {}});
  EXPECT_EQ(schedule.rows, makeSchedule({monthly, Conventional, {}}).rows);
  EXPECT_EQ(schedule.pageInterest, makeSchedule({monthly, Conventional, {}}).pageInterest);
}

TEST(MortgageSchedule, SavesYearsAndInterestByExtras) {
  const PaymentSchedule schedule =
      makeSchedule({kAsLoaded, Conventional, {Currency::whole(100), Currency::whole(1000)}});
  EXPECT_EQ(schedule.plainPayments, 300U);
  EXPECT_EQ(schedule.plainInterest, cents(10'256'106));
  EXPECT_LT(schedule.rows.size(), 300U);
  EXPECT_LT(schedule.total.interest, schedule.plainInterest);
  EXPECT_EQ(schedule.rows[11].extra, Currency::whole(1100));
  EXPECT_EQ(schedule.rows[12].extra, Currency::whole(100));
}

// Years that differ from 25 by less than a page shows are as many payments.
TEST(MortgageSchedule, RoundsPaymentsUpLessWhatThePageHides) {
  MortgageInput input = kAsLoaded;
  input.payment = solveMortgage(kAsLoaded).payment;
  input.choices.solveFor = SolveFor::Years;
  EXPECT_EQ(loanOf(input, Conventional).payments, 300U);
  input.payment -= 0.004;  // 300.0044... payments
  EXPECT_EQ(loanOf(input, Conventional).payments, 300U);
  input.payment -= 0.001;  // 300.0055...
  EXPECT_EQ(loanOf(input, Conventional).payments, 301U);
  input.payment = 1000;  // 144.4... payments
  EXPECT_EQ(loanOf(input, Conventional).payments, 145U);
}

TEST(MortgageSchedule, HasOneToAHundredThousandPayments) {
  // 1,000.00 for a month at 1 %: 0.83 of interest.
  EXPECT_EQ(makeSchedule({mortgage(1000, 1, 1 / 12.0), Conventional, {}}).rows,
            std::vector{row(100'083, 0, 83, 100'000, 0)});
  const double years = kMostPayments / 12.0;
  EXPECT_EQ(loanOf(mortgage(100'000, 0.0001, years), Conventional).payments, kMostPayments);
  EXPECT_THROW(loanOf(mortgage(100'000, 0.0001, years + 0.01 / 12), Conventional), ArithmeticError);
}

// What is solved for is not whole cents; a schedule has what the page shows of it.
TEST(MortgageSchedule, PaysWhatThePageShows) {
  MortgageInput input = kAsLoaded;
  input.payment = 675.21;
  input.choices.solveFor = SolveFor::Principal;
  // 675.21 x (1 - (1 + r)^-300) / r = 100,000.42...
  EXPECT_NEAR(solveMortgage(input).principal, 100'000.42, 0.005);
  EXPECT_EQ(loanOf(input, Conventional).principal, cents(10'000'042));
  // 337.714988...: rounded once, not to 337.7150 and then to 337.72.
  EXPECT_EQ(loanOf(mortgage(100'033, 6.5, 25), AtFrequency).payment, cents(33'771));
  // 0.625 is shown as ".63": half away from zero, as every number.
  input = {10.0, 60.0, 0.0, 0.625, kBiweekly, kWeekly, {}};
  input.choices.solveFor = SolveFor::Years;
  EXPECT_EQ(loanOf(input, Conventional).payment, cents(63));
}

struct NotShown {
  const char* rule;
  MortgageInput input;
};

const NotShown kNotShown[] = {
    {"no principal", mortgage(0, 6.5, 25)},
    {"no years", mortgage(100'000, 6.5, 0)},
    {"no rate", mortgage(100'000, 0, 25)},
    {"less than a payment", mortgage(100'000, 6.5, 0.0001)},
    {"a million years", mortgage(100'000, 1e-9, 1e6)},
    {"beyond money", mortgage(9.3e14, 6.5, 25)},
    {"a principal of no cent", mortgage(0.001, 6.5, 25)},
    {"a payment of no cent", mortgage(0.5, 6.5, 25)},
    // 90 % for 40 years: 7,500.00 of interest, and so is the payment.
    {"a balance that does not fall", mortgage(100'000, 90, 40)},
};

TEST(MortgageSchedule, IsMessageThreeWhereThereIsNone) {
  for (const NotShown& c : kNotShown) {
    const ShownSchedule shown = showSchedule({c.input, Conventional, {}});
    EXPECT_EQ(shown.message, Message::WrongEntry) << c.rule;
    EXPECT_EQ(shown.report, "") << c.rule;
    EXPECT_TRUE(shown.schedule.rows.empty()) << c.rule;
  }
  const ShownSchedule extra =
      showSchedule({mortgage(100'000, 90, 40), Conventional, {Currency::whole(100), {}}});
  EXPECT_EQ(extra.message, Message::WrongEntry) << "against what would it save?";
}

// Half a mortgage is none: the page shows no results where the frequency has none.
TEST(MortgageSchedule, NeedsAllOfThePagesResults) {
  MortgageInput input =
      mortgage(100'000, 6, 25, {Compounding::Monthly, Frequency::OneWeek, SolveFor::Payment});
  input.weeklyPerYear = 20;
  EXPECT_TRUE(solveMortgage(input).solved);
  EXPECT_EQ(showSchedule({input, Conventional, {}}).message, Message::WrongEntry);
}

TEST(MortgageSchedule, ShowsWhatItReports) {
  const ScheduleInput input{kAsLoaded, AtFrequency, {Currency::whole(50), {}}};
  const ShownSchedule shown = showSchedule(input);
  EXPECT_EQ(shown.message, Message::None);
  EXPECT_EQ(shown.schedule.rows, makeSchedule(input).rows);
  EXPECT_EQ(shown.report, scheduleReport(makeSchedule(input)));
}

TEST(MortgageSchedule, CutsNoAmount) {
  const PaymentSchedule schedule = makeSchedule({mortgage(9e13, 15, 40), Conventional, {}});
  const std::string total = FormatNumber(schedule.total.payment, "####,,###.00");
  EXPECT_GT(total.size(), 12U);
  const std::string report = scheduleReport(schedule);
  std::size_t width = 0;
  for (const std::string& line : linesOf(report)) {
    if (line.starts_with("____")) width = line.size();
    if (line.starts_with("Year  ") || line.starts_with("Total  ")) {
      EXPECT_EQ(line.size(), width) << line;
    }
  }
  EXPECT_EQ(width, 8 + 5 * (total.size() + 2));
  EXPECT_NE(report.find("  " + total), std::string::npos);
}

TEST(MortgageSchedule, PrintsBehindALineThatWasTyped) {
  EXPECT_EQ(printedSchedule("", "report\r\n"), "report\r\n");
  EXPECT_EQ(printedSchedule("Our house", "report\r\n"), "Our house\r\nreport\r\n");
}

TEST(MortgageSchedule, ChartsBalanceAndInterestByYear) {
  const PaymentSchedule schedule = makeSchedule({kAsLoaded, Conventional, {}});
  const ChartView view = scheduleChart(schedule);
  EXPECT_EQ(view.message, Message::None);
  EXPECT_EQ(view.caption, "Payment schedule");
  EXPECT_EQ(view.title, "Balance and interest by year");
  EXPECT_EQ(view.categoryTitle, "Year");
  EXPECT_EQ(view.valueTitle, "Amount ($)");
  EXPECT_FALSE(view.managerButtons);
  ASSERT_EQ(view.categories.size(), 25U);
  EXPECT_EQ(view.categories.front(), "1");
  EXPECT_EQ(view.categories.back(), "25");
  ASSERT_EQ(view.series.size(), 2U);
  EXPECT_EQ(pointText(view, 0, 0), "Year 1, Balance at the end of the year: $98,348.86");
  EXPECT_EQ(pointText(view, 1, 0), "Year 1, Interest paid in the year: $6,451.38");
  EXPECT_EQ(view.series[0].values.back(), 0.0);
  ASSERT_EQ(view.series[1].values.size(), 25U);
  EXPECT_EQ(view.series[1].values.front(), 6451.38);
}

TEST(MortgageSchedule, ExportsARowAPayment) {
  const PaymentSchedule schedule =
      makeSchedule({kAsLoaded, Conventional, {{}, Currency::whole(1000)}});
  const Sheet sheet = scheduleSheet(schedule);
  EXPECT_EQ(sheet.name, "Payment schedule");
  std::string headings;
  for (const SheetColumn& column : sheet.columns)
    headings += (headings.empty() ? "" : ",") + column.heading;
  EXPECT_EQ(headings, "number,payment,extra,interest,principal,balance");
  for (std::size_t i = 1; i < sheet.columns.size(); ++i) EXPECT_EQ(sheet.columns[i].decimals, 2);
  ASSERT_EQ(sheet.rows.size(), schedule.rows.size());
  EXPECT_EQ(sheet.rows[0], (std::vector<Cell>{std::int64_t{1}, cents(67'521), Currency(),
                                              cents(54'167), cents(13'354), cents(9'986'646)}));
  EXPECT_EQ(sheet.rows[11][0], Cell(std::int64_t{12}));
  EXPECT_EQ(sheet.rows[11][2], Cell(Currency::whole(1000)));
  EXPECT_EQ(sheet.rows.back()[5], Cell(Currency()));
}

// --- expected reports, derived by golden_schedule/derive.py ---

struct Golden {
  std::map<std::string, std::string> typed;
  std::string report;
};

Golden goldenOf(const std::filesystem::path& path) {
  Golden golden;
  std::ifstream file(path);
  std::string line;
  while (std::getline(file, line) && line != "----")
    if (!line.starts_with('#'))
      golden.typed[line.substr(0, line.find(' '))] = line.substr(line.find(' ') + 1);
  while (std::getline(file, line)) golden.report += line + "\r\n";
  return golden;
}

template <typename Table>
auto rowCalled(const Table& table, std::string_view text) {
  for (const auto& row : table)
    if (row.text == text) return row;
  throw std::out_of_range(std::string(text));
}

ScheduleInput inputOf(std::map<std::string, std::string> typed) {
  const auto number = [&](const char* name) { return ParseNumber(typed[name]); };
  ScheduleInput input;
  input.mortgage = mortgage(number("principal"), number("rate"), number("years"));
  input.mortgage.choices.compounding = rowCalled(kCompoundingPeriods, typed["compounding"]).period;
  input.mortgage.choices.frequency = rowCalled(kPaymentFrequencies, typed["frequency"]).frequency;
  for (const DaysInYearRow& row : kDaysInYear)
    if (row.days == ToCurrency(number("days"))) {
      input.mortgage.biweeklyPerYear = row.biweeklyPerYear;
      input.mortgage.weeklyPerYear = row.weeklyPerYear;
    }
  input.kind = typed["kind"] == "chosen" ? AtFrequency : Conventional;
  input.extras = {ToCurrency(number("extra")), ToCurrency(number("yearly"))};
  return input;
}

TEST(MortgageSchedule, ReportsAsDerived) {
  int played = 0;
  for (const auto& file :
       std::filesystem::directory_iterator(MIRELUND_TEST_DATA "/golden_schedule")) {
    if (file.path().extension() != ".txt") continue;
    const Golden golden = goldenOf(file.path());
    const ShownSchedule shown = showSchedule(inputOf(golden.typed));
    EXPECT_EQ(linesOf(shown.report), linesOf(golden.report)) << file.path();
    ++played;
  }
  EXPECT_EQ(played, 8);
}

// --- laws ---

rc::Gen<MortgageChoices> anyChoices() {
  return rc::gen::map(rc::gen::tuple(anyIn(0, 5), anyIn(0, 6), anyIn(0, 2)), [](const auto& drawn) {
    const auto& [compounding, frequency, solveFor] = drawn;
    return MortgageChoices{static_cast<Compounding>(compounding), static_cast<Frequency>(frequency),
                           solveFor == 0 ? SolveFor::Payment : SolveFor::Years};
  });
}

// A mortgage such as people have: 10,000.00 to 1,000,000.00, 0.1 % to 15 %, 1 to 40 years.
MortgageInput anyMortgage() {
  const double principal = *anyIn(1'000'000, 100'000'000) / 100.0;
  const double rate = *anyIn(1, 151) / 10.0;
  const int years = *anyIn(1, 41);
  MortgageInput input = mortgage(principal, rate, years, *anyChoices());
  MortgageInput solved = input;
  solved.choices.solveFor = SolveFor::Payment;
  // Cents more, which makes a part of a payment of what were whole ones.
  input.payment =
      std::ceil(solveMortgage(solved).payment * 100.0) / 100.0 + *anyIn(0, 10'000) / 100.0;
  return input;
}

ScheduleKind anyKind() {
  return *anyIn(0, 2) == 0 ? Conventional : AtFrequency;
}

TEST(MortgageSchedule, RepaysTheLoanAndNothingElse) {
  checkReaching([](Reached& reached) {
    const ShownSchedule shown = showSchedule(
        {anyMortgage(), anyKind(), {cents(*anyIn(0, 50'000)), cents(*anyIn(0, 500'000))}});
    if (shown.message != Message::None) return;
    const PaymentSchedule& schedule = shown.schedule;
    Currency balance = schedule.loan.principal;
    Currency repaid;
    for (const ScheduleRow& row : schedule.rows) {
      RC_ASSERT(row.payment + row.extra == row.interest + row.principal);
      RC_ASSERT(row.principal > Currency());
      RC_ASSERT(row.balance == balance - row.principal);
      RC_ASSERT(row.extra >= Currency());
      balance = row.balance;
      repaid += row.principal;
    }
    RC_ASSERT(balance.isZero());
    RC_ASSERT(repaid == schedule.loan.principal);
    ScheduleRow total;
    for (const ScheduleRow& year : schedule.years) {
      total.payment += year.payment;
      total.extra += year.extra;
      total.interest += year.interest;
      total.principal += year.principal;
      total.balance = year.balance;
    }
    RC_ASSERT(total == schedule.total);
    const std::size_t perYear = schedule.loan.perYear;
    RC_ASSERT(schedule.years.size() == (schedule.rows.size() + perYear - 1) / perYear);
    reached();
  });
}

TEST(MortgageSchedule, ExtrasNeverLengthen) {
  checkReaching([](Reached& reached) {
    ScheduleInput input{anyMortgage(), anyKind(), {}};
    std::optional<ShownSchedule> before;
    for (int i = 0; i < 3; ++i) {
      const ShownSchedule shown = showSchedule(input);
      if (shown.message != Message::None) return;
      RC_ASSERT(shown.schedule.rows.size() <= shown.schedule.plainPayments);
      RC_ASSERT(shown.schedule.plainPayments <= shown.schedule.loan.payments);
      RC_ASSERT(shown.schedule.total.interest <= shown.schedule.plainInterest);
      if (before) {
        RC_ASSERT(shown.schedule.rows.size() <= before->schedule.rows.size());
        RC_ASSERT(shown.schedule.total.interest <= before->schedule.total.interest);
        RC_ASSERT(shown.schedule.plainInterest == before->schedule.plainInterest);
      }
      before = shown;
      input.extras.each += cents(*anyIn(0, 20'000));
      input.extras.yearly += cents(*anyIn(0, 200'000));
    }
    reached();
  });
}

// The same payments without any rounding: the interest of all of them.
long double replayedInterest(long double balance, long double rate, long double payment,
                             std::size_t payments) {
  long double interest = 0.0L;
  for (std::size_t number = 1; number <= payments; ++number) {
    const long double now = balance * rate;
    interest += now;
    balance = number == payments ? 0.0L : balance + now - payment;
  }
  return interest;
}

TEST(MortgageSchedule, WithoutRoundingIsThePagesTotal) {
  checkReaching({{"whole", 0.1}, {"part", 0.1}, {"end"}}, [](Reached& reached) {
    const MortgageInput input = anyMortgage();
    const ScheduleKind kind = anyKind();
    const ShownSchedule shown = showSchedule({input, kind, {}});
    if (shown.message != Message::None) return;
    const Mortgage solved = solveMortgage(input);
    const LoanTerms& loan = shown.schedule.loan;
    const double payment = kind == Conventional ? solved.payment : solved.eachPayment;
    const double years = kind == Conventional ? solved.years : solved.yearsToFinalPayment;
    const double payments = years * static_cast<double>(loan.perYear);
    const long double replayed = replayedInterest(static_cast<long double>(solved.principal),
                                                  static_cast<long double>(loan.rate),
                                                  static_cast<long double>(payment), loan.payments);
    const auto difference = static_cast<double>(
        std::abs(replayed - static_cast<long double>(shown.schedule.pageInterest)));
    const double noise = 1e-9 * solved.principal;
    if (std::abs(payments - std::round(payments)) < 1e-6) {
      RC_ASSERT(difference <= noise + 1e-6 * payment);
      reached("whole");
    } else {
      RC_ASSERT(difference <= payment * loan.rate / 8.0 + noise);
      reached("part");
    }
    // In cents each payment and each interest is half a cent off at most, and what is off
    // bears interest until the last payment.
    if (shown.schedule.rows.size() == loan.payments) {
      const auto n = static_cast<double>(loan.payments);
      const double most =
          0.01 * (std::pow(1.0 + loan.rate, n) - 1.0) / loan.rate + 0.005 * n + 0.01;
      const double off = shown.schedule.total.interest.toDouble() - static_cast<double>(replayed);
      RC_ASSERT(std::abs(off) <= most);
    }
    reached();
  });
}

// Whatever is typed, a report has no line that is cut and no number that is none.
TEST(MortgageSchedule, AnyInputEndsInAReportOrMessageThree) {
  checkReaching({{"report", 0.2}, {"message", 0.1}}, [](Reached& reached) {
    const bool usual = *rc::gen::arbitrary<bool>();
    const auto amount = usual ? usualAmount() : anyAmount();
    const auto rate = usual ? usualRate() : anyRate();
    // One draw a line: arguments of a call are drawn in no fixed order.
    const Currency principal = *amount;
    const Currency percent = *rate;
    const Currency years = *anyYears();
    MortgageInput input = mortgage(principal.toDouble(), percent.toDouble(), years.toDouble());
    input.choices = *anyChoices();
    input.payment = (*amount).toDouble();
    const ShownSchedule shown = showSchedule({input, anyKind(), {*amount, *amount}});
    RC_ASSERT(!showsNoNumber(shown.report));
    RC_ASSERT(shown.report.empty() == (shown.message == Message::WrongEntry));
    reached(shown.report.empty() ? "message" : "report");
  });
}

}  // namespace
}  // namespace mirelund

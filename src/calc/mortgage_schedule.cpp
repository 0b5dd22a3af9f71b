// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage_schedule.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "base/attempt.h"
#include "base/parse_number.h"

namespace mirelund {

namespace {

__extension__ using Wide = __int128;

constexpr std::int64_t kPerCent = Currency::kScale / 100;
constexpr double kMonthly = 12.0;
/// Of a payment: years that are shown as whole are whole.
constexpr double kHidden = 0.005;
constexpr Pattern kMoney = "####,,###.00";

// Whole cents, half up; for amounts that are not negative.
Currency inCents(Currency amount) {
  return Currency::fromTenThousandths((amount.tenThousandths() + kPerCent / 2) / kPerCent *
                                      kPerCent);
}

// The amount that the page shows: what is paid is what a person reads there.
Currency shownCents(double amount) {
  return inCents(ToCurrency(ParseNumber(FormatNumber(amount, "###.00"))));
}

// `rate` is m / 2^shift exactly, m of 53 bits.
Currency interestOf(Currency balance, double rate) {
  constexpr int kBits = 53;
  constexpr int kMostShift = 126;  // what is smaller rounds to 0 there, too
  int exponent = 0;
  const double fraction = std::frexp(rate, &exponent);
  const auto m = static_cast<std::int64_t>(std::ldexp(fraction, kBits));
  const int shift = std::min(kBits - exponent, kMostShift);
  const Wide product = static_cast<Wide>(balance.tenThousandths() / kPerCent) * m;
  const Wide cents = (product + (static_cast<Wide>(1) << (shift - 1))) >> shift;
  require(cents <= Currency::max().tenThousandths() / kPerCent, kBeyondCurrency);
  return Currency::fromTenThousandths(static_cast<std::int64_t>(cents) * kPerCent);
}

void add(ScheduleRow& sums, const ScheduleRow& row) {
  sums.payment += row.payment;
  sums.extra += row.extra;
  sums.interest += row.interest;
  sums.principal += row.principal;
  sums.balance = row.balance;
}

std::vector<ScheduleRow> yearsOf(const std::vector<ScheduleRow>& rows, std::size_t perYear) {
  std::vector<ScheduleRow> years;
  years.reserve(rows.size() / perYear + 1);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (i % perYear == 0) years.emplace_back();
    add(years.back(), rows[i]);
  }
  return years;
}

ScheduleRow totalOf(const std::vector<ScheduleRow>& rows) {
  ScheduleRow total;
  for (const ScheduleRow& row : rows) add(total, row);
  return total;
}

// --- the report ---

constexpr std::size_t kHeadingWidth = 45;
constexpr std::size_t kNumberWidth = 8;
constexpr std::size_t kLeastColumn = 12;
constexpr std::size_t kGap = 2;

struct AmountColumn {
  std::string_view heading;
  std::string_view name;  ///< in a sheet
  Currency ScheduleRow::*amount;
};

constexpr auto kAmounts = std::to_array<AmountColumn>({
    {"Payment", "payment", &ScheduleRow::payment},
    {"Extra", "extra", &ScheduleRow::extra},
    {"Interest", "interest", &ScheduleRow::interest},
    {"Principal", "principal", &ScheduleRow::principal},
    {"Balance", "balance", &ScheduleRow::balance},
});

// No amount of a schedule has more digits than one of its totals.
std::size_t columnWidth(const ScheduleRow& total) {
  const Currency widest = std::max({total.payment, total.extra, total.interest, total.principal});
  return std::max(kLeastColumn, FormatNumber(widest, kMoney).size() + kGap);
}

void appendEntry(std::string& report, std::string_view label, std::string_view value) {
  report += label;
  appendRight(report, value, std::max(value.size(), kHeadingWidth - label.size()));
  appendLine(report);
}

void appendEntry(std::string& report, std::string_view label, Currency amount) {
  appendEntry(report, label, FormatNumber(amount, kMoney));
}

class Table {
 public:
  Table(std::string& report, const PaymentSchedule& schedule)
      : report_(report),
        column_(columnWidth(schedule.total)),
        width_(kNumberWidth + kAmounts.size() * column_) {}

  void heading() {
    rule();
    report_ += "No.     ";
    for (const AmountColumn& column : kAmounts) appendRight(report_, column.heading, column_);
    appendLine(report_);
    rule();
  }

  void rule() { appendLine(report_, std::string(width_, '_')); }

  // The label stands at the line's beginning, its number at the end of the column; 0 is
  // not shown.
  void row(std::string_view label, std::size_t number, const ScheduleRow& row) {
    ReportLine line(report_, width_);
    label.copy(line.place(0), label.size());
    line.put(Currency::whole(static_cast<std::int64_t>(number)), "###", kNumberWidth, kNumberWidth);
    std::size_t edge = kNumberWidth;
    for (const AmountColumn& column : kAmounts)
      line.put(row.*column.amount, kMoney, edge += column_, column_);
  }

  void empty() { appendLine(report_); }

 private:
  std::string& report_;
  std::size_t column_;
  std::size_t width_;
};

std::string yearsText(std::size_t payments, std::size_t perYear) {
  return FormatNumber(static_cast<double>(payments) / static_cast<double>(perYear), "##.00");
}

void appendHeading(std::string& report, const PaymentSchedule& schedule) {
  const MortgageInput& mortgage = schedule.input.mortgage;
  const bool conventional = schedule.input.kind == ScheduleKind::Conventional;
  const PaymentFrequency frequency =
      conventional ? PaymentFrequency::Monthly : mortgage.choices.frequency;
  appendLine(report, conventional ? "     Payment schedule, conventional mortgage"
                                  : "   Payment schedule at the chosen frequency");
  appendEntry(report, "Principal amount of mortgage:", schedule.loan.principal);
  appendEntry(report, "Annual interest rate %:", FormatNumber(mortgage.ratePercent, "###.000"));
  appendEntry(report, "Compound interest periods/yr:",
              rowOf(kCompoundingPeriods, mortgage.choices.compounding).text);
  appendEntry(report, "Frequency/type of payment:", rowOf(kPaymentFrequencies, frequency).text);
  appendEntry(report, "Number of payments each year:", std::to_string(schedule.loan.perYear));
  appendEntry(report, "Each payment, principal + int:", schedule.loan.payment);
  appendEntry(report, "Extra with each payment:", schedule.input.extras.each);
  appendEntry(report, "Extra once a year:", schedule.input.extras.yearly);
}

void appendEnd(std::string& report, const PaymentSchedule& schedule) {
  const std::size_t perYear = schedule.loan.perYear;
  const std::size_t payments = schedule.rows.size();
  appendEntry(report, "Number of payments:", std::to_string(payments));
  appendEntry(report, "Number of years to final payment:", yearsText(payments, perYear));
  appendEntry(report, "Last payment:", schedule.rows.back().payment);
  appendEntry(report, "Total interest paid:", schedule.total.interest);
  appendLine(report);
  appendLine(report, "Against the schedule without extras:");
  appendEntry(report, "Years saved:", yearsText(schedule.plainPayments - payments, perYear));
  appendEntry(report, "Interest saved:", schedule.plainInterest - schedule.total.interest);
  appendLine(report);
  appendEntry(report, "Total interest on the page:", FormatNumber(schedule.pageInterest, kMoney));
  appendEntry(report, "Total interest here, no extras:", schedule.plainInterest);
  appendLines(report, "The page rounds nothing, and may count a", NewLine,
              "part of a payment. Here each payment and", NewLine,
              "its interest are whole cents, and the last", NewLine, "payment takes what is left.");
}

std::string amountText(Currency amount) {
  std::string text(MoneySymbol);
  return text += FormatNumber(amount, kMoney);
}

ChartView chartOf(const PaymentSchedule& schedule) {
  ChartView view;
  view.caption = "Payment schedule";
  view.title = "Balance and interest by year";
  view.categoryTitle = "Year";
  view.valueTitle = "Amount (" + std::string(MoneySymbol) + ")";
  ChartSeries balance{"Balance at the end of the year", {}, {}};
  ChartSeries interest{"Interest paid in the year", {}, {}};
  for (const ScheduleRow& year : schedule.years) {
    view.categories.push_back(std::to_string(view.categories.size() + 1));
    balance.values.push_back(year.balance.toDouble());
    balance.texts.push_back(amountText(year.balance));
    interest.values.push_back(year.interest.toDouble());
    interest.texts.push_back(amountText(year.interest));
  }
  view.series = {std::move(balance), std::move(interest)};
  return view;
}

}  // namespace

std::vector<ScheduleRow> amortize(const LoanTerms& loan, const ExtraPayments& extras) {
  constexpr double kMostRate = 0x1p20;
  require(loan.rate >= 0.0 && loan.rate < kMostRate, "no rate of a period");
  require(loan.principal > Currency(), "nothing to repay");
  const Currency each = inCents(extras.each);
  const Currency atYearEnd = each + inCents(extras.yearly);
  std::vector<ScheduleRow> rows;
  rows.reserve(std::min(loan.payments, kMostPayments));
  Currency balance = loan.principal;
  while (!balance.isZero()) {
    const std::size_t number = rows.size() + 1;
    ScheduleRow row;
    row.interest = interestOf(balance, loan.rate);
    const Currency owed = balance + row.interest;
    row.payment = number == loan.payments ? owed : std::min(loan.payment, owed);
    row.extra = std::min(number % loan.perYear == 0 ? atYearEnd : each, owed - row.payment);
    row.principal = row.payment + row.extra - row.interest;
    require(row.principal > Currency(), "the balance does not fall");
    balance = balance - row.principal;
    row.balance = balance;
    rows.push_back(row);
  }
  return rows;
}

LoanTerms loanOf(const MortgageInput& input, ScheduleKind kind) {
  const Mortgage mortgage = solveMortgage(input);
  require(mortgage.complete, "no mortgage");
  const MortgageRates rates = ComputeMortgageRates(input.ratePercent, input.choices,
                                                   input.biweeklyPerYear, input.weeklyPerYear);
  LoanTerms loan;
  double payments = 0.0;
  if (kind == ScheduleKind::Conventional) {
    loan.rate = rates.monthlyRate;
    loan.payment = shownCents(mortgage.payment);
    payments = mortgage.years * kMonthly;
  } else {
    loan.rate = rates.periodRate;
    loan.payment = shownCents(mortgage.eachPayment);
    loan.perYear = static_cast<std::size_t>(rates.paymentsPerYear);
    payments = mortgage.yearsToFinalPayment * rates.paymentsPerYear;
  }
  loan.principal = shownCents(mortgage.principal);
  payments = std::ceil(payments - kHidden);
  require(payments >= 1.0 && payments <= static_cast<double>(kMostPayments), "no schedule");
  loan.payments = static_cast<std::size_t>(payments);
  return loan;
}

PaymentSchedule makeSchedule(const ScheduleInput& input) {
  PaymentSchedule schedule;
  schedule.input = input;
  schedule.loan = loanOf(input.mortgage, input.kind);
  const Mortgage mortgage = solveMortgage(input.mortgage);
  schedule.pageInterest =
      input.kind == ScheduleKind::Conventional ? mortgage.totalInterest : mortgage.interestPaid;
  schedule.rows = amortize(schedule.loan, {});
  schedule.plainPayments = schedule.rows.size();
  schedule.plainInterest = totalOf(schedule.rows).interest;
  schedule.rows = amortize(schedule.loan, input.extras);
  schedule.years = yearsOf(schedule.rows, schedule.loan.perYear);
  schedule.total = totalOf(schedule.rows);
  return schedule;
}

std::string scheduleReport(const PaymentSchedule& schedule) {
  std::string report;
  appendHeading(report, schedule);
  Table table(report, schedule);
  table.heading();
  const std::size_t perYear = schedule.loan.perYear;
  const std::size_t payments = schedule.rows.size();
  for (std::size_t number = 1; number <= payments; ++number) {
    table.row({}, number, schedule.rows[number - 1]);
    if (number % perYear != 0 && number != payments) continue;
    const std::size_t year = (number - 1) / perYear;
    table.row("Year", year + 1, schedule.years[year]);
    if (number != payments) table.empty();
  }
  table.rule();
  table.row("Total", 0, schedule.total);
  table.empty();
  appendEnd(report, schedule);
  return report;
}

ChartView scheduleChart(const PaymentSchedule& schedule) noexcept {
  ChartView failed;
  failed.message = Message::CannotDraw;
  return attempt(std::move(failed), [&] { return chartOf(schedule); });
}

Sheet scheduleSheet(const PaymentSchedule& schedule) {
  constexpr int kCents = 2;
  Sheet sheet;
  sheet.name = "Payment schedule";
  sheet.columns.push_back({"number"});
  for (const AmountColumn& column : kAmounts)
    sheet.columns.push_back({std::string(column.name), kCents});
  sheet.rows.reserve(schedule.rows.size());
  for (const ScheduleRow& row : schedule.rows) {
    std::vector<Cell> cells{static_cast<std::int64_t>(sheet.rows.size() + 1)};
    for (const AmountColumn& column : kAmounts) cells.emplace_back(row.*column.amount);
    sheet.rows.push_back(std::move(cells));
  }
  return sheet;
}

ShownSchedule showSchedule(const ScheduleInput& input) noexcept {
  return attempt(ShownSchedule{Message::WrongEntry, {}, {}}, [&] {
    ShownSchedule shown;
    shown.schedule = makeSchedule(input);
    shown.report = scheduleReport(shown.schedule);
    return shown;
  });
}

std::string printedSchedule(const std::string& header, const std::string& report) {
  std::string printed;
  if (!header.empty()) appendLine(printed, header);
  return printed += report;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Payment schedule of a mortgage: where each payment goes, in whole cents.
//
//     No.          Payment       Extra    Interest   Principal     Balance
//            1      675.21         .00      541.67      133.54   99,866.46
//            2      675.21         .00      540.94      134.27   99,732.19
//     ...
//     Year   1    8,102.52         .00    6,451.38    1,651.14   98,348.86
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/input_boxes.h"
#include "base/currency.h"
#include "calc/mortgage.h"
#include "charts/chart_data.h"
#include "dialogs/messages.h"
#include "export/sheet.h"

namespace mirelund {

/// The window's boxes, which store in a BoxState of the window's own.
inline constexpr auto kScheduleBoxes = boxTable({
    {"SCExtra",
     0,
     "Extra with each payment",
     {},
     BoxStore::InputValues,
     1,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(0)},
    {"SCYearly",
     0,
     "Extra once a year",
     {},
     BoxStore::InputValues,
     2,
     KeyFilter::Decimal,
     0,
     "####,,###.00",
     BoxLook::Money,
     13,
     false,
     Currency::whole(0)},
});

/// SCKind: one payment a month, or what the page works out beside it.
enum class ScheduleKind : std::uint8_t { Conventional, AtFrequency };

/// A loan as it is repaid.
struct LoanTerms {
  Currency principal;        ///< whole cents, more than 0
  double rate = 0.0;         ///< of a period, a fraction
  Currency payment;          ///< of a period, whole cents
  std::size_t payments = 0;  ///< the last of so many takes what is left
  std::size_t perYear = 12;  ///< at least 1
};

/// What is paid beyond that, not negative; rounded to whole cents, half up.
struct ExtraPayments {
  Currency each;    ///< with each payment
  Currency yearly;  ///< with each that ends a year

  friend bool operator==(const ExtraPayments&, const ExtraPayments&) = default;
};

/// One payment, or the sums of several and the balance behind the last.
struct ScheduleRow {
  Currency payment;
  Currency extra;
  Currency interest;
  Currency principal;  ///< payment and extra less interest
  Currency balance;

  friend bool operator==(const ScheduleRow&, const ScheduleRow&) = default;
};

/// The payments of a loan until its balance is 0. The interest of a period is the balance
/// times the rate: the double as it is held, multiplied exactly (128 bits) and rounded
/// once to whole cents, half up. A payment is cut to balance and interest, and ends the
/// loan then; the last of `loan.payments` takes both, be it above or below the others.
/// Extras are cut to what is left behind the payment, and end the loan too.
///
/// Throws ArithmeticError where a balance would not fall, or is none to begin with, for a
/// rate below 0 or beyond 2^20, and where an amount leaves Currency.
std::vector<ScheduleRow> amortize(const LoanTerms& loan, const ExtraPayments& extras);

/// More payments than this are no schedule.
inline constexpr std::size_t kMostPayments = 100'000;

/// The loan of a mortgage that was solved: what the page shows of principal and payment,
/// which is whole cents, the page's rate of a period as it is, and as many payments as
/// its years times those of a year, rounded up, less 0.005, which the page hides too.
/// Throws ArithmeticError for a mortgage that is not complete, whose payments are more
/// than kMostPayments or less than one, and where an amount leaves Currency.
LoanTerms loanOf(const MortgageInput& input, ScheduleKind kind);

struct ScheduleInput {
  MortgageInput mortgage;
  ScheduleKind kind = ScheduleKind::Conventional;
  ExtraPayments extras;
};

struct PaymentSchedule {
  ScheduleInput input;
  LoanTerms loan;
  std::vector<ScheduleRow> rows;   ///< payment 1 upward
  std::vector<ScheduleRow> years;  ///< the sums of each year; the last may be a part of one
  ScheduleRow total;

  // Without extras.
  std::size_t plainPayments = 0;
  Currency plainInterest;
  /// The page's total interest of the kind, unrounded.
  double pageInterest = 0.0;
};

/// Throws as loanOf and amortize do, of the schedule without extras too.
PaymentSchedule makeSchedule(const ScheduleInput& input);

/// The report: heading, a line a payment, a line a year, totals, what the extras save
/// and why the page's total is another. Columns are as wide as the longest amount asks
/// for, so that none is cut.
std::string scheduleReport(const PaymentSchedule& schedule);

/// Balance and interest by year, one bar each; CannotDraw and nothing else where memory
/// lacks.
ChartView scheduleChart(const PaymentSchedule& schedule) noexcept;

/// A row a payment: number, payment, extra, interest, principal, balance.
Sheet scheduleSheet(const PaymentSchedule& schedule);

/// What the window shows of an input; message 3 and nothing else where it cannot be
/// computed, or memory lacks.
struct ShownSchedule {
  Message message = Message::None;
  PaymentSchedule schedule;
  std::string report;
};
ShownSchedule showSchedule(const ScheduleInput& input) noexcept;

/// What is printed: a line that the person typed, where it is not empty, and the report.
std::string printedSchedule(const std::string& header, const std::string& report);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever a mortgage and its extras are: the schedule repays the loan to the cent, and
// extras neither lengthen it nor cost interest.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "calc/mortgage_schedule.h"
#include "export/csv.h"

namespace mirelund {
namespace {

void expect(bool holds) {
  if (!holds) std::abort();
}

// Of a box that holds so many digits, four of them decimals.
double drawn(FuzzedDataProvider& from, std::int64_t most) {
  return static_cast<double>(from.ConsumeIntegralInRange<std::int64_t>(0, most)) / 10'000;
}

ScheduleInput inputOf(FuzzedDataProvider& from) {
  constexpr std::array kKinds{ScheduleKind::Conventional, ScheduleKind::AtFrequency};
  constexpr std::int64_t kMoney = 10'000'000'000'000;
  constexpr std::int64_t kPercent = 1'000'000'000;
  constexpr std::int64_t kYears = 1'000'000;
  const auto& days = kDaysInYear.at(from.ConsumeIntegralInRange<std::size_t>(0, 5));
  ScheduleInput input;
  MortgageInput& mortgage = input.mortgage;
  mortgage.biweeklyPerYear = days.biweeklyPerYear;
  mortgage.weeklyPerYear = days.weeklyPerYear;
  mortgage.choices.compounding = from.PickValueInArray(kCompoundingPeriods).period;
  mortgage.choices.frequency = from.PickValueInArray(kPaymentFrequencies).frequency;
  mortgage.choices.solveFor = from.PickValueInArray(kSolveFor).solveFor;
  input.kind = from.PickValueInArray(kKinds);
  mortgage.principal = drawn(from, kMoney);
  mortgage.ratePercent = drawn(from, kPercent);
  mortgage.years = drawn(from, kYears);
  mortgage.payment = drawn(from, kMoney);
  input.extras.each =
      Currency::fromTenThousandths(from.ConsumeIntegralInRange<std::int64_t>(0, kMoney));
  input.extras.yearly =
      Currency::fromTenThousandths(from.ConsumeIntegralInRange<std::int64_t>(0, kMoney));
  return input;
}

void check(const PaymentSchedule& schedule) {
  Currency left = schedule.loan.principal;
  ScheduleRow sums;
  for (const ScheduleRow& row : schedule.rows) {
    expect(row.principal > Currency() && row.principal == row.payment + row.extra - row.interest);
    left = left - row.principal;
    expect(row.balance == left);
    sums.interest += row.interest;
    sums.principal += row.principal;
  }
  expect(left.isZero() && sums.principal == schedule.loan.principal);
  expect(sums.interest == schedule.total.interest && sums.principal == schedule.total.principal);
  expect(schedule.rows.size() <= schedule.plainPayments);
  expect(schedule.total.interest <= schedule.plainInterest);
}

}  // namespace
}  // namespace mirelund

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelund;
  FuzzedDataProvider from(data, size);
  const ShownSchedule shown = showSchedule(inputOf(from));
  expect(shown.report.empty() == (shown.message != Message::None));
  if (shown.message != Message::None) return 0;
  check(shown.schedule);
  expect(shown.report.find("nan") == std::string::npos &&
         shown.report.find("inf") == std::string::npos);
  const std::string table = csvText(scheduleSheet(shown.schedule));
  expect(std::ranges::count(table, '\n') == std::ssize(shown.schedule.rows) + 1);
  const ChartView view = scheduleChart(shown.schedule);
  expect(view.categories.size() == shown.schedule.years.size());
  return 0;
}

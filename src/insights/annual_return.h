// SPDX-License-Identifier: GPL-3.0-or-later
// The money-weighted rate of return, as spreadsheets call XIRR: the annual rate at which
// what was paid in would have grown into what was paid out and what is left.
//
//     sum over the flows of  amount / (1 + r)^(days / 365)  =  0,   r > -1,
//
// days counted from the first flow. Flows: B is paid in, S and C are paid out, F is paid
// in, each by its book value, and the value at the end is paid out; D and U move no money.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "insights/gains.h"

namespace mirelund {

/// Money of one day: negative paid in by the holder, positive paid out to him.
struct Flow {
  Date date;
  Currency amount;

  friend bool operator==(const Flow&, const Flow&) = default;
};

/// Every rate r at which the discounted sum changes its sign or is 0, ascending, as a
/// fraction. The sum is looked at where ln(1 + r) is a multiple of 0.002 from -9 to 9;
/// between two such places with different signs the rate is found by the TOMS 748
/// algorithm (Alefeld, Potra, Shi 1995; Boost.Math), to the last bits of ln(1 + r). The
/// discounted sum there is at most the larger of 0.01 and 10^-12 of the sum of the
/// discounted magnitudes. Empty for flows of one sign, of one day, or without a rate in
/// that range.
///
/// Not every place is visited. What is paid in and what is paid out, each discounted,
/// rises or falls with the rate throughout, so that their values at two places bound them
/// everywhere between: where one of them stays above the other there is no sign change
/// (SolveRates.FindsWhatLookingAtEveryPlaceFinds).
///
/// `flows` in order of their dates, one a day, none of them 0. Throws std::bad_alloc.
std::vector<double> solveRates(std::span<const Flow> flows);

/// Rates of less than a year of this many days say little; they are marked.
inline constexpr int kDaysOfAYear = 365;

/// A fund's rate, or the total's.
struct FundReturn {
  std::int16_t fundRow = 0;        ///< 1..FundCount; 0 the total
  std::optional<Refused> refused;  ///< then the rest is empty
  bool lacksPrice = false;         ///< a price is missing: no value, no rates
  std::vector<Flow> flows;         ///< one a day, without those that come to 0; the value last
  std::vector<double> rates;       ///< fractions, ascending; none, one or several
  bool underAYear = false;         ///< fewer than kDaysOfAYear from the first flow to the last
  /// Of those under a year, in percent: Gain/Loss$ / what was bought, in double precision,
  /// rounded to four decimals. Empty where nothing was bought or a price is missing.
  std::optional<Currency> plainPercent;
};

struct Returns {
  std::vector<FundReturn> funds;  ///< a row a fund, in table order
  FundReturn total;               ///< of those that are not refused
};

/// `date` is the day of the value, and not before the last record (valuationDate).
/// Throws ArithmeticError, std::bad_alloc. `prices` has one a fund.
Returns calculateReturns(const Database& database, TypedPrices prices, Date date);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// What each fund really earned, valued at the prices typed.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "insights/fund_history.h"

namespace mirelund {

/// The prices typed, one a fund in table order: nothing, or 0, where one is missing.
using TypedPrices = std::span<const std::optional<Currency>>;

/// Nothing typed, or 0: the current-value page refuses both.
bool isMissing(const std::optional<Currency>& price);

/// A fund's line, or the total's. What is empty cannot be told for want of a price.
struct FundGains {
  std::int16_t fundRow = 0;        ///< 1..FundCount; 0 the total
  std::optional<Refused> refused;  ///< then all but fundRow is empty or 0
  std::vector<Disposal> disposals;
  Holding held;
  Currency costPerShare;  ///< cost / shares; 0 without shares
  FundSums sums;
  std::optional<Currency> value;          ///< shares x price; 0 without shares
  std::optional<Currency> unrealised;     ///< value - cost
  std::optional<Currency> gainLoss;       ///< of the formula in fund_history.h
  std::optional<Currency> valueGainLoss;  ///< as the current-value page has it
};

struct Gains {
  std::vector<FundGains> funds;  ///< a row a fund, in table order
  FundGains total;               ///< of those that are not refused; no disposals
};

/// Throws ArithmeticError, std::bad_alloc. `prices` has one a fund.
Gains calculateGains(const Database& database, TypedPrices prices, CostMethod method);

/// True where a fund holds shares and its price is missing.
bool lacksPrice(const FundGains& fund);

}  // namespace mirelund

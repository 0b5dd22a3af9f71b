// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/gains.h"

#include <cstddef>
#include <utility>

namespace mirelund {

namespace {

Currency costOfAShare(const Holding& held) {
  if (held.shares.isZero()) return {};
  return scaled(held.cost, Currency::whole(1), held.shares);
}

// Nothing without a price for shares that are held.
std::optional<Currency> valueOf(Currency shares, const std::optional<Currency>& price) {
  if (shares.isZero()) return Currency();
  if (isMissing(price)) return std::nullopt;
  return shares * *price;
}

void value(FundGains& fund, Currency worth, Currency bookValue) {
  const FundSums& sums = fund.sums;
  fund.value = worth;
  fund.unrealised = worth - fund.held.cost;
  fund.gainLoss =
      *fund.unrealised + sums.realised + sums.income() - sums.cashFees - sums.unitFees + sums.other;
  fund.valueGainLoss = worth - bookValue;
}

}  // namespace

bool isMissing(const std::optional<Currency>& price) {
  return price.value_or(Currency()).isZero();
}

bool lacksPrice(const FundGains& fund) {
  return !fund.refused && !fund.value;
}

Gains calculateGains(const Database& database, TypedPrices prices, CostMethod method) {
  const OrderedRecords records(database);
  const auto funds = database.funds();
  Gains gains;
  gains.funds.reserve(funds.size());
  FundGains& total = gains.total;
  Currency bookValue;
  std::optional<Currency> worth = Currency();
  for (std::size_t i = 0; i < funds.size(); ++i) {
    FundHistory history = fundHistory(records.of(fundNumber(funds[i])), method, ByYear::No);
    FundGains& fund = gains.funds.emplace_back();
    fund.fundRow = static_cast<std::int16_t>(i + 1);
    fund.refused = history.refused;
    if (fund.refused) continue;
    fund.disposals = std::move(history.disposals);
    fund.held = history.held;
    fund.costPerShare = costOfAShare(fund.held);
    fund.sums = history.sums;
    const auto mine = valueOf(fund.held.shares, prices[i]);
    if (mine) value(fund, *mine, history.bookValue);

    total.held.shares += fund.held.shares;
    total.held.cost += fund.held.cost;
    total.sums += fund.sums;
    bookValue += history.bookValue;
    worth = worth && mine ? std::optional(*worth + *mine) : std::nullopt;
  }
  total.costPerShare = costOfAShare(total.held);
  if (worth) value(total, *worth, bookValue);
  return gains;
}

}  // namespace mirelund

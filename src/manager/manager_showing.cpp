// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <vector>

#include "base/text.h"
#include "manager/manager_change.h"
#include "manager/reports/current_value.h"

namespace mirelund {

// A total out of range is told, and does not keep the fund from being chosen or a
// record from being deleted: that is the way out.
Outcome Manager::Change::showRecordList() {
  if (state_.ActiveFund == 0) return Outcome::report({});
  try {
    return Outcome::report(recordList(database_, state_.ActiveFund, manager_.format_, totals_));
  } catch (const ArithmeticError&) {
    return Outcome::emptied(Message::WrongEntry);
  }
}

ReportShown Manager::Change::showFund(std::int16_t row) {
  return {Message::None, transactionReport(database_, row, manager_.format_, totals_)};
}

ReportShown Manager::Change::showAllFunds() {
  return {Message::None, allFundsReport(database_, manager_.format_, totals_)};
}

BoxLeft Manager::Change::leavePriceBox(std::int16_t row, std::string_view text) {
  Price& price = prices_.at(static_cast<std::size_t>(row));
  Currency value;
  BoxLeft left = leaveAmountBox(boxes_, value, price.outOfRange, text);
  if (left.changed) price.value = value;
  return left;
}

Outcome Manager::Change::calculateCurrentValue() {
  clearValuation();
  if (firstEmptyFund(database_) != 0) return Outcome::emptied(Message::EmptyFund);
  std::vector<Currency> prices;
  for (std::size_t row = 1; row <= database_.funds().size(); ++row) {
    if (prices_[row].outOfRange) return Outcome::emptied(Message::WrongEntry);
    prices.push_back(prices_[row].value.value_or(Currency()));
    if (prices.back().isZero()) return Outcome::emptied(Message::MissingPrice);
  }
  try {
    state_.CVResults = currentValueTable(database_, prices, totals_);
  } catch (const ArithmeticError&) {
    return Outcome::emptied(Message::WrongEntry);
  }
  std::ranges::copy(prices, state_.CVPrices.begin());
  chartCount_ = database_.FundCount;
  return Outcome::report(state_.CVResults);
}

Message Manager::Change::preparePrint(std::string_view header, std::string_view report) {
  printed_.clear();
  if (!header.empty()) appendLine(printed_, header);
  printed_ += report;
  return Message::None;
}

}  // namespace mirelund

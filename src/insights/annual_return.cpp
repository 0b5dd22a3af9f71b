// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/annual_return.h"

#include <algorithm>
#include <boost/math/tools/toms748_solve.hpp>
#include <cmath>
#include <cstddef>
#include <map>
#include <utility>

namespace mirelund {

namespace {

// Places in ln(1 + r), counted in steps.
constexpr double kStep = 0.002;
constexpr int kMostSteps = 4500;

double placeOf(int step) {
  return step * kStep;
}

// What is paid out and what is paid in, discounted; neither is negative.
struct Discounted {
  double out = 0.0;
  double in = 0.0;

  double sum() const { return out - in; }
};

class RateSearch {
 public:
  explicit RateSearch(std::span<const Flow> flows) {
    flows_.reserve(flows.size());
    const std::int32_t first = flows.front().date.dayNumber();
    for (const Flow& flow : flows)
      flows_.push_back({(flow.date.dayNumber() - first) / double{kDaysOfAYear},
                        static_cast<double>(flow.amount.tenThousandths())});
  }

  std::vector<double> run() {
    const Discounted low = at(placeOf(-kMostSteps));
    const Discounted none = at(0.0);
    const Discounted high = at(placeOf(kMostSteps));
    visit(-kMostSteps, low);
    search(-kMostSteps, low, 0, none);
    visit(0, none);
    search(0, none, kMostSteps, high);
    visit(kMostSteps, high);
    return std::move(rates_);
  }

 private:
  struct Amount {
    double years;
    double units;  // ten-thousandths
  };

  // Discounted to the first flow; where ln(1 + r) is negative to the last, so that no
  // factor is above 1 and none overflows. The sign is the same.
  Discounted at(double place) const {
    const double since = place < 0.0 ? flows_.back().years : 0.0;
    Discounted sums;
    for (const Amount& flow : flows_) {
      const double value = flow.units * std::exp(-place * (flow.years - since));
      (value > 0.0 ? sums.out : sums.in) += std::abs(value);
    }
    return sums;
  }

  void visit(int step, const Discounted& there) {
    if (there.sum() == 0.0) rates_.push_back(std::expm1(placeOf(step)));
  }

  // Between two places on one side of 0 both sums rise, or both fall.
  static bool keepsSign(const Discounted& a, const Discounted& b) {
    constexpr double kMoreThanRounding = 1.0 + 1e-9;
    return std::min(a.out, b.out) > std::max(a.in, b.in) * kMoreThanRounding ||
           std::min(a.in, b.in) > std::max(a.out, b.out) * kMoreThanRounding;
  }

  // The rates strictly between two places, in their order.
  void search(int low, const Discounted& atLow, int high, const Discounted& atHigh) {
    if (keepsSign(atLow, atHigh)) return;
    if (high - low == 1) return solve(low, atLow.sum(), high, atHigh.sum());
    const int middle = low + (high - low) / 2;
    const Discounted there = at(placeOf(middle));
    search(low, atLow, middle, there);
    visit(middle, there);
    search(middle, there, high, atHigh);
  }

  void solve(int low, double atLow, int high, double atHigh) {
    if (!(atLow < 0.0 && atHigh > 0.0) && !(atLow > 0.0 && atHigh < 0.0)) return;
    std::uintmax_t most = 200;
    const auto [from, to] = boost::math::tools::toms748_solve(
        [this](double place) { return at(place).sum(); }, placeOf(low), placeOf(high), atLow,
        atHigh, boost::math::tools::eps_tolerance<double>(), most);
    rates_.push_back(std::expm1(from + (to - from) / 2.0));
  }

  std::vector<Amount> flows_;
  std::vector<double> rates_;
};

bool movesMoney(char type) {
  return type != 'D' && type != 'U';
}

using Amounts = std::map<Date, Currency>;

std::vector<Flow> flowsOf(const Amounts& amounts) {
  std::vector<Flow> flows;
  flows.reserve(amounts.size());
  for (const auto& [date, amount] : amounts)
    if (!amount.isZero()) flows.push_back({date, amount});
  return flows;
}

void fill(FundReturn& line, const Amounts& amounts, const FundGains& gains) {
  line.flows = flowsOf(amounts);
  line.lacksPrice = !gains.value;
  if (!line.flows.empty())
    line.underAYear =
        line.flows.back().date.dayNumber() - line.flows.front().date.dayNumber() < kDaysOfAYear;
  if (line.lacksPrice) return;
  line.rates = solveRates(line.flows);
  const Currency bought = gains.sums.bought;
  if (line.underAYear && !bought.isZero())
    line.plainPercent = ToCurrency(gains.gainLoss->toDouble() / bought.toDouble() * 100.0);
}

}  // namespace

std::vector<double> solveRates(std::span<const Flow> flows) {
  const auto paysIn = [](const Flow& flow) { return flow.amount < Currency(); };
  if (std::ranges::all_of(flows, paysIn) || std::ranges::none_of(flows, paysIn)) return {};
  return RateSearch(flows).run();
}

Returns calculateReturns(const Database& database, TypedPrices prices, Date date) {
  const OrderedRecords records(database);
  // What a fund earned and holds is the same by both methods.
  const Gains gains = calculateGains(database, prices, CostMethod::AverageCost);
  Returns returns;
  returns.funds.reserve(gains.funds.size());
  Amounts all;
  for (const FundGains& fund : gains.funds) {
    FundReturn& line = returns.funds.emplace_back();
    line.fundRow = fund.fundRow;
    line.refused = fund.refused;
    if (line.refused) continue;
    Amounts amounts;
    const Fund& named = database.FundTable[static_cast<std::size_t>(fund.fundRow)];
    for (const Record* record : records.of(fundNumber(named)))
      if (movesMoney(record->type)) amounts[record->date] += -record->bookValue;
    if (fund.value) amounts[date] += *fund.value;
    fill(line, amounts, fund);
    for (const auto& [day, amount] : amounts) all[day] += amount;
  }
  fill(returns.total, all, gains.total);
  return returns;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// What the records say: gains beside the bare sums over the same records, and rates.
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "beside.h"
#include "fund_sample.h"
#include "insights/annual_return.h"
#include "insights/gains.h"
#include "registered.h"

namespace mirelund::bench {

namespace {

// The sample, but no fund gives up more than a third of what it holds.
Database holdingSample(std::int16_t count) {
  Database database = fundSample(count);
  std::array<std::int64_t, kMostFunds + 1> held{};
  for (Record& record : database.records()) {
    std::int64_t& mine =
        held[static_cast<std::size_t>(record.fund.tenThousandths() / Currency::kScale)];
    if (-record.shares.tenThousandths() > mine / 3) {
      record.shares = Currency::fromTenThousandths(-(mine / 3));
      if (record.type == 'S') record.bookValue = record.price * record.shares + record.fees;
    }
    mine += record.shares.tenThousandths();
  }
  return database;
}

// By fund: what was bought, sold and so on, and the shares and their cost, of which what
// goes takes its part.
void addUp(const Database& database) {
  struct Sums {
    Currency shares, cost, realised, bought, sold, dividends, reinvested, fees, unitFees, bookValue;
  };
  std::array<Sums, kMostFunds + 1> funds{};
  for (const Record& record : database.records()) {
    Sums& sums = funds[static_cast<std::size_t>(record.fund.tenThousandths() / Currency::kScale)];
    if (record.shares < Currency() && !sums.shares.isZero()) {
      const Currency gone = scaled(sums.cost, -record.shares, sums.shares);
      sums.cost = sums.cost - gone;
      sums.realised += -gone;
    }
    sums.shares += record.shares;
    sums.bookValue += record.bookValue;
    switch (record.type) {
      case 'B':
        sums.bought += record.bookValue;
        sums.cost += record.bookValue;
        break;
      case 'S':
        sums.sold += -record.bookValue;
        break;
      case 'C':
        sums.dividends += -record.bookValue;
        break;
      case 'D': {
        const Currency value = record.price * record.shares;
        sums.reinvested += value;
        sums.cost += value;
        break;
      }
      case 'F':
        sums.fees += record.bookValue;
        break;
      default:
        sums.unitFees += record.price * record.shares;
    }
  }
  keep(funds);
}

// A flow a week, most of them payments in, and what they came to.
std::vector<Flow> weeklyFlows(int count) {
  std::vector<Flow> flows;
  std::int64_t paid = 0;
  for (int i = 0; i < count - 1; ++i) {
    const std::int64_t amount = (i % 7 == 6 ? 3 : -10) * (1'000'000 + i * 37);
    paid -= amount;
    flows.push_back({*Date::of(2000 + i / 48, 1 + i / 4 % 12, 1 + i % 4 * 7),
                     Currency::fromTenThousandths(amount)});
  }
  flows.push_back(
      {*Date::of(2000 + count / 48 + 1, 1, 1), Currency::fromTenThousandths(paid + paid / 2)});
  return flows;
}

// As many discountings as a rate of its first guess and ten steps from there takes.
void discount(const std::vector<Flow>& flows) {
  for (int turn = 0; turn < 11; ++turn) {
    const double place = hidden(0.01 * turn);
    double sum = 0.0;
    for (const Flow& flow : flows)
      sum += flow.amount.toDouble() *
             std::exp(-place * (flow.date.dayNumber() - flows.front().date.dayNumber()) / 365.0);
    keep(sum);
  }
}

}  // namespace

void registerInsights() {
  const Database database = holdingSample(kMostRecords);
  const std::vector<std::optional<Currency>> prices(kMostFunds, Currency::whole(20));
  for (const CostMethodRow& row : kCostMethods) {
    beside(
        "Gains of 600 records, " + std::string(row.name), 3,
        [database, prices, method = row.method] { keep(calculateGains(database, prices, method)); },
        [database] { addUp(database); });
  }
  const std::vector<Flow> flows = weeklyFlows(600);
  beside(
      "Rate of 600 flows", 2.5, [flows] { keep(solveRates(flows)); }, [flows] { discount(flows); });
}

}  // namespace mirelund::bench

// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/years.h"

#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

namespace mirelund {

namespace {

void add(Holding& sum, const Holding& more) {
  sum.shares += more.shares;
  sum.cost += more.cost;
}

Holding difference(const Holding& a, const Holding& b) {
  return {a.shares - b.shares, a.cost - b.cost};
}

}  // namespace

Years calculateYears(const Database& database, CostMethod method) {
  const OrderedRecords records(database);
  Years years;
  years.funds.reserve(database.funds().size());
  // Of all funds: the sums of a year, and by how much the holding grew in it.
  struct Grown {
    FundSums sums;
    Holding by;
  };
  std::map<int, Grown> all;
  std::int16_t row = 0;
  for (const Fund& fund : database.funds()) {
    FundHistory history = fundHistory(records.of(fundNumber(fund)), method);
    FundYears& mine = years.funds.emplace_back();
    mine.fundRow = ++row;
    mine.refused = history.refused;
    if (mine.refused) continue;
    mine.years = std::move(history.years);
    mine.sums = history.sums;
    for (const YearSums& year : mine.years) {
      Grown& grown = all[year.year];
      grown.sums += year.sums;
      add(grown.by, difference(year.closing, year.opening));
    }
  }
  Holding held;
  years.total.years.reserve(all.size());
  for (const auto& [year, grown] : all) {
    const Holding opening = held;
    add(held, grown.by);
    years.total.years.push_back({year, opening, grown.sums, held});
    years.total.sums += grown.sums;
  }
  return years;
}

}  // namespace mirelund

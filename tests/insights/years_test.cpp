// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/years.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "insights/insights_testing.h"

namespace mirelund {
namespace {

using enum CostMethod;

FundSums sums(double bought, double sold, double cash, double realised) {
  FundSums made;
  made.bought = money(bought);
  made.sold = money(sold);
  made.cashDividends = money(cash);
  made.realised = money(realised);
  return made;
}

Holding held(double shares, double cost) {
  return {money(shares), money(cost)};
}

// Fund 1 in 2001 and 2004, fund 2 in 2002 and 2004; nobody in 2003. Fund 3 is refused for its
// second record, and its first counts nowhere.
TEST(Years, OpenWithTheClosingBeforeAndLeaveYearsOut) {
  const Database database = databaseOf(3, R"(1,10,100,0,0,1000,"B",#2001-05-15#
3,20,10,0,0,200,"B",#2001-05-15#
2,20,10,0,0,200,"B",#2002-05-15#
3,20,-11,0,0,-220,"S",#2002-05-15#
1,12,-50,0,0,-600,"S",#2004-01-01#
2,0,0,0,5,-5,"C",#2004-12-31#
)");
  const Years years = calculateYears(database, AverageCost);
  ASSERT_EQ(years.funds.size(), 3U);
  EXPECT_EQ(years.funds[0].years,
            (std::vector<YearSums>{{2001, {}, sums(1000, 0, 0, 0), held(100, 1000)},
                                   {2004, held(100, 1000), sums(0, 600, 0, 100), held(50, 500)}}));
  EXPECT_EQ(years.funds[0].sums, sums(1000, 600, 0, 100));
  EXPECT_EQ(years.funds[1].years,
            (std::vector<YearSums>{{2002, {}, sums(200, 0, 0, 0), held(10, 200)},
                                   {2004, held(10, 200), sums(0, 0, 5, 0), held(10, 200)}}));
  EXPECT_TRUE(years.funds[2].refused);
  EXPECT_TRUE(years.funds[2].years.empty());
  EXPECT_EQ(years.total.years,
            (std::vector<YearSums>{{2001, {}, sums(1000, 0, 0, 0), held(100, 1000)},
                                   {2002, held(100, 1000), sums(200, 0, 0, 0), held(110, 1200)},
                                   {2004, held(110, 1200), sums(0, 600, 5, 100), held(60, 700)}}));
  EXPECT_EQ(years.total.sums, sums(1200, 600, 5, 100));
}

void checkChain(const std::vector<YearSums>& years, const FundSums& all, const Holding& held) {
  Holding before;
  int year = 0;
  FundSums added;
  for (const YearSums& each : years) {
    RC_ASSERT(each.year > year);
    RC_ASSERT(each.opening == before);
    const FundSums& sums = each.sums;
    added += sums;
    year = each.year;
    before = each.closing;
  }
  RC_ASSERT(added == all);
  RC_ASSERT(before == held);
}

TEST(Years, ColumnsAddUpToTheGainsPage) {
  checkReaching([](Reached& reached) {
    const Database database = drawnHistories(*anyIn(1, kMostFunds + 1), *anyIn(1, 120));
    const CostMethod method = *rc::gen::element(AverageCost, FirstInFirstOut);
    const Years years = calculateYears(database, method);
    const Gains gains = calculateGains(database, pricesOf(database, 20), method);
    for (std::size_t i = 0; i < years.funds.size(); ++i) {
      RC_ASSERT(years.funds[i].refused == gains.funds[i].refused);
      checkChain(years.funds[i].years, gains.funds[i].sums, gains.funds[i].held);
      RC_ASSERT(years.funds[i].sums == gains.funds[i].sums);
    }
    checkChain(years.total.years, gains.total.sums, gains.total.held);
    RC_ASSERT(years.total.sums == gains.total.sums);
    reached();
  });
}

}  // namespace
}  // namespace mirelund

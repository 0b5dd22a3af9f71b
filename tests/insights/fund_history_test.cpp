// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/fund_history.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "insights/insights_testing.h"

namespace mirelund {
namespace {

using enum CostMethod;

FundHistory historyOf(const std::string& records, CostMethod method = AverageCost) {
  const Database database = databaseOf(1, records);
  const OrderedRecords ordered(database);
  return fundHistory(ordered.of(1), method);
}

Disposal disposal(Date date, char type, double shares, double proceeds, double cost) {
  return {date, type, money(shares), money(proceeds), money(cost), money(proceeds) - money(cost)};
}

// --- published examples ---------------------------------------------------------------

// HM Revenue & Customs, helpsheet HS284 "Shares and Capital Gains Tax", Example 3 (2024),
// a gain for shares in a Section 104 holding: 1,000 shares at 400p and 150 of costs, 500
// at 410p and 80; 700 sold at 480p with costs of 100, 400 at 520p with 105. The helpsheet
// rounds to whole pounds: cost 2,931 of a pool of 6,280, gain 329; left 3,349, cost 1,675,
// gain 300.
TEST(FundHistory, AverageCostAsTheHelpsheetOfAnotherTaxOfficeHasIt) {
  const FundHistory history = historyOf(R"(1,4,1000,150,0,4150,"B",#2015-04-01#
1,4.1,500,80,0,2130,"B",#2018-09-01#
1,4.8,-700,100,0,-3260,"S",#2023-05-01#
1,5.2,-400,105,0,-1975,"S",#2024-02-01#
)");
  ASSERT_EQ(history.disposals.size(), 2U);
  // 6,280 x 700 / 1,500 = 2,930.6667; left 3,349.3333, x 400 / 800 = 1,674.66665, a tie
  // between ...6666 and ...6667: to the even.
  EXPECT_EQ(history.disposals[0], disposal(date(2023, 5, 1), 'S', 700, 3260, 2930.6667));
  EXPECT_EQ(history.disposals[1], disposal(date(2024, 2, 1), 'S', 400, 1975, 1674.6666));
  EXPECT_EQ(history.held, (Holding{money(400), money(1674.6667)}));
  const auto pounds = [](Currency value) { return std::lround(value.toDouble()); };
  EXPECT_EQ(pounds(history.disposals[0].cost), 2931);
  EXPECT_EQ(pounds(history.disposals[0].gain), 329);
  EXPECT_EQ(pounds(history.disposals[1].cost), 1675);
  EXPECT_EQ(pounds(history.disposals[1].gain), 300);
}

// Internal Revenue Service, Publication 564 "Mutual Fund Distributions" (2003), single-
// category method, Examples 1 and 3: 300 shares for 4,800 in three purchases (1,000, 1,200
// and 2,600); of 150 sold the basis is 2,400, 16 a share; 150 more at 14 make 4,500, and of
// 50 sold the basis is 750, 15 a share. The prices of the sales are not the publication's.
TEST(FundHistory, AverageBasisAsATaxOfficesPublicationHasIt) {
  const FundHistory history = historyOf(R"(1,10,100,0,0,1000,"B",#2001-01-15#
1,12,100,0,0,1200,"B",#2002-01-15#
1,26,100,0,0,2600,"B",#2003-01-15#
1,20,-150,0,0,-3000,"S",#2003-05-11#
1,14,150,0,0,2100,"B",#2003-09-19#
1,20,-50,0,0,-1000,"S",#2003-12-16#
)");
  ASSERT_EQ(history.disposals.size(), 2U);
  EXPECT_EQ(history.disposals[0], disposal(date(2003, 5, 11), 'S', 150, 3000, 2400));
  EXPECT_EQ(history.disposals[1], disposal(date(2003, 12, 16), 'S', 50, 1000, 750));
  EXPECT_EQ(history.held, (Holding{money(250), money(3750)}));
}

// HM Revenue & Customs, Capital Gains Manual CG51624: 10,000 shares for 100,000, half of
// them sold for 60,000 less 4,000 of costs: 50,000 of the pool, a gain of 6,000 before
// indexation, 50,000 left.
TEST(FundHistory, AverageCostAsTheManualOfThatOfficeHasIt) {
  const FundHistory history = historyOf(R"(1,10,10000,0,0,100000,"B",#2005-01-31#
1,12,-5000,4000,0,-56000,"S",#2013-01-31#
)");
  ASSERT_EQ(history.disposals.size(), 1U);
  EXPECT_EQ(history.disposals[0], disposal(date(2013, 1, 31), 'S', 5000, 56000, 50000));
  EXPECT_EQ(history.disposals[0].gain, money(6000));
  EXPECT_EQ(history.held, (Holding{money(5000), money(50000)}));
}

// Publication 564 (2009), Table 3: 160 shares for 4,000, 240 for 4,800, a dividend of 300
// reinvested at 30; of 210 sold for 6,720 the basis first in, first out is 5,000: all 160,
// and 50 of the 240.
TEST(FundHistory, FirstInFirstOutAsATaxOfficesPublicationHasIt) {
  const std::string records = R"(1,25,160,0,0,4000,"B",#2008-02-06#
1,20,240,0,0,4800,"B",#2008-08-07#
1,30,10,0,0,0,"D",#2008-12-18#
1,32,-210,0,0,-6720,"S",#2009-10-01#
)";
  const FundHistory history = historyOf(records, FirstInFirstOut);
  ASSERT_EQ(history.disposals.size(), 1U);
  EXPECT_EQ(history.disposals[0], disposal(date(2009, 10, 1), 'S', 210, 6720, 5000));
  EXPECT_EQ(history.held, (Holding{money(200), money(4100)}));
  // The same by average: 9,100 x 210 / 410 = 4,660.97560...
  EXPECT_EQ(historyOf(records).disposals.at(0).cost, money(4660.9756));
}

// --- each type ------------------------------------------------------------------------

struct Kind {
  const char* rule;
  const char* records;
  Holding held;
  FundSums sums;  // bought, sold, cash dividends, reinvested, cash fees, unit fees, other, realised
  std::size_t disposals;
};

TEST(FundHistory, EachTypeDoesItsOwn) {
  const auto sums = [](double bought, double sold, double cash, double reinvested, double cashFees,
                       double unitFees, double other, double realised) {
    return FundSums{money(bought),   money(sold),     money(cash),  money(reinvested),
                    money(cashFees), money(unitFees), money(other), money(realised)};
  };
  const auto held = [](double shares, double cost) { return Holding{money(shares), money(cost)}; };
  const std::string bought = "1,10,100,5,0,1005,\"B\",#2001-05-15#\n";
  const Kind cases[] = {
      {"a purchase costs what it takes with its commission", "", held(100, 1005),
       sums(1005, 0, 0, 0, 0, 0, 0, 0), 0},
      // 1005 x 40 / 100 = 402; 40 x 12 - 6 = 474
      {"a sale takes its part of the cost", "1,12,-40,6,0,-474,\"S\",#2002-05-15#\n", held(60, 603),
       sums(1005, 474, 0, 0, 0, 0, 0, 72), 1},
      {"a full sale takes all of it", "1,12,-100,6,0,-1194,\"S\",#2002-05-15#\n", held(0, 0),
       sums(1005, 1194, 0, 0, 0, 0, 0, 189), 1},
      {"a sale of no shares takes nothing", "1,12,0,6,0,6,\"S\",#2002-05-15#\n", held(100, 1005),
       sums(1005, -6, 0, 0, 0, 0, 0, -6), 1},
      {"a cash dividend is income", "1,0,0,0,12.75,-12.75,\"C\",#2002-05-15#\n", held(100, 1005),
       sums(1005, 0, 12.75, 0, 0, 0, 0, 0), 0},
      {"a dividend in shares is income and cost", "1,11,2,0,0,0,\"D\",#2002-05-15#\n",
       held(102, 1027), sums(1005, 0, 0, 22, 0, 0, 0, 0), 0},
      {"a split is neither", "1,.0001,100,0,0,0,\"D\",#2002-05-15#\n", held(200, 1005),
       sums(1005, 0, 0, 0, 0, 0, 0, 0), 0},
      {"0.0002 is no split", "1,.0002,100,0,0,0,\"D\",#2002-05-15#\n", held(200, 1005.02),
       sums(1005, 0, 0, .02, 0, 0, 0, 0), 0},
      {"a cash fee is a fee", "1,0,0,7.5,0,7.5,\"F\",#2002-05-15#\n", held(100, 1005),
       sums(1005, 0, 0, 0, 7.5, 0, 0, 0), 0},
      // 1005 x 2 / 100 = 20.10; 2 x 11 = 22
      {"shares given up are a fee, and less their cost a gain",
       "1,11,-2,0,0,0,\"U\",#2002-05-15#\n", held(98, 984.9), sums(1005, 0, 0, 0, 0, 22, 0, 1.9),
       1},
      {"a reverse split is neither", "1,.0001,-50,0,0,0,\"U\",#2002-05-15#\n", held(50, 1005),
       sums(1005, 0, 0, 0, 0, 0, 0, 0), 0},
      {"a reverse split of every share is a disposal for nothing",
       "1,.0001,-100,0,0,0,\"U\",#2002-05-15#\n", held(0, 0), sums(1005, 0, 0, 0, 0, 0, 0, -1005),
       1},
      {"a book value of a dividend in shares is other, its sign turned",
       "1,11,2,0,0,3,\"D\",#2002-05-15#\n", held(102, 1027), sums(1005, 0, 0, 22, 0, 0, -3, 0), 0},
      {"of a unit fee too", "1,11,-2,0,0,-4,\"U\",#2002-05-15#\n", held(98, 984.9),
       sums(1005, 0, 0, 0, 0, 22, 4, 1.9), 1},
      {"of a split too", "1,.0001,100,0,0,3,\"D\",#2002-05-15#\n", held(200, 1005),
       sums(1005, 0, 0, 0, 0, 0, -3, 0), 0},
  };
  for (const CostMethod method : {AverageCost, FirstInFirstOut})
    for (const Kind& c : cases) {
      SCOPED_TRACE(c.rule);
      const FundHistory history = historyOf(bought + c.records, method);
      EXPECT_FALSE(history.refused);
      EXPECT_EQ(history.held, c.held);
      EXPECT_EQ(history.sums, c.sums);
      EXPECT_EQ(history.disposals.size(), c.disposals);
    }
}

TEST(FundHistory, SharesFromASplitOfNothingCostNothing) {
  for (const CostMethod method : {AverageCost, FirstInFirstOut}) {
    const FundHistory history = historyOf(R"(1,.0001,100,0,0,0,"D",#2001-05-15#
1,10,100,0,0,1000,"B",#2001-05-16#
1,10,-100,0,0,-1000,"S",#2001-05-17#
)",
                                          method);
    // By average half of 1,000; the first hundred cost nothing.
    EXPECT_EQ(history.disposals.at(0).cost, method == AverageCost ? money(500) : money(0));
  }
}

TEST(FundHistory, WhatRoundingLeavesStaysWithWhatIsHeld) {
  // 10 x 1 / 3 = 3.3333, then 6.6667 / 2 = 3.33335, a tie: 3.3334 is even; 3.3333 left.
  const FundHistory history = historyOf(R"(1,3.3333,3,.0001,0,10,"B",#2001-05-15#
1,4,-1,0,0,-4,"S",#2001-05-16#
1,4,-1,0,0,-4,"S",#2001-05-17#
1,4,-1,0,0,-4,"S",#2001-05-18#
)");
  ASSERT_EQ(history.disposals.size(), 3U);
  EXPECT_EQ(history.disposals[0].cost, money(3.3333));
  EXPECT_EQ(history.disposals[1].cost, money(3.3334));
  EXPECT_EQ(history.disposals[2].cost, money(3.3333));
  EXPECT_EQ(history.held, Holding());
}

// Lots of 100 for 1,000 and 100 for 2,000; 50 go, 10 x 50; 120 more go: the rest of the
// first, 500, and 70 / 100 of 2,000.
TEST(FundHistory, LotsGoInOrderAndInParts) {
  const FundHistory history = historyOf(R"(1,10,100,0,0,1000,"B",#2001-05-15#
1,20,100,0,0,2000,"B",#2001-05-16#
1,30,-50,0,0,-1500,"S",#2001-05-17#
1,30,-120,0,0,-3600,"S",#2001-05-18#
1,30,-30,0,0,-900,"S",#2001-05-19#
)",
                                        FirstInFirstOut);
  ASSERT_EQ(history.disposals.size(), 3U);
  EXPECT_EQ(history.disposals[0].cost, money(500));
  EXPECT_EQ(history.disposals[1].cost, money(1900));
  EXPECT_EQ(history.disposals[2].cost, money(600));
}

// Two for one, then one for four: lots of 100 and 50 are 200 and 100, then 50 and 25.
TEST(FundHistory, SplitsScaleTheLots) {
  const FundHistory history = historyOf(R"(1,10,100,0,0,1000,"B",#2001-05-15#
1,40,50,0,0,2000,"B",#2001-05-16#
1,.0001,150,0,0,0,"D",#2001-05-17#
1,.0001,-225,0,0,0,"U",#2001-05-18#
1,60,-50,0,0,-3000,"S",#2001-05-19#
1,60,-5,0,0,-300,"S",#2001-05-20#
)",
                                        FirstInFirstOut);
  ASSERT_EQ(history.disposals.size(), 2U);
  EXPECT_EQ(history.disposals[0].cost, money(1000));
  EXPECT_EQ(history.disposals[1].cost, money(400));  // 2,000 x 5 / 25
  EXPECT_EQ(history.held, (Holding{money(20), money(1600)}));
}

// Of 0.0004 shares 0.0002 are left: the lots' sums 0.0001, 0.0002, 0.0004 become 0.00005 (a
// tie, to even: 0), 0.0001, 0.0002, that is lots of 0, 0.0001 and 0.0001. The first has a
// cost and no shares; it goes with the next sale.
TEST(FundHistory, LotsThatASplitRoundsAwayKeepTheirCost) {
  const FundHistory history = historyOf(R"(1,9,.0001,9,0,9,"B",#2001-05-15#
1,5,.0001,5,0,5,"B",#2001-05-16#
1,7,.0002,7,0,7,"B",#2001-05-17#
1,.0001,-.0002,0,0,0,"U",#2001-05-18#
1,60,-.0001,0,0,-60,"S",#2001-05-19#
)",
                                        FirstInFirstOut);
  ASSERT_EQ(history.disposals.size(), 1U);
  EXPECT_EQ(history.disposals[0].cost, money(14));
  EXPECT_EQ(history.held, (Holding{money(.0001), money(7)}));
}

// --- refusals -------------------------------------------------------------------------

struct Refusal {
  const char* record;
  const char* reason;
};

TEST(FundHistory, WhatATypeCannotMakeIsRefusedWithItsDate) {
  const Refusal cases[] = {
      {R"(1,10,-1,0,0,-10,"B",#2002-05-15#)", "a purchase that takes shares away"},
      {R"(1,10,-1,0,0,0,"D",#2002-05-15#)", "dividend shares that take shares away"},
      {R"(1,.0001,-1,0,0,0,"D",#2002-05-15#)", "dividend shares that take shares away"},
      {R"(1,10,1,0,0,10,"S",#2002-05-15#)", "a sale that adds shares"},
      {R"(1,10,1,0,0,0,"U",#2002-05-15#)", "a unit fee that adds shares"},
      {R"(1,0,1,0,10,-10,"C",#2002-05-15#)", "a cash dividend with shares"},
      {R"(1,0,-1,0,10,-10,"C",#2002-05-15#)", "a cash dividend with shares"},
      {R"(1,0,1,10,0,10,"F",#2002-05-15#)", "a cash fee with shares"},
      {R"(1,0,-1,10,0,10,"F",#2002-05-15#)", "a cash fee with shares"},
      {R"(1,10,-100.0001,0,0,-1000,"S",#2002-05-15#)", "more shares given up than held"},
      {R"(1,10,-100.0001,0,0,0,"U",#2002-05-15#)", "more shares given up than held"},
      {R"(1,.0001,-100.0001,0,0,0,"U",#2002-05-15#)", "more shares given up than held"},
  };
  for (const CostMethod method : {AverageCost, FirstInFirstOut})
    for (const Refusal& c : cases) {
      SCOPED_TRACE(c.record);
      const FundHistory history =
          historyOf("1,10,100,5,0,1005,\"B\",#2001-05-15#\n" + std::string(c.record) +
                        "\n1,10,1,0,0,10,\"B\",#2003-05-15#\n",
                    method);
      ASSERT_TRUE(history.refused);
      EXPECT_EQ(history.refused->reason, c.reason);
      EXPECT_EQ(history.refused->date, date(2002, 5, 15));
      EXPECT_EQ(history.held, (Holding{money(100), money(1005)}));
    }
}

TEST(FundHistory, WhatLeavesTheRangeThrows) {
  EXPECT_THROW(historyOf(R"(1,1,1,0,0,900000000000000,"B",#2001-05-15#
1,1,1,0,0,900000000000000,"B",#2001-05-16#
)"),
               ArithmeticError);
}

// --- order ----------------------------------------------------------------------------

std::string typesOf(const Database& database, std::int16_t number) {
  const OrderedRecords records(database);
  std::string types;
  for (const Record* record : records.of(number)) types += record->type;
  return types;
}

TEST(OrderedRecords, ADaysRecordsAreBAndDThenCFSU) {
  const Database database = databaseOf(2, R"(1,10,-1,0,0,0,"U",#2001-05-15#
1,10,-1,0,0,-10,"S",#2001-05-15#
2,10,1,0,0,10,"B",#2001-05-15#
1,0,0,1,0,1,"F",#2001-05-15#
1,0,0,0,1,-1,"C",#2001-05-15#
1,10,1,0,0,0,"D",#2001-05-15#
77,10,1,0,0,0,"D",#2001-05-15#
1,10,1,0,0,10,"B",#2001-05-15#
1,10,-1,0,0,-10,"S",#2001-05-16#
1,10,1,0,0,10,"B",#2001-05-17#
)");
  EXPECT_EQ(typesOf(database, 1), "DBCFSUSB");
  EXPECT_EQ(typesOf(database, 2), "B");
  EXPECT_EQ(typesOf(database, 3), "");
}

// A file keeps whatever order it has; the number of a record's fund may be any.
TEST(OrderedRecords, AFileIsNotSorted) {
  const Database database = databaseOf(1, R"(1,10,-1,0,0,-10,"S",#2003-05-15#
1,10,1,0,0,10,"B",#2001-05-15#
-1,10,1,0,0,10,"B",#2001-05-15#
)");
  EXPECT_EQ(typesOf(database, 1), "BS");
}

TEST(OrderedRecords, EqualOnesStandAsInTheTable) {
  const Database database = databaseOf(1, R"(1,11,1,0,0,11,"B",#2001-05-15#
1,12,1,0,0,12,"D",#2001-05-15#
1,13,-1,0,0,-13,"S",#2001-05-15#
1,14,1,0,0,14,"B",#2001-05-15#
)");
  const OrderedRecords records(database);
  std::vector<Currency> prices;
  for (const Record* record : records.of(1)) prices.push_back(record->price);
  EXPECT_EQ(prices, (std::vector{money(11), money(12), money(14), money(13)}));
}

// --- laws -----------------------------------------------------------------------------

TEST(FundHistory, CostAndSharesAddUpByBothMethods) {
  checkReaching([](Reached& reached) {
    const Database database = drawnHistories(1, *anyIn(2, 60));
    const OrderedRecords ordered(database);
    const auto records = ordered.of(1);
    for (const CostMethod method : {AverageCost, FirstInFirstOut}) {
      const FundHistory history = fundHistory(records, method);
      if (history.refused) return;
      Currency taken;
      Currency gain;
      for (const Disposal& each : history.disposals) {
        taken += each.cost;
        gain += each.gain;
        RC_ASSERT(each.gain == each.proceeds - each.cost);
      }
      Currency shares;
      for (const Record* record : records) shares += record->shares;
      RC_ASSERT(history.held.shares == shares);
      RC_ASSERT(history.held.cost + taken == history.sums.bought + history.sums.reinvested);
      RC_ASSERT(history.sums.realised == gain);
      if (shares.isZero()) RC_ASSERT(history.held.cost.isZero());
    }
    reached();
  });
}

// No lot turns negative: whatever part of the shares goes, it takes no less cost than
// nothing and no more than all, where all that came in cost something.
TEST(FundHistory, LotsAreNeverNegative) {
  checkReaching([](Reached& reached) {
    Database database = drawnHistories(1, *anyIn(2, 40));
    for (Record& record : database.records())
      if (record.type == 'B') record.bookValue = record.price * record.shares + record.fees;
    const OrderedRecords records(database);
    const FundHistory history = fundHistory(records.of(1), FirstInFirstOut);
    if (history.refused) return;
    for (const Disposal& each : history.disposals) RC_ASSERT(each.cost >= Currency());
    for (const YearSums& year : history.years) {
      RC_ASSERT(year.closing.cost >= Currency());
      RC_ASSERT(year.closing.shares >= Currency());
    }
    reached();
  });
}

}  // namespace
}  // namespace mirelund

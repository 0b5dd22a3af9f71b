// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/gains.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "app/currency_table.h"
#include "insights/insights_testing.h"
#include "manager/reports/current_value.h"

namespace mirelund {
namespace {

using enum CostMethod;

// Two that hold shares, one sold out, one that cannot be computed.
const char* const kFour = R"(1,10,100,5,0,1005,"B",#2001-05-15#
2,20,10,0,0,200,"B",#2001-05-15#
3,10,10,0,0,100,"B",#2001-05-15#
4,10,-1,0,0,-10,"S",#2001-06-15#
3,15,-10,0,0,-150,"S",#2001-06-15#
1,0,0,0,50,-50,"C",#2001-07-15#
2,0,0,8,0,8,"F",#2001-08-15#
)";

TEST(Gains, AFundsLineAndTheTotal) {
  const Database database = databaseOf(4, kFour);
  const Gains gains = calculateGains(database, pricesOf(database, 12), AverageCost);
  ASSERT_EQ(gains.funds.size(), 4U);
  const FundGains& first = gains.funds[0];
  EXPECT_EQ(first.fundRow, 1);
  EXPECT_EQ(first.costPerShare, money(10.05));
  EXPECT_EQ(first.value, money(1200));
  EXPECT_EQ(first.unrealised, money(195));
  EXPECT_EQ(first.gainLoss, money(245));
  EXPECT_EQ(first.valueGainLoss, money(245));
  EXPECT_EQ(gains.funds[1].gainLoss, money(120 - 200 - 8));
  EXPECT_EQ(gains.funds[2].gainLoss, money(50));
  EXPECT_EQ(gains.funds[2].costPerShare, Currency());
  EXPECT_EQ(gains.funds[2].disposals.size(), 1U);
  const FundGains& refused = gains.funds[3];
  ASSERT_TRUE(refused.refused);
  EXPECT_EQ(refused.refused->reason, "more shares given up than held");
  EXPECT_EQ(refused.refused->date, date(2001, 6, 15));
  EXPECT_FALSE(refused.value);
  EXPECT_FALSE(lacksPrice(refused));
  EXPECT_EQ(refused.sums, FundSums());
  const FundGains& total = gains.total;
  EXPECT_EQ(total.fundRow, 0);
  EXPECT_EQ(total.held, (Holding{money(110), money(1205)}));
  EXPECT_EQ(total.costPerShare, money(10.9545));  // 1205 / 110 = 10.95454...
  EXPECT_EQ(total.value, money(1320));
  EXPECT_EQ(total.unrealised, money(115));
  EXPECT_EQ(total.sums.realised, money(50));
  EXPECT_EQ(total.gainLoss, money(245 - 88 + 50));
  EXPECT_EQ(total.valueGainLoss, total.gainLoss);
}

// A price of 0 is as none; a fund that is sold out needs none.
TEST(Gains, AMissingPriceLeavesValueAndSumEmpty) {
  const Database database = databaseOf(4, kFour);
  for (const std::optional<Currency> missing : {std::optional<Currency>(), {Currency()}}) {
    Prices prices = pricesOf(database, 12);
    prices[1] = missing;
    prices[2] = missing;
    const Gains gains = calculateGains(database, prices, AverageCost);
    EXPECT_FALSE(lacksPrice(gains.funds[0]));
    EXPECT_TRUE(lacksPrice(gains.funds[1]));
    EXPECT_FALSE(gains.funds[1].unrealised);
    EXPECT_FALSE(gains.funds[1].gainLoss);
    EXPECT_FALSE(gains.funds[1].valueGainLoss);
    EXPECT_EQ(gains.funds[1].sums.cashFees, money(8));
    EXPECT_FALSE(lacksPrice(gains.funds[2]));
    EXPECT_EQ(gains.funds[2].gainLoss, money(50));
    EXPECT_FALSE(gains.total.value);
    EXPECT_FALSE(gains.total.gainLoss);
    EXPECT_EQ(gains.total.sums.realised, money(50));
  }
}

// Required of every sum over funds: each of two funds of one number has its records.
TEST(Gains, FundsOfOneNumberHaveTheSameRecords) {
  Database database = databaseOf(2, kFour);
  database.FundTable[2].number = "1";
  const Gains gains = calculateGains(database, pricesOf(database, 12), AverageCost);
  EXPECT_EQ(gains.funds[0].gainLoss, money(245));
  EXPECT_EQ(gains.funds[1].gainLoss, money(245));
  EXPECT_EQ(gains.total.gainLoss, money(490));
}

// 1122.4920 shares that cost 14,518.35 bought and 7,415.1697 reinvested.
TEST(Gains, TheCostOfAShareIsNotTheListsAverage) {
  const Database database =
      parseDatabase(contents(std::string(MIRELUND_DATA "/DtaSampl.PQD"))).value();
  const Gains gains = calculateGains(database, pricesOf(database, 20), AverageCost);
  ASSERT_EQ(database.FundTable[5].name, "Tarnwick Bond");
  EXPECT_EQ(gains.funds[4].costPerShare, money(19.54));
}

TEST(Gains, WhatLeavesTheRangeThrows) {
  const Database database = databaseOf(1, "1,1,100000,0,0,1,\"B\",#2001-05-15#\n");
  EXPECT_THROW(calculateGains(database, pricesOf(database, 9.2e13), AverageCost), ArithmeticError);
}

// The parts of each fund that is computed make the current-value page's Gain/Loss$, and
// theirs make its total.
TEST(Gains, TheSumIsTheCurrentValuePages) {
  checkReaching([](Reached& reached) {
    const Database database = drawnHistories(*anyIn(1, kMostFunds + 1), *anyIn(1, 120));
    std::vector<Currency> typed;
    for (std::size_t i = 0; i < database.funds().size(); ++i) typed.push_back(*moderatePrice());
    const Prices prices(typed.begin(), typed.end());
    CurrencyTable table;
    currentValueTable(database, typed, table);
    for (const CostMethod method : {AverageCost, FirstInFirstOut}) {
      const Gains gains = calculateGains(database, prices, method);
      Currency sum;
      Currency parts;
      for (const FundGains& fund : gains.funds) {
        if (fund.refused) continue;
        const auto row = static_cast<std::size_t>(fund.fundRow);
        RC_ASSERT(*fund.value == table.at(row, 3));
        RC_ASSERT(*fund.gainLoss == table.at(row, 4));
        RC_ASSERT(*fund.valueGainLoss == table.at(row, 4));
        RC_ASSERT(fund.held.shares == table.at(row, 0));
        const FundSums& sums = fund.sums;
        RC_ASSERT(*fund.gainLoss == *fund.value - fund.held.cost + sums.realised +
                                        sums.cashDividends + sums.reinvested - sums.cashFees -
                                        sums.unitFees + sums.other);
        sum += table.at(row, 4);
        parts += *fund.gainLoss;
      }
      RC_ASSERT(*gains.total.gainLoss == sum);
      RC_ASSERT(*gains.total.valueGainLoss == sum);
      RC_ASSERT(parts == sum);
      if (std::ranges::none_of(gains.funds, [](const auto& f) { return f.refused.has_value(); }))
        RC_ASSERT(sum == table.at(31, 4));
    }
    reached();
  });
}

// Any amounts and signs at all: what is not refused adds up.
TEST(Gains, AnyRecordsAreRefusedOrAddUp) {
  int computed = 0;
  checkReaching([&](Reached& reached) {
    const Database database = *moderateDatabase();
    std::vector<Currency> typed(database.funds().size(), money(20));
    const Prices prices(typed.begin(), typed.end());
    try {
      const Gains gains =
          calculateGains(database, prices, *rc::gen::element(AverageCost, FirstInFirstOut));
      CurrencyTable table;
      currentValueTable(database, typed, table);
      for (const FundGains& fund : gains.funds) {
        if (fund.refused) continue;
        ++computed;
        RC_ASSERT(*fund.gainLoss == table.at(static_cast<std::size_t>(fund.fundRow), 4));
      }
      reached();
    } catch (const ArithmeticError&) {
      // A total or a percentage out of range.
    }
  });
  EXPECT_GT(computed, 50);
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/annual_return.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>

#include "insights/insights_testing.h"

namespace mirelund {
namespace {

std::vector<Flow> flowsOf(std::initializer_list<std::pair<Date, double>> flows) {
  std::vector<Flow> made;
  for (const auto& [day, amount] : flows) made.push_back({day, money(amount)});
  return made;
}

double years(const std::vector<Flow>& flows, const Flow& flow) {
  return (flow.date.dayNumber() - flows.front().date.dayNumber()) / 365.0;
}

// --- solving --------------------------------------------------------------------------

TEST(SolveRates, OneYearIsThePlainReturn) {
  // 2001 has 365 days.
  const auto rates = solveRates(flowsOf({{date(2001, 1, 1), -100}, {date(2002, 1, 1), 110}}));
  ASSERT_EQ(rates.size(), 1U);
  EXPECT_NEAR(rates[0], 0.1, 1e-15);
}

// The example of the XIRR function in the OpenDocument formula format and in the help of
// most spreadsheets: 0.373362535, where its iteration stopped.
TEST(SolveRates, TheSpreadsheetsExample) {
  const auto rates = solveRates(flowsOf({{date(2008, 1, 1), -10000},
                                         {date(2008, 3, 1), 2750},
                                         {date(2008, 10, 30), 4250},
                                         {date(2009, 2, 15), 3250},
                                         {date(2009, 4, 1), 2750}}));
  ASSERT_EQ(rates.size(), 1U);
  EXPECT_NEAR(rates[0], 0.373362535, 1e-8);
}

TEST(SolveRates, NoneForOneSignOrOneDay) {
  EXPECT_TRUE(solveRates({}).empty());
  EXPECT_TRUE(solveRates(flowsOf({{date(2001, 1, 1), -100}})).empty());
  EXPECT_TRUE(solveRates(flowsOf({{date(2001, 1, 1), 100}})).empty());
  EXPECT_TRUE(solveRates(flowsOf({{date(2001, 1, 1), -100}, {date(2002, 1, 1), -1}})).empty());
  EXPECT_TRUE(solveRates(flowsOf({{date(2001, 1, 1), 100}, {date(2002, 1, 1), 1}})).empty());
}

// ln(1 + r) = 365 ln 1.5 = 148 is far beyond 9; so is -148.
TEST(SolveRates, NoneBeyondTheRange) {
  EXPECT_TRUE(solveRates(flowsOf({{date(2001, 1, 1), -100}, {date(2001, 1, 2), 150}})).empty());
  EXPECT_TRUE(solveRates(flowsOf({{date(2001, 1, 1), -150}, {date(2001, 1, 2), 100}})).empty());
}

// -1 + 5 v - 6 v^2 = -(1 - 2 v)(1 - 3 v): v = 1/2 and 1/3, r = 1 and 2.
TEST(SolveRates, SeveralRatesAreAllFound) {
  const auto rates = solveRates(
      flowsOf({{date(2001, 1, 1), -100}, {date(2002, 1, 1), 500}, {date(2003, 1, 1), -600}}));
  ASSERT_EQ(rates.size(), 2U);
  EXPECT_NEAR(rates[0], 1.0, 1e-12);
  EXPECT_NEAR(rates[1], 2.0, 1e-12);
}

// Exactly 0 where it is looked at: at 0 the sum is that of the amounts. (1 - v)^2 is 0 there
// and changes no sign.
TEST(SolveRates, ARateOfNothingIsARate) {
  EXPECT_EQ(solveRates(flowsOf({{date(2001, 1, 1), -100}, {date(2005, 1, 1), 100}})),
            std::vector{0.0});
  EXPECT_EQ(solveRates(flowsOf({{date(2001, 1, 1), 100}, {date(2005, 1, 1), -100}})),
            std::vector{0.0});
  EXPECT_EQ(solveRates(flowsOf(
                {{date(2001, 1, 1), -100}, {date(2002, 1, 1), 200}, {date(2003, 1, 1), -100}})),
            std::vector{0.0});
}

TEST(SolveRates, DatesMillenniaApartOverflowNothing) {
  const auto rates = solveRates(flowsOf({{date(100, 1, 1), -1}, {date(9999, 12, 31), 1e12}}));
  ASSERT_EQ(rates.size(), 1U);
  // 3,615,899 days: 12 ln 10 x 365 / 3,615,899.
  EXPECT_NEAR(std::log1p(rates[0]), 12 * std::log(10.0) * 365 / 3'615'899, 1e-15);
}

// --- laws -----------------------------------------------------------------------------

std::vector<Flow> drawnFlows() {
  const int count = *anyIn(2, *rc::gen::element(5, 12, 60));
  const int span = *rc::gen::element(3, 40, 400, 4000);
  std::map<std::int32_t, Currency> days;
  for (int i = 0; i < count; ++i) {
    const auto sign = *anyIn(0, 3) == 0 ? 1 : -1;
    days[*anyIn(0, span)] +=
        Currency::fromTenThousandths(sign * *anyIn<std::int64_t>(1, 1'000'000'000));
  }
  if (*anyIn(0, 3) != 0)
    days[span] += Currency::fromTenThousandths(*anyIn<std::int64_t>(1, 30'000'000'000));
  std::vector<Flow> flows;
  for (const auto& [day, amount] : days)
    if (!amount.isZero())
      flows.push_back({date(1990 + day / 336, 1 + day / 28 % 12, 1 + day % 28), amount});
  return flows;
}

bool hasBothSigns(const std::vector<Flow>& flows) {
  bool in = false;
  bool out = false;
  for (const Flow& flow : flows) (flow.amount < Currency() ? in : out) = true;
  return in && out;
}

TEST(SolveRates, TheResidualIsWithinItsBound) {
  checkReaching({{"asked"}, {"found", 0.2}}, [](Reached& reached) {
    const std::vector<Flow> flows = drawnFlows();
    for (const double rate : solveRates(flows)) {
      RC_ASSERT(rate > -1.0);
      long double sum = 0.0L;
      long double magnitudes = 0.0L;
      for (const Flow& flow : flows) {
        const long double value =
            flow.amount.toDouble() *
            std::exp(-std::log1p(static_cast<long double>(rate)) * years(flows, flow));
        sum += value;
        magnitudes += std::abs(value);
      }
      RC_ASSERT(std::abs(sum) <= std::max(0.01L, 1e-12L * magnitudes));
      reached("found");
      break;
    }
    reached("asked");
  });
}

// Looks at every place, and finds the rate between two by halving.
std::vector<double> plainScan(const std::vector<Flow>& flows) {
  std::vector<double> rates;
  if (!hasBothSigns(flows)) return rates;
  const auto sum = [&](double place) {
    const double since = place < 0.0 ? years(flows, flows.back()) : 0.0;
    double out = 0.0;
    double in = 0.0;
    for (const Flow& flow : flows) {
      const double value = static_cast<double>(flow.amount.tenThousandths()) *
                           std::exp(-place * (years(flows, flow) - since));
      (value > 0.0 ? out : in) += std::abs(value);
    }
    return out - in;
  };
  double before = 0.0;
  for (int step = -4500; step <= 4500; ++step) {
    const double here = sum(step * 0.002);
    if (here == 0.0) rates.push_back(std::expm1(step * 0.002));
    if ((before < 0.0 && here > 0.0) || (before > 0.0 && here < 0.0)) {
      double low = (step - 1) * 0.002;
      double high = step * 0.002;
      for (int i = 0; i < 60; ++i) {
        const double middle = low + (high - low) / 2;
        ((sum(middle) > 0.0) == (before > 0.0) ? low : high) = middle;
      }
      rates.push_back(std::expm1(low));
    }
    before = here;
  }
  return rates;
}

TEST(SolveRates, FindsWhatLookingAtEveryPlaceFinds) {
  checkReaching({{"asked"}, {"found", 0.2}}, [](Reached& reached) {
    std::vector<Flow> flows = drawnFlows();
    flows.resize(std::min<std::size_t>(flows.size(), 12));
    const auto rates = solveRates(flows);
    const auto expected = plainScan(flows);
    RC_ASSERT(rates.size() == expected.size());
    for (std::size_t i = 0; i < rates.size(); ++i)
      RC_ASSERT(std::abs(std::log1p(rates[i]) - std::log1p(expected[i])) < 1e-10);
    if (!rates.empty()) reached("found");
    reached("asked");
  });
}

// --- a spreadsheet --------------------------------------------------------------------

struct Asked {
  std::vector<Flow> flows;
  std::string answer;
};

std::vector<Asked> spreadsheet() {
  std::vector<Asked> funds;
  std::istringstream lines(contents(MIRELUND_TEST_DATA "/xirr/xirr.csv"));
  std::string line;
  std::getline(lines, line);
  std::string last;
  while (std::getline(lines, line)) {
    std::istringstream fields(line);
    std::string fund, day, amount, answer;
    std::getline(fields, fund, ',');
    std::getline(fields, day, ',');
    std::getline(fields, amount, ',');
    std::getline(fields, answer, ',');
    if (fund != last) funds.push_back({{}, answer});
    last = fund;
    funds.back().flows.push_back(
        {date(std::stoi(day), std::stoi(day.substr(5, 2)), std::stoi(day.substr(8))),
         money(std::stod(amount))});
  }
  return funds;
}

// xirr/make.py says how it was made. 1e-6 of the rate, or four decimals of a percent.
TEST(SolveRates, AgreesWithASpreadsheet) {
  int compared = 0;
  int unsolved = 0;
  int beyond = 0;
  for (const Asked& fund : spreadsheet()) {
    char* end = nullptr;
    const double expected = std::strtod(fund.answer.c_str(), &end);
    const auto rates = solveRates(fund.flows);
    if (end == fund.answer.c_str()) {  // "#VALUE!"
      ++unsolved;
      continue;
    }
    if (std::abs(std::log1p(expected)) > 9.0) {
      EXPECT_TRUE(rates.empty());
      ++beyond;
      continue;
    }
    ++compared;
    const bool found = std::ranges::any_of(rates, [&](double rate) {
      return std::abs(rate - expected) <= std::max(1e-6 * std::abs(expected), 0.5e-6);
    });
    EXPECT_TRUE(found) << "fund from " << fund.flows.front().date.year() << ": " << expected
                       << " beside " << (rates.empty() ? NAN : rates.front());
  }
  EXPECT_GE(compared, 200);
  RecordProperty("compared", compared);
  RecordProperty("unsolved", unsolved);
  RecordProperty("beyond", beyond);
}

// --- funds ----------------------------------------------------------------------------

TEST(Returns, FlowsAreBookValuesByDayAndTheValue) {
  const Database database = databaseOf(1, R"(1,10,100,5,0,1005,"B",#2001-05-15#
1,11,1,0,0,7,"D",#2001-06-15#
1,0,0,0,12,-12,"C",#2001-07-15#
1,0,0,2,0,2,"F",#2001-07-15#
1,0,0,0,9,-9,"C",#2001-08-15#
1,0,0,9,0,9,"F",#2001-08-15#
1,12,-1,0,0,3,"U",#2001-09-15#
1,12,-50,1,0,-599,"S",#2001-10-15#
)");
  const Returns returns = calculateReturns(database, pricesOf(database, 13), date(2003, 5, 15));
  ASSERT_EQ(returns.funds.size(), 1U);
  // Those of the fifteenth of August come to nothing; 100 + 1 - 1 - 50 shares at 13.
  EXPECT_EQ(returns.funds[0].flows, flowsOf({{date(2001, 5, 15), -1005},
                                             {date(2001, 7, 15), 10},
                                             {date(2001, 10, 15), 599},
                                             {date(2003, 5, 15), 650}}));
  EXPECT_EQ(returns.funds[0].rates.size(), 1U);
  EXPECT_FALSE(returns.funds[0].underAYear);
  EXPECT_FALSE(returns.funds[0].plainPercent);
  EXPECT_EQ(returns.total.flows, returns.funds[0].flows);
  EXPECT_EQ(returns.total.rates, returns.funds[0].rates);
}

TEST(Returns, UnderAYearIsMarkedWithThePlainReturnBeside) {
  const Database database = databaseOf(1, R"(1,10,100,0,0,1000,"B",#2001-01-01#
)");
  const auto valued = [&](Date day) {
    return calculateReturns(database, pricesOf(database, 11), day).funds.at(0);
  };
  const FundReturn under = valued(date(2001, 12, 31));  // 364 days
  EXPECT_TRUE(under.underAYear);
  EXPECT_EQ(under.plainPercent, money(10));
  EXPECT_FALSE(valued(date(2002, 1, 1)).underAYear);
  // On the day itself there is no rate, but a plain return.
  const FundReturn at = valued(date(2001, 1, 1));
  EXPECT_TRUE(at.rates.empty());
  EXPECT_TRUE(at.underAYear);
  EXPECT_EQ(at.plainPercent, money(10));
}

TEST(Returns, NothingBoughtHasNoPlainReturn) {
  const Database database = databaseOf(2, R"(1,10,100,0,0,0,"D",#2001-01-01#
2,.0001,0,0,0,0,"D",#2001-01-01#
)");
  const Returns returns = calculateReturns(database, pricesOf(database, 11), date(2001, 6, 1));
  EXPECT_TRUE(returns.funds[0].underAYear);
  EXPECT_FALSE(returns.funds[0].plainPercent);
  EXPECT_TRUE(returns.funds[1].flows.empty());
  EXPECT_FALSE(returns.funds[1].underAYear);
}

TEST(Returns, AMissingPriceOrARefusalLeavesNoRate) {
  const Database database = databaseOf(3, R"(1,10,100,0,0,1000,"B",#2001-01-01#
2,10,100,0,0,1000,"B",#2001-01-01#
3,10,-1,0,0,-10,"S",#2001-01-01#
2,12,-100,0,0,-1200,"S",#2002-01-01#
)");
  Prices prices = pricesOf(database, 11);
  prices[0] = std::nullopt;
  prices[1] = std::nullopt;
  Returns returns = calculateReturns(database, prices, date(2003, 1, 1));
  EXPECT_TRUE(returns.funds[0].lacksPrice);
  EXPECT_TRUE(returns.funds[0].rates.empty());
  EXPECT_FALSE(returns.funds[1].lacksPrice);
  ASSERT_EQ(returns.funds[1].rates.size(), 1U);
  EXPECT_NEAR(returns.funds[1].rates[0], 0.2, 1e-14);
  EXPECT_EQ(returns.funds[1].flows.back().date, date(2002, 1, 1));
  EXPECT_TRUE(returns.funds[2].refused);
  EXPECT_TRUE(returns.funds[2].flows.empty());
  EXPECT_TRUE(returns.total.lacksPrice);
  EXPECT_TRUE(returns.total.rates.empty());
  // With its price: -2000, +1200 after a year, +1100 after two. 12 v + 11 v^2 = 20,
  // v = (-12 + sqrt(144 + 880)) / 22 = 20 / 22, r = 0.1.
  prices[0] = money(11);
  returns = calculateReturns(database, prices, date(2003, 1, 1));
  ASSERT_EQ(returns.total.rates.size(), 1U);
  EXPECT_NEAR(returns.total.rates[0], 0.1, 1e-14);
  EXPECT_FALSE(returns.total.refused);
}

// Bought for 5,682.50, 512 in dividends, sold for 7,875.39 until 2017: the list says
// -100.00%.
TEST(Returns, AFundSoldLongAgoHasItsRate) {
  const Database database =
      parseDatabase(contents(std::string(MIRELUND_DATA "/DtaSampl.PQD"))).value();
  const Returns returns = calculateReturns(database, pricesOf(database, 20), date(2026, 1, 1));
  ASSERT_EQ(database.FundTable[2].name, "Hollowmere Energy");
  ASSERT_EQ(returns.funds[1].rates.size(), 1U);
  EXPECT_NEAR(returns.funds[1].rates[0], 0.0683, 0.00005);
}

}  // namespace
}  // namespace mirelund

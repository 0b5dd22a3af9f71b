// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever file is opened and whatever prices are typed: what the funds earned by both
// methods adds up, and is the same on every page.
//
// The input is a file's bytes and, behind a NUL, which no file holds, four bytes a price
// in hundredths, 0 for one that is missing.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export/csv.h"
#include "insights/annual_return.h"
#include "insights/insights.h"
#include "insights/years.h"
#include "manager/database/data_file.h"

namespace mirelund {
namespace {

void expect(bool holds) {
  if (!holds) std::abort();
}

using Prices = std::vector<std::optional<Currency>>;

Prices pricesIn(std::string_view bytes, std::size_t funds) {
  Prices prices(funds, Currency::whole(10));
  for (std::size_t i = 0; i < std::min(funds, bytes.size() / 4); ++i) {
    std::int64_t hundredths = 0;
    for (const char byte : bytes.substr(4 * i, 4))
      hundredths = hundredths << 8U | static_cast<unsigned char>(byte);
    prices[i].reset();
    if (hundredths != 0) prices[i] = Currency::fromTenThousandths(hundredths * 100);
  }
  return prices;
}

void checkFund(const FundGains& fund, const FundYears& years) {
  expect(fund.refused == years.refused);
  if (fund.refused) return;
  expect(fund.gainLoss == fund.valueGainLoss && fund.sums == years.sums);
  Holding held;
  for (const YearSums& year : years.years) {
    expect(year.opening == held);
    held = year.closing;
  }
  expect(held == fund.held);
}

void check(const InsightsAsked& asked) {
  const Gains gains = calculateGains(asked.database, asked.prices, asked.method);
  const Years years = calculateYears(asked.database, asked.method);
  for (std::size_t i = 0; i < gains.funds.size(); ++i) checkFund(gains.funds[i], years.funds[i]);
  checkFund(gains.total, years.total);
  const Returns returns = calculateReturns(asked.database, asked.prices, asked.date);
  for (const FundReturn& fund : returns.funds)
    for (const double rate : fund.rates) expect(std::isfinite(rate) && rate > -1.0);
}

// A row a line; names of files may hold line ends, in quotes.
void checkSheet(const Sheet& sheet) {
  const std::string text = csvText(sheet);
  expect(std::ranges::count(text, '\n') > std::ssize(sheet.rows));
  for (const auto& row : sheet.rows) expect(row.size() == sheet.columns.size());
}

}  // namespace
}  // namespace mirelund

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelund;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t end = std::min(input.find('\0'), size);
  const auto database = parseDatabase(std::string(input.substr(0, end)));
  if (!database) return 0;
  const Prices prices = pricesIn(input.substr(std::min(end + 1, size)), database->funds().size());
  for (const CostMethodRow& method : kCostMethods) {
    const InsightsAsked asked{
        *database, prices, valuationDate(*database, *Date::of(2020, 1, 1)), method.method, {}};
    const InsightsShown shown = showInsights(asked);
    if (shown.message == Message::None) check(asked);
    for (const std::string& report : shown.reports)
      expect(report.empty() == (shown.message != Message::None));
    for (const InsightsPageRow& page : kInsightsPages)
      for (const Sheet& sheet : insightsSheets(asked, page.page).sheets) checkSheet(sheet);
    const ChartView view = insightsChart(asked);
    for (const ChartSeries& series : view.series)
      expect(series.values.size() == view.categories.size());
  }
  return 0;
}

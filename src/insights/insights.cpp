// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/insights.h"

#include <algorithm>
#include <utility>

#include "app/number_text.h"
#include "base/attempt.h"
#include "insights/annual_return.h"
#include "insights/insights_reports.h"
#include "insights/insights_sheets.h"
#include "insights/years.h"

namespace mirelund {

namespace {

Message refusal(const Database& database) {
  if (database.FundCount == 0) return Message::NoRecords;
  return firstEmptyFund(database) == 0 ? Message::None : Message::EmptyFund;
}

// What `make` returns, or `failed` with the message that says why not.
template <typename Result, typename Make>
Result unlessRefused(const Database& database, Message failure, Make make) noexcept {
  static_assert(std::is_nothrow_default_constructible_v<Result>);
  Result failed;
  failed.message = refusal(database);
  if (failed.message != Message::None) return failed;
  failed.message = failure;
  return attempt(std::move(failed), std::move(make));
}

std::string lackingText(const Database& database, const Gains& gains) {
  std::string text;
  for (const FundGains& fund : gains.funds) {
    if (!lacksPrice(fund)) continue;
    text += text.empty() ? "No price typed for: " : ", ";
    text += insightsName(database, fund.fundRow);
  }
  return text;
}

Date dayOfValue(const InsightsAsked& asked) {
  return valuationDate(asked.database, asked.date);
}

// One series of the chart: its name, and its value of a year.
struct YearSeries {
  std::string_view name;
  Currency (*value)(const FundSums& sums);
};

constexpr YearSeries kSeries[] = {
    {"Income", [](const FundSums& sums) { return sums.income(); }},
    {"Realised gain", [](const FundSums& sums) { return sums.realised; }},
    {"Fees", [](const FundSums& sums) { return -(sums.cashFees + sums.unitFees); }},
};

ChartView chartOf(const Years& years) {
  ChartView view;
  view.stacked = true;
  view.caption = "Insights";
  view.title = "Income, realised gain and fees by year";
  view.categoryTitle = "Year";
  view.valueTitle = "Amount (" + std::string(MoneySymbol) + ")";
  for (const YearSums& year : years.total.years)
    view.categories.push_back(std::to_string(year.year));
  for (const YearSeries& row : kSeries) {
    ChartSeries series{std::string(row.name), {}, {}};
    for (const YearSums& year : years.total.years) {
      const Currency value = row.value(year.sums);
      series.values.push_back(value.toDouble());
      series.texts.push_back(std::string(MoneySymbol) + FormatNumber(value, "####,,###.00"));
    }
    view.series.push_back(std::move(series));
  }
  return view;
}

std::vector<Sheet> gainsPage(const InsightsAsked& asked) {
  return gainsSheets(asked.database, calculateGains(asked.database, asked.prices, asked.method));
}

std::vector<Sheet> returnPage(const InsightsAsked& asked) {
  return returnSheets(asked.database,
                      calculateReturns(asked.database, asked.prices, dayOfValue(asked)));
}

std::vector<Sheet> yearsPage(const InsightsAsked& asked) {
  return yearsSheets(asked.database, calculateYears(asked.database, asked.method));
}

struct SheetsRow {
  InsightsPage page;
  std::vector<Sheet> (*sheets)(const InsightsAsked& asked);
};

constexpr std::array<SheetsRow, kInsightsPages.size()> kSheets{{
    {InsightsPage::Gains, gainsPage},
    {InsightsPage::Return, returnPage},
    {InsightsPage::Years, yearsPage},
}};
static_assert(standsInOrder(kSheets, &SheetsRow::page));

}  // namespace

Date valuationDate(const Database& database, Date wanted) noexcept {
  for (const Record& record : database.records()) wanted = std::max(wanted, record.date);
  return wanted;
}

InsightsShown showInsights(const InsightsAsked& asked) noexcept {
  return unlessRefused<InsightsShown>(asked.database, Message::WrongEntry, [&asked] {
    const Gains gains = calculateGains(asked.database, asked.prices, asked.method);
    const Date date = dayOfValue(asked);
    InsightsShown shown;
    shown.reports = {
        gainsReport(asked.database, gains, asked.method, asked.format),
        returnReport(asked.database, calculateReturns(asked.database, asked.prices, date), date,
                     asked.format),
        yearsReport(asked.database, calculateYears(asked.database, asked.method), asked.method,
                    asked.format)};
    shown.lacking = lackingText(asked.database, gains);
    return shown;
  });
}

ChartView insightsChart(const InsightsAsked& asked) noexcept {
  return unlessRefused<ChartView>(asked.database, Message::CannotDraw, [&asked] {
    return chartOf(calculateYears(asked.database, asked.method));
  });
}

InsightsSheets insightsSheets(const InsightsAsked& asked, InsightsPage page) noexcept {
  return unlessRefused<InsightsSheets>(asked.database, Message::WrongEntry, [&asked, page] {
    return InsightsSheets{Message::None, rowOf(kSheets, page).sheets(asked)};
  });
}

}  // namespace mirelund

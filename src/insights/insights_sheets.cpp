// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/insights_sheets.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/number_text.h"
#include "insights/insights_reports.h"

namespace mirelund {

namespace {

constexpr int kAmount = 4;
constexpr Pattern kPlain = "#####0.0000";

struct Column {
  std::string_view heading;
  int decimals = kAmount;
};

Sheet sheetOf(std::string_view name, std::initializer_list<Column> columns) {
  Sheet sheet{std::string(name), {}, {}};
  for (const Column& column : columns)
    sheet.columns.push_back({std::string(column.heading), column.decimals});
  return sheet;
}

Cell cellOf(const std::optional<Currency>& value) {
  return value ? Cell(*value) : Cell();
}

Cell cellOf(const std::vector<double>& rates) {
  if (rates.empty()) return {};
  if (rates.size() == 1) return ratePercent(rates.front());
  std::vector<Currency> percents;
  percents.reserve(rates.size());
  for (const double rate : rates) percents.push_back(ratePercent(rate));
  return percents;
}

// The name, and nothing else that could be computed.
void addRefused(Sheet& sheet, const std::string& name) {
  auto& row = sheet.rows.emplace_back(sheet.columns.size());
  row.front() = name;
}

constexpr ShortDateFormat kIsoDate{
    {DatePart::Year, DatePart::Month, DatePart::Day}, '-', true, true};

std::string remarkOf(const FundReturn& fund) {
  if (fund.refused) return refusedText(*fund.refused, kIsoDate);
  std::string text;
  const auto add = [&text](std::string_view remark) {
    if (!text.empty()) text += "; ";
    text += remark;
  };
  if (fund.lacksPrice)
    add("no price");
  else if (fund.rates.empty())
    add("none");
  if (fund.underAYear) add("under 365 days");
  if (fund.plainPercent) add("plain return " + FormatNumber(*fund.plainPercent, kPlain) + '%');
  return text;
}

}  // namespace

std::vector<Sheet> gainsSheets(const Database& database, const Gains& gains) {
  Sheet disposals = sheetOf(
      "gains", {{"fund"}, {"date"}, {"type"}, {"shares"}, {"proceeds"}, {"cost"}, {"gain"}});
  Sheet totals = sheetOf("totals", {{"fund"},
                                    {"shares"},
                                    {"cost"},
                                    {"value"},
                                    {"unrealised"},
                                    {"realised"},
                                    {"income"},
                                    {"cash_fees"},
                                    {"unit_fees"},
                                    {"other"},
                                    {"gain_loss"}});
  for (const FundGains& fund : gains.funds) {
    const std::string name = insightsName(database, fund.fundRow);
    if (fund.refused) {
      addRefused(totals, name);
      continue;
    }
    for (const Disposal& disposal : fund.disposals)
      disposals.rows.push_back({name, disposal.date, std::string(1, disposal.type), disposal.shares,
                                disposal.proceeds, disposal.cost, disposal.gain});
    const FundSums& sums = fund.sums;
    totals.rows.push_back({name, fund.held.shares, fund.held.cost, cellOf(fund.value),
                           cellOf(fund.unrealised), sums.realised, sums.income(), sums.cashFees,
                           sums.unitFees, sums.other, cellOf(fund.gainLoss)});
  }
  std::vector<Sheet> sheets;
  sheets.push_back(std::move(disposals));
  sheets.push_back(std::move(totals));
  return sheets;
}

std::vector<Sheet> returnSheets(const Database& database, const Returns& returns) {
  Sheet sheet = sheetOf(
      "return",
      {{"fund"}, {"first_date"}, {"last_date"}, {"flows", 0}, {"rate_percent"}, {"remark"}});
  for (const FundReturn& fund : returns.funds) {
    addRefused(sheet, insightsName(database, fund.fundRow));
    auto& row = sheet.rows.back();
    row.back() = remarkOf(fund);
    if (fund.refused) continue;
    if (!fund.flows.empty()) {
      row[1] = fund.flows.front().date;
      row[2] = fund.flows.back().date;
    }
    row[3] = static_cast<std::int64_t>(fund.flows.size());
    row[4] = cellOf(fund.rates);
  }
  return {std::move(sheet)};
}

std::vector<Sheet> yearsSheets(const Database& database, const Years& years) {
  Sheet sheet = sheetOf("years", {{"year", 0},
                                  {"fund"},
                                  {"opening_shares"},
                                  {"opening_cost"},
                                  {"bought"},
                                  {"sold"},
                                  {"cash_dividends"},
                                  {"reinvested"},
                                  {"cash_fees"},
                                  {"unit_fees"},
                                  {"other"},
                                  {"realised"},
                                  {"closing_shares"},
                                  {"closing_cost"}});
  for (const FundYears& fund : years.funds) {
    const std::string name = insightsName(database, fund.fundRow);
    for (const YearSums& year : fund.years) {
      const FundSums& sums = year.sums;
      sheet.rows.push_back({std::int64_t{year.year}, name, year.opening.shares, year.opening.cost,
                            sums.bought, sums.sold, sums.cashDividends, sums.reinvested,
                            sums.cashFees, sums.unitFees, sums.other, sums.realised,
                            year.closing.shares, year.closing.cost});
    }
  }
  return {std::move(sheet)};
}

}  // namespace mirelund

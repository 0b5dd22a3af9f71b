// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/insights_reports.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "app/report_line.h"
#include "base/text.h"

namespace mirelund {

namespace {

constexpr Pattern kShares = "####,,###.0000";
constexpr Pattern kMoney = "####,,###.00";
constexpr Pattern kExact = "####,,###.0000";
constexpr Pattern kCostPerShare = "####,,##0.0000";
constexpr Pattern kPercent = "####,,##0.00";

constexpr std::size_t kWidth = 96;

struct Heading {
  std::string_view first;
  std::string_view second;
  std::size_t width;
  bool left = false;
};

constexpr std::size_t kNameWidth = 16;
constexpr Heading kFund{"Fund", "Name", kNameWidth, true};

constexpr Heading kDisposals[] = {
    {"Trans-", "action", 12, true}, {"Trade", "Date", 10}, {"Number", "Shares", 18},
    {"Proceeds", "", 18},           {"Cost", "", 18},      {"Gain/", "Loss$", 18},
};
constexpr Heading kHoldings[] = {
    kFund,
    {"Number", "Shares", 16},
    {"Cost", "", 16},
    {"Cost per", "Share", 16},
    {"Current", "Value", 16},
    {"Unrealised", "Gain/Loss$", 16},
};
constexpr Heading kEarned[] = {
    kFund,
    {"Realised", "Gain/Loss$", 12},
    {"Income", "", 12},
    {"Cash", "Fees", 10},
    {"Unit", "Fees", 10},
    {"Other", "", 10},
    {"Gain/", "Loss$", 13},
    {"the same, by", "Cur. Value", 13},
};
constexpr Heading kReturn[] = {
    {"Fund", "Name", 32, true}, {"First", "Date", 11},  {"Last", "Date", 11},
    {"Flows", "", 7},           {"Rate", "a Year", 14},
};
constexpr Heading kHeld[] = {
    {"", "Year", 4},           {"Opening", "Shares", 15}, {"Opening", "Cost", 13},
    {"Bought", "", 12},        {"Sold", "", 12},          {"Realised", "Gain/Loss$", 12},
    {"Closing", "Shares", 15}, {"Closing", "Cost", 13},
};
constexpr Heading kCameAndWent[] = {
    {"", "Year", 4},      {"Cash", "Dividends", 15}, {"Reinvested", "Dividends", 13},
    {"Cash", "Fees", 12}, {"Unit", "Fees", 12},      {"Other", "", 12},
};

constexpr std::size_t widthOf(std::span<const Heading> columns) {
  std::size_t width = 0;
  for (const Heading& column : columns) width += column.width;
  return width;
}
static_assert(widthOf(kDisposals) <= kWidth && widthOf(kHoldings) <= kWidth &&
              widthOf(kEarned) <= kWidth && widthOf(kReturn) <= kWidth &&
              widthOf(kHeld) <= kWidth && widthOf(kCameAndWent) <= kWidth);

void appendLeft(std::string& out, std::string_view text, std::size_t width) {
  const std::string_view shown = firstCharacters(text, width);
  out += shown;
  out.append(width - characterCount(shown), ' ');
}

void appendHeadingLine(std::string& out, std::span<const Heading> columns,
                       std::string_view Heading::*words) {
  for (const Heading& column : columns) {
    if (column.left)
      appendLeft(out, column.*words, column.width);
    else
      appendRight(out, column.*words, column.width);
  }
  appendLine(out);
}

void appendUnderline(std::string& out, std::span<const Heading> columns) {
  out.append(widthOf(columns), '_');
  appendLine(out);
}

void appendHeading(std::string& out, std::span<const Heading> columns) {
  appendHeadingLine(out, columns, &Heading::first);
  appendHeadingLine(out, columns, &Heading::second);
  appendUnderline(out, columns);
}

// A name, and a blank behind it at least.
void appendName(std::string& out, std::string_view name, std::size_t width) {
  appendLeft(out, firstCharacters(name, width - 1), width);
}

// The columns of a table from one on, a number each.
class Numbers {
 public:
  Numbers(std::string& out, std::span<const Heading> columns) : out_(out), columns_(columns) {}

  Numbers& put(Currency value, const Pattern& pattern) {
    appendColumn(out_, value, pattern, next());
    return *this;
  }
  Numbers& put(const std::optional<Currency>& value, const Pattern& pattern) {
    if (value) return put(*value, pattern);
    return skip();
  }
  Numbers& skip() {
    out_.append(next(), ' ');
    return *this;
  }
  void end() { appendLine(out_); }

 private:
  std::size_t next() {
    const std::size_t width = columns_.front().width;
    columns_ = columns_.subspan(1);
    return width;
  }

  std::string& out_;
  std::span<const Heading> columns_;
};

void appendTitle(std::string& out, std::string_view title, const CostMethodRow& method) {
  appendLine(out, title, ": ", method.name);
  appendLine(out, method.sentence);
  appendLine(out);
}

template <typename Lines>
bool someRefused(const Lines& funds) {
  return std::ranges::any_of(funds, [](const auto& fund) { return fund.refused.has_value(); });
}

template <typename Lines>
void appendWithout(std::string& out, const Lines& funds) {
  if (someRefused(funds))
    appendLine(out, "The totals are without the funds that cannot be computed.");
}

void appendLacking(std::string& out, const Database& database, std::int16_t fundRow) {
  appendLine(out, "No price typed for: ", insightsName(database, fundRow));
}

void appendDisposals(std::string& out, const Database& database, const Gains& gains,
                     const ShortDateFormat& format) {
  appendHeading(out, kDisposals);
  bool none = true;
  for (const FundGains& fund : gains.funds) {
    if (fund.disposals.empty()) continue;
    none = false;
    appendLine(out, insightsName(database, fund.fundRow));
    for (const Disposal& disposal : fund.disposals) {
      appendLeft(out, transactionType(disposal.type)->reportWord, kDisposals[0].width);
      appendDateColumn(out, disposal.date, format);
      Numbers(out, std::span(kDisposals).subspan(2))
          .put(disposal.shares, kShares)
          .put(disposal.proceeds, kMoney)
          .put(disposal.cost, kMoney)
          .put(disposal.gain, kMoney)
          .end();
    }
  }
  if (none) appendLine(out, "No shares were sold or given up.");
  appendLine(out);
}

void appendHolding(std::string& out, std::string_view name, const FundGains& fund) {
  appendName(out, name, kNameWidth);
  Numbers(out, std::span(kHoldings).subspan(1))
      .put(fund.held.shares, kShares)
      .put(fund.held.cost, kMoney)
      .put(fund.costPerShare, kCostPerShare)
      .put(fund.value, kMoney)
      .put(fund.unrealised, kMoney)
      .end();
}

void appendEarned(std::string& out, std::string_view name, const FundGains& fund) {
  appendName(out, name, kNameWidth);
  Numbers(out, std::span(kEarned).subspan(1))
      .put(fund.sums.realised, kMoney)
      .put(fund.sums.income(), kMoney)
      .put(fund.sums.cashFees, kMoney)
      .put(fund.sums.unitFees, kMoney)
      .put(fund.sums.other, kMoney)
      .put(fund.gainLoss, kExact)
      .put(fund.valueGainLoss, kExact)
      .end();
}

std::string ratesText(const std::vector<double>& rates) {
  if (rates.empty()) return "none";
  std::string text;
  for (const double rate : rates) {
    if (!text.empty()) text += ';';
    text += FormatNumber(ratePercent(rate), kPercent) + '%';
  }
  return text;
}

std::string remarkOf(const FundReturn& fund) {
  if (!fund.underAYear) return {};
  std::string text = "  under 365 days";
  if (fund.plainPercent) text += "; plain " + FormatNumber(*fund.plainPercent, kPercent) + '%';
  return text;
}

void appendReturn(std::string& out, const Database& database, const FundReturn& fund,
                  const ShortDateFormat& format) {
  appendName(out, insightsName(database, fund.fundRow), kReturn[0].width);
  if (fund.refused) return appendLine(out, refusedText(*fund.refused, format));
  const auto day = [&](Date date) { appendRight(out, formatDate(date, format), kReturn[1].width); };
  if (fund.flows.empty()) {
    out.append(kReturn[1].width + kReturn[2].width, ' ');
  } else {
    day(fund.flows.front().date);
    day(fund.flows.back().date);
  }
  appendRight(out, std::to_string(fund.flows.size()), kReturn[3].width);
  if (fund.lacksPrice) return appendLine(out);
  const std::string rates = ratesText(fund.rates);
  // Several rates take the room that they need.
  appendRight(out, rates, std::max(kReturn[4].width, rates.size() + 1));
  appendLine(out, remarkOf(fund));
}

void appendHeld(std::string& out, const FundYears& fund) {
  appendHeading(out, kHeld);
  for (const YearSums& year : fund.years) {
    out += std::to_string(year.year);
    Numbers(out, std::span(kHeld).subspan(1))
        .put(year.opening.shares, kShares)
        .put(year.opening.cost, kMoney)
        .put(year.sums.bought, kMoney)
        .put(year.sums.sold, kMoney)
        .put(year.sums.realised, kMoney)
        .put(year.closing.shares, kShares)
        .put(year.closing.cost, kMoney)
        .end();
  }
  appendUnderline(out, kHeld);
  out += "Tot:";
  Numbers(out, std::span(kHeld).subspan(1))
      .skip()
      .skip()
      .put(fund.sums.bought, kMoney)
      .put(fund.sums.sold, kMoney)
      .put(fund.sums.realised, kMoney)
      .skip()
      .skip()
      .end();
}

void appendCameAndWent(std::string& out, const FundYears& fund) {
  const auto row = [&](const FundSums& sums) {
    Numbers(out, std::span(kCameAndWent).subspan(1))
        .put(sums.cashDividends, kMoney)
        .put(sums.reinvested, kMoney)
        .put(sums.cashFees, kMoney)
        .put(sums.unitFees, kMoney)
        .put(sums.other, kMoney)
        .end();
  };
  appendHeading(out, kCameAndWent);
  for (const YearSums& year : fund.years) {
    out += std::to_string(year.year);
    row(year.sums);
  }
  appendUnderline(out, kCameAndWent);
  out += "Tot:";
  row(fund.sums);
}

void appendYears(std::string& out, const Database& database, const FundYears& fund,
                 const ShortDateFormat& format) {
  appendLine(out, insightsName(database, fund.fundRow));
  if (fund.refused) {
    appendLine(out, refusedText(*fund.refused, format));
  } else {
    appendHeld(out, fund);
    appendCameAndWent(out, fund);
  }
  appendLine(out);
}

}  // namespace

std::string insightsName(const Database& database, std::int16_t fundRow) {
  if (fundRow == 0) return "All funds";
  const Fund& fund = database.FundTable[static_cast<std::size_t>(fundRow)];
  return displayText(fund.name.empty() ? fund.number : fund.name);
}

std::string refusedText(const Refused& refused, const ShortDateFormat& format) {
  return "Cannot be computed: " + std::string(refused.reason) + ", " +
         formatDate(refused.date, format);
}

Currency ratePercent(double rate) {
  return ToCurrency(rate * 100.0);
}

std::string gainsReport(const Database& database, const Gains& gains, CostMethod method,
                        const ShortDateFormat& format) {
  std::string out;
  appendTitle(out, "Gains", rowOf(kCostMethods, method));
  appendDisposals(out, database, gains, format);

  appendHeading(out, kHoldings);
  for (const FundGains& fund : gains.funds) {
    const std::string name = insightsName(database, fund.fundRow);
    if (fund.refused) {
      appendName(out, name, kNameWidth);
      appendLine(out, refusedText(*fund.refused, format));
    } else {
      appendHolding(out, name, fund);
    }
  }
  appendUnderline(out, kHoldings);
  appendHolding(out, "Total:", gains.total);
  appendLine(out);

  appendHeading(out, kEarned);
  for (const FundGains& fund : gains.funds)
    if (!fund.refused) appendEarned(out, insightsName(database, fund.fundRow), fund);
  appendUnderline(out, kEarned);
  appendEarned(out, "Total:", gains.total);
  appendWithout(out, gains.funds);
  for (const FundGains& fund : gains.funds)
    if (lacksPrice(fund)) appendLacking(out, database, fund.fundRow);
  return out;
}

std::string returnReport(const Database& database, const Returns& returns, Date date,
                         const ShortDateFormat& format) {
  std::string out;
  appendLine(out, "Money-weighted return a year, valued on ", formatDate(date, format));
  appendLine(out);
  appendHeading(out, kReturn);
  for (const FundReturn& fund : returns.funds) appendReturn(out, database, fund, format);
  appendUnderline(out, kReturn);
  appendReturn(out, database, returns.total, format);
  appendWithout(out, returns.funds);
  for (const FundReturn& fund : returns.funds)
    if (fund.lacksPrice) appendLacking(out, database, fund.fundRow);
  return out;
}

std::string yearsReport(const Database& database, const Years& years, CostMethod method,
                        const ShortDateFormat& format) {
  std::string out;
  appendTitle(out, "Years", rowOf(kCostMethods, method));
  for (const FundYears& fund : years.funds) appendYears(out, database, fund, format);
  appendYears(out, database, years.total, format);
  appendWithout(out, years.funds);
  return out;
}

}  // namespace mirelund

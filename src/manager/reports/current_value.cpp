// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/reports/current_value.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "app/report_line.h"
#include "base/text.h"
#include "manager/reports/fund_reports.h"

namespace mirelund {

namespace {

constexpr std::string_view kHeading1 =
    "Fund      Number        Book     Current      Current       Gain/     Gain/      % 0f";
constexpr std::string_view kHeading2 =
    "Name      Shares       Value       Price        Total       Loss$     Loss%     Total";
constexpr std::size_t kWidth = 85;
static_assert(kHeading1.size() == kWidth && kHeading2.size() == kWidth);

constexpr std::size_t kFirstColumn = 16;
constexpr std::size_t kMostNameCharacters = 10;

struct Valuation {
  Currency shares, bookValue, total, gain, gainPercent, share;
};

Currency percent(Currency part, Currency whole) {
  if (whole.isZero()) return {};
  return ToCurrency(part.toDouble() / whole.toDouble() * 100.0);
}

void appendPercent(std::string& out, Currency value) {
  appendColumn(out, value, "#,###.00", 9);
  out += '%';
}

void appendUnderline(std::string& out) {
  out.append(kWidth, '_');
  appendLine(out);
}

void appendName(std::string& out, const Fund& fund, Currency shares) {
  const std::string number = FormatNumber(shares, "####,,###.0000");
  const std::size_t room = kFirstColumn - std::min(number.size() + 1, kFirstColumn);
  const std::string text = displayText(fund.name);
  const std::string_view name = firstCharacters(text, std::min(room, kMostNameCharacters));
  out += name;
  appendRight(out, number, kFirstColumn - characterCount(name));
}

void appendFundLine(std::string& out, const Fund& fund, Currency price, const Valuation& value) {
  appendName(out, fund, value.shares);
  appendColumn(out, value.bookValue, "####,,###.00", 12);
  appendColumn(out, price, "####,,###.00", 12);
  appendColumn(out, value.total, "####,,###.00", 13);
  appendColumn(out, value.gain, "####,,###.00", 12);
  appendPercent(out, value.gainPercent);
  appendPercent(out, value.share);
  appendLine(out);
}

void appendTotals(std::string& out, const Valuation& sum) {
  out += "Tot:";
  appendColumn(out, sum.bookValue, "####,,###.00", 24);
  appendColumn(out, sum.total, "####,,###.00", 25);
  appendColumn(out, sum.gain, "####,,###.00", 12);
  appendPercent(out, percent(sum.gain, sum.bookValue));
  out.append(10, ' ');
  appendLine(out);
}

void store(CurrencyTable& totals, std::size_t row, const Valuation& value) {
  totals.at(row, 0) = value.shares;
  totals.at(row, 1) = value.bookValue;
  totals.at(row, 3) = value.total;
  totals.at(row, 4) = value.gain;
  totals.at(row, 5) = value.gainPercent;
  totals.at(row, 6) = value.share;
}

}  // namespace

std::string currentValueTable(const Database& database, std::span<const Currency> prices,
                              CurrencyTable& totals) {
  const auto funds = database.funds();
  std::array<Valuation, kMostFunds> room{};
  const std::span<Valuation> values(room.data(), funds.size());
  Valuation sum;
  for (std::size_t i = 0; i < funds.size(); ++i) {
    Valuation& value = values[i];
    const Currency number = Currency::whole(fundNumber(funds[i]));
    for (const Record& record : database.records()) {
      if (record.fund != number) continue;
      value.shares += record.shares;
      value.bookValue += record.bookValue;
    }
    value.total = value.shares * prices[i];
    value.gain = value.total - value.bookValue;
    value.gainPercent = percent(value.gain, value.bookValue);
    sum.shares += value.shares;
    sum.bookValue += value.bookValue;
    sum.total += value.total;
    sum.gain += value.gain;
  }
  for (Valuation& value : values) {
    value.share = percent(value.total, sum.total);
    sum.share += value.share;
  }

  std::string out;
  out.reserve((funds.size() + 5) * (kWidth + NewLine.size()) + funds.size() * kMostNameCharacters);
  appendLine(out, kHeading1);
  appendLine(out, kHeading2);
  appendUnderline(out);
  for (std::size_t i = 0; i < funds.size(); ++i)
    appendFundLine(out, funds[i], prices[i], values[i]);
  appendUnderline(out);
  appendTotals(out, sum);

  totals.redimension(kTotalsRows, kTotalsColumns);
  for (std::size_t i = 0; i < funds.size(); ++i) store(totals, i + 1, values[i]);
  store(totals, kTotalsRow, sum);
  return out;
}

}  // namespace mirelund

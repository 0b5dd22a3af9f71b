// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/reports/report_sheets.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "manager/reports/current_value.h"
#include "manager/reports/fund_reports.h"

namespace mirelund {

namespace {

constexpr int kDecimals = 4;

Sheet sheetWith(std::string_view name, std::initializer_list<std::string_view> headings) {
  Sheet sheet{std::string(name), {}, {}};
  for (const std::string_view heading : headings)
    sheet.columns.push_back({std::string(heading), kDecimals});
  return sheet;
}

const Fund& fundIn(const Database& database, std::int16_t row) {
  return database.FundTable[static_cast<std::size_t>(row)];
}

template <typename Use>
void forEachRecord(const Database& database, const Fund& fund, Use use) {
  const std::int64_t number = fundNumber(fund);
  for (const Record& record : database.records())
    if (record.fund.tenThousandths() / Currency::kScale == number) use(record);
}

Cell nameOf(const Fund& fund) {
  return displayText(fund.name);
}
Cell letterOf(const Record& record) {
  return std::string(1, record.type);
}
template <typename Value>
Cell onlyIf(bool there, Value value) {
  return there ? Cell(value) : Cell();
}

Sheet emptyTransactions() {
  return sheetWith("Transactions",
                   {"Fund", "Transaction", "Trade Date", "Share Price", "Number Shares",
                    "Comm Fees", "Div'd Shares", "Cash Div'd", "Book Value"});
}

void addTransactions(Sheet& sheet, const Database& database, const Fund& fund) {
  forEachRecord(database, fund, [&](const Record& record) {
    const bool dividendShares = transactionType(record.type)->isDividendShares;
    sheet.rows.push_back({nameOf(fund), letterOf(record), record.date, record.price, record.shares,
                          record.fees, onlyIf(dividendShares, record.shares), record.dividend,
                          record.bookValue});
  });
}

}  // namespace

Sheet recordSheet(const Database& database, std::int16_t fundRow) {
  Sheet sheet =
      sheetWith("Records", {"Fund", "Transaction", "Trade Date", "Share Price", "Number Shares",
                            "Comm/Fees", "Div/Unit Value", "Cash Div'd", "Book Value", "Rec No."});
  const Fund& fund = fundIn(database, fundRow);
  std::int64_t position = 0;
  forEachRecord(database, fund, [&](const Record& record) {
    const bool units = transactionType(record.type)->hasDividendUnit;
    sheet.rows.push_back({nameOf(fund), letterOf(record), record.date, record.price, record.shares,
                          record.fees, units ? Cell(record.price * record.shares) : Cell(),
                          record.dividend, record.bookValue, ++position});
  });
  return sheet;
}

Sheet transactionSheet(const Database& database, std::int16_t fundRow) {
  Sheet sheet = emptyTransactions();
  addTransactions(sheet, database, fundIn(database, fundRow));
  return sheet;
}

Sheet allFundsSheet(const Database& database) {
  Sheet sheet = emptyTransactions();
  for (const Fund& fund : database.funds()) addTransactions(sheet, database, fund);
  return sheet;
}

Sheet currentValueSheet(const Database& database, std::span<const Currency> prices) {
  CurrencyTable values;
  static_cast<void>(currentValueTable(database, prices, values));
  // "% 0f" is the report's own word (CurrentValue.ExactHeading).
  Sheet sheet =
      sheetWith("Current value", {"Fund Name", "Number Shares", "Book Value", "Current Price",
                                  "Current Total", "Gain/Loss$", "Gain/Loss%", "% 0f Total"});
  std::size_t row = 0;
  for (const Fund& fund : database.funds()) {
    ++row;
    sheet.rows.push_back({nameOf(fund), values.at(row, 0), values.at(row, 1), prices[row - 1],
                          values.at(row, 3), values.at(row, 4), values.at(row, 5),
                          values.at(row, 6)});
  }
  return sheet;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/reports/fund_reports.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "app/report_line.h"

namespace mirelund {

namespace {

constexpr std::size_t kListWidth = 96;
constexpr std::string_view kListHeading =
    "Trans-         Trade       Share      Number      Comm/   Div/Unit       Cash        Book    "
    "Rec\r\n"
    "action          Date       Price      Shares       Fees      Value      Div'd       Value    "
    "No.\r\n"
    "______________________________________________________________________________________________"
    "__"
    "\r\n";

constexpr std::size_t kReportWidth = 90;
constexpr std::string_view kReportHeading =
    "Trans-"
    "         Trade       Share      Number       Comm      Div'd       Cash         Book\r\n"
    "action"
    "          Date       Price      Shares       Fees     Shares      Div'd        Value\r\n"
    "__________________________________________________________________________________________"
    "\r\n";

constexpr std::size_t lineBytes(std::size_t width) {
  return width + NewLine.size();
}
static_assert(kListHeading.size() == 3 * lineBytes(kListWidth));
static_assert(kReportHeading.size() == 3 * lineBytes(kReportWidth));

// A heading's last line, which also stands above the totals.
constexpr std::string_view underline(std::string_view heading, std::size_t width) {
  return heading.substr(heading.size() - lineBytes(width));
}

constexpr std::string_view kTooLong = "Cannot Display all funds, not enough text space.";

// Lines of a fund's block besides its records: heading, underline, totals, average.
constexpr std::size_t kBlockLines = 6;

// The rows of each fund's records, in record order.
class RowsByFund {
 public:
  explicit RowsByFund(const Database& database) : records_(database.records()) {
    for (const Record& record : records_) ++ends_[slot(record) + 1];
    for (std::size_t i = 1; i < ends_.size(); ++i)
      ends_[i] = static_cast<std::uint16_t>(ends_[i] + ends_[i - 1]);
    auto next = ends_;
    for (std::size_t row = 0; row < records_.size(); ++row)
      rows_[next[slot(records_[row])]++] = static_cast<std::uint16_t>(row);
  }

  template <typename Use>
  void forEach(std::int16_t fund, Use use) const {
    const auto number = static_cast<std::size_t>(fund);
    for (std::size_t i = ends_[number]; i < ends_[number + 1]; ++i) use(records_[rows_[i]]);
  }

  std::size_t count(std::int16_t fund) const {
    const auto number = static_cast<std::size_t>(fund);
    return std::size_t{ends_[number + 1]} - ends_[number];
  }

 private:
  // A number that no fund can have belongs to the last slot, which no fund asks for.
  static std::size_t slot(const Record& record) {
    const auto number = static_cast<std::size_t>(record.fund.tenThousandths() / Currency::kScale);
    return std::min(number, kAllRecordsRow);
  }

  std::span<const Record> records_;
  std::array<std::uint16_t, kFundRows + 1> ends_{};
  std::array<std::uint16_t, kRecordRows> rows_;
};

constexpr std::string_view kListTotals = "Total:                         ";
constexpr std::string_view kReportTotals = "Total:                        ";
constexpr std::string_view kGrandTotals = "Total all funds:              ";
static_assert(kListTotals.size() == 31 && kReportTotals.size() == 30 && kGrandTotals.size() == 30);

// Transaction word, trade date, share price and number of shares, which stand in
// the same places in every report.
void putFront(ReportLine& line, const Record& record, const TransactionType& type,
              const ShortDateFormat& format, const Pattern& shares) {
  std::memcpy(line.place(0), type.reportWord.data(), kReportWordWidth);
  writeDate(line.place(20), record.date, format);
  line.put(record.price, "###,###.0000", 32, 12);
  line.put(record.shares, shares, 44, 12);
}

void appendReportLine(std::string& out, const Record& record, const ShortDateFormat& format) {
  const TransactionType& type = *transactionType(record.type);
  ReportLine line(out, kReportWidth);
  putFront(line, record, type, format, "####,,###.0000");
  line.put(record.fees, "####,,###.00", 55, 11);
  if (type.isDividendShares) line.put(record.shares, "####,,###.0000", 66, 11);
  line.put(record.dividend, "####,,###.00", 77, 11);
  line.put(record.bookValue, "####,,###.00", 90, 13);
}

void appendReportTotals(std::string& out, std::string_view label, const FundTotals& totals) {
  ReportLine line(out, kReportWidth);
  label.copy(line.place(0), label.size());
  line.put(totals.of(Total::Shares), "####,,###.0000", 44, 14);
  line.put(totals.of(Total::Fees), "####,,###.00", 55, 11);
  line.put(totals.of(Total::DividendShares), "####,,###.0000", 66, 11);
  line.put(totals.of(Total::Dividends), "####,,###.00", 77, 11);
  line.put(totals.of(Total::BookValue), "####,,###.00", 90, 13);
}

FundTotals appendBlock(std::string& out, const RowsByFund& rows, std::int16_t fund,
                       const ShortDateFormat& format) {
  FundTotals totals;
  out += kReportHeading;
  rows.forEach(fund, [&](const Record& record) {
    totals.add(record);
    appendReportLine(out, record, format);
  });
  out += underline(kReportHeading, kReportWidth);
  appendReportTotals(out, kReportTotals, totals);
  appendLine(out,
             "Average cost per share = ", FormatNumber(totals.averageCost(), "####,,##0.0000"));
  return totals;
}

// What the record list adds to a line and to the totals.
Currency dividendUnits(const Record& record, const TransactionType& type) {
  return type.hasDividendUnit ? record.price * record.shares : Currency();
}

Currency appendListLine(std::string& out, const Record& record, const ShortDateFormat& format,
                        std::int64_t position) {
  const TransactionType& type = *transactionType(record.type);
  const Currency units = dividendUnits(record, type);
  ReportLine line(out, kListWidth);
  putFront(line, record, type, format, "###,###.0000");
  line.put(record.fees, "##,###.00", 55, 11);
  if (type.hasDividendUnit) line.put(units, "##,###.00", 66, 11);
  line.put(record.dividend, "##,###.00", 77, 11);
  line.put(record.bookValue, "####,,###.00", 89, 12);
  line.put(Currency::whole(position), "####", 96, 7);
  return units;
}

void appendListTotals(std::string& out, const FundTotals& totals, Currency units) {
  constexpr std::size_t kBookValueEdge = 89;
  out += underline(kListHeading, kListWidth);
  ReportLine line(out, kBookValueEdge);
  kListTotals.copy(line.place(0), kListTotals.size());
  line.put(totals.of(Total::Shares), "####,,###.0000", 44, 13);
  line.put(totals.of(Total::Fees), "###,,###.00", 55, 11);
  line.put(units, "###,,###.00", 66, 11);
  line.put(totals.of(Total::Dividends), "###,,###.00", 77, 11);
  line.put(totals.of(Total::BookValue), "####,,###.00", kBookValueEdge, 12);
}

}  // namespace

void FundTotals::add(const Record& record) {
  const auto sum = [&](Total total, Currency value) {
    sums_[static_cast<std::size_t>(total)] += value;
  };
  const TransactionType& type = *transactionType(record.type);
  sum(Total::Shares, record.shares);
  sum(Total::BookValue, record.bookValue);
  if (!type.bringsProceeds) sum(Total::BookWithoutSales, record.bookValue);
  if (type.isDividendShares) sum(Total::DividendShares, record.shares);
  sum(Total::Fees, record.fees);
  sum(Total::Dividends, record.dividend);
}

void FundTotals::add(const FundTotals& other) {
  for (std::size_t i = 0; i < sums_.size(); ++i) sums_[i] += other.sums_[i];
}

Currency FundTotals::averageCost() const {
  constexpr Currency kLeastShares = Currency::fromTenThousandths(50);
  if (of(Total::Shares) <= kLeastShares) return {};
  return ToCurrency(of(Total::BookValue).toDouble() / of(Total::Shares).toDouble());
}

void FundTotals::store(CurrencyTable& totals, Currency dividendUnits) const {
  for (std::size_t i = 0; i < sums_.size(); ++i) totals.at(kTotalsRow, i) = sums_[i];
  totals.at(kTotalsRow, kDividendUnits) = dividendUnits;
}

void checkTotals(const Database& database) {
  const RowsByFund rows(database);
  FundTotals grand;
  for (const Fund& fund : database.funds()) {
    FundTotals totals;
    Currency units;
    rows.forEach(fundNumber(fund), [&](const Record& record) {
      totals.add(record);
      units += dividendUnits(record, *transactionType(record.type));
    });
    static_cast<void>(totals.averageCost());
    grand.add(totals);
  }
}

std::string recordList(const Database& database, std::int16_t fund, const ShortDateFormat& format,
                       CurrencyTable& totals) {
  const RowsByFund rows(database);
  FundTotals sums;
  std::string out;
  out.reserve((rows.count(fund) + kBlockLines) * lineBytes(kListWidth));
  out += kListHeading;
  std::int64_t position = 0;
  Currency units;
  rows.forEach(fund, [&](const Record& record) {
    sums.add(record);
    units += appendListLine(out, record, format, ++position);
  });
  appendListTotals(out, sums, units);
  sums.store(totals, units);
  return out;
}

FundReport transactionReport(const Database& database, std::int16_t fundRow,
                             const ShortDateFormat& format, CurrencyTable& totals) {
  const RowsByFund rows(database);
  const std::int16_t fund = fundNumber(database.FundTable[static_cast<std::size_t>(fundRow)]);
  FundReport report;
  report.text.reserve((rows.count(fund) + kBlockLines) * lineBytes(kReportWidth));
  report.blocks.push_back({0, fundRow});
  appendBlock(report.text, rows, fund, format).store(totals);
  return report;
}

FundReport allFundsReport(const Database& database, const ShortDateFormat& format,
                          CurrencyTable& totals) {
  const RowsByFund rows(database);
  FundReport report;
  report.text.reserve((database.records().size() + database.funds().size() * kBlockLines + 1) *
                      lineBytes(kReportWidth));
  report.blocks.reserve(database.funds().size());
  FundTotals grand;
  std::size_t line = 0;
  std::int16_t row = 0;
  for (const Fund& fund : database.funds()) {
    const std::int16_t number = fundNumber(fund);
    report.blocks.push_back({line, ++row});
    line += rows.count(number) + kBlockLines;
    grand.add(appendBlock(report.text, rows, number, format));
    if (report.text.size() > kReportCapacity) break;
  }
  appendReportTotals(report.text, kGrandTotals, grand);
  if (report.text.size() > kReportCapacity) return {std::string(kTooLong), {}};
  grand.store(totals);
  return report;
}

std::int16_t fundAtLine(std::span<const FundBlock> blocks, std::size_t line) {
  const auto after = std::ranges::upper_bound(blocks, line, {}, &FundBlock::firstLine);
  return after == blocks.begin() ? std::int16_t{0} : std::prev(after)->fundRow;
}

}  // namespace mirelund

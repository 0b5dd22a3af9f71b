// SPDX-License-Identifier: GPL-3.0-or-later
// The manager's fixed-width reports: the active fund's record list, and the
// transaction report of one fund or of all.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/global.h"
#include "manager/database/fund_database.h"

namespace mirelund {

/// The manager's shape of Global's ComparisonTotals: a row a fund, row 31 the
/// totals. Reports write row 31 alone, so that the rows of the last valuation
/// stay for its chart.
inline constexpr std::size_t kTotalsRows = 32;
inline constexpr std::size_t kTotalsColumns = 7;
inline constexpr std::size_t kTotalsRow = 31;

/// What row 31 adds up over a fund's records, by column.
enum class Total : std::uint8_t {
  Shares,            ///< C2, signed
  BookValue,         ///< C5
  BookWithoutSales,  ///< C5 of every record that brings no proceeds
  DividendShares,    ///< C2 of dividend shares
  Fees,              ///< C3
  Dividends,         ///< C4
};
inline constexpr std::size_t kTotals = 6;

/// Row 31's seventh column: C1 x C2 of the "D" and "U" records, after a record
/// list, which alone shows it; else 0.
inline constexpr std::size_t kDividendUnits = 6;

/// Totals of a fund, or of all. Sums and products are exact Currency; whatever
/// leaves the range throws ArithmeticError.
class FundTotals {
 public:
  void add(const Record& record);
  void add(const FundTotals& other);
  Currency of(Total total) const { return sums_[static_cast<std::size_t>(total)]; }

  /// Book value over number of shares, in double precision; 0 unless more than
  /// 0.005 shares are held, as for a fund that is fully sold.
  Currency averageCost() const;

  /// Stored as row 31.
  void store(CurrencyTable& totals, Currency dividendUnits = {}) const;

 private:
  std::array<Currency, kTotals> sums_{};
};

/// Throws ArithmeticError when a total, a dividend value or an average that the
/// reports show would leave the Currency range.
void checkTotals(const Database& database);

/// The record list of a fund number, lines of 96 characters: three of heading,
/// one a record in date order, numbered from 1, an underline and the totals,
/// which are also left in row 31 of `totals`. Throws ArithmeticError as above.
std::string recordList(const Database& database, std::int16_t fund, const ShortDateFormat& format,
                       CurrencyTable& totals);

/// Characters that the report box takes.
inline constexpr std::size_t kReportCapacity = 65'535;

/// Where a fund's block begins in a report.
struct FundBlock {
  std::size_t firstLine;  ///< lines count from 0
  std::int16_t fundRow;
};

struct FundReport {
  std::string text;
  std::vector<FundBlock> blocks;  ///< in the text's order
};

/// The transaction report of the fund in a row, lines of 90 characters: three of
/// heading, one a record in date order, an underline, the totals, and the average
/// cost per share. Row 31 as above. Throws ArithmeticError as above.
FundReport transactionReport(const Database& database, std::int16_t fundRow,
                             const ShortDateFormat& format, CurrencyTable& totals);

/// The same for every fund in table order, then the grand totals, which row 31
/// holds in the end. A text longer than kReportCapacity is replaced by one
/// sentence, without blocks: funds that share a number are listed with each
/// other's records.
FundReport allFundsReport(const Database& database, const ShortDateFormat& format,
                          CurrencyTable& totals);

/// The fund whose block a line of the report belongs to; 0 when there is none.
std::int16_t fundAtLine(std::span<const FundBlock> blocks, std::size_t line);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The fund database in memory: a short list of funds sorted by name, a list of
// transaction records sorted by date, and the rules that keep them so.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/currency.h"
#include "manager/database/dates.h"
#include "manager/database/transaction_type.h"

namespace mirelund {

inline constexpr std::int16_t kMostFunds = 18;
inline constexpr std::int16_t kMostRecords = 600;
inline constexpr std::size_t kFundRows = 32;     ///< rows 0..31
inline constexpr std::size_t kRecordRows = 603;  ///< rows 0..602
inline constexpr std::size_t kAllRecordsRow = 31;

/// Bytes in a fund name. More than a one-line box takes in practice; the bound
/// gives a data file its longest length.
inline constexpr std::size_t kMostNameBytes = 32'767;

/// A fund: a name of any bytes but the double quote, line breaks and NUL, and the
/// decimal text of its number, 1 to 30. The number is its identity: records
/// point at it. Funds can come to share a number (see addFund) and a name.
struct Fund {
  std::string name;
  std::string number;

  friend bool operator==(const Fund&, const Fund&) = default;
};

/// True for a name that a fund can be given: not empty, not longer than
/// kMostNameBytes, without the bytes that a data file cannot carry.
bool isFundName(std::string_view name);

/// The value of a fund's number; 0 for an empty text.
std::int16_t fundNumber(const Fund& fund);

/// A transaction. Amounts are Currency. A file can bring records of a fund that is not
/// in the table: they are kept, counted and sorted like the others, and stand in no
/// fund's report, value or total, until a fund of their number is added.
struct Record {
  Currency fund;            ///< C0: the fund's number, whole
  Currency price;           ///< C1: a share
  Currency shares;          ///< C2: negative for shares that leave the holding
  Currency fees;            ///< C3: commission or fees
  Currency dividend;        ///< C4: cash dividend, the total amount
  Currency bookValue;       ///< C5: positive paid out by the holder, negative received
  Date date;                ///< V1
  std::int16_t number = 0;  ///< V2: its own row, 1..RecordCount
  char type = 'B';          ///< V0: code of a transaction type

  friend bool operator==(const Record&, const Record&) = default;
};

/// The tables. Rows 1..FundCount and 1..RecordCount are in use; row 0 holds
/// nothing; fund row 31 is the pseudo-fund "All Records".
struct Database {
  std::array<Fund, kFundRows> FundTable;
  std::vector<Record> RecordTable;
  std::int16_t FundCount = 0;
  std::int16_t RecordCount = 0;

  Database();

  // The rows in use; not of a database that is about to go.
  std::span<Fund> funds() & { return {&FundTable[1], static_cast<std::size_t>(FundCount)}; }
  std::span<const Fund> funds() const& {
    return {&FundTable[1], static_cast<std::size_t>(FundCount)};
  }
  std::span<Record> records() & { return {&RecordTable[1], static_cast<std::size_t>(RecordCount)}; }
  std::span<const Record> records() const& {
    return {&RecordTable[1], static_cast<std::size_t>(RecordCount)};
  }
  void funds() const&& = delete;
  void records() const&& = delete;
};

/// True when both hold the same funds and records in the same rows.
bool operator==(const Database& a, const Database& b);

/// Sorts the records by date and renumbers them 1..RecordCount. A Shell sort with
/// gaps halving from RecordCount / 2, in which rows of equal dates are never
/// exchanged with each other; as a whole it is not stable, and the order that it
/// leaves for equal dates is required (SortRecords.LeavesEqualDatesAsWorkedOutByHand).
void SortRecords(Database& database);

/// Sorts the funds by name, byte for byte, with the same gaps. Returns the row in
/// which the fund of row `follow` stands afterwards.
std::int16_t SortFunds(Database& database, std::int16_t follow = 0);

/// Adds a fund and sorts; returns its row. Its number is the count after the
/// addition, whether or not another fund has that number already, as happens
/// after a deletion, or records have it whose fund was not in the table, which are
/// the new fund's then: required (FundDatabase.ANewFundTakesTheCountAsItsNumber).
/// FundCount must be below kMostFunds.
std::int16_t addFund(Database& database, std::string_view name);

/// Removes exactly the record in row `number` (1..RecordCount): it is given a
/// date later than every other, sorted last and cut off.
void removeRecord(Database& database, std::int16_t number);

/// Removes exactly the fund in `row` (1..FundCount): it is given a name that
/// sorts after every other, sorted last and cut off. It must have no records.
void removeFund(Database& database, std::int16_t row);

/// True when a record points at this fund number.
bool FundHasRecords(const Database& database, std::int16_t number);

/// The same over all funds: the row of the first named fund without a
/// record; 0 when there is none.
std::int16_t firstEmptyFund(const Database& database);

/// The row of the record that stands at `position` (from 1) among the records of
/// a fund; 0 when there is none.
std::int16_t findRecord(const Database& database, std::int16_t fund, std::int64_t position);

}  // namespace mirelund

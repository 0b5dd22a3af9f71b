// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a "*.PQD" data file: read into tables, and written from them.
//
//     3,2,"All Records","31"                     header: records, funds, row 31
//     "Amber Growth","2"                         a line a fund, sorted by name
//     "Birch Income","1"
//     2,10.5,100,50,0,1100,"B",#2001-05-15#      a line a record, sorted by date:
//     1,.0001,-50,0,0,0,"U",#2003-11-30#         fund, price, shares, fees, cash
//     2,0,0,0,12.75,-12.75,"C",#2004-02-29#      dividend, book value, type, date
//
// Every line ends with CR LF; the last record's ends the file. Numbers have a
// point and at most four decimals, no zero before the point, none at the end of
// the fraction, no sign but "-". Text stands in double quotes, byte for byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "manager/database/fund_database.h"

namespace mirelund {

/// No data file is longer: header and funds with names of kMostNameBytes, and 600
/// records of the longest numbers. Whoever reads a file stops beyond it.
inline constexpr std::size_t kMostLineBytes = 160;  ///< a line, but for its name
inline constexpr std::size_t kMostFileBytes =
    (1 + kMostFunds) * (kMostNameBytes + kMostLineBytes) + kMostRecords * kMostLineBytes;

/// The database that `bytes` hold, its funds sorted by name and its records in
/// the file's order, numbered from 1. Nothing when they are not exactly a data
/// file: counts beyond 600 and 18, fewer or more lines than the counts say, a
/// fund number that is not 1 to 30, a record's that is not whole, a type code
/// or a date that does not exist, an amount with more than four decimals or out
/// of range, leading zeros, signs and blanks that nobody writes. Accepted besides
/// the form above: LF for CR LF, a missing last line end, "0.5" for ".5" and
/// zeros at the end of a fraction. Stops at the first byte that cannot be.
/// Amounts go straight into ten-thousandths, never through a double.
///
/// A record may be of a fund that is not in the file, whatever its whole number:
/// writers can come to leave one behind. Row 31's number is any of up to nine digits.
std::optional<Database> parseDatabase(const std::string& bytes);

/// The bytes of the data file. Parsing them gives an equal database.
std::string writeDatabase(const Database& database);

}  // namespace mirelund

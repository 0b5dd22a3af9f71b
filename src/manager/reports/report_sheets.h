// SPDX-License-Identifier: GPL-3.0-or-later
// The manager's reports as typed tables, to be taken along: under the reports' words, with
// the fund's name in front, amounts with four decimals, types by their letter, without
// totals. Records stand in their fund's order, the date's.
#pragma once

#include <cstdint>
#include <span>

#include "export/sheet.h"
#include "manager/database/fund_database.h"

namespace mirelund {

/// The record list of the fund in a row; throws ArithmeticError where recordList does.
Sheet recordSheet(const Database& database, std::int16_t fundRow);

/// The transaction report of the fund in a row, and that of every fund in table order.
Sheet transactionSheet(const Database& database, std::int16_t fundRow);
Sheet allFundsSheet(const Database& database);

/// The current-value table, with one price a fund; throws ArithmeticError where
/// currentValueTable does.
Sheet currentValueSheet(const Database& database, std::span<const Currency> prices);

}  // namespace mirelund

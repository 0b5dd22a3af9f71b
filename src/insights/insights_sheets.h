// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of Insights as typed tables: funds in table order, then dates; no totals
// rows; what is not computed is empty. Throws std::bad_alloc, ArithmeticError.
#pragma once

#include <vector>

#include "export/sheet.h"
#include "insights/annual_return.h"
#include "insights/gains.h"
#include "insights/years.h"

namespace mirelund {

/// "gains", a row a disposal, and "totals", a row a fund.
std::vector<Sheet> gainsSheets(const Database& database, const Gains& gains);

/// "return", a row a fund. Several rates stand in one cell.
std::vector<Sheet> returnSheets(const Database& database, const Returns& returns);

/// "years", a row a year of a fund.
std::vector<Sheet> yearsSheets(const Database& database, const Years& years);

}  // namespace mirelund

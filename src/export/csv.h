// SPDX-License-Identifier: GPL-3.0-or-later
// A table as comma-separated values.
//
//     fund,date,gain            the headings
//     Alder,2024-02-29,12.5000  UTF-8 without a mark, each line ended by CR LF
//     "Birch, ""B""",,          what is not there is empty
//     '=1+1,2024-03-01,-1.0000  a text, whatever a spreadsheet would read
#pragma once

#include <string>

#include "export/sheet.h"

namespace mirelund {

/// The sheet as RFC 4180 has it: a cell with a comma, a quote, CR or LF stands in
/// quotes, its quotes doubled. Amounts have the decimals of their column, rounded as
/// amountText does. A text that begins with =, +, - or @, which a spreadsheet would take
/// for a formula, gets an apostrophe in front. A table of one column with an empty cell
/// has that cell in quotes, for an empty line would be none.
std::string csvText(const Sheet& sheet);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Tables as a workbook of Office Open XML (ECMA-376), which spreadsheets read.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "export/sheet.h"

namespace mirelund {

/// False where the part of the program that makes workbooks is not installed.
bool canMakeXlsx();

/// The bytes of a workbook with a sheet for each, in order; the same bytes for the same
/// sheets, at any time and in any of the desktop's languages. The headings are bold and
/// stay in view, columns are as wide as what is in them.
///
/// A text is a text, whatever it looks like, up to the 32,767 characters that a cell
/// takes; what follows is left out. Control characters are written by their numbers, as
/// the standard has it ("_x0001_", section 22.9.2.19). Amounts and whole numbers are numbers: a
/// spreadsheet counts in doubles, so that of more than 15 digits (from 100,000,000,000.0000 on) the
/// last may be another one. An amount is rounded to its column's decimals and shown with them. A
/// day is a day, shown as yyyy-mm-dd; one before March 1900, which spreadsheets count differently
/// or not at all, is such a text.
///
/// Nothing without that part, where memory lacks, or room for the short-lived files that the
/// library works with: they have no name when they hold something, and lie in the system's shared
/// memory where it has that. Throws std::bad_alloc alone. A sheet's name has 1 to 31
/// characters and none of []:*?/\.
std::optional<std::string> xlsxBytes(std::span<const Sheet> sheets);

}  // namespace mirelund

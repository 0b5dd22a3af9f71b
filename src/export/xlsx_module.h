// SPDX-License-Identifier: GPL-3.0-or-later
// What is loaded when a workbook is made, and not before: the library that makes it brings
// others along, which would cost every start of the program a tenth of its time.
#pragma once

#include <cstddef>
#include <string>

#include "export/sheet.h"

/// xlsxBytes at work: false where that has nothing.
extern "C" bool mirelundMakeXlsx(const mirelund::Sheet* sheets, std::size_t count,
                                 std::string* bytes);

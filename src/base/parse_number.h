// SPDX-License-Identifier: GPL-3.0-or-later
// Typed text to a number.
#pragma once

#include <string_view>

namespace mirelund {

/// The number at the front of a typed text. Leading blanks, tabs and line feeds
/// are skipped; an optional sign, then digits with at most one ".", blanks
/// between them ignored; the first other character ends it ("$", ",", "%"
/// among them). Nothing readable gives 0; a number beyond the doubles gives an
/// infinity, which ToCurrency refuses.
double ParseNumber(std::string_view text);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// A number as a pattern shows it.
#pragma once

#include <string>
#include <string_view>

#include "app/pattern.h"
#include "base/currency.h"

namespace mirelund {

/// The money symbol in front of amounts in boxes, labels and help texts.
inline constexpr std::string_view MoneySymbol = "$";

/// The value as the pattern shows it, rounded to the pattern's decimals half
/// away from zero. All integer digits are shown, however few places the pattern
/// has. A negative value keeps its "-" even where it rounds to zero ("-.00").
/// Currency is formatted from its integer; with "%" its hundredfold must be a
/// Currency too, else ArithmeticError is thrown.
std::string FormatNumber(Currency value, const Pattern& pattern);

/// The same for a double, which is first taken at its 15 significant decimal
/// digits, so that binary noise never decides a digit; "%" shifts the decimal
/// point. Throws ArithmeticError for a NaN or an infinity.
std::string FormatNumber(double value, const Pattern& pattern);

}  // namespace mirelund

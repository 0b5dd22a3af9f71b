// SPDX-License-Identifier: GPL-3.0-or-later
// What a number cannot be, and the one check that says so.
#pragma once

#include <stdexcept>

namespace mirelund {

/// A result that the program's numbers cannot hold: a Currency beyond
/// ±922,337,203,685,477.5807, a division by zero, the logarithm of a number
/// that is not positive, a NaN, a place outside a table. Handlers turn it into a
/// numbered message.
class ArithmeticError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws ArithmeticError(what).
[[noreturn]] void refuse(const char* what);

/// Throws ArithmeticError(what) unless `condition` holds. The processor does not
/// stop at a division by zero or a NaN: formulas do, with this.
constexpr void require(bool condition, const char* what) {
  if (!condition) refuse(what);
}

}  // namespace mirelund

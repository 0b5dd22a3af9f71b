// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the guide's formulas as the reader does and works them out: the mathematics
// of TeX as far as the guide goes, and the same written plainly.
//
//     \left(\frac{V}{C}\right)^{1/N} - 1      P (1 + i)^n      \ln(M - r P)
//
// Known are numbers, + - / ^ and products (\cdot, \times or nothing between the
// factors), ( ) { } \left \right, \frac, \ln, \lfloor \rfloor, \text{...} and letters,
// Latin or Greek, with what stands below and beside them (v_{t-1}, v') as their name.
#pragma once

#include <QMap>
#include <QString>
#include <stdexcept>

namespace mirelund::testing {

/// What cannot be read, or has no value.
class BadFormula : public std::runtime_error {
 public:
  explicit BadFormula(const QString& why) : std::runtime_error(why.toStdString()) {}
};

using Quantities = QMap<QString, double>;

/// The value of a formula's right side; throws BadFormula.
double valueOf(const QString& formula, const Quantities& known);

}  // namespace mirelund::testing

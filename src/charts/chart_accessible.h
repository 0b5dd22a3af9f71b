// SPDX-License-Identifier: GPL-3.0-or-later
// A chart as a screen reader has it: a list of its bars, each a name with its value.
#pragma once

namespace mirelund {

/// For the whole program, once.
void installChartAccessibility();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the calculator pages, in tab order.
#pragma once

#include <span>

#include "app/calculator_page.h"

namespace mirelund {

std::span<const CalculatorPageEntry> calculatorPages();

}  // namespace mirelund

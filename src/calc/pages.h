// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the calculator pages, in tab order.
#pragma once

#include <cstdint>
#include <span>

#include "app/calculator_page.h"

namespace mirelund {

enum class CalculatorPageIndex : std::int16_t {
  PensionGrowth,
  Mortgage,
  InvestmentGrowth,
  RetirementIncome,
  CompoundGain,
  CapitalRequired,
};

/// The page that the window opens with.
inline constexpr auto kStartPage = CalculatorPageIndex::InvestmentGrowth;

std::span<const CalculatorPageEntry> calculatorPages();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The boxes of all calculators, by page.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "calc/capital_required.h"
#include "calc/compound_gain.h"
#include "calc/investment_growth.h"
#include "calc/mortgage.h"
#include "calc/pension_growth.h"
#include "calc/retirement_income.h"

namespace mirelund {

/// In tab order.
inline constexpr std::array<std::span<const BoxRule>, 6> kBoxTables = {
    kPensionGrowthBoxes,    kMortgageBoxes,     kInvestmentGrowthBoxes,
    kRetirementIncomeBoxes, kCompoundGainBoxes, kCapitalRequiredBoxes};

/// Calls `use(page, rule)` for every row.
template <typename Use>
void forEachBox(Use use) {
  for (std::size_t page = 0; page < kBoxTables.size(); ++page)
    for (const BoxRule& rule : kBoxTables[page]) use(static_cast<int>(page), rule);
}

/// A stored number, as the box shows it.
inline std::string shownAs(const BoxRule& rule, double value) {
  BoxState boxes;
  if (rule.store == BoxStore::MortgageInputs)
    boxes.MortgageInputs[rule.slot] = value;
  else
    boxes.InputValues[rule.slot] = ToCurrency(value);
  return boxText(boxes, rule);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/pages.h"

#include <array>

#include "base/table.h"
#include "calc/capital_required_page.h"
#include "calc/compound_gain_page.h"
#include "calc/investment_growth_page.h"
#include "calc/mortgage_page.h"
#include "calc/pension_growth_page.h"
#include "calc/retirement_income_page.h"

namespace mirelund {

namespace {

template <typename Page>
CalculatorPage* make(PageHost& host) {
  return new Page(host);
}

using Page = CalculatorPageIndex;

constexpr auto kPages = std::to_array<CalculatorPageEntry>({
    {Page::PensionGrowth, "Pension growth", make<PensionGrowthPage>},
    {Page::Mortgage, "Mortgage tables", make<MortgagePage>, true},
    {Page::InvestmentGrowth, "Invested growth", make<InvestmentGrowthPage>},
    {Page::RetirementIncome, "Retired income", make<RetirementIncomePage>},
    {Page::CompoundGain, "Compound gain", make<CompoundGainPage>},
    {Page::CapitalRequired, " Capital required", make<CapitalRequiredPage>},
});
static_assert(standsInOrder(kPages, &CalculatorPageEntry::page));

}  // namespace

std::span<const CalculatorPageEntry> calculatorPages() {
  return kPages;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/pages.h"

#include "calc/capital_required_page.h"
#include "calc/compound_gain_page.h"
#include "calc/investment_growth_page.h"
#include "calc/mortgage_page.h"
#include "calc/pension_growth_page.h"
#include "calc/retirement_income_page.h"

namespace mirelund {

namespace {

template <typename Page>
std::unique_ptr<CalculatorPage> make(PageHost& host) {
  return std::make_unique<Page>(host);
}

constexpr CalculatorPageEntry kPages[] = {
    {"Pension growth", make<PensionGrowthPage>},
    {"Mortgage tables", make<MortgagePage>},
    {"Invested growth", make<InvestmentGrowthPage>},
    {"Retired income", make<RetirementIncomePage>},
    {"Compound gain", make<CompoundGainPage>},
    {" Capital required", make<CapitalRequiredPage>},
};

}  // namespace

std::span<const CalculatorPageEntry> calculatorPages() {
  return kPages;
}

}  // namespace mirelund

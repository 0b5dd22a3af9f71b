// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/page_script.h"

#include <algorithm>
#include <deque>
#include <fstream>
#include <iterator>
#include <optional>
#include <span>
#include <stdexcept>
#include <utility>

#include "calc/capital_required.h"
#include "calc/compound_gain.h"
#include "calc/pension_growth.h"
#include "calc/retirement_income.h"

namespace mirelund {

namespace {

using Page = CalculatorPageIndex;

constexpr std::pair<std::string_view, Page> kPages[] = {
    {"PensionGrowth", Page::PensionGrowth},       {"Mortgage", Page::Mortgage},
    {"InvestmentGrowth", Page::InvestmentGrowth}, {"RetirementIncome", Page::RetirementIncome},
    {"CompoundGain", Page::CompoundGain},         {"CapitalRequired", Page::CapitalRequired},
};

[[noreturn]] void fail(std::string_view what, std::string_view about) {
  throw std::runtime_error(std::string(what) + ": " + std::string(about));
}

// The n of NAME_n, where `option` is one of them.
std::optional<std::size_t> element(std::string_view option, std::string_view name) {
  if (!option.starts_with(name) || option.size() != name.size() + 2) return {};
  return static_cast<std::size_t>(option.back() - '0');
}

template <typename Rows>
auto chosen(const Rows& rows, std::string_view text) {
  for (const auto& row : rows)
    if (row.text == text) return row;
  fail("not in the list", text);
}

}  // namespace

PageScript::PageScript(std::string_view page) {
  const auto* found = std::find_if(std::begin(kPages), std::end(kPages),
                                   [&](const auto& p) { return p.first == page; });
  if (found == std::end(kPages)) fail("no such page", page);
  page_ = found->second;
  resetCalculators(global_);
  for (const BoxRule& box : boxRules())
    if (box.page == page_ && box.option == 0 && box.store != BoxStore::None)
      texts_[std::string(box.name)] = loadBox(global_, box);
  if (page_ == Page::CompoundGain) texts_["CGInNameOfInvest"] = "XYZ Mutual Fund";
  if (page_ == Page::Mortgage) mortgageTexts_ = loadMortgage(global_);
  if (page_ == Page::RetirementIncome)
    show(switchWithdrawalOption(global_, WithdrawalChoice::Percentage));
  if (page_ == Page::CapitalRequired) show(switchCapitalOption(global_, CapitalTarget::Capital));
}

const BoxRule& PageScript::rule(std::string_view box) const {
  const BoxRule& found = boxRule(box, option_);
  if (found.page != page_) fail("not on this page", box);
  return found;
}

std::string& PageScript::text(std::string_view box) {
  if (box == "MTInPrincipal") return mortgageTexts_.principal;
  if (box == "MTInRate") return mortgageTexts_.rate;
  if (box == "MTInTerm") return mortgageTexts_.term;
  if (box == "MTInMthPayment") return mortgageTexts_.payment;
  return texts_[std::string(box)];
}

void PageScript::show(const std::vector<ShownText>& texts) {
  for (const ShownText& shown : texts) texts_[std::string(shown.control)] = shown.text;
}

void PageScript::show(const Outcome& outcome) {
  if (outcome.showResults) results_ = outcome.results;
  if (outcome.message != 0) messages_.push_back("message " + std::to_string(outcome.message));
}

void PageScript::show(const MortgageOutcome& outcome) {
  show(outcome.outcome);
  if (!outcome.platformMessage.empty())
    messages_.push_back("platform " + std::string(outcome.platformMessage));
}

void PageScript::recalculate() {
  show(recalculateMortgage(global_, mortgage_, mortgageTexts_));
}

void PageScript::set(std::string_view control, std::string_view entered) {
  if (control == "IGInMonthsYrs") {
    frequency_ = chosen(kContributionFrequencies, entered).frequency;
    return;
  }
  if (control == "MTCompPeriod") {
    mortgage_.compounding = chosen(kCompoundingPeriods, entered).period;
    return;
  }
  if (control == "MTFreqPmt") {
    mortgage_.frequency = chosen(kPaymentFrequencies, entered).frequency;
    leaveDaysInYear(global_, mortgage_.frequency);
    recalculate();
    return;
  }
  const BoxRule& box = rule(control);
  std::string& shown = text(control);
  for (const char key : entered) {
    const KeyPressed pressed = pressKey(global_, box.filter, box.extraDecimals, shown, key);
    if (pressed.emptyFirst) shown.clear();
    if (pressed.passed) shown += key;
  }
  const BoxLeft left = leaveBox(global_, box, shown);
  if (left.changed) shown = left.text;
  if (left.message != 0) messages_.push_back("message " + std::to_string(left.message));
  if (page_ == Page::Mortgage) recalculate();
}

void PageScript::click(std::string_view option) {
  if (const auto n = element(option, "CRCapitalChoices")) {
    option_ = static_cast<int>(*n);
    results_.clear();
    show(switchCapitalOption(global_, kCapitalTargets.at(*n).target));
  } else if (const auto choice = element(option, "RIWDrawalChoice")) {
    option_ = static_cast<int>(*choice);
    results_.clear();
    show(switchWithdrawalOption(global_, kWithdrawalChoices.at(*choice).choice));
  } else if (const auto results = element(option, "IGResultsChoice")) {
    growthResults_ = static_cast<GrowthResults>(*results);
  } else if (const auto days = element(option, "MTIRFactor")) {
    global_.DaysOption = static_cast<std::int16_t>(*days);
    leaveDaysInYear(global_, mortgage_.frequency);
    recalculate();
  } else {
    for (const SolveForRow& row : kSolveFor)
      if (row.option == option) {
        mortgage_.solveFor = row.solveFor;
        return;
      }
    fail("no such option", option);
  }
}

Outcome PageScript::calculate() {
  switch (page_) {
    case Page::CompoundGain:
      return calculateCompoundGain(global_, {text("CGInCostofInvest"), text("CGInValueNow"),
                                             text("CGInNumOfYrs"), text("CGInNameOfInvest")});
    case Page::CapitalRequired:
      return calculateCapitalRequired(
          global_, {text("CRInCapitalReq"), text("CRInIntGrowthRate"), text("CRInTimeInYrs")});
    case Page::InvestmentGrowth:
      return calculateInvestmentGrowth(
          global_, {text("IGInBegBal"), text("IGInEachContrib"), frequency_,
                    text("IGInIntGrowthRate"), text("IGInAnnContribRate"),
                    text("IGInAnninFlatRate"), text("IGInYearsInvested"), growthResults_});
    case Page::PensionGrowth:
      return calculatePensionGrowth(
          global_,
          {text("PGInCurrBalance"), text("PGInCurrAnnSalary"), text("PGInAnnContribRate"),
           text("PGInCompAnnContribRate"), text("PGInEstSalIncrease"), text("PGInAnnIntGrowthRate"),
           text("PGInEstAnnFlatRate"), text("PGInNumYearsToRetire")});
    case Page::RetirementIncome:
      return calculateRetirementIncome(global_,
                                       {text("RIInCurrValue"), text("RIInAnnIntGrowthRate"),
                                        text("RIInAnnIncWDrawnRate"), text("RIInTimeInYrs")});
    case Page::Mortgage:
      break;  // has an outcome of its own
  }
  throw std::logic_error("a page without a calculation");
}

std::string PageScript::help() const {
  switch (page_) {
    case Page::CompoundGain:
      return compoundGainHelp();
    case Page::CapitalRequired:
      return capitalRequiredHelp();
    case Page::InvestmentGrowth:
      return investmentGrowthHelp();
    case Page::PensionGrowth:
      return pensionGrowthHelp();
    case Page::RetirementIncome:
      return retirementIncomeHelp(kWithdrawalChoices.at(static_cast<std::size_t>(option_)).choice);
    case Page::Mortgage:
      return mortgageHelp();
  }
  throw std::logic_error("a page without help");
}

void PageScript::press(std::string_view button) {
  if (button.ends_with("Help"))
    show(showHelp(global_, help()));
  else if (!button.ends_with("Calculate"))
    fail("no such button", button);
  else if (page_ == Page::Mortgage)
    show(calculateMortgage(global_, mortgage_, mortgageTexts_));
  else
    show(calculate());
}

ScriptFile::ScriptFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(in), {}};
  constexpr std::string_view kSeparator = "\n----\n";
  const auto at = whole.find(kSeparator);
  if (at == std::string::npos) fail("no results in", path.string());
  script = whole.substr(0, at + kSeparator.size());
  results = whole.substr(at + kSeparator.size());
}

void ScriptFile::save(const std::filesystem::path& path) const {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << script << results;
}

std::string playScript(std::string_view script) {
  std::optional<PageScript> page;
  std::deque<std::string> shown;
  while (!script.empty()) {
    const auto end = script.find('\n');
    const std::string_view line = script.substr(0, end);
    script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
    if (line.starts_with('#') || line.empty()) continue;
    if (line == "----") break;
    const auto rest = [&line](std::string_view word) { return line.substr(word.size()); };
    if (line.starts_with("page ")) {
      page.emplace(rest("page "));
      continue;
    }
    if (!page) fail("no page yet", line);
    if (line.starts_with("message ") || line.starts_with("platform ")) {
      if (shown.empty() || shown.front() != line) fail("not shown", line);
      shown.pop_front();
      continue;
    }
    if (!shown.empty()) fail("shown, and not in the script", shown.front());
    const auto equals = line.find(" = ");
    if (line.starts_with("press "))
      page->press(rest("press "));
    else if (line.starts_with("click "))
      page->click(rest("click "));
    else if (equals != std::string_view::npos)
      page->set(line.substr(0, equals), line.substr(equals + 3));
    else
      fail("not understood", line);
    for (auto& message : page->takeMessages()) shown.push_back(std::move(message));
  }
  if (!shown.empty()) fail("shown, and not in the script", shown.front());
  if (!page) fail("no page in", "the script");
  std::string results = page->results();
  std::erase(results, '\r');
  return results;
}

}  // namespace mirelund

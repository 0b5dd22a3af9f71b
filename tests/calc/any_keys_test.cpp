// SPDX-License-Identifier: GPL-3.0-or-later
// Any keys, in any box, in any order: every page answers with a report or with a
// message of its table.
#include <set>

#include "app/input_boxes.h"
#include "calc/calculator_testing.h"
#include "calc/page_script.h"

namespace mirelund {
namespace {

struct PageControls {
  const char* page;
  const char* prefix;
  std::vector<std::string> options;
  std::vector<std::pair<std::string, std::string>> lists;
};

const std::vector<PageControls>& pages() {
  static const std::vector<PageControls> kPages = {
      {"CompoundGain", "CG", {}, {}},
      {"CapitalRequired", "CR", {"CRCapitalChoices_0", "CRCapitalChoices_1"}, {}},
      {"InvestmentGrowth",
       "IG",
       {"IGResultsChoice_0", "IGResultsChoice_1"},
       {{"IGInMonthsYrs", "Annually"},
        {"IGInMonthsYrs", "Quarterly"},
        {"IGInMonthsYrs", "Monthly"}}},
      {"PensionGrowth", "PG", {}, {}},
      {"RetirementIncome", "RI", {"RIWDrawalChoice_0", "RIWDrawalChoice_1"}, {}},
      {"Mortgage",
       "MT",
       {"MTPaymentOpt", "MTPrincipalOpt", "MTTermOpt", "MTIRFactor_0", "MTIRFactor_5"},
       {{"MTFreqPmt", "Monthly"},
        {"MTFreqPmt", "1 Week"},
        {"MTFreqPmt", "Biweekly(acl)"},
        {"MTCompPeriod", "Annual"},
        {"MTCompPeriod", "Quarterly"}}}};
  return kPages;
}

std::vector<std::string> boxesOf(const PageControls& page) {
  std::set<std::string> names;
  for (const BoxRule& rule : boxRules())
    if (rule.name.starts_with(page.prefix)) names.emplace(rule.name);
  return {names.begin(), names.end()};
}

RC_GTEST_PROP(AnyKeys, EndInAReportOrAMessage, ()) {
  const auto page = *rc::gen::elementOf(pages());
  const auto boxes = boxesOf(page);
  const auto keys = rc::gen::container<std::string>(
      rc::gen::weightedElement<char>({{6, '0'}, {2, '1'}, {2, '5'}, {2, '9'}, {1, '.'}, {1, '-'}}));
  PageScript script(page.page);
  const int steps = *rc::gen::inRange(1, 30);
  for (int step = 0; step < steps; ++step) {
    switch (*rc::gen::inRange(0, 5)) {
      case 0:
        if (!page.options.empty()) script.click(*rc::gen::elementOf(page.options));
        break;
      case 1:
        if (!page.lists.empty()) {
          const auto [list, text] = *rc::gen::elementOf(page.lists);
          script.set(list, text);
        }
        break;
      case 2:
        script.press(std::string(page.prefix) + "Calculate");
        break;
      default:
        script.set(*rc::gen::elementOf(boxes), *keys);
    }
    RC_ASSERT(!showsNoNumber(script.results()));
    for (const auto& message : script.takeMessages()) {
      static const std::set<std::string> kKnown = {"message 3", "message 5", "message 7",
                                                   "message 8", "message 18"};
      RC_ASSERT(kKnown.contains(message) || message.starts_with("platform Payment is too "));
    }
  }
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Plays every script in golden/ and compares the report character for character.
// Set MIRELUND_REWRITE_GOLDEN=1 to have the reports rewritten instead, after a
// change of a report that is meant; a failing run changes nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "calc/page_script.h"

namespace mirelund {
namespace {

std::vector<std::string> goldenNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(MIRELUND_TEST_DATA "/golden"))
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem().string());
  std::sort(names.begin(), names.end());
  return names;
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, Report) {
  const std::filesystem::path path = MIRELUND_TEST_DATA "/golden/" + GetParam() + ".txt";
  ScriptFile file(path);
  const std::string played = playScript(file.script);
  if (std::getenv("MIRELUND_REWRITE_GOLDEN") != nullptr) {
    file.results = played;
    file.save(path);
    GTEST_SKIP() << "rewritten: " << path;
  }
  EXPECT_EQ(played, file.results);
}

INSTANTIATE_TEST_SUITE_P(Reports, Golden, testing::ValuesIn(goldenNames()),
                         [](const auto& golden) { return golden.param; });

TEST(GoldenReports, AreTwentyOfEachCalculator) {
  const auto names = goldenNames();
  for (const char* calculator : {"compound_gain", "capital_required", "investment_growth",
                                 "pension_growth", "mortgage", "retirement_income"})
    EXPECT_GE(std::count_if(names.begin(), names.end(),
                            [&](const auto& name) { return name.starts_with(calculator); }),
              20)
        << calculator;
}

struct BadScript {
  const char* rule;
  const char* script;
};

constexpr BadScript kBad[] = {
    {"no page", "CRInTimeInYrs = 5\n"},
    {"an unknown page", "page Lottery\n"},
    {"an unknown button", "page CapitalRequired\npress CRGuess\n"},
    {"a box of another page", "page CapitalRequired\nMTInTerm = 5\n"},
    {"an unknown option", "page CapitalRequired\nclick CRWhatever_1\n"},
    {"not in the list", "page InvestmentGrowth\nIGInMonthsYrs = Daily\n"},
    {"a message that was not shown", "page CapitalRequired\npress CRCalculate\nmessage 3\n"},
    {"a message that is not in the script", "page CapitalRequired\nCRInTimeInYrs = 41\n"},
    {"no sense", "page CapitalRequired\nhello\n"},
    {"nothing at all", ""},
};

TEST(PageScript, RefusesWhatItDoesNotUnderstand) {
  for (const auto& c : kBad) EXPECT_ANY_THROW(playScript(c.script)) << c.rule;
}

}  // namespace
}  // namespace mirelund

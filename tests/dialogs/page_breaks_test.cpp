// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/page_breaks.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace mirelund {
namespace {

using Starts = std::vector<std::size_t>;

const std::string kUnderline(90, '_');

// One line a letter: "_" an underline, anything else a line of text.
std::vector<std::string> lines(std::string_view letters) {
  std::vector<std::string> all;
  for (const char letter : letters) all.emplace_back(letter == '_' ? kUnderline : "Text");
  return all;
}

struct Case {
  const char* rule;
  const char* lines;
  std::size_t perPage;
  Starts starts;
};

const Case kCases[] = {
    {"nothing is one page", "", 5, {0}},
    {"what fits is one page", "....", 4, {0}},
    {"a line more is another", ".....", 4, {0, 4}},
    {"pages are filled", ".........", 4, {0, 4, 8}},
    {"a heading whose underline would be next goes on", "...hh_..t", 5, {0, 3, 8}},
    {"a heading cut in its middle goes on", "....hh_..t", 5, {0, 4, 9}},
    {"a heading without its first line goes on", "..hh_..tt", 5, {0, 2, 7}},
    {"a heading with one first line goes on", ".hh_..tt", 5, {0, 1, 6}},
    {"a heading with two first lines stays", "hh_..tt", 5, {0, 5}},
    {"totals take two lines with them", "......_ta", 7, {0, 4}},
    {"a short table with its totals stays whole", "...hh_.._tahh_..", 12, {0, 11}},
    {"a heading at the very beginning", "_....", 3, {0, 3}},
    {"an underline at the very end", "....._", 5, {0, 3}},
    {"what no page holds is cut", "hh_._._._._.", 5, {0, 5, 10}},
    {"no page holds nothing", "...", 0, {0, 1, 2}},
};

TEST(PageBreaks, HeadingsStayWithTheirFirstLines) {
  for (const Case& c : kCases) EXPECT_EQ(pageStarts(lines(c.lines), c.perPage), c.starts) << c.rule;
}

TEST(PageBreaks, AnUnderlineIsTenOrMoreAndNothingElse) {
  const std::vector<std::string> tail(4, "Text");
  for (const auto& [line, holds] : {std::pair("_________", false),
                                    {"__________", true},
                                    {"__________ ", false},
                                    {" __________", false}}) {
    std::vector<std::string> all{"Text", "Text", "Text", "Heading", line};
    all.insert(all.end(), tail.begin(), tail.end());
    EXPECT_EQ(pageStarts(all, 5)[1], holds ? 2U : 5U) << line;
  }
}

RC_GTEST_PROP(PageBreaks, PagesAreNeverTooLongNorEmpty, ()) {
  const auto letters = *rc::gen::container<std::string>(rc::gen::element('.', '.', '.', '_'));
  const auto perPage = *rc::gen::inRange<std::size_t>(1, 40);
  Starts starts = pageStarts(lines(letters), perPage);
  RC_ASSERT(starts.front() == 0U);
  starts.push_back(letters.size());
  for (std::size_t i = 1; i < starts.size(); ++i) {
    RC_ASSERT(starts[i] > starts[i - 1] || letters.empty());
    RC_ASSERT(starts[i] - starts[i - 1] <= perPage);
  }
}

}  // namespace
}  // namespace mirelund

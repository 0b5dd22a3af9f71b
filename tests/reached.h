// SPDX-License-Identifier: GPL-3.0-or-later
// Properties that end some of their cases early: what they hold must still be asked
// of most cases, or of enough cases of each kind.
#pragma once

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <string_view>

namespace mirelund {

/// A number from `min` to below `max`, whatever the size of the case: rc::gen::inRange
/// draws from the whole range in the last cases alone, and at first `min` only.
template <typename T>
rc::Gen<T> anyIn(T min, T max) {
  return rc::gen::resize(rc::kNominalSize, rc::gen::inRange<T>(min, max));
}

/// A place in a property and the share of the cases drawn that must come to it.
struct Goal {
  std::string_view place;
  double least = 0.9;
};

/// Counts the cases that came to each place.
class Reached {
 public:
  /// To be called once a case and place, when nothing is left to be asked there.
  void operator()(std::string_view place = "end") { ++counts_[std::string(place)]; }
  int count(std::string_view place) const {
    const auto at = counts_.find(place);
    return at == counts_.end() ? 0 : at->second;
  }

 private:
  std::map<std::string, int, std::less<>> counts_;
};

/// RC_GTEST_PROP in a TEST of one's own, for a property that returns early, catches,
/// or discards with RC_PRE: `property(reached)` runs for every case, and the test
/// fails when fewer cases than a goal's share came to its place. Discarded cases are
/// among the cases drawn; of a few, as when a failure is reproduced, nothing is asked.
/// A hundred cases may miss a share by chance, once in forty where it is 20 percent of
/// 28 that the generator gives: where they do, ten times as many are drawn beside them,
/// and all are counted. The percentages are recorded as test properties.
template <typename Property>
void checkReaching(std::initializer_list<Goal> goals, Property property) {
  Reached reached;
  int cases = 0;
  const auto counted = [&] {
    ++cases;
    property(reached);
  };
  const auto missed = [&](const Goal& goal) {
    return reached.count(goal.place) < goal.least * cases;
  };
  constexpr int kFewestCases = 50;
  rc::detail::checkGTest(counted);
  if (testing::Test::HasFailure() || cases < kFewestCases) return;
  if (std::ranges::any_of(goals, missed)) {
    rc::detail::Configuration others = rc::detail::configuration();
    others.testParams.maxSuccess *= 10;
    ++others.testParams.seed;
    const auto result =
        rc::detail::checkTestable(counted, rc::detail::TestMetadata(), others.testParams);
    std::ostringstream message;
    rc::detail::printResultMessage(result, message);
    if (!result.template is<rc::detail::SuccessResult>())
      FAIL() << message.str() << "\nRC_PARAMS: " << rc::detail::configToMinimalString(others);
  }
  for (const Goal& goal : goals) {
    const int count = reached.count(goal.place);
    testing::Test::RecordProperty("percent of " + std::string(goal.place), count * 100 / cases);
    EXPECT_FALSE(missed(goal)) << count << " of " << cases << " cases came to: " << goal.place;
  }
}

/// The same for a property with one place to come to, its end.
template <typename Property>
void checkReaching(Property property) {
  checkReaching({{"end"}}, property);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_name.h"

#include <gtest/gtest.h>

namespace mirelund {
namespace {

struct Named {
  const char* rule;
  const char* path;
  const char* name;
  const char* withEnding;
};

constexpr Named kCases[] = {
    {"a name without an ending gets it", "/home/ann/mine", "mine", "/home/ann/mine.PQD"},
    {"any ending is one", "/home/ann/mine.txt", "mine.txt", "/home/ann/mine.txt"},
    {"the ending itself is not doubled", "mine.PQD", "mine.PQD", "mine.PQD"},
    {"a point at the end is an ending", "mine.", "mine.", "mine."},
    {"a hidden name has none", "/home/ann/.mine", ".mine", "/home/ann/.mine.PQD"},
    {"a hidden name with one", ".mine.PQD", ".mine.PQD", ".mine.PQD"},
    {"a folder's point is not the name's", "/home/a.b/mine", "mine", "/home/a.b/mine.PQD"},
    {"no folder", "mine", "mine", "mine.PQD"},
};

TEST(FileName, IsWhatStandsBehindTheLastSlash) {
  for (const auto& c : kCases) EXPECT_EQ(fileName(c.path), c.name) << c.rule;
  EXPECT_EQ(fileName("/home/ann/"), "");
  EXPECT_EQ(fileName(""), "");
}

TEST(FileName, GetsAnEndingWhereItHasNone) {
  for (const auto& c : kCases) EXPECT_EQ(withEnding(c.path, ".PQD"), c.withEnding) << c.rule;
}

TEST(FileName, ItsEndingIsInSmallLetters) {
  EXPECT_EQ(endingOf("/home/a.b/mine.CSV"), ".csv");
  EXPECT_EQ(endingOf("mine.tar.Xlsx"), ".xlsx");
  EXPECT_EQ(endingOf("mine."), ".");
  EXPECT_EQ(endingOf("/home/a.b/mine"), "");
  EXPECT_EQ(endingOf(".csv"), "");
  EXPECT_EQ(endingOf(""), "");
}

}  // namespace
}  // namespace mirelund

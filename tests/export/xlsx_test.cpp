// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/xlsx.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>

#include "files.h"

namespace mirelund {
namespace {

const Sheet kSheet{"Records",
                   {{"Name", 0}, {"Amount", 4}},
                   {{std::string("Alder"), Currency::fromTenThousandths(15'000)}}};

std::string bytesOf(const std::vector<Sheet>& sheets) {
  return xlsxBytes(sheets).value_or("");
}

TEST(XlsxBytes, AreAnArchiveAndTheSameAtAnyTime) {
  const std::string first = bytesOf({kSheet});
  ASSERT_TRUE(first.starts_with("PK\x03\x04"));
  // What the archive and the document bear is a day of their own, not this one.
  EXPECT_EQ(bytesOf({kSheet}), first);
}

// Played again in a copy of this program that stands alone.
TEST(XlsxBytes, AreNotMadeWhereTheirPartIsMissing) {
  const Folder folder;
  if (std::getenv("MIRELUND_STANDS_ALONE") != nullptr) {
    EXPECT_FALSE(canMakeXlsx());
    EXPECT_FALSE(xlsxBytes(std::vector<Sheet>{kSheet}).has_value());
    return;
  }
  EXPECT_TRUE(canMakeXlsx());
  std::filesystem::copy_file("/proc/self/exe", folder.file("alone"));
  const std::string command = "MIRELUND_STANDS_ALONE=1 " + folder.file("alone") +
                              " --gtest_filter=*AreNotMadeWhere* >" + folder.file("said");
  EXPECT_EQ(std::system(command.c_str()), 0);  // NOLINT(cert-env33-c)
  EXPECT_NE(contents(folder.file("said")).find("[  PASSED  ] 1 test"), std::string::npos);
}

TEST(XlsxBytes, RefuseWhatIsNoWorkbook) {
  Sheet nameless = kSheet;
  nameless.name = "a/b";
  EXPECT_FALSE(xlsxBytes(std::vector<Sheet>{nameless}).has_value());
  EXPECT_FALSE(xlsxBytes(std::vector<Sheet>{kSheet, kSheet}).has_value()) << "two of one name";
}

TEST(XlsxBytes, LeaveNoFileOpen) {
  const auto open = [] {
    int count = 0;
    for (int descriptor = 0; descriptor < 200; ++descriptor)
      if (fcntl(descriptor, F_GETFD) != -1) ++count;
    return count;
  };
  bytesOf({kSheet});
  const int before = open();
  for (int i = 0; i < 5; ++i) bytesOf({kSheet});
  EXPECT_EQ(open(), before);
}

TEST(XlsxBytes, LeaveTheLanguageAsItWas) {
  const locale_t before = uselocale({});
  bytesOf({kSheet});
  EXPECT_EQ(uselocale({}), before);
}

TEST(XlsxBytes, ATextIsCutAtWhatACellTakes) {
  Sheet longest = kSheet;
  longest.rows[0][0] = std::string(40'000, 'x');
  EXPECT_TRUE(xlsxBytes(std::vector<Sheet>{longest}).has_value());
  for (std::string& text = std::get<std::string>(longest.rows[0][0] = std::string());
       text.size() < 35'000;)
    text += "_x0041_";
  EXPECT_TRUE(xlsxBytes(std::vector<Sheet>{longest}).has_value());
}

}  // namespace
}  // namespace mirelund

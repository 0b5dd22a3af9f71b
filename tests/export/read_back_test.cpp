// SPDX-License-Identifier: GPL-3.0-or-later
// What a spreadsheet finds in the files: read by Gnumeric's converter, in two of the
// desktop's languages, written in each of them too. Without it the tests are skipped,
// unless MIRELUND_SPREADSHEET=needed.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <locale>
#include <map>
#include <regex>
#include <sstream>
#include <tuple>

#include "export/csv.h"
#include "export/xlsx.h"
#include "files.h"

// What the C library takes to look for a language in LOCPATH it does not give back.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:argz_add_sep\n";
}

namespace mirelund {
namespace {

struct Found {
  bool isText;
  std::string text;
  double number;
};
using Place = std::tuple<std::string, int, int>;  // sheet, row, column

bool runs(const std::string& command) {
  return std::system((command + " >/dev/null 2>&1").c_str()) == 0;  // NOLINT(cert-env33-c)
}

std::string plain(std::string text) {
  const std::pair<const char*, const char*> kEntities[] = {
      {"&quot;", "\""}, {"&apos;", "'"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}};
  for (const auto& [entity, character] : kEntities)
    text = std::regex_replace(text, std::regex(entity), character);
  return text;
}

// The German language in a folder of its own: few systems have it installed.
class Languages {
 public:
  Languages() {
    there_ = runs("localedef -i de_DE -f UTF-8 " + folder_.file("de_DE.UTF-8"));
    setenv("LOCPATH", folder_.path().c_str(), 1);
  }
  ~Languages() {
    unsetenv("LOCPATH");
    std::setlocale(LC_ALL, "C");
  }
  Languages(const Languages&) = delete;
  Languages& operator=(const Languages&) = delete;

  bool there() const { return there_; }

 private:
  Folder folder_;
  bool there_ = false;
};

class ReadBack : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const char* needed = std::getenv("MIRELUND_SPREADSHEET");
    if (runs("command -v ssconvert") && languages_.there()) {
      ASSERT_NE(std::setlocale(LC_ALL, GetParam()), nullptr);
      // The comma is what would go wrong.
      ASSERT_EQ(std::localeconv()->decimal_point,
                GetParam() == std::string("C.UTF-8") ? std::string(".") : std::string(","));
      return;
    }
    if (needed != nullptr && std::string(needed) == "needed") FAIL() << "gnumeric, locales";
    GTEST_SKIP() << "nothing read back: this takes gnumeric and locales";
  }

  std::map<Place, Found> cells(const std::string& file, const std::string& bytes) {
    write(folder_.file(file), bytes);
    const std::string options = file.ends_with(".csv") ? "-I Gnumeric_stf:stf_csvtab " : "";
    EXPECT_TRUE(runs("LC_ALL=" + std::string(GetParam()) + " HOME=" + folder_.path() +
                     " ssconvert " + options + "-T Gnumeric_XmlIO:sax:0 " + folder_.file(file) +
                     " " + folder_.file("read.xml")));
    xml_ = contents(folder_.file("read.xml"));
    std::map<Place, Found> found;
    std::string sheet;
    const std::regex token(
        "<gnm:Sheet [^>]*>\\s*<gnm:Name>([^<]*)<|"
        "<gnm:Cell Row=\"(\\d+)\" Col=\"(\\d+)\" ValueType=\"(\\d+)\"[^>]*>([^<]*)<");
    for (std::sregex_iterator at(xml_.begin(), xml_.end(), token), end; at != end; ++at) {
      const std::smatch& match = *at;
      if (match[1].matched) {
        sheet = match[1];
        continue;
      }
      const bool isText = match[4] == "60";
      const std::string text = plain(match[5]);
      found[{sheet, std::stoi(match[2]), std::stoi(match[3])}] = {isText, text,
                                                                  isText ? 0.0 : number(text)};
    }
    return found;
  }
  const std::string& xml() const { return xml_; }

 private:
  static double number(const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double value = 0.0;
    in >> value;
    return value;
  }

  Languages languages_;
  Folder folder_;
  std::string xml_;
};

Currency units(std::int64_t count) {
  return Currency::fromTenThousandths(count);
}

const std::string kNames[] = {"Alder",   "=1+1", "+1",         "-1",   "@x",
                              "007",     "1e5",  "2024-02-29", "TRUE", "  Birch, \"B\" <&>",
                              "Zürich €"};

Sheet allKinds() {
  Sheet sheet{"Records", {{"Name", 0}, {"Four", 4}, {"Two", 2}, {"Day", 0}, {"No.", 0}}, {}};
  const std::int64_t counts[] = {12'345'678, -1, 0, 999'999'999'999'999, -50};
  const Date days[] = {*Date::of(2024, 2, 29), *Date::of(1900, 3, 1), *Date::of(9999, 12, 31)};
  std::size_t i = 0;
  for (const std::string& name : kNames) {
    sheet.rows.push_back({name, units(counts[i % 5]), units(counts[i % 5]), days[i % 3],
                          static_cast<std::int64_t>(i)});
    ++i;
  }
  return sheet;
}

// Days since 1899-12-30, from a calendar: 2024-02-29 is 45,351; 1900-03-01 is 61;
// 9999-12-31 is 2,958,465.
constexpr double kDayNumbers[] = {45'351, 61, 2'958'465};
constexpr double kFour[] = {1234.5678, -0.0001, 0, 99'999'999'999.9999, -0.005};
constexpr double kTwo[] = {1234.57, 0, 0, 100'000'000'000.0, 0};

TEST_P(ReadBack, AWorkbookCellByCell) {
  const std::vector several{units(-123'456), units(50'000)};
  Sheet other{"totals",
              {{"fund", 0}, {"gain", 4}},
              {{std::string("Alder"), units(-5)}, {{}, {}}, {std::string("Birch"), several}}};
  const auto found = cells("book.xlsx", xlsxBytes(std::vector<Sheet>{allKinds(), other}).value());
  int row = 0;
  for (const std::string& name : kNames) {
    ++row;
    const auto at = [&](int column) { return found.at({"Records", row, column}); };
    EXPECT_TRUE(at(0).isText) << name;
    EXPECT_EQ(at(0).text, name);
    const int i = row - 1;
    EXPECT_FALSE(at(1).isText);
    EXPECT_DOUBLE_EQ(at(1).number, kFour[i % 5]) << name;
    EXPECT_FALSE(at(2).isText);
    EXPECT_DOUBLE_EQ(at(2).number, kTwo[i % 5]) << name;
    EXPECT_FALSE(at(3).isText);
    EXPECT_EQ(at(3).number, kDayNumbers[i % 3]);
    EXPECT_FALSE(at(4).isText);
    EXPECT_EQ(at(4).number, i);
  }
  EXPECT_EQ(found.at({"Records", 0, 3}).text, "Day");
  EXPECT_EQ(found.at({"totals", 0, 1}).text, "gain");
  EXPECT_DOUBLE_EQ(found.at({"totals", 1, 1}).number, -0.0005);
  EXPECT_FALSE(found.contains({"totals", 2, 0})) << "what is not there is empty";
  EXPECT_FALSE(found.contains({"totals", 2, 1}));
  EXPECT_TRUE(found.at({"totals", 3, 1}).isText);
  EXPECT_EQ(found.at({"totals", 3, 1}).text, "-12.3456;5.0000");
  for (const char* format : {"Format=\"0.0000\"", "Format=\"0.00\"", "Format=\"yyyy-mm-dd\"",
                             "FreezePanes FrozenTopLeft=\"A1\" UnfrozenTopLeft=\"A2\""})
    EXPECT_NE(xml().find(format), std::string::npos) << format;
}

TEST_P(ReadBack, DaysThatSpreadsheetsDoNotCountAreTexts) {
  const Sheet sheet{"s",
                    {{"day", 0}},
                    {{*Date::of(1900, 2, 28)}, {*Date::of(1899, 12, 31)}, {*Date::of(100, 1, 1)}}};
  const auto found = cells("days.xlsx", xlsxBytes(std::vector<Sheet>{sheet}).value());
  int row = 0;
  for (const char* day : {"1900-02-28", "1899-12-31", "0100-01-01"}) {
    ++row;
    EXPECT_TRUE(found.at({"s", row, 0}).isText) << day;
    EXPECT_EQ(found.at({"s", row, 0}).text, day);
  }
}

TEST_P(ReadBack, TheLargestAmountsInFifteenDigits) {
  const Sheet sheet{"s", {{"a", 4}}, {{Currency::max()}, {Currency::min()}}};
  const auto found = cells("large.xlsx", xlsxBytes(std::vector<Sheet>{sheet}).value());
  const double most = 922'337'203'685'477.5807;
  EXPECT_NEAR(found.at({"s", 1, 0}).number, most, 0.5);
  EXPECT_NEAR(found.at({"s", 2, 0}).number, -most, 0.5);
}

TEST_P(ReadBack, CommaSeparatedValues) {
  const Sheet sheet{"s",
                    {{"Name", 0}, {"Amount", 4}, {"Day", 0}},
                    {{std::string("Birch, \"B\""), units(12'345'678), *Date::of(2024, 2, 29)},
                     {std::string("=1+1"), units(-1), *Date::of(9999, 12, 31)},
                     {std::string("Zürich €"), {}, *Date::of(1999, 1, 2)}}};
  const auto found = cells("values.csv", csvText(sheet));
  const std::string page = std::get<0>(found.begin()->first);
  const auto at = [&](int row, int column) { return found.at({page, row, column}); };
  EXPECT_EQ(at(1, 0).text, "Birch, \"B\"");
  // The apostrophe is taken as the mark of a text that it is.
  EXPECT_TRUE(at(2, 0).isText);
  EXPECT_EQ(at(2, 0).text, "=1+1");
  EXPECT_EQ(at(3, 0).text, "Zürich €");
  EXPECT_FALSE(at(1, 1).isText);
  EXPECT_DOUBLE_EQ(at(1, 1).number, 1234.5678);
  EXPECT_DOUBLE_EQ(at(2, 1).number, -0.0001);
  EXPECT_FALSE(found.contains({page, 3, 1}));
  EXPECT_EQ(at(1, 2).number, 45'351);
  EXPECT_EQ(at(2, 2).number, 2'958'465);
}

INSTANTIATE_TEST_SUITE_P(Languages, ReadBack, ::testing::Values("C.UTF-8", "de_DE.UTF-8"),
                         [](const auto& language) {
                           return std::string(language.param).substr(0, 1);
                         });

}  // namespace
}  // namespace mirelund

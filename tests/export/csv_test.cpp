// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/csv.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "export/cell_text.h"

namespace mirelund {
namespace {

Currency units(std::int64_t count) {
  return Currency::fromTenThousandths(count);
}

struct Rounded {
  std::int64_t tenThousandths;
  int decimals;
  const char* text;
};

// The four decimals cut by hand; ties go to the even digit.
constexpr Rounded kRounded[] = {
    {12'345'678, 4, "1234.5678"},
    {12'345'678, 3, "1234.568"},
    {12'345'678, 2, "1234.57"},
    {12'345'678, 1, "1234.6"},
    {12'345'678, 0, "1235"},
    {-12'345'678, 2, "-1234.57"},
    {50, 2, "0.00"},  // a tie, 0 is even
    {51, 2, "0.01"},
    {150, 2, "0.02"},  // a tie, 1 is odd
    {250, 2, "0.02"},
    {-150, 2, "-0.02"},
    {-250, 2, "-0.02"},
    {-50, 2, "0.00"},  // no sign of what is nothing
    {-1, 4, "-0.0001"},
    {-9'999, 4, "-0.9999"},
    {5'000, 0, "0"},
    {15'000, 0, "2"},
    {0, 4, "0.0000"},
    {10'000, 4, "1.0000"},
    {9'223'372'036'854'775'807, 4, "922337203685477.5807"},
    {-9'223'372'036'854'775'807, 4, "-922337203685477.5807"},
    {9'223'372'036'854'775'807, 2, "922337203685477.58"},
    {-9'223'372'036'854'775'807, 0, "-922337203685478"},
};

TEST(AmountText, IsRoundedOnceAndPlain) {
  for (const Rounded& c : kRounded)
    EXPECT_EQ(amountText(units(c.tenThousandths), c.decimals), c.text) << c.tenThousandths;
}

TEST(IsoDate, HasFourTwoAndTwoDigits) {
  EXPECT_EQ(isoDate(*Date::of(2024, 2, 29)), "2024-02-29");
  EXPECT_EQ(isoDate(*Date::of(100, 1, 1)), "0100-01-01");
  EXPECT_EQ(isoDate(*Date::of(9999, 12, 31)), "9999-12-31");
  EXPECT_EQ(isoDate(Date()), "");
}

std::string oneCell(const Cell& cell) {
  return csvText({"sheet", {{"a", 2}, {"b", 0}}, {{cell, {}}}});
}

struct TextCase {
  const char* rule;
  std::string text;
  std::string field;
};

// RFC 4180, section 2, rules 5 to 7; the apostrophe is this program's.
const TextCase kTexts[] = {
    {"plain", "Alder", "Alder"},
    {"nothing", "", ""},
    {"blanks stay", "  Alder ", "  Alder "},
    {"a comma", "Birch, Ltd", "\"Birch, Ltd\""},
    {"quotes are doubled", "the \"B\"", "\"the \"\"B\"\"\""},
    {"only a quote", "\"", "\"\"\"\""},
    {"a line feed", "a\nb", "\"a\nb\""},
    {"a carriage return", "a\rb", "\"a\rb\""},
    {"a line end", "a\r\nb", "\"a\r\nb\""},
    {"UTF-8 as it is", "Zürich €, 株", "\"Zürich €, 株\""},
    {"an apostrophe of its own", "'90s", "'90s"},
    {"a tab needs no quotes", "a\tb", "a\tb"},
    {"a semicolon neither", "a;b", "a;b"},
    {"equals", "=1+1", "'=1+1"},
    {"plus", "+49 30", "'+49 30"},
    {"minus", "-x", "'-x"},
    {"at", "@SUM(A1)", "'@SUM(A1)"},
    {"in the middle no formula", "a=b", "a=b"},
    {"a formula with quotes", "=HYPERLINK(\"http://x\",\"y\")",
     "\"'=HYPERLINK(\"\"http://x\"\",\"\"y\"\")\""},
    {"a formula with a line", "=1\n2", "\"'=1\n2\""},
};

TEST(CsvText, QuotesWhatNeedsIt) {
  for (const TextCase& c : kTexts)
    EXPECT_EQ(oneCell(c.text), "a,b\r\n" + c.field + ",\r\n") << c.rule;
}

TEST(CsvText, NumbersDaysAndWhatIsNotThere) {
  EXPECT_EQ(oneCell(units(-12'350)), "a,b\r\n-1.24,\r\n") << "no text, no apostrophe";
  EXPECT_EQ(oneCell(std::vector{units(-123'456), units(50'000)}), "a,b\r\n-12.35;5.00,\r\n")
      << "nor are several";
  EXPECT_EQ(oneCell(std::int64_t{-7}), "a,b\r\n-7,\r\n");
  EXPECT_EQ(oneCell(*Date::of(1999, 12, 3)), "a,b\r\n1999-12-03,\r\n");
  EXPECT_EQ(oneCell(Date()), "a,b\r\n,\r\n");
  EXPECT_EQ(oneCell({}), "a,b\r\n,\r\n");
}

TEST(CsvText, HeadingsAreFieldsToo) {
  EXPECT_EQ(csvText({"s", {{"Comm/Fees", 0}, {"a,b", 0}}, {}}), "Comm/Fees,\"a,b\"\r\n");
}

TEST(CsvText, ALoneEmptyCellIsNoEmptyLine) {
  EXPECT_EQ(csvText({"s", {{"a", 0}}, {{{}}, {std::string("x")}}}), "a\r\n\"\"\r\nx\r\n");
}

// Reads fields as RFC 4180 describes them, character by character.
std::vector<std::vector<std::string>> readCsv(const std::string& text) {
  std::vector<std::vector<std::string>> rows(1);
  std::string field;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quoted) {
      if (c != '"')
        field += c;
      else if (i + 1 < text.size() && text[i + 1] == '"')
        field += text[++i];
      else
        quoted = false;
    } else if (c == '"') {
      quoted = true;
    } else if (c == ',') {
      rows.back().push_back(std::exchange(field, {}));
    } else if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      ++i;
      rows.back().push_back(std::exchange(field, {}));
      rows.emplace_back();
    } else {
      field += c;
    }
  }
  rows.pop_back();
  return rows;
}

RC_GTEST_PROP(CsvText, AnyTextComesBack, ()) {
  const auto word = rc::gen::container<std::string>(
      rc::gen::element('a', ',', '"', '\r', '\n', '=', '-', ' ', '\'', '\t'));
  const auto rows = *rc::gen::container<std::vector<std::pair<std::string, std::string>>>(
      rc::gen::pair(word, word));
  Sheet sheet{"s", {{"one", 0}, {"two", 0}}, {}};
  std::vector<std::vector<std::string>> expected{{"one", "two"}};
  const auto shown = [](const std::string& text) {
    return !text.empty() && (text[0] == '=' || text[0] == '-') ? "'" + text : text;
  };
  for (const auto& [one, two] : rows) {
    sheet.rows.push_back({one, two});
    expected.push_back({shown(one), shown(two)});
  }
  RC_ASSERT(readCsv(csvText(sheet)) == expected);
}

RC_GTEST_PROP(CsvText, FourDecimalsAreExact, (std::int64_t count)) {
  RC_PRE(count != std::numeric_limits<std::int64_t>::min());
  std::string text = amountText(units(count), 4);
  text.erase(text.size() - 5, 1);
  RC_ASSERT(std::stoll(text) == count);
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace mirelund {
namespace {

TEST(Text, CountsCodePoints) {
  EXPECT_EQ(characterCount("Zürich 株"), 8U);
  EXPECT_EQ(firstCharacters("Zürich", 2), "Zü");
  EXPECT_EQ(firstCharacters("Zü", 9), "Zü");
}

TEST(Text, AsciiIsBelow128AtEveryPlace) {
  for (std::size_t size = 0; size <= 17; ++size) {
    std::string text(size, '\x7f');
    EXPECT_TRUE(isAscii(text)) << size;
    for (std::size_t at = 0; at < size; ++at) {
      text[at] = '\x80';
      EXPECT_FALSE(isAscii(text)) << size << ' ' << at;
      text[at] = '\x7f';
    }
  }
}

// Table 3-7 of the Unicode standard: the ends of each row, and what is just
// outside of them.
TEST(Text, Utf8IsWellFormedOrNot) {
  for (const char* text :
       {"", "plain", "é", "株", "😀", "\x7f", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
        "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF1\x80\x80\x80", "\xF3\xBF\xBF\xBF",
        "\xF4\x8F\xBF\xBF"})
    EXPECT_TRUE(isUtf8(text)) << text;
  for (const char* text :
       {"\x80", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3(", "\xE0\x9F\xBF", "\xE2\x82", "\xED\xA0\x80",
        "\xF0\x8F\xBF\xBF", "\xF1\x80\x80", "\xF3\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
        "\xFF", "caf\xE9", "a\xE9z"})
    EXPECT_FALSE(isUtf8(text)) << text;
}

// The number that a sequence stands for, put together by its bits, decides: it must
// need that many bytes, be no surrogate and not lie beyond Unicode.
TEST(Text, EveryPairOfFirstBytesIsJudgedByItsNumber) {
  struct Form {
    unsigned mark, mask;
    std::size_t bytes;
    unsigned least;
  };
  constexpr Form kForms[] = {
      {0xC0, 0xE0, 2, 0x80}, {0xE0, 0xF0, 3, 0x800}, {0xF0, 0xF8, 4, 0x10000}};
  for (unsigned first = 0xC0; first < 0x100; ++first)
    for (unsigned second = 0; second < 0x100; ++second)
      for (const char rest : {'\x80', '\xBF'}) {
        bool good = false;
        std::string text = {static_cast<char>(first), static_cast<char>(second), rest, rest};
        for (const Form& form : kForms) {
          if ((first & form.mask) != form.mark) continue;
          text.resize(form.bytes);
          unsigned number = (first & ~form.mask) << 6 | (second & 0x3F);
          for (std::size_t i = 2; i < form.bytes; ++i)
            number = number << 6 | (static_cast<unsigned>(rest) & 0x3F);
          good = (second & 0xC0) == 0x80 && number >= form.least && number < 0x110000 &&
                 (number < 0xD800 || number > 0xDFFF);
        }
        EXPECT_EQ(isUtf8(text), good) << std::hex << first << ' ' << second;
      }
}

TEST(Text, BytesAreShownAsUtf8OrWindows1252) {
  EXPECT_EQ(displayText("Zürich"), "Zürich");
  EXPECT_EQ(displayText("Z\xFCrich"), "Zürich");
  EXPECT_EQ(displayText("\x80 5 \x93x\x94 \x85 \x8A\x9F"), "€ 5 “x” … ŠŸ");
  EXPECT_EQ(displayText("\xA0\xFF"), "\xC2\xA0ÿ");
  // All that Windows-1252 has between 0x80 and 0x9F.
  EXPECT_EQ(displayText("\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E"), "€‚ƒ„…†‡ˆ‰Š‹ŒŽ");
  EXPECT_EQ(displayText("\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F"),
            "‘’“”•–—˜™š›œžŸ");
  // Five bytes stand for nothing.
  EXPECT_EQ(displayText("\x81\x8D\x8F\x90\x9D"), "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
}

RC_GTEST_PROP(Text, WhateverIsShownIsUtf8, (const std::string& bytes)) {
  RC_ASSERT(isUtf8(displayText(bytes)));
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace mirelund {

namespace {

bool startsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// Windows-1252, 0x80 to 0x9F; the bytes above are their own code points.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

void appendUtf8(std::string& out, char16_t code) {
  const unsigned value = code;
  if (value < 0x80) {
    out += static_cast<char>(value);
  } else if (value < 0x800) {
    out += static_cast<char>(0xC0 | value >> 6);
    out += static_cast<char>(0x80 | (value & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | value >> 12);
    out += static_cast<char>(0x80 | (value >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (value & 0x3F));
  }
}

// What may follow a first byte: how many bytes, and the range of the next one,
// which rules out longer forms, surrogates and numbers beyond Unicode.
struct Follow {
  unsigned char first, last;
  unsigned char count;
  unsigned char low, high;
};
constexpr Follow kFollow[] = {
    {0x00, 0x7F, 0, 0, 0},       {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2, 0x80, 0xBF}, {0xED, 0xED, 2, 0x80, 0x9F}, {0xEE, 0xEF, 2, 0x80, 0xBF},
    {0xF0, 0xF0, 3, 0x90, 0xBF}, {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F}};

}  // namespace

bool isAscii(std::string_view text) {
  std::uint64_t high = 0;
  std::size_t i = 0;
  for (; i + sizeof high <= text.size(); i += sizeof high) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data() + i, sizeof eight);
    high |= eight;
  }
  for (; i < text.size(); ++i) high |= static_cast<unsigned char>(text[i]);
  return (high & 0x8080808080808080U) == 0;
}

std::size_t characterCount(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), startsCharacter));
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  std::size_t i = 0;
  for (; i < text.size(); ++i)
    if (startsCharacter(text[i]) && count-- == 0) break;
  return text.substr(0, i);
}

bool isUtf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto* const row = std::ranges::find_if(
        kFollow, [&](const Follow& f) { return first >= f.first && first <= f.last; });
    if (row == std::end(kFollow) || bytes.size() - i <= row->count) return false;
    for (std::size_t k = 1; k <= row->count; ++k) {
      const auto next = static_cast<unsigned char>(bytes[i + k]);
      if (k == 1 ? next < row->low || next > row->high : (next & 0xC0U) != 0x80U) return false;
    }
    i += 1U + row->count;
  }
  return true;
}

std::string displayText(std::string_view bytes) {
  if (isUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    appendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80U] : char16_t{byte});
  }
  return text;
}

}  // namespace mirelund

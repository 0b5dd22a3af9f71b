// SPDX-License-Identifier: GPL-3.0-or-later
// How a number is shown: a pattern of places, read when the program is compiled.
#pragma once

#include <cstddef>
#include <string_view>

namespace mirelund {

/// A numeric format pattern: "#" a digit shown only when significant, "0" a digit
/// always shown (before the point: the last one), "." the point, "," between
/// digits turns grouping by three on, "%" at the end shows the value times 100
/// with a percent sign. A pattern that is not of this form does not compile.
class Pattern {
 public:
  // Implicit, so that a pattern is written where it is used.
  template <std::size_t N>
  consteval Pattern(const char (&text)[N]) : Pattern(std::string_view(text, N - 1)) {}

  consteval explicit Pattern(std::string_view text) {
    std::size_t i = 0;
    for (; i < text.size() && (text[i] == '#' || text[i] == ','); ++i)
      if (text[i] == ',') grouped = true;
    if (i < text.size() && text[i] == '0') {
      zeroShown = true;
      ++i;
    }
    if (i < text.size() && text[i] == '.') {
      point = true;
      for (++i; i < text.size() && (text[i] == '#' || text[i] == '0'); ++i) {
        ++decimals;
        if (text[i] == '0') minDecimals = decimals;
      }
    }
    if (i < text.size() && text[i] == '%') {
      percent = true;
      ++i;
    }
    if (i != text.size() || decimals > 4) throw "not a pattern";
  }

  unsigned char decimals = 0;     ///< most digits after the point
  unsigned char minDecimals = 0;  ///< digits forced after the point
  bool zeroShown = false;         ///< 0 shows a digit before the point
  bool point = false;             ///< the point is shown, even with nothing behind it
  bool grouped = false;
  bool percent = false;
};

}  // namespace mirelund

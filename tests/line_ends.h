// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of several lines, written in a test as they are read.
#pragma once

#include <string>
#include <string_view>

namespace mirelund {

/// The text as the program has it: each LF becomes CR LF.
inline std::string withCrLf(std::string_view text) {
  std::string lines;
  for (const char c : text) {
    if (c == '\n') lines += '\r';
    lines += c;
  }
  return lines;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/page_breaks.h"

#include <algorithm>

namespace mirelund {

namespace {

bool isUnderline(const std::string& line) {
  constexpr std::size_t kShortest = 10;
  return line.size() >= kShortest && line.find_first_not_of('_') == std::string::npos;
}

}  // namespace

std::vector<std::size_t> pageStarts(const std::vector<std::string>& lines, std::size_t perPage) {
  perPage = std::max<std::size_t>(perPage, 1);
  std::vector<bool> mayStart(lines.size(), true);
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (isUnderline(lines[i]))
      for (std::size_t held = i < 1 ? i : i - 1; held < std::min(i + 3, lines.size()); ++held)
        mayStart[held] = false;

  std::vector<std::size_t> starts{0};
  while (lines.size() - starts.back() > perPage) {
    const std::size_t full = starts.back() + perPage;
    std::size_t next = full;
    while (next > starts.back() && !mayStart[next]) --next;
    starts.push_back(next > starts.back() ? next : full);
  }
  return starts;
}

}  // namespace mirelund

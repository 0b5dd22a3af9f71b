// SPDX-License-Identifier: GPL-3.0-or-later
// Where a printed report's pages begin.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mirelund {

/// The first line of each page, `perPage` lines to a page at most (none counts as
/// one). An underline stays on one page with the two lines before and the two behind
/// it: a heading with its first lines, totals with the last of what they total. Where
/// so much belongs together that a page cannot hold it, the page is filled.
std::vector<std::size_t> pageStarts(const std::vector<std::string>& lines, std::size_t perPage);

}  // namespace mirelund

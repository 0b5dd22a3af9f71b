// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace mirelund {

/// PGHelp: the page's help text.
std::string pensionGrowthHelp();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace mirelund {

/// IGHelp: the page's help text.
std::string investmentGrowthHelp();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace mirelund {

/// MTHelp: the page's help text.
std::string mortgageHelp();

}  // namespace mirelund

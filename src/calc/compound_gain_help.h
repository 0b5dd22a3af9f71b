// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace mirelund {

/// CGHelp: the page's help text.
std::string compoundGainHelp();

}  // namespace mirelund

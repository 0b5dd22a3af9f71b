// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace mirelund {

/// DHelp: the page's help text.
std::string displayHelp();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace mirelund {

/// CVHelp: the page's help text.
std::string currentValueHelp();

}  // namespace mirelund

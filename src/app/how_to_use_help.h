// SPDX-License-Identifier: GPL-3.0-or-later
// The general instructions of the calculator window.
#pragma once

#include <string>

namespace mirelund {

std::string howToUseHelp();

}  // namespace mirelund

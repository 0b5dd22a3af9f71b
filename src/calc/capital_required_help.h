// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace mirelund {

/// CRHelp: the page's help text.
std::string capitalRequiredHelp();

}  // namespace mirelund

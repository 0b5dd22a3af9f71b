// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "manager/database/dates.h"

namespace mirelund {

/// EHelp: the entry page's help text, its sample dates in the system's short form.
/// It walks through the sample database, whose records it names by number.
std::string entryHelp(const ShortDateFormat& format);

}  // namespace mirelund

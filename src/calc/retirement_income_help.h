// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "calc/retirement_income.h"

namespace mirelund {

/// RIHelp: the text of the option in use.
std::string retirementIncomeHelp(WithdrawalChoice choice);

}  // namespace mirelund

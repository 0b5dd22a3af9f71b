// SPDX-License-Identifier: GPL-3.0-or-later
// A made-up database of any size.
#pragma once

#include <cstdint>

#include "manager/database/fund_database.h"

namespace mirelund::bench {

/// All 18 funds and so many records of all six types, the same at every call.
Database fundSample(std::int16_t records);

/// The same with purchases in place of what would give up more shares than are held.
Database tradedSample(std::int16_t records);

}  // namespace mirelund::bench

// SPDX-License-Identifier: GPL-3.0-or-later
// The sample database that is shipped as DtaSampl.PQD.
#pragma once

#include "manager/database/fund_database.h"

namespace mirelund {

/// Six invented funds and 90 records of fifteen years, the same at every call:
/// all six types, a split, a reverse split, a fund fully sold and one with
/// losses. At 20.00 a share some funds stand high above their book value, some
/// near it and one far below.
Database sampleDatabase();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The system's short date, as the toolkit knows it.
#pragma once

#include <QLocale>

#include "manager/database/dates.h"

namespace mirelund {

/// The locale that dates are written in: LC_ALL's, else LC_TIME's, else LANG's; the C
/// locale where none is set or known.
QLocale dateLocale();

/// The short date of `locale`. The C locale, of which the toolkit says month
/// names, has POSIX's own: month, day and year with "/".
ShortDateFormat shortDateFormat(const QLocale& locale);

/// Today, in the system's time zone.
Date today();

}  // namespace mirelund

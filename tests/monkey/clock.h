// SPDX-License-Identifier: GPL-3.0-or-later
// The clock of the process, which can be taken in hand: timers then come due by what
// happens, and a seed repeats a delayed click too.
#pragma once

namespace mirelund::testing {

/// Before the application is made: from now on it is always the same time, and no time passes but
/// by passTime().
void stopClock();
void passTime(int ms);

}  // namespace mirelund::testing

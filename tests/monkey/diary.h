// SPDX-License-Identifier: GPL-3.0-or-later
// What the monkey did last, told when something fails in whatever way.
#pragma once

#include <cstdint>
#include <string>

namespace mirelund::testing {

namespace diary {

/// Tells from now on what was done, also where the process is ended by a sanitizer,
/// an abort or a hang. With MONKEY_TELLS_ALL in the environment, every event at once.
void begin(std::uint64_t seed, int events);

/// One event, before it is done.
void note(const std::string& event);
int events();

/// Nothing but progress keeps the process from being told hung.
void alive();

/// Tells and ends the process.
[[noreturn]] void fail(const std::string& what);

}  // namespace diary

}  // namespace mirelund::testing

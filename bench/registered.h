// SPDX-License-Identifier: GPL-3.0-or-later
// The groups of measurements.
#pragma once

namespace mirelund::bench {

void registerFormatting();
void registerCalculators();
void registerManager();
void registerInsights();

}  // namespace mirelund::bench

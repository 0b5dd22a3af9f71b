// SPDX-License-Identifier: GPL-3.0-or-later
// ChartKind: which view the chart window draws, named after what it shows.
#pragma once

#include <cstdint>

namespace mirelund::chart {

inline constexpr std::int16_t kCapitalRequired = 3;
inline constexpr std::int16_t kPensionGrowth = 4;
inline constexpr std::int16_t kMortgage = 5;
inline constexpr std::int16_t kCompoundGain = 6;
inline constexpr std::int16_t kGrowthComparisons = 7;
inline constexpr std::int16_t kManager = 8;
inline constexpr std::int16_t kGrowthYears = 9;
inline constexpr std::int16_t kIncomeFixedAmount = 10;
inline constexpr std::int16_t kIncomePercentage = 11;

}  // namespace mirelund::chart

// SPDX-License-Identifier: GPL-3.0-or-later
// The colours and the hatching of bars, on whatever ground.
#pragma once

#include <QColor>
#include <cstddef>
#include <cstdint>

namespace mirelund {

/// What a bar must have against its ground.
inline constexpr double kLeastContrast = 3.0;

/// The bars of a series (they take turns from the third on): at least kLeastContrast
/// against the ground, and apart from each other in brightness too, for those who see
/// no colours.
QColor barColor(std::size_t series, const QColor& ground);

/// The same on white paper, without colour.
QColor greyBarColor(std::size_t series);

/// How a bar is filled in its colour, so that series are told apart without it.
enum class BarFill : std::uint8_t { Solid, RisingLines, FallingLines, CrossedLines };

/// The fill of a series; they take turns from the fifth on.
BarFill barFill(std::size_t series);

}  // namespace mirelund

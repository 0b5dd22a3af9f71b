// SPDX-License-Identifier: GPL-3.0-or-later
// Colours of the desktop's, made to be read.
#pragma once

#include <QPalette>

namespace mirelund {

/// How much brighter one colour is than another, from 1 (alike) to 21 (black and white):
/// (L1 + 0.05) / (L2 + 0.05) of the relative luminances (WCAG 2.1, contrast ratio).
double contrastOf(const QColor& one, const QColor& other);

/// The colour so far from `one` to `other`, 0 to 1.
QColor between(const QColor& one, const QColor& other, float share);

/// What the colours of a text and its ground are made to have: more than the 4.5 that the
/// text is to be drawn with, of which the smoothing of thin letters takes some.
inline constexpr double kReadable = 6.0;

/// `desktop`, but where selected text is hardly to be read on its ground (3.7 in the
/// toolkit's own palette) the ground is darker, or lighter, until it is.
QPalette readablePalette(const QPalette& desktop);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Colours of the desktop's, made to be read.
#pragma once

#include <QPalette>

namespace mirelund {

/// How much brighter one colour is than another, 1 to 21: the contrast ratio of the Web
/// Content Accessibility Guidelines.
double contrastOf(const QColor& one, const QColor& other);

/// What the colours of a text and its ground are made to have: more than the 4.5 that the
/// text is to be drawn with, of which the smoothing of thin letters takes some.
inline constexpr double kReadable = 6.0;

/// `desktop`, but where selected text is hardly to be read on its ground (3.7 in the
/// toolkit's own palette) the ground is darker, or lighter, until it is.
QPalette readablePalette(const QPalette& desktop);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The mark of the control that has the focus, alike on every control and desktop.
#pragma once

class QWidget;

namespace mirelund {

/// For the whole program, once: what takes the focus or loses it is drawn again.
void installFocusRing();

/// Draws the mark where `painted`, which has just been drawn, has the focus: a frame of two
/// pixels within its edges, in the colour of its text. Styles draw what they like, some of it
/// barely to be seen. On tabs it stands around the chosen one, in a box that scrolls around
/// what is in view.
void paintFocusRing(QWidget* painted);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace mirelund {

/// Reads from the disk what the first window of the program would otherwise wait for:
/// the fonts of reports and headings, and the style's frames, which are pictures. For
/// the moment in which a person chooses a window.
void warmUp();

}  // namespace mirelund

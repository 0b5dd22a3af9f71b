// SPDX-License-Identifier: GPL-3.0-or-later
// What the Help menu shows beside a page's own help: the guide, and what this program is.
#pragma once

#include <QString>

class QWidget;

namespace mirelund {

class Prompts;

/// The first page of the guide that belongs to a program in `folder`, as it was built
/// or installed; empty where there is none.
QString guideOf(const QString& folder);

/// Opens the guide in whatever shows pages on this desktop, or tells that it is not there.
void showGuide(Prompts& prompts, QWidget* over);

/// Tells the program's name, version and licence.
void showAbout(Prompts& prompts, QWidget* over);

}  // namespace mirelund

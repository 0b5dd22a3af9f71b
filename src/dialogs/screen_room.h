// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>

class QWidget;

namespace mirelund {

/// `wanted`, or as much of it as the window's screen has room for inside the frame of
/// a window. The frame is that of a window that is seen or, where there is none, one
/// that is larger than most.
QSize onScreen(const QWidget& window, QSize wanted);

}  // namespace mirelund

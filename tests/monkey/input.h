// SPDX-License-Identifier: GPL-3.0-or-later
// Single events as the window system has them. Unlike the test library's they run no
// event loop of their own: what is queued behind one comes when the program asks for it.
#pragma once

#include <Qt>

class QChar;
class QPoint;
class QWindow;

namespace mirelund::testing::input {

enum class Way { Down, Up };

/// To the window of the focus, or the one in front; nowhere without one.
void key(Way way, Qt::Key key, Qt::KeyboardModifiers held);
void character(Way way, QChar character);

/// A press is the second of a double click where it follows `quickly`.
void mouse(Way way, QWindow* window, QPoint place, Qt::MouseButton button, bool quickly = false);

}  // namespace mirelund::testing::input

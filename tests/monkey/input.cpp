// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/input.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

#include "monkey/window_watch.h"

namespace mirelund::testing::input {

namespace {

void send(Way way, int key, Qt::KeyboardModifiers held, const QString& text) {
  QWindow* window = QGuiApplication::focusWindow();
  if (const QWidget* front = frontWindow(); window == nullptr && front != nullptr)
    window = front->windowHandle();
  if (window == nullptr) return;
  qt_handleKeyEvent(window, way == Way::Down ? QEvent::KeyPress : QEvent::KeyRelease, key, held,
                    text);
}

}  // namespace

void key(Way way, Qt::Key key, Qt::KeyboardModifiers held) {
  const char ascii = QTest::keyToAscii(key);
  const QString text = ascii == 0 ? QString() : QString(QLatin1Char(ascii));
  send(way, key, held, held.testFlag(Qt::ShiftModifier) ? text.toUpper() : text);
}

void character(Way way, QChar character) {
  send(way, character.toUpper().unicode(), Qt::NoModifier, character);
}

void mouse(Way way, QWindow* window, QPoint place, Qt::MouseButton button, bool quickly) {
  constexpr int kSlow = 1000;
  static int moment = 0;
  static Qt::MouseButtons down;
  const bool isPress = way == Way::Down;
  moment += isPress && !quickly ? kSlow : 1;
  down.setFlag(button, isPress);
  qt_handleMouseEvent(window, place, window->mapToGlobal(place), down, button,
                      isPress ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease,
                      Qt::NoModifier, moment);
}

}  // namespace mirelund::testing::input

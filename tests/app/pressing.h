// SPDX-License-Identifier: GPL-3.0-or-later
// The ways in which a person presses a button.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include "ui_testing.h"

namespace mirelund::testing {

/// Presses a button of the active window: by "Mouse", by a key that presses the
/// button in focus ("Return", "Enter", "Space"), which Tab brings there, or by a
/// chord ("Alt+C").
inline void press(QPushButton* button, const QString& way) {
  if (way == "Mouse") {
    QTest::mouseClick(button, Qt::LeftButton);
    return;
  }
  // A window below may have asked for the focus late, and got it.
  QVERIFY(ProgramFixture::isActivated(button->window()));
  const QKeyCombination keys = QKeySequence(way)[0];
  if (keys.keyboardModifiers() != Qt::NoModifier) {
    QTest::keyClick(button->window(), keys.key(), keys.keyboardModifiers());
    return;
  }
  constexpr int kMostControls = 100;
  for (int i = 0; i < kMostControls && !button->hasFocus(); ++i)
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  QVERIFY(button->hasFocus());
  const bool keypad = keys.key() == Qt::Key_Enter;
  QTest::keyClick(button, keys.key(), keypad ? Qt::KeypadModifier : Qt::NoModifier);
}

}  // namespace mirelund::testing

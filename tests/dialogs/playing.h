// SPDX-License-Identifier: GPL-3.0-or-later
// Plays modal dialogs, whose caller stops until they are closed.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <functional>
#include <vector>

namespace mirelund::testing {

using Step = std::function<void(QDialog*)>;

/// Runs `show` and plays the dialogs that it opens: each step gets the dialog that
/// is up then, another than the step before it had. A step that leaves its dialog
/// open is followed by the dialog which that one opened. What is never closed is
/// closed after a while.
inline void play(const std::function<void()>& show, const std::vector<Step>& steps) {
  QObject life;
  std::size_t done = 0;
  bool late = false;
  QPointer<QDialog> last;
  QElapsedTimer waited;
  waited.start();
  // A timer does not fire within itself: every step has its own.
  std::function<void()> await = [&] {
    auto* timer = new QTimer(&life);
    timer->callOnTimeout([&, timer] {
      constexpr int kPatienceMs = 20'000;
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      if (waited.elapsed() > kPatienceMs) {
        late = true;
        dialog->reject();
        return;
      }
      if (dialog == last || !dialog->isVisible() || done == steps.size()) return;
      if (!dialog->isActiveWindow()) {
        dialog->activateWindow();
        return;
      }
      timer->stop();
      last = dialog;
      const Step& step = steps[done++];
      await();
      step(dialog);
    });
    constexpr int kEveryMs = 10;
    timer->start(kEveryMs);
  };
  await();
  show();
  QVERIFY(!late);
  QCOMPARE(done, steps.size());
  QVERIFY(QApplication::activeModalWidget() == nullptr);
}

/// A key as the display sends it: to the window, which knows its focus and popups.
inline void press(const QDialog* dialog, Qt::Key key, Qt::KeyboardModifiers held = {}) {
  QTest::keyClick(dialog->windowHandle(), key, held);
}
inline void type(const QDialog* dialog, const QString& keys) {
  for (const QChar c : keys) QTest::keyClick(dialog->windowHandle(), c.toLatin1());
}

}  // namespace mirelund::testing

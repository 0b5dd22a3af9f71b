// SPDX-License-Identifier: GPL-3.0-or-later
// Turning the pages of a window with boxes.
#pragma once

#include <QObject>

class QMouseEvent;
class QTabWidget;

namespace mirelund {

class BoxFocus;

/// Ctrl+Tab and Ctrl+PageDown turn to the next page from every control of the window,
/// Ctrl+Shift+Tab and Ctrl+PageUp to the one before, round and round.
///
/// Leaves the focused box before a page is turned, by the mouse, a mnemonic, the keys
/// or the wheel: what the box has to tell is told while it is still to be seen, and
/// where its value was refused the page stays; the tabs have the focus then, so that
/// who turns again means it.
class TabGuard : public QObject {
  Q_OBJECT

 public:
  TabGuard(QTabWidget* tabs, BoxFocus* focus);

 signals:
  /// A tab, which is the page's by then, was pressed and released: also the one
  /// whose page was shown before.
  void clicked(int tab);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void turn(int pages);
  bool pressed(int tab);
  bool released(int tab);
  /// Gives the tabs the focus where a value was not accepted.
  bool refused(bool accepted);

  QTabWidget* tabs_;
  BoxFocus* focus_;
  int pressed_ = -1;
  bool held_ = false;  ///< the tabs have not been told of the press
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// What must hold of everything that the windows show, at any moment.
#pragma once

#include <QHash>
#include <QString>
#include <QWidget>

class QPlainTextEdit;

namespace mirelund::testing {

class WindowWatch {
 public:
  /// What is shown that must never be; empty when all is well.
  QString fault();

 private:
  QString reportFault(const QPlainTextEdit& box);

  QHash<const QObject*, int> revisions_;  ///< of the reports looked into
};

/// The windows that are shown, as the window system has them: the oldest first. No
/// address decides on the order.
QWidgetList shownWindows();

/// What takes the person's input: the popup, the dialog or the newest window.
QWidget* frontWindow();

}  // namespace mirelund::testing

// SPDX-License-Identifier: GPL-3.0-or-later
// The window that the program starts with.
#pragma once

#include <QWidget>
#include <functional>

class QPushButton;

namespace mirelund {

/// Opens one of the two halves of the program, or ends it. While a half is open
/// the start window is hidden; it shows again when that window is closed.
class PQStart : public QWidget {
  Q_OBJECT

 public:
  /// Each makes its window, which deletes itself when it is closed.
  struct Windows {
    std::function<QWidget*()> calculations;
    std::function<QWidget*()> manager;
  };

  explicit PQStart(Windows windows);

 private:
  void StartCalc_Click();
  void StartStockMgmt_Click();
  void StartExit_Click();

  QPushButton* addButton(const char* name, const QString& caption, const QKeySequence& mnemonic);
  void openInstead(QWidget* window);

  Windows windows_;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The window that the program starts with.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

class QPushButton;

namespace mirelund {

/// Opens one of the two halves of the program, or ends it. While a half is open
/// the start window is hidden; it shows again when that window is closed, which no
/// half is while a dialog of its own is up: what waits for the dialog stands on it.
class PQStart : public QWidget {
  Q_OBJECT

 public:
  /// Each makes its window, which deletes itself when it is closed.
  struct Windows {
    std::function<QWidget*()> calculations;
    std::function<QWidget*()> manager;
  };

  explicit PQStart(Windows windows);
  /// The half that is open goes too.
  ~PQStart() override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void StartCalc_Click();
  void StartStockMgmt_Click();
  void StartExit_Click();

  QPushButton* addButton(const char* name, const QString& caption, const QKeySequence& mnemonic);
  void openInstead(const std::function<QWidget*()>& make);

  Windows windows_;
  QPointer<QWidget> half_;
  bool warm_ = false;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The window that the program starts with.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

class QPushButton;

namespace mirelund {

/// Opens one of the two halves of the program, or ends it. While a half is open
/// the start window is hidden; it shows again when that window is closed, which no
/// half is while a dialog of its own is up: what waits for the dialog stands on it.
/// A half is made while its button is held down, a tenth of a second before the click
/// for a hand and for a mnemonic, so that the click only shows it.
class PQStart : public QWidget {
  Q_OBJECT

 public:
  /// Each makes its window, unseen.
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

  using Make = std::function<QWidget*()>;
  /// A half that no one sees yet, and whose it is.
  struct Ready {
    const Make* make = nullptr;
    std::unique_ptr<QWidget> window;
  };

  QPushButton* addButton(const char* name, const QString& caption, const QKeySequence& mnemonic);
  void makeWhileHeld(QPushButton* button, const Make& make);
  void openInstead(const Make& make);

  Windows windows_;
  Ready ready_;
  QPointer<QWidget> half_;
  bool warm_ = false;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The toolkit's application, with a net under what nobody foresaw.
#pragma once

#include <QApplication>
#include <functional>

namespace mirelund {

class Application : public QApplication {
  Q_OBJECT

 public:
  Application(int& argc, char** argv);

  /// How a person is told that something failed. Called from the event loop, never
  /// inside an event that failed, and not again before it has returned.
  void setFailureTeller(std::function<void()> tell) { tell_ = std::move(tell); }

  /// Delivers an event. An exception ends here: the toolkit does not survive one. A
  /// click that a mnemonic has delayed, and that finds a dialog over its window by now,
  /// is dropped.
  bool notify(QObject* receiver, QEvent* event) override;

 protected:
  bool event(QEvent* event) override;

 private:
  void makeReadable();
  void failed(bool painting);

  std::function<void()> tell_ = [] {};
  bool telling_ = false;
  /// What cannot be painted fails again and again.
  bool paintingTold_ = false;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The program put together: the shared state, the ways out, the start window.
#pragma once

#include <QObject>
#include <QPointer>

#include "app/global.h"
#include "app/start_window.h"

namespace mirelund {

class PQManagement;
class Prompts;
class PrintTarget;

/// Whoever runs the windows, the program itself or something that drives it,
/// hands in how to reach the person and the printer.
class Program : public QObject {
  Q_OBJECT

 public:
  Program(Prompts& prompts, PrintTarget& printing, Global& global);

  PQStart& start() { return start_; }

  /// Ends the program from outside: every dialog that stands is cancelled, one after
  /// another; then, where something is unsaved, the person is asked and may stay. A
  /// second call before all that is over changes nothing.
  void end();

 private:
  PQStart::Windows windows(Prompts& prompts, PrintTarget& printing);
  void cancelDialogs();

  Global& global_;
  QPointer<PQManagement> manager_;
  PQStart start_;
  bool ending_ = false;
};

/// The product's font, where the system has it, else the system's own.
void useProgramFont();

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The program put together: the shared state, the ways out, the start window.
#pragma once

#include "app/global.h"
#include "app/start_window.h"

namespace mirelund {

class Prompts;
class PrintTarget;

/// Whoever runs the windows, the program itself or something that drives it,
/// hands in how to reach the person and the printer.
class Program {
 public:
  Program(Prompts& prompts, PrintTarget& printing, Global& global);

  PQStart& start() { return start_; }

 private:
  PQStart start_;
};

/// The product's font, where the system has it, else the system's own.
void useProgramFont();

}  // namespace mirelund

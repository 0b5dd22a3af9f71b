// SPDX-License-Identifier: GPL-3.0-or-later
#include "application.h"
#include "dialogs/dialog_prompts.h"
#include "dialogs/report_printer.h"
#include "end_signals.h"
#include "program.h"

int main(int argc, char** argv) {
  using namespace mirelund;
  Application application(argc, argv);
  useProgramFont();

  Global global;
  DialogPrompts prompts(global.dialogs);
  SystemPrintTarget printing(prompts);
  Program program(prompts, printing, global);
  application.setFailureTeller(
      [&] { prompts.tell(QApplication::activeWindow(), Message::WrongEntry); });
  const EndSignals endings;
  QObject::connect(&endings, &EndSignals::arrived, &program, &Program::end);
  program.start().show();
  return QApplication::exec();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>

#include "dialogs/dialog_prompts.h"
#include "dialogs/report_printer.h"
#include "program.h"

int main(int argc, char** argv) {
  using namespace mirelund;
  const QApplication application(argc, argv);
  QApplication::setApplicationDisplayName("Mirelund");
  QApplication::setDesktopFileName("mirelund");
  useProgramFont();

  Global global;
  DialogPrompts prompts(global.dialogs);
  SystemPrintTarget printing(prompts);
  Program program(prompts, printing, global);
  program.start().show();
  return QApplication::exec();
}

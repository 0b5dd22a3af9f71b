// SPDX-License-Identifier: GPL-3.0-or-later
// The program with its real dialogs.
#pragma once

#include <QDialog>

#include "dialogs/dialog_prompts.h"
#include "dialogs/playing.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

/// As main puts it together, but for the printer, which is a file.
class RealProgram {
 public:
  RealProgram() {
    program.start().show();
    QVERIFY(ProgramFixture::isActivated(&program.start()));
  }

  QWidget* open(const char* button, const char* half) {
    ProgramFixture::click(button);
    QWidget* window = ProgramFixture::window(half);
    ProgramFixture::isActivated(window);
    return window;
  }
  QWidget* openCalculations() { return open("StartCalc", "PQInvest"); }
  QWidget* openManager() { return open("StartStockMgmt", "PQManagement"); }

  /// A fund with one record, in no file.
  void addUnsaved() {
    play([] { ProgramFixture::click("ECreateFund"); }, {[](QDialog* dialog) {
           type(dialog, "Alder");
           press(dialog, Qt::Key_Return);
           press(dialog, Qt::Key_Return);
         }});
    ManagerFixture::record(kFeeCash, "1/1/2021", {"3"});
    QCOMPARE(ManagerFixture::label("ENumRec"), "Records: 1");
  }

  Global global;
  DialogPrompts prompts{global.dialogs};
  PdfTarget printing;
  Program program{prompts, printing, global};
};

}  // namespace mirelund::testing

// SPDX-License-Identifier: GPL-3.0-or-later
// The manager's title: the file's name, and the toolkit's mark of changes.
#include "manager/manager_testing.h"

namespace mirelund::testing {

class ManagerTitleTest : public QObject {
  Q_OBJECT

  // As the window manager shows it.
  static QString shown(const ManagerFixture& program) {
    return program.manager()->windowHandle()->title();
  }

 private slots:
  void aNewDatabaseHasNoName() {
    ManagerFixture program;
    QCOMPARE(program.manager()->windowTitle(), "Investment manager[*]");
    QVERIFY(!program.manager()->isWindowModified());
    QCOMPARE(shown(program), "Investment manager");
    program.addFund("Cedar");
    QVERIFY(program.manager()->isWindowModified());
    QCOMPARE(shown(program), "Investment manager*");
  }

  void theFilesNameStandsInFrontAndEveryChangeShows() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    QCOMPARE(program.manager()->windowTitle(), "test.PQD[*] - Investment manager");
    const auto isChanged = [&] {
      const bool changed = program.manager()->isWindowModified();
      if (shown(program) !=
          (changed ? "test.PQD* - Investment manager" : "test.PQD - Investment manager"))
        qFatal("%s", qPrintable(shown(program)));
      return changed;
    };
    const auto save = [&] {
      program.key(Qt::Key_S, Qt::ControlModifier);
      return isChanged();
    };
    QVERIFY(!isChanged());
    program.choose("EFunds", 0);
    QVERIFY(!isChanged());
    program.record(kBought, "1/2/2021", {"10", "5", "0"});
    QVERIFY(isChanged());
    QVERIFY(!save());
    program.prompts.numbers.push_back(1);
    program.click("ECorrectRec");
    QVERIFY(!isChanged());
    program.click("EAddaRec");
    QVERIFY(isChanged());
    QVERIFY(!save());
    program.prompts.numbers.push_back(1);
    program.prompts.answers = {true};
    program.click("EDelRec");
    QVERIFY(isChanged());
    QVERIFY(!save());
    program.addFund("Cedar");
    QVERIFY(isChanged());
    program.prompts.answers = {true};
    program.click("EDelRec");
    QCOMPARE(program.label("ENumFunds"), "Funds: 2");
    QVERIFY(isChanged());
    // A save that fails leaves the mark.
    program.prompts.paths.push_back(program.path("no/such/folder.PQD"));
    program.key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(program.takeTold(), QList<int>{25});
    QVERIFY(isChanged());
    program.prompts.paths.push_back(program.path("other.PQD"));
    program.key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(shown(program), "other.PQD - Investment manager");
  }

  void aNameThatLooksLikeTheMarkIsShown() {
    ManagerFixture program;
    program.prompts.paths.push_back(program.file("a[*]b.PQD", kTwoFunds));
    program.key(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(shown(program), "a[*]b.PQD - Investment manager");
    program.addFund("Cedar");
    QCOMPARE(shown(program), "a[*]b.PQD* - Investment manager");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ManagerTitleTest)
#include "manager_title_test.moc"

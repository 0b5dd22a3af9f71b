// SPDX-License-Identifier: GPL-3.0-or-later
// The end of the desktop's session, as the session's manager would bring it.
#include "manager/manager_window.h"
#include "manager_testing.h"

namespace mirelund::testing {

class SessionEndTest : public QObject {
  Q_OBJECT

  int interactions_ = 0;

  bool keepsSession(bool mayAsk) {
    auto* window = qobject_cast<PQManagement*>(ManagerFixture::manager());
    return window->keepsSession([&] {
      ++interactions_;
      return mayAsk;
    });
  }
  // A file with one more record than it had when it was opened.
  static void change(ManagerFixture& program) {
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.record(kFeeCash, "1/1/2021", {"3"});
  }
  static void verifyUnsaved(const ManagerFixture& program) {
    QVERIFY(program.manager() != nullptr);
    QVERIFY(!program.window("PQStart"));
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    QCOMPARE(program.label("EDatabase"), "Database: test.PQD");
    QCOMPARE(program.bytes("test.PQD"), kTwoFunds);
  }

 private slots:
  void init() { interactions_ = 0; }

  void nothingUnsavedIsNotAskedFor_data() {
    QTest::addColumn<QString>("state");
    for (const char* state : {"nothing at all", "a file as it was opened", "funds alone", "saved"})
      QTest::newRow(state) << state;
  }

  void nothingUnsavedIsNotAskedFor() {
    QFETCH(QString, state);
    ManagerFixture program;
    if (state == "a file as it was opened") program.openFile(kTwoFunds);
    if (state == "funds alone") program.addFund("Alder");
    if (state == "saved") {
      change(program);
      program.prompts.paths = {program.path("test.PQD")};
      program.page(kSavePage);
    }
    const QString records = program.label("ENumRec");
    QVERIFY(!keepsSession(true));
    QCOMPARE(interactions_, 0);  // the session's end waits for nobody
    QCOMPARE(program.takeAsked(), QList<int>{});
    // It may be called off yet: the window stays as it is.
    QVERIFY(program.manager() != nullptr);
    QCOMPARE(program.label("ENumRec"), records);
  }

  void yesGoesBackToSaveAndKeepsTheSession() {
    ManagerFixture program;
    change(program);
    program.prompts.answers = {true};
    QVERIFY(keepsSession(true));
    QCOMPARE(interactions_, 1);
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QCOMPARE(program.global.dialogs.Details.fileName, program.path("test.PQD").toStdString());
    verifyUnsaved(program);
    // What was gone back for.
    program.prompts.paths = {program.path("test.PQD")};
    program.page(kSavePage);
    QVERIFY(program.bytes("test.PQD").startsWith("5,2,"));
    QVERIFY(!keepsSession(true));
    QCOMPARE(program.takeAsked(), QList<int>{});
  }

  void noLetsTheSessionEnd() {
    ManagerFixture program;
    change(program);
    program.prompts.answers = {false};
    QVERIFY(!keepsSession(true));
    QCOMPARE(interactions_, 1);
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QTRY_VERIFY(program.manager() == nullptr);
    QTRY_VERIFY(program.program.start().isVisible());
    QCOMPARE(program.bytes("test.PQD"), kTwoFunds);
  }

  void whoMayNotAskLetsTheSessionEnd() {
    ManagerFixture program;
    change(program);
    QVERIFY(!keepsSession(false));
    QCOMPARE(interactions_, 1);
    QCOMPARE(program.takeAsked(), QList<int>{});
    verifyUnsaved(program);
  }

  // What stands in a box is no record yet.
  void aRowThatIsOnlyTypedIsNotAskedFor() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.choose("ETransType", kFeeCash);
    program.type("EInDate", "1/1/2021");
    program.type("EInComm", "3");
    QVERIFY(!keepsSession(true));
    QCOMPARE(interactions_, 0);
    QCOMPARE(program.takeAsked(), QList<int>{});
    QCOMPARE(program.box("EInComm")->text(), "3");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::SessionEndTest)
#include "session_end_test.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo by their keys and by the menu, and what every page shows then.
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>

#include "manager_testing.h"

namespace mirelund::testing {

namespace {

constexpr const char* kUndo = "ActionUndo";
constexpr const char* kRedo = "ActionRedo";

// The manager with two funds of two records each, the first of them chosen.
class UndoFixture : public ManagerFixture {
 public:
  UndoFixture() {
    openFile(kTwoFunds);
    choose("EFunds", 0);
  }

  static QAction* action(const char* name) { return manager()->findChild<QAction*>(name); }

  /// By the mouse.
  static void menu(const char* name) {
    auto* bar = find<QMenuBar>("MenuBar");
    auto* menu = find<QMenu>("MenuEdit");
    // Toolkits of later years take no command where the mouse has not moved.
    const auto clickAt = [](QWidget* widget, QPoint place) {
      QTest::mouseMove(widget, place);
      QTest::mouseClick(widget, Qt::LeftButton, {}, place);
    };
    clickAt(bar, bar->actionGeometry(menu->menuAction()).center());
    QVERIFY(menu->isVisible());
    clickAt(menu, menu->actionGeometry(action(name)).center());
    QCoreApplication::processEvents();
    activate();
  }
  /// What the menu does when it is chosen. Without a window manager the focus does not come
  /// back from a popup, and what is typed then would be left by nobody.
  static void chosen(const char* name) { action(name)->trigger(); }
  static void undo() { key(Qt::Key_Z, Qt::ControlModifier); }
  static void redo() { key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }

  /// A step, from the entry page.
  static void addFee(const char* day, const char* amount) { record(kFeeCash, day, {amount}); }
  void deleteFirst() {
    prompts.numbers.push_back(1);
    prompts.answers.push_back(true);
    click("EDelRec");
    takeAsked();
  }

  static QStringList listed(const char* name) {
    QStringList names;
    for (int i = 0; i < list(name)->count(); ++i) names << list(name)->itemText(i);
    return names;
  }
  // Of the entry page's list and of the display page's reports.
  static qsizetype lines(const char* report, const char* word) { return text(report).count(word); }

  /// What would be saved; shows the save page.
  QByteArray saved() {
    prompts.paths.push_back(path("undo.PQD"));
    page(kSavePage);
    return bytes("undo.PQD");
  }
};

}  // namespace

class UndoWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void theMenuNamesWhatItUndoes() {
    UndoFixture program;
    const auto verify = [&](const char* undo, const char* redo) {
      QCOMPARE(program.action(kUndo)->text(), undo);
      QCOMPARE(program.action(kRedo)->text(), redo);
      QCOMPARE(program.action(kUndo)->isEnabled(), QString(undo) != "Undo");
      QCOMPARE(program.action(kRedo)->isEnabled(), QString(redo) != "Redo");
    };
    verify("Undo", "Redo");
    program.addFee("1/1/2021", "3");
    verify("Undo add record", "Redo");
    program.prompts.numbers = {3};
    program.click("ECorrectRec");
    program.type("EInComm", "4");
    program.click("EAddaRec");
    verify("Undo correct record", "Redo");
    program.deleteFirst();
    verify("Undo delete record", "Redo");
    program.addFund("Cedar");
    verify("Undo add fund", "Redo");
    program.prompts.answers = {true};
    program.click("EDelRec");
    verify("Undo delete fund", "Redo");
    for (const char* redo : {"Redo delete fund", "Redo add fund", "Redo delete record",
                             "Redo correct record", "Redo add record"}) {
      program.undo();
      QCOMPARE(program.action(kRedo)->text(), redo);
    }
    verify("Undo", "Redo add record");
    program.undo();  // nothing
    verify("Undo", "Redo add record");
    for (int i = 0; i < 5; ++i) program.menu(kRedo);
    verify("Undo delete fund", "Redo");
    program.undo();
    program.addFund("Dahlia");
    verify("Undo add fund", "Redo");
    program.prompts.answers = {false};
    program.openFile(kTwoFunds);
    verify("Undo", "Redo");
    QCOMPARE(program.takeTold(), QList<int>{});
  }

  void theEntryPageShowsTheDatabaseRestored() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.addFund("Cedar");
    program.undo();
    QCOMPARE(program.label("ENumFunds"), "Funds: 2");
    QCOMPARE(program.listed("EFunds"), (QStringList{"Alder", "Birch"}));
    QCOMPARE(program.list("EFunds")->currentIndex(), -1);
    QCOMPARE(program.text("EResults"), "");
    program.undo();
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(program.list("EFunds")->currentText(), "Alder");  // whose record it was
    QCOMPARE(program.lines("EResults", "Bought"), qsizetype{1});
    QCOMPARE(program.lines("EResults", "Fee Cash"), qsizetype{0});
    program.redo();
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    QCOMPARE(program.lines("EResults", "Fee Cash"), qsizetype{1});
    program.redo();
    QCOMPARE(program.label("ENumFunds"), "Funds: 3");
    QCOMPARE(program.list("EFunds")->currentText(), "Cedar");
    QCOMPARE(program.takeTold(), QList<int>{});
  }

  // Whatever has the focus but a box.
  void theKeysActOnTheDatabaseOutsideOfBoxes_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"EFunds", "ETransType", "EDelRec", "EResults", "SSTab2"})
      QTest::newRow(name) << name;
  }
  void theKeysActOnTheDatabaseOutsideOfBoxes() {
    QFETCH(QString, name);
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    auto* control = program.find<QWidget>(qPrintable(name));
    if (auto* tabs = qobject_cast<QTabWidget*>(control)) control = tabs->tabBar();
    control->setFocus(Qt::TabFocusReason);
    QCOMPARE(QApplication::focusWidget(), control);
    program.undo();
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(QApplication::focusWidget(), control);
    program.redo();
    QCOMPARE(program.label("ENumRec"), "Records: 5");
  }

  void inABoxTheyActOnItsTypingAloneAndTheMenuOnTheDatabase() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.choose("ETransType", kBought);
    program.type("EInDate", "1/2/2021");
    program.type("EInPrice", "12");
    for (int i = 0; i < 3; ++i) program.undo();  // more than was typed
    QCOMPARE(program.box("EInPrice")->text(), "");
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    for (int i = 0; i < 3; ++i) program.redo();
    QCOMPARE(program.box("EInPrice")->text(), "12");
    QCOMPARE(program.label("ENumRec"), "Records: 5");

    program.chosen(kUndo);
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(program.lines("EResults", "Fee Cash"), qsizetype{0});
    // The row that is being typed stays, and goes on.
    QCOMPARE(program.manager()->focusWidget(), program.box("EInPrice"));
    QCOMPARE(program.box("EInDate")->text(), "1/2/2021");
    QCOMPARE(program.box("EInPrice")->text(), "12.0000");
    QCOMPARE(program.list("ETransType")->currentIndex(), int{kBought});
    program.type("EInNumShrs", "5");
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{});
    QVERIFY(program.saved().contains("1,12,5,0,0,60,\"B\",#2021-01-02#\r\n"));
  }

  void aCorrectionInProgressIsCancelled() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.prompts.numbers = {1};
    program.click("ECorrectRec");
    QVERIFY(!program.list("EFunds")->isEnabled());
    program.type("EInPrice", "99");
    program.undo();  // its typing
    QVERIFY(!program.list("EFunds")->isEnabled());
    program.menu(kUndo);
    QVERIFY(program.list("EFunds")->isEnabled());
    QVERIFY(program.list("ETransType")->isEnabled());
    QCOMPARE(program.list("ETransType")->currentIndex(), -1);
    QVERIFY(!program.box("EInPrice")->isVisible());
    QCOMPARE(program.manager()->focusWidget(), program.list("EFunds"));
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.saved(), kTwoFunds);
  }

  void aValueThatTheBoxRefusesIsToldAndNothingIsUndone() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.choose("ETransType", kBought);
    program.type("EInDate", "99");
    program.menu(kUndo);
    QCOMPARE(program.takeTold(), QList<int>{30});
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    program.menu(kUndo);  // who chooses again means it
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("ENumRec"), "Records: 4");
  }

  void helpGivesWayToTheList() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.click("EHelp");
    program.undo();
    QCOMPARE(program.find<QPushButton>("EHelp")->text(), "&Help");
    QCOMPARE(program.lines("EResults", "Bought"), qsizetype{1});
    QCOMPARE(program.lines("EResults", "Fee Cash"), qsizetype{0});
  }

  void theDisplayPageMakesItsReportAgain() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.page(kDisplayPage);
    auto* funds = program.find<QListWidget>("DDispFunds");
    const auto verify = [&](qsizetype all, qsizetype fees) {
      QCOMPARE(program.lines("DDResults", "Average cost"), all);
      QCOMPARE(program.lines("DDResults", "Fee Cash"), fees);
    };
    program.undo();
    verify(0, 0);  // nothing was shown
    program.redo();
    program.click("DDisplall");
    verify(2, 1);
    program.undo();
    verify(2, 0);
    program.redo();
    verify(2, 1);
    funds->setFocus();
    QTest::keyClick(funds, Qt::Key_Home);
    QTest::keyClick(funds, Qt::Key_Return);
    verify(1, 1);
    program.undo();
    verify(1, 0);
    QCOMPARE(program.label("DDFund"), "Alder");
    QCOMPARE(QApplication::focusWidget(), funds);

    // A fund more or less: of one fund it is no report any more.
    program.page(kEntryPage);
    program.addFund("Abele");
    program.page(kDisplayPage);
    QCOMPARE(funds->count(), 3);
    QTest::keyClick(funds, Qt::Key_Home);
    QTest::keyClick(funds, Qt::Key_Return);
    QCOMPARE(program.label("DDFund"), "Abele");
    program.undo();
    QCOMPARE(funds->count(), 2);
    QCOMPARE(funds->item(0)->text(), "Alder");
    verify(0, 0);
    QCOMPARE(program.label("DDFund"), "");
    program.click("DDisplall");
    program.redo();
    QCOMPARE(funds->count(), 3);
    verify(3, 0);
    QCOMPARE(program.takeTold(), QList<int>{});
  }

  void theCurrentValuePageAndItsChartStartAnew() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.page(kCurrentValuePage);
    const auto calculate = [&] {
      program.type("CVInPrice_1", "20");
      program.type("CVInPrice_2", "30");
      program.click("CVCalc");
    };
    calculate();
    const QString before = program.text("CVResults");
    QVERIFY(before.contains("1,040.50"));
    QCOMPARE(program.global.chart.ChartCount, 2);
    program.undo();
    QCOMPARE(program.text("CVResults"), "");
    program.click("CVGraph");
    QCOMPARE(program.takeTold(), QList<int>{4});
    QCOMPARE(program.box("CVInPrice_1")->text(), "20.0000");  // prices stay
    program.click("CVCalc");
    QVERIFY(program.text("CVResults").contains("1,037.50"));
    program.redo();
    program.click("CVCalc");
    QCOMPARE(program.text("CVResults"), before);

    program.page(kEntryPage);
    program.addFund("Cedar");
    program.page(kCurrentValuePage);
    program.type("CVInPrice_3", "7");
    program.chosen(kUndo);
    QVERIFY(program.manager()->findChild<QLineEdit*>("CVInPrice_3") == nullptr);
    QCOMPARE(program.manager()->focusWidget(), program.box("CVInPrice_1"));
    calculate();
    QCOMPARE(program.text("CVResults"), before);
    QCOMPARE(program.takeTold(), QList<int>{});
    // From the boxes to the buttons, as before.
    program.box("CVInPrice_2")->setFocus(Qt::TabFocusReason);
    program.key(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), program.find<QPushButton>("CVCalc"));
  }

  void theFilePagesUndoToo() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    QVERIFY(program.saved().contains("#2021-01-01#"));
    QVERIFY(program.label("SFDone").startsWith("Saved as"));
    program.undo();
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(program.label("SFDone"), " ");
    // After returning a fund must be chosen again, as always.
    program.page(kEntryPage);
    QCOMPARE(program.list("EFunds")->currentIndex(), -1);
    program.click("ECorrectRec");
    QCOMPARE(program.takeTold(), QList<int>{16});
    QCOMPARE(program.saved(), kTwoFunds);
  }

  // Question 3 is asked for what is not on disk, and for nothing else.
  void whatIsUndoneToTheFileIsUnchanged() {
    UndoFixture program;
    program.addFee("1/1/2021", "3");
    program.addFee("1/2/2021", "4");
    program.undo();
    program.undo();
    program.prompts.answers = {true};
    program.manager()->close();
    QCOMPARE(program.takeAsked(), QList<int>{});
    QTRY_VERIFY(program.program.start().isVisible());
    program.prompts.answers.clear();

    program.open();
    QVERIFY(!program.action(kUndo)->isEnabled());  // of another database
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.addFee("1/1/2021", "3");
    program.prompts.paths.push_back(program.path("undo.PQD"));
    program.page(kSavePage);
    program.undo();
    program.prompts.answers = {true};
    program.manager()->close();
    QCOMPARE(program.takeAsked(), QList<int>{3});
    program.redo();
    program.manager()->close();
    QCOMPARE(program.takeAsked(), QList<int>{});
    QTRY_VERIFY(program.program.start().isVisible());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::UndoWindowTest)
#include "undo_window_test.moc"

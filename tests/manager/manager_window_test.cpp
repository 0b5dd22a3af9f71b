// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTimer>

#include "manager_testing.h"

namespace mirelund::testing {

class ManagerWindowTest : public QObject {
  Q_OBJECT

 private slots:
  // Who turns the page again means it.
  void aDateThatIsNoneKeepsItsPageOnce_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"mouse", "mnemonic", "keys", "wheel"}) QTest::newRow(way) << way;
  }

  void aDateThatIsNoneKeepsItsPageOnce() {
    QFETCH(QString, way);
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", kFeeCash);
    program.type("EInDate", "31/31/31");
    auto* tabs = program.find<QTabWidget>("SSTab2");
    const auto turn = [&] {
      if (way == "mouse") program.page(kDisplayPage);
      if (way == "mnemonic") QTest::keyClick(program.manager(), Qt::Key_U, Qt::AltModifier);
      if (way == "keys") program.key(Qt::Key_Tab, Qt::ControlModifier);
      if (way == "wheel") {
        const QPoint place = tabs->tabBar()->rect().center();
        QWheelEvent event(place, tabs->tabBar()->mapToGlobal(place), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(tabs->tabBar(), &event);
      }
    };
    program.prompts.whileTold = [&] { QVERIFY(program.box("EInDate")->isVisible()); };
    turn();
    QCOMPARE(program.takeTold(), QList<int>{30});
    QCOMPARE(tabs->currentIndex(), int(kEntryPage));
    QCOMPARE(program.box("EInDate")->text(), "31/31/31");
    QVERIFY(tabs->tabBar()->hasFocus());
    turn();
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(tabs->currentIndex(), int(kDisplayPage));
  }

  // Pages are made when they are needed, and the window must not grow then.
  void noPageAsksForMore() {
    const QFont usual = QApplication::font();
    for (const int points : {6, 7, 8, 9, 10, 12, 14, 18, 24}) {
      QFont font = usual;
      font.setPointSize(points);
      QApplication::setFont(font);
      ManagerFixture program;
      auto* tabs = program.find<QTabWidget>("SSTab2");
      const QSize asked = tabs->sizeHint();
      const QSize least = tabs->minimumSizeHint();
      const QSize size = program.manager()->size();
      for (int page = 0; page < tabs->count(); ++page) {
        program.page(page);
        QCOMPARE(tabs->sizeHint(), asked);
        QCOMPARE(tabs->minimumSizeHint(), least);
        QCOMPARE(program.manager()->size(), size);
      }
    }
    QApplication::setFont(usual);
  }

  void tabWalksAPageMadeLateInItsOrder() {
    ManagerFixture program;
    program.page(kCurrentValuePage);
    program.find<QTabWidget>("SSTab2")->tabBar()->setFocus();
    for (const char* name : {"CVCalc", "CVGraph", "CVHelp", "CVPrint", "CVExit", "CVResults"}) {
      program.key(Qt::Key_Tab);
      QCOMPARE(QApplication::focusWidget()->objectName(), name);
    }
  }

  void pagesInTheirOrder() {
    ManagerFixture program;
    auto* tabs = program.find<QTabWidget>("SSTab2");
    QStringList captions;
    for (int i = 0; i < tabs->count(); ++i) captions << tabs->tabText(i).remove('&');
    QCOMPARE(captions, (QStringList{"Open file", "Data entry", "Display funds", "Current value",
                                    "Save file"}));
    QCOMPARE(tabs->currentIndex(), int{kEntryPage});
    QCOMPARE(static_cast<int>(program.global.dialogs.ActiveWindow), 2);
    for (int i = 0; i < tabs->count(); ++i) {
      program.page(i);
      for (const char* counter : {"ENumFunds", "ENumRec", "EDatabase"})
        QVERIFY(program.find<QLabel>(counter)->isVisible());
    }
  }

  void mnemonicsAreUniqueOnEachPage() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    auto* tabs = program.find<QTabWidget>("SSTab2");
    for (int page = 0; page < tabs->count(); ++page) {
      program.page(page);
      QStringList seen;
      for (int i = 0; i < tabs->count(); ++i)
        seen << QKeySequence::mnemonic(tabs->tabText(i)).toString();
      for (auto* button : program.manager()->findChildren<QPushButton*>()) {
        if (!button->isVisible()) continue;
        QVERIFY2(!button->shortcut().isEmpty(), qPrintable(button->objectName()));
        QVERIFY2(!seen.contains(button->shortcut().toString()), qPrintable(button->objectName()));
        seen << button->shortcut().toString();
      }
      QCOMPARE(QSet<QString>(seen.begin(), seen.end()).size(), seen.size());
    }
  }

  void everyControlHasALabelOrAName() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    for (int page = 0; page < 5; ++page) program.page(page);
    QList<QWidget*> labelled;
    for (auto* label : program.manager()->findChildren<QLabel*>())
      if (label->buddy() != nullptr) labelled << label->buddy();
    for (auto* control : program.manager()->findChildren<QWidget*>()) {
      if (control->objectName().isEmpty() || control->objectName().startsWith("qt_")) continue;
      if (qobject_cast<QLineEdit*>(control) != nullptr ||
          qobject_cast<QComboBox*>(control) != nullptr) {
        QVERIFY2(labelled.contains(control), qPrintable(control->objectName()));
        QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
      }
      if (qobject_cast<QPlainTextEdit*>(control) != nullptr)
        QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
    }
  }

  void tabWalksTheEntryPageInVisualOrder() {
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", kBought);
    program.list("EFunds")->setFocus();
    QStringList walked;
    for (int i = 0; i < 15; ++i) {
      walked << QApplication::focusWidget()->objectName();
      program.key(Qt::Key_Tab);
    }
    QCOMPARE(walked, (QStringList{"EFunds", "ECreateFund", "ETransType", "EInDate", "EInPrice",
                                  "EInNumShrs", "EInComm", "EAddaRec", "ECorrectRec", "EDelRec",
                                  "EHelp", "EPrint", "EExit", "EResults", "qt_tabwidget_tabbar"}));
  }

  // --- files --------------------------------------------------------------------

  void openingShowsTheDatabase() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    QCOMPARE(program.label("ENumFunds"), "Funds: 2");
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(program.label("EDatabase"), "Database: test.PQD");
    QCOMPARE(program.find<QTabWidget>("SSTab2")->currentIndex(), int{kEntryPage});
    QCOMPARE(program.list("EFunds")->count(), 2);
    QCOMPARE(program.list("EFunds")->currentIndex(), -1);
    program.page(kOpenPage);  // starts again with the name of the file
    QCOMPARE(program.prompts.initialPaths, (QStringList{"", program.path("test.PQD")}));
    program.page(kOpenPage);
    QCOMPARE(program.prompts.initialPaths.size(), 3);
    program.click("OFOpen");
    QCOMPARE(program.prompts.initialPaths.size(), 4);
    QCOMPARE(program.label("ENumRec"), "Records: 4");
  }

  void theKeyboardChoosesAFilePageWithoutStartingIt() {
    ManagerFixture program;
    auto* bar = program.find<QTabWidget>("SSTab2")->tabBar();
    bar->setFocus();
    program.key(Qt::Key_Left);
    QCoreApplication::processEvents();
    QCOMPARE(program.find<QTabWidget>("SSTab2")->currentIndex(), int{kOpenPage});
    QVERIFY(bar->hasFocus());
    QCOMPARE(program.prompts.initialPaths, QStringList{});
    QVERIFY(program.find("OFOpen")->isVisible());
    QTest::mouseClick(bar, Qt::RightButton, {}, bar->tabRect(kOpenPage).center());
    QCoreApplication::processEvents();
    QCOMPARE(program.prompts.initialPaths, QStringList{});
  }

  void aFileThatCannotBeOpenedLeavesEverything_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("rubbish") << QByteArray(100000, 'x');
    QTest::newRow("cut short") << kTwoFunds.left(kTwoFunds.size() - 30);
    QTest::newRow("too many") << QByteArray(kTwoFunds).replace("4,2,", "601,2,");
    QTest::newRow("more after the end") << kTwoFunds + "1";
  }

  void aFileThatCannotBeOpenedLeavesEverything() {
    QFETCH(QByteArray, bytes);
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.prompts.paths = {program.file("bad.PQD", bytes), program.path("missing.PQD")};
    program.page(kOpenPage);
    program.click("OFOpen");
    QCOMPARE(program.takeTold(), (QList<int>{13, 13}));
    QCOMPARE(program.label("EDatabase"), "Database: test.PQD");
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    program.page(kEntryPage);
    program.choose("EFunds", 1);
    QVERIFY(program.text("EResults").contains("20.0000     50.0000"));
  }

  void savingTellsItsPlace() {
    ManagerFixture program;
    program.page(kSavePage);
    QCOMPARE(program.takeTold(), QList<int>{15});
    QCOMPARE(program.prompts.initialPaths, QStringList{});
    program.page(kEntryPage);
    program.addFund("Alder");
    program.record(kBought, "5/15/2001", {"10.5", "100", "50"});
    program.page(kSavePage);  // cancelled
    QCOMPARE(program.label("SFDone"), " ");
    program.prompts.paths = {"/nowhere/at/all.PQD", program.path("mine.PQD")};
    program.click("SFSave");
    QCOMPARE(program.takeTold(), QList<int>{25});
    QCOMPARE(program.label("EDatabase"), "Database: ");
    program.click("SFSave");
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("SFDone"), "Saved as " + program.path("mine.PQD") + ".");
    QCOMPARE(program.label("EDatabase"), "Database: mine.PQD");
    QCOMPARE(program.bytes("mine.PQD"),
             "1,1,\"All Records\",\"31\"\r\n\"Alder\",\"1\"\r\n"
             "1,10.5,100,50,0,1100,\"B\",#2001-05-15#\r\n");
    program.click("SFExit");  // nothing unsaved: nothing asked
    QCOMPARE(program.takeAsked(), QList<int>{});
    QTRY_VERIFY(program.program.start().isVisible());
  }

  void openingAsksBeforeUnsavedChangesGo() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.record(kFeeCash, "1/1/2021", {"3"});
    program.prompts.answers = {true};
    program.prompts.initialPaths.clear();
    program.page(kOpenPage);
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QCOMPARE(program.global.dialogs.Details.fileName, program.path("test.PQD").toStdString());
    QCOMPARE(program.prompts.initialPaths, QStringList{});
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    program.prompts.answers = {false};
    program.prompts.paths = {program.path("test.PQD")};
    program.click("OFOpen");
    QCOMPARE(program.label("ENumRec"), "Records: 4");
  }

  // --- leaving ------------------------------------------------------------------

  void leavingAsksBeforeUnsavedChangesGo_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"EExit", "DDExit", "CVExit", "OFExit", "SFExit", "frame", "quit"})
      QTest::newRow(way) << way;
  }

  void leavingAsksBeforeUnsavedChangesGo() {
    QFETCH(QString, way);
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.record(kFeeCash, "1/1/2021", {"3"});
    program.prompts.answers = {true, false};
    if (way == "DDExit") program.page(kDisplayPage);
    if (way == "CVExit") program.page(kCurrentValuePage);
    // The keyboard shows a file page without starting it.
    if (way == "OFExit" || way == "SFExit")
      program.find<QTabWidget>("SSTab2")->setCurrentIndex(way == "OFExit" ? kOpenPage : kSavePage);
    const auto leave = [&] {
      if (way == "frame") {
        program.manager()->close();
      } else if (way == "quit") {
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QTimer patience;
        connect(&patience, &QTimer::timeout, [] { QCoreApplication::exit(7); });
        patience.start(50);
        const int code = QCoreApplication::exec();
        QCOMPARE(code, program.prompts.asked.size() == 1 ? 7 : 0);
      } else {
        program.click(way.toLatin1());
      }
    };
    leave();
    QCOMPARE(program.prompts.asked, QList<int>{3});
    QVERIFY(program.manager() != nullptr);
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    QCOMPARE(program.label("EDatabase"), "Database: test.PQD");
    leave();
    QCOMPARE(program.prompts.asked, (QList<int>{3, 3}));
    QTRY_VERIFY(program.manager() == nullptr);
    if (way == "quit") return;
    QTRY_VERIFY(program.program.start().isVisible());

    // A new start is from nothing, path and name too.
    program.open();
    QCOMPARE(program.label("EDatabase"), "Database: ");
    QCOMPARE(program.label("ENumRec"), "Records: 0");
    QCOMPARE(program.bytes("test.PQD"), kTwoFunds);
    program.prompts.initialPaths.clear();
    program.addFund("Alder");
    program.record(kFeeCash, "1/1/2021", {"3"});
    program.page(kSavePage);
    QCOMPARE(program.prompts.initialPaths, QStringList{""});
  }

  // A database without records is left without the question: required.
  void fundsAloneAreNotAskedFor() {
    ManagerFixture program;
    program.addFund("Alder");
    program.click("EExit");
    QCOMPARE(program.takeAsked(), QList<int>{});
    QTRY_VERIFY(program.program.start().isVisible());
  }

  void addingAFundIsAChange() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.addFund("Cedar");
    program.prompts.answers = {true};
    program.click("EExit");
    QCOMPARE(program.takeAsked(), QList<int>{3});
  }

  void theProgramGoesOnWhenTheLastVisibleWindowCloses() {
    ManagerFixture program;
    QTimer::singleShot(0, qApp, [&] {
      program.manager()->close();
      QTimer::singleShot(20, qApp, [] { QCoreApplication::exit(7); });
    });
    QCOMPARE(QCoreApplication::exec(), 7);
    QTRY_VERIFY(program.program.start().isVisible());
  }

  // --- printing -----------------------------------------------------------------

  void printingAsksThenTakesAHeader() {
    ManagerFixture program;
    program.click("EPrint");
    QCOMPARE(program.takeTold(), QList<int>{2});
    program.openFile(kTwoFunds);
    program.choose("EFunds", 1);
    program.prompts.answers = {false, true, true, true};
    program.prompts.lines = {"1", "My own Birch", ""};
    program.click("EPrint");
    program.click("EPrint");
    QVERIFY(!QFile::exists(program.printing.path));
    QCOMPARE(program.takeAsked(), (QList<int>{1, 1}));
    program.click("EPrint");
    QStringList report = program.text("EResults").split('\n');
    while (report.back().isEmpty()) report.removeLast();
    QCOMPARE(program.printing.lines(5.99), QStringList{"My own Birch"} + report);
    program.click("EPrint");
    QCOMPARE(program.printing.lines(5.99), report);
    QCOMPARE(program.takeTold(), QList<int>{});
    QVERIFY(program.prompts.warned.isEmpty());
  }

  // --- a working day ------------------------------------------------------------

  void aWorkingDay() {
    ManagerFixture program;
    program.addFund("Meadow");
    program.addFund("Harbour");
    program.record(kBought, "1/15/2020", {"10", "100", "50"});
    program.record(kSold, "3/2/2021", {"10", "40", "50"});
    program.record(kCashDividend, "6/30/2020", {"100"});
    program.record(kDividendShares, "9/30/2020", {"10", "10"});
    program.record(kFeeCash, "1/4/2021", {"100"});
    program.record(kUnitFee, "2/1/2021", {"10", "5"});
    program.choose("EFunds", 1);
    program.record(kBought, "12/31/2020", {".0001", "1000", ""});
    QCOMPARE(program.label("ENumFunds"), "Funds: 2");
    QCOMPARE(program.label("ENumRec"), "Records: 7");
    program.prompts.paths = {program.path("day.PQD")};
    program.page(kSavePage);
    const QByteArray saved =
        "7,2,\"All Records\",\"31\"\r\n"
        "\"Harbour\",\"2\"\r\n"
        "\"Meadow\",\"1\"\r\n"
        "2,10,100,50,0,1050,\"B\",#2020-01-15#\r\n"
        "2,0,0,0,100,-100,\"C\",#2020-06-30#\r\n"
        "2,10,10,0,0,0,\"D\",#2020-09-30#\r\n"
        "1,.0001,1000,0,0,.1,\"B\",#2020-12-31#\r\n"
        "2,0,0,100,0,100,\"F\",#2021-01-04#\r\n"
        "2,10,-5,0,0,0,\"U\",#2021-02-01#\r\n"
        "2,10,-40,50,0,-350,\"S\",#2021-03-02#\r\n";
    QCOMPARE(program.bytes("day.PQD"), saved);
    program.click("SFExit");
    QTRY_VERIFY(program.program.start().isVisible());

    program.open();
    program.prompts.paths = {program.path("day.PQD")};
    program.page(kOpenPage);
    program.choose("EFunds", 0);
    program.prompts.numbers = {6, 4};
    program.click("ECorrectRec");
    program.type("EInPrice", "12.5");
    program.click("EAddaRec");
    QVERIFY(program.text("EResults").contains("Sold        3/2/2021     12.5000    -40.0000"));
    program.prompts.answers = {true};
    program.click("EDelRec");
    QVERIFY(!program.text("EResults").contains("Fee Cash"));

    program.page(kDisplayPage);
    program.click("DDisplall");
    program.prompts.answers = {true};
    program.prompts.lines = {"All of it"};
    program.click("DDPrint");
    QStringList report = program.text("DDResults").split('\n');
    while (report.back().isEmpty()) report.removeLast();
    QCOMPARE(program.printing.lines(5.99), QStringList{"All of it"} + report);

    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "20");
    program.type("CVInPrice_2", "20");
    program.click("CVCalc");
    // 65 shares held for 1050 - 100 - 450 = 500.
    QVERIFY(program.text("CVResults")
                .contains("Harbour  65.0000      500.00       20.00     1,300.00      800.00 "
                          "  160.00%     6.10%"));
    QCOMPARE(program.global.chart.ChartCount, 2);

    program.prompts.paths = {program.path("day.PQD")};
    program.page(kSavePage);
    QCOMPARE(program.bytes("day.PQD"), QByteArray(saved)
                                           .replace("7,2", "6,2")
                                           .replace("2,0,0,100,0,100,\"F\",#2021-01-04#\r\n", "")
                                           .replace("2,10,-40,50,0,-350", "2,12.5,-40,50,0,-450"));
    program.click("SFExit");
    QTRY_VERIFY(program.program.start().isVisible());
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.takeAsked(), (QList<int>{4, 1}));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ManagerWindowTest)
#include "manager_window_test.moc"

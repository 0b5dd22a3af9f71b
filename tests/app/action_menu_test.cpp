// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the menu bars, by their keys and by the menus.
#include <QAction>
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "app/guide.h"
#include "dialogs/dialog_prompts.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

namespace {

QAction* action(QWidget* window, const QString& name) {
  return window->findChild<QAction*>(name);
}

/// Chooses a command by F10 and the arrow keys.
void chooseByKeys(QWidget* window, const QString& name) {
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F10);
  QAction* const wanted = action(window, name);
  for (int menus = 0; menus < 4; ++menus) {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr);
    if (menu->actions().contains(wanted)) {
      QVERIFY(wanted->isEnabled());
      for (int i = 0; i < menu->actions().size() && menu->activeAction() != wanted; ++i)
        QTest::keyClick(menu, Qt::Key_Down);
      QCOMPARE(menu->activeAction(), wanted);
      QTest::keyClick(menu, Qt::Key_Return);
      return;
    }
    QTest::keyClick(menu, Qt::Key_Right);
  }
  QFAIL("in no menu");
}

QString clipboard() {
  return QGuiApplication::clipboard()->text();
}

}  // namespace

class ActionMenuTest : public QObject {
  Q_OBJECT

 private slots:
  void everyWindowHasItsCommands_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("window");
    QTest::addColumn<QStringList>("commands");
    const QStringList common{"ActionPrint Ctrl+P",     "ActionExport Ctrl+E",
                             "ActionExit Ctrl+W",      "ActionCopy Ctrl+C",
                             "ActionZoomIn Ctrl++",    "ActionZoomOut Ctrl+-",
                             "ActionZoomReset Ctrl+0", "ActionHelp F1",
                             "ActionGuide ",           "ActionAbout "};
    QStringList calculators = common;
    calculators.insert(calculators.indexOf("ActionHelp F1"), "ActionSchedule Ctrl+T");
    QTest::newRow("calculators") << "StartCalc"
                                 << "PQInvest" << calculators;
    QTest::newRow("manager") << "StartStockMgmt"
                             << "PQManagement"
                             << QStringList{"ActionOpen Ctrl+O", "ActionSave Ctrl+S",
                                            "ActionSaveAs Ctrl+Shift+S"} +
                                    common.mid(0, 3) +
                                    QStringList{"ActionUndo Ctrl+Z", "ActionRedo Ctrl+Shift+Z"} +
                                    common.mid(3, 4) + QStringList{"ActionInsights Ctrl+I"} +
                                    common.mid(7);
  }
  void everyWindowHasItsCommands() {
    QFETCH(QString, start);
    QFETCH(QString, window);
    QFETCH(QStringList, commands);
    ProgramFixture program;
    program.click(qPrintable(start));
    QWidget* shown = program.window(qPrintable(window));
    auto* bar = shown->findChild<QMenuBar*>();
    QStringList menus;
    QStringList found;
    for (const QAction* menu : bar->actions()) {
      menus << menu->text();
      for (const QAction* each : menu->menu()->actions()) {
        if (each->isSeparator()) continue;
        QVERIFY2(!each->text().contains('&'), qPrintable(each->text()));
        found << each->objectName() + " " + each->shortcut().toString(QKeySequence::PortableText);
      }
    }
    QCOMPARE(menus, (QStringList{"File", "Edit", "View", "Help"}));
    QCOMPARE(found, commands);
    QVERIFY(bar->isVisible() && bar->geometry().bottom() < shown->rect().center().y());
  }

  void f10OpensTheFirstMenuAndEscapeGoesBackToTheBox() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "5000");
    program.key(Qt::Key_F10);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr);
    QCOMPARE(menu->title(), "File");
    QCOMPARE(menu->activeAction()->objectName(), "ActionPrint");
    QTest::keyClick(menu, Qt::Key_Escape);
    program.key(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), program.box("CGInCostofInvest"));
    // The box was never left: what is typed goes on.
    QTest::keyClicks(QApplication::focusWidget(), "5");
    QCOMPARE(program.box("CGInCostofInvest")->text(), "50005");
  }

  void everyAltKeyKeepsItsButton() {
    ProgramFixture program;
    program.openCalculations(4);
    program.key(Qt::Key_C, Qt::AltModifier);
    QTRY_VERIFY(!program.results().isEmpty());
    program.key(Qt::Key_R, Qt::AltModifier);
    QTRY_COMPARE(program.results(), "");
    program.key(Qt::Key_H, Qt::AltModifier);
    QTRY_VERIFY(!program.results().isEmpty());
    program.key(Qt::Key_X, Qt::AltModifier);
    QTRY_VERIFY(program.program.start().isVisible());
  }

  void helpAndPrintAreThePagesButtons() {
    for (int page = 0; page < 6; ++page) {
      ProgramFixture calculators;
      calculators.openCalculations(page);
      const QString prefix = QStringList{"PG", "MT", "IG", "RI", "CG", "CR"}[page];
      calculators.click(qPrintable(prefix + "Help"));
      const QString help = calculators.results();
      calculators.click("ClearResults");
      QTest::keyClick(calculators.window("PQInvest"), Qt::Key_F1);
      QCOMPARE(calculators.results(), help);
      calculators.click("ClearResults");
      QTest::keyClick(calculators.window("PQInvest"), Qt::Key_P, Qt::ControlModifier);
      QCOMPARE(calculators.prompts.told, QList<int>{1});
    }
  }

  void theBoxIsLeftFirst() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "5000");
    program.key(Qt::Key_F1);
    QCOMPARE(program.box("CGInCostofInvest")->text(), "    $5,000.00");
    QCOMPARE(program.global.boxes.InputValues[1], Currency::whole(5000));
    QCOMPARE(QApplication::focusWidget(), program.box("CGInCostofInvest"));
  }

  // As by the mouse: told once, and whoever asks again means it.
  void aRefusedValueKeepsTheCommandOnce() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.choose("ETransType", kBought);
    program.type("EInDate", "99");
    program.key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(program.takeTold(), QList<int>{30});
    QVERIFY(program.manager() != nullptr);
    program.key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(program.takeTold(), {});
    QTRY_VERIFY(program.program.start().isVisible());
  }

  void copyTakesTheSelectionElseTheReport() {
    ProgramFixture program;
    program.openCalculations(4);
    program.find<QPushButton>("AllGraphs")->setFocus();
    QGuiApplication::clipboard()->setText("before");
    chooseByKeys(program.window("PQInvest"), "ActionCopy");
    QCOMPARE(clipboard(), "before");  // nothing there to copy
    program.click("CGCalculate");
    const QString report = program.results();
    QVERIFY(!report.isEmpty());
    program.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), report);

    auto* results = program.find<QPlainTextEdit>("Results");
    results->setFocus();
    QTest::keyClick(results, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(results, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), report);
    for (int i = 0; i < 2; ++i) QTest::keyClick(results, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(results, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), report.section('\n', 0, 1) + '\n');
    QGuiApplication::clipboard()->clear();
    program.find<QPushButton>("AllGraphs")->setFocus();
    chooseByKeys(program.window("PQInvest"), "ActionCopy");
    QCOMPARE(clipboard(), report.section('\n', 0, 1) + '\n');
  }

  void theClipboardRulesOfTheBoxesStay() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    program.type("CGInCostofInvest", "5000");
    program.key(Qt::Key_A, Qt::ControlModifier);
    program.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), "5000");
    program.key(Qt::Key_Tab);
    QCOMPARE(clipboard(), "");
    // From the menu the box is left, and not entered again: what was copied stays.
    program.type("CGInCostofInvest", "7000");
    chooseByKeys(program.window("PQInvest"), "ActionCopy");
    QCOMPARE(clipboard(), program.results());
    program.key(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), program.box("CGInCostofInvest"));
    QCOMPARE(clipboard(), program.results());
  }

  void editingKeysInABoxActOnItsTyping() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.choose("ETransType", kBought);
    program.type("EInDate", "1/2");
    program.key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(program.box("EInDate")->text() != "1/2");
    program.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(program.box("EInDate")->text(), "1/2");
    QCOMPARE(program.label("ENumRec"), "Records: 4");
  }

  void zoomingSizesTheReport() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    auto* results = program.find<QPlainTextEdit>("Results");
    const int usual = results->font().pointSize();
    const auto size = [&] { return results->font().pointSize(); };
    program.key(Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(size() > usual);
    const int larger = size();
    program.key(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    program.key(Qt::Key_Equal, Qt::ControlModifier);
    QVERIFY(size() > larger);
    program.key(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(size(), usual);
    program.key(Qt::Key_Minus, Qt::ControlModifier);
    QVERIFY(size() < usual);
    chooseByKeys(program.window("PQInvest"), "ActionZoomReset");
    QCOMPARE(size(), usual);
  }

  void openIsThePagesOwn() {
    ManagerFixture program;
    program.prompts.paths.push_back(program.file("one.PQD", kTwoFunds));
    program.key(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(program.list("EFunds")->count(), 2);  // on the page that was in view
    program.choose("EFunds", 1);
    program.choose("ETransType", kBought);
    program.key(Qt::Key_O, Qt::ControlModifier);  // cancelled: all is as it was
    QCOMPARE(program.list("EFunds")->currentIndex(), 1);
    QVERIFY(program.box("EInDate")->isVisible());
    program.addFund("Cedar");
    program.prompts.paths.push_back(program.file("two.PQD", kTwoFunds));
    chooseByKeys(program.manager(), "ActionOpen");
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QCOMPARE(program.label("EDatabase"), "Database: two.PQD");
    QVERIFY(!program.box("EInDate")->isVisible());
  }

  void saveGoesToTheNamedFileUnasked() {
    ManagerFixture program;
    program.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(program.takeTold(), QList<int>{15});
    program.openFile(kTwoFunds);
    program.addFund("Cedar");
    program.record(kBought, "1/2/2021", {"10", "5", "0"});
    const auto asked = program.prompts.initialPaths.size();
    program.key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(program.bytes("test.PQD").contains("Cedar"));
    QCOMPARE(program.prompts.initialPaths.size(), asked);
    // Another program's change is asked about, as on the page.
    program.file("test.PQD", kTwoFunds);
    program.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(program.prompts.confirmed.size(), 1);
    QCOMPARE(program.bytes("test.PQD"), kTwoFunds);
    program.prompts.paths.push_back(program.path("other.PQD"));
    program.key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(program.prompts.initialPaths.size(), asked + 1);
    QVERIFY(program.bytes("other.PQD").contains("Cedar"));
    QCOMPARE(program.label("EDatabase"), "Database: other.PQD");
  }

  void saveAsksForANameWhereThereIsNone() {
    ManagerFixture program;
    program.addFund("Cedar");
    program.record(kBought, "1/2/2021", {"10", "5", "0"});
    program.prompts.paths.push_back(program.path("new.PQD"));
    program.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(program.prompts.initialPaths, QStringList{""});
    QVERIFY(program.bytes("new.PQD").contains("Cedar"));
  }

  void aPageWithoutAReportHasNoCommandsForIt() {
    ManagerFixture program;
    program.page(kOpenPage);
    for (const char* name : {"ActionPrint", "ActionCopy", "ActionZoomIn", "ActionHelp"})
      QVERIFY2(!action(program.manager(), name)->isEnabled(), name);
    program.page(kDisplayPage);
    for (const char* name : {"ActionPrint", "ActionCopy", "ActionZoomIn", "ActionHelp"})
      QVERIFY2(action(program.manager(), name)->isEnabled(), name);
    program.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(program.takeTold(), QList<int>{2});
    program.key(Qt::Key_F1);
    QVERIFY(!program.text("DDResults").isEmpty());
    QCOMPARE(program.find<QPushButton>("DDHelp")->text(), "Close &Help");
  }

  void exitIsThePagesExit() {
    ManagerFixture program;
    program.addFund("Cedar");
    program.record(kBought, "1/2/2021", {"10", "5", "0"});
    program.prompts.answers = {true};  // go back
    program.key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QVERIFY(program.manager() != nullptr);
    chooseByKeys(program.manager(), "ActionExit");
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QTRY_VERIFY(program.program.start().isVisible());
  }

  void aboutSaysNameVersionAndLicence() {
    ProgramFixture program;
    program.openCalculations(4);
    chooseByKeys(program.window("PQInvest"), "ActionAbout");
    QCOMPARE(program.prompts.informed.size(), 2);
    const QString text = program.prompts.informed[1];
    QVERIFY(text.startsWith("Mirelund 3.5\n"));
    QVERIFY(text.contains("GNU General Public License, version 3"));
  }

  void escapeClosesTheChartAndEveryDialog() {
    Global global;
    DialogPrompts prompts(global.dialogs);
    PdfTarget printing;
    Program program(prompts, printing, global);
    program.start().show();
    ProgramFixture::click("StartCalc");
    QWidget* window = ProgramFixture::window("PQInvest");
    QVERIFY(ProgramFixture::isActivated(window));
    ProgramFixture::click("IGCalculate");
    const std::pair<const char*, std::function<void()>> opened[] = {
        {"chart", [] { ProgramFixture::click("AllGraphs"); }},
        {"message", [&] { prompts.tell(window, Message::NothingToGraph); }},
        {"question", [&] { QVERIFY(!prompts.ask(window, Question::Print)); }},
        {"line", [&] { QVERIFY(!prompts.askLine(window, "Input", "A line")); }},
        {"number", [&] { QVERIFY(!prompts.askRecordNumber(window, "A number")); }},
        {"warning", [&] { prompts.warn(window, "A text"); }},
        {"information", [&] { prompts.inform(window, "Title", "A text"); }},
        {"confirmation", [&] { QVERIFY(!prompts.confirm(window, "A text", "Do it")); }},
        {"open", [&] { QCOMPARE(prompts.askOpenPath(window, "Open", "", "All (*.PQD)"), ""); }},
        {"save", [&] { QCOMPARE(prompts.askSavePath(window, "Save", "", "All (*.PQD)"), ""); }},
    };
    for (const auto& [name, open] : opened) {
      bool stood = false;
      QTimer presser;
      connect(&presser, &QTimer::timeout, this, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || QApplication::focusWidget() == nullptr) return;
        stood = true;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
      });
      presser.start(20);
      open();
      QVERIFY2(stood && QApplication::activeModalWidget() == nullptr, name);
    }
    delete window;
  }

  void theGuideLiesBesideTheProgram() {
    QTemporaryDir root;
    const auto page = [&](const QString& path) {
      const QFileInfo file(root.filePath(path));
      QDir().mkpath(file.path());
      QFile out(file.filePath());
      if (!out.open(QIODevice::WriteOnly)) qFatal("cannot write");
      return file.canonicalFilePath();
    };
    QDir().mkpath(root.filePath("bin"));
    const QString bin = root.filePath("bin");
    QCOMPARE(guideOf(bin), "");
    const QString installed = page("share/doc/mirelund/guide/index.html");
    QCOMPARE(guideOf(bin), installed);
    const QString built = page("docs/guide/index.html");
    QCOMPARE(guideOf(bin), built);
  }

  void theGuideIsOpenedOrSaidToBeAway() {
    ProgramFixture program;
    program.openCalculations(4);
    const bool built = !guideOf(QCoreApplication::applicationDirPath()).isEmpty();
    chooseByKeys(program.window("PQInvest"), "ActionGuide");
    QCOMPARE(program.prompts.browsed.size(), built ? 1 : 0);
    QCOMPARE(program.prompts.warned.size(), built ? 0 : 1);
  }

  void aPageGoesToTheDesktopsBrowser() {
    opened_ = QUrl();
    QDesktopServices::setUrlHandler("file", this, "open");
    DialogState state;
    DialogPrompts prompts(state);
    QVERIFY(prompts.browse("/somewhere/a page.html"));
    state.cancelsAll = true;
    QVERIFY(prompts.browse("/somewhere/else.html"));
    QDesktopServices::unsetUrlHandler("file");
    QCOMPARE(opened_, QUrl::fromLocalFile("/somewhere/a page.html"));
  }

 public slots:
  void open(const QUrl& url) { opened_ = url; }

 private:
  QUrl opened_;
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ActionMenuTest)
#include "action_menu_test.moc"

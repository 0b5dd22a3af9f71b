// SPDX-License-Identifier: GPL-3.0-or-later
#include <QClipboard>
#include <QLabel>
#include <QMenu>

#include "app/how_to_use_help.h"
#include "app/input_boxes.h"
#include "calc/box_tables.h"
#include "ui_testing.h"

namespace mirelund::testing {

class CalculatorWindowTest : public QObject {
  Q_OBJECT

 private slots:
  // Pages are made when they are needed, and the window must not grow then.
  void noPageAsksForMore() {
    const QFont usual = QApplication::font();
    for (const int points : {6, 7, 8, 9, 10, 12, 14, 18, 24}) {
      QFont font = usual;
      font.setPointSize(points);
      QApplication::setFont(font);
      ProgramFixture program;
      program.click("StartCalc");
      auto* tabs = program.find<QTabWidget>("SSTab1");
      const QSize asked = tabs->sizeHint();
      const QSize least = tabs->minimumSizeHint();
      const QSize size = program.window("PQInvest")->size();
      for (int page = 0; page < tabs->count(); ++page) {
        program.choosePage(page);
        QCOMPARE(tabs->sizeHint(), asked);
        QCOMPARE(tabs->minimumSizeHint(), least);
        QCOMPARE(program.window("PQInvest")->size(), size);
      }
    }
    QApplication::setFont(usual);
  }

  void tabWalksAPageMadeLateInItsOrder() {
    ProgramFixture program;
    program.openCalculations(4);
    program.find<QTabWidget>("SSTab1")->tabBar()->setFocus();
    for (const char* name :
         {"CGInCostofInvest", "CGInValueNow", "CGInNumOfYrs", "CGInNameOfInvest", "CGCalculate",
          "CGHelp", "CGPrint", "AllGraphs", "HowToUse", "ClearResults", "ExitProgram", "Results"}) {
      program.key(Qt::Key_Tab);
      QCOMPARE(QApplication::focusWidget()->objectName(), name);
    }
  }

  void theStartWindowOpensAndTakesBack() {
    ProgramFixture program;
    QCOMPARE(program.find<QPushButton>("StartCalc")->text(), "Calculations");
    QCOMPARE(program.find<QPushButton>("StartStockMgmt")->text(), "Investment manager");
    QCOMPARE(program.find<QPushButton>("StartExit")->text(), "Exit program");
    program.click("StartCalc");
    QVERIFY(!program.program.start().isVisible());
    QVERIFY(QTest::qWaitForWindowActive(program.window("PQInvest")));
    program.click("ExitProgram");
    QTRY_VERIFY(program.program.start().isVisible());
    QVERIFY(program.window("PQInvest") == nullptr);
    program.click("StartCalc");
    program.window("PQInvest")->close();
    QTRY_VERIFY(program.program.start().isVisible());
  }

  void fitsASmallScreenAndGivesEveryColumnItsPlaceWhereThereIsRoom() {
    ProgramFixture program;
    program.click("StartCalc");
    QWidget* window = program.window("PQInvest");
    const QSize screen = window->screen()->availableSize();
    QVERIFY(window->width() <= screen.width() && window->height() <= screen.height());
    QVERIFY2(window->minimumSizeHint().width() <= 960,
             qPrintable(QString::number(window->minimumSizeHint().width())));
    window->resize(window->sizeHint());
    QTest::qWait(20);
    auto* results = program.find<QPlainTextEdit>("Results");
    const double wanted = QFontMetricsF(results->font()).horizontalAdvance(QString(45, '0'));
    QVERIFY(results->viewport()->width() >= wanted);
    // Every caption is whole.
    auto* bar = program.find<QTabWidget>("SSTab1")->tabBar();
    QCOMPARE(bar->tabRect(bar->count() - 1).right(), bar->sizeHint().width() - 1);
  }

  void startsOnInvestedGrowth() {
    ProgramFixture program;
    program.click("StartCalc");
    auto* tabs = program.find<QTabWidget>("SSTab1");
    QCOMPARE(tabs->currentIndex(), 2);
    QStringList captions;
    for (int i = 0; i < tabs->count(); ++i) captions << tabs->tabText(i);
    QCOMPARE(captions, (QStringList{"Pension growth", "Mortgage tables", "Invested growth",
                                    "Retired income", "Compound gain", " Capital required"}));
    QCOMPARE(static_cast<int>(program.global.dialogs.ActiveWindow), 1);
    QCOMPARE(program.global.CurrentTab, 2);
    QCOMPARE(program.find<QPushButton>("AllGraphs")->text(), "&Graph");
    QCOMPARE(program.find<QPushButton>("HowToUse")->text(), "How to &use");
    QCOMPARE(program.find<QPushButton>("ClearResults")->text(), "Clear &results");
    QCOMPARE(program.find<QPushButton>("ExitProgram")->text(), "E&xit to menu");
  }

  void aVisitStartsThePageAfresh() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "5000");
    program.click("CGCalculate");
    QVERIFY(!program.results().isEmpty());
    QCOMPARE(program.global.reports.ComparisonCount, 1);
    program.choosePage(5);
    QCOMPARE(program.results(), "");
    QCOMPARE(program.global.CurrentTab, 5);
    program.choosePage(4);
    QCOMPARE(program.box("CGInCostofInvest")->text(), "   $10,000.00");
    QCOMPARE(program.global.boxes.InputValues[1], Currency::whole(10000));
    QCOMPARE(program.global.reports.ComparisonCount, 0);
    QCOMPARE(program.global.chart.ChartCount, 0);
    QCOMPARE(program.results(), "");
  }

  void everyPageShowsItsInitialValues() {
    ProgramFixture program;
    program.click("StartCalc");
    for (int page = 0; page < 6; ++page) {
      program.choosePage(page);
      for (const BoxRule& rule : kBoxTables[static_cast<std::size_t>(page)]) {
        if (rule.option != 0 || rule.look == BoxLook::Text || rule.name == "MTInMthPayment")
          continue;
        Global fresh;
        QCOMPARE(program.box(std::string(rule.name).c_str())->text().toStdString(),
                 loadBox(fresh.boxes, rule));
        auto* label = program.find<QFrame>(qPrintable(QString("FrameAll_%1").arg(page)));
        QVERIFY(label != nullptr);
      }
    }
  }

  void clearResultsKeepsInputsAndCount() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "5000");
    program.click("CGCalculate");
    program.click("ClearResults");
    QCOMPARE(program.results(), "");
    QCOMPARE(program.global.reports.ReportLines[1], "");
    QCOMPARE(program.global.reports.ComparisonCount, 1);
    QCOMPARE(program.box("CGInCostofInvest")->text(), "    $5,000.00");
    program.click("AllGraphs");
    QCOMPARE(program.prompts.told, QList<int>{4});
  }

  void printAndGraphNeedAReport() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGPrint");
    program.click("AllGraphs");
    program.click("HowToUse");
    program.click("AllGraphs");
    QCOMPARE(program.prompts.told, (QList<int>{1, 4, 4}));
    for (QWidget* over : program.prompts.over) QCOMPARE(over, program.window("PQInvest"));
  }

  void howToUseTakesThePlaceOfTheReport() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("HowToUse");
    QCOMPARE(program.results(), QString::fromStdString(howToUseHelp()).remove('\r'));
    QVERIFY(program.results().startsWith("        Mirelund v3.5\n"));
    program.click("CGCalculate");
    QVERIFY(program.results().startsWith("Cost of Investment:"));
    QCOMPARE(program.global.reports.ComparisonCount, 1);
  }

  void theReportBoxIsReadOnlyAndSelectable() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    auto* box = program.find<QPlainTextEdit>("Results");
    QVERIFY(box->isReadOnly());
    const std::unique_ptr<QMenu> menu(box->createStandardContextMenu());
    QStringList actions;
    for (QAction* action : menu->actions())
      if (!action->isSeparator()) actions << action->text().section('\t', 0, 0).remove('&');
    QVERIFY2(actions.contains("Copy") && actions.contains("Select All"),
             qPrintable(actions.join(", ")));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().trimmed(), program.results().trimmed());
    QTest::keyClicks(box, "x");
    QVERIFY(!program.results().contains("x\n"));
  }

  void mnemonicsAreUniqueOnEachPage() {
    ProgramFixture program;
    program.click("StartCalc");
    for (int page = 0; page < 6; ++page) {
      program.choosePage(page);
      QStringList seen;
      for (auto* button : program.window("PQInvest")->findChildren<QPushButton*>()) {
        if (!button->isVisible()) continue;
        QVERIFY2(!button->shortcut().isEmpty(), qPrintable(button->objectName()));
        QVERIFY2(!seen.contains(button->shortcut().toString()), qPrintable(button->objectName()));
        seen << button->shortcut().toString();
      }
    }
  }

  void everyBoxHasItsLabelAndEveryControlAName() {
    ProgramFixture program;
    program.click("StartCalc");
    QWidget* window = program.window("PQInvest");
    QList<QWidget*> labelled;
    for (auto* label : window->findChildren<QLabel*>())
      if (label->buddy() != nullptr) labelled << label->buddy();
    for (auto* edit : window->findChildren<QLineEdit*>()) {
      if (qobject_cast<QComboBox*>(edit->parent()) != nullptr) continue;
      QVERIFY2(labelled.contains(edit), qPrintable(edit->objectName()));
      QVERIFY2(!edit->accessibleName().isEmpty(), qPrintable(edit->objectName()));
    }
    for (auto* list : window->findChildren<QComboBox*>())
      QVERIFY2(!list->accessibleName().isEmpty(), qPrintable(list->objectName()));
  }

  void tabWalksThePageInVisualOrder() {
    ProgramFixture program;
    program.openCalculations(4);
    program.box("CGInCostofInvest")->setFocus(Qt::TabFocusReason);
    QStringList walked;
    for (int i = 0; i < 12; ++i) {
      walked << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(walked,
             (QStringList{"CGInCostofInvest", "CGInValueNow", "CGInNumOfYrs", "CGInNameOfInvest",
                          "CGCalculate", "CGHelp", "CGPrint", "AllGraphs", "HowToUse",
                          "ClearResults", "ExitProgram", "Results"}));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::CalculatorWindowTest)
#include "calculator_window_test.moc"

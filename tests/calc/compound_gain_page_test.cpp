// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_testing.h"

namespace mirelund::testing {

class CompoundGainPageTest : public QObject {
  Q_OBJECT

 private slots:
  void calculateSeesTheValueHoweverItIsReached_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"mouse", "mnemonic", "space", "enter"}) QTest::newRow(way) << way;
  }

  void calculateSeesTheValueHoweverItIsReached() {
    QFETCH(QString, way);
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInValueNow", "40000");
    QLineEdit* box = program.box("CGInValueNow");
    if (way == "mouse") program.click("CGCalculate");
    if (way == "mnemonic") QTest::keyClick(box, Qt::Key_C, Qt::AltModifier);
    if (way == "space" || way == "enter") {
      program.find<QPushButton>("CGCalculate")->setFocus(Qt::TabFocusReason);
      program.key(way == "space" ? Qt::Key_Space : Qt::Key_Return);
    }
    QTRY_COMPARE(box->text(), "   $40,000.00");  // a mnemonic's click shows for a moment
    QVERIFY(program.results().contains("   40,000.00  31.951%  300.00%"));
    QVERIFY(program.results().contains("Present/future value:           $40,000.00"));
  }

  void tenComparisonsAndTheNextBegin() {
    ProgramFixture program;
    program.openCalculations(4);
    for (int i = 1; i <= 10; ++i) {
      program.type("CGInNumOfYrs", qPrintable(QString::number(i)));
      program.click("CGCalculate");
      QCOMPARE(program.results().count("Cost of Investment:"), i);
    }
    QCOMPARE(program.prompts.told, QList<int>{8});
    QCOMPARE(program.global.chart.ChartCount, 10);

    // What is on screen is printed, although the run has ended.
    program.click("CGPrint");
    QVERIFY(program.printing.lines(6.59).contains("10   10,000.00    20,000.00   7.177%  100.00%"));

    program.click("CGCalculate");
    QCOMPARE(program.results().count("Cost of Investment:"), 1);
  }

  void zeroInABoxIsRefused() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "0");
    program.click("CGCalculate");
    QCOMPARE(program.prompts.told, QList<int>{18});
    QCOMPARE(program.results(), "");
    program.type("CGInCostofInvest", "1");
    program.click("CGCalculate");
    QCOMPARE(program.results().count("Cost of Investment:"), 2);
  }

  void helpThenCalculateStartsAgainAndHelpCanBePrinted() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    program.click("CGHelp");
    QVERIFY(program.results().startsWith("Compare up to 10 different investments on\n"));
    program.click("CGPrint");
    QCOMPARE(program.printing.lines(6.59).first(), "Compare up to 10 different investments on");
    program.click("CGCalculate");
    QCOMPARE(program.results().count("Cost of Investment:"), 1);
    QVERIFY(!program.results().contains("Compare"));
  }

  void thePrintoutIsTheReportLineForLine() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    for (const auto size : {QPageSize::A4, QPageSize::Letter}) {
      program.printing.pageSize = size;
      program.click("CGPrint");
      QStringList report = program.results().split('\n');
      while (report.back().isEmpty()) report.removeLast();
      QCOMPARE(program.printing.lines(6.59), report);
      QVERIFY(program.printing.run("pdffonts", {program.printing.path}).contains("LiberationMono"));
    }
    QVERIFY(program.prompts.warned.isEmpty());
  }

  void aPrintoutThatFailsIsTold() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    program.printing.path = "/nowhere/at/all.pdf";
    program.click("CGPrint");
    QCOMPARE(program.prompts.warned.size(), 1);
    QVERIFY(program.prompts.warned.front().contains("/nowhere/at/all.pdf"));
    program.printing.path = "/dev/full";
    program.click("CGPrint");
    QCOMPARE(program.prompts.warned.size(), 2);
    program.printing.cancelled = true;
    program.click("CGPrint");
    QCOMPARE(program.prompts.warned.size(), 2);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::CompoundGainPageTest)
#include "compound_gain_page_test.moc"

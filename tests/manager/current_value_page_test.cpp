// SPDX-License-Identifier: GPL-3.0-or-later
#include <QClipboard>

#include "charts/chart_kind.h"
#include "manager/manager_window.h"
#include "manager_testing.h"

namespace mirelund::testing {

class CurrentValuePageTest : public QObject {
  Q_OBJECT

 private slots:
  void everyFundHasItsPriceBox() {
    ManagerFixture program;
    program.page(kCurrentValuePage);
    QVERIFY(program.label("CVHint").startsWith("There are no funds yet"));
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    QStringList names;
    for (auto* label : program.manager()->findChildren<QLabel*>())
      if (label->buddy() != nullptr && label->buddy()->objectName().startsWith("CVInPrice"))
        names << label->text() + " " + label->buddy()->objectName();
    QCOMPARE(names, (QStringList{"Alder CVInPrice_1", "Birch CVInPrice_2"}));
    QCOMPARE(QApplication::focusWidget()->objectName(), "CVInPrice_1");
  }

  void enterWalksThePricesAndCalculates() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    QTest::keyClicks(QApplication::focusWidget(), "12.34567");
    program.key(Qt::Key_Return);
    QCOMPARE(program.box("CVInPrice_1")->text(), "12.3456");
    QTest::keyClicks(QApplication::focusWidget(), "20");
    program.key(Qt::Key_Return);
    // 100 x 12.3456 = 1,234.56; less 1,037.50 paid = 197.06, 18.99 %.
    QVERIFY(program.text("CVResults")
                .contains("Alder   100.0000    1,037.50       12.35     1,234.56      197.06 "
                          "   18.99%    55.25%"));
    QCOMPARE(program.global.chart.ChartCount, 2);
    QTest::keyClick(program.box("CVInPrice_1"), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(program.prompts.told, QList<int>{});
  }

  void refusalsComeInTheirOrder() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.addFund("Cedar");
    program.page(kCurrentValuePage);
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{28});
    program.page(kEntryPage);
    program.choose("EFunds", 2);
    program.record(kBought, "1/1/2021", {"3", "4", ""});
    program.page(kCurrentValuePage);
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{24});
    for (const char* box : {"CVInPrice_1", "CVInPrice_2"}) program.type(box, "20");
    program.type("CVInPrice_3", "0");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{24});
    program.type("CVInPrice_3", ".");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{24});
    program.type("CVInPrice_3", "900000000000000");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{3});
    QCOMPARE(program.text("CVResults"), "");
    program.type("CVInPrice_3", "9000000000000000000");
    program.click("CVCalc");  // the box was refused: nothing is calculated
    QCOMPARE(program.takeTold(), QList<int>{3});
    program.click("CVGraph");
    program.click("CVPrint");
    QCOMPARE(program.takeTold(), (QList<int>{4, 2}));
  }

  void pricesStayWhileTheFundsDo() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "20");
    program.type("CVInPrice_2", "30");
    program.click("CVCalc");
    QVERIFY(!program.text("CVResults").isEmpty());
    program.page(kEntryPage);
    program.choose("EFunds", 0);
    program.record(kFeeCash, "1/1/2021", {"3"});
    program.page(kCurrentValuePage);
    QCOMPARE(program.text("CVResults"), "");
    QCOMPARE(program.global.chart.ChartCount, 0);
    QCOMPARE(program.box("CVInPrice_2")->text(), "30.0000");
    program.click("CVCalc");
    QVERIFY(!program.text("CVResults").isEmpty());
    program.prompts.answers = {false};  // the fee is not to be kept
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    QCOMPARE(program.text("CVResults"), "");
    QCOMPARE(program.box("CVInPrice_2")->text(), "");
  }

  void helpToggles() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    program.click("CVHelp");
    QCOMPARE(program.find<QPushButton>("CVHelp")->text(), "Close &Help");
    QVERIFY(program.text("CVResults")
                .startsWith("Type the current share price or whatif price beside each fund name "
                            "then click Calculate."
                            "\nFor DtaSampl enter \n20.00 for all current price inputs. \n"));
    program.click("CVHelp");
    QCOMPARE(program.text("CVResults"), "");
  }

  void theChartGetsFundsAndKind() {
    Global global;
    FakePrompts prompts;
    PdfTarget printing;
    QList<QWidget*> charts;
    PQManagement window({global, prompts, printing, [&](QWidget* over) { charts << over; }, {}});
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTemporaryDir folder;
    QFile file(folder.filePath("a.PQD"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(kTwoFunds);
    file.close();
    prompts.paths = {file.fileName()};
    ManagerFixture::page(kOpenPage);
    ManagerFixture::page(kCurrentValuePage);
    ManagerFixture::click("CVGraph");
    QCOMPARE(prompts.told, QList<int>{4});
    ManagerFixture::type("CVInPrice_1", "20");
    ManagerFixture::type("CVInPrice_2", "20");
    ManagerFixture::click("CVCalc");
    ManagerFixture::click("CVGraph");
    QCOMPARE(charts, QList<QWidget*>{&window});
    QCOMPARE(global.chart.ChartKind, ChartKind::Manager);
    QCOMPARE(global.chart.ChartCount, 2);
    QCOMPARE(global.chart.ChartNames, (std::vector<std::string>{"Alder", "Birch"}));
  }

  void tabWalksThePricesThenTheButtons() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    QStringList walked;
    for (int i = 0; i < 10; ++i) {
      walked << QApplication::focusWidget()->objectName();
      program.key(Qt::Key_Tab);
    }
    QCOMPARE(walked,
             (QStringList{"CVInPrice_1", "CVInPrice_2", "CVCalc", "CVGraph", "CVHelp", "CVPrint",
                          "CVExit", "CVResults", "qt_tabwidget_tabbar", "CVInPrice_1"}));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::CurrentValuePageTest)
#include "current_value_page_test.moc"

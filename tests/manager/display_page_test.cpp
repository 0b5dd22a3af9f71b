// SPDX-License-Identifier: GPL-3.0-or-later
#include <QScrollBar>

#include "manager_testing.h"

namespace mirelund::testing {

namespace {

// Funds A to E with 30 fees each, more than a view holds.
QByteArray manyRecords() {
  QByteArray bytes = "150,5,\"All Records\",\"31\"\r\n";
  for (int fund = 1; fund <= 5; ++fund)
    bytes += QString("\"Fund %1\",\"%2\"\r\n").arg(QChar('A' + fund - 1)).arg(fund).toLatin1();
  for (int i = 0; i < 150; ++i)
    bytes += QString("%1,0,0,%2,0,%2,\"F\",#%3-01-01#\r\n")
                 .arg(i % 5 + 1)
                 .arg(i + 1)
                 .arg(1900 + i / 5)
                 .toLatin1();
  return bytes;
}

}  // namespace

class DisplayPageTest : public QObject {
  Q_OBJECT

 private slots:
  void aDoubleClickOrEnterShowsAFund() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kDisplayPage);
    auto* funds = program.find<QListWidget>("DDispFunds");
    QCOMPARE(funds->count(), 2);
    QCOMPARE(program.text("DDResults"), "");
    const QPoint birch = funds->visualItemRect(funds->item(1)).center();
    QTest::mouseClick(funds->viewport(), Qt::LeftButton, {}, birch);
    QTest::mouseDClick(funds->viewport(), Qt::LeftButton, {}, birch);
    QVERIFY(program.text("DDResults").contains("Bought      2/3/2019     20.0000     50.0000"));
    QVERIFY(program.text("DDResults").contains("Average cost per share = 19.8550"));
    QCOMPARE(program.label("DDFund"), "Birch");
    funds->setFocus();
    program.key(Qt::Key_Up);
    program.key(Qt::Key_Return);
    QVERIFY(program.text("DDResults").contains("Bought      1/2/2019     10.0000    100.0000"));
    QCOMPARE(program.label("DDFund"), "Alder");
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
  }

  void allFundsFollowEachOtherAndTheLabelFollowsTheView() {
    ManagerFixture program;
    program.openFile(manyRecords());
    program.page(kDisplayPage);
    program.click("DDisplall");
    QVERIFY(program.text("DDResults").contains("Total all funds:              "));
    QCOMPARE(program.label("DDFund"), "Fund A");
    auto* report = program.find<QPlainTextEdit>("DDResults");
    auto* bar = report->verticalScrollBar();
    // A block is 3 lines of heading, 30 records, underline, totals, average.
    bar->setValue(35);
    QCOMPARE(program.label("DDFund"), "Fund A");
    bar->setValue(36);
    QCOMPARE(program.label("DDFund"), "Fund B");
    report->setFocus();
    QTest::keyClick(report, Qt::Key_End, Qt::ControlModifier);
    QVERIFY(program.label("DDFund") == "Fund D" || program.label("DDFund") == "Fund E");
    const QString where = program.label("DDFund");
    program.click("DDHelp");
    QCOMPARE(program.label("DDFund"), "");
    program.click("DDHelp");
    QCOMPARE(program.label("DDFund"), "Fund A");
    QVERIFY(where != "Fund A");
  }

  void helpToggles() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kDisplayPage);
    program.click("DDisplall");
    const QString report = program.text("DDResults");
    program.click("DDHelp");
    QCOMPARE(program.find<QPushButton>("DDHelp")->text(), "Close &Help");
    QCOMPARE(program.text("DDResults"),
             "To show an individual fund. Double click on it.\n"
             "For all funds click the Display All Funds button.\n");
    program.click("DDHelp");
    QCOMPARE(program.find<QPushButton>("DDHelp")->text(), "&Help");
    QCOMPARE(program.text("DDResults"), report);
    program.click("DDHelp");
    program.click("DDisplall");
    QCOMPARE(program.find<QPushButton>("DDHelp")->text(), "&Help");
    program.click("DDHelp");
    program.page(kEntryPage);
    program.page(kDisplayPage);
    QCOMPARE(program.find<QPushButton>("DDHelp")->text(), "&Help");
    QCOMPARE(program.text("DDResults"), report);
  }

  void aReportOfChangedRecordsGoes() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kDisplayPage);
    program.click("DDisplall");
    program.page(kCurrentValuePage);
    program.page(kDisplayPage);
    QVERIFY(!program.text("DDResults").isEmpty());
    program.page(kEntryPage);
    program.choose("EFunds", 0);
    program.record(kFeeCash, "1/1/2021", {"3"});
    program.page(kDisplayPage);
    QCOMPARE(program.text("DDResults"), "");
    QCOMPARE(program.label("DDFund"), "");
  }

  void fundsOfOneNameAreShownByTheirRow() {
    ManagerFixture program;
    program.openFile(QByteArray(kTwoFunds).replace("Birch", "Alder"));
    program.page(kDisplayPage);
    auto* funds = program.find<QListWidget>("DDispFunds");
    funds->setCurrentRow(1);
    QTest::keyClick(funds, Qt::Key_Return);
    QVERIFY(program.text("DDResults").contains("20.0000     50.0000"));
  }

  void aLongNameGivesWayToTheWindow() {
    ManagerFixture program;
    const int width = program.manager()->width();
    program.openFile(QByteArray(kTwoFunds).replace("Alder", QByteArray(30000, 'W')));
    for (const int page : {kEntryPage, kDisplayPage, kCurrentValuePage}) program.page(page);
    program.page(kDisplayPage);
    program.click("DDisplall");
    QVERIFY(program.label("DDFund").size() < 100);
    QVERIFY(program.manager()->minimumSizeHint().width() <= width);
    QCOMPARE(program.manager()->width(), width);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::DisplayPageTest)
#include "display_page_test.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// What the manager does at the edges of what a person types and a file holds.
#include <QClipboard>
#include <QInputMethodEvent>

#include "dialogs/dialog_prompts.h"
#include "dialogs/playing.h"
#include "manager_testing.h"

namespace mirelund::testing {

namespace {

// The fund of row 1 has no name.
const QByteArray kUnnamed = QByteArray(kTwoFunds).replace("\"Alder\"", "\"\"");

constexpr const char* kTooLarge = "99999999999999999999";

}  // namespace

class ManagerBoundariesTest : public QObject {
  Q_OBJECT

  // The line, counted from 0, that follows the heading of a report.
  static QString line(const char* report, int number) {
    return ManagerFixture::text(report).split('\n').value(3 + number);
  }

 private slots:
  // --- prices out of range --------------------------------------------------------

  // What is told when the price is left stops Calculate; what was told before does not.
  void aPriceOutOfRangeIsNotCalculatedWith_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"mouse", "chord", "Enter", "later"}) QTest::newRow(way) << way;
  }

  void aPriceOutOfRangeIsNotCalculatedWith() {
    QFETCH(QString, way);
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "20");
    program.type("CVInPrice_2", "30");
    program.click("CVCalc");
    const QString table = program.text("CVResults");
    QVERIFY(!table.isEmpty());
    QCOMPARE(program.global.chart.ChartCount, 2);

    program.type("CVInPrice_2", kTooLarge);
    if (way == "mouse") program.click("CVCalc");
    if (way == "chord") QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
    if (way == "Enter") program.key(Qt::Key_Return);
    if (way == "later") {
      program.key(Qt::Key_Tab);
      QCOMPARE(program.takeTold(), QList<int>{3});  // told as it is left
      program.click("CVCalc");                      // and why nothing is calculated
    }
    QTRY_COMPARE(program.prompts.told, QList<int>{3});
    QCOMPARE(program.text("CVResults"), way == "later" ? "" : table);
    QCOMPARE(program.global.chart.ChartCount, way == "later" ? 0 : 2);
    QCOMPARE(program.box("CVInPrice_2")->text(), kTooLarge);  // to be seen and mended
    program.takeTold();
    if (way == "later") {
      program.click("CVGraph");
      program.click("CVPrint");
      QCOMPARE(program.takeTold(), (QList<int>{4, 2}));
    }

    program.type("CVInPrice_2", "30");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{});
    QVERIFY(program.text("CVResults").contains("Tot:"));
  }

  void aPriceIsTakenUpToTheLargestAmount() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    QLineEdit* box = program.box("CVInPrice_1");
    program.type("CVInPrice_1", "922337203685477");
    program.key(Qt::Key_Tab);
    QCOMPARE(box->text(), "922,337,203,685,477.0000");
    QCOMPARE(program.takeTold(), QList<int>{});
    program.type("CVInPrice_1", "922337203685478");
    program.key(Qt::Key_Tab);
    QCOMPARE(box->text(), "922337203685478");
    QCOMPARE(program.takeTold(), QList<int>{3});
    // Times a hundred shares it is too much, which Calculate tells.
    program.type("CVInPrice_1", "922337203685477");
    program.type("CVInPrice_2", "20");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{3});
    QCOMPARE(program.text("CVResults"), "");
  }

  // --- names with line breaks -----------------------------------------------------

  void noLineBreakEntersTheNameDialog() {
    Global global;
    DialogPrompts prompts(global.dialogs);
    PdfTarget printing;
    Program program(prompts, printing, global);
    program.start().show();
    QVERIFY(ProgramFixture::isActivated(&program.start()));
    ManagerFixture::click("StartStockMgmt");
    const std::unique_ptr<QWidget> manager(ManagerFixture::manager());
    QVERIFY(ProgramFixture::isActivated(manager.get()));
    play([] { ManagerFixture::click("ECreateFund"); }, {[](QDialog* dialog) {
           auto* name = dialog->findChild<QLineEdit*>("InFName");
           QVERIFY(name->hasFocus());
           type(dialog, "Alder");
           for (const QString& text :
                {QString("a\nb"), QString("a\r\nb"), QString("\n"), QString("a\rb"),
                 QString("a\vb"), QString("a\fb"), QString("a") + QChar(0x85) + "b"}) {
             QGuiApplication::clipboard()->setText(text);
             press(dialog, Qt::Key_V, Qt::ControlModifier);
             ProgramFixture::drop(name, text);
             QInputMethodEvent composed;
             composed.setCommitString(text);
             QApplication::sendEvent(name, &composed);
             QTest::sendKeyEvent(QTest::Click, name, Qt::Key_unknown, text, Qt::NoModifier);
             QCOMPARE(name->text(), "Alder");
           }
           // The keys that would type one.
           press(dialog, Qt::Key_J, Qt::ControlModifier);
           press(dialog, Qt::Key_M, Qt::ControlModifier);
           QCOMPARE(name->text(), "Alder");
           press(dialog, Qt::Key_Return, Qt::ShiftModifier);
           QCOMPARE(name->text(), "Alder");
           QVERIFY(dialog->isVisible());
           QCOMPARE(QApplication::focusWidget()->objectName(), "Acept");
           press(dialog, Qt::Key_Return);
         }});
    QCOMPARE(ManagerFixture::label("ENumFunds"), "Funds: 1");
    QCOMPARE(ManagerFixture::list("EFunds")->currentText(), "Alder");
  }

  // By whatever dialog: a name that a file cannot carry is no name.
  void aNameWithALineBreakIsRefused_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("line feed") << "Al\nder";
    QTest::newRow("carriage return") << "Al\rder";
    QTest::newRow("both at the end") << "Alder\r\n";
    QTest::newRow("nothing else") << "\n";
  }

  void aNameWithALineBreakIsRefused() {
    QFETCH(QString, name);
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.addFund(name.toUtf8());
    QCOMPARE(program.takeTold(), QList<int>{3});
    QCOMPARE(program.label("ENumFunds"), "Funds: 2");
    QCOMPARE(program.list("EFunds")->count(), 2);
    program.click("EExit");  // nothing was changed
    QCOMPARE(program.takeAsked(), QList<int>{});
  }

  // --- a fund without a name ------------------------------------------------------

  void aFundWithoutANameIsAFund() {
    ManagerFixture program;
    program.openFile(kUnnamed);
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("ENumFunds"), "Funds: 2");
    QCOMPARE(program.list("EFunds")->itemText(0), "");
    QCOMPARE(program.list("EFunds")->itemText(1), "Birch");

    // None chosen is not that one.
    QCOMPARE(program.list("EFunds")->currentIndex(), -1);
    program.click("ECorrectRec");
    program.choose("ETransType", kFeeCash);
    QCOMPARE(program.takeTold(), (QList<int>{16, 16}));

    program.choose("EFunds", 0);
    QCOMPARE(line("EResults", 0),
             "Bought      1/2/2019     10.0000    100.0000      50.00                   .00    "
             "1,050.00      1");
    program.record(kFeeCash, "1/1/2021", {"3"});
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(line("EResults", 2),
             "Fee Cash    1/1/2021       .0000       .0000       3.00                   .00        "
             "3.00      3");
    program.prompts.paths = {program.path("saved.PQD")};
    program.page(kSavePage);
    QCOMPARE(program.bytes("saved.PQD"),
             QByteArray(kUnnamed).replace("4,2,", "5,2,") + "1,0,0,3,0,3,\"F\",#2021-01-01#\r\n");

    program.page(kDisplayPage);
    auto* funds = program.find<QListWidget>("DDispFunds");
    QCOMPARE(funds->item(0)->text(), "");
    const QPoint place = funds->visualItemRect(funds->item(0)).center();
    QTest::mouseClick(funds->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(funds->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(program.label("DDFund"), "");
    QVERIFY(line("DDResults", 0).startsWith("Bought      1/2/2019     10.0000    100.0000"));
    program.click("DDisplall");
    QCOMPARE(program.text("DDResults").count("Average cost per share"), 2);

    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "20");
    program.type("CVInPrice_2", "20");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{});
    // 1,050 - 12.50 + 3 paid for what is worth 2,000 of 3,000.
    QCOMPARE(
        line("CVResults", 0),
        "        100.0000    1,040.50       20.00     2,000.00      959.50    92.22%    66.67%");
  }

  void aFundWithoutANameGoesWithItsRecords() {
    ManagerFixture program;
    program.openFile(kUnnamed);
    program.choose("EFunds", 0);
    program.prompts.numbers = {1, 1};
    program.prompts.answers = {true, true, true};
    for (int i = 0; i < 3; ++i) program.click("EDelRec");
    QCOMPARE(program.takeAsked(), (QList<int>{4, 4, 5}));
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("ENumFunds"), "Funds: 1");
    QCOMPARE(program.list("EFunds")->itemText(0), "Birch");
  }

  // Only a name makes an empty fund one that was added and forgotten: required.
  void withoutRecordsItIsValuedAllTheSame() {
    ManagerFixture program;
    program.openFile(
        "1,2,\"All Records\",\"31\"\r\n\"\",\"1\"\r\n\"Birch\",\"2\"\r\n"
        "2,20,50,0,0,1000,\"B\",#2019-02-03#\r\n");
    program.page(kCurrentValuePage);
    program.type("CVInPrice_2", "20");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{24});
    program.type("CVInPrice_1", "20");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(
        line("CVResults", 0),
        "           .0000         .00       20.00          .00         .00      .00%      .00%");
  }

  // --- many shares ----------------------------------------------------------------

  // A field is filled to its width and cut behind it, without a mark: required.
  void manyShares_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("listTotal");
    QTest::addColumn<QString>("report");
    QTest::addColumn<QString>("reportTotal");
    QTest::addColumn<QString>("value");
    QTest::newRow("the first that fills its column")
        << int{kBought} << "100000"
        << "100,000.0000"
        << "1,10.5,100000,50,0,1050050,\"B\",#2001-05-15#"
        << "Bought     5/15/2001     10.5000100,000.0000      50.00                   "
           ".001,050,050.00      1"
        << "Total:                          100,000.0000      50.00        .00        "
           ".001,050,050.00"
        << "Bought     5/15/2001     10.5000100,000.0000      50.00                   .00 "
           "1,050,050.00"
        << "Total:                          100,000.0000      50.00      .0000        .00 "
           "1,050,050.00"
        << "Ald 100,000.00001,050,050.00       20.00 2,000,000.00  949,950.00    90.47%   100.00%";
    QTest::newRow("the last that has room")
        << int{kBought} << "999999.9999"
        << "999,999.9999"
        << "1,10.5,999999.9999,50,0,10500049.999,\"B\",#2001-05-15#"
        << "Bought     5/15/2001     10.5000999,999.9999      50.00                   "
           ".0010,500,050.0      1"
        << "Total:                          999,999.9999      50.00        .00        "
           ".0010,500,050.0"
        << "Bought     5/15/2001     10.5000999,999.9999      50.00                   "
           ".0010,500,050.00"
        << "Total:                          999,999.9999      50.00      .0000        "
           ".0010,500,050.00"
        << "Ald 999,999.999910,500,050.0       20.0020,000,000.009,499,950.00    90.48%   100.00%";
    QTest::newRow("the first that has none")
        << int{kBought} << "1000000"
        << "1,000,000.0000"
        << "1,10.5,1000000,50,0,10500050,\"B\",#2001-05-15#"
        << "Bought     5/15/2001     10.50001,000,000.00      50.00                   "
           ".0010,500,050.0      1"
        << "Total:                         1,000,000.000      50.00        .00        "
           ".0010,500,050.0"
        << "Bought     5/15/2001     10.50001,000,000.00      50.00                   "
           ".0010,500,050.00"
        << "Total:                        1,000,000.0000      50.00      .0000        "
           ".0010,500,050.00"
        << "A 1,000,000.000010,500,050.0       20.0020,000,000.009,499,950.00    90.48%   100.00%";
    QTest::newRow("the sign takes its place too")
        << int{kSold} << "100000"
        << "100,000.0000"
        << "1,10.5,-100000,50,0,-1049950,\"S\",#2001-05-15#"
        << "Sold       5/15/2001     10.5000-100,000.000      50.00                   "
           ".00-1,049,950.0      1"
        << "Total:                         -100,000.0000      50.00        .00        "
           ".00-1,049,950.0"
        << "Sold       5/15/2001     10.5000-100,000.000      50.00                   "
           ".00-1,049,950.00"
        << "Total:                         -100,000.0000      50.00      .0000        "
           ".00-1,049,950.00"
        << "Al -100,000.0000-1,049,950.0       20.00-2,000,000.00 -950,050.00    90.49%   100.00%";
    QTest::newRow("far more")
        << int{kBought} << "123456789012.5"
        << "123,456,789,012.5000"
        << "1,10.5,123456789012.5,50,0,1296296284681.25,\"B\",#2001-05-15#"
        << "Bought     5/15/2001     10.5000123,456,789,      50.00                   "
           ".001,296,296,28      1"
        << "Total:                         123,456,789,0      50.00        .00        "
           ".001,296,296,28"
        << "Bought     5/15/2001     10.5000123,456,789,      50.00                   "
           ".001,296,296,284"
        << "Total:                        123,456,789,01      50.00      .0000        "
           ".001,296,296,284"
        << "123,456,789,012.1,296,296,28       20.002,469,135,7801,172,839,49    90.48%   100.00%";
  }

  void manyShares() {
    QFETCH(int, type);
    QFETCH(QString, typed);
    QFETCH(QString, box);
    QFETCH(QString, file);
    QFETCH(QString, list);
    QFETCH(QString, listTotal);
    QFETCH(QString, report);
    QFETCH(QString, reportTotal);
    QFETCH(QString, value);
    const auto verifyReports = [&] {
      QCOMPARE(line("EResults", 0), list);
      QCOMPARE(line("EResults", 2), listTotal);
      ManagerFixture::page(kDisplayPage);
      ManagerFixture::click("DDisplall");
      QCOMPARE(line("DDResults", 0), report);
      QCOMPARE(line("DDResults", 2), reportTotal);
      ManagerFixture::page(kCurrentValuePage);
      ManagerFixture::type("CVInPrice_1", "20");
      ManagerFixture::click("CVCalc");
      QCOMPARE(line("CVResults", 0), value);
    };

    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", type);
    program.type("EInDate", "5/15/2001");
    program.type("EInPrice", "10.5");
    program.type("EInNumShrs", typed.toLatin1());
    program.key(Qt::Key_Tab);
    QCOMPARE(program.box("EInNumShrs")->text(), box);
    program.type("EInComm", "50");
    program.key(Qt::Key_Return);
    verifyReports();
    QCOMPARE(program.takeTold(), QList<int>{});

    const QByteArray bytes =
        "1,1,\"All Records\",\"31\"\r\n\"Alder\",\"1\"\r\n" + file.toLatin1() + "\r\n";
    program.prompts.paths = {program.path("shares.PQD"), program.path("shares.PQD")};
    program.page(kSavePage);
    QCOMPARE(program.bytes("shares.PQD"), bytes);

    // Reopened it is the same, to the last digit that no report shows.
    program.page(kOpenPage);
    program.choose("EFunds", 0);
    verifyReports();
    program.page(kEntryPage);
    program.choose("EFunds", 0);
    program.prompts.numbers = {1};
    program.click("ECorrectRec");
    QCOMPARE(program.box("EInNumShrs")->text(), box);
    // Stored as it is, by whoever only looked.
    program.box("EInNumShrs")->setFocus(Qt::TabFocusReason);
    program.key(Qt::Key_Tab);
    program.click("EAddaRec");
    program.prompts.paths = {program.path("again.PQD")};
    program.page(kSavePage);
    QCOMPARE(program.bytes("again.PQD"), bytes);
    QCOMPARE(program.takeTold(), QList<int>{});
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ManagerBoundariesTest)
#include "manager_boundaries_test.moc"

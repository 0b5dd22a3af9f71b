// SPDX-License-Identifier: GPL-3.0-or-later
#include <QClipboard>

#include "manager/short_date.h"
#include "manager_testing.h"

namespace mirelund::testing {

namespace {

constexpr const char* kBoxes[] = {"EInDate", "EInPrice", "EInNumShrs", "EInComm", "EInCashDiv"};

bool isGreen(const QWidget* box) {
  return box->palette().color(QPalette::Base) == QColor(128, 255, 128);
}

}  // namespace

class EntryPageTest : public QObject {
  Q_OBJECT

 private slots:
  void startsEmpty() {
    ManagerFixture program;
    QCOMPARE(program.list("EFunds")->placeholderText(), "Click dn/arrow for funds list");
    QCOMPARE(program.list("EFunds")->count(), 0);
    QStringList types;
    for (int i = 0; i < program.list("ETransType")->count(); ++i)
      types << program.list("ETransType")->itemText(i);
    QCOMPARE(types, (QStringList{"Bought", "Sold", "Cash Dividend", "Dividend Shares", "Fee Cash",
                                 "Unit Fee"}));
    QCOMPARE(program.find<QPushButton>("ECreateFund")->text(), "&Add Fund Name");
    QCOMPARE(program.label("ENumFunds"), "Funds: 0");
    QCOMPARE(program.label("ENumRec"), "Records: 0");
    QCOMPARE(program.label("EDatabase"), "Database: ");
    for (const char* box : kBoxes) QVERIFY(!program.box(box)->isVisible());
    QCOMPARE(program.text("EResults"), "");
  }

  void aTypeEnablesExactlyItsBoxes_data() {
    QTest::addColumn<QStringList>("enabled");
    QTest::newRow("Bought") << QStringList{"EInDate", "EInPrice", "EInNumShrs", "EInComm"};
    QTest::newRow("Sold") << QStringList{"EInDate", "EInPrice", "EInNumShrs", "EInComm"};
    QTest::newRow("Cash Dividend") << QStringList{"EInDate", "EInCashDiv"};
    QTest::newRow("Dividend Shares") << QStringList{"EInDate", "EInPrice", "EInNumShrs"};
    QTest::newRow("Fee Cash") << QStringList{"EInDate", "EInComm"};
    QTest::newRow("Unit Fee") << QStringList{"EInDate", "EInPrice", "EInNumShrs"};
  }

  void aTypeEnablesExactlyItsBoxes() {
    QFETCH(QStringList, enabled);
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", program.list("ETransType")->findText(QTest::currentDataTag()));
    for (const char* name : kBoxes) {
      QLineEdit* box = program.box(name);
      QVERIFY(box->isVisible());
      QCOMPARE(box->isEnabled(), enabled.contains(name));
      QCOMPARE(isGreen(box), enabled.contains(name));
    }
    // Enter walks exactly these, and from the last one adds the record.
    program.box("EInDate")->setFocus(Qt::TabFocusReason);
    QStringList walked;
    for (int i = 0; i < enabled.size(); ++i) {
      walked << QApplication::focusWidget()->objectName();
      QTest::keyClicks(QApplication::focusWidget(), i == 0 ? "1/2/2020" : "3");
      program.key(Qt::Key_Return);
    }
    QCOMPARE(walked, enabled);
    QCOMPARE(program.label("ENumRec"), "Records: 1");
    QCOMPARE(program.prompts.told, QList<int>{});
    for (const char* name : kBoxes) {
      QVERIFY(!program.box(name)->isVisible());
      QCOMPARE(program.box(name)->text(), "");
    }
    QCOMPARE(program.list("ETransType")->currentIndex(), -1);
    QCOMPARE(program.list("EFunds")->currentText(), "Alder");
  }

  void boxesStandUnderTheirCaptions() {
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", kBought);
    int found = 0;
    for (auto* label : program.manager()->findChildren<QLabel*>())
      for (const char* name : kBoxes) {
        if (label->buddy() == nullptr || label->buddy() != program.box(name)) continue;
        ++found;
        QVERIFY(label->isVisible());
        const auto at = [](QWidget* w) { return w->mapToGlobal(QPoint(0, 0)); };
        QCOMPARE(at(label).x(), at(label->buddy()).x());
        QVERIFY(at(label).y() + label->height() <= at(label->buddy()).y());
      }
    QCOMPARE(found, 5);
  }

  void refusalsComeInTheirOrderAndChangeNothing() {
    ManagerFixture program;
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{51});
    program.choose("ETransType", kBought);
    QCOMPARE(program.takeTold(), QList<int>{16});
    QCOMPARE(program.list("ETransType")->currentIndex(), -1);
    program.click("ECorrectRec");
    program.click("EDelRec");
    QCOMPARE(program.takeTold(), (QList<int>{16, 16}));

    program.addFund("Alder");
    program.choose("ETransType", kBought);
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{31});
    program.type("EInDate", "2/30/2020");
    program.click("EInPrice");
    QCOMPARE(program.takeTold(), QList<int>{30});
    QCOMPARE(program.global.dialogs.Details.shortDate,
             QLocale("en_US").toString(QDate::currentDate(), "M/d/yyyy").toStdString());
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{30});
    QCOMPARE(program.box("EInDate")->text(), "2/30/2020");
    program.click("EInDate");
    program.click("EAddaRec");  // told once, although the box was left by it
    QCOMPARE(program.takeTold(), QList<int>{30});
    program.type("EInDate", "2/29/2020");
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{20});
    program.type("EInPrice", "12.3456");
    program.type("EInNumShrs", "0");
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{20});
    QCOMPARE(program.box("EInDate")->text(), "2/29/2020");
    QCOMPARE(program.box("EInPrice")->text(), "12.3456");
    QCOMPARE(program.box("EInNumShrs")->text(), "0.0000");
    // A product that no amount can hold.
    program.type("EInNumShrs", "900000000000000");
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{3});
    QCOMPARE(program.box("EInNumShrs")->text(), "900,000,000,000,000.0000");
    QCOMPARE(program.label("ENumRec"), "Records: 0");
    program.type("EInNumShrs", "2");
    QTest::keyClick(program.box("EInNumShrs"), Qt::Key_R, Qt::AltModifier);
    QTRY_COMPARE(program.label("ENumRec"), "Records: 1");
    QCOMPARE(program.takeTold(), QList<int>{});
    QVERIFY(program.text("EResults").contains("Bought     2/29/2020     12.3456      2.0000"));
  }

  void onlyWhatABoxTakesEntersIt_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    QTest::newRow("date") << "EInDate"
                          << "x1,/2+-3. \"4e#"
                          << "1/2-3. 4";
    for (const char* name : {"EInPrice", "EInNumShrs", "EInComm"}) {
      QTest::newRow(name) << name << "-a1,2$.3 456789"
                          << "12.3456";
      QTest::newRow(qPrintable(QString(name) + " point")) << name << "1.2.3"
                                                          << "1.2.3";
    }
  }

  void onlyWhatABoxTakesEntersIt() {
    QFETCH(QString, name);
    QFETCH(QString, typed);
    QFETCH(QString, kept);
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", kBought);
    const QByteArray control = name.toLatin1();
    QLineEdit* box = program.box(control);
    program.type(control, qPrintable(typed));
    QCOMPARE(box->text(), kept);

    for (const QString junk : {"12a", "1\n2", "1\t2", "\b", "1\"", "\u0661"}) {
      QGuiApplication::clipboard()->setText(junk);
      QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
      program.drop(box, junk);
      QInputMethodEvent composed;
      composed.setCommitString(junk);
      QApplication::sendEvent(box, &composed);
      QCOMPARE(box->text(), kept);
    }
  }

  void theFirstKeyReplacesAnAmountButNotADate() {
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", kBought);
    program.type("EInDate", "1/2/20");
    program.key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "1234.5");
    program.key(Qt::Key_Return);
    QCOMPARE(program.box("EInPrice")->text(), "1,234.5000");
    program.key(Qt::Key_Return);
    QCOMPARE(program.box("EInNumShrs")->text(), "");  // not edited: not stored
    program.box("EInPrice")->setFocus(Qt::TabFocusReason);
    program.key(Qt::Key_End);
    program.key(Qt::Key_7);
    QCOMPARE(program.box("EInPrice")->text(), "7");
    program.box("EInDate")->setFocus(Qt::TabFocusReason);
    program.key(Qt::Key_End);
    program.key(Qt::Key_2);
    QCOMPARE(program.box("EInDate")->text(), "1/2/202");
  }

  void aLongAmountIsSeenWholeWhereThereIsRoom() {
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", kBought);
    program.manager()->resize(1300, 600);
    QTest::qWait(20);
    const QLineEdit* box = program.box("EInPrice");
    QCOMPARE(box->width(), 18 * box->fontMetrics().horizontalAdvance('0'));
    program.manager()->resize(program.manager()->minimumSizeHint());
    QTest::qWait(20);
    QVERIFY(program.manager()->width() <= 960);
    QVERIFY(box->width() >= 10 * box->fontMetrics().horizontalAdvance('0'));
  }

  void anAmountOutOfRangeIsRefused() {
    ManagerFixture program;
    program.addFund("Alder");
    program.choose("ETransType", kBought);
    program.type("EInPrice", "5");
    program.click("EInComm");
    program.type("EInPrice", "99999999999999999999");
    program.click("EInComm");
    QCOMPARE(program.takeTold(), QList<int>{3});
    QCOMPARE(program.box("EInPrice")->text(), "99999999999999999999");
    program.type("EInDate", "1/2/2020");
    program.type("EInNumShrs", "5");
    program.type("EInComm", "1");
    program.key(Qt::Key_Return);
    QCOMPARE(program.takeTold(), QList<int>{3});
    QCOMPARE(program.label("ENumRec"), "Records: 0");
    QCOMPARE(program.box("EInPrice")->text(), "99999999999999999999");
    program.type("EInPrice", "6");
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("ENumRec"), "Records: 1");
  }

  void aFundMayBeginWithAByteOrderMark() {
    ManagerFixture program;
    program.addFund("\uFEFFAlder");
    program.choose("ETransType", kFeeCash);
    program.type("EInDate", "1/2/2020");
    program.type("EInComm", "5");
    program.key(Qt::Key_Return);
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("ENumRec"), "Records: 1");
  }

  void choosingATypeOrAFundClearsTheRow() {
    ManagerFixture program;
    program.addFund("Alder");
    program.addFund("Birch");
    program.choose("ETransType", kBought);
    program.type("EInDate", "1/2/2020");
    program.type("EInPrice", "5");
    program.choose("ETransType", kSold);
    QCOMPARE(program.box("EInDate")->text(), "");
    QCOMPARE(program.box("EInPrice")->text(), "");
    program.type("EInPrice", "6");
    program.list("ETransType")->setFocus();
    program.key(Qt::Key_Delete);
    QVERIFY(!program.box("EInPrice")->isVisible());
    QCOMPARE(program.list("ETransType")->currentIndex(), -1);
    program.choose("ETransType", kSold);
    QCOMPARE(program.box("EInPrice")->text(), "");
    program.type("EInPrice", "6");
    program.choose("EFunds", 0);
    QVERIFY(!program.box("EInPrice")->isVisible());
    QCOMPARE(program.prompts.told, QList<int>{});
  }

  void theKeyboardAloneEntersARecord() {
    ManagerFixture program;
    QCOMPARE(QApplication::focusWidget()->objectName(), "EFunds");
    program.prompts.lines.push_back("Alder");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::AltModifier);
    QTRY_COMPARE(program.label("ENumFunds"), "Funds: 1");
    program.list("EFunds")->setFocus();
    program.key(Qt::Key_Return);
    program.key(Qt::Key_F);
    QCOMPARE(program.list("ETransType")->currentText(), "Fee Cash");
    program.key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "12-31-99");
    program.key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "100");
    program.key(Qt::Key_Return);
    QVERIFY(program.text("EResults").contains("Fee Cash  12/31/1999"));
    QCOMPARE(QApplication::focusWidget()->objectName(), "ETransType");
  }

  void theWheelTurnsNoList() {
    ManagerFixture program;
    program.addFund("Alder");
    program.addFund("Birch");
    QWheelEvent wheel({5, 5}, program.list("EFunds")->mapToGlobal(QPointF(5, 5)), {}, {0, 120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(program.list("EFunds"), &wheel);
    QCOMPARE(program.list("EFunds")->currentText(), "Birch");
  }

  void fundsAreAddedSortedAndLimited() {
    ManagerFixture program;
    for (const char* nothing : {"", "1"}) program.addFund(nothing);
    QCOMPARE(program.label("ENumFunds"), "Funds: 0");
    program.addFund("Birch");
    program.addFund("Alder");
    QCOMPARE(program.list("EFunds")->itemText(0), "Alder");
    QCOMPARE(program.list("EFunds")->currentText(), "Alder");
    while (program.list("EFunds")->count() < 18) program.addFund("More");
    QCOMPARE(program.takeTold(), QList<int>{});
    program.addFund("The nineteenth");
    QCOMPARE(program.takeTold(), QList<int>{36});
    QCOMPARE(program.label("ENumFunds"), "Funds: 18");
  }

  void fundsOfOneNameAreChosenByTheirRow() {
    ManagerFixture program;
    program.openFile(QByteArray(kTwoFunds).replace("Birch", "Alder"));
    program.choose("EFunds", 1);
    QVERIFY(program.text("EResults").contains("20.0000     50.0000"));
    program.choose("EFunds", 0);
    QVERIFY(program.text("EResults").contains("10.0000    100.0000"));
    program.choose("EFunds", 1);
    program.record(kFeeCash, "1/1/2021", {"3"});
    QVERIFY(program.text("EResults").contains("20.0000     50.0000"));
    QVERIFY(program.text("EResults").contains("Fee Cash"));
  }

  void namesAreShownWhateverTheirBytes() {
    ManagerFixture program;
    program.openFile(
        QByteArray(kTwoFunds).replace("Alder", "\xC4lder, \x80").replace("Birch", "Bïrch & Co"));
    QCOMPARE(program.list("EFunds")->itemText(0), "Bïrch & Co");
    QCOMPARE(program.list("EFunds")->itemText(1), "Älder, €");
    program.choose("EFunds", 1);
    program.record(kFeeCash, "1/1/2021", {"3"});
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("ENumRec"), "Records: 5");
  }

  void aRecordIsCorrected() {
    ManagerFixture program;
    program.addFund("Alder");
    program.record(kBought, "1/2/2020", {"10", "100", "50"});
    program.record(kSold, "3/4/2020", {"12", "40", "9.95"});
    program.prompts.numbers = {3, 0, 2};
    program.click("ECorrectRec");
    program.click("ECorrectRec");
    QCOMPARE(program.takeTold(), (QList<int>{17, 17}));
    program.click("ECorrectRec");
    QCOMPARE(program.list("ETransType")->currentText(), "Sold");
    for (const char* locked : {"EFunds", "ETransType", "ECreateFund"})
      QVERIFY(!program.find(locked)->isEnabled());
    QStringList shown;
    for (const char* name : kBoxes) shown << program.box(name)->text();
    QCOMPARE(shown, (QStringList{"3/4/2020", "12.0000", "40.0000", "9.9500", "0.0000"}));
    QCOMPARE(QApplication::focusWidget()->objectName(), "EInDate");

    program.type("EInPrice", "0");
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{29});
    program.type("EInPrice", "13");
    program.type("EInDate", "1/1/2019");
    program.key(Qt::Key_Return);
    program.click("EAddaRec");
    QCOMPARE(program.takeTold(), QList<int>{});
    QVERIFY(program.text("EResults")
                .contains(
                    "Sold        1/1/2019     13.0000    -40.0000       9.95                   .00"
                    "     -510.05      1"));
    QCOMPARE(program.label("ENumRec"), "Records: 2");
    QVERIFY(program.find("EFunds")->isEnabled());
    QVERIFY(!program.box("EInDate")->isVisible());
  }

  void aCorrectionShows() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 1);
    const auto ground = [&](const char* list) {
      return program.list(list)->grab().toImage().pixelColor(6, 6);
    };
    const QColor open = ground("EFunds");
    QCOMPARE(ground("ETransType"), open);
    QCOMPARE(program.label("ECorrecting"), "");
    program.prompts.numbers = {2};
    program.click("ECorrectRec");
    QCOMPARE(program.label("ECorrecting"),
             "Correcting record 2: Add Record stores it, Escape leaves it as it is.");
    for (const char* list : {"EFunds", "ETransType"}) {
      // No longer green, and what is chosen can be read.
      const QColor locked = ground(list);
      QVERIFY(locked != open);
      QVERIFY(std::abs(locked.red() - locked.green()) < 16);
    }
    // Half typed, it is given up without a word.
    program.type("EInDate", "13/13/");
    program.key(Qt::Key_Escape);
    QCOMPARE(program.prompts.told, QList<int>{});
    QCOMPARE(program.label("ECorrecting"), "");
    QCOMPARE(ground("EFunds"), open);
    QCOMPARE(ground("ETransType"), open);
    QVERIFY(!program.box("EInDate")->isVisible());
    QCOMPARE(program.list("EFunds")->currentText(), "Birch");
    QCOMPARE(program.list("ETransType")->currentIndex(), -1);
    QVERIFY(program.find("ETransType")->hasFocus());
    QVERIFY(program.text("EResults").contains("20.0000     50.0000"));
    program.record(kFeeCash, "1/1/2021", {"3"});
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    // Without a correction Escape does nothing.
    program.choose("ETransType", kFeeCash);
    program.type("EInDate", "1/2/2021");
    program.key(Qt::Key_Escape);
    QCOMPARE(program.box("EInDate")->text(), "1/2/2021");
  }

  void aCorrectionIsCancelled_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"delete", "page", "file"}) QTest::newRow(way) << way;
  }

  void aCorrectionIsCancelled() {
    QFETCH(QString, way);
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 1);
    program.prompts.numbers = {1};
    program.click("ECorrectRec");
    program.type("EInPrice", "99");
    if (way == "delete") program.click("EDelRec");
    if (way == "page") program.page(kDisplayPage);
    if (way == "file") program.openFile(kTwoFunds);
    program.page(kEntryPage);
    QVERIFY(program.find("EFunds")->isEnabled());
    QVERIFY(!program.box("EInPrice")->isVisible());
    QCOMPARE(program.list("ETransType")->currentIndex(), -1);
    program.choose("EFunds", 1);
    program.record(kFeeCash, "1/1/2021", {"3"});
    QCOMPARE(program.label("ENumRec"), "Records: 5");
    QVERIFY(program.text("EResults").contains("20.0000     50.0000"));
  }

  void aRecordIsDeletedAfterAYes() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 1);
    program.prompts.numbers = {3, 2, 2};
    program.prompts.answers = {false, true};
    program.click("EDelRec");
    QCOMPARE(program.takeTold(), QList<int>{17});
    QCOMPARE(program.takeAsked(), QList<int>{});
    program.click("EDelRec");
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    program.click("EDelRec");
    QCOMPARE(program.takeAsked(), (QList<int>{4, 4}));
    QCOMPARE(program.global.dialogs.Details.recordNumber, "2");
    QCOMPARE(program.label("ENumRec"), "Records: 3");
    QVERIFY(!program.text("EResults").contains("Cash Div."));
    program.click("EDelRec");  // cancelled
    QCOMPARE(program.takeAsked(), QList<int>{});
    QCOMPARE(program.takeTold(), QList<int>{});
  }

  void aFundGoesWhenItsRecordsAreGone() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.prompts.numbers = {1, 1};
    program.prompts.answers = {true, true, false, true};
    for (int i = 0; i < 3; ++i) program.click("EDelRec");
    QCOMPARE(program.takeAsked(), (QList<int>{4, 4, 5}));
    QCOMPARE(program.label("ENumFunds"), "Funds: 2");
    program.click("EDelRec");
    QCOMPARE(program.label("ENumFunds"), "Funds: 1");
    QCOMPARE(program.label("ENumRec"), "Records: 2");
    QCOMPARE(program.list("EFunds")->count(), 1);
    QCOMPARE(program.list("EFunds")->itemText(0), "Birch");
    QCOMPARE(program.list("EFunds")->currentIndex(), -1);
    QCOMPARE(program.text("EResults"), "");
    program.click("EDelRec");
    QCOMPARE(program.takeTold(), QList<int>{16});
  }

  void aFundMustBeChosenAgainAfterAnotherPage() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.choose("ETransType", kFeeCash);
    program.page(kDisplayPage);
    program.page(kEntryPage);
    QCOMPARE(program.list("EFunds")->currentIndex(), -1);
    QCOMPARE(program.text("EResults"), "");
    program.choose("ETransType", kFeeCash);
    QCOMPARE(program.takeTold(), QList<int>{16});
  }

  void helpTakesTheListsPlaceAndGivesItBack() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    auto* help = program.find<QPushButton>("EHelp");
    QCOMPARE(help->text(), "&Help");
    program.click("EHelp");
    QCOMPARE(help->text(), "Close &Help");
    QVERIFY(program.text("EResults")
                .startsWith("On startup Funds: 0. Either use Open file tab to retrieve a database "
                            "file from disk or"));
    program.choose("EFunds", 0);
    QCOMPARE(help->text(), "&Help");
    const QString list = program.text("EResults");
    QVERIFY(list.startsWith("Trans-"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_H, Qt::AltModifier);
    QTRY_COMPARE(help->text(), "Close &Help");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_H, Qt::AltModifier);
    QTRY_COMPARE(program.text("EResults"), list);
  }

  void datesFollowTheSystem_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("shown");
    QTest::newRow("two-digit year widened") << "de_DE"
                                            << "05.03.2001";
    QTest::newRow("no zeros") << "en_US"
                              << "3/5/2001";
    QTest::newRow("year first") << "sv_SE"
                                << "2001-03-05";
    QTest::newRow("no locale at all") << "C"
                                      << "03/05/2001";
  }

  void datesFollowTheSystem() {
    QFETCH(QString, locale);
    QFETCH(QString, shown);
    QCOMPARE(formatDate(*Date::of(2001, 3, 5), shortDateFormat(QLocale(locale))),
             shown.toStdString());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::EntryPageTest)
#include "entry_page_test.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// Clicks that come late, and windows that are to close under their dialogs.
#include "application.h"

#include <QButtonGroup>
#include <QPushButton>
#include <QRadioButton>

#include "charts/chart_window.h"
#include "program/real_program.h"

namespace mirelund::testing {

namespace {

// A mnemonic's click comes 100 ms after its key.
constexpr int kClickIsDue = 250;

}  // namespace

class ApplicationTest : public QObject {
  Q_OBJECT

  static void chord(QWidget* window, Qt::Key key) { QTest::keyClick(window, key, Qt::AltModifier); }

 private slots:
  void aLateExitClosesNoWindowUnderADialog_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("half");
    QTest::addColumn<QString>("opener");
    QTest::addColumn<QString>("dialog");
    const auto row = [](const char* start, const char* half, const char* opener,
                        const char* dialog) {
      QTest::newRow(qPrintable(QString("%1 under %2").arg(half, dialog)))
          << start << half << opener << dialog;
    };
    row("StartStockMgmt", "PQManagement", "ECreateFund", "PrinterHeaderInput");
    row("StartStockMgmt", "PQManagement", "ECorrectRec", "AMsgbox");
    row("StartStockMgmt", "PQManagement", "SSTab2", "QFileDialog");
    row("StartCalc", "PQInvest", "ClearResults AllGraphs", "AMsgbox");
    row("StartCalc", "PQInvest", "MTCalculate AllGraphs", "PQGraph");
  }

  void aLateExitClosesNoWindowUnderADialog() {
    QFETCH(QString, start);
    QFETCH(QString, half);
    QFETCH(QString, opener);
    QFETCH(QString, dialog);
    RealProgram program;
    const QPointer<QWidget> window = program.open(qPrintable(start), qPrintable(half));
    if (half == "PQInvest") ProgramFixture::choosePage(1);
    QStringList buttons = opener.split(' ');
    const QString last = buttons.takeLast();
    for (const QString& button : buttons) ProgramFixture::click(qPrintable(button));

    chord(window, Qt::Key_X);
    const auto open = [&] {
      if (last == "SSTab2")
        ManagerFixture::page(kOpenPage);
      else
        ProgramFixture::click(qPrintable(last));
    };
    play(open, {[&](QDialog* over) {
           QVERIFY(over->objectName() == dialog || over->inherits(qPrintable(dialog)));
           QTest::qWait(kClickIsDue);
           QVERIFY(window != nullptr && window->isVisible() && over->isVisible());
           // Nor by any other way.
           QVERIFY(!window->close());
           press(over, Qt::Key_Escape);
         }});
    QTest::qWait(kClickIsDue);
    QVERIFY(window != nullptr && window->isVisible());
  }

  void twoMnemonicsAtOnceAreOneDialog() {
    RealProgram program;
    const QPointer<QWidget> window = program.openManager();
    play(
        [&] {
          chord(window, Qt::Key_A);
          QTest::qWait(5);
          chord(window, Qt::Key_X);
          QTest::qWait(kClickIsDue);
        },
        {[](QDialog* over) {
          QTest::qWait(kClickIsDue);
          press(over, Qt::Key_Escape);
        }});
    QVERIFY(window != nullptr && window->isVisible());
  }

  void theChartStandsUnderItsQuestion() {
    RealProgram program;
    program.openCalculations();
    ProgramFixture::choosePage(1);
    ProgramFixture::click("MTCalculate");
    const Step question = [](QDialog* over) {
      QCOMPARE(over->objectName(), "AllYesNo");
      QTest::qWait(kClickIsDue);
      QVERIFY(ProgramFixture::window("PQGraph") != nullptr);
      press(over, Qt::Key_Escape);
    };
    const Step chart = [](QDialog* over) {
      chord(over, Qt::Key_P);
      QTest::qWait(5);
      chord(over, Qt::Key_X);
      QTest::qWait(2 * kClickIsDue);
      QVERIFY(over->isVisible());
      press(over, Qt::Key_Escape);
    };
    play([] { ProgramFixture::click("AllGraphs"); }, {chart, question});
  }

  // A click and the way out within one turn of the event loop, which destroys what was closed.
  void aClosedWindowAsksNothing() {
    RealProgram program;
    const QPointer<QWidget> window = program.openManager();
    auto* open = ProgramFixture::find<QPushButton>("OFOpen");
    bool whole = false;
    play(
        [&] {
          QVERIFY(window->close());
          open->click();
          whole = window != nullptr;
        },
        {});
    QVERIFY(whole);
    QTRY_VERIFY(window == nullptr && program.program.start().isVisible());
  }

  void aWindowThatIsNotShownYetTells() {
    RealProgram program;
    QWidget* window = program.openCalculations();
    ChartView empty;
    empty.message = Message::CannotDraw;
    play([&] { const PQGraph chart(empty, program.prompts, program.printing, window); },
         {[](QDialog* over) {
           QCOMPARE(over->objectName(), "AMsgbox");
           press(over, Qt::Key_Escape);
         }});
  }

  // As a screen reader presses it.
  void aLateChoiceChoosesNothing() {
    RealProgram program;
    program.openCalculations();
    ProgramFixture::choosePage(1);
    auto* days = ProgramFixture::find<QRadioButton>("MTIRFactor_0");
    QVERIFY(!days->isChecked() && days->isEnabled());
    auto* before = days->group()->checkedButton();
    days->animateClick();
    play([] { ProgramFixture::click("AllGraphs"); }, {[&](QDialog* over) {
           QTest::qWait(kClickIsDue);
           press(over, Qt::Key_Escape);
         }});
    QVERIFY(!days->isChecked() && !days->isDown());
    QCOMPARE(days->group()->checkedButton(), before);
    // In its own window it works.
    days->animateClick();
    QTRY_VERIFY(days->isChecked());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ApplicationTest)
#include "application_test.moc"

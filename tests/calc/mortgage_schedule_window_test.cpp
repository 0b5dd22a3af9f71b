// SPDX-License-Identifier: GPL-3.0-or-later
// The payment schedule's window, by mouse and keys.
#include "calc/mortgage_schedule_window.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QSet>
#include <QTimer>

#include "app/report_box.h"
#include "base/ui_text.h"
#include "charts/bar_chart_widget.h"
#include "ui_testing.h"

namespace mirelund::testing {

namespace {

constexpr int kMortgage = 1;
constexpr int kWrongEntry = 3;

QWidget* schedule() {
  return ProgramFixture::window("PQSchedule");
}

QString shownReport() {
  return schedule()->findChild<ReportBox*>("SCResults")->toPlainText();
}

QString lineOf(const QString& label) {
  const QStringList lines = shownReport().split('\n');
  for (const QString& line : lines)
    if (line.startsWith(label)) return line.mid(label.size()).trimmed();
  return "no line " + label;
}

// All of Global that the window could touch, as one text.
QString everything(const Global& global) {
  QStringList all;
  for (const Currency amount : global.boxes.InputValues)
    all << QString::number(amount.tenThousandths());
  for (const double value : global.boxes.MortgageInputs) all << QString::number(value, 'g', 17);
  all << QString::number(global.boxes.BoxEdited) << toQString(global.boxes.BoxText)
      << QString::number(global.boxes.ExtraDecimals);
  for (const std::string& report : global.reports.ReportLines) all << toQString(report);
  for (std::size_t row = 0; row < kComparisonTableRows; ++row)
    for (std::size_t column = 0; column < kComparisonTableColumns; ++column)
      all << QString::number(global.reports.ComparisonTable.at(row, column).tenThousandths());
  for (std::size_t row = 0; row < kComparisonTotalsRows; ++row)
    for (std::size_t column = 0; column < kComparisonTotalsColumns; ++column)
      all << QString::number(global.reports.ComparisonTotals.at(row, column).tenThousandths());
  all << QString::number(global.reports.ComparisonCount)
      << QString::number(global.reports.StartOver)
      << QString::number(static_cast<int>(global.chart.ChartKind))
      << QString::number(global.chart.ChartCount) << toQString(global.chart.ChartTitle)
      << QString::number(global.chart.ChartPeriods)
      << QString::number(global.chart.ChartPeriodsPerYear) << QString::number(global.CurrentTab)
      << QString::number(static_cast<int>(global.dialogs.ActiveWindow));
  return all.join('|');
}

// What the page itself shows.
QString pageShown() {
  QStringList all;
  QWidget* page = ProgramFixture::window("PQInvest");
  for (const auto* box : page->findChildren<QLineEdit*>()) all << box->text();
  for (const auto* label : page->findChildren<QLabel*>()) all << label->text();
  for (const auto* list : page->findChildren<QComboBox*>()) all << list->currentText();
  return all.join('|') + ProgramFixture::results();
}

}  // namespace

class MortgageScheduleWindowTest : public QObject {
  Q_OBJECT

  // Ctrl+T where the focus is; `look` sees the window, which is closed then.
  template <typename Look>
  static void inSchedule(Look look) {
    bool looked = false;
    QTimer::singleShot(30, qApp, [&] {
      QWidget* window = schedule();
      if (window == nullptr) return;
      looked = true;
      // A dialog counts as active while the window below it is.
      window->activateWindow();
      QTRY_COMPARE(QApplication::activeWindow(), window);
      look();
      if (schedule() != nullptr) QTest::keyClick(schedule(), Qt::Key_Escape);
    });
    ProgramFixture::key(Qt::Key_T, Qt::ControlModifier);
    QVERIFY(looked);
    QCOMPARE(schedule(), nullptr);
    // Without a window manager no window becomes active again by itself.
    QVERIFY(ProgramFixture::isActivated(ProgramFixture::window("PQInvest")));
  }

  // Nothing opens.
  static void ctrlT() {
    bool opened = false;
    QTimer::singleShot(30, qApp, [&] {
      if (schedule() == nullptr) return;
      opened = true;
      QTest::keyClick(schedule(), Qt::Key_Escape);
    });
    ProgramFixture::key(Qt::Key_T, Qt::ControlModifier);
    QTest::qWait(60);
    QVERIFY(!opened);
  }

  // The page as it starts, calculated.
  static void openMortgage(ProgramFixture& program) {
    program.openCalculations(kMortgage);
    program.click("MTCalculate");
  }

 private slots:
  void opensFromTheMortgagePageAlone() {
    ProgramFixture program;
    program.openCalculations(0);
    for (int page = 0; page < 6; ++page) {
      program.choosePage(page);
      const auto* action = program.window("PQInvest")->findChild<QAction*>("ActionSchedule");
      QCOMPARE(action->isEnabled(), page == kMortgage);
      if (page != kMortgage) ctrlT();
    }
    QVERIFY(program.prompts.told.isEmpty());
    program.choosePage(kMortgage);
    program.click("MTCalculate");
    inSchedule([] { QCOMPARE(schedule()->windowTitle(), "Payment schedule"); });
  }

  void needsResultsOnThePage() {
    ProgramFixture program;
    program.openCalculations(kMortgage);
    program.click("AllGraphs");  // the focus is on no box
    program.prompts.told.clear();
    ctrlT();
    QCOMPARE(program.prompts.told, QList<int>{kWrongEntry});
    program.click("MTCalculate");
    inSchedule([] {});
    // A failure empties the results: the page tells it, and so does the schedule.
    program.prompts.told.clear();
    program.type("MTInPrincipal", "0");
    ctrlT();
    QCOMPARE(program.prompts.told, (QList<int>{kWrongEntry, kWrongEntry}));
    // A page that starts afresh shows none.
    program.type("MTInPrincipal", "1000");
    program.click("MTCalculate");
    program.choosePage(0);
    program.choosePage(kMortgage);
    program.prompts.told.clear();
    QTest::mouseClick(program.find("Results"), Qt::LeftButton);
    ctrlT();
    QCOMPARE(program.prompts.told, QList<int>{kWrongEntry});
  }

  void aBoxThatIsTypedIntoIsLeftFirst() {
    ProgramFixture program;
    program.openCalculations(kMortgage);
    program.type("MTInPrincipal", "50000");
    inSchedule([] { QCOMPARE(lineOf("Principal amount of mortgage:"), "50,000.00"); });
  }

  void showsWhatThePageWasSolvedFrom() {
    ProgramFixture program;
    openMortgage(program);
    inSchedule([] {
      QCOMPARE(lineOf("Total interest on the page:"), "102,562.15");
      QCOMPARE(lineOf("Total interest here, no extras:"), "102,561.06");
      QCOMPARE(lineOf("Last payment:"), "673.27");
      QVERIFY(shownReport().startsWith("     Payment schedule, conventional mortgage\n"));
    });
    // A list that has been changed since shows no other results yet.
    program.find<QComboBox>("MTCompPeriod")->setCurrentIndex(3);
    QTest::mouseClick(program.find("Results"), Qt::LeftButton);
    inSchedule([] { QCOMPARE(lineOf("Compound interest periods/yr:"), "Monthly"); });
    program.click("MTCalculate");
    inSchedule([] { QCOMPARE(lineOf("Compound interest periods/yr:"), "Semiannual"); });
    // The tenth mortgage is told of, and shown all the same.
    for (int i = 0; i < 8; ++i) program.click("MTCalculate");
    QCOMPARE(program.prompts.told.back(), 8);
    inSchedule([] { QCOMPARE(lineOf("Compound interest periods/yr:"), "Semiannual"); });
  }

  void changesItsKindByClickAndByKey() {
    ProgramFixture program;
    openMortgage(program);
    inSchedule([&] {
      QCOMPARE(program.find<QRadioButton>("SCKind_1")->text(),
               "At the chosen &frequency: Biweekly(acl)");
      QVERIFY(program.find<QRadioButton>("SCKind_0")->isChecked());
      program.find<QRadioButton>("SCKind_1")->click();
      QCOMPARE(lineOf("Each payment, principal + int:"), "337.60");
      QCOMPARE(lineOf("Number of payments:"), "538");
      QTest::keyClick(schedule(), Qt::Key_C, Qt::AltModifier);
      QTRY_COMPARE(lineOf("Each payment, principal + int:"), "675.21");
      QTest::keyClick(schedule(), Qt::Key_F, Qt::AltModifier);
      QTRY_COMPARE(lineOf("Each payment, principal + int:"), "337.60");
      QVERIFY(shownReport().startsWith("   Payment schedule at the chosen frequency\n"));
      // The arrow keys choose, too.
      QCOMPARE(QApplication::focusWidget(), program.find("SCKind_1"));
      program.key(Qt::Key_Up);
      QCOMPARE(lineOf("Each payment, principal + int:"), "675.21");
    });
  }

  void leavingABoxRecalculates() {
    ProgramFixture program;
    openMortgage(program);
    inSchedule([&] {
      QCOMPARE(program.box("SCExtra")->text(), "         $.00");
      QCOMPARE(program.box("SCYearly")->text(), "         $.00");
      program.type("SCExtra", "1a0-0.005");
      QCOMPARE(program.box("SCExtra")->text(), "100.00");
      QCOMPARE(lineOf("Extra with each payment:"), ".00");
      program.key(Qt::Key_Tab);
      QCOMPARE(QApplication::focusWidget(), program.box("SCYearly"));
      QCOMPARE(program.box("SCExtra")->text(), "      $100.00");
      QCOMPARE(lineOf("Extra with each payment:"), "100.00");
      QTest::keyClicks(program.box("SCYearly"), "1000");
      QTest::mouseClick(program.find("SCKind_1"), Qt::LeftButton);
      QCOMPARE(program.box("SCYearly")->text(), "    $1,000.00");
      QCOMPARE(lineOf("Extra once a year:"), "1,000.00");
      // What is typed counts before a mnemonic does anything.
      program.type("SCExtra", "50");
      QTest::keyClick(schedule(), Qt::Key_C, Qt::AltModifier);
      QTRY_COMPARE(lineOf("Extra with each payment:"), "50.00");
      QTRY_COMPARE(lineOf("Frequency/type of payment:"), "Monthly");
      // 0 again is none.
      program.type("SCExtra", "0");
      program.type("SCYearly", "0");
      program.key(Qt::Key_Return);
      QCOMPARE(lineOf("Interest saved:"), ".00");
    });
  }

  void isUsedByTheKeyboardAlone() {
    ProgramFixture program;
    openMortgage(program);
    const QString clipboard = "kept";
    QTest::mouseClick(program.find("Results"), Qt::LeftButton);
    QGuiApplication::clipboard()->setText(clipboard);
    inSchedule([&] {
      QCOMPARE(QApplication::focusWidget(), program.find("SCKind_0"));
      QCOMPARE(QGuiApplication::clipboard()->text(), clipboard);
      program.key(Qt::Key_Return);
      QCOMPARE(QApplication::focusWidget(), program.box("SCExtra"));
      QTest::keyClicks(QApplication::focusWidget(), "100");
      program.key(Qt::Key_Return);
      QCOMPARE(QApplication::focusWidget(), program.box("SCYearly"));
      QTest::keyClicks(QApplication::focusWidget(), "1000");
      program.key(Qt::Key_Enter);
      QCOMPARE(QApplication::focusWidget(), program.find("SCResults"));
      QCOMPARE(lineOf("Number of payments:"), "186");
      for (const char* next : {"SCGraph", "SCPrint", "SCExport", "SCExit", "SCKind_0", "SCExtra"}) {
        program.key(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), program.find(next));
      }
      program.key(Qt::Key_Escape);
      QCOMPARE(schedule(), nullptr);
    });
    inSchedule([&] {
      program.find("SCResults")->setFocus();
      program.key(Qt::Key_Return);
      QCOMPARE(QApplication::focusWidget(), program.find("SCGraph"));
      QVERIFY(schedule() != nullptr);
      program.find("SCExit")->setFocus();
      program.key(Qt::Key_Return);
      QCOMPARE(schedule(), nullptr);
    });
    inSchedule([] {
      QTest::keyClick(schedule(), Qt::Key_X, Qt::AltModifier);
      QTRY_COMPARE(schedule(), nullptr);
    });
  }

  void hasUniqueMnemonicsAndNames() {
    ProgramFixture program;
    openMortgage(program);
    inSchedule([] {
      QSet<QChar> letters;
      for (const auto* button : schedule()->findChildren<QAbstractButton*>()) {
        const qsizetype at = button->text().indexOf('&');
        QVERIFY2(at >= 0, qPrintable(button->objectName()));
        const QChar letter = button->text()[at + 1].toLower();
        QVERIFY2(!letters.contains(letter), qPrintable(button->text()));
        letters << letter;
      }
      QCOMPARE(letters.size(), 6);
      QCOMPARE(ProgramFixture::box("SCExtra")->accessibleName(), "Extra with each payment");
      QCOMPARE(ProgramFixture::box("SCYearly")->accessibleName(), "Extra once a year");
      QCOMPARE(ProgramFixture::find("SCResults")->accessibleName(), "Payment schedule");
    });
  }

  void printsBehindAHeaderLine() {
    ProgramFixture program;
    openMortgage(program);
    const QString before = everything(program.global);
    inSchedule([&] {
      program.prompts.answers = {false, true, true};
      program.click("SCPrint");  // no
      program.click("SCPrint");  // yes, and then no line
      QVERIFY(!QFile::exists(program.printing.path));
      program.prompts.lines = {"Our house"};
      program.click("SCPrint");
      QCOMPARE(program.prompts.asked, (QList<int>{1, 1, 1}));
      for (QWidget* over : program.prompts.over) QCOMPARE(over, schedule());
      constexpr double kPitch = 6.6;  // of 11 points
      const QStringList lines = program.printing.lines(kPitch);
      QVERIFY(lines.contains("Our house"));
      const QString printed = lines.join('\n');
      QVERIFY(printed.indexOf("Our house") < printed.indexOf("Payment schedule"));
      QVERIFY(printed.contains("Total     202,561.06         .00  102,561.06  100,000.00"));
    });
    QCOMPARE(everything(program.global), before);
  }

  void graphsBalanceAndInterest() {
    ProgramFixture program;
    openMortgage(program);
    const QString before = everything(program.global);
    inSchedule([&] {
      bool looked = false;
      QTimer::singleShot(30, qApp, [&] {
        QWidget* window = ProgramFixture::window("PQGraph");
        if (window == nullptr) return;
        looked = true;
        const auto* chart = window->findChild<BarChart*>("MSChart1");
        QCOMPARE(window->windowTitle(), "Payment schedule");
        QCOMPARE(chart->barCount(), 50);
        QCOMPARE(chart->textOfBar(0), "Year 1, Balance at the end of the year: $98,348.86");
        QTest::keyClick(window, Qt::Key_Escape);
      });
      program.click("SCGraph");
      QVERIFY(looked);
      QVERIFY(schedule() != nullptr);
    });
    QCOMPARE(everything(program.global), before);
  }

  void exportsARowAPayment() {
    ProgramFixture program;
    openMortgage(program);
    const QTemporaryDir folder;
    inSchedule([&] {
      program.prompts.paths = {folder.filePath("house.csv")};
      program.click("SCExport");
      QCOMPARE(program.prompts.initialPaths.size(), 1);
      QFile file(folder.filePath("house.csv"));
      QVERIFY(file.open(QIODevice::ReadOnly));
      const QByteArrayList lines = file.readAll().split('\n');
      QCOMPARE(lines.front().trimmed(), "number,payment,extra,interest,principal,balance");
      QCOMPARE(lines[1].trimmed(), "1,675.21,0.00,541.67,133.54,99866.46");
      QCOMPARE(lines[300].trimmed(), "300,673.27,0.00,3.63,669.64,0.00");
      QCOMPARE(lines.size(), 302);  // one behind the last line end
    });
  }

  // 90 % for 40 years: 7,500.00 of interest a month, and so is the payment.
  void tellsOfABalanceThatDoesNotFall() {
    ProgramFixture program;
    program.openCalculations(kMortgage);
    program.type("MTInRate", "90");
    program.type("MTInTerm", "40");
    program.click("MTCalculate");
    QVERIFY(program.prompts.told.isEmpty());
    inSchedule([&] {
      QCOMPARE(program.prompts.told, QList<int>{kWrongEntry});
      QCOMPARE(shownReport(), "");
      for (const char* name : {"SCGraph", "SCPrint", "SCExport"})
        QVERIFY(!program.find(name)->isEnabled());
      QVERIFY(program.find("SCExit")->isEnabled());
      // Half of it every two weeks repays more than the interest.
      QTest::keyClick(schedule(), Qt::Key_F, Qt::AltModifier);
      QTRY_VERIFY(!shownReport().isEmpty());
      QVERIFY(program.find("SCGraph")->isEnabled());
      QCOMPARE(program.prompts.told.size(), 1);
      QTest::keyClick(schedule(), Qt::Key_C, Qt::AltModifier);
      QTRY_COMPARE(program.prompts.told.size(), 2);
      QCOMPARE(shownReport(), "");
      for (QWidget* over : program.prompts.over) QCOMPARE(over, schedule());
    });
  }

  void anExtraBeyondMoneyIsRefused() {
    ProgramFixture program;
    openMortgage(program);
    inSchedule([&] {
      program.type("SCExtra", "99999999999999999999");
      QTest::keyClick(schedule(), Qt::Key_G, Qt::AltModifier);
      QTRY_COMPARE(program.prompts.told, QList<int>{kWrongEntry});
      QCOMPARE(program.window("PQGraph"), nullptr);
      QCOMPARE(program.box("SCExtra")->text(), "         $.00");
      QCOMPARE(lineOf("Interest saved:"), ".00");
    });
  }

  void leavesThePageAsItWas() {
    ProgramFixture program;
    openMortgage(program);
    program.type("MTInTerm", "20");
    program.click("MTCalculate");
    const QString before = everything(program.global);
    const QString page = pageShown();
    inSchedule([&] {
      program.type("SCExtra", "100");
      program.type("SCYearly", "250.50");
      program.click("SCKind_1");
      program.click("SCKind_0");
      QCOMPARE(lineOf("Extra once a year:"), "250.50");
    });
    QCOMPARE(everything(program.global), before);
    QCOMPARE(pageShown(), page);
    // A second time nothing is left of the first.
    inSchedule([&] {
      QCOMPARE(program.box("SCExtra")->text(), "         $.00");
      QCOMPARE(lineOf("Extra once a year:"), ".00");
    });
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::MortgageScheduleWindowTest)
#include "mortgage_schedule_window_test.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// The pages beside compound gain's: lists, options, the mortgage's automatic
// calculation, and a report and a printout from each.
#include <QLabel>

#include "app/input_boxes.h"
#include "calc/box_tables.h"
#include "calc/capital_required_help.h"
#include "calc/investment_growth_help.h"
#include "calc/mortgage_help.h"
#include "calc/pension_growth_help.h"
#include "calc/retirement_income_help.h"
#include "charts/chart_kind.h"
#include "ui_testing.h"

namespace mirelund::testing {

class CalculatorPagesTest : public QObject {
  Q_OBJECT

  static QString label(const char* name) { return ProgramFixture::find<QLabel>(name)->text(); }
  static QStringList items(const char* name) {
    auto* list = ProgramFixture::find<QComboBox>(name);
    QStringList texts;
    for (int i = 0; i < list->count(); ++i) texts << list->itemText(i);
    return texts;
  }
  static void chooseItem(const char* name, int steps) {
    auto* list = ProgramFixture::find<QComboBox>(name);
    list->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < std::abs(steps); ++i)
      QTest::keyClick(list, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
  }

 private slots:
  void everyPageReportsPrintsAndExplains_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("help");
    const auto help = [](const std::string& text) { return QString::fromStdString(text); };
    // Each line's numbers follow from the initial values: see the tests of core.
    QTest::newRow("pension growth") << 0 << "PG"
                                    << " 25    102,532.17      8,202.57     42,012.87    462,141.54"
                                    << help(pensionGrowthHelp());
    QTest::newRow("mortgage") << 1 << "MT"
                              << "Monthly principal + interest:        $675.21"
                              << help(mortgageHelp());
    QTest::newRow("investment growth")
        << 2 << "IG"
        << " 25     25,000.00    219,711.99    244,711.99" << help(investmentGrowthHelp());
    QTest::newRow("retirement income") << 3 << "RI"
                                       << "  1     20,000.00     15,000.00    105,000.00"
                                       << help(retirementIncomeHelp(WithdrawalChoice::Percentage));
    QTest::newRow("capital required")
        << 5 << "CR"
        << "  1        408.64         61.30        469.94" << help(capitalRequiredHelp());
  }

  void everyPageReportsPrintsAndExplains() {
    QFETCH(int, page);
    QFETCH(QString, prefix);
    QFETCH(QString, line);
    QFETCH(QString, help);
    ProgramFixture program;
    program.openCalculations(page);
    program.click(qPrintable(prefix + "Print"));
    QCOMPARE(program.prompts.told, QList<int>{1});
    program.click(qPrintable(prefix + "Calculate"));
    const QStringList report = program.results().split('\n');
    QVERIFY2(report.contains(line), qPrintable(program.results()));
    for (const auto size : {QPageSize::A4, QPageSize::Letter}) {
      program.printing.pageSize = size;
      program.click(qPrintable(prefix + "Print"));
      QStringList expected =
          QString::fromStdString(program.global.reports.ReportLines[1]).remove('\r').split('\n');
      while (expected.back().isEmpty()) expected.removeLast();
      QCOMPARE(program.printing.lines(6.59), expected);
    }
    program.click(qPrintable(prefix + "Help"));
    QCOMPARE(program.results(), help.remove('\r'));
    program.click(qPrintable(prefix + "Calculate"));
    QCOMPARE(program.results().split('\n'), report);
  }

  void thePensionsHintIsShownButNotPrinted() {
    ProgramFixture program;
    program.openCalculations(0);
    program.click("PGCalculate");
    QVERIFY(program.results().endsWith("\n                            Hidden column >"));
    program.click("PGPrint");
    QVERIFY(!program.printing.lines(6.59).join("").contains("Hidden"));
  }

  void anOptionReloadsTheCapitalPage() {
    ProgramFixture program;
    program.openCalculations(5);
    QCOMPARE(label("Label26"), "Amount of capital required $");
    program.type("CRInCapitalReq", "5000");
    program.click("CRCalculate");
    program.click("CRCapitalChoices_1");
    QCOMPARE(program.results(), "");
    QCOMPARE(program.global.reports.ReportLines[1], "");
    QCOMPARE(label("Label26"), "Annual income required $");
    QCOMPARE(program.box("CRInCapitalReq")->text(), "   $40,000.00");
    program.type("CRInIntGrowthRate", "20");
    program.click("CRCalculate");
    QVERIFY(program.results().startsWith("Annual income required:       $40,000.00\n"));
    QVERIFY(program.results().contains("Tot"));
    program.click("CRCapitalChoices_0");
    QCOMPARE(program.box("CRInCapitalReq")->text(), "  $100,000.00");
    QCOMPARE(program.box("CRInIntGrowthRate")->text(), " 15.00%");
  }

  void typingOnTheCapitalPageEmptiesTheReport() {
    ProgramFixture program;
    program.openCalculations(5);
    program.click("CRCalculate");
    QVERIFY(!program.results().isEmpty());
    program.type("CRInTimeInYrs", "1");
    QCOMPARE(program.results(), "");
    QCOMPARE(program.global.reports.ReportLines[1], "");
  }

  void anOptionOfRetirementKeepsTheFirstTwo() {
    ProgramFixture program;
    program.openCalculations(3);
    QCOMPARE(label("Label32"), "Annual income withdrawn as a (%)");
    QCOMPARE(label("Label33"), "Time in years");
    program.type("RIInCurrValue", "50000");
    program.type("RIInAnnIntGrowthRate", "10");
    program.click("RICalculate");
    program.click("RIWDrawalChoice_1");
    QCOMPARE(program.results(), "");
    QCOMPARE(label("Label32"), "Monthly amount of cash withdrawn");
    QCOMPARE(label("Label33"), "Increase annual income by %");
    QCOMPARE(program.box("RIInCurrValue")->text(), "   $50,000.00");
    QCOMPARE(program.box("RIInAnnIntGrowthRate")->text(), " 10.00%");
    QCOMPARE(program.box("RIInAnnIncWDrawnRate")->text(), "  $1,000.00");
    QCOMPARE(program.box("RIInTimeInYrs")->text(), "   .00%");

    // The fourth box is a rate now: decimals pass, and 40 is no limit.
    program.type("RIInTimeInYrs", "41.5");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.box("RIInTimeInYrs")->text(), " 41.50%");
    QVERIFY(program.prompts.told.isEmpty());
    program.type("RIInAnnIncWDrawnRate", "5000");
    program.click("RICalculate");
    QCOMPARE(program.prompts.told, QList<int>{7});
    QCOMPARE(program.results(), "");
    program.click("AllGraphs");
    QCOMPARE(program.prompts.told, (QList<int>{7, 4}));
    program.click("RIHelp");
    QVERIFY(program.results().startsWith("       Using Fixed Amount Option\n"));
    program.click("RIWDrawalChoice_0");
    QCOMPARE(program.box("RIInTimeInYrs")->text(), "    25");
    program.type("RIInTimeInYrs", "41");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.prompts.told, (QList<int>{7, 4, 5}));
  }

  void theOptionInForceIsNoChange() {
    ProgramFixture program;
    program.openCalculations(5);
    program.type("CRInCapitalReq", "55555");
    program.click("CRCalculate");
    const QString report = program.results();
    program.click("CRCapitalChoices_0");
    QCOMPARE(program.results(), report);
    QCOMPARE(program.box("CRInCapitalReq")->text(), "   $55,555.00");
    program.choosePage(3);
    program.type("RIInAnnIncWDrawnRate", "7");
    program.click("RICalculate");
    program.click("RIWDrawalChoice_0");
    QVERIFY(!program.results().isEmpty());
    QCOMPARE(program.box("RIInAnnIncWDrawnRate")->text(), "  7.00%");
    // An option chosen without a move of the focus leaves the box first.
    program.type("RIInCurrValue", "77777");
    program.find<QRadioButton>("RIWDrawalChoice_1")->click();
    QCOMPARE(program.box("RIInCurrValue")->text(), "   $77,777.00");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.box("RIInCurrValue")->text(), "   $77,777.00");
  }

  void tenComparisonsArePrintedWhileTheyAreOnScreen() {
    ProgramFixture program;
    program.openCalculations(2);
    program.click("IGResultsChoice_1");
    for (int i = 1; i <= 10; ++i) program.click("IGCalculate");
    const QStringList shown = program.results().split('\n');
    const auto printed = [&program] {
      program.click("IGPrint");
      return program.printing.lines(6.59).filter("Frequency").size();
    };
    QCOMPARE(printed(), 10);
    // An eleventh that fails leaves its heading behind, but not on the screen.
    program.type("IGInYearsInvested", "0");
    program.click("IGCalculate");
    QCOMPARE(program.prompts.told, (QList<int>{8, 3}));
    QCOMPARE(program.results().split('\n'), shown);
    QCOMPARE(printed(), 10);
    program.type("IGInYearsInvested", "5");
    program.click("IGCalculate");
    QCOMPARE(printed(), 2);
  }

  void growthComparesTenTimes() {
    ProgramFixture program;
    program.openCalculations(2);
    QCOMPARE(items("IGInMonthsYrs"), (QStringList{"Annually", "Quarterly", "Monthly"}));
    program.click("IGResultsChoice_1");
    chooseItem("IGInMonthsYrs", 2);
    for (int i = 1; i <= 10; ++i) {
      program.type("IGInYearsInvested", qPrintable(QString::number(i)));
      program.click("IGCalculate");
      QCOMPARE(program.results().count("Frequency of contribution:     Monthly"), i);
      QCOMPARE(program.global.chart.ChartKind, ChartKind::GrowthComparisons);
      QCOMPARE(program.global.chart.ChartCount, i);
    }
    QCOMPARE(program.prompts.told, QList<int>{8});
    program.click("IGCalculate");
    QCOMPARE(program.results().count("Frequency of contribution:"), 1);
    program.click("IGResultsChoice_0");
    program.click("IGCalculate");
    QCOMPARE(program.results().count('\n'), 7 + 2 + 120 + 2);
  }

  void zeroYearsAreToldAndTheReportStays() {
    ProgramFixture program;
    program.openCalculations(2);
    program.click("IGCalculate");
    const QString before = program.results();
    program.type("IGInYearsInvested", "0");
    program.click("IGCalculate");
    QCOMPARE(program.prompts.told, QList<int>{3});
    QCOMPARE(program.results(), before);
  }

  void theMortgageFollowsEveryLeave() {
    ProgramFixture program;
    program.openCalculations(1);
    QCOMPARE(items("MTCompPeriod"),
             (QStringList{"Monthly", "Bimonthly", "Quarterly", "Semiannual", "Annual"}));
    QCOMPARE(items("MTFreqPmt"), (QStringList{"Monthly", "Semimonthly", "2 Weeks", "1 Week",
                                              "Biweekly(acl)", "Weekly(acl)"}));
    QCOMPARE(program.find<QComboBox>("MTFreqPmt")->currentText(), "Biweekly(acl)");
    chooseItem("MTCompPeriod", 3);
    program.type("MTInRate", "6");
    program.key(Qt::Key_Tab);
    // 100,000 at 6 % compounded semiannually over 25 years: 639.81 a month.
    QCOMPARE(program.box("MTInMthPayment")->text(), "      $639.81");
    QCOMPARE(label("MTTotalPmts"), "   $91,941.98");
    QCOMPARE(label("MTNumPmts"), "26");
    QCOMPARE(label("MTDaysInYear"), "365.00");
    QCOMPARE(label("MTNumYrs"), "20.97");
    QCOMPARE(label("MTPiPmt"), "      $319.90");
    QCOMPARE(label("MTTotIntSaved"), "   $17,486.98");
    QCOMPARE(label("MTTotIntPaid"), "   $74,455.00");

    // Monthly turns the days off, another frequency turns them on again.
    chooseItem("MTFreqPmt", -4);
    program.key(Qt::Key_Tab);
    QCOMPARE(label("MTDaysInYear"), "Normal");
    QCOMPARE(label("MTTotIntSaved"), "         $.00");
    QVERIFY(!program.find<QRadioButton>("MTIRFactor_1")->isEnabled());
    QVERIFY(program.find<QRadioButton>("MTIRFactor_6")->isChecked());
    chooseItem("MTFreqPmt", 2);
    program.key(Qt::Key_Tab);
    QVERIFY(program.find<QRadioButton>("MTIRFactor_1")->isChecked());
    QCOMPARE(label("MTPiPmt"), "      $295.30");
    QCOMPARE(label("MTNumYrs"), "24.84");
    QCOMPARE(label("MTTotIntSaved"), "    $1,252.04");
    program.click("MTIRFactor_0");
    QCOMPARE(label("MTDaysInYear"), "365.00");
    program.key(Qt::Key_Tab);
    QCOMPARE(label("MTDaysInYear"), "365.25");
  }

  void theSolvedBoxIsWhiteAndLocked() {
    ProgramFixture program;
    program.openCalculations(1);
    const auto base = [&](const char* name) {
      return program.box(name)->palette().color(QPalette::Base);
    };
    QVERIFY(program.box("MTInMthPayment")->isReadOnly());
    QCOMPARE(base("MTInMthPayment"), QColor(Qt::white));
    program.click("MTPrincipalOpt");
    QVERIFY(program.box("MTInPrincipal")->isReadOnly());
    QCOMPARE(base("MTInPrincipal"), QColor(Qt::white));
    QVERIFY(!program.box("MTInMthPayment")->isReadOnly());
    QCOMPARE(base("MTInMthPayment"), QColor(128, 255, 128));
    program.type("MTInMthPayment", "675.21");
    program.key(Qt::Key_Tab);
    // The present value of 300 payments of 675.21 at 6.5 % / 12: 100,000.4204.
    QCOMPARE(program.box("MTInPrincipal")->text(), "  $100,000.42");
    program.click("MTTermOpt");
    program.type("MTInPrincipal", "100000");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.box("MTInTerm")->text(), "25.");
    QTest::keyClicks(program.box("MTInTerm"), "7");
    QCOMPARE(program.box("MTInTerm")->text(), "25.");
  }

  void aPaymentOutOfBoundsIsToldOnceAndGetsTheFocus_data() {
    QTest::addColumn<QString>("payment");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("way");
    for (const char* way : {"tab", "mouse", "mnemonic", "enter", "another box"}) {
      QTest::addRow("small by %s", way)
          << "100"
          << "Payment is too small, repayment would take over 40 years." << way;
      QTest::addRow("large by %s", way) << "100000"
                                        << "Payment is too large. Greater than principal." << way;
    }
  }

  void aPaymentOutOfBoundsIsToldOnceAndGetsTheFocus() {
    QFETCH(QString, payment);
    QFETCH(QString, text);
    QFETCH(QString, way);
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTTermOpt");
    program.type("MTInMthPayment", qPrintable(payment));
    if (way == "tab") program.key(Qt::Key_Tab);
    if (way == "mouse") program.click("MTCalculate");
    if (way == "enter") program.key(Qt::Key_Return);
    if (way == "another box") program.click("MTInRate");
    if (way == "mnemonic")
      QTest::keyClick(program.box("MTInMthPayment"), Qt::Key_C, Qt::AltModifier);
    QTRY_COMPARE(program.prompts.warned, QStringList{text});
    QTest::qWait(50);
    QCOMPARE(program.prompts.warned, QStringList{text});
    QVERIFY(program.prompts.told.isEmpty());
    QCOMPARE(QApplication::focusWidget()->objectName(), "MTInMthPayment");
    QCOMPARE(label("MTTotIntPaid"), "");
    QCOMPARE(program.results(), "");
    QCOMPARE(program.global.reports.ComparisonCount, 0);
    QCOMPARE(program.global.chart.ChartCount, 0);
  }

  // Who solves for the years has still to type what makes them possible.
  void aFailureThatNothingHasChangedHoldsNobody() {
    const QString tooSmall = "Payment is too small, repayment would take over 40 years.";
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTTermOpt");
    program.type("MTInPrincipal", "900000");
    program.key(Qt::Key_Tab);
    QTRY_COMPARE(program.prompts.warned, QStringList{tooSmall});
    QCOMPARE(QApplication::focusWidget()->objectName(), "MTInMthPayment");
    for (const char* next : {"MTInRate", "MTInPrincipal", "MTCompPeriod", "MTHelp"}) {
      program.click(next);
      if (auto* popup = QApplication::activePopupWidget()) popup->close();
      QVERIFY(program.isActivated(program.window("PQInvest")));
      QCOMPARE(program.prompts.warned, QStringList{tooSmall});
      QCOMPARE(QApplication::focusWidget()->objectName(), next);
    }
    QVERIFY(!program.results().isEmpty());
    // Calculate always tells, and so does a leave that has something new to fail of.
    program.click("MTCalculate");
    QTRY_COMPARE(program.prompts.warned.size(), 2);
    program.type("MTInPrincipal", "900001");
    program.key(Qt::Key_Tab);
    QTRY_COMPARE(program.prompts.warned.size(), 3);
    program.find<QComboBox>("MTCompPeriod")->setCurrentIndex(1);
    program.click("MTInRate");
    program.click("MTInMthPayment");
    QTRY_COMPARE(program.prompts.warned.size(), 4);
    program.type("MTInMthPayment", "9000");
    program.key(Qt::Key_Tab);
    QTest::qWait(20);
    QCOMPARE(program.prompts.warned.size(), 4);
    QVERIFY(!label("MTTotIntPaid").isEmpty());
  }

  void aFailureIsToldOnceThoughItsDialogTakesTheFocus() {
    ProgramFixture program;
    program.openCalculations(1);
    program.prompts.whileWarned = [] {
      QWidget dialog;
      dialog.show();
      dialog.activateWindow();
      QVERIFY(QTest::qWaitForWindowActive(&dialog));
    };
    program.click("MTTermOpt");
    program.type("MTInMthPayment", "100");
    program.key(Qt::Key_Backtab);
    program.window("PQInvest")->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(program.window("PQInvest")));
    QTest::qWait(50);
    QCOMPARE(program.prompts.warned.size(), 1);
    QCOMPARE(QApplication::focusWidget()->objectName(), "MTInMthPayment");
  }

  void aDropThatFailsTheMortgageIsToldOnce() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTTermOpt");
    program.type("MTInMthPayment", "100");
    program.drop(program.box("MTInRate"), "7");
    QCOMPARE(program.prompts.warned.size(), 1);
    QCOMPARE(QApplication::focusWidget()->objectName(), "MTInMthPayment");
    QTest::keyClicks(program.box("MTInMthPayment"), "900");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.prompts.warned.size(), 1);
    QCOMPARE(program.box("MTInRate")->text(), " 6.500%");
  }

  void anUnknownGivenUpTellsNothing() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTTermOpt");
    program.type("MTInMthPayment", "100");
    program.click("MTPaymentOpt");
    QTest::qWait(50);
    QVERIFY(program.prompts.warned.isEmpty());
  }

  void aPageThatIsGoneTellsNothing() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTTermOpt");
    program.type("MTInMthPayment", "1");
    program.choosePage(2);
    QTest::qWait(50);
    QVERIFY(program.prompts.warned.isEmpty());
    QVERIFY(QApplication::focusWidget()->isVisible());
  }

  void theDaysAreOnWhereTheFrequencyCountsThem() {
    ProgramFixture program;
    program.openCalculations(1);
    auto* days = program.find<QRadioButton>("MTIRFactor_3");
    chooseItem("MTFreqPmt", -4);
    QVERIFY(!days->isEnabled());
    program.key(Qt::Key_Tab);
    // At once, so that they can be clicked next.
    chooseItem("MTFreqPmt", 2);
    QVERIFY(days->isEnabled());
    program.click("MTIRFactor_3");
    program.click("MTCalculate");
    QVERIFY(program.results().contains("Number of days in year used:          364.00"));
    chooseItem("MTFreqPmt", -2);
    program.key(Qt::Key_Tab);
    program.choosePage(0);
    program.choosePage(1);
    QVERIFY(days->isEnabled());
    QVERIFY(program.find<QRadioButton>("MTIRFactor_1")->isChecked());
  }

  void mortgagesAreComparedTenTimes() {
    ProgramFixture program;
    program.openCalculations(1);
    for (int i = 1; i <= 10; ++i) {
      program.type("MTInTerm", qPrintable(QString::number(i + 10)));
      program.click("MTCalculate");
      QCOMPARE(program.results().count("Conventional Mortgage"), i);
    }
    QCOMPARE(program.prompts.told, QList<int>{8});
    QCOMPARE(program.global.chart.ChartCount, 10);
    program.click("MTCalculate");
    QCOMPARE(program.results().count("Conventional Mortgage"), 1);
    program.choosePage(0);
    program.choosePage(1);
    QCOMPARE(program.box("MTInTerm")->text(), "   25");
    QCOMPARE(label("MTTotIntPaid"), "");
    QCOMPARE(program.find<QComboBox>("MTFreqPmt")->currentText(), "Biweekly(acl)");
  }

  void anyKeysEndInAReportOrAMessage() {
    ProgramFixture program;
    program.openCalculations(0);
    const char* texts[] = {"0", "", ".", "99999999999999", "0.01", "999", "1.1.1", "40"};
    struct Page {
      int index;
      const char* calculate;
      const char* option;
    };
    const Page pages[] = {
        {0, "PGCalculate", nullptr},          {1, "MTCalculate", "MTTermOpt"},
        {1, "MTCalculate", "MTPrincipalOpt"}, {2, "IGCalculate", nullptr},
        {3, "RICalculate", nullptr},          {3, "RICalculate", "RIWDrawalChoice_1"},
        {4, "CGCalculate", nullptr},          {5, "CRCalculate", nullptr}};
    for (const Page& page : pages) {
      program.choosePage(4);
      program.choosePage(page.index);
      if (page.option != nullptr) program.click(page.option);
      for (int seed = 0; seed < 24; ++seed) {
        int turn = seed;
        for (const BoxRule& rule : kBoxTables[static_cast<std::size_t>(page.index)]) {
          if (rule.option != 0) continue;
          auto* edit = program.box(std::string(rule.name).c_str());
          if (edit->isReadOnly()) continue;
          edit->setFocus(Qt::TabFocusReason);
          QTest::keyClicks(edit, texts[(turn += 5 + seed / 8) % 8]);
        }
        program.prompts.told.clear();
        program.prompts.warned.clear();
        program.click("ClearResults");
        program.click(page.calculate);
        const QString report = program.results();
        QVERIFY2(!report.isEmpty() || !program.prompts.told.isEmpty() ||
                     !program.prompts.warned.isEmpty(),
                 page.calculate);
        QVERIFY(!report.contains(QRegularExpression("\\b-?(nan|inf)\\b")));
      }
    }
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::CalculatorPagesTest)
#include "calculator_pages_test.moc"
#include "charts/chart_kind.h"

// SPDX-License-Identifier: GPL-3.0-or-later
// The insights window over the manager: what it shows is what core says for the prices,
// the date and the method that are chosen in it.
#include "insights/insights_window.h"

#include <QClipboard>
#include <QFontInfo>
#include <QScrollBar>
#include <QTimer>

#include "app/report_box.h"
#include "base/ui_text.h"
#include "charts/bar_chart_widget.h"
#include "export/csv.h"
#include "manager/database/data_file.h"
#include "manager/manager_testing.h"
#include "manager/short_date.h"

namespace mirelund::testing {

namespace {

// As kTwoFunds, with a sale; its last record is in 2040.
const QByteArray kSoldInParts =
    "5,2,\"All Records\",\"31\"\r\n"
    "\"Alder\",\"1\"\r\n"
    "\"Birch\",\"2\"\r\n"
    "1,10,100,50,0,1050,\"B\",#2019-01-02#\r\n"
    "2,20,50,0,0,1000,\"B\",#2019-02-03#\r\n"
    "1,16,60,0,0,960,\"B\",#2020-03-04#\r\n"
    "1,18,-120,10,0,-2150,\"S\",#2030-05-06#\r\n"
    "2,0,0,0,7.25,-7.25,\"C\",#2040-07-08#\r\n";

QString todayText() {
  return toQString(formatDate(today(), shortDateFormat(dateLocale())));
}

}  // namespace

class InsightsWindowTest : public QObject {
  Q_OBJECT

  using Prices = std::vector<std::optional<Currency>>;

  // What core says of a file's bytes.
  static QString expected(InsightsPage page, const QByteArray& bytes, Date date, CostMethod method,
                          const Prices& prices = {std::nullopt, std::nullopt}) {
    const auto database = parseDatabase(bytes.toStdString());
    const InsightsShown shown =
        showInsights({*database, prices, date, method, shortDateFormat(dateLocale())});
    QString text = toQString(shown.reports[static_cast<std::size_t>(page)]);
    return text.replace("\r\n", "\n");
  }

  // Opens the window by its key, looks at it, and closes it where `look` has not.
  template <typename Look>
  static void inInsights(Look look) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_I, Qt::ControlModifier);
    const QPointer<QWidget> window = ProgramFixture::window("PQInsights");
    QVERIFY(window != nullptr);
    // Its owner is active already, which counts for a window that waits.
    QTRY_COMPARE(QApplication::activeWindow(), window.data());
    look(window.data());
    if (window != nullptr) window->close();
    // Gone with all that it has made.
    QTRY_VERIFY(window == nullptr);
    ManagerFixture::activate();
  }

  static QString shown(const char* report) { return ManagerFixture::text(report); }
  static QString date() { return ProgramFixture::box("IVDate")->text(); }
  static QString focus() {
    const QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? QString() : widget->objectName();
  }
  static void typeDate(const char* keys) {
    QLineEdit* box = ProgramFixture::box("IVDate");
    box->setFocus(Qt::TabFocusReason);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, keys);
  }
  static void alt(Qt::Key key) {
    QTest::keyClick(QApplication::focusWidget(), key, Qt::AltModifier);
    // A mnemonic's click comes a tenth of a second later.
    QTest::qWait(150);
  }

 private slots:
  void opensOnTheGainsOfTodayAtTheAverageCost() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* window) {
      QCOMPARE(window->windowTitle(), "Insights");
      QVERIFY(window->isModal());
      QCOMPARE(focus(), "IVGains");
      QCOMPARE(date(), todayText());
      QVERIFY(program.find<QRadioButton>("IVMethod_0")->isChecked());
      QCOMPARE(program.find<QTabWidget>("IVTabs")->currentIndex(), 0);
      QCOMPARE(shown("IVGains"),
               expected(InsightsPage::Gains, kTwoFunds, today(), CostMethod::AverageCost));
      QCOMPARE(program.label("IVSentence"), toQString(kCostMethods[0].sentence));
    });
    QVERIFY(program.prompts.told.isEmpty());
  }

  void everyPageIsThereByMouseAndKeys() {
    ManagerFixture program;
    program.openFile(kSoldInParts);
    inInsights([&](QWidget* window) {
      const Date last = *Date::of(2040, 7, 8);
      const auto at = [&](InsightsPage page, const char* box) {
        QCOMPARE(program.find<QTabWidget>("IVTabs")->currentIndex(), static_cast<int>(page));
        QVERIFY(program.find(box)->isVisible());
        QCOMPARE(shown(box), expected(page, kSoldInParts, last, CostMethod::AverageCost));
      };
      auto* bar = program.find<QTabWidget>("IVTabs")->tabBar();
      for (const int tab : {1, 2, 0}) {
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
        QCoreApplication::processEvents();
        at(kInsightsPages[static_cast<std::size_t>(tab)].page,
           std::array{"IVGains", "IVReturn", "IVYears"}[static_cast<std::size_t>(tab)]);
      }
      // Who reads one report reads on in the next.
      program.find("IVGains")->setFocus(Qt::TabFocusReason);
      QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier);
      at(InsightsPage::Return, "IVReturn");
      QCOMPARE(focus(), "IVReturn");
      QTest::keyClick(window, Qt::Key_PageDown, Qt::ControlModifier);
      at(InsightsPage::Years, "IVYears");
      QTest::keyClick(window, Qt::Key_PageUp, Qt::ControlModifier);
      at(InsightsPage::Return, "IVReturn");
      alt(Qt::Key_Y);
      at(InsightsPage::Years, "IVYears");
      alt(Qt::Key_N);
      at(InsightsPage::Gains, "IVGains");
    });
  }

  void tabWalksFromTheReportRound() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* /*window*/) {
      QStringList stops;
      for (int i = 0; i < 8; ++i) {
        stops << focus();
        program.key(Qt::Key_Tab);
      }
      QCOMPARE(stops, (QStringList{"IVGains", "IVGraph", "IVPrint", "IVExport", "IVExit", "IVDate",
                                   "IVMethod_0", "qt_tabwidget_tabbar"}));
      QCOMPARE(focus(), "IVGains");
    });
  }

  void theMethodIsChosenByMouseAndKeys() {
    ManagerFixture program;
    program.openFile(kSoldInParts);
    inInsights([&](QWidget* /*window*/) {
      const Date last = *Date::of(2040, 7, 8);
      const auto is = [&](CostMethod method) {
        QCOMPARE(shown("IVGains"), expected(InsightsPage::Gains, kSoldInParts, last, method));
        QCOMPARE(program.label("IVSentence"),
                 toQString(kCostMethods[static_cast<std::size_t>(method)].sentence));
      };
      QVERIFY(expected(InsightsPage::Gains, kSoldInParts, last, CostMethod::AverageCost) !=
              expected(InsightsPage::Gains, kSoldInParts, last, CostMethod::FirstInFirstOut));
      program.click("IVMethod_1");
      is(CostMethod::FirstInFirstOut);
      program.key(Qt::Key_Left);
      is(CostMethod::AverageCost);
      alt(Qt::Key_F);
      is(CostMethod::FirstInFirstOut);
      alt(Qt::Key_A);
      is(CostMethod::AverageCost);
    });
  }

  void theDateTypedIsTaken_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("refused");
    QTest::newRow("a later one") << "1/2/2050"
                                 << "1/2/2050" << false;
    QTest::newRow("another way to write it") << "01-02-50"
                                             << "7/8/2040" << false;
    QTest::newRow("blanks and points") << " 3 . 4 . 2041 "
                                       << "3/4/2041" << false;
    QTest::newRow("the last record's") << "7/8/2040"
                                       << "7/8/2040" << false;
    QTest::newRow("before the last record") << "7/7/2040"
                                            << "7/8/2040" << false;
    QTest::newRow("nothing") << ""
                             << "7/8/2040" << false;
    QTest::newRow("no day of the calendar") << "2/30/2041"
                                            << "7/8/2040" << true;
    QTest::newRow("no year") << "1/2"
                             << "7/8/2040" << true;
    QTest::newRow("the last day there is") << "12/31/9999"
                                           << "12/31/9999" << false;
  }

  void theDateTypedIsTaken() {
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(bool, refused);
    ManagerFixture program;
    program.openFile(kSoldInParts);
    const Date used = *parseDate(shown.toStdString(), shortDateFormat(dateLocale()));
    const auto left = [&](auto leave) {
      program.takeTold();
      typeDate(qPrintable(typed));
      leave();
      QCOMPARE(date(), shown);
      QCOMPARE(program.takeTold(), refused ? QList<int>{30} : QList<int>());
      QCOMPARE(program.text("IVReturn"),
               expected(InsightsPage::Return, kSoldInParts, used, CostMethod::AverageCost));
      typeDate("7/8/2040");
      program.key(Qt::Key_Tab);
    };
    inInsights([&](QWidget* window) {
      QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier);
      QCOMPARE(date(), "7/8/2040");
      left([&] { program.key(Qt::Key_Return); });
      left([&] { program.key(Qt::Key_Tab); });
      left([&] { program.click("IVReturn"); });
      left([&] { alt(Qt::Key_A); });
      left([&] {
        QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyClick(window, Qt::Key_PageUp, Qt::ControlModifier);
        program.find<QTabWidget>("IVTabs")->setCurrentIndex(1);
      });
    });
    QVERIFY(program.takeTold().isEmpty());
  }

  void aDateBeforeTodayGoesBackToIt() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* /*window*/) {
      for (const char* typed : {"1/2/2021", "5/5/2020", "1/1/0100"}) {
        typeDate(typed);
        program.key(Qt::Key_Tab);
        QCOMPARE(date(), todayText());
      }
    });
  }

  void theMessageOfADateNamesTodayS() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* window) {
      typeDate("x13/1/2041");
      program.key(Qt::Key_Return);
      QCOMPARE(program.prompts.over.back(), window);
      QCOMPARE(toQString(program.global.dialogs.Details.shortDate), todayText());
      QCOMPARE(program.box("IVDate")->selectedText(), date());
    });
  }

  void aRefusedDatePrintsNothing() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.prompts.answers = {true};
    program.prompts.lines = {"Header"};
    inInsights([&](QWidget* /*window*/) {
      typeDate("13/1/2041");
      alt(Qt::Key_P);
      QCOMPARE(program.takeTold(), QList<int>{30});
      QVERIFY(program.takeAsked().isEmpty());
      QVERIFY(!QFile::exists(program.printing.path));
    });
  }

  void namesFundsWithoutAPriceUntilTheyHaveOne() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* /*window*/) {
      QVERIFY(program.find("IVLacking")->isVisible());
      QVERIFY(program.label("IVLacking").contains("Alder, Birch"));
    });
    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "12");
    program.type("CVInPrice_2", "0");
    // The box is left by the command.
    inInsights([&](QWidget* /*window*/) {
      QVERIFY(!program.label("IVLacking").contains("Alder"));
      QVERIFY(program.label("IVLacking").contains("Birch"));
      QCOMPARE(shown("IVGains"),
               expected(InsightsPage::Gains, kTwoFunds, today(), CostMethod::AverageCost,
                        {Currency::whole(12), std::nullopt}));
    });
    program.type("CVInPrice_2", "19.5");
    inInsights([&](QWidget* /*window*/) {
      QVERIFY(!program.find("IVLacking")->isVisible());
      QCOMPARE(shown("IVGains"),
               expected(InsightsPage::Gains, kTwoFunds, today(), CostMethod::AverageCost,
                        {Currency::whole(12), Currency::fromTenThousandths(195'000)}));
    });
  }

  void aLongLineGivesWayToTheWindow() {
    ManagerFixture program;
    QByteArray bytes = kTwoFunds;
    bytes.replace("Alder", QByteArray(400, 'A'));
    program.openFile(bytes);
    inInsights([&](QWidget* window) {
      auto* line = program.find<QLabel>("IVLacking");
      QVERIFY(line->text().endsWith(QChar(0x2026)));
      QVERIFY(line->accessibleName().endsWith("Birch"));
      QVERIFY(line->toolTip().contains("Birch"));
      QVERIFY(window->width() <= window->screen()->availableSize().width());
      window->resize(window->width() - 100, window->height());
      QVERIFY(line->fontMetrics().horizontalAdvance(line->text()) <= line->width());
    });
  }

  void doesNotOpenWithoutFundsOrWithAnEmptyOne() {
    ManagerFixture program;
    const auto refused = [&]() -> QList<int> {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_I, Qt::ControlModifier);
      if (program.window("PQInsights") != nullptr) return {-1};
      return program.takeTold();
    };
    QCOMPARE(refused(), QList<int>{15});
    program.openFile(kTwoFunds);
    program.addFund("Cedar");
    QCOMPARE(refused(), QList<int>{28});
    // What was bought leaves the range.
    QByteArray bytes = kTwoFunds;
    bytes.replace("1050,", "922337203685477,").replace("1000,", "922337203685477,");
    program.openFile(bytes);
    QCOMPARE(refused(), QList<int>{3});
  }

  void aRefusedPriceOpensNothing() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "99999999999999999999");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_I, Qt::ControlModifier);
    QVERIFY(program.window("PQInsights") == nullptr);
    QCOMPARE(program.takeTold(), QList<int>{3});
  }

  void printsThePageInViewUnderAHeader() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kEntryPage);
    program.choose("EFunds", 0);
    program.prompts.answers = {true};
    program.prompts.lines = {"Of the records"};
    program.click("EPrint");
    const std::string before = program.global.reports.ReportLines[2];
    QVERIFY(!before.empty());
    program.takeAsked();
    inInsights([&](QWidget* window) {
      QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier);
      const auto printed = [&](const QString& header) {
        QFile::remove(program.printing.path);
        program.prompts.answers = {true};
        program.prompts.lines = {header};
        program.click("IVPrint");
        QCOMPARE(program.takeAsked(), QList<int>{1});
        QStringList wanted = shown("IVReturn").split('\n');
        if (!header.isEmpty()) wanted.prepend(header);
        while (wanted.back().isEmpty()) wanted.removeLast();
        QStringList lines = program.printing.lines(6.0);
        lines.removeAll("");
        wanted.removeAll("");
        for (QString& line : lines) line = line.simplified();
        for (QString& line : wanted) line = line.simplified();
        QCOMPARE(lines, wanted);
      };
      printed("My annual return");
      printed({});
      QFile::remove(program.printing.path);
      program.prompts.answers = {false};
      program.click("IVPrint");
      program.prompts.answers = {true};  // and no line: cancelled
      program.click("IVPrint");
      QVERIFY(!QFile::exists(program.printing.path));
    });
    // The manager's own report stands.
    QCOMPARE(program.global.reports.ReportLines[2], before);
  }

  void drawsTheYears() {
    ManagerFixture program;
    program.openFile(kSoldInParts);
    const auto database = parseDatabase(kSoldInParts.toStdString());
    const Prices prices(2);
    const ChartView wanted =
        insightsChart({*database, prices, *Date::of(2040, 7, 8), CostMethod::FirstInFirstOut,
                       shortDateFormat(dateLocale())});
    const ChartSelectors before = program.global.chart;
    bool drawn = false;
    inInsights([&](QWidget* /*window*/) {
      program.click("IVMethod_1");
      QTimer::singleShot(20, qApp, [&] {
        QWidget* graph = program.window("PQGraph");
        if (graph == nullptr) return;
        const ChartView& view = graph->findChild<BarChart*>("MSChart1")->view();
        drawn = view.stacked && view.categories == wanted.categories && view.series.size() == 3 &&
                graph->windowTitle() == toQString(wanted.caption);
        for (std::size_t i = 0; drawn && i < view.series.size(); ++i)
          drawn = view.series[i].values == wanted.series[i].values &&
                  view.series[i].texts == wanted.series[i].texts;
        program.click("PQGExit");
      });
      program.click("IVGraph");
    });
    QVERIFY(drawn);
    QVERIFY(program.global.chart.ChartKind == before.ChartKind);
    QCOMPARE(program.global.chart.ChartCount, before.ChartCount);
  }

  void exportsThePageInView() {
    ManagerFixture program;
    program.openFile(kSoldInParts);
    const auto database = parseDatabase(kSoldInParts.toStdString());
    const Prices prices(2);
    const auto wanted = [&](InsightsPage page) {
      return insightsSheets({*database, prices, *Date::of(2040, 7, 8), CostMethod::AverageCost,
                             shortDateFormat(dateLocale())},
                            page)
          .sheets;
    };
    inInsights([&](QWidget* window) {
      program.prompts.paths = {program.path("mine.csv")};
      program.click("IVExport");
      QCOMPARE(program.bytes("mine.csv").toStdString(), csvText(wanted(InsightsPage::Gains)[0]));
      QCOMPARE(program.bytes("mine-totals.csv").toStdString(),
               csvText(wanted(InsightsPage::Gains)[1]));
      for (const auto page : {InsightsPage::Return, InsightsPage::Years}) {
        QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier);
        program.prompts.paths = {program.path("other.csv")};
        alt(Qt::Key_E);
        QCOMPARE(program.bytes("other.csv").toStdString(), csvText(wanted(page)[0]));
      }
      QVERIFY(program.bytes("other.csv").startsWith("year,fund,opening_shares,"));
      // Cancelled.
      program.click("IVExport");
      QCOMPARE(QDir(program.folder.path()).entryList(QDir::Files),
               (QStringList{"mine-totals.csv", "mine.csv", "other.csv", "test.PQD"}));
    });
    QCOMPARE(program.prompts.initialPaths.mid(program.prompts.initialPaths.size() - 4),
             (QStringList{program.path("gains.csv"), program.path("return.csv"),
                          program.path("years.csv"), program.path("years.csv")}));
    QVERIFY(program.prompts.warned.isEmpty() && program.prompts.confirmed.isEmpty());
  }

  void theTextIsZoomedAndCopied() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* window) {
      auto* box = program.find<ReportBox>("IVGains");
      const int points = QFontInfo(box->font()).pointSize();
      QTest::keyClick(window, Qt::Key_Plus, Qt::ControlModifier);
      QCOMPARE(QFontInfo(box->font()).pointSize(), points + 1);
      QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier);
      QCOMPARE(QFontInfo(program.find<ReportBox>("IVReturn")->font()).pointSize(), points + 1);
      QTest::keyClick(window, Qt::Key_Minus, Qt::ControlModifier);
      QTest::keyClick(window, Qt::Key_Minus, Qt::ControlModifier);
      QCOMPARE(QFontInfo(box->font()).pointSize(), points - 1);
      QTest::keyClick(window, Qt::Key_0, Qt::ControlModifier);
      QCOMPARE(QFontInfo(box->font()).pointSize(), points);

      QTest::keyClick(window, Qt::Key_PageUp, Qt::ControlModifier);
      box->setFocus(Qt::TabFocusReason);
      program.key(Qt::Key_C, Qt::ControlModifier);
      QCOMPARE(QGuiApplication::clipboard()->text(), shown("IVGains"));
      program.key(Qt::Key_Home, Qt::ControlModifier);
      for (int i = 0; i < 5; ++i) program.key(Qt::Key_Right, Qt::ShiftModifier);
      program.key(Qt::Key_C, Qt::ControlModifier);
      QCOMPARE(QGuiApplication::clipboard()->text(), shown("IVGains").left(5));
    });
  }

  void anotherMethodKeepsThePlaceInTheReport() {
    ManagerFixture program;
    program.openFile(kSoldInParts);
    inInsights([&](QWidget* window) {
      window->resize(window->minimumSizeHint());
      QCoreApplication::processEvents();
      auto* bar = program.find<ReportBox>("IVGains")->verticalScrollBar();
      QVERIFY(bar->maximum() > 1);
      bar->setValue(2);
      alt(Qt::Key_F);
      QCOMPARE(bar->value(), 2);
    });
  }

  void enterPressesTheButtonInFocusAlone() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* window) {
      for (const char* name : {"IVGains", "IVMethod_0"}) {
        program.find(name)->setFocus(Qt::TabFocusReason);
        program.key(Qt::Key_Return);
        program.key(Qt::Key_Enter, Qt::KeypadModifier);
        QVERIFY(program.takeAsked().isEmpty());
        QVERIFY(window->isVisible());
      }
      program.find("IVPrint")->setFocus(Qt::TabFocusReason);
      program.key(Qt::Key_Return);
      QCOMPARE(program.takeAsked(), QList<int>{1});
      program.find("IVExit")->setFocus(Qt::TabFocusReason);
      program.key(Qt::Key_Return);
      QVERIFY(program.window("PQInsights") == nullptr);
    });
  }

  void isClosedByEveryWayOut_data() {
    QTest::addColumn<int>("way");
    int way = 0;
    for (const char* name : {"click", "mnemonic", "Escape", "Escape in a box half typed", "close"})
      QTest::newRow(name) << way++;
  }

  void isClosedByEveryWayOut() {
    QFETCH(int, way);
    ManagerFixture program;
    program.openFile(kTwoFunds);
    inInsights([&](QWidget* window) {
      const std::array<std::function<void()>, 5> ways = {[&] { program.click("IVExit"); },
                                                         [&] { alt(Qt::Key_X); },
                                                         [&] { program.key(Qt::Key_Escape); },
                                                         [&] {
                                                           typeDate("13");
                                                           program.key(Qt::Key_Escape);
                                                         },
                                                         [&] { window->close(); }};
      ways[static_cast<std::size_t>(way)]();
      QVERIFY(program.window("PQInsights") == nullptr);
    });
    QVERIFY(program.takeTold().isEmpty());
  }

  void changesNothingOfTheManagerS() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "12");
    program.type("CVInPrice_2", "19");
    program.click("CVCalc");
    const QString table = shown("CVResults");
    const ChartSelectors chart = program.global.chart;
    program.type("CVInPrice_2", "2");
    inInsights([&](QWidget* /*window*/) {
      typeDate("1/2/2050");
      alt(Qt::Key_F);
      alt(Qt::Key_Y);
    });
    QCOMPARE(shown("CVResults"), table);
    QCOMPARE(program.box("CVInPrice_2")->text(), "2.0000");
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QCOMPARE(program.global.boxes.BoxEdited, 0);
    QVERIFY(program.global.chart.ChartKind == chart.ChartKind);
    QCOMPARE(program.global.chart.ChartCount, chart.ChartCount);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::InsightsWindowTest)
#include "insights_window_test.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_window.h"

#include <QTimer>

#include "charts/bar_chart_widget.h"
#include "charts/chart_kind.h"
#include "ui_testing.h"

namespace mirelund::testing {

class ChartWindowTest : public QObject {
  Q_OBJECT

  // Whether the printed page has no colour.
  static bool isGray(const PdfTarget& printed) {
    const QTemporaryDir folder;
    printed.run("pdftoppm",
                {"-r", "60", "-png", "-singlefile", printed.path, folder.filePath("page")});
    const QImage image(folder.filePath("page.png"));
    return !image.isNull() && image.allGray();
  }

  static QString textOf(const BarChart* chart, const char* element) {
    return chart->findChild<QCPTextElement*>(element)->text();
  }

  // Opens the chart of the page shown and looks at it.
  template <typename Look>
  static void inChart(Look look) {
    bool looked = false;
    QTimer::singleShot(50, qApp, [&] {
      QWidget* window = ProgramFixture::window("PQGraph");
      if (window == nullptr) return;
      looked = true;
      look(window, window->findChild<BarChart*>("MSChart1"));
      ProgramFixture::click("PQGExit");
    });
    ProgramFixture::click("AllGraphs");
    QVERIFY(looked);
  }

 private slots:
  void everyViewHasItsCaptionTitleAndBars_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("calculate");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("series");
    QTest::addColumn<int>("bars");
    QTest::newRow("3") << 5 << "CRCalculate"
                       << ""
                       << "Capital required"
                       << "Growth in capital required over 25 Years" << 1 << 25;
    QTest::newRow("4") << 0 << "PGCalculate"
                       << ""
                       << "Pension growth"
                       << " Pension growth over 25 Years" << 1 << 25;
    QTest::newRow("5") << 1 << "MTCalculate"
                       << ""
                       << "Mortgage comparisons"
                       << "" << 2 << 1;
    QTest::newRow("6") << 4 << "CGCalculate"
                       << ""
                       << "Compound gain"
                       << "Annual percentage gain/loss comparisons" << 1 << 1;
    QTest::newRow("7") << 2 << "IGCalculate"
                       << "IGResultsChoice_1"
                       << "Investment growth"
                       << "Total growth values for each comparision" << 1 << 1;
    QTest::newRow("9") << 2 << "IGCalculate"
                       << ""
                       << "Invested growth"
                       << "Investment growth over 25 Years" << 1 << 25;
    QTest::newRow("10") << 3 << "RICalculate"
                        << "RIWDrawalChoice_1"
                        << "Retirement income"
                        << "Retirement beginning balance over 40 Years" << 1 << 40;
    QTest::newRow("11") << 3 << "RICalculate"
                        << ""
                        << "Retirement income"
                        << "Retirement ending balance over 25 Years" << 1 << 25;
  }

  void everyViewHasItsCaptionTitleAndBars() {
    QFETCH(int, page);
    QFETCH(QString, calculate);
    QFETCH(QString, option);
    QFETCH(QString, caption);
    QFETCH(QString, title);
    QFETCH(int, series);
    QFETCH(int, bars);
    ProgramFixture program;
    program.openCalculations(page);
    if (!option.isEmpty()) program.click(qPrintable(option));
    program.click(qPrintable(calculate));
    inChart([&](QWidget* window, BarChart* chart) {
      QCOMPARE(window->windowTitle(), caption);
      QCOMPARE(textOf(chart, "ChartTitle"), title);
      QCOMPARE(textOf(chart, "ChartSecondCaption"),
               caption == "Mortgage comparisons" ? "Total interest paid" : "");
      QCOMPARE(chart->plottableCount(), series);
      for (int i = 0; i < series; ++i) {
        auto* drawn = qobject_cast<QCPBars*>(chart->plottable(i));
        QCOMPARE(drawn->dataCount(), bars);
        for (int b = 0; b < bars; ++b)
          QCOMPARE(drawn->data()->at(b)->mainValue(), chart->view()
                                                          .series[static_cast<std::size_t>(i)]
                                                          .values[static_cast<std::size_t>(b)]);
      }
      QVERIFY(!chart->xAxis->label().isEmpty());
      QVERIFY(!chart->yAxis->label().isEmpty());
      QVERIFY(chart->legend->visible());
      QVERIFY(!program.find<QPushButton>("CVGainDollars")->isVisible());
      QVERIFY(program.global.chart.ChartCount == bars);
    });
  }

  void pointingAtABarShowsItsExactValue() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTCalculate");
    inChart([](QWidget* /*window*/, BarChart* chart) {
      const auto at = [chart](double key) {
        return chart->textAt(
            {qRound(chart->xAxis->coordToPixel(key)), qRound(chart->yAxis->coordToPixel(1000))});
      };
      QVERIFY(at(0.8).contains("$102,562.15"));
      QVERIFY(at(1.2).contains("$81,557.27"));
      QCOMPARE(at(1.5), "");
      QCOMPARE(chart->textAt({1, 1}), "");
    });
  }

  void printsOnPaperAtItsSizeInColourOrGrey() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTCalculate");
    for (const bool color : {true, false}) {
      program.prompts.answers = {true, color};
      program.prompts.asked.clear();
      program.prompts.over.clear();
      inChart([&](QWidget* window, BarChart* /*chart*/) {
        program.click("PQGPrint");
        QCOMPARE(program.prompts.asked, (QList<int>{1, 2}));
        for (QWidget* over : program.prompts.over)
          if (over->objectName() == "PQGraph") QCOMPARE(over, window);
        // 9580 x 6765 twips, restored after the print.
        QCOMPARE(window->width(), 9580 * window->logicalDpiX() / 1440);
        QCOMPARE(window->height(), 6765 * window->logicalDpiY() / 1440);
      });
      // The image: its kind of colours, and its width of 9530 twips, 6.618 inches.
      const QString images = program.printing.run("pdfimages", {"-list", program.printing.path});
      const QStringList row = images.split('\n').value(2).simplified().split(' ');
      QCOMPARE(isGray(program.printing), !color);
      QCOMPARE(row.value(8), "image");  // compressed without loss
      const double inches = row.value(3).toDouble() / row.value(12).toDouble();
      QVERIFY2(std::abs(inches - 9530.0 / 1440.0) < 0.05, qPrintable(images));
    }
  }

  // Letters of a font, once each, and no picture of letters.
  void everyLabelIsPrintedAsText() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTCalculate");
    program.prompts.answers = {true, true};
    inChart([&](QWidget* /*window*/, BarChart* /*chart*/) { program.click("PQGPrint"); });
    const QString text =
        program.printing.run("pdftotext", {"-raw", program.printing.path, "-"}).simplified();
    for (const char* label :
         {"20,000", "40,000", "60,000", "80,000", "100,000", "Amount ($)", "Comparison",
          "Conventional", "At the chosen frequency", "Total interest paid"})
      QVERIFY2(text.count(label) == 1, qPrintable(QString("%1 in %2").arg(label, text)));
    const QString fonts = program.printing.run("pdffonts", {program.printing.path});
    QVERIFY2(fonts.contains("TrueType") && !fonts.contains("Type 3"), qPrintable(fonts));
  }

  void noAnswerPrintsNothing() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    inChart([&](QWidget* /*window*/, BarChart* /*chart*/) { program.click("PQGPrint"); });
    QCOMPARE(program.prompts.asked, QList<int>{1});
    QVERIFY(!QFile::exists(program.printing.path));
  }

  void followsADarkDesktop() {
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    inChart([](QWidget* window, BarChart* chart) {
      QPalette dark;
      dark.setColor(QPalette::Base, Qt::black);
      dark.setColor(QPalette::Text, Qt::white);
      window->setPalette(dark);
      QCOMPARE(chart->xAxis->labelColor(), QColor(Qt::white));
      QCOMPARE(chart->grab().toImage().pixelColor(5, 5), QColor(Qt::black));
    });
  }

  void anUnknownKindIsEmpty() {
    Global global;
    FakePrompts prompts;
    PdfTarget printing;
    global.chart.ChartKind = ChartKind{2};
    global.chart.ChartCount = 3;
    PQGraph window(global, prompts, printing, nullptr);
    QCOMPARE(window.findChild<BarChart*>("MSChart1")->plottableCount(), 0);
    QVERIFY(prompts.told.isEmpty());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ChartWindowTest)
#include "chart_window_test.moc"

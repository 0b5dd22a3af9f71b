// SPDX-License-Identifier: GPL-3.0-or-later
// A chart that is handed over, its stacked bars, and what is saved and copied of it.
#include <QAccessible>
#include <QClipboard>
#include <QTimer>

#include "app/readable_palette.h"
#include "charts/bar_chart_widget.h"
#include "charts/bar_colors.h"
#include "charts/chart_accessible.h"
#include "charts/chart_files.h"
#include "charts/chart_window.h"
#include "charts/hatched_bars.h"
#include "ui_testing.h"

namespace mirelund::testing {

namespace {

ChartView stackOf() {
  ChartView view;
  view.caption = "Gains by year";
  view.title = "Gains of the years";
  view.categoryTitle = "Year";
  view.categories = {"2001", "2002"};
  view.valueTitle = "Amount ($)";
  view.series = {{"Income", {10, 0}, {"$10.00", "$.00"}},
                 {"Realised gain", {-4, 3.5}, {"$-4.00", "$3.50"}},
                 {"Fees", {-2, -1}, {"$-2.00", "$-1.00"}},
                 {"Other", {5, 1}, {"$5.00", "$1.00"}}};
  view.stacked = true;
  return view;
}

struct Shown {
  FakePrompts prompts;
  PdfTarget printing;
  PQGraph window;
  BarChart* chart;

  explicit Shown(const ChartView& view = stackOf())
      : window(view, prompts, printing, nullptr), chart(window.findChild<BarChart*>("MSChart1")) {
    window.setVisible(true);
    if (!QTest::qWaitForWindowExposed(&window)) qFatal("not shown");
    chart->replot();
  }
  void click(const char* name) {
    QTest::mouseClick(window.findChild<QPushButton*>(name), Qt::LeftButton);
  }
  QPoint placeOf(double key, double value) const {
    return {qRound(chart->xAxis->coordToPixel(key)), qRound(chart->yAxis->coordToPixel(value))};
  }
};

QByteArray read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

class ChartSavingTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installChartAccessibility(); }

  void aViewIsShownAsItIs() {
    Shown shown;
    QCOMPARE(shown.window.windowTitle(), "Gains by year");
    QVERIFY(shown.window.isModal());
    QVERIFY(shown.prompts.told.isEmpty());
    for (const char* name : {"CVGainDollars", "CVGainPercent", "CVTotValue"})
      QVERIFY(!shown.window.findChild<QPushButton*>(name)->isVisible());
    QCOMPARE(shown.chart->plottableCount(), 4);
    QCOMPARE(shown.chart->legend->itemCount(), 4);
  }

  void stackedBarsSayTheirValues() {
    Shown shown;
    const auto at = [&](double key, double value) {
      return shown.chart->textAt(shown.placeOf(key, value));
    };
    QCOMPARE(at(1, 5), "Year 2001, Income: $10.00");
    QCOMPARE(at(1, 12), "Year 2001, Other: $5.00");
    QCOMPARE(at(1, -2), "Year 2001, Realised gain: $-4.00");
    QCOMPARE(at(1, -5), "Year 2001, Fees: $-2.00");
    // What has no height gives way to its neighbours; above and below, the nearest.
    QCOMPARE(at(2, 0.5), "Year 2002, Realised gain: $3.50");
    QCOMPARE(at(2, 12), "Year 2002, Other: $1.00");
    QCOMPARE(at(2, -5), "Year 2002, Fees: $-1.00");
    QCOMPARE(at(1.5, 1), "");
    QStringList said;
    for (int bar = 0; bar < shown.chart->barCount(); ++bar) said << shown.chart->textOfBar(bar);
    QCOMPARE(said.size(), 8);
    QCOMPARE(said[4], "Year 2002, Income: $.00");
    QStringList described = shown.chart->accessibleDescription().split("; ");
    described.sort();
    said.sort();
    QCOMPARE(described, said);
  }

  void keysWalkTheStack() {
    Shown shown;
    shown.chart->setFocus();
    QTest::keyClick(shown.chart, Qt::Key_Home);
    QCOMPARE(shown.chart->chosenBar(), 0);
    for (int bar = 1; bar < 8; ++bar) {
      QTest::keyClick(shown.chart, Qt::Key_Right);
      QCOMPARE(shown.chart->chosenBar(), bar);
    }
    const QAccessibleInterface* said = QAccessible::queryAccessibleInterface(shown.chart);
    QCOMPARE(said->childCount(), 8);
    QCOMPARE(said->child(7)->text(QAccessible::Name), "Year 2002, Other: $1.00");
  }

  // Each bar is drawn where rectOfBar says, on the one below it.
  void barsStandOnEachOther() {
    Shown shown;
    const auto rect = [&](int bar) { return shown.chart->rectOfBar(bar); };
    QVERIFY(std::abs(rect(3).bottom() - rect(0).top()) <= 2);
    QVERIFY(std::abs(rect(2).top() - rect(1).bottom()) <= 2);
    QVERIFY(std::abs(rect(1).top() - rect(0).bottom()) <= 2);
    for (int bar = 1; bar < 4; ++bar) {
      QCOMPARE(rect(bar).left(), rect(0).left());
      QCOMPARE(rect(bar).width(), rect(0).width());
    }
    QVERIFY(shown.chart->axisRect()->rect().contains(rect(3)));
    QVERIFY(shown.chart->axisRect()->rect().contains(rect(2)));
  }

  void fillsTellTheSeriesApartWithoutColour_data() {
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("dark") << QColor("#232629") << QColor("#fcfcfc");
    QTest::newRow("black") << QColor(Qt::black) << QColor(Qt::white);
  }

  void fillsTellTheSeriesApartWithoutColour() {
    QFETCH(QColor, base);
    QFETCH(QColor, text);
    Shown shown;
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    shown.window.setPalette(palette);
    shown.chart->replot();
    const QImage image = shown.chart->grab().toImage();
    if (const QString folder = qEnvironmentVariable("MIRELUND_PICTURES"); !folder.isEmpty())
      QVERIFY(image.save(folder + "/stacked-" + QTest::currentDataTag() + ".png"));
    // The share of a bar's inside that stands out; the edges of lines are smoothed.
    const auto inkOf = [&](int bar) {
      const QRect inside = shown.chart->rectOfBar(bar).adjusted(3, 3, -3, -3);
      int ink = 0;
      for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
          if (contrastOf(image.pixelColor(x, y), base) >= 2.0) ++ink;
      return static_cast<double>(ink) / (inside.width() * inside.height());
    };
    QVERIFY(contrastOf(image.pixelColor(shown.chart->rectOfBar(0).center()), base) >=
            kLeastContrast);
    QCOMPARE(inkOf(0), 1.0);                               // solid
    QVERIFY(inkOf(1) > 0.1 && inkOf(1) < 0.6);             // rising
    QVERIFY(inkOf(2) > 0.1 && inkOf(2) < 0.6);             // falling
    QVERIFY2(inkOf(3) > 1.3 * inkOf(1), "crossed lines");  // both
    // The lines of the second rise, those of the third fall: followed by their slope.
    const auto runs = [&](int bar, int slope) {
      const QRect inside = shown.chart->rectOfBar(bar).adjusted(3, 3, -3, -3);
      const QPoint middle = inside.center();
      int most = 0;
      for (int x = middle.x() - 8; x <= middle.x() + 8; ++x) {
        int run = 0;
        for (int i = -3; i <= 3; ++i)
          if (contrastOf(image.pixelColor(x + i, middle.y() - slope * i), base) >= 1.5) ++run;
        most = std::max(most, run);
      }
      return most;
    };
    QCOMPARE(runs(1, 1), 7);
    QVERIFY(runs(1, -1) < 7);
    QCOMPARE(runs(2, -1), 7);
    QVERIFY(runs(2, 1) < 7);
  }

  void theFillsOfFourSeriesDiffer() {
    QSet<int> fills;
    for (std::size_t series = 0; series < 4; ++series) fills << static_cast<int>(barFill(series));
    QCOMPARE(fills.size(), 4);
    QCOMPARE(barFill(4), barFill(0));
  }

  void savesAnImageOfTwiceThePixels() {
    const QTemporaryDir folder;
    Shown shown;
    shown.prompts.paths.push_back(folder.filePath("chart.png"));
    shown.click("PQGSave");
    QCOMPARE(shown.prompts.initialPaths, QStringList{"Gains by year.png"});
    const QImage image(folder.filePath("chart.png"), "PNG");
    QCOMPARE(image.size(), shown.chart->size() * 2);
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::white));
    QVERIFY(!image.allGray());
    QVERIFY(shown.prompts.warned.isEmpty());
  }

  void savesADrawingOfLinesAndLetters() {
    const QTemporaryDir folder;
    Shown shown;
    shown.prompts.paths.push_back(folder.filePath("chart.SVG"));
    shown.click("PQGSave");
    const QString drawing = QString::fromUtf8(read(folder.filePath("chart.SVG")));
    QVERIFY(drawing.startsWith("<?xml"));
    QVERIFY(!drawing.contains("<image"));
    for (const char* label : {"Gains of the years", "Income", "Realised gain", "2002"})
      QVERIFY2(drawing.contains(QString(label) + "</text>") || drawing.contains(label), label);
    QVERIFY(drawing.count("<text") > 8);
    // The hatching is lines of its own.
    QVERIFY(drawing.count("<polyline") + drawing.count("<path") > 20);
  }

  void savesAPageOfLinesAndLetters() {
    const QTemporaryDir folder;
    Shown shown;
    const QString path = folder.filePath("chart.pdf");
    shown.prompts.paths.push_back(path);
    shown.click("PQGSave");
    QVERIFY(read(path).startsWith("%PDF"));
    const QString text = shown.printing.run("pdftotext", {"-raw", path, "-"}).simplified();
    for (const char* label : {"Gains of the years", "Income", "Realised gain", "Amount ($)"})
      QVERIFY2(text.contains(label), qPrintable(text));
    QCOMPARE(shown.printing.run("pdfimages", {"-list", path}).count('\n'), 2);  // the heading
    const QString info = shown.printing.run("pdfinfo", {path});
    QVERIFY2(info.contains(QRegularExpression("Pages: +1\n")), qPrintable(info));
    const auto size = QRegularExpression("Page size: +([\\d.]+) x ([\\d.]+)").match(info);
    const double scale = 72.0 / shown.chart->logicalDpiX();
    QVERIFY(std::abs(size.captured(1).toDouble() - shown.chart->width() * scale) < 1.5);
    QVERIFY(std::abs(size.captured(2).toDouble() - shown.chart->height() * scale) < 1.5);
  }

  void aChartOnADarkDesktopIsSavedOnWhiteAndStaysDark() {
    const QTemporaryDir folder;
    Shown shown;
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    shown.window.setPalette(dark);
    shown.prompts.paths.push_back(folder.filePath("chart.png"));
    shown.click("PQGSave");
    QCOMPARE(QImage(folder.filePath("chart.png")).pixelColor(3, 3), QColor(Qt::white));
    QCOMPARE(shown.chart->grab().toImage().pixelColor(5, 5), QColor(Qt::black));
  }

  void whatCannotBeSavedIsTold() {
    Shown shown;
    shown.click("PQGSave");
    QVERIFY(shown.prompts.warned.isEmpty());
    for (const char* path :
         {"/no/such/folder/a.png", "/no/such/folder/a.svg", "/no/such/folder/a.pdf"}) {
      shown.prompts.paths.push_back(path);
      shown.click("PQGSave");
      QCOMPARE(shown.prompts.warned.back(),
               QString("The chart could not be written to \"%1\". Check the name and the folder.")
                   .arg(path));
      QCOMPARE(shown.prompts.over.back(), &shown.window);
    }
  }

  void copiesAnImageAndTheValues() {
    Shown shown;
    shown.click("PQGCopy");
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    QVERIFY(copied->hasImage());
    QCOMPARE(QGuiApplication::clipboard()->image().size(), shown.chart->size() * 2);
    QCOMPARE(
        copied->text(),
        "Year\tIncome\tRealised gain\tFees\tOther\n2001\t10\t-4\t-2\t5\n2002\t0\t3.5\t-1\t1\n");
  }

  void everyButtonHasAKeyOfItsOwn() {
    Shown shown;
    QSet<QString> keys;
    const auto buttons = shown.window.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
      keys << QKeySequence::mnemonic(button->text()).toString();
    QCOMPARE(buttons.size(), 7);
    QCOMPARE(keys.size(), 7);
    QCOMPARE(shown.window.findChild<QPushButton*>("PQGSave")->text(), "&Save as...");
    QCOMPARE(shown.window.findChild<QPushButton*>("PQGCopy")->text(), "C&opy");
  }

  void printedItLooksAsEver() {
    Shown shown;
    shown.prompts.answers = {true, true};
    shown.click("PQGPrint");
    QVERIFY(shown.window.findChild<QPushButton*>("PQGSave")->isVisible());
    QVERIFY(shown.window.findChild<QPushButton*>("PQGCopy")->isVisible());
    const QString text =
        shown.printing.run("pdftotext", {"-raw", shown.printing.path, "-"}).simplified();
    QVERIFY2(text.contains("Realised gain"), qPrintable(text));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ChartSavingTest)
#include "chart_saving_test.moc"

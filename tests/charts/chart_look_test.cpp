// SPDX-License-Identifier: GPL-3.0-or-later
// How charts look: on light and dark grounds, with large letters, with many names.
#include <QSet>
#include <QtMath>

#include "app/readable_palette.h"
#include "charts/bar_chart_widget.h"
#include "charts/bar_colors.h"
#include "charts/chart_kind.h"
#include "charts/chart_window.h"
#include "ui_testing.h"

namespace mirelund::testing {

namespace {

QPalette paletteOf(const QColor& base, const QColor& text) {
  QPalette palette;
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::Window, base);
  palette.setColor(QPalette::WindowText, text);
  return palette;
}

// A chart window over figures of its own.
struct Shown {
  Global global;
  FakePrompts prompts;
  PdfTarget printing;
  std::unique_ptr<PQGraph> window;
  BarChart* chart = nullptr;

  void show(const QPalette& palette = QPalette()) {
    window = std::make_unique<PQGraph>(global, prompts, printing, nullptr);
    window->setPalette(palette);
    window->setVisible(true);
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    chart = window->findChild<BarChart*>("MSChart1");
    chart->replot();
  }
  void funds(const QStringList& names) {
    global.chart.ChartKind = ChartKind::Manager;
    global.chart.ChartCount = static_cast<std::int16_t>(names.size());
    global.reports.ComparisonTotals.redimension(32, 7);
    for (qsizetype i = 0; i < names.size(); ++i) {
      global.chart.ChartNames.push_back(names[i].toStdString());
      global.reports.ComparisonTotals.at(static_cast<std::size_t>(i) + 1, 4) =
          Currency::whole(i % 5 * 1000 - 1000);
    }
  }
  void mortgages(int count) {
    global.chart.ChartKind = ChartKind::Mortgage;
    global.chart.ChartCount = static_cast<std::int16_t>(count);
    for (std::size_t i = 1; std::cmp_less_equal(i, count); ++i) {
      global.reports.ComparisonTotals.at(i, 1) = Currency::whole(102'562);
      global.reports.ComparisonTotals.at(i, 2) = Currency::whole(81'557);
    }
  }
  void years(int count) {
    global.chart.ChartKind = ChartKind::PensionGrowth;
    global.chart.ChartTitle = " Pension growth over ";
    global.chart.ChartCount = static_cast<std::int16_t>(count);
    for (std::size_t i = 1; std::cmp_less_equal(i, count); ++i)
      global.reports.ComparisonTable.at(i, 4) = Currency::whole(static_cast<int>(i * i) * 1000);
  }
  QCPTextElement* text(const char* name) const { return chart->findChild<QCPTextElement*>(name); }
  QStringList labels() const {
    return qSharedPointerCast<QCPAxisTickerText>(chart->xAxis->ticker())->ticks().values();
  }
};

QStringList namesOf(int count, const char* beginning, const char* end) {
  QStringList names;
  for (int i = 1; i <= count; ++i) names << beginning + QString::number(i) + end;
  return names;
}

const QStringList kAlike = namesOf(18, "Northern International Growth Fund, class ", "");
const QStringList kAlikeAtBothEnds =
    namesOf(18, "Northern International Growth Fund, class ", " with income reinvested");

}  // namespace

class ChartLookTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { usual_ = QApplication::font(); }
  void cleanup() { QApplication::setFont(usual_); }

  void contrastIsAsDefined() {
    QCOMPARE(qRound(contrastOf(Qt::black, Qt::white) * 100), 2100);
    QCOMPARE(qRound(contrastOf(Qt::white, Qt::white) * 100), 100);
    // As published for the lightest grey that small text may have on white.
    QCOMPARE(qRound(contrastOf(QColor("#767676"), Qt::white) * 100), 454);
  }

  void barsStandOutOnEveryGround() {
    for (int grey = 0; grey < 256; ++grey)
      for (const QColor& ground : {QColor(grey, grey, grey), QColor(grey, 255 - grey, 128)})
        for (const std::size_t series : {0U, 1U})
          QVERIFY2(contrastOf(barColor(series, ground), ground) >= kLeastContrast,
                   qPrintable(ground.name()));
    for (const char* ground : {"#ffffff", "#fcfcfc", "#efefef", "#000000", "#232629", "#353535"})
      QVERIFY2(contrastOf(barColor(0, ground), barColor(1, ground)) > 2.5, ground);
    for (const std::size_t series : {0U, 1U})
      QVERIFY(contrastOf(greyBarColor(series), Qt::white) >= kLeastContrast);
    QVERIFY(contrastOf(greyBarColor(0), greyBarColor(1)) >= kLeastContrast);
  }

  void barsAreDrawnSo_data() {
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor("#ffffff") << QColor("#000000");
    QTest::newRow("off-white") << QColor("#eff0f1") << QColor("#232629");
    QTest::newRow("dark") << QColor("#232629") << QColor("#fcfcfc");
    QTest::newRow("black") << QColor("#000000") << QColor("#ffffff");
  }

  void barsAreDrawnSo() {
    QFETCH(QColor, base);
    QFETCH(QColor, text);
    Shown shown;
    shown.mortgages(1);
    shown.show(paletteOf(base, text));
    const QImage image = shown.chart->grab().toImage();
    const auto at = [&](double x, double y) {
      return image.pixelColor(qRound(shown.chart->xAxis->coordToPixel(x)),
                              qRound(shown.chart->yAxis->coordToPixel(y)));
    };
    QCOMPARE(at(0.5, 50'500), base);
    QVERIFY(contrastOf(at(0.8, 50'500), base) >= 3.0);
    QVERIFY(contrastOf(at(1.2, 50'500), base) >= 3.0);
    for (const int i : {0, 1}) {
      const QPoint swatch = shown.chart->legend->item(i)->rect().topLeft() + QPoint(10, 10);
      QCOMPARE(image.pixelColor(swatch), at(i == 0 ? 0.8 : 1.2, 50'500));
    }
  }

  void theFrameOfTheLegendIsWhole_data() {
    QTest::addColumn<int>("points");
    for (const int points : {9, 18}) QTest::addRow("%d pt", points) << points;
  }

  void theFrameOfTheLegendIsWhole() {
    QFETCH(int, points);
    QFont font = usual_;
    font.setPointSize(points);
    QApplication::setFont(font);
    Shown shown;
    shown.mortgages(2);
    shown.show();
    const QImage image = shown.chart->grab().toImage();
    const QRect frame = shown.chart->legend->outerRect();
    QVERIFY(image.rect().adjusted(1, 1, -1, -1).contains(frame));
    // Each side, and what lies outside of it.
    const QColor line = shown.chart->legend->borderPen().color();
    const auto count = [&](QPoint from, QPoint step, int length) {
      int found = 0;
      for (int i = 0; i < length; ++i)
        if (image.pixelColor(from + step * i) == line) ++found;
      return found;
    };
    // The pen's pixel may be either of two.
    const auto whole = [&](QPoint from, QPoint step, QPoint across, int length) {
      for (const int at : {-1, 0, 1})
        if (count(from + across * at, step, length) >= length - 2) return true;
      return false;
    };
    const QPoint right(1, 0);
    const QPoint down(0, 1);
    QVERIFY(whole(frame.topLeft(), right, down, frame.width()));
    QVERIFY(whole(frame.bottomLeft(), right, down, frame.width()));
    QVERIFY(whole(frame.topLeft(), down, right, frame.height()));
    QVERIFY(whole(frame.topRight(), down, right, frame.height()));
  }

  void whatIsEmptyTakesNoRoom() {
    constexpr int kEdge = 20;
    Shown mortgage;
    mortgage.mortgages(1);
    mortgage.show();
    QVERIFY(mortgage.chart->axisRect()->top() < kEdge);
    QVERIFY(mortgage.text("ChartSecondCaption")->visible());
    QVERIFY(mortgage.chart->height() - mortgage.text("ChartSecondCaption")->outerRect().bottom() <
            kEdge);

    Shown years;
    years.years(5);
    years.show();
    QVERIFY(!years.text("ChartSecondCaption")->visible());
    QVERIFY(years.text("ChartTitle")->visible());
    QVERIFY(years.chart->height() - years.chart->legend->outerRect().bottom() < kEdge);
    QVERIFY(years.text("ChartTitle")->outerRect().top() < kEdge);
    QVERIFY(years.chart->axisRect()->top() - years.text("ChartTitle")->outerRect().bottom() <
            kEdge + 5);
  }

  void theLettersFollowTheDesktop() {
    Shown shown;
    shown.mortgages(2);
    shown.show();
    QFont font = usual_;
    for (const int points : {18, 9}) {
      font.setPointSize(points);
      QApplication::setFont(font);
      QTRY_COMPARE(shown.chart->xAxis->tickLabelFont().pointSize(), points);
      QCOMPARE(shown.chart->yAxis->tickLabelFont().pointSize(), points);
      QCOMPARE(shown.chart->xAxis->labelFont().pointSize(), points);
      QCOMPARE(shown.chart->legend->item(1)->font().pointSize(), points);
      QCOMPARE(shown.text("ChartTitle")->font().pointSize(), points);
      QCOMPARE(shown.text("ChartSecondCaption")->font().pointSize(), points);
    }
  }

  void labelsNeverTouch_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("narrow");
    for (const int points : {9, 12, 18})
      for (const char* kind : {"40 years", "10 mortgages", "short names", "names", "names alike"})
        for (const bool narrow : {false, true})
          QTest::addRow("%d pt, %s%s", points, kind, narrow ? ", as narrow as can be" : "")
              << points << kind << narrow;
  }

  void labelsNeverTouch() {
    QFETCH(int, points);
    QFETCH(QString, kind);
    QFETCH(bool, narrow);
    QFont font = usual_;
    font.setPointSize(points);
    QApplication::setFont(font);
    Shown shown;
    if (kind == "40 years") shown.years(40);
    if (kind == "10 mortgages") shown.mortgages(10);
    if (kind == "short names") shown.funds(namesOf(18, "Fund ", ""));
    if (kind == "names") shown.funds(namesOf(6, "Brindlemoor Growth Fund ", ""));
    if (kind == "names alike") shown.funds(kAlikeAtBothEnds);
    shown.show();
    if (narrow) {
      shown.window->resize(1, 1);
      QTest::qWait(20);
      shown.chart->replot();
    }
    verifyApart(shown.chart->yAxis, true);
    verifyApart(shown.chart->xAxis, false);
    // Nothing of the texts is outside.
    const QRect all = shown.chart->rect();
    QVERIFY(all.contains(shown.chart->legend->outerRect()));
    if (shown.text("ChartTitle")->visible())
      QVERIFY(all.contains(shown.text("ChartTitle")->outerRect()));
    QVERIFY(shown.chart->axisRect()->height() > 2 * shown.chart->fontMetrics().height());
  }

  void namesAreShortenedInTheMiddleOnlyWhenTheyMustBe() {
    const QStringList few = namesOf(6, "Brindlemoor Growth Fund ", "");
    Shown room;
    room.funds(few);
    room.show();
    QCOMPARE(room.labels(), few);
    for (const QStringList& names : {kAlike, kAlikeAtBothEnds}) {
      Shown shown;
      shown.funds(names);
      shown.show();
      const QStringList labels = shown.labels();
      QCOMPARE(labels.size(), 18);
      QCOMPARE(QSet<QString>(labels.begin(), labels.end()).size(), 18);
      for (qsizetype i = 0; i < 18; ++i) {
        const QStringList parts = labels[i].split(QChar(0x2026));
        QCOMPARE(parts.size(), 2);
        QVERIFY2(names[i].startsWith(parts[0]) && parts[0].size() > 3, qPrintable(labels[i]));
        QVERIFY2(names[i].endsWith(parts[1]) && parts[1].size() > 3, qPrintable(labels[i]));
      }
      // With more room, whole.
      shown.window->resize(1600, 1100);
      QTRY_COMPARE(shown.labels(), names);
    }
  }

 private:
  // The labels of an axis, turned as they are, keep a line's height or their widths apart.
  static void verifyApart(const QCPAxis* axis, bool upright) {
    const QFontMetricsF metrics(axis->tickLabelFont());
    const QVector<double> places = axis->tickVector();
    const QVector<QString> labels = axis->tickVectorLabels();
    const double lean = std::abs(qDegreesToRadians(axis->tickLabelRotation()));
    QVERIFY(labels.size() > 1 || upright);
    for (qsizetype i = 0; i < labels.size(); ++i) {
      const double at = axis->coordToPixel(places[i]);
      const double width = metrics.horizontalAdvance(labels[i]);
      if (!upright) QVERIFY2(at - width * (lean > 0 ? std::cos(lean) : 0.5) >= 0.0, "cut off");
      if (i == 0) continue;
      const double apart = std::abs(at - axis->coordToPixel(places[i - 1]));
      const double before = metrics.horizontalAdvance(labels[i - 1]);
      const double needed = upright || lean > 0 ? metrics.height() - 1.0 : (width + before) / 2.0;
      const double had = lean > 0 ? apart * std::sin(lean) : apart;
      QVERIFY2(had >= needed,
               qPrintable(QString("%1: %2 of %3").arg(labels[i]).arg(had).arg(needed)));
    }
  }

  QFont usual_;
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ChartLookTest)
#include "chart_look_test.moc"

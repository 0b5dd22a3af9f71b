// SPDX-License-Identifier: GPL-3.0-or-later
// What the mouse is told about a bar. Runs under a window manager, with the
// pointer of the display.
#include <QToolTip>

#include "charts/bar_chart_widget.h"
#include "charts/chart_kind.h"
#include "charts/chart_window.h"
#include "ui_testing.h"

namespace mirelund::testing {

class ChartTooltipTest : public QObject {
  Q_OBJECT

  static constexpr int kPatienceMs = 10'000;

  // Moves the display's pointer to a place of the chart, in two steps: a pointer
  // that is there already does not move.
  static void pointAt(const BarChart* chart, QPoint place) {
    QCursor::setPos(chart->mapToGlobal(place + QPoint(1, 1)));
    QTest::qWait(20);
    QCursor::setPos(chart->mapToGlobal(place));
  }
  static QPoint placeOf(const BarChart* chart, double key, double value) {
    return {qRound(chart->xAxis->coordToPixel(key)), qRound(chart->yAxis->coordToPixel(value))};
  }
  static void verifyTold(const BarChart* chart, QPoint place, const QString& text) {
    pointAt(chart, place);
    QTRY_COMPARE_WITH_TIMEOUT(QToolTip::isVisible(), !text.isEmpty(), kPatienceMs);
    if (text.isEmpty()) return;
    QTRY_VERIFY_WITH_TIMEOUT(QToolTip::text().contains(text), kPatienceMs);
  }

 private slots:
  void theBarsOfFundsSayTheirNamesAndValues() {
    Global global;
    FakePrompts prompts;
    PdfTarget printing;
    global.chart.ChartKind = ChartKind::Manager;
    global.chart.ChartCount = 2;
    global.chart.ChartNames = {"Alder", "<b>Birch</b> & Co"};
    global.reports.ComparisonTotals.redimension(32, 7);
    global.reports.ComparisonTotals.at(1, 4) = ToCurrency(962.5);
    global.reports.ComparisonTotals.at(2, 4) = ToCurrency(-242.75);
    PQGraph window(global, prompts, printing, nullptr);
    window.setVisible(true);
    QVERIFY(ProgramFixture::isActivated(&window));
    auto* chart = window.findChild<BarChart*>("MSChart1");

    verifyTold(chart, placeOf(chart, 1, 400), "Alder: $962.50");
    // A name is no markup.
    verifyTold(chart, placeOf(chart, 2, -100), "&lt;b&gt;Birch&lt;/b&gt; &amp; Co: $-242.75");
    // Between the bars; at the axis; above the chart; over a button.
    verifyTold(chart, placeOf(chart, 1.5, 400), "");
    verifyTold(chart, placeOf(chart, 1, 400), "Alder: $962.50");
    verifyTold(chart, {chart->axisRect()->left() - 5, placeOf(chart, 1, 400).y()}, "");
    verifyTold(chart, placeOf(chart, 1, 400), "Alder: $962.50");
    verifyTold(chart, {placeOf(chart, 1, 0).x(), chart->axisRect()->top() - 5}, "");
    verifyTold(chart, placeOf(chart, 1, 400), "Alder: $962.50");
    verifyTold(chart, {chart->width() / 2, chart->height() + 20}, "");
  }

  void everyBarOfAGroupSaysItsOwn() {
    Global global;
    FakePrompts prompts;
    PdfTarget printing;
    global.chart.ChartKind = ChartKind::Mortgage;
    global.chart.ChartCount = 1;
    global.reports.ComparisonTotals.at(1, 1) = ToCurrency(102562.15);
    global.reports.ComparisonTotals.at(1, 2) = ToCurrency(81557.27);
    PQGraph window(global, prompts, printing, nullptr);
    window.setVisible(true);
    QVERIFY(ProgramFixture::isActivated(&window));
    auto* chart = window.findChild<BarChart*>("MSChart1");
    verifyTold(chart, placeOf(chart, 0.8, 1000), "Comparison 1, Conventional: $102,562.15");
    verifyTold(chart, placeOf(chart, 1.2, 1000),
               "Comparison 1, At the chosen frequency: $81,557.27");
    verifyTold(chart, placeOf(chart, 0.55, 1000), "");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ChartTooltipTest)
#include "chart_tooltip_test.moc"

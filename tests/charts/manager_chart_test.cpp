// SPDX-License-Identifier: GPL-3.0-or-later
// The chart of the investment manager and its three buttons, from typed prices on.
#include <QTimer>

#include "app/pressing.h"
#include "charts/bar_chart_widget.h"
#include "charts/chart_window.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

namespace {

// 100 shares of Alder, paid for with 1,037.50, at 20; 50 of Birch, 992.75, at 15.
struct View {
  const char* button;
  const char* chord;
  const char* title;
  const char* legend;
  const char* axis;
  std::array<double, 2> values;
  std::array<const char*, 2> texts;
};

constexpr View kViews[] = {
    {"CVGainDollars",
     "Alt+D",
     "Gain or Loss in dollars",
     "Gain or loss",
     "Amount ($)",
     {962.5, -242.75},
     {"Alder: $962.50", "Birch: $-242.75"}},
    {"CVGainPercent",
     "Alt+C",
     "Gain or Loss in percent",
     "Gain or loss",
     "Percent",
     {92.7711, -24.4523},
     {"Alder: 92.7711%", "Birch: -24.4523%"}},
    {"CVTotValue",
     "Alt+V",
     "Current value of each company/fund",
     "Current value",
     "Amount ($)",
     {2000, 750},
     {"Alder: $2,000.00", "Birch: $750.00"}},
};

const QColor kBar(0, 70, 125);

}  // namespace

class ManagerChartTest : public QObject {
  Q_OBJECT

  // Looks at the chart window that `open` shows, which stays until `look` is done.
  template <typename Open, typename Look>
  void inChart(Open open, Look look) {
    bool looked = false;
    QTimer timer;
    timer.callOnTimeout([&] {
      auto* window = qobject_cast<PQGraph*>(QApplication::activeModalWidget());
      if (window == nullptr || looked) return;
      looked = true;
      if (ProgramFixture::isActivated(window))
        look(window, window->findChild<BarChart*>("MSChart1"));
      window->close();
    });
    timer.start(10);
    open();
    QVERIFY(looked);
  }

  static void verifyShown(const QWidget* window, BarChart* chart, const View& view) {
    QTRY_COMPARE(chart->findChild<QCPTextElement*>("ChartTitle")->text(), view.title);
    QCOMPARE(window->windowTitle(), "Investment manager charts");
    QCOMPARE(chart->plottableCount(), 1);
    auto* bars = qobject_cast<QCPBars*>(chart->plottable(0));
    QCOMPARE(bars->name(), view.legend);
    QCOMPARE(chart->yAxis->label(), view.axis);
    QCOMPARE(bars->dataCount(), 2);
    for (int i = 0; i < 2; ++i) {
      const auto fund = static_cast<std::size_t>(i);
      const double value = view.values[fund];
      QCOMPARE(bars->data()->at(i)->mainKey(), i + 1.0);
      QCOMPARE(bars->data()->at(i)->mainValue(), value);
      QVERIFY(chart->accessibleDescription().contains(view.texts[fund]));
      // Painted from zero to its value and no farther.
      const auto at = [&](double height) {
        const QPoint place(qRound(chart->xAxis->coordToPixel(i + 1.0)),
                           qRound(chart->yAxis->coordToPixel(height)));
        return chart->grab().toImage().pixelColor(place * chart->devicePixelRatio());
      };
      QTRY_COMPARE(at(value / 2), kBar);
      QTRY_COMPARE(at(value * 0.95), kBar);
      QTRY_VERIFY(at(value * 1.03) != kBar);
      QTRY_VERIFY(at(-value * 0.1) != kBar);
    }
  }

  static void calculate(ManagerFixture& program) {
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "20");
    program.type("CVInPrice_2", "15");
    program.click("CVCalc");
    QCOMPARE(program.takeTold(), QList<int>{});
  }

 private slots:
  void everyButtonShowsItsView_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"Mouse", "Space", "Return", "Chord"}) QTest::newRow(way) << way;
  }

  void everyButtonShowsItsView() {
    QFETCH(QString, way);
    ManagerFixture program;
    calculate(program);
    inChart([&] { program.click("CVGraph"); },
            [&](QWidget* window, BarChart* chart) {
              verifyShown(window, chart, kViews[0]);
              // Each after each of the others, and after itself.
              for (const int next : {1, 2, 0, 0, 2, 2, 1, 1, 0}) {
                const View& view = kViews[next];
                auto* button = window->findChild<QPushButton*>(view.button);
                QVERIFY(button->isVisible());
                press(button, way == "Chord" ? QString(view.chord) : way);
                verifyShown(window, chart, view);
                if (QTest::currentTestFailed()) return;
              }
            });
    QCOMPARE(program.global.chart.ChartCount, 2);
    QCOMPARE(program.takeTold(), QList<int>{});
  }

  void everyOpeningStartsWithTheDollars() {
    ManagerFixture program;
    calculate(program);
    for (int opening = 0; opening < 2; ++opening) {
      inChart([&] { program.click("CVGraph"); },
              [&](QWidget* window, BarChart* chart) {
                verifyShown(window, chart, kViews[0]);
                QTest::mouseClick(window->findChild<QPushButton*>("CVTotValue"), Qt::LeftButton);
                verifyShown(window, chart, kViews[2]);
              });
    }
  }

  // The window stays open over the manager: neither changes for the other.
  void theExitButtonLeadsBackToTheManager() {
    ManagerFixture program;
    calculate(program);
    const QString table = program.text("CVResults");
    inChart([&] { program.click("CVGraph"); },
            [&](QWidget* window, BarChart* /*chart*/) {
              QVERIFY(ProgramFixture::isActivated(window));
              QCOMPARE(QApplication::focusWidget()->objectName(), "PQGExit");
              QTest::keyClick(window, Qt::Key_X, Qt::AltModifier);
              QTRY_VERIFY(!window->isVisible());
            });
    QVERIFY(program.manager()->isVisible());
    QCOMPARE(program.text("CVResults"), table);
  }

  void elsewhereTheButtonsAreHiddenAndDoNothing_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("calculate");
    QTest::newRow("a comparison") << 4 << "CGCalculate";
    QTest::newRow("a series of years") << 2 << "IGCalculate";
    QTest::newRow("two series") << 1 << "MTCalculate";
  }

  void elsewhereTheButtonsAreHiddenAndDoNothing() {
    QFETCH(int, page);
    QFETCH(QString, calculate);
    ProgramFixture program;
    program.openCalculations(page);
    program.click(calculate.toLatin1());
    inChart([&] { program.click("AllGraphs"); },
            [&](QWidget* window, BarChart* chart) {
              const auto shown = [&] {
                QStringList all{window->windowTitle(),
                                chart->findChild<QCPTextElement*>("ChartTitle")->text(),
                                chart->accessibleDescription()};
                for (int i = 0; i < chart->plottableCount(); ++i)
                  for (const auto& bar : *qobject_cast<QCPBars*>(chart->plottable(i))->data())
                    all << QString::number(bar.mainValue());
                return all;
              };
              const QStringList before = shown();
              QVERIFY(before.size() > 3);
              for (const View& view : kViews) {
                auto* button = window->findChild<QPushButton*>(view.button);
                QVERIFY(!button->isVisible());
                press(button, view.chord);
                QTest::qWait(20);
                QCOMPARE(shown(), before);
                button->click();  // no event reaches it
                QCOMPARE(shown(), before);
              }
            });
    QCOMPARE(program.prompts.told, QList<int>{});
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ManagerChartTest)
#include "manager_chart_test.moc"

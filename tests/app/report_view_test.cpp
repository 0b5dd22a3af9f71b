// SPDX-License-Identifier: GPL-3.0-or-later
// The report beside the pages: how much of it is seen, and which part.
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>

#include "app/report_box.h"
#include "ui_testing.h"

namespace mirelund::testing {

class ReportViewTest : public QObject {
  Q_OBJECT

 private slots:
  void theDividerMoves() {
    ProgramFixture program;
    open(program);
    const int before = results()->width();
    drag(-60);
    QCOMPARE(results()->width(), before + 60);
    drag(40);
    QCOMPARE(results()->width(), before + 20);
    // Nothing is pushed out of sight.
    drag(-4000);
    const QRect left = program.find<QPushButton>("ExitProgram")->visibleRegion().boundingRect();
    QCOMPARE(left.size(), program.find<QPushButton>("ExitProgram")->size());
    drag(4000);
    QVERIFY(columns() >= 16);
  }

  void aDoubleClickOnTheDividerShowsTheWidestReport() {
    ProgramFixture program;
    open(program);
    program.choosePage(0);
    program.click("PGCalculate");
    QVERIFY(columns() < 59);
    QVERIFY(results()->horizontalScrollBar()->maximum() > 0);
    const QSize window = program.window("PQInvest")->size();
    doubleClick();
    QCOMPARE(columns(), 60);
    QCOMPARE(results()->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(program.window("PQInvest")->size(), window);
    // From either side, and at the size that the text has.
    drag(-150);
    QVERIFY(columns() > 60);
    doubleClick();
    QCOMPARE(columns(), 60);
    results()->zoom(1);
    QVERIFY(columns() < 60);
    doubleClick();
    QCOMPARE(columns(), 60);
  }

  void theReportHasWhatAWindowGrowsBy() {
    ProgramFixture program;
    open(program);
    QWidget* window = program.window("PQInvest");
    const int before = results()->width();
    window->resize(window->width() + 100, window->height());
    QTest::qWait(20);
    QCOMPARE(results()->width(), before + 100);
  }

  void theNewestBlockIsInView() {
    ProgramFixture program;
    open(program);
    program.choosePage(4);
    for (int block = 1; block <= 10; ++block) {
      program.click("CGCalculate");
      const int first = lastHeading(program.results().split('\n'));
      QCOMPARE(first, (block - 1) * kBlockLines);
      QVERIFY(isInView(first));
      QVERIFY(isInView(first + kBlockLines - 2));
    }
    // The eleventh stands at the head of a new report.
    program.click("CGCalculate");
    QCOMPARE(results()->verticalScrollBar()->value(), 0);
  }

  void aBlockTallerThanTheBoxIsShownFromItsHeading() {
    ProgramFixture program;
    open(program);
    QWidget* window = program.window("PQInvest");
    program.choosePage(1);
    window->resize(window->width(), 220);
    QTest::qWait(20);
    program.click("MTCalculate");
    QCOMPARE(results()->verticalScrollBar()->value(), 0);
    program.click("MTCalculate");
    const QStringList lines = program.results().split('\n');
    const auto heading = static_cast<int>(lines.lastIndexOf("           Conventional Mortgage"));
    QVERIFY(heading > 10);
    QCOMPARE(results()->verticalScrollBar()->value(), heading);
    QVERIFY(!isInView(static_cast<int>(lines.size()) - 2));
  }

  void aReportThatTakesTheOthersPlaceIsShownFromItsHead() {
    ProgramFixture program;
    open(program);
    program.choosePage(5);
    QWidget* window = program.window("PQInvest");
    window->resize(window->width(), 220);
    QTest::qWait(20);
    for (int time = 0; time < 2; ++time) {
      program.click("CRCalculate");
      results()->verticalScrollBar()->setValue(5);
      QCOMPARE(results()->verticalScrollBar()->value(), 5);
    }
    program.click("CRCalculate");
    QCOMPARE(results()->verticalScrollBar()->value(), 0);
    results()->verticalScrollBar()->setValue(5);
    program.click("HowToUse");
    QCOMPARE(results()->verticalScrollBar()->value(), 0);
  }

  void aPageScrollsToTheControlThatGetsTheFocus() {
    ProgramFixture program;
    open(program);
    QWidget* window = program.window("PQInvest");
    window->resize(window->minimumSizeHint().width(), 200);
    for (const auto& [page, first, last] :
         {std::tuple(0, "PGInCurrBalance", "PGPrint"), std::tuple(1, "MTCompPeriod", "MTPrint"),
          std::tuple(2, "IGInBegBal", "IGPrint"), std::tuple(4, "CGInCostofInvest", "CGPrint")}) {
      program.choosePage(page);
      for (const char* name : {last, first, last}) {
        QWidget* control = program.find(name);
        control->setFocus(Qt::TabFocusReason);
        QTest::qWait(5);
        QCOMPARE(control->visibleRegion().boundingRect(), control->rect());
      }
    }
  }

  void whatIsClickedStaysUnderTheMouse() {
    ProgramFixture program;
    open(program);
    QWidget* window = program.window("PQInvest");
    program.choosePage(1);
    window->resize(window->width(), 300);
    QTest::qWait(20);
    auto* box = program.box("MTInTerm");
    auto* area = qobject_cast<QScrollArea*>(box->parentWidget()->parentWidget()->parentWidget());
    QVERIFY(area != nullptr);
    // Half of the box is seen.
    area->verticalScrollBar()->setValue(box->y() + box->height() / 2);
    const int scrolled = area->verticalScrollBar()->value();
    QTest::mousePress(box, Qt::LeftButton, {}, {5, box->height() - 3});
    QVERIFY(box->hasFocus());
    QCOMPARE(area->verticalScrollBar()->value(), scrolled);
    QTest::mouseRelease(box, Qt::LeftButton, {}, {5, box->height() - 3});
  }

 private:
  static constexpr int kBlockLines = 10;

  // As on a screen that has room for all of the window.
  static void open(ProgramFixture& program) {
    program.openCalculations(2);
    QWidget* window = program.window("PQInvest");
    window->resize(window->sizeHint());
    QTest::qWait(20);
  }
  static ReportBox* results() { return ProgramFixture::find<ReportBox>("Results"); }
  static int columns() {
    const double margins = 2 * results()->document()->documentMargin();
    const double width = QFontMetricsF(results()->font()).horizontalAdvance('0');
    const int bar = results()->verticalScrollBar()->isVisible()
                        ? 0
                        : results()->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return static_cast<int>((results()->viewport()->width() - bar - margins) / width + 0.01);
  }
  static QWidget* divider() { return ProgramFixture::find<QSplitter>("ReportDivider")->handle(1); }
  static void drag(int by) {
    const QPoint from = divider()->rect().center();
    QTest::mousePress(divider(), Qt::LeftButton, {}, from);
    QTest::mouseMove(divider(), from + QPoint(by, 0));
    QTest::mouseRelease(divider(), Qt::LeftButton, {}, divider()->rect().center());
    QTest::qWait(5);
  }
  static void doubleClick() {
    QTest::mouseDClick(divider(), Qt::LeftButton);
    QTest::qWait(20);
  }
  static int lastHeading(const QStringList& lines) {
    for (qsizetype line = lines.size() - 1; line >= 0; --line)
      if (lines[line].startsWith("Cost of Investment:")) return static_cast<int>(line);
    return -1;
  }
  static bool isInView(int line) {
    QTextCursor cursor(results()->document()->findBlockByNumber(line));
    const QRect place = results()->cursorRect(cursor);
    return results()->viewport()->rect().contains(place);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ReportViewTest)
#include "report_view_test.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// How large the text of report boxes is.
#include "app/report_box.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace mirelund::testing {

class ReportBoxTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { usual_ = QApplication::font(); }
  void cleanup() { QApplication::setFont(usual_); }

  void reportsAreAsLargeAsTheDesktop() {
    QWidget window;
    ReportBox box("Results", 45, 24, &window);
    for (const int points : {6, 9, 12, 18, 24}) {
      setDesktop(points);
      QCOMPARE(box.font().pointSize(), points);
      QCOMPARE(box.document()->defaultFont().pointSize(), points);
      QCOMPARE(box.font().family(), "Courier New");
      QVERIFY(box.font().fixedPitch());
      QVERIFY(box.sizeHint().width() >=
              QFontMetricsF(box.font()).horizontalAdvance(QString(45, '0')));
    }
  }

  void takesNoComposedText() {
    ReportBox box("Results", 45, 24);
    box.showReport("Bought     1/15/2020");
    QInputMethodEvent composed;
    composed.setCommitString("10");
    QApplication::sendEvent(&box, &composed);
    QCOMPARE(box.toPlainText(), "Bought     1/15/2020");
  }

  void zoomStepsByPointsForAllBoxesOfTheWindow() {
    QWidget window;
    ReportBox one("One", 45, 24, &window);
    ReportBox two("Two", 45, 24, &window);
    QWidget elsewhere;
    ReportBox other("Other", 45, 24, &elsewhere);
    setDesktop(10);
    one.zoom(1);
    two.zoom(3);
    one.zoom(-1);
    QCOMPARE(sizes({&one, &two, &other}), (QList<int>{13, 13, 10}));
    ReportBox late("Late", 45, 24, &window);
    window.show();
    QCOMPARE(sizes({&late}), QList<int>{13});
    two.zoom(0);
    QCOMPARE(sizes({&one, &two, &late, &other}), (QList<int>{10, 10, 10, 10}));
  }

  void zoomStaysOverTheDesktopsFont() {
    QWidget window;
    ReportBox box("Results", 45, 24, &window);
    setDesktop(10);
    box.zoom(2);
    setDesktop(18);
    QCOMPARE(box.font().pointSize(), 20);
    box.zoom(0);
    QCOMPARE(box.font().pointSize(), 18);
    setDesktop(9);
    QCOMPARE(box.font().pointSize(), 9);
  }

  void zoomEndsWhereTextCannotBeRead() {
    QWidget window;
    ReportBox box("Results", 45, 24, &window);
    setDesktop(10);
    box.zoom(-100);
    QCOMPARE(box.font().pointSize(), 5);
    box.zoom(1);
    QCOMPARE(box.font().pointSize(), 6);
    box.zoom(1000);
    QCOMPARE(box.font().pointSize(), 72);
    box.zoom(-1);
    QCOMPARE(box.font().pointSize(), 71);
  }

  void zoomAsksForNoMoreRoom() {
    QWidget window;
    ReportBox box("Results", 45, 24, &window);
    const QSize hint = box.sizeHint();
    const QSize least = box.minimumSizeHint();
    for (const int steps : {7, -9, 0}) {
      box.zoom(steps);
      QCOMPARE(box.sizeHint(), hint);
      QCOMPARE(box.minimumSizeHint(), least);
    }
  }

  void theWheelZoomsWithCtrlAlone() {
    QWidget window;
    ReportBox box("Results", 45, 24, &window);
    window.show();
    setDesktop(10);
    wheel(box, 120, Qt::ControlModifier);
    QCOMPARE(box.font().pointSize(), 11);
    wheel(box, -360, Qt::ControlModifier);
    QCOMPARE(box.font().pointSize(), 8);
    // A touch pad turns in parts of a notch.
    for (int part = 0; part < 3; ++part) wheel(box, 40, Qt::ControlModifier);
    QCOMPARE(box.font().pointSize(), 9);
    wheel(box, 120, Qt::NoModifier);
    QCOMPARE(box.font().pointSize(), 9);
  }

 private:
  static void setDesktop(int points) {
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
    QCoreApplication::processEvents();
  }
  static QList<int> sizes(const QList<ReportBox*>& boxes) {
    QList<int> sizes;
    for (const ReportBox* box : boxes) sizes << box->font().pointSize();
    return sizes;
  }
  static void wheel(ReportBox& box, int delta, Qt::KeyboardModifiers modifiers) {
    const QPointF middle = QRectF(box.viewport()->rect()).center();
    QWheelEvent event(middle, box.viewport()->mapToGlobal(middle), {}, {0, delta}, {}, modifiers,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(box.viewport(), &event);
  }

  QFont usual_;
};

}  // namespace mirelund::testing

QTEST_MAIN(mirelund::testing::ReportBoxTest)
#include "report_box_test.moc"

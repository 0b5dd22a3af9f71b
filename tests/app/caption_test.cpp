// SPDX-License-Identifier: GPL-3.0-or-later
// A label that is measured once is as large as the toolkit's own.
#include "app/caption.h"

#include <QApplication>
#include <QTest>

namespace mirelund::testing {

class CaptionTest : public QObject {
  Q_OBJECT

 private slots:
  void aCaptionIsAsLargeAsALabel_data() { fonts(); }
  void aCaptionIsAsLargeAsALabel() {
    const QString texts[] = {"Current balance", "", " ", "Contribution & fees", "Zürich 東京 100%"};
    QLabel label;
    Caption caption({});
    for (QLabel* each : {&label, static_cast<QLabel*>(&caption)}) each->setFont(font());
    for (const QString& text : texts) {
      label.setText(text);
      caption.setText(text);
      QCOMPARE(caption.sizeHint(), label.sizeHint());
      QCOMPARE(caption.minimumSizeHint(), label.minimumSizeHint());
    }
    QFont larger = font();
    larger.setPointSizeF(larger.pointSizeF() * 2.0);
    for (QLabel* each : {&label, static_cast<QLabel*>(&caption)}) each->setFont(larger);
    QCOMPARE(caption.sizeHint(), label.sizeHint());
  }

  void anUnderlinedLetterTakesNoRoomOfItsOwn() {
    QWidget control;
    QLabel label("&Name of fund");
    Caption caption("&Name of fund");
    label.setBuddy(&control);
    caption.setBuddy(&control);
    QCOMPARE(caption.sizeHint(), label.sizeHint());
  }

 private:
  static void fonts() {
    QTest::addColumn<double>("points");
    QTest::addColumn<bool>("bold");
    QTest::newRow("small") << 7.5 << false;
    QTest::newRow("middling, bold") << 10.0 << true;
    QTest::newRow("large") << 23.4 << false;
  }
  static QFont font() {
    QFETCH(double, points);
    QFETCH(bool, bold);
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
  }
};

}  // namespace mirelund::testing

QTEST_MAIN(mirelund::testing::CaptionTest)
#include "caption_test.moc"

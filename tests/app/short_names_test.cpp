// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/short_names.h"

#include <QElapsedTimer>
#include <QSet>

#include "ui_testing.h"

namespace mirelund::testing {

class ShortNamesTest : public QObject {
  Q_OBJECT

  static QFontMetricsF metrics() { return QFontMetricsF(QApplication::font()); }
  static QStringList numbered(const QString& beginning, const QString& end) {
    QStringList names;
    for (int i = 1; i <= 18; ++i) names << beginning + QString::number(i) + end;
    return names;
  }

 private slots:
  void whatFitsIsLeftAlone() {
    const QStringList names{"Alder", "", "Birch & Co"};
    QCOMPARE(shortNames(names, metrics(), 200.0), names);
    QCOMPARE(shortNames(names, metrics(), {200.0, 0.0, 200.0}), names);
    QCOMPARE(shortNames({"Alder"}, metrics(), metrics().horizontalAdvance("Alder")),
             QStringList{"Alder"});
    QCOMPARE(shortNames({}, metrics(), 10.0), QStringList());
  }

  void namesStayApart_data() {
    QTest::addColumn<QString>("beginning");
    QTest::addColumn<QString>("end");
    QTest::newRow("one beginning") << "The same long beginning of all names "
                                   << "";
    QTest::newRow("one end") << ""
                             << " and the same long end of all names";
    QTest::newRow("one beginning, and an end") << "The same beginning of all "
                                               << " and then one end";
    QTest::newRow("a long end") << "All "
                                << " and then a very long end of all";
  }

  void namesStayApart() {
    QFETCH(QString, beginning);
    QFETCH(QString, end);
    const QStringList names = numbered(beginning, end);
    for (const double characters : {23.0, 28.0}) {
      const double width = characters * metrics().averageCharWidth();
      const QStringList shown = shortNames(names, metrics(), width);
      QCOMPARE(QSet<QString>(shown.begin(), shown.end()).size(), 18);
      for (qsizetype i = 0; i < shown.size(); ++i) {
        QVERIFY2(metrics().horizontalAdvance(shown[i]) <= width + 1.0, qPrintable(shown[i]));
        const QStringList parts = shown[i].split(QChar(0x2026));
        QCOMPARE(parts.size(), 2);
        QVERIFY(names[i].startsWith(parts[0]) && names[i].endsWith(parts[1]));
      }
    }
  }

  void whereNoPlaceKeepsThemApartTheMiddleGoes() {
    const QString same(100, 'x');
    const QStringList shown = shortNames({same + "1" + same, same + "2" + same}, metrics(), 80.0);
    QCOMPARE(shown[0], shown[1]);
    const QStringList parts = shown[0].split(QChar(0x2026));
    QVERIFY(std::abs(parts[0].size() - parts[1].size()) <= 1);
  }

  void whereThereIsNoRoomTheDotsStay() {
    for (const double width : {0.0, 1.0, -5.0})
      QCOMPARE(shortNames({"Alder"}, metrics(), width), QStringList{QString(QChar(0x2026))});
  }

  void aNameOfManyThousandCharactersTakesNoTime() {
    const QString name = "Alder" + QString(60'000, 'x') + "Birch";
    QElapsedTimer timer;
    timer.start();
    const QString shown = shortNames({name}, metrics(), 200.0).front();
    QVERIFY(timer.elapsed() < 1'000);
    QVERIFY(shown.startsWith("Alder") && shown.endsWith("Birch"));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ShortNamesTest)
#include "short_names_test.moc"

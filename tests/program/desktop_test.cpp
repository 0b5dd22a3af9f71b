// SPDX-License-Identifier: GPL-3.0-or-later
// What the desktop is told: the icon of every window, the desktop entry that is theirs,
// and the type of a database file.
#include <QMimeDatabase>

#include "program/real_program.h"

namespace mirelund::testing {

class DesktopTest : public QObject {
  Q_OBJECT

  static void carriesIcon(const QWidget* window) {
    QVERIFY(window != nullptr);
    const QPixmap drawn(MIRELUND_DATA "/mirelund-48.png");
    QCOMPARE(drawn.size(), QSize(48, 48));
    const QIcon icon = window->windowIcon();
    QCOMPARE(icon.availableSizes(), QList<QSize>{drawn.size()});
    QCOMPARE(icon.pixmap(drawn.size()).toImage(), drawn.toImage());
  }

 private slots:
  void everyWindow_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("half");
    QTest::newRow("calculations") << "StartCalc"
                                  << "PQInvest";
    QTest::newRow("manager") << "StartStockMgmt"
                             << "PQManagement";
  }

  void everyWindow() {
    QFETCH(QString, button);
    QFETCH(QString, half);
    RealProgram program;
    carriesIcon(&program.program.start());
    carriesIcon(program.open(qPrintable(button), qPrintable(half)));
  }

  void chartsAndDialogs() {
    RealProgram program;
    program.openCalculations();
    ProgramFixture::choosePage(1);
    ProgramFixture::click("MTCalculate");
    play([] { ProgramFixture::click("AllGraphs"); }, {[](QDialog* chart) {
           QCOMPARE(chart->objectName(), "PQGraph");
           carriesIcon(chart);
           press(chart, Qt::Key_Escape);
         }});
    ProgramFixture::click("ClearResults");
    play([] { ProgramFixture::click("AllGraphs"); }, {[](QDialog* message) {
           QCOMPARE(message->objectName(), "AMsgbox");
           carriesIcon(message);
           press(message, Qt::Key_Escape);
         }});
  }

  void aDatabaseIsKnownByItsName() {
    const QTemporaryDir home;
    QVERIFY(QDir(home.path()).mkpath("mime/packages"));
    QVERIFY(
        QFile::copy(MIRELUND_DATA "/mirelund.xml", home.filePath("mime/packages/mirelund.xml")));
    qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
    const QMimeDatabase types;
    for (const char* name : {"DtaSampl.PQD", "mine.pqd", "Mine.Pqd"}) {
      const QMimeType type = types.mimeTypeForFile(name, QMimeDatabase::MatchExtension);
      QCOMPARE(type.name(), "application/x-mirelund");
      QVERIFY(type.inherits("text/plain"));
      QVERIFY(QFile::exists(QString(MIRELUND_DATA "/%1.svg").arg(type.iconName())));
    }
  }

  void itsDesktopEntry() { QCOMPARE(QGuiApplication::desktopFileName(), "mirelund"); }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::DesktopTest)
#include "desktop_test.moc"

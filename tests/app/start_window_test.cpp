// SPDX-License-Identifier: GPL-3.0-or-later
// The start window's three buttons, in every way that presses one.
#include "app/start_window.h"

#include <QEventLoop>
#include <QPointer>
#include <QProcess>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

#include "app/pressing.h"
#include "ui_testing.h"

namespace mirelund::testing {

class StartWindowTest : public QObject {
  Q_OBJECT

  static constexpr int kEnded = 0;
  static constexpr int kStillThere = 7;

  static void addWays(const char* button, const char* opens, const char* chord) {
    for (const char* way : {"Mouse", "Return", "Enter", "Space", chord})
      QTest::addRow("%s by %s", button, way) << button << opens << way;
  }

 private slots:
  void aHalfTakesTheStartWindowsPlaceAndGivesItBack_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("opens");
    QTest::addColumn<QString>("way");
    addWays("StartCalc", "PQInvest", "Alt+C");
    addWays("StartStockMgmt", "PQManagement", "Alt+I");
  }

  void aHalfTakesTheStartWindowsPlaceAndGivesItBack() {
    QFETCH(QString, button);
    QFETCH(QString, opens);
    QFETCH(QString, way);
    const QByteArray name = opens.toLatin1();
    ProgramFixture program;
    for (const bool byFrame : {true, false}) {
      press(program.find<QPushButton>(button.toLatin1()), way);
      QTRY_VERIFY(program.window(name) != nullptr);  // a chord shows for a moment
      QVERIFY(!program.program.start().isVisible());
      QVERIFY(program.isActivated(program.window(name)));
      program.key(Qt::Key_Escape);  // no dialog, which it would close
      QVERIFY(program.window(name) != nullptr);
      if (byFrame)
        program.window(name)->close();
      else
        program.click(opens == "PQInvest" ? "ExitProgram" : "EExit");
      QTRY_VERIFY(program.window(name) == nullptr);
      QTRY_VERIFY(program.program.start().isVisible());
      QVERIFY(program.isActivated(&program.program.start()));
    }
  }

  void aHalfIsMadeWhileItsButtonIsHeld_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("opens");
    QTest::newRow("Calculations") << "StartCalc"
                                  << "PQInvest";
    QTest::newRow("Investment manager") << "StartStockMgmt"
                                        << "PQManagement";
  }

  void aHalfIsMadeWhileItsButtonIsHeld() {
    QFETCH(QString, button);
    QFETCH(QString, opens);
    ProgramFixture program;
    const auto made = [&] {
      QWidget* found = nullptr;
      for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == opens) found = window;
      return found;
    };
    auto* held = program.find<QPushButton>(button.toLatin1());
    QTest::mousePress(held, Qt::LeftButton);
    QTRY_VERIFY(made() != nullptr);
    QVERIFY(!made()->isVisible());
    QVERIFY(program.program.start().isVisible());

    // Let go beside it, nothing was asked for.
    QTest::mouseMove(held, QPoint(-20, -20));
    QTest::mouseRelease(held, Qt::LeftButton, {}, QPoint(-20, -20));
    QTRY_VERIFY(made() == nullptr);
    QVERIFY(program.program.start().isVisible());

    QTest::mousePress(held, Qt::LeftButton);
    QTRY_VERIFY(made() != nullptr);
    const QPointer<QWidget> half = made();
    QTest::mouseRelease(held, Qt::LeftButton);
    QVERIFY(half != nullptr);
    QTRY_VERIFY(half->isVisible());
    QVERIFY(!program.program.start().isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(made(), half.data());
  }

  // A dialog that was answered is not over before its loop is, and then its window
  // is still needed.
  void aHalfStaysUntilNothingWaitsInIt() {
    ProgramFixture program;
    program.click("StartCalc");
    const QPointer<QWidget> half = program.window("PQInvest");
    program.prompts.whileTold = [&] {
      QEventLoop dialog;
      QTimer::singleShot(0, half, &QWidget::close);
      QTimer::singleShot(50, &dialog, &QEventLoop::quit);
      dialog.exec();
      QVERIFY(half != nullptr);
    };
    QEventLoop own;
    QTimer::singleShot(0, half, [&] {
      program.click("AllGraphs");
      QVERIFY(half != nullptr);
    });
    QTimer patience;
    patience.callOnTimeout(&own, &QEventLoop::quit);
    patience.start(5000);
    connect(half, &QObject::destroyed, &own, &QEventLoop::quit);
    own.exec();
    QCOMPARE(program.prompts.told.size(), 1);
    QVERIFY(half == nullptr);
  }

  void twoChordsInOneGoOpenOneHalf() {
    ProgramFixture program;
    QWindow* start = program.program.start().windowHandle();
    QTest::keyClick(start, Qt::Key_C, Qt::AltModifier);
    QTest::keyClick(start, Qt::Key_I, Qt::AltModifier);
    QTRY_VERIFY(program.window("PQInvest") != nullptr);
    constexpr int kUntilBothClicksCame = 300;
    QTest::qWait(kUntilBothClicksCame);
    QVERIFY(program.window("PQInvest") != nullptr);
    QVERIFY(program.window("PQManagement") == nullptr);
  }

  void theFocusStartsOnTheFirstButtonAndWalksThem() {
    const ProgramFixture program;
    QStringList walked;
    for (int i = 0; i < 4; ++i) {
      walked << QApplication::focusWidget()->objectName();
      program.key(Qt::Key_Tab);
    }
    QCOMPARE(walked, (QStringList{"StartCalc", "StartStockMgmt", "StartExit", "StartCalc"}));
  }

  void everyChordIsSaid() {
    const ProgramFixture program;
    for (const auto& [button, chord] :
         {std::pair("StartCalc", "Alt+C"), std::pair("StartStockMgmt", "Alt+I"),
          std::pair("StartExit", "Alt+E")}) {
      QCOMPARE(program.find<QPushButton>(button)->shortcut(), QKeySequence(chord));
      QCOMPARE(program.find<QPushButton>(button)->toolTip(), chord);
    }
  }

  void exitEndsTheEventLoop_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("opens");
    QTest::addColumn<QString>("way");
    addWays("StartExit", "", "Alt+E");
  }

  void exitEndsTheEventLoop() {
    QFETCH(QString, way);
    const ProgramFixture program;
    const QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
    QTimer start;
    start.setSingleShot(true);
    start.callOnTimeout([&] { press(program.find<QPushButton>("StartExit"), way); });
    start.start(0);
    QTimer patience;
    patience.callOnTimeout([] { QCoreApplication::exit(kStillThere); });
    patience.start(10'000);
    QCOMPARE(QCoreApplication::exec(), kEnded);
    QCOMPARE(quits.count(), 1);
  }

  void theProgramEndsByItsOwnMain_data() {
    QTest::addColumn<QString>("played");
    for (const char* way : {"Mouse", "Return", "Enter", "Space", "Alt+E"})
      QTest::newRow(way) << QString("StartExit ") + way;
    QTest::newRow("the frame") << "PQStart Close";
    QTest::newRow("after both halves")
        << "StartCalc Alt+C, ExitProgram Mouse, StartStockMgmt Alt+I, "
           "EExit Mouse, StartCalc Return, PQInvest Close, "
           "StartStockMgmt Space, PQManagement Close, "
           "StartExit Return";
  }

  // A process of the program itself, played from within (program_player.cpp).
  void theProgramEndsByItsOwnMain() {
    QFETCH(QString, played);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("MIRELUND_PLAY", played);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(MIRELUND_PLAYER, QStringList());
    QVERIFY(program.waitForFinished(60'000));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), kEnded);
    QCOMPARE(program.readAllStandardOutput(), QByteArray());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::StartWindowTest)
#include "start_window_test.moc"

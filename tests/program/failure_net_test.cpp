// SPDX-License-Identifier: GPL-3.0-or-later
// The net under what nobody foresaw.
#include <stdexcept>

#include "program/real_program.h"

namespace mirelund::testing {

namespace {

class Thrower : public QWidget {
 public:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::User) throw std::runtime_error("nobody foresaw it");
    return QWidget::event(event);
  }
  void paintEvent(QPaintEvent* /*event*/) override {
    ++painted;
    throw std::runtime_error("nor this");
  }
  int painted = 0;
};

Application& application() {
  return *static_cast<Application*>(qApp);
}

}  // namespace

class FailureNetTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() {
    application().setFailureTeller([] {});
  }

  void whatIsThrownIsToldFromTheLoopAndNeverTwiceAtOnce() {
    Thrower thrower;
    int told = 0;
    const auto fail = [&] {
      QEvent event(QEvent::User);
      QCoreApplication::sendEvent(&thrower, &event);
    };
    application().setFailureTeller([&] {
      ++told;
      fail();
      QTest::qWait(50);
    });
    fail();
    fail();
    QCOMPARE(told, 0);
    QTest::qWait(100);
    QCOMPARE(told, 1);
    fail();
    QTRY_COMPARE(told, 2);
  }

  void whatCannotBePaintedIsToldOnce() {
    int told = 0;
    application().setFailureTeller([&] { ++told; });
    Thrower thrower;
    thrower.show();
    QTRY_COMPARE(told, 1);
    const int before = thrower.painted;
    thrower.update();
    QTRY_VERIFY(thrower.painted > before);
    QTest::qWait(20);
    QCOMPARE(told, 1);
  }

  void aHandlerThatThrowsIsNotTheEnd() {
    RealProgram program;
    program.openCalculations();
    application().setFailureTeller(
        [&] { program.prompts.tell(QApplication::activeWindow(), Message::WrongEntry); });
    auto* exit = ProgramFixture::find<QPushButton>("HowToUse");
    connect(exit, &QPushButton::clicked, [] { throw std::bad_alloc(); });
    play(
        [] {
          ProgramFixture::click("HowToUse");
          QTest::qWait(50);
        },
        {[](QDialog* over) {
          QCOMPARE(over->objectName(), "AMsgbox");
          press(over, Qt::Key_Return);
        }});
    // And goes on.
    QVERIFY(!ProgramFixture::results().isEmpty());
    ProgramFixture::click("ClearResults");
    QCOMPARE(ProgramFixture::results(), "");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::FailureNetTest)
#include "failure_net_test.moc"

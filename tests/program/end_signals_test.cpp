// SPDX-License-Identifier: GPL-3.0-or-later
// The system asks the program to end.
#include "end_signals.h"

#include <signal.h>

#include "program/real_program.h"

namespace mirelund::testing {

namespace {

constexpr int kStillRuns = 77;

// Runs the program until it ends, or for a while. What `first` does is done in it.
int run(const std::function<void()>& first, int milliseconds = 1500) {
  QTimer::singleShot(0, qApp, first);
  QTimer late;
  late.setSingleShot(true);
  late.callOnTimeout([] { QApplication::exit(kStillRuns); });
  late.start(milliseconds);
  return QApplication::exec();
}

QDialog* dialogUp() {
  return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

// Does something when a dialog of this name is up.
void whenUp(const char* name, const std::function<void(QDialog*)>& then) {
  auto* timer = new QTimer(qApp);
  timer->callOnTimeout([=] {
    if (dialogUp() == nullptr || dialogUp()->objectName() != name) return;
    timer->stop();
    timer->deleteLater();
    then(dialogUp());
  });
  timer->start(10);
}

}  // namespace

class EndSignalsTest : public QObject {
  Q_OBJECT

  // As main does it.
  class Signalled : public RealProgram {
   public:
    Signalled() { connect(&endings_, &EndSignals::arrived, &program, &Program::end); }

   private:
    EndSignals endings_;
  };

 private slots:
  // A shell that starts this in the background has it ignore one of them.
  void initTestCase() {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) signal(number, SIG_DFL);
  }

  void endsAtOnceWhereNothingIsUnsaved_data() {
    QTest::addColumn<int>("signal");
    QTest::addColumn<QString>("half");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
      for (const char* half : {"", "StartCalc", "StartStockMgmt"})
        QTest::newRow(qPrintable(QString("%1 %2").arg(strsignal(signal), half))) << signal << half;
  }

  void endsAtOnceWhereNothingIsUnsaved() {
    QFETCH(int, signal);
    QFETCH(QString, half);
    Signalled program;
    if (!half.isEmpty()) ProgramFixture::click(qPrintable(half));
    QCOMPARE(run([&] { raise(signal); }), 0);
    QCOMPARE(program.program.start().isVisible(), half.isEmpty());
  }

  void cancelsWhatStandsAndStartsNothing() {
    Signalled program;
    program.openCalculations();
    ProgramFixture::choosePage(1);
    ProgramFixture::click("MTCalculate");
    // The question whether in colour stands on the chart; a no to it prints.
    whenUp("PQGraph", [](QDialog* chart) {
      QTimer::singleShot(0, chart, [] { ProgramFixture::click("PQGPrint"); });
      whenUp("AllYesNo", [](QDialog* print) {
        QTimer::singleShot(0, print, [] { ProgramFixture::click("AllYes"); });
        QTimer::singleShot(100, qApp, [] {
          QCOMPARE(dialogUp()->objectName(), "AllYesNo");
          raise(SIGTERM);
        });
      });
    });
    QCOMPARE(run([] { ProgramFixture::click("AllGraphs"); }), 0);
    QVERIFY(dialogUp() == nullptr);
    QVERIFY(!QFile::exists(program.printing.path));
  }

  void cancelsAFileDialogAndAnInput_data() {
    QTest::addColumn<QString>("opener");
    for (const char* opener : {"OFOpen", "ECreateFund"}) QTest::newRow(opener) << opener;
  }

  void cancelsAFileDialogAndAnInput() {
    QFETCH(QString, opener);
    Signalled program;
    program.openManager();
    const auto open = [&] {
      QTimer::singleShot(200, qApp, [] {
        QVERIFY(dialogUp() != nullptr);
        raise(SIGTERM);
      });
      if (opener == "OFOpen")
        ManagerFixture::page(kOpenPage);
      else
        ProgramFixture::click("ECreateFund");
    };
    QCOMPARE(run(open), 0);
  }

  void asksWhereSomethingIsUnsaved_data() {
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("status");
    QTest::newRow("yes goes back") << "AllYes" << kStillRuns;
    QTest::newRow("escape goes back") << "" << kStillRuns;
    QTest::newRow("no ends") << "AllNo" << 0;
  }

  void asksWhereSomethingIsUnsaved() {
    QFETCH(QString, answer);
    QFETCH(int, status);
    Signalled program;
    program.openManager();
    program.addUnsaved();
    int asked = 0;
    whenUp("AllYesNo", [&](QDialog* question) {
      ++asked;
      QVERIFY(question->findChild<QLabel*>("Label1")->text().contains("save"));
      raise(SIGTERM);  // changes nothing
      QTimer::singleShot(200, question, [=] {
        QCOMPARE(dialogUp(), question);
        if (answer.isEmpty())
          press(question, Qt::Key_Escape);
        else
          ProgramFixture::click(qPrintable(answer));
      });
    });
    QCOMPARE(run([] { raise(SIGTERM); }, 1000), status);
    QCOMPARE(asked, 1);
    QVERIFY(!program.program.start().isVisible());
    if (status == 0) return;
    QVERIFY(ManagerFixture::manager()->isVisible());
    QCOMPARE(ManagerFixture::label("ENumRec"), "Records: 1");
    // Asked again the next time.
    whenUp("AllYesNo", [&](QDialog*) {
      ++asked;
      ProgramFixture::click("AllNo");
    });
    QCOMPARE(run([] { raise(SIGINT); }), 0);
    QCOMPARE(asked, 2);
  }

  void aDialogOverUnsavedRecordsIsCancelledFirst() {
    Signalled program;
    program.openManager();
    program.addUnsaved();
    QStringList up;
    whenUp("FundCurValInput", [&](QDialog* input) {
      up << input->objectName();
      raise(SIGTERM);
      whenUp("AllYesNo", [&](QDialog* question) {
        up << question->objectName();
        ProgramFixture::click("AllYes");
      });
    });
    QCOMPARE(run([] { ProgramFixture::click("ECorrectRec"); }, 800), kStillRuns);
    QCOMPARE(up, (QStringList{"FundCurValInput", "AllYesNo"}));
    QVERIFY(!global(program).dialogs.cancelsAll);
  }

  void whatWasIgnoredStaysIgnored() {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(
        "/bin/sh",
        {"-c", QString("trap '' HUP; MIRELUND_PLAY=nothing exec '%1'").arg(MIRELUND_PLAYER)});
    QVERIFY(process.waitForStarted());
    QTest::qWait(1000);
    kill(static_cast<pid_t>(process.processId()), SIGHUP);
    QVERIFY(!process.waitForFinished(500));
    kill(static_cast<pid_t>(process.processId()), SIGTERM);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
  }

  void aFileLimitAndABrokenPipeAreNoEnd() {
    const EndSignals endings;
    for (const int signal : {SIGXFSZ, SIGPIPE}) {
      struct sigaction now {};
      QCOMPARE(sigaction(signal, nullptr, &now), 0);
      QVERIFY(now.sa_handler == SIG_IGN);
    }
  }

 private:
  static const Global& global(const RealProgram& program) { return program.global; }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::EndSignalsTest)
#include "end_signals_test.moc"

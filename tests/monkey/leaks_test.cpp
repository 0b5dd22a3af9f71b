// SPDX-License-Identifier: GPL-3.0-or-later
// Opens and closes every window and draws charts: what the heap holds more after each,
// once all is warm, is a figure that stays near nothing.
#include <malloc.h>

#include <QAction>
#include <QDialog>
#include <QFileDialog>
#include <QPixmapCache>
#include <QTimer>

#include "dialogs/dialog_prompts.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

namespace {

constexpr int kWindows = 200;
constexpr int kCharts = 1000;
constexpr int kWarmUp = 20;
// A window that is not freed takes 20,000 at least; what the toolkit keeps and frees
// by its own lights, a few.
constexpr double kMostBytesEach = 1000;

std::size_t heap() {
  const struct mallinfo2 now = mallinfo2();
  return now.uordblks + now.hblkhd;
}

void settle() {
  constexpr int kRounds = 3;
  for (int i = 0; i < kRounds; ++i) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

void measure(const char* what, int times, const std::function<void()>& once) {
  for (int i = 0; i < kWarmUp; ++i) once();
  settle();
  const std::size_t before = heap();
  for (int i = 0; i < times; ++i) once();
  settle();
  const double each = (static_cast<double>(heap()) - static_cast<double>(before)) / times;
  qInfo("%-24s %5d times, %8.1f bytes each", what, times, each);
  QVERIFY(each < kMostBytesEach);
}

// Cancels the dialog that is opened next, once it has been shown.
void cancelNext() {
  auto* timer = new QTimer;
  timer->callOnTimeout([timer] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    timer->deleteLater();
    timer->stop();
    dialog->reject();
  });
  timer->start(0);
}

}  // namespace

class LeaksTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the leak checker looks for what is lost");
#endif
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // The style keeps pictures of every palette for half a minute.
    QPixmapCache::setCacheLimit(0);
  }

  void theCalculatorWindow() {
    ProgramFixture program;
    measure("calculator window", kWindows, [&] {
      constexpr int kPages = 6;
      program.openCalculations(0);
      for (int page = 1; page < kPages; ++page) program.choosePage(page);
      program.click("ExitProgram");
      settle();
    });
  }

  void thePaymentSchedule() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTCalculate");
    measure("payment schedule", kWindows, [&] {
      cancelNext();
      program.find<QAction>("ActionSchedule")->trigger();
      settle();
    });
  }

  void theManagerWindow() {
    ManagerFixture program;
    program.click("EExit");
    settle();
    measure("empty manager window", kWindows, [&] {
      program.open();
      program.click("EExit");
      settle();
    });
    const QString path = program.file("two.PQD", kTwoFunds);
    measure("manager window", kWindows, [&] {
      program.open();
      program.prompts.paths.push_back(path);
      program.page(kOpenPage);
      for (const int page : {kDisplayPage, kCurrentValuePage, kSavePage, kEntryPage})
        program.page(page);
      program.click("EExit");
      settle();
    });
  }

  void charts() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kCurrentValuePage);
    program.type("CVInPrice_1", "12");
    program.type("CVInPrice_2", "19");
    program.click("CVCalc");
    measure("chart", kCharts, [&] {
      cancelNext();
      program.click("CVGraph");
      settle();
    });
  }

  void insights() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    measure("insights", kWindows, [&] {
      program.activate();
      QTest::keyClick(program.manager(), Qt::Key_I, Qt::ControlModifier);
      program.window("PQInsights")->close();
      settle();
    });
  }

  void dialogs_data() {
    QTest::addColumn<int>("kind");
    int kind = 0;
    for (const char* name : {"message", "platform's message", "platform's question", "question",
                             "line of text", "record number", "open dialog", "save dialog"})
      QTest::newRow(name) << kind++;
  }

  void dialogs() {
    QFETCH(int, kind);
    Global global;
    DialogPrompts prompts(global.dialogs);
    QTemporaryDir folder;
    QWidget over;
    over.show();
    const std::vector<std::function<void()>> shows = {
        [&] { prompts.tell(&over, Message::WrongEntry); },
        [&] { prompts.warn(&over, "Something went wrong."); },
        [&] { prompts.confirm(&over, "Something stands there.", "Replace it"); },
        [&] { prompts.ask(&over, Question::DeleteFund); },
        [&] { prompts.askLine(&over, "Input", "Type a line."); },
        [&] { prompts.askRecordNumber(&over, "Record number:"); },
        [&] { prompts.askOpenPath(&over, "Open", folder.path(), "Database (*.PQD)"); },
        [&] { prompts.askSavePath(&over, "Save", folder.path(), "Database (*.PQD)"); }};
    measure(QTest::currentDataTag(), kWindows, [&] {
      cancelNext();
      shows[static_cast<std::size_t>(kind)]();
      settle();
    });
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::LeaksTest)
#include "leaks_test.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// The windows on one screen, whose size and scale the display has: none is larger, every
// control can be reached, and the report's columns are whole. Runs under a window
// manager, which gives the windows their frames.
#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>

#include "app/report_box.h"
#include "base/ui_text.h"
#include "dialogs/dialog_prompts.h"
#include "manager/manager.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

class ScreensTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { usual_ = QApplication::font(); }
  void cleanup() { QApplication::setFont(usual_); }

  void theReportFits() {
    ProgramFixture program;
    program.openCalculations(2);
    const auto* results = program.find<ReportBox>("Results");
    framed(program.window("PQInvest"));
    for (int page = 0; page < 6; ++page) {
      program.choosePage(page);
      QVERIFY2(columns(*results) >= 46 && columns(*results) <= 58,
               qPrintable(QString::number(columns(*results))));
      program.click(qPrintable(QString(kPrefixes[page]) + "Calculate"));
      QTest::qWait(20);
      QVERIFY(columns(*results) >= 46 && columns(*results) <= 58);
      // Only the pension report is wider.
      QCOMPARE(results->horizontalScrollBar()->maximum() > 0, page == 0);
    }
  }

  void theLeftSideHasWhatItsControlsNeed() {
    ProgramFixture program;
    program.openCalculations(1);
    for (int page = 0; page < 6; ++page) {
      program.choosePage(page);
      QTest::qWait(20);
      for (const auto* area : program.window("PQInvest")->findChildren<QScrollArea*>())
        if (area->isVisible()) QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
    }
  }

  void noWindowIsLargerThanTheScreen_data() { fonts(); }
  void noWindowIsLargerThanTheScreen() {
    setFont();
    {
      ProgramFixture program;
      verifyOnScreen(&program.program.start());
      program.openCalculations(4);
      verifyOnScreen(program.window("PQInvest"));
      program.click("CGCalculate");
      inDialog([&] { program.click("AllGraphs"); });
      program.choosePage(1);
      program.click("MTCalculate");
      inDialog([&] { program.find<QAction>("ActionSchedule")->trigger(); });
    }
    ManagerFixture program;
    verifyOnScreen(program.manager());
    program.openFile(manyFunds());
    for (int page = 0; page < 5; ++page) {
      program.page(page);
      verifyOnScreen(program.manager());
    }
    program.page(kCurrentValuePage);
    for (int fund = 1; fund <= kMostFunds; ++fund)
      program.type(qPrintable(QString("CVInPrice_%1").arg(fund)), "20");
    program.click("CVCalc");
    inDialog([&] { program.click("CVGraph"); });
    verifyInsights(verifyOnScreen);
    verifyOnScreen(program.manager());
  }

  void noDialogIsLargerThanTheScreen_data() { fonts(); }
  void noDialogIsLargerThanTheScreen() {
    setFont();
    QWidget over;
    over.resize(400, 300);
    over.show();
    framed(&over);
    DialogState state;
    DialogPrompts prompts(state);
    state.Details = {.shortDate = "12/31/2020", .fileName = "Mine.PQD", .recordNumber = "600"};
    for (const Message message : {Message::WithdrawalTooLarge, Message::AllThreeBoxes,
                                  Message::DateFormat, Message::CannotSave, Message::MostFunds})
      inDialog([&] { prompts.tell(&over, message); });
    for (const Question question :
         {Question::Print, Question::DiscardChanges, Question::DeleteRecord, Question::DeleteFund})
      inDialog([&] { prompts.ask(&over, question); });
    inDialog([&] { prompts.askLine(&over, "Input", "Type in one line header information."); });
    inDialog([&] { prompts.askRecordNumber(&over, toQString(kCorrectPrompt)); });
    inDialog(
        [&] { prompts.warn(&over, "There is no space left where the file was to be written."); });
    inDialog([&] {
      prompts.confirm(&over,
                      "Mine.PQD has been changed by another program since it was opened or saved "
                      "here.",
                      "Replace it");
    });
    inDialog([&] { prompts.askOpenPath(&over, "Open database", {}, "Databases (*.PQD)"); });
    inDialog([&] { prompts.askSavePath(&over, "Save database", {}, "Databases (*.PQD)"); });
  }

  void everyControlCanBeReached_data() { fonts(); }
  void everyControlCanBeReached() {
    setFont();
    {
      ProgramFixture program;
      program.openCalculations(2);
      framed(program.window("PQInvest"));
      for (int page = 0; page < 6; ++page) {
        program.choosePage(page);
        verifyReached(program.window("PQInvest"));
      }
    }
    ManagerFixture program;
    framed(program.manager());
    program.openFile(manyFunds());
    program.choose("EFunds", 0);
    program.choose("ETransType", kBought);
    for (int page = 0; page < 5; ++page) {
      program.page(page);
      verifyReached(program.manager());
    }
    verifyInsights(verifyReached);
  }

 private:
  static constexpr const char* kPrefixes[] = {"PG", "MT", "IG", "RI", "CG", "CR"};

  static void fonts() {
    QTest::addColumn<int>("points");
    QTest::newRow("the desktop's font") << 0;
    QTest::newRow("18 points") << 18;
  }
  static void setFont() {
    QFETCH(int, points);
    if (points == 0) return;
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
  }
  /// The window manager's frame arrives on its own time.
  static void framed(const QWidget* window) {
    constexpr int kFramedMs = 2000;
    static_cast<void>(
        QTest::qWaitFor([&] { return window->frameGeometry() != window->geometry(); }, kFramedMs));
    QTest::qWait(50);
  }
  static void verifyOnScreen(const QWidget* window) {
    framed(window);
    const QSize screen = window->screen()->availableSize();
    const QSize size = window->frameGeometry().size();
    QVERIFY2(
        size.width() <= screen.width() && size.height() <= screen.height(),
        qPrintable(
            QString("%1: %2 x %3").arg(window->objectName()).arg(size.width()).arg(size.height())));
  }
  static int columns(const ReportBox& box) {
    const double margins = 2 * box.document()->documentMargin();
    return static_cast<int>((box.viewport()->width() - margins) /
                            QFontMetricsF(box.font()).horizontalAdvance('0'));
  }

  // Each page of the insights.
  template <typename Verify>
  static void verifyInsights(Verify verify) {
    QVERIFY(ProgramFixture::isActivated(ManagerFixture::manager()));
    QTest::keyClick(ManagerFixture::manager(), Qt::Key_I, Qt::ControlModifier);
    QWidget* const window = ProgramFixture::window("PQInsights");
    QVERIFY(window != nullptr);
    QTRY_COMPARE(QApplication::activeWindow(), window);
    auto* tabs = window->findChild<QTabWidget*>();
    for (int page = 0; page < tabs->count(); ++page) {
      tabs->setCurrentIndex(page);
      verify(window);
    }
    window->close();
    ManagerFixture::activate();
  }

  // Looks at the dialog that `show` opens, and closes it.
  template <typename Show>
  void inDialog(Show show) {
    bool looked = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (looked || dialog == nullptr || !dialog->isVisible()) return;
      looked = true;
      verifyOnScreen(dialog);
      for (QWidget* control : dialog->findChildren<QPushButton*>())
        if (control->isVisible()) verifySeen(control);
      dialog->reject();
    });
    timer.start(20);
    show();
    QVERIFY(looked);
  }

  static void verifySeen(QWidget* control) {
    QWidget* const window = control->window();
    const QRect place(control->mapTo(window, QPoint()), control->size());
    QVERIFY2(window->rect().contains(place), qPrintable(control->objectName()));
    QCOMPARE(control->visibleRegion().boundingRect(), control->rect());
  }
  // All of a control is seen when it has the focus; of a box, a list or a report, which
  // scroll themselves, enough.
  static void verifyReached(QWidget* window) {
    int reached = 0;
    for (QWidget* control : window->findChildren<QWidget*>()) {
      if (!control->isVisible() || !control->isEnabled()) continue;
      if (!(control->focusPolicy() & Qt::TabFocus) || control->focusProxy() != nullptr) continue;
      control->setFocus(Qt::TabFocusReason);
      QTest::qWait(1);
      ++reached;
      const QSize seen = control->visibleRegion().boundingRect().size();
      const bool scrolls = qobject_cast<QAbstractScrollArea*>(control) != nullptr ||
                           qobject_cast<QLineEdit*>(control) != nullptr;
      const QSize wanted = scrolls ? control->size().boundedTo({150, 60}) : control->size();
      QVERIFY2(seen.width() >= wanted.width() && seen.height() >= wanted.height(),
               qPrintable(QString("%1: %2 x %3 of %4 x %5")
                              .arg(control->objectName())
                              .arg(seen.width())
                              .arg(seen.height())
                              .arg(control->width())
                              .arg(control->height())));
    }
    QVERIFY(reached >= 3);
  }

  // As many funds as there can be, which ask for the most prices.
  static QByteArray manyFunds() {
    QByteArray funds;
    QByteArray records;
    for (int fund = 1; fund <= kMostFunds; ++fund) {
      const QByteArray number = QByteArray::number(fund);
      funds += "\"Fund of a longish name " + number + "\",\"" + number + "\"\r\n";
      records += number + ",10,100,50,0,1050,\"B\",#2019-01-02#\r\n";
    }
    const QByteArray count = QByteArray::number(kMostFunds);
    return count + "," + count + ",\"All Records\",\"31\"\r\n" + funds + records;
  }

  QFont usual_;
};

}  // namespace mirelund::testing

int main(int argc, char** argv) {
  // The scale that the display is given counts.
  const mirelund::Application application(argc, argv);
  mirelund::testing::ScreensTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "screens_test.moc"

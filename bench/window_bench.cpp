// SPDX-License-Identifier: GPL-3.0-or-later
// The waits that a person meets: from just before a click to the end of the paint
// that shows its result. Each is measured once, as it is the first time in a run
// of the program; bench/windows.py runs many.
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QTimer>
#include <cstdio>

#include "application.h"
#include "fund_sample.h"
#include "manager/database/data_file.h"
#include "ui_testing.h"

namespace mirelund::bench {

namespace {

using testing::FakePrompts;
using testing::PdfTarget;

// Waits for the paint of one widget.
class PaintWatch : public QObject {
 public:
  /// Milliseconds from the call of `action` until the widget of this name, which
  /// need not exist yet, is painted and the display has it. `then` closes what
  /// keeps `action` from returning.
  double timed(
      const QString& widget, const std::function<void()>& action,
      const std::function<void()>& then = [] {}) {
    settle();
    name_ = widget;
    milliseconds_ = -1.0;
    then_ = then;
    qApp->installEventFilter(this);
    clock_.start();
    action();
    while (milliseconds_ < 0.0) {
      if (clock_.elapsed() > 5000) qFatal("%s is not painted", qPrintable(widget));
      QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    return milliseconds_;
  }

  /// Lets everything happen that is still to come; a window is active then, for
  /// no box takes typing before.
  static void settle() {
    QTest::qWait(150);
    const auto active = [] { return QApplication::activeWindow() != nullptr; };
    if (QTest::qWaitFor(active, 500)) return;
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->isVisible()) window->activateWindow();
    if (!QTest::qWaitFor(active)) qFatal("no window is active");
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint || !isWatched(watched)) return false;
    qApp->removeEventFilter(this);
    QMetaObject::invokeMethod(
        this,
        [this] {
          QGuiApplication::sync();
          milliseconds_ = static_cast<double>(clock_.nsecsElapsed()) / 1e6;
          then_();
        },
        Qt::QueuedConnection);
    return false;
  }

 private:
  // The widget itself, or the part of a report that scrolls.
  bool isWatched(QObject* watched) const {
    const auto* report = qobject_cast<QPlainTextEdit*>(watched->parent());
    if (report == nullptr) return watched->objectName() == name_;
    return report->objectName() == name_ && report->document()->revision() != oldRevision_;
  }

  QString name_;
  int oldRevision_ = 0;
  QElapsedTimer clock_;
  double milliseconds_ = 0.0;
  std::function<void()> then_;
};

class Measurements : public testing::ProgramFixture {
 public:
  void calculations();
  void manager();
  void insights();

 private:
  void tell(const char* name, double most, double milliseconds) {
    std::printf("%s|%g|%.3f\n", name, most, milliseconds);
  }
  double clicked(const char* button, const char* painted) {
    return watch_.timed(painted, [button] { click(button); });
  }
  double charted() {
    return watch_.timed(
        "MSChart1", [] { click("AllGraphs"); }, [] { window("PQGraph")->close(); });
  }
  // A finger is on a button for a while: the click is when it lets go.
  double opened(const char* button, const char* window) {
    auto* pushed = find<QPushButton>(button);
    QTest::mousePress(pushed, Qt::LeftButton);
    return watch_.timed(window, [pushed] { QTest::mouseRelease(pushed, Qt::LeftButton); });
  }
  // A data file, opened on the manager's first page.
  void open(const Database& database) {
    const QString path = folder_.filePath("bench.PQD");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) qFatal("cannot write");
    file.write(QByteArray::fromStdString(writeDatabase(database)));
    file.close();
    prompts.paths.push_back(path);
    tab("SSTab2", 0);
  }
  static void tab(const char* tabs, int page) {
    auto* bar = find<QTabWidget>(tabs)->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
    PaintWatch::settle();
  }
  static void typeAll(std::initializer_list<std::pair<const char*, const char*>> boxes) {
    for (const auto& [box, keys] : boxes) type(box, keys);
  }

  PaintWatch watch_;
  QTemporaryDir folder_;
};

constexpr double kFrame = 16.7;  // one frame of a display of 60 a second

void Measurements::calculations() {
  tell("\"Calculations\" to the painted page", kFrame, opened("StartCalc", "PQInvest"));

  tab("SSTab1", 4);
  typeAll({{"CGInCostofInvest", "2500"}, {"CGInValueNow", "4000.50"}, {"CGInNumOfYrs", "7"}});
  tell("Compound gain: Calculate to the painted report", kFrame, clicked("CGCalculate", "Results"));
  tell("Compound gain: \"&Graph\" to the painted chart", kFrame, charted());

  tab("SSTab1", 2);
  find<QComboBox>("IGInMonthsYrs")->setCurrentIndex(2);
  typeAll({{"IGInBegBal", "1000"},
           {"IGInEachContrib", "100"},
           {"IGInIntGrowthRate", "8"},
           {"IGInYearsInvested", "40"}});
  tell("Investment growth: Calculate to the painted report of 480 rows", kFrame,
       clicked("IGCalculate", "Results"));
  if (results().count('\n') < 480) qFatal("not 480 rows");
  tell("Investment growth: \"&Graph\" to the painted chart of 40 bars", kFrame, charted());

  // 363 days in the year: the rate of a week is a little more, and so are the payments.
  tab("SSTab1", 1);
  typeAll({{"MTInTerm", "40"}});
  find<QComboBox>("MTFreqPmt")->setCurrentIndex(3);
  find<QRadioButton>("MTIRFactor_5")->click();
  click("MTCalculate");
  const auto ctrlT = [] { QTest::keyClick(window("PQInvest"), Qt::Key_T, Qt::ControlModifier); };
  const auto close = [] { window("PQSchedule")->close(); };
  tell("Mortgage: Ctrl+T to the painted schedule of 480 payments", kFrame,
       watch_.timed("SCResults", ctrlT, close));
  PaintWatch::settle();
  double weekly = 0.0;
  QTimer::singleShot(200, qApp, [&] {
    weekly = watch_.timed("SCResults", [] { find<QRadioButton>("SCKind_1")->click(); });
    if (find<QPlainTextEdit>("SCResults")->toPlainText().count('\n') < 2080)
      qFatal("not 2,080 payments");
    close();
  });
  ctrlT();
  tell("Payment schedule: a click to the painted 2,080 weekly payments", kFrame, weekly);
  click("ExitProgram");
}

void Measurements::manager() {
  if (!find<QPushButton>("StartStockMgmt")->isEnabled()) return;
  tell("\"Investment manager\" to the painted window", kFrame,
       opened("StartStockMgmt", "PQManagement"));

  open(fundSample(599));
  tab("SSTab2", 1);
  find<QComboBox>("EFunds")->setFocus();
  QTest::keyClick(find<QComboBox>("EFunds"), Qt::Key_Down);
  find<QComboBox>("ETransType")->setFocus();
  QTest::keyClick(find<QComboBox>("ETransType"), Qt::Key_Down);
  PaintWatch::settle();
  typeAll(
      {{"EInDate", "1/2/2010"}, {"EInPrice", "12.50"}, {"EInNumShrs", "100"}, {"EInComm", "9.95"}});
  tell("A record added to 599 to the painted list", kFrame, clicked("EAddaRec", "EResults"));
  if (find<QLabel>("ENumRec")->text() != "Records: 600") qFatal("the record was not added");

  tab("SSTab2", 2);
  auto* funds = find<QListWidget>("DDispFunds");
  const QPoint second = funds->visualItemRect(funds->item(1)).center();
  tell("A double click on a fund of 600 records to the painted report", kFrame,
       watch_.timed("DDResults", [&] {
         QTest::mouseClick(funds->viewport(), Qt::LeftButton, {}, second);
         QTest::mouseDClick(funds->viewport(), Qt::LeftButton, {}, second);
       }));
  tell("\"Display All Funds\" with 600 records to the painted report", kFrame,
       clicked("DDisplall", "DDResults"));
  if (find<QPlainTextEdit>("DDResults")->toPlainText().count('\n') < 600) qFatal("not all funds");
}

void Measurements::insights() {
  open(tradedSample(600));
  tab("SSTab2", 3);
  for (int fund = 1; fund <= kMostFunds; ++fund)
    type(qPrintable(QString("CVInPrice_%1").arg(fund)), "20");
  const auto key = [this](const char* painted, const char* in, Qt::Key pressed) {
    return watch_.timed(painted,
                        [&] { QTest::keyClick(window(in), pressed, Qt::ControlModifier); });
  };
  tell("\"Insights\" with 600 records to the painted gains", kFrame,
       key("IVGains", "PQManagement", Qt::Key_I));
  if (find<QLabel>("IVLacking")->isVisible()) qFatal("not all prices");
  tell("Insights: the page of returns to its paint", kFrame,
       key("IVReturn", "PQInsights", Qt::Key_Tab));
  tell("Insights: the page of years to its paint", kFrame,
       key("IVYears", "PQInsights", Qt::Key_Tab));
  tell("Insights: the other method to the painted years", kFrame, clicked("IVMethod_1", "IVYears"));
  if (find<QPlainTextEdit>("IVYears")->toPlainText().contains("Cannot be")) qFatal("not computed");
}

}  // namespace

}  // namespace mirelund::bench

int main(int argc, char** argv) {
  using namespace mirelund;
  // Dates are month, day and year, wherever it runs.
  qputenv("LC_ALL", "en_US.UTF-8");
  const Application application(argc, argv);
  useProgramFont();
  bench::Measurements measurements;
  measurements.calculations();
  bench::PaintWatch::settle();
  measurements.manager();
  bench::PaintWatch::settle();
  measurements.insights();
  std::fflush(stdout);
  std::_Exit(0);  // without the windows' farewell
}

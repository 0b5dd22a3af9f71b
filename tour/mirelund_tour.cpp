// SPDX-License-Identifier: GPL-3.0-or-later
// A walk through the program without a display: drives the real windows with
// key and mouse events, prints the reports it obtains, and leaves pictures (PNG)
// and printouts (PDF) in a folder.
#include <QAction>

#include "application.h"
#include "stage.h"

namespace mirelund::tour {

namespace {

class Tour : Stage {
 public:
  using Stage::Stage;

  void run();

 private:
  void calculators();
  void chart(const QString& name);
  void schedule();
  void tab(int page) { Stage::tab("SSTab1", page); }
  void compoundGain();
};

// Opens the chart, points at a bar, leaves a picture.
void Tour::chart(const QString& name) {
  inDialog("PQGraph", [this, name](QWidget* dialog) {
    shot(dialog, "chart-" + name);
    click("PQGExit");
  });
  click("AllGraphs");
}

// What an extra payment saves.
void Tour::schedule() {
  inDialog("PQSchedule", [this](QWidget* dialog) {
    shot(dialog, "payment-schedule");
    type("SCExtra", "100");
    type("SCYearly", "1000");
    click("SCKind_1");
    report("SCResults");
    shot(dialog, "payment-schedule-extras");
    inDialog("PQGraph", [this](QWidget* chart) {
      shot(chart, "chart-payment-schedule");
      click("PQGExit");
    });
    click("SCGraph");
    click("SCExit");
  });
  find<QAction>("ActionSchedule")->trigger();
}

void Tour::calculators() {
  struct Page {
    int index;
    const char* name;
    const char* prefix;
    const char* option;  // clicked first, if any
  };
  constexpr Page kPages[] = {
      {0, "pension-growth", "PG", nullptr},
      {1, "mortgage", "MT", nullptr},
      {2, "investment-growth", "IG", nullptr},
      {2, "investment-growth-comparison", "IG", "IGResultsChoice_1"},
      {3, "retirement-income-percentage", "RI", nullptr},
      {3, "retirement-income-fixed", "RI", "RIWDrawalChoice_1"},
      {5, "capital-required", "CR", nullptr},
      {5, "capital-required-income", "CR", "CRCapitalChoices_1"},
  };
  for (const Page& page : kPages) {
    heading(page.name);
    tab(4);
    tab(page.index);
    if (page.option != nullptr) click(page.option);
    const QByteArray prefix(page.prefix);
    click(prefix + "Calculate");
    report("Results");
    shot("PQInvest", page.name);
    chart(page.name);
    if (page.index == 1) schedule();
    printing_.setNext(page.name + QString(".pdf"));
    click(prefix + "Print");
    click(prefix + "Help");
    report("Results");
    shot("PQInvest", page.name + QString("-help"));
  }
}

void Tour::compoundGain() {
  heading("Compound gain");
  tab(4);
  type("CGInCostofInvest", "2500");
  type("CGInValueNow", "4000.50");
  type("CGInNumOfYrs", "7");
  click("CGCalculate");
  type("CGInValueNow", "1800");
  click("CGCalculate");
  report("Results");
  shot("PQInvest", "compound-gain");
  printing_.setNext("compound-gain.pdf");
  click("CGPrint");
  chart("compound-gain");
}

void Tour::run() {
  heading("Start");
  program_.start().show();
  shot("PQStart", "start");
  openWindow("StartCalc", "PQInvest");
  for (int page = 0; page < 6; ++page) {
    tab(page);
    shot("PQInvest", QString("page-%1").arg(page));
  }
  compoundGain();
  calculators();
  heading("A message");
  tab(4);
  inDialog("AMsgbox", [this](QWidget* dialog) {
    shot(dialog, "message");
    QTest::keyClick(dialog, Qt::Key_Return);
  });
  click("AllGraphs");
  heading("How to use");
  click("HowToUse");
  report("Results");
  shot("PQInvest", "how-to-use");
  click("ExitProgram");
}

}  // namespace

}  // namespace mirelund::tour

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Dates are typed as month, day and year, wherever the tour plays.
  qputenv("LC_ALL", "en_US.UTF-8");
  const mirelund::Application application(argc, argv);
  // A dialog that nobody expected would wait for an answer.
  constexpr int kPatienceMs = 120'000;
  QTimer::singleShot(kPatienceMs, qApp, [] { qFatal("the tour stands still"); });
  mirelund::useProgramFont();
  const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString("build/tour"));
  folder.mkpath(".");
  mirelund::tour::Tour(folder).run();
  mirelund::tour::manageInvestments(folder);
  return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
// A working day in the investment manager: the sample database looked at, a
// database of one's own made, corrected and saved.
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "stage.h"

namespace mirelund::tour {

namespace {

enum Page { kOpen, kEntry, kDisplay, kCurrentValue, kSave };

class ManagerTour : Stage {
 public:
  using Stage::Stage;

  void run();

 private:
  void lookAtTheSample();
  void valueTheSample();
  void lookIntoTheSample();
  void makeADatabase();
  void correctAndDelete();
  void saveAndLeave();

  void page(Page page) { Stage::tab("SSTab2", page); }
  void shotManager(const QString& name) { shot("PQManagement", "manager-" + name); }
  // A row of a drop-down list, by its popup.
  void choose(const char* list, int row) {
    auto* box = find<QComboBox>(list);
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::keyClick(box->view(), Qt::Key_Home);
    for (int i = 0; i < row; ++i) QTest::keyClick(box->view(), Qt::Key_Down);
    QTest::keyClick(box->view(), Qt::Key_Return);
    activate();
  }
  // A file picked in the dialog that the next action opens.
  void pickFile(const QString& path) {
    inDialog("QFileDialog", [this, path](QWidget* dialog) {
      shotManager("file-page-" + QFileInfo(path).completeBaseName());
      auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
      name->setText(path);
      QTest::keyClick(name, Qt::Key_Return);
    });
  }
  // An answer typed into a small dialog, whose first button is pressed.
  void answer(const char* dialogName, const char* box, const char* text, const char* accept) {
    inDialog(dialogName, [this, box, text, accept](QWidget* dialog) {
      QTest::keyClicks(dialog->findChild<QLineEdit*>(box), text);
      shot(dialog, QString("manager-dialog-") + dialog->objectName());
      QTest::mouseClick(dialog->findChild<QPushButton*>(accept), Qt::LeftButton);
    });
  }
  // Yes to the question that the next action asks; `then` prepares for what follows.
  template <typename Then>
  void sayYes(const QString& picture, Then then) {
    inDialog("AllYesNo", [this, picture, then](QWidget* dialog) {
      shot(dialog, "manager-" + picture);
      then();
      QTest::mouseClick(dialog->findChild<QPushButton*>("AllYes"), Qt::LeftButton);
    });
  }
  // Without a window manager no window becomes active again by itself.
  void activate() {
    window("PQManagement")->activateWindow();
    if (!QTest::qWaitForWindowActive(window("PQManagement"))) qFatal("not active");
  }
  // A click that opens dialogs.
  void clickThrough(const char* button) {
    click(button);
    activate();
  }
  void print(const char* button, const char* header, const QString& file) {
    printing_.setNext(file);
    sayYes("question-print",
           [this, header] { answer("PrinterHeaderInput", "InFName", header, "Acept"); });
    clickThrough(button);
  }
  void record(int transaction, const char* date, std::initializer_list<const char*> values) {
    choose("ETransType", transaction);
    type("EInDate", date);
    for (const char* value : values) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
      QTest::keyClicks(QApplication::focusWidget(), value);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  }
};

void ManagerTour::lookAtTheSample() {
  heading("The sample database");
  pickFile(MIRELUND_SAMPLE);
  page(kOpen);
  QTest::qWait(50);
  activate();
  shotManager("opened");
  choose("EFunds", 0);
  report("EResults");
  shotManager("records");
  print("EPrint", "All records of my first fund", "manager-records.pdf");
  click("EHelp");
  report("EResults");
  shotManager("help");
  click("EHelp");

  heading("Reports");
  page(kDisplay);
  click("DDHelp");
  shotManager("display-help");
  auto* funds = find<QListWidget>("DDispFunds");
  QTest::mouseDClick(funds->viewport(), Qt::LeftButton, {},
                     funds->visualItemRect(funds->item(1)).center());
  funds->setCurrentRow(2);
  QTest::keyClick(funds, Qt::Key_Return);
  report("DDResults");
  shotManager("display-one");
  click("DDisplall");
  report("DDResults");
  shotManager("display-all");
  print("DDPrint", "All funds", "manager-all-funds.pdf");
}

void ManagerTour::valueTheSample() {
  heading("Current value at 20.00");
  page(kCurrentValue);
  click("CVHelp");
  shotManager("value-help");
  for (int fund = 1; fund <= 6; ++fund) type(qPrintable(QString("CVInPrice_%1").arg(fund)), "20");
  click("CVCalc");
  report("CVResults");
  shotManager("value");
  print("CVPrint", "What if all were at 20.00", "manager-value.pdf");
  inDialog("PQGraph", [this](QWidget* dialog) {
    shot(dialog, "chart-manager-gain-dollars");
    click("CVGainPercent");
    shot(dialog, "chart-manager-gain-percent");
    click("CVTotValue");
    shot(dialog, "chart-manager-total-value");
    click("PQGExit");
  });
  click("CVGraph");
}

void ManagerTour::lookIntoTheSample() {
  heading("What the sample earned");
  activate();
  QTest::keyClick(window("PQManagement"), Qt::Key_I, Qt::ControlModifier);
  QWidget* insights = window("PQInsights");
  if (!QTest::qWaitFor([&] { return QApplication::activeWindow() == insights; }))
    qFatal("not active");
  struct Shown {
    const char* report;
    const char* name;
  };
  constexpr Shown kPages[] = {{"IVGains", "gains"}, {"IVReturn", "return"}, {"IVYears", "years"}};
  for (int page = 0; page < 3; ++page) {
    Stage::tab("IVTabs", page);
    report(kPages[page].report);
    shot(insights, QString("insights-") + kPages[page].name);
    click("IVMethod_1");
    shot(insights, QString("insights-%1-first-in-first-out").arg(kPages[page].name));
    click("IVMethod_0");
  }
  printing_.setNext("insights-years.pdf");
  sayYes("question-print-insights",
         [this] { answer("PrinterHeaderInput", "InFName", "Year by year", "Acept"); });
  click("IVPrint");
  inDialog("PQGraph", [this](QWidget* dialog) {
    shot(dialog, "chart-insights");
    click("PQGExit");
  });
  click("IVGraph");
  click("IVExit");
  activate();
}

void ManagerTour::makeADatabase() {
  heading("A database of one's own");
  click("CVExit");
  QTest::qWait(30);
  openWindow("StartStockMgmt", "PQManagement");
  activate();
  shotManager("start");
  for (const char* name : {"Harbour Light & Power", "Meadow Balanced Fund"}) {
    answer("PrinterHeaderInput", "InFName", name, "Acept");
    clickThrough("ECreateFund");
  }
  choose("EFunds", 0);
  choose("ETransType", 0);
  shotManager("bought-empty");
  record(0, "1/15/2020", {"10", "100", "50"});
  record(1, "3/2/2021", {"14.25", "40", "29.95"});
  record(2, "6/30/2020", {"37.5"});
  record(3, "9/30/2020", {"11.2", "3.3482"});
  record(4, "1/4/2021", {"12.50"});
  choose("ETransType", 5);
  type("EInDate", "2/1/2021");
  shotManager("unit-fee");
  record(5, "2/1/2021", {"13", ".5"});
  report("EResults");
  shotManager("entered");
}

void ManagerTour::correctAndDelete() {
  heading("Corrected and deleted");
  answer("FundCurValInput", "FCVIn", "1", "FCVAcept");
  clickThrough("ECorrectRec");
  shotManager("correcting");
  type("EInPrice", "10.5");
  shotManager("correcting-typed");
  click("EAddaRec");
  inDialog("FundCurValInput", [this](QWidget* dialog) {
    QTest::keyClicks(dialog->findChild<QLineEdit*>("FCVIn"), "6");
    sayYes("question-delete", [] {});
    QTest::mouseClick(dialog->findChild<QPushButton*>("FCVAcept"), Qt::LeftButton);
  });
  clickThrough("EDelRec");
  report("EResults");
  shotManager("corrected");
}

void ManagerTour::saveAndLeave() {
  heading("Saved");
  const QString path = folder_.filePath("Mine.PQD");
  QFile::remove(path);
  pickFile(folder_.filePath("Mine"));
  page(kSave);
  QTest::qWait(50);
  activate();
  shotManager("saved");
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) out() << file.readAll() << Qt::endl;
  page(kEntry);
  choose("EFunds", 0);
  record(4, "1/4/2022", {"12.50"});
  sayYes("question-leave", [] {});
  clickThrough("EExit");
  inDialog("AllYesNo", [](QWidget* dialog) {
    QTest::mouseClick(dialog->findChild<QPushButton*>("AllNo"), Qt::LeftButton);
  });
  click("EExit");
}

void ManagerTour::run() {
  program_.start().show();
  openWindow("StartStockMgmt", "PQManagement");
  activate();
  lookAtTheSample();
  valueTheSample();
  lookIntoTheSample();
  makeADatabase();
  correctAndDelete();
  saveAndLeave();
}

}  // namespace

void manageInvestments(const QDir& folder) {
  ManagerTour(folder).run();
}

}  // namespace mirelund::tour

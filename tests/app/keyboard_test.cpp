// SPDX-License-Identifier: GPL-3.0-or-later
// Both windows by the keys alone.
#include <QAbstractItemView>
#include <cmath>

#include "app/filtered_edit.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

namespace {

struct Turn {
  const char* keys;
  Qt::Key key;
  Qt::KeyboardModifiers held;
  int pages;
};
constexpr Turn kTurns[] = {
    {"Ctrl+Tab", Qt::Key_Tab, Qt::ControlModifier, 1},
    {"Ctrl+PageDown", Qt::Key_PageDown, Qt::ControlModifier, 1},
    {"Ctrl+Shift+Tab", Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, -1},
    {"Ctrl+PageUp", Qt::Key_PageUp, Qt::ControlModifier, -1},
};

/// The controls of a page, and of what stands beside the pages, that Tab reaches.
QList<QPointer<QWidget>> controlsOf(QWidget* window) {
  QList<QPointer<QWidget>> found;
  QWidget* control = window->nextInFocusChain();
  for (; control != window; control = control->nextInFocusChain())
    if ((control->focusPolicy() & Qt::TabFocus) != 0 && control->isVisible() &&
        control->isEnabled() && control->focusProxy() == nullptr)
      found << control;
  return found;
}

double luminance(QColor color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

double contrast(QColor one, QColor other) {
  const double a = luminance(one) + 0.05;
  const double b = luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

/// How many pixels differ by 3:1 at least.
int pixelsApart(const QImage& one, const QImage& other) {
  int apart = 0;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x)
      if (contrast(one.pixelColor(x, y), other.pixelColor(x, y)) >= 3.0) ++apart;
  return apart;
}

}  // namespace

class KeyboardTest : public QObject {
  Q_OBJECT

  /// From every control of every page, each way of turning turns once.
  static void turnFromEverywhere(QWidget* window, QTabWidget* tabs,
                                 const std::function<void(int)>& choosePage) {
    const int count = tabs->count();
    int tried = 0;
    for (int page = 0; page < count; ++page) {
      choosePage(page);
      const auto controls = controlsOf(window);
      for (const auto& control : controls)
        for (const Turn& turn : kTurns) {
          tabs->setCurrentIndex(page);
          QVERIFY(control != nullptr);
          control->setFocus();
          QTest::keyClick(control, turn.key, turn.held);
          QVERIFY2(tabs->currentIndex() == (page + turn.pages + count) % count,
                   qPrintable(control->objectName() + " " + turn.keys));
          QVERIFY2(QApplication::focusWidget() != nullptr &&
                       QApplication::focusWidget()->focusPolicy() != Qt::NoFocus,
                   qPrintable(control->objectName() + " " + turn.keys));
          ++tried;
        }
    }
    QVERIFY(tried > 100);
  }

 private slots:
  void calculationsOpensInItsFirstControl_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by key") << true;
    QTest::newRow("by mouse") << false;
  }
  void calculationsOpensInItsFirstControl() {
    QFETCH(bool, byKey);
    ProgramFixture program;
    if (byKey)
      program.key(Qt::Key_Space);
    else
      program.click("StartCalc");
    QVERIFY(program.isActivated(program.window("PQInvest")));
    QCOMPARE(QApplication::focusWidget()->objectName(), "IGInBegBal");
    QTest::keyClicks(QApplication::focusWidget(), "250");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.box("IGInBegBal")->text(), "      $250.00");
  }

  void aTurnedPageStartsInItsFirstControl() {
    ProgramFixture program;
    program.click("StartCalc");
    QVERIFY(program.isActivated(program.window("PQInvest")));
    for (const char* first : {"RIWDrawalChoice_0", "CGInCostofInvest", "CRCapitalChoices_0",
                              "PGInCurrBalance", "MTCompPeriod", "IGInBegBal"}) {
      program.key(Qt::Key_PageDown, Qt::ControlModifier);
      QCOMPARE(QApplication::focusWidget()->objectName(), first);
    }
    // Whoever walks the tabs stays on them, and a button beside the pages keeps it.
    auto* tabs = program.find<QTabWidget>("SSTab1")->tabBar();
    for (QWidget* stays : {static_cast<QWidget*>(tabs), program.find("AllGraphs")}) {
      stays->setFocus();
      program.key(Qt::Key_Tab, Qt::ControlModifier);
      QCOMPARE(QApplication::focusWidget(), stays);
    }
  }

  void pagesTurnFromEveryControlOfTheCalculators() {
    ProgramFixture program;
    program.openCalculations(0);
    turnFromEverywhere(program.window("PQInvest"), program.find<QTabWidget>("SSTab1"),
                       [](int page) { ProgramFixture::choosePage(page); });
  }

  void pagesTurnFromEveryControlOfTheManager() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    auto* tabs = program.find<QTabWidget>("SSTab2");
    turnFromEverywhere(program.manager(), tabs, [tabs](int page) { tabs->setCurrentIndex(page); });
    QVERIFY(program.takeTold().isEmpty());
  }

  // As by the tabs: what the box has to tell is told on its page, and a value that was
  // refused keeps the page; who turns again means it.
  void aTurnLeavesTheBoxFirst() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.choose("ETransType", kBought);
    program.type("EInDate", "99");
    auto* tabs = program.find<QTabWidget>("SSTab2");
    program.key(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(program.takeTold(), QList<int>{30});
    QCOMPARE(tabs->currentIndex(), static_cast<int>(kEntryPage));
    program.key(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(program.takeTold(), {});
    QCOMPARE(tabs->currentIndex(), static_cast<int>(kDisplayPage));
  }

  void theFocusIsSeen_data() {
    QTest::addColumn<bool>("manager");
    QTest::addColumn<QString>("control");
    QTest::addColumn<bool>("dark");
    for (const bool dark : {false, true}) {
      const char* ground = dark ? "dark" : "light";
      QTest::addRow("tab of the calculators, %s", ground) << false << "SSTab1" << dark;
      QTest::addRow("drop-down list, %s", ground) << false << "IGInMonthsYrs" << dark;
      QTest::addRow("report, %s", ground) << false << "Results" << dark;
      QTest::addRow("tab of the manager, %s", ground) << true << "SSTab2" << dark;
      QTest::addRow("green list, %s", ground) << true << "ETransType" << dark;
      QTest::addRow("list, %s", ground) << true << "DDispFunds" << dark;
      QTest::addRow("report of the manager, %s", ground) << true << "DDResults" << dark;
    }
  }
  void theFocusIsSeen() {
    QFETCH(bool, manager);
    QFETCH(QString, control);
    QFETCH(bool, dark);
    const QPalette light = QApplication::palette();
    if (dark) {
      QPalette night(QColor(49, 54, 59), QColor(35, 38, 41));
      QApplication::setPalette(night);
    }
    const auto restored = qScopeGuard([&] { QApplication::setPalette(light); });
    ProgramFixture program;
    program.click(manager ? "StartStockMgmt" : "StartCalc");
    QWidget* window = program.window(manager ? "PQManagement" : "PQInvest");
    QVERIFY(program.isActivated(window));
    if (control.startsWith("DD")) program.find<QTabWidget>("SSTab2")->setCurrentIndex(kDisplayPage);
    auto* widget = program.find(qPrintable(control));
    QWidget* tab = nullptr;
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) widget = tab = tabs->tabBar();
    QWidget* other = program.find(manager ? "EExit" : "ExitProgram");
    if (control.startsWith("DD")) other = program.find("DDExit");
    other->setFocus(Qt::TabFocusReason);
    QVERIFY(!widget->hasFocus());
    const QImage before = widget->grab().toImage();
    widget->setFocus(Qt::TabFocusReason);
    QVERIFY(widget->hasFocus());
    const QImage focused = widget->grab().toImage();
    // A line of one pixel at least around it, or around its tab.
    const QTabBar* bar = qobject_cast<QTabBar*>(tab);
    const QSize size = bar == nullptr ? widget->size() : bar->tabRect(bar->currentIndex()).size();
    const int least = 2 * (size.width() + size.height()) - 40;
    QVERIFY2(pixelsApart(before, focused) >= least,
             qPrintable(QString("%1 of %2").arg(pixelsApart(before, focused)).arg(least)));
    other->setFocus(Qt::TabFocusReason);
    QCOMPARE(widget->grab().toImage(), before);
  }

  void theKeypadsDecimalKeyTypesAPoint_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("point") << ".";
    QTest::newRow("German keypad") << ",";
    QTest::newRow("Arabic keypad") << QString(QChar(0x66B));
  }
  void theKeypadsDecimalKeyTypesAPoint() {
    QFETCH(QString, text);
    const Qt::Key key = text == "." ? Qt::Key_Period : Qt::Key_Comma;
    const auto pressIn = [&](QWidget* box) {
      QTest::sendKeyEvent(QTest::Click, box, key, text, Qt::KeypadModifier);
    };
    {
      ProgramFixture program;
      program.openCalculations(1);
      program.type("MTInRate", "6");
      pressIn(program.box("MTInRate"));
      QTest::keyClicks(program.box("MTInRate"), "5");
      QCOMPARE(program.box("MTInRate")->text(), "6.5");
      program.key(Qt::Key_Tab);
      QCOMPARE(program.global.boxes.MortgageInputs[2], 6.5);
      // The comma of the letters stays none.
      program.type("MTInRate", "7,5");
      QCOMPARE(program.box("MTInRate")->text(), "75");
    }
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.choose("ETransType", kBought);
    program.type("EInDate", "1");
    pressIn(program.box("EInDate"));
    QCOMPARE(program.box("EInDate")->text(), "1.");
    program.box("EInDate")->clear();
    program.type("EInPrice", "12");
    pressIn(program.box("EInPrice"));
    QTest::keyClicks(program.box("EInPrice"), "25");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.box("EInPrice")->text(), "12.2500");
  }

  void enterAndADoubleClickDoTheSame() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.page(kDisplayPage);
    auto* funds = program.find<QListWidget>("DDispFunds");
    QStringList shown;
    const auto take = [&] {
      shown << program.label("DDFund") + '\n' + program.text("DDResults");
      program.click("DDisplall");
    };
    const QPoint birch = funds->visualItemRect(funds->item(1)).center();
    QTest::mouseClick(funds->viewport(), Qt::LeftButton, {}, birch);
    QTest::mouseDClick(funds->viewport(), Qt::LeftButton, {}, birch);
    take();
    funds->setFocus();
    program.key(Qt::Key_Return);
    take();
    funds->setFocus();
    QTest::keyClick(funds, Qt::Key_Enter, Qt::KeypadModifier);
    take();
    QVERIFY(shown[0].startsWith("Birch\n"));
    QCOMPARE(shown[1], shown[0]);
    QCOMPARE(shown[2], shown[0]);
  }

  // What opens is a list too; a single click chooses from it.
  void enterChoosesInEveryDropDownList() {
    const auto chooses = [](QComboBox* list, Qt::Key key) {
      list->setCurrentIndex(0);
      QTest::mouseClick(list, Qt::LeftButton);
      QAbstractItemView* view = list->view();
      QVERIFY(view->isVisible());
      QTest::keyClick(view, Qt::Key_Home);
      QTest::keyClick(view, Qt::Key_Down);
      QTest::keyClick(view, key);
      QVERIFY(!view->isVisible());
      QCOMPARE(list->currentIndex(), 1);
    };
    constexpr Qt::Key kEnters[] = {Qt::Key_Return, Qt::Key_Enter};
    for (const auto& [page, name] :
         {std::pair(1, "MTCompPeriod"), std::pair(1, "MTFreqPmt"), std::pair(2, "IGInMonthsYrs")}) {
      ProgramFixture program;
      program.openCalculations(page);
      for (const Qt::Key key : kEnters) chooses(program.find<QComboBox>(name), key);
    }
    ManagerFixture program;
    program.openFile(kTwoFunds);
    for (const Qt::Key key : kEnters) {
      chooses(program.list("EFunds"), key);
      program.activate();
      chooses(program.list("ETransType"), key);
      program.activate();
      QVERIFY(program.box("EInPrice")->isVisible());
    }
  }

  void deleteKeepsItsMeanings() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.choose("ETransType", kBought);
    program.type("EInPrice", "12");
    program.key(Qt::Key_Delete);  // a box: an edit
    program.list("EFunds")->setFocus();
    program.key(Qt::Key_Delete);  // the funds: nothing
    QCOMPARE(program.list("EFunds")->currentIndex(), 0);
    QVERIFY(program.box("EInPrice")->isVisible());
    program.list("ETransType")->setFocus();
    program.key(Qt::Key_Delete);  // the types: the row is cleared
    QVERIFY(!program.box("EInPrice")->isVisible());
    QCOMPARE(program.list("ETransType")->currentIndex(), -1);
    program.page(kDisplayPage);
    program.find<QListWidget>("DDispFunds")->setFocus();
    program.key(Qt::Key_Delete);
    QCOMPARE(program.find<QListWidget>("DDispFunds")->count(), 2);
    QCOMPARE(program.label("ENumRec"), "Records: 4");
    QVERIFY(program.takeTold().isEmpty() && program.takeAsked().isEmpty());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::KeyboardTest)
#include "keyboard_test.moc"

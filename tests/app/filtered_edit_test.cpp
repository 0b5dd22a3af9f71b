// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/filtered_edit.h"

#include <QAction>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMenu>
#include <QTimer>

#include "calc/box_tables.h"
#include "ui_testing.h"

namespace mirelund::testing {
class FilteredEditTest : public QObject {
  Q_OBJECT

 private slots:
  void everyBox_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("box");
    forEachBox([](int page, const BoxRule& rule) {
      const std::string name(rule.name);
      if (rule.option == 0) QTest::newRow(name.c_str()) << page << QString::fromStdString(name);
    });
  }

  void everyBox() {
    QFETCH(int, page);
    QFETCH(QString, box);
    ProgramFixture program;
    program.openCalculations(page);
    program.find("Results")->setFocus(Qt::OtherFocusReason);  // not in the page's first box
    auto* edit = program.find<BoxEdit>(qPrintable(box));
    if (edit->isReadOnly()) return;
    const BoxRule& rule = edit->rule();
    const QString initial = edit->text();

    // Entered by mouse: the whole text is selected, the clipboard emptied.
    QGuiApplication::clipboard()->setText("77");
    QTest::mouseClick(edit, Qt::LeftButton);
    QCOMPARE(edit->selectedText(), initial);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString());
    QCOMPARE(edit->palette().color(QPalette::Base), QColor(128, 255, 128));

    // Left without typing: nothing changes.
    program.key(Qt::Key_Tab);
    QCOMPARE(edit->text(), initial);

    // The first key replaces the content; what does not pass is swallowed.
    edit->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(edit, "1-2,3$e4");
    const bool isName = rule.filter == KeyFilter::Any;
    QCOMPARE(edit->text(), isName ? "1-2,3$e4" : "1234");

    // All or nothing by the other ways in.
    edit->selectAll();
    QGuiApplication::clipboard()->setText("5x");
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(edit->text(), isName ? "5x" : "1234");
    edit->selectAll();
    QGuiApplication::clipboard()->setText("31");
    QTest::keyClick(edit, Qt::Key_Insert, Qt::ShiftModifier);
    QCOMPARE(edit->text(), "31");

    edit->clear();
    program.drop(edit, "-1");
    QCOMPARE(edit->text(), isName ? "-1" : "");
    edit->clear();
    program.drop(edit, "27");
    QCOMPARE(edit->text(), "27");

    edit->selectAll();
    compose(edit, "\u0663");
    QCOMPARE(edit->text(), isName ? "\u0663" : "27");
    edit->selectAll();
    compose(edit, "12");
    QCOMPARE(edit->text(), "12");

    // Left: stored and redisplayed.
    program.key(Qt::Key_Tab);
    if (!isName) QCOMPARE(edit->text().toStdString(), shownAs(rule, 12));
    QCOMPARE(program.global.boxes.BoxEdited, 0);
  }

  void contextMenuPasteIsFiltered() {
    ProgramFixture program;
    program.openCalculations(4);
    QLineEdit* edit = program.box("CGInCostofInvest");
    QTest::mouseClick(edit, Qt::LeftButton);
    QGuiApplication::clipboard()->setText("12abc");
    pasteFromMenu(edit);
    QCOMPARE(edit->text(), "   $10,000.00");
    QGuiApplication::clipboard()->setText("125");
    pasteFromMenu(edit);
    QCOMPARE(edit->text(), "125");
  }

  void aPasteMayNotAddDecimals() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "1.2");
    QGuiApplication::clipboard()->setText("345");
    QTest::keyClick(program.box("CGInCostofInvest"), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(program.box("CGInCostofInvest")->text(), "1.2");
  }

  void lineBreaksNeverEnterTheName() {
    ProgramFixture program;
    program.openCalculations(4);
    QTest::mouseClick(program.box("CGInNameOfInvest"), Qt::LeftButton);
    QGuiApplication::clipboard()->setText("One\r\ntwo\tthree");
    QTest::keyClick(program.box("CGInNameOfInvest"), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(program.box("CGInNameOfInvest")->text(), "XYZ Mutual Fund");
    QGuiApplication::clipboard()->setText("One two\r\n");
    QTest::keyClick(program.box("CGInNameOfInvest"), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(program.box("CGInNameOfInvest")->text(), "One two");
  }

  void theDeleteKeyMakesAMoneyBoxZero() {
    ProgramFixture program;
    program.openCalculations(4);
    QLineEdit* edit = program.box("CGInCostofInvest");
    QTest::mouseClick(edit, Qt::LeftButton);
    edit->end(false);
    edit->setCursorPosition(4);
    QTest::keyClick(edit, Qt::Key_Delete);
    QVERIFY(edit->text().contains('$'));
    program.key(Qt::Key_Tab);
    QCOMPARE(edit->text(), "         $.00");
    QCOMPARE(program.global.boxes.InputValues[1], Currency());
  }

  void cuttingIsAnEditToo() {
    ProgramFixture program;
    program.openCalculations(4);
    QLineEdit* edit = program.box("CGInCostofInvest");
    program.find("Results")->setFocus(Qt::OtherFocusReason);
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    program.key(Qt::Key_Tab);
    QCOMPARE(edit->text(), "         $.00");
  }

  void enterWalksThePageAndThenCalculates() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "1000");
    program.key(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), "CGInValueNow");
    QTest::keyClicks(QApplication::focusWidget(), "2000");
    program.key(Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), "CGInNumOfYrs");
    program.key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "My fund");
    program.key(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), "CGCalculate");
    QVERIFY(program.results().contains(" 5    1,000.00     2,000.00  14.870%  100.00%"));
    QVERIFY(program.results().contains("Name of investment:                My fund"));
  }

  void fortyOneYearsAreToldOnceAndBecomeForty() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInNumOfYrs", "41");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.prompts.told, QList<int>{5});
    QCOMPARE(program.box("CGInNumOfYrs")->text(), " 40");
    QCOMPARE(program.global.boxes.InputValues[3], Currency::whole(40));
    program.key(Qt::Key_Tab);
    QCOMPARE(program.prompts.told, QList<int>{5});
  }

  void anotherWindowIsNoLeave() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInNumOfYrs", "41");
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QCOMPARE(program.box("CGInNumOfYrs")->text(), "41");
    other.close();
    program.window("PQInvest")->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(program.window("PQInvest")));
    QCOMPARE(program.box("CGInNumOfYrs")->text(), "41");
    QVERIFY(program.prompts.told.isEmpty());
    QTest::keyClicks(program.box("CGInNumOfYrs"), "2");
    QCOMPARE(program.box("CGInNumOfYrs")->text(), "412");
  }

  void aMessageWaitsForTheMouseSoThatTheClickArrives() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInNumOfYrs", "50");
    program.click("CGCalculate");
    QCOMPARE(program.prompts.told, QList<int>{5});
    QVERIFY(program.results().contains("40   10,000.00    20,000.00   1.748%  100.00%"));
  }

  void aRefusedAmountStopsTheCalculation() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "9999999999999999999");
    QTest::keyClick(program.box("CGInCostofInvest"), Qt::Key_C, Qt::AltModifier);
    QTRY_COMPARE(program.prompts.told, QList<int>{3});  // a mnemonic's click shows for a moment
    QCOMPARE(program.results(), "");
    QCOMPARE(program.box("CGInCostofInvest")->text(), "   $10,000.00");
    program.type("CGInCostofInvest", "9999999999999999999");
    program.click("CGCalculate");
    QCOMPARE(program.prompts.told, (QList<int>{3, 3}));
    QCOMPARE(program.results(), "");
  }

  void whatWasToldNoLongerStopsTheNextClick() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "9999999999999999999");
    program.key(Qt::Key_Tab);
    QCOMPARE(program.prompts.told, QList<int>{3});
    // The button has the focus: nothing is left that could be refused.
    program.find("CGCalculate")->setFocus(Qt::TabFocusReason);
    program.key(Qt::Key_Space);
    QVERIFY(program.results().contains(" 5   10,000.00    20,000.00  14.870%  100.00%"));
    // Nor does a press that was taken back, or a click that it stopped.
    program.type("CGInCostofInvest", "9999999999999999999");
    QTest::mousePress(program.find("CGCalculate"), Qt::LeftButton);
    QTest::mouseRelease(program.find("CGCalculate"), Qt::LeftButton, {}, QPoint(-50, -50));
    QTRY_COMPARE(program.prompts.told, (QList<int>{3, 3}));
    program.click("CGCalculate");
    QCOMPARE(program.results().count("14.870%"), 2);
    program.type("CGInCostofInvest", "9999999999999999999");
    program.click("CGHelp");
    QTRY_COMPARE(program.prompts.told, (QList<int>{3, 3, 3}));
    program.click("CGCalculate");
    QCOMPARE(program.results().count("14.870%"), 3);
    QCOMPARE(program.prompts.told, (QList<int>{3, 3, 3}));
  }

  void whatWasTypedIsToldBeforeItsPageOrWindowGoes() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInNumOfYrs", "50");
    int told = 0;
    program.prompts.whileTold = [&] {
      QVERIFY(program.box(told++ == 0 ? "CGInNumOfYrs" : "CRInTimeInYrs")->isVisible());
    };
    program.choosePage(5);
    QCOMPARE(program.prompts.told, QList<int>{5});
    QCOMPARE(program.find<QTabWidget>("SSTab1")->currentIndex(), 5);
    program.type("CRInTimeInYrs", "50");
    program.click("ExitProgram");
    QCOMPARE(program.prompts.told, (QList<int>{5, 5}));
    QTRY_VERIFY(program.window("PQInvest") == nullptr);
    QCOMPARE(told, 2);
  }

  // After the mouse is let go, before what was clicked does anything.
  void whatIsToldStandsAlone_data() {
    QTest::addColumn<QString>("clicked");
    for (const char* clicked : {"AllGraphs", "CGHelp", "CGCalculate", "SSTab1", "ExitProgram"})
      QTest::newRow(clicked) << clicked;
  }

  void whatIsToldStandsAlone() {
    QFETCH(QString, clicked);
    ProgramFixture program;
    program.openCalculations(4);
    program.click("CGCalculate");
    const QString report = program.results();
    program.type("CGInNumOfYrs", "50");
    int told = 0;
    program.prompts.whileTold = [&] {
      if (++told > 1) return;
      QCOMPARE(QGuiApplication::mouseButtons(), Qt::NoButton);
      QCOMPARE(program.prompts.told, QList<int>{5});
      QCOMPARE(program.results(), report);
      QCOMPARE(program.find<QTabWidget>("SSTab1")->currentIndex(), 4);
      QVERIFY(program.window("PQGraph") == nullptr);
    };
    QTimer::singleShot(200, qApp, [] {
      if (QWidget* chart = ProgramFixture::window("PQGraph")) chart->close();
    });
    if (clicked == "SSTab1")
      program.choosePage(5);
    else
      program.click(qPrintable(clicked));
    QTest::qWait(250);
    QCOMPARE(told, 1);
    // And then it takes effect.
    if (clicked == "CGHelp" || clicked == "CGCalculate") QVERIFY(program.results() != report);
    if (clicked == "SSTab1") QCOMPARE(program.find<QTabWidget>("SSTab1")->currentIndex(), 5);
    if (clicked == "ExitProgram") QVERIFY(program.window("PQInvest") == nullptr);
  }

  void aListOpensBehindWhatIsTold() {
    ProgramFixture program;
    program.openCalculations(1);
    program.type("MTInTerm", "50");
    QComboBox* list = program.find<QComboBox>("MTFreqPmt");
    program.prompts.whileTold = [&] { QVERIFY(!list->view()->isVisible()); };
    QTest::mousePress(list, Qt::LeftButton);
    QCOMPARE(program.prompts.told, QList<int>{});
    QTest::mouseRelease(list, Qt::LeftButton);
    QCOMPARE(program.prompts.told, QList<int>{5});
    QVERIFY(list->view()->isVisible());
    list->hidePopup();
  }

  void aRefusalByEnterIsToldOnce() {
    ProgramFixture program;
    program.openCalculations(3);
    program.click("RIWDrawalChoice_1");
    program.type("RIInTimeInYrs", "9999999999999999999");
    program.key(Qt::Key_Return);
    QCOMPARE(program.prompts.told, QList<int>{3});
    QCOMPARE(program.results(), "");
    program.key(Qt::Key_Space);
    QVERIFY(!program.results().isEmpty());
  }

  void chordsTypeNothing() {
    ProgramFixture program;
    program.openCalculations(4);
    for (const char* name : {"CGInCostofInvest", "CGInNumOfYrs", "CGInNameOfInvest"}) {
      QLineEdit* edit = program.box(name);
      const QString before = edit->text();
      QTest::mouseClick(edit, Qt::LeftButton);
      for (const auto held :
           {Qt::KeyboardModifiers(Qt::AltModifier), Qt::MetaModifier | Qt::ControlModifier,
            Qt::AltModifier | Qt::ShiftModifier, Qt::KeyboardModifiers(Qt::MetaModifier)})
        for (const char c : {'5', 'k', '-', '.', '$'}) QTest::keyClick(edit, c, held);
      QCOMPARE(edit->text(), before);
      QCOMPARE(program.global.boxes.BoxEdited, 0);
    }
    // A key of the keypad is no exception, nor is a character without a shape.
    QLineEdit* cost = program.box("CGInCostofInvest");
    QTest::mouseClick(cost, Qt::LeftButton);
    for (const auto& [held, text] :
         {std::pair(Qt::ControlModifier | Qt::KeypadModifier, QString("-")),
          std::pair(Qt::ControlModifier | Qt::KeypadModifier, QString("5")),
          std::pair(Qt::ControlModifier | Qt::ShiftModifier, QString(QChar(0x200C)))}) {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, held, text);
      QApplication::sendEvent(cost, &press);
      QCOMPARE(cost->text(), "   $10,000.00");
    }
    // AltGr, where it is reported as Ctrl+Alt, types.
    QTest::keyClick(program.box("CGInNameOfInvest"), '5', Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(program.box("CGInNameOfInvest")->text(), "5");
  }

  void charactersWithoutAShapeDoNotPass() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "12");
    // Zero-width non-joiner, soft hyphen, private use, beyond the first plane.
    for (const QString& text : {QString(QChar(0x200C)), QString(QChar(0xAD)),
                                QString(QChar(0xE000)), QString::fromUcs4(U"\U0001F600", 1)}) {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
      QApplication::sendEvent(program.box("CGInCostofInvest"), &press);
      QCOMPARE(program.box("CGInCostofInvest")->text(), "12");
    }
  }

  void theDeleteCharacterNeverEnters() {
    ProgramFixture program;
    program.openCalculations(4);
    for (const char* name : {"CGInCostofInvest", "CGInNumOfYrs", "CGInNameOfInvest"}) {
      QLineEdit* edit = program.box(name);
      const QString before = edit->text();
      QTest::mouseClick(edit, Qt::LeftButton);
      QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(QChar(0x7F)));
      QApplication::sendEvent(edit, &press);
      QCOMPARE(edit->text(), before);
      const QString entering = QString("1") + QChar(0x7F) + QString("2");
      QGuiApplication::clipboard()->setText(entering);
      QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
      QCOMPARE(edit->text(), before);
      program.drop(edit, entering);
      QCOMPARE(edit->text(), before);
      compose(edit, entering);
      QCOMPARE(edit->text(), before);
      QCOMPARE(program.global.boxes.BoxEdited, 0);
    }
  }

  void undoingEverythingIsNoEdit() {
    ProgramFixture program;
    program.openCalculations(4);
    QLineEdit* edit = program.box("CGInCostofInvest");
    // A key has emptied the box for good.
    program.type("CGInCostofInvest", "5");
    edit->undo();
    edit->undo();
    QCOMPARE(edit->text(), "");
    program.key(Qt::Key_Tab);
    QCOMPARE(edit->text(), "         $.00");
    // A cut that is undone leaves the value as it was.
    program.type("CGInCostofInvest", "700");
    program.key(Qt::Key_Tab);
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(edit->text(), "");
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(edit->text(), "      $700.00");
    program.key(Qt::Key_Tab);
    QCOMPARE(edit->text(), "      $700.00");
    QCOMPARE(program.global.boxes.InputValues[1], Currency::whole(700));
  }

  void aDropFromTheActiveWindowOfAnotherProgramIsStored() {
    ProgramFixture program;
    program.openCalculations(4);
    program.type("CGInCostofInvest", "700");
    program.key(Qt::Key_Tab);
    program.box("CGInCostofInvest")->setFocus(Qt::TabFocusReason);
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    program.drop(program.box("CGInValueNow"), "500");
    other.close();
    program.window("PQInvest")->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(program.window("PQInvest")));
    program.click("CGCalculate");
    QCOMPARE(program.box("CGInCostofInvest")->text(), "      $700.00");
    QCOMPARE(program.box("CGInValueNow")->text(), "      $500.00");
    QVERIFY(program.results().contains(" 5      700.00       500.00"));
  }

 private:
  static void compose(QLineEdit* edit, const QString& text) {
    QInputMethodEvent preedit(text, {});
    QApplication::sendEvent(edit, &preedit);
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QApplication::sendEvent(edit, &commit);
  }
  static void pasteFromMenu(QLineEdit* edit) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, edit->rect().center(),
                            edit->mapToGlobal(edit->rect().center()));
    QApplication::sendEvent(edit, &event);
    const QPointer<QMenu> menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr);
    int pasted = 0;
    for (QAction* action : menu->actions()) {
      if (!action->text().contains("&Paste")) continue;
      action->trigger();
      ++pasted;
    }
    menu->close();
    QCOMPARE(pasted, 1);
    QTRY_VERIFY(menu == nullptr);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::FilteredEditTest)
#include "filtered_edit_test.moc"

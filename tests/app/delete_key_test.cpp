// SPDX-License-Identifier: GPL-3.0-or-later
// Delete in the boxes of the calculators: the key in all its forms, and the
// character that it stands for.
#include <QClipboard>
#include <QInputMethodEvent>

#include "app/filtered_edit.h"
#include "calc/box_tables.h"
#include "ui_testing.h"

namespace mirelund::testing {

namespace {

constexpr QChar kDelete(127);

// The key as a display reports it: with its character as text.
void pressDelete(QWidget* box, Qt::KeyboardModifiers held = {}) {
  QTest::sendKeyEvent(QTest::Click, box, Qt::Key_Delete, QString(kDelete), held);
}

}  // namespace

class DeleteKeyTest : public QObject {
  Q_OBJECT

 private slots:
  void everyBox_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("name");
    forEachBox([](int page, const BoxRule& rule) {
      const std::string name(rule.name);
      if (rule.option == 0) QTest::newRow(name.c_str()) << page << QString::fromStdString(name);
    });
  }

  void everyBox() {
    QFETCH(int, page);
    QFETCH(QString, name);
    ProgramFixture program;
    program.openCalculations(page);
    program.find("Results")->setFocus(Qt::OtherFocusReason);  // not in the page's first box
    auto* box = program.find<BoxEdit>(qPrintable(name));
    const QString initial = box->text();
    if (box->isReadOnly()) {
      box->setFocus(Qt::TabFocusReason);
      pressDelete(box);
      QCOMPARE(box->text(), initial);
      QCOMPARE(program.global.boxes.BoxEdited, 0);
      return;
    }
    const BoxRule& rule = box->rule();
    const bool isName = rule.look == BoxLook::Text;
    for (const bool reported : {true, false}) {
      // All of it, as it is selected on entry: nothing is left, which is 0.
      QTest::mouseClick(box, Qt::LeftButton);
      if (reported)
        pressDelete(box);
      else
        QTest::keyClick(box, Qt::Key_Delete, Qt::KeypadModifier);
      QCOMPARE(box->text(), "");
      QCOMPARE(program.global.boxes.BoxEdited, 1);
      program.key(Qt::Key_Tab);
      QCOMPARE(box->text().toStdString(), isName ? "" : shownAs(rule, 0.0));
      QCOMPARE(program.global.boxes.BoxEdited, 0);

      // The key behind Delete is not the first, which would replace everything.
      box->setFocus(Qt::TabFocusReason);
      QTest::keyClicks(box, "12");
      program.key(Qt::Key_Tab);
      box->setFocus(Qt::TabFocusReason);
      program.key(Qt::Key_Home);
      const auto before = box->text().indexOf('2');
      QVERIFY(before > 0);
      for (int i = 0; i < before; ++i) pressDelete(box);
      const QString rest = box->text();
      QVERIFY(rest.startsWith('2'));
      const QString next = rule.filter == KeyFilter::Decimal ? "." : "3";
      QTest::keyClicks(box, next);
      QCOMPARE(box->text(), next + rest);
      program.key(Qt::Key_Tab);
      QCOMPARE(box->text().toStdString(), isName ? "32" : shownAs(rule, next == "." ? .2 : 32.0));
    }
  }

  // Nothing stands behind the cursor, yet the box counts as edited: an amount is
  // read as it is shown, and "$" is no number.
  void atTheEndItMakesAnAmountZeroAndKeepsTheRest() {
    ProgramFixture program;
    program.openCalculations(4);
    for (const auto& [name, left] :
         {std::pair("CGInCostofInvest", "         $.00"), std::pair("CGInNumOfYrs", "  5"),
          std::pair("CGInNameOfInvest", "XYZ Mutual Fund")}) {
      QLineEdit* box = program.box(name);
      const QString before = box->text();
      QTest::mouseClick(box, Qt::LeftButton);
      program.key(Qt::Key_End);
      pressDelete(box);
      QCOMPARE(box->text(), before);
      QCOMPARE(program.global.boxes.BoxEdited, 1);
      program.key(Qt::Key_Tab);
      QCOMPARE(box->text(), left);
    }
    QCOMPARE(program.global.boxes.InputValues[1], Currency());
    QCOMPARE(program.global.boxes.InputValues[3], Currency::whole(5));
  }

  void withOtherKeysItDeletesMore() {
    ProgramFixture program;
    program.openCalculations(4);
    QLineEdit* name = program.box("CGInNameOfInvest");
    QTest::mouseClick(name, Qt::LeftButton);
    program.key(Qt::Key_Home);
    pressDelete(name, Qt::ControlModifier);
    QCOMPARE(name->text(), "Mutual Fund");
    QCOMPARE(program.global.boxes.BoxEdited, 1);
    // Backwards it is the first key typed, which replaces the content.
    QLineEdit* cost = program.box("CGInCostofInvest");
    QTest::mouseClick(cost, Qt::LeftButton);
    program.key(Qt::Key_End);
    QTest::keyClick(cost, Qt::Key_Backspace, Qt::ControlModifier);
    QCOMPARE(cost->text(), "");
    program.key(Qt::Key_Tab);
    QCOMPARE(cost->text(), "         $.00");
    // Shift makes it a cut.
    QLineEdit* now = program.box("CGInValueNow");
    QVERIFY(now->hasFocus());
    pressDelete(now, Qt::ShiftModifier);
    QCOMPARE(now->text(), "");
    program.key(Qt::Key_Tab);
    QCOMPARE(now->text(), "         $.00");
  }

  void theCharacterEntersNoBoxByAnyWay() {
    ProgramFixture program;
    program.openCalculations(4);
    for (const char* name : {"CGInCostofInvest", "CGInNumOfYrs", "CGInNameOfInvest"}) {
      QLineEdit* box = program.box(name);
      QTest::mouseClick(box, Qt::LeftButton);
      const QString before = box->text();
      QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(kDelete), Qt::NoModifier);
      QCOMPARE(box->text(), before);
      for (const QString& text :
           {QString(kDelete), QString("1") + kDelete, kDelete + QString("2")}) {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box->text(), before);
        program.drop(box, text);
        QCOMPARE(box->text(), before);
        QInputMethodEvent composed;
        composed.setCommitString(text);
        QApplication::sendEvent(box, &composed);
        QCOMPARE(box->text(), before);
      }
      program.key(Qt::Key_Tab);
      QCOMPARE(box->text(), before);
    }
    program.click("CGCalculate");
    QVERIFY(program.results().contains(" 5   10,000.00    20,000.00  14.870%  100.00%"));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::DeleteKeyTest)
#include "delete_key_test.moc"

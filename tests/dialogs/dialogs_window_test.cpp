// SPDX-License-Identifier: GPL-3.0-or-later
// The small dialogs as the person meets them, over the window in use. Runs under
// a window manager, which decides where a dialog stands.
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

#include "dialogs/dialog_prompts.h"
#include "dialogs/messages.h"
#include "ui_testing.h"

namespace mirelund::testing {

class DialogsWindowTest : public QObject {
  Q_OBJECT

  DialogState state_;
  DialogPrompts prompts_{state_};
  QWidget over_;

  static constexpr int kPatienceMs = 20'000;

  // Looks at the dialog that `show` opens, and must close it. A dialog that never
  // becomes active, or is left open, is closed after a while.
  template <typename Show, typename Look>
  void inDialog(const char* name, Show show, Look look) {
    bool looked = false;
    QElapsedTimer waited;
    waited.start();
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      if (waited.elapsed() > kPatienceMs) dialog->reject();
      if (looked || !dialog->isVisible()) return;
      if (!dialog->isActiveWindow()) {
        dialog->activateWindow();
        return;
      }
      looked = true;
      QCOMPARE(dialog->objectName(), name);
      QCOMPARE(dialog->parentWidget(), &over_);
      QTest::qWait(50);
      look(dialog);
    });
    timer.start(20);
    show();
    QVERIFY(looked);
  }
  static void press(QWidget* dialog, const char* button) {
    QTest::mouseClick(dialog->findChild<QPushButton*>(button), Qt::LeftButton);
  }

 private slots:
  void initTestCase() {
    over_.setGeometry(300, 350, 700, 500);
    over_.show();
    over_.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&over_, 30'000));
    // The window manager's frame arrives on its own time.
    QTRY_VERIFY_WITH_TIMEOUT(over_.frameGeometry() != over_.geometry(), 30'000);
  }

  void aMessageStandsInTheMiddleOfTheWindow() {
    inDialog(
        "AMsgbox", [&] { prompts_.tell(&over_, Message::MostComparisons); },
        [&](QWidget* dialog) {
          QCOMPARE(static_cast<int>(state_.MessageNumber), 8);
          QCOMPARE(dialog->findChild<QLabel*>("AMsgText")->text(), "Maximum comparisons 10.");
          const auto off = [&] {
            return dialog->frameGeometry().center() - over_.frameGeometry().center();
          };
          QTRY_VERIFY2_WITH_TIMEOUT(off().manhattanLength() <= 2,
                                    qPrintable(QString("%1 %2").arg(off().x()).arg(off().y())),
                                    kPatienceMs / 2);
          QTest::keyClick(dialog, Qt::Key_Return);
        });
  }

  void aMessageStaysOnTheScreen() {
    const QRect screen = over_.screen()->availableGeometry();
    over_.move(screen.right() - 50, 350);
    inDialog(
        "AMsgbox", [&] { prompts_.tell(&over_, Message::MostComparisons); },
        [&](QWidget* dialog) {
          QTRY_VERIFY_WITH_TIMEOUT(screen.contains(dialog->frameGeometry()), kPatienceMs / 2);
          QTest::keyClick(dialog, Qt::Key_Return);
        });
    over_.move(300, 350);
  }

  void theLongestMessageIsWhole() {
    inDialog(
        "AMsgbox", [&] { prompts_.tell(&over_, Message::EmptyFund); },
        [&](QWidget* dialog) {
          auto* text = dialog->findChild<QLabel*>("AMsgText");
          QVERIFY(text->height() >= text->heightForWidth(text->width()));
          press(dialog, "AMsgExit");
        });
  }

  void anUnknownMessageIsEmpty() {
    inDialog(
        "AMsgbox", [&] { prompts_.tell(&over_, Message{6}); },
        [&](QWidget* dialog) {
          QCOMPARE(dialog->findChild<QLabel*>("AMsgText")->text(), "");
          QTest::keyClick(dialog, Qt::Key_Escape);
        });
  }

  void yesIsSixAndNoKeepsTheNumber() {
    const auto ask = [&](const char* button) {
      bool answer = false;
      inDialog(
          "AllYesNo", [&] { answer = prompts_.ask(&over_, Question::PrintInColor); },
          [&](QWidget* dialog) {
            QCOMPARE(dialog->findChild<QLabel*>("Label1")->text(), " Print in Color.");
            press(dialog, button);
          });
      return answer;
    };
    QVERIFY(ask("AllYes"));
    QCOMPARE(static_cast<int>(state_.QuestionNumber), 6);
    QVERIFY(!ask("AllNo"));
    QCOMPARE(static_cast<int>(state_.QuestionNumber), 2);
  }

  void mnemonicsAnswerAndEscapeIsNo() {
    bool answer = true;
    inDialog(
        "AllYesNo", [&] { answer = prompts_.ask(&over_, Question::Print); },
        [&](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QVERIFY(!answer);
    inDialog(
        "AllYesNo", [&] { answer = prompts_.ask(&over_, Question::Print); },
        [&](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Y, Qt::AltModifier); });
    QVERIFY(answer);
  }

  void escapeNeverGivesUnsavedChangesUp() {
    bool answer = false;
    inDialog(
        "AllYesNo", [&] { answer = prompts_.ask(&over_, Question::DiscardChanges); },
        [&](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QVERIFY(answer);
    inDialog(
        "AllYesNo", [&] { answer = prompts_.ask(&over_, Question::DiscardChanges); },
        [&](QWidget* dialog) { press(dialog, "AllNo"); });
    QVERIFY(!answer);
    QCOMPARE(static_cast<int>(state_.QuestionNumber), 3);
  }

  void theHeaderLineRefusesTheDoubleQuote() {
    inDialog(
        "PrinterHeaderInput",
        [&] { prompts_.askLine(&over_, "Input", "Type in one line header information."); },
        [&](QWidget* dialog) {
          QCOMPARE(dialog->windowTitle(), "Input");
          QCOMPARE(dialog->findChild<QLabel*>("FName")->text(),
                   "Type in one line header information.");
          QCOMPARE(dialog->findChild<QPushButton*>("Acept")->text(), "Continue &Printout");
          QCOMPARE(dialog->findChild<QPushButton*>("NAcept")->text(), "&Cancel");
          auto* line = dialog->findChild<QLineEdit*>("InFName");
          QTest::keyClicks(line, "My \"funds\"");
          QCOMPARE(line->text(), "My funds");
          QGuiApplication::clipboard()->setText("a\"b");
          QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
          QGuiApplication::clipboard()->setText("a\nb");
          QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
          QCOMPARE(line->text(), "My funds");
          QTest::keyClick(line, Qt::Key_Return);
          QCOMPARE(QApplication::focusWidget()->objectName(), "Acept");
          QVERIFY(dialog->isVisible());
          QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        });
    QCOMPARE(state_.PrintHeader, std::string("My funds"));
  }

  void aCancelledLineIsOne() {
    for (const bool byKey : {true, false}) {
      inDialog(
          "PrinterHeaderInput", [&] { prompts_.askLine(&over_, "&Add Fund Name", "Name"); },
          [&](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), "&Add Fund Name");
            QTest::keyClicks(dialog->findChild<QLineEdit*>("InFName"), "x");
            if (byKey)
              QTest::keyClick(dialog, Qt::Key_Escape);
            else
              press(dialog, "NAcept");
          });
      QCOMPARE(state_.PrintHeader, std::string("1"));
    }
  }

  void enterPressesTheButtonInFocus() {
    state_.PrintHeader = "";
    inDialog(
        "PrinterHeaderInput", [&] { prompts_.askLine(&over_, "Input", "Name"); },
        [&](QWidget* dialog) {
          auto* cancel = dialog->findChild<QPushButton*>("NAcept");
          cancel->setFocus(Qt::TabFocusReason);
          QTest::keyClick(cancel, Qt::Key_Enter, Qt::KeypadModifier);
        });
    QCOMPARE(state_.PrintHeader, std::string("1"));
    std::optional<int> number = 1;
    inDialog(
        "FundCurValInput", [&] { number = prompts_.askRecordNumber(&over_, "Number: "); },
        [&](QWidget* dialog) {
          auto* cancel = dialog->findChild<QPushButton*>("FCVNAcept");
          cancel->setFocus(Qt::TabFocusReason);
          QTest::keyClick(cancel, Qt::Key_Return);
        });
    QCOMPARE(number, std::nullopt);
  }

  void aRecordNumberIsDigits() {
    std::optional<int> number;
    inDialog(
        "FundCurValInput",
        [&] { number = prompts_.askRecordNumber(&over_, "Delete record number: "); },
        [&](QWidget* dialog) {
          QCOMPARE(dialog->findChild<QLabel*>("FName")->text(), "Delete record number: ");
          QTest::keyClicks(dialog->findChild<QLineEdit*>(), "-1x2.");
          QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
        });
    QCOMPARE(number, std::optional<int>(12));
    inDialog(
        "FundCurValInput",
        [&] { number = prompts_.askRecordNumber(&over_, "Correct record number: "); },
        [&](QWidget* dialog) {
          QTest::keyClicks(dialog->findChild<QLineEdit*>(), "99999999999999999999");
          press(dialog, "FCVAcept");
        });
    QCOMPARE(number, std::optional<int>(0));
    inDialog(
        "FundCurValInput",
        [&] { number = prompts_.askRecordNumber(&over_, "Correct record number: "); },
        [&](QWidget* dialog) { press(dialog, "FCVNAcept"); });
    QVERIFY(!number.has_value());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::DialogsWindowTest)
#include "dialogs_window_test.moc"

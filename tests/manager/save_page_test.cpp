// SPDX-License-Identifier: GPL-3.0-or-later
// Saving over what somebody else has written, and where nothing can be written.
#include <signal.h>
#include <sys/resource.h>

#include <QMessageBox>

#include "manager/manager_window.h"
#include "program/real_program.h"

namespace mirelund::testing {

namespace {

const QString kChanged =
    "test.PQD has been changed by another program since it was opened or saved here.";
const QByteArray kTheirs = QByteArray(kTwoFunds).replace("12.5", "13.5");

}  // namespace

class SavePageTest : public QObject {
  Q_OBJECT

  // A file with one more record than it had when it was opened.
  static void change(ManagerFixture& program) {
    program.openFile(kTwoFunds);
    program.choose("EFunds", 0);
    program.record(kFeeCash, "1/1/2021", {"3"});
  }
  static void save(ManagerFixture& program, const QString& name) {
    program.prompts.paths = {program.path(name)};
    program.page(kSavePage);
  }
  static bool isUnsaved(ManagerFixture& program) {
    program.prompts.answers = {true};
    program.manager()->close();
    return program.takeAsked() == QList<int>{3};
  }

 private slots:
  void whatAnotherProgramChangedIsAskedAbout_data() {
    QTest::addColumn<bool>("replaces");
    QTest::newRow("cancel") << false;
    QTest::newRow("replace it") << true;
  }

  void whatAnotherProgramChangedIsAskedAbout() {
    QFETCH(bool, replaces);
    ManagerFixture program;
    change(program);
    program.file("test.PQD", kTheirs);
    program.prompts.answers = {replaces};
    save(program, "test.PQD");
    QCOMPARE(program.prompts.confirmed, QStringList{kChanged});
    QCOMPARE(program.takeTold(), QList<int>{});
    QVERIFY(program.prompts.warned.isEmpty());
    if (!replaces) QCOMPARE(program.bytes("test.PQD"), kTheirs);
    if (replaces) QVERIFY(program.bytes("test.PQD").startsWith("5,2,"));
    QCOMPARE(isUnsaved(program), !replaces);
    if (replaces) return;
    // Under another name, nobody is asked.
    save(program, "mine.PQD");
    QCOMPARE(program.prompts.confirmed.size(), 1);
    QVERIFY(program.bytes("mine.PQD").startsWith("5,2,"));
    QVERIFY(!isUnsaved(program));
  }

  void aFileThatIsGoneIsWrittenAnew() {
    ManagerFixture program;
    change(program);
    QVERIFY(QFile::remove(program.path("test.PQD")));
    save(program, "test.PQD");
    QVERIFY(program.prompts.confirmed.isEmpty());
    QVERIFY(program.bytes("test.PQD").startsWith("5,2,"));
  }

  // Two windows on one file: nobody's records go without a word.
  void twoWindowsOnOneFile() {
    ManagerFixture mine;
    change(mine);
    QWidget* const myWindow = mine.manager();
    const QString path = mine.path("test.PQD");
    Global global;
    FakePrompts prompts;
    prompts.paths = {path, path, path};
    prompts.answers = {false, true};
    const auto theirs = std::make_unique<PQManagement>(
        PQManagement::Parts{global, prompts, mine.printing, [](QWidget*) {}, {}});
    const auto press = [](const QWidget* window, int page, const char* button) {
      window->findChild<QTabWidget*>("SSTab2")->setCurrentIndex(page);
      window->findChild<QPushButton*>(button)->click();
    };
    press(theirs.get(), kOpenPage, "OFOpen");
    QCOMPARE(theirs->findChild<QLabel*>("ENumRec")->text(), "Records: 4");
    mine.prompts.paths = {path, path};
    press(myWindow, kSavePage, "SFSave");
    QVERIFY(mine.prompts.confirmed.isEmpty());
    const QByteArray saved = mine.bytes("test.PQD");
    QVERIFY(saved.startsWith("5,2,"));
    press(theirs.get(), kSavePage, "SFSave");
    QCOMPARE(prompts.confirmed, QStringList{kChanged});
    QCOMPARE(mine.bytes("test.PQD"), saved);
    press(theirs.get(), kSavePage, "SFSave");
    QCOMPARE(prompts.confirmed.size(), 2);
    QCOMPARE(mine.bytes("test.PQD"), kTwoFunds);
    // And back again.
    mine.prompts.answers = {true};
    press(myWindow, kSavePage, "SFSave");
    QCOMPARE(mine.prompts.confirmed, QStringList{kChanged});
    QCOMPARE(mine.bytes("test.PQD"), saved);
  }

  void aFullDiskIsToldAsWhatItIs() {
    ManagerFixture program;
    change(program);
    signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit little{10, usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &little);
    save(program, "test.PQD");
    setrlimit(RLIMIT_FSIZE, &usual);
    QCOMPARE(program.takeTold(), QList<int>{25});
    QCOMPARE(program.prompts.warned, QStringList{"There is not enough space for the file."});
    QCOMPARE(program.bytes("test.PQD"), kTwoFunds);
    // Where the name is to blame, the message has said it.
    save(program, "no/such/folder.PQD");
    QCOMPARE(program.takeTold(), QList<int>{25});
    QCOMPARE(program.prompts.warned.size(), 1);
  }

  void theQuestionCancelsUnlessItIsMeant_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"Return", "Escape", "Cancel", "Replace it"}) QTest::newRow(way) << way;
  }

  void theQuestionCancelsUnlessItIsMeant() {
    QFETCH(QString, way);
    Global global;
    DialogPrompts prompts(global.dialogs);
    QWidget over;
    over.show();
    bool replaces = false;
    play([&] { replaces = prompts.confirm(&over, kChanged, "Replace it"); }, {[&](QDialog* dialog) {
           const auto* box = qobject_cast<QMessageBox*>(dialog);
           QCOMPARE(box->text(), kChanged);
           if (way == "Return") press(dialog, Qt::Key_Return);
           if (way == "Escape") press(dialog, Qt::Key_Escape);
           for (QAbstractButton* button : box->buttons())
             if (button->text().remove('&') == way) QTest::mouseClick(button, Qt::LeftButton);
         }});
    QCOMPARE(replaces, way == "Replace it");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::SavePageTest)
#include "save_page_test.moc"

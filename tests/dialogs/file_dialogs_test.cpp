// SPDX-License-Identifier: GPL-3.0-or-later
// The platform's open and save dialogs as the person meets them, and what the
// program asks beside them.
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QTreeView>

#include "dialogs/dialog_prompts.h"
#include "dialogs/playing.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

namespace {

// Whatever is written at home is written here.
const QTemporaryDir kHome;
const bool kOwnSettings =
    qputenv("HOME", kHome.path().toUtf8()) && qputenv("XDG_CONFIG_HOME", kHome.path().toUtf8());

const QString kDatabases = "Investment Manager Database (*.PQD)";
const QString kDocuments = "PDF document (*.pdf)";
const QString kTables = "Comma-separated values (*.csv);;Spreadsheet (*.xlsx)";

QLineEdit* nameOf(QDialog* dialog) {
  return dialog->findChild<QLineEdit*>("fileNameEdit");
}

// The list of files, in one of its two forms.
QAbstractItemView* listOf(QDialog* dialog) {
  auto* details = dialog->findChild<QTreeView*>("treeView");
  if (details->isVisible()) return details;
  return dialog->findChild<QListView*>("listView");
}

void enterName(QDialog* dialog, const QString& name) {
  QCOMPARE(QApplication::focusWidget(), nameOf(dialog));
  press(dialog, Qt::Key_A, Qt::ControlModifier);
  press(dialog, Qt::Key_Delete);
  type(dialog, name);
  QCOMPARE(nameOf(dialog)->text(), name);
  press(dialog, Qt::Key_Return);
}
void click(QDialog* dialog, QDialogButtonBox::StandardButton which) {
  auto* buttons = dialog->findChild<QDialogButtonBox*>("buttonBox");
  QTest::mouseClick(buttons->button(which), Qt::LeftButton);
}

}  // namespace

class FileDialogsTest : public QObject {
  Q_OBJECT

  std::unique_ptr<QTemporaryDir> folder_;
  Global global_;
  DialogPrompts prompts_{global_.dialogs};
  std::unique_ptr<QWidget> over_;

  QString path(const QString& name) const { return folder_->filePath(name); }
  void make(const QString& name, const QByteArray& bytes = "old") const {
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  QByteArray bytes(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
  }

  QString save(const QString& initial, const std::vector<Step>& steps,
               const QString& filter = kDatabases) {
    QString got = "(nothing)";
    play([&] { got = prompts_.askSavePath(over_.get(), "Save database", initial, filter); }, steps);
    return got;
  }
  QString open(const QString& initial, const std::vector<Step>& steps) {
    QString got = "(nothing)";
    play([&] { got = prompts_.askOpenPath(over_.get(), "Open database", initial, kDatabases); },
         steps);
    return got;
  }

  // Steps.
  static Step name(const QString& typed) {
    return [typed](QDialog* dialog) {
      QVERIFY(qobject_cast<QFileDialog*>(dialog));
      enterName(dialog, typed);
    };
  }
  static Step cancel() {
    return [](QDialog* dialog) { press(dialog, Qt::Key_Escape); };
  }
  // The platform's question, over the file dialog; its answer by mouse.
  static Step itAsks(const QString& file, QMessageBox::StandardButton answer) {
    return [file, answer](QDialog* dialog) {
      QVERIFY(qobject_cast<QFileDialog*>(dialog->parentWidget()));
      verifyQuestion(dialog, file);
      QTest::mouseClick(qobject_cast<QMessageBox*>(dialog)->button(answer), Qt::LeftButton);
    };
  }
  // The program's own question, over its window.
  Step theProgramAsks(const QString& file, const Step& answer) {
    return [this, file, answer](QDialog* dialog) {
      QCOMPARE(dialog->parentWidget(), over_.get());
      QCOMPARE(qobject_cast<QMessageBox*>(dialog)->icon(), QMessageBox::Question);
      verifyQuestion(dialog, file);
      answer(dialog);
    };
  }
  static void verifyQuestion(QDialog* dialog, const QString& file) {
    auto* box = qobject_cast<QMessageBox*>(dialog);
    QVERIFY(box != nullptr);
    QCOMPARE(box->windowTitle(), "Save database");
    QCOMPARE(box->findChild<QLabel*>("qt_msgbox_label")->text(),
             file + " already exists.\nDo you want to replace it?");
    QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
  }
  static Step answer(QMessageBox::StandardButton which) {
    return [which](QDialog* dialog) {
      QTest::mouseClick(qobject_cast<QMessageBox*>(dialog)->button(which), Qt::LeftButton);
    };
  }
  static Step key(Qt::Key which, Qt::KeyboardModifiers held = Qt::NoModifier) {
    return [which, held](QDialog* dialog) { press(dialog, which, held); };
  }

 private slots:
  void initTestCase() {
    QVERIFY(kOwnSettings);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  }
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    over_ = std::make_unique<QWidget>();
    over_->resize(700, 500);
    over_->show();
    QVERIFY(ProgramFixture::isActivated(over_.get()));
  }
  void cleanup() { over_.reset(); }

  // --- opening --------------------------------------------------------------------

  void opensTheNameTyped() {
    make("Mine.PQD");
    make("sub/Other.PQD");
    QCOMPARE(open(path(""), {name("Mine.PQD")}), path("Mine.PQD"));
    QCOMPARE(open(path(""), {name(path("sub/Other.PQD"))}), path("sub/Other.PQD"));
    QCOMPARE(open(path(""), {name("sub/Other.PQD")}), path("sub/Other.PQD"));
  }

  void opensWhatIsChosenByTheMouse() {
    make("Mine.PQD");
    const Step choose = [](QDialog* dialog) {
      auto* list = listOf(dialog);
      const auto row = [list] { return list->model()->index(0, 0, list->rootIndex()); };
      QTRY_COMPARE(row().data().toString(), "Mine.PQD");
      QTRY_VERIFY(list->visualRect(row()).isValid());
      const QPoint place = list->viewport()->mapTo(dialog, list->visualRect(row()).center());
      QTest::mouseClick(dialog->windowHandle(), Qt::LeftButton, {}, place);
      QTRY_COMPARE(nameOf(dialog)->text(), "Mine.PQD");
      click(dialog, QDialogButtonBox::Open);
    };
    QCOMPARE(open(path(""), {choose}), path("Mine.PQD"));
  }

  // What is typed faster than the dialog goes changes what it shows, and no more.
  void theNameThatWasAcceptedCounts() {
    make("Mine.PQD");
    make("Minex.PQD");
    const Step hasty = [](QDialog* dialog) {
      enterName(dialog, "Mine.PQD");
      type(dialog, "x");
      QVERIFY(nameOf(dialog)->text() != "Mine.PQD");
    };
    QCOMPARE(open(path(""), {hasty}), path("Mine.PQD"));
    const Step hastyNew = [](QDialog* dialog) {
      enterName(dialog, "New.PQD");
      type(dialog, "x");
    };
    QCOMPARE(save(path(""), {hastyNew}), path("New.PQD"));
  }

  void startsWithTheFileOfBefore() {
    make("sub/Mine.PQD");
    make("sub/Other.PQD");
    QCOMPARE(open(path("sub/Mine.PQD"), {[this](QDialog* dialog) {
                    QCOMPARE(dialog->windowTitle(), "Open database");
                    QCOMPARE(dialog->parentWidget(), over_.get());
                    QCOMPARE(nameOf(dialog)->text(), "Mine.PQD");
                    press(dialog, Qt::Key_Return);
                  }}),
             path("sub/Mine.PQD"));
    QCOMPARE(open(path("sub/Mine.PQD"), {name("Other.PQD")}), path("sub/Other.PQD"));
  }

  void showsDatabasesAndFoldersAlone() {
    make("a.PQD");
    make("b.pqd");  // as another system may have named it
    make("c.txt");
    make("d.PQD.bak");
    make("PQD");
    make("sub/e.PQD");
    open(path(""), {[](QDialog* dialog) {
           auto* types = dialog->findChild<QComboBox*>("fileTypeCombo");
           QCOMPARE(types->count(), 1);
           QCOMPARE(types->currentText(), kDatabases);
           auto* list = listOf(dialog);
           const auto shown = [&] {
             QStringList names;
             for (int i = 0; i < list->model()->rowCount(list->rootIndex()); ++i)
               names << list->model()->index(i, 0, list->rootIndex()).data().toString();
             names.sort();
             return names;
           };
           QTRY_COMPARE(shown(), (QStringList{"a.PQD", "b.pqd", "sub"}));
           press(dialog, Qt::Key_Escape);
         }});
  }

  void whatIsNotThereIsNotOpened() {
    make("Mine.PQD");
    QCOMPARE(open(path(""), {name("Yours.PQD"),
                             [](QDialog* dialog) {
                               auto* box = qobject_cast<QMessageBox*>(dialog);
                               QVERIFY(box != nullptr);
                               QVERIFY(box->text().startsWith("Yours.PQD\nFile not found."));
                               press(dialog, Qt::Key_Return);
                             },
                             name("Mine.PQD")}),
             path("Mine.PQD"));
  }

  void cancelledIsNoPath_data() {
    QTest::addColumn<bool>("saving");
    QTest::addColumn<bool>("byKey");
    for (const bool saving : {false, true})
      for (const bool byKey : {false, true})
        QTest::addRow("%s by %s", saving ? "saving" : "opening", byKey ? "key" : "mouse")
            << saving << byKey;
  }

  void cancelledIsNoPath() {
    QFETCH(bool, saving);
    QFETCH(bool, byKey);
    make("Mine.PQD");
    const Step leave = [byKey](QDialog* dialog) {
      type(dialog, "x");
      // What the name completes to is shown in a popup, which goes first.
      if (auto* popup = QApplication::activePopupWidget()) popup->close();
      if (byKey)
        press(dialog, Qt::Key_Escape);
      else
        click(dialog, QDialogButtonBox::Cancel);
    };
    const QString got = saving ? save(path("Mine.PQD"), {leave}) : open(path("Mine.PQD"), {leave});
    QCOMPARE(got, QString());
    QCOMPARE(bytes("Mine.PQD"), "old");
  }

  // --- saving ---------------------------------------------------------------------

  void aNameGetsItsEnding_data() {
    QTest::addColumn<QString>("initial");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("saved");
    QTest::newRow("none") << ""
                          << "Mine"
                          << "Mine.PQD";
    QTest::newRow("typed in full") << ""
                                   << "Mine.PQD"
                                   << "Mine.PQD";
    QTest::newRow("another") << ""
                             << "Mine.txt"
                             << "Mine.txt";
    QTest::newRow("begins with a point") << ""
                                         << ".mine"
                                         << ".mine.PQD";
    QTest::newRow("begins with a point, and has one") << ""
                                                      << ".mine.PQD"
                                                      << ".mine.PQD";
    QTest::newRow("blanks") << ""
                            << "My own funds"
                            << "My own funds.PQD";
    QTest::newRow("a folder with a point") << "my.funds/"
                                           << "Mine"
                                           << "my.funds/Mine.PQD";
    QTest::newRow("a folder with a point, typed") << ""
                                                  << "my.funds/Mine"
                                                  << "my.funds/Mine.PQD";
    QTest::newRow("a folder that begins with one") << ".funds/"
                                                   << ".mine"
                                                   << ".funds/.mine.PQD";
    QTest::newRow("in place of another name") << "Old.PQD"
                                              << "Mine"
                                              << "Mine.PQD";
  }

  void aNameGetsItsEnding() {
    QFETCH(QString, initial);
    QFETCH(QString, typed);
    QFETCH(QString, saved);
    for (const char* folder : {"my.funds", ".funds"}) QDir(path("")).mkdir(folder);
    QCOMPARE(save(path(initial), {name(typed)}), path(saved));
    const QString whole = QFileInfo(path(saved)).path() + "/" + QFileInfo(typed).fileName();
    QCOMPARE(save(path(""), {name(whole)}), path(saved));
  }

  void aDocumentGetsItsOwn() {
    QCOMPARE(save(path("Mirelund report.pdf"), {name("Mine")}, kDocuments), path("Mine.pdf"));
    QCOMPARE(save(path("Mirelund report.pdf"), {name(".mine")}, kDocuments), path(".mine.pdf"));
    QCOMPARE(save(path("Mirelund report.pdf"), {key(Qt::Key_Return)}, kDocuments),
             path("Mirelund report.pdf"));
    make("Mine.pdf");
    make("Mine.PQD");
    QCOMPARE(save(path(""), {name("Mine"), theProgramAsks("Mine.pdf", answer(QMessageBox::Yes))},
                  kDocuments),
             path("Mine.pdf"));
  }

  void aNameTypedInFullIsAskedForByTheDialogAlone() {
    make("Mine.PQD");
    QCOMPARE(save(path(""), {name("Mine.PQD"), itAsks("Mine.PQD", QMessageBox::Yes)}),
             path("Mine.PQD"));
    // No leads back to the dialog; Cancel there is no path.
    QCOMPARE(
        save(path(""), {name("Mine.PQD"), itAsks("Mine.PQD", QMessageBox::No), name("Other.PQD")}),
        path("Other.PQD"));
    QCOMPARE(save(path(""), {name("Mine.PQD"), itAsks("Mine.PQD", QMessageBox::No), cancel()}),
             QString());
    QCOMPARE(bytes("Mine.PQD"), "old");
  }

  void aNameThatGotItsEndingIsAskedForByTheProgram_data() {
    QTest::addColumn<QString>("typed");
    for (const char* typed : {"Mine", ".mine", "my.funds/Mine"}) QTest::newRow(typed) << typed;
  }

  void aNameThatGotItsEndingIsAskedForByTheProgram() {
    QFETCH(QString, typed);
    const QString whole = typed + ".PQD";
    const QString file = QFileInfo(whole).fileName();
    make(whole);
    const auto yes = theProgramAsks(file, answer(QMessageBox::Yes));
    QCOMPARE(save(path(""), {name(typed), yes}), path(whole));
    QCOMPARE(save(path(""), {name(typed), theProgramAsks(file, key(Qt::Key_Y, Qt::AltModifier))}),
             path(whole));

    // No, by any way, leads back to the dialog with the whole name in its folder.
    for (const Step& no :
         {answer(QMessageBox::No), key(Qt::Key_N, Qt::AltModifier), key(Qt::Key_Escape)}) {
      const Step back = [&](QDialog* dialog) {
        auto* again = qobject_cast<QFileDialog*>(dialog);
        QVERIFY(again != nullptr);
        QCOMPARE(nameOf(again)->text(), file);
        QCOMPARE(again->directory().absolutePath(), QFileInfo(path(whole)).absolutePath());
        QCOMPARE(again->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(again->selectedNameFilter(), kDatabases);
      };
      const auto then = [&](const Step& next) {
        return Step([back, next](QDialog* dialog) {
          back(dialog);
          next(dialog);
        });
      };
      const Step asked = theProgramAsks(file, no);
      QCOMPARE(save(path(""), {name(typed), asked, then(cancel())}), QString());
      QCOMPARE(save(path(""), {name(typed), asked, then(name("Another"))}),
               QFileInfo(path(whole)).path() + "/Another.PQD");
      // The name is now whole: the dialog asks.
      QCOMPARE(save(path(""), {name(typed), asked, then(key(Qt::Key_Return)),
                               itAsks(file, QMessageBox::Yes)}),
               path(whole));
      // And a name without its ending is asked for by the program again.
      QCOMPARE(save(path(""), {name(typed), asked, then(name(QFileInfo(typed).fileName())), yes}),
               path(whole));
    }
    QCOMPARE(bytes(whole), "old");
  }

  void enterNeverReplaces() {
    make("Mine.PQD");
    const Step enter = key(Qt::Key_Return);
    QCOMPARE(save(path(""), {name("Mine"), theProgramAsks("Mine.PQD", enter), cancel()}),
             QString());
    // As in the platform's question.
    QCOMPARE(save(path(""), {name("Mine.PQD"), enter, cancel()}), QString());
  }

  // --- the whole way --------------------------------------------------------------

  void theManagerOpensAndSavesByThem() {
    make("test.PQD", kTwoFunds);
    PdfTarget printing;
    Global global;
    DialogPrompts prompts(global.dialogs);
    Program program(prompts, printing, global);
    program.start().show();
    QVERIFY(ProgramFixture::isActivated(&program.start()));
    ManagerFixture::click("StartStockMgmt");
    QVERIFY(ProgramFixture::isActivated(ManagerFixture::manager()));
    const std::unique_ptr<QWidget> manager(ManagerFixture::manager());

    play([] { ManagerFixture::page(kOpenPage); }, {name(path("test.PQD"))});
    QCOMPARE(ManagerFixture::label("ENumRec"), "Records: 4");
    QCOMPARE(ManagerFixture::label("EDatabase"), "Database: test.PQD");

    const auto pressed = [](const char* button) {
      return [button] { ManagerFixture::click(button); };
    };
    play([] { ManagerFixture::page(kSavePage); }, {[](QDialog* dialog) {
           QCOMPARE(nameOf(dialog)->text(), "test.PQD");
           enterName(dialog, "copy");
         }});
    QCOMPARE(ManagerFixture::label("SFDone"), "Saved as " + path("copy.PQD") + ".");
    QCOMPARE(bytes("copy.PQD"), kTwoFunds);

    make("other.PQD");
    const Step no = [](QDialog* dialog) {
      QCOMPARE(dialog->parentWidget(), ManagerFixture::manager());
      verifyQuestion(dialog, "other.PQD");
      press(dialog, Qt::Key_Escape);
    };
    play(pressed("SFSave"), {name("other"), no, cancel()});
    QCOMPARE(ManagerFixture::label("SFDone"), " ");
    QCOMPARE(ManagerFixture::label("EDatabase"), "Database: copy.PQD");
    QCOMPARE(bytes("other.PQD"), "old");
    play(pressed("SFSave"), {name("other"), answer(QMessageBox::Yes)});
    QCOMPARE(ManagerFixture::label("EDatabase"), "Database: other.PQD");
    QCOMPARE(bytes("other.PQD"), kTwoFunds);

    // What cannot be opened is told in the program's own dialog.
    make("bad.PQD", "rubbish");
    const Step told = [](QDialog* dialog) {
      QCOMPARE(dialog->objectName(), "AMsgbox");
      QVERIFY(dialog->findChild<QLabel*>("AMsgText")->text().startsWith("File not found or wrong"));
      press(dialog, Qt::Key_Return);
    };
    play([] { ManagerFixture::page(kOpenPage); }, {name("bad.PQD"), told});
    QCOMPARE(ManagerFixture::label("EDatabase"), "Database: other.PQD");
  }

  void aPrintoutWithoutAPrinterIsADocument() {
    if (!QPrinterInfo::availablePrinterNames().isEmpty()) QSKIP("there is a printer");
    SystemPrintTarget printing(prompts_);
    const auto printed = [&](const std::vector<Step>& steps) {
      bool done = false;
      play([&] { done = PrintReport("One\r\n", 11, printing, prompts_, over_.get()); }, steps);
      return done;
    };
    const Step suggested = [this](QDialog* dialog) {
      QCOMPARE(dialog->windowTitle(), "No printer found: save as PDF");
      QCOMPARE(nameOf(dialog)->text(), "Mirelund report.pdf");
      enterName(dialog, path("Mine"));
    };
    QVERIFY(printed({suggested}));
    QVERIFY(bytes("Mine.pdf").startsWith("%PDF-"));
    QVERIFY(!printed({cancel()}));
  }

  // A dialog that kept its settings would write them when it goes.
  void nothingIsWrittenThatNobodyNamed() {
    open(path(""), {cancel()});
    save(path(""), {cancel()});
    QSettings(QSettings::UserScope, "QtProject").setValue("written", true);
    const QDir home(kHome.path());
    QCOMPARE(home.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
  }

  // --- one of several kinds -------------------------------------------------------

  void theEndingTypedDecidesTheKindElseTheFilterChosen_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("got");
    QTest::newRow("none") << "mine" << 0 << "mine.csv";
    QTest::newRow("none, the other chosen") << "mine" << 1 << "mine.xlsx";
    QTest::newRow("the first") << "mine.csv" << 0 << "mine.csv";
    QTest::newRow("the second, whatever is chosen") << "mine.xlsx" << 0 << "mine.xlsx";
    QTest::newRow("in capitals") << "mine.XLSX" << 0 << "mine.XLSX";
    QTest::newRow("no kind of these") << "mine.txt" << 0 << "mine.txt.csv";
    QTest::newRow("a point in a name") << "fund 3.5" << 1 << "fund 3.5.xlsx";
  }

  void theEndingTypedDecidesTheKindElseTheFilterChosen() {
    QFETCH(QString, typed);
    QFETCH(int, filter);
    QFETCH(QString, got);
    const Step enter = [&](QDialog* dialog) {
      auto* types = dialog->findChild<QComboBox*>("fileTypeCombo");
      QCOMPARE(types->count(), 2);
      types->setFocus();
      for (int i = 0; i < filter; ++i) QTest::keyClick(types, Qt::Key_Down);
      nameOf(dialog)->setFocus();
      enterName(dialog, typed);
    };
    QCOMPARE(save(path("x.csv"), {enter}, kTables), path(got));
  }

  void theNameWithTheEndingAddedIsAskedAbout() {
    make("mine.csv");
    QCOMPARE(save(path("x.csv"),
                  {name("mine"), theProgramAsks("mine.csv",
                                                [](QDialog* dialog) {
                                                  QTest::mouseClick(
                                                      qobject_cast<QMessageBox*>(dialog)->button(
                                                          QMessageBox::Yes),
                                                      Qt::LeftButton);
                                                })},
                  kTables),
             path("mine.csv"));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::FileDialogsTest)
#include "file_dialogs_test.moc"

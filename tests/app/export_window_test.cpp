// SPDX-License-Identifier: GPL-3.0-or-later
// Ctrl+E on every page of both windows, and what is written, asked and told then.
#include <QAction>
#include <map>

#include "app/export_command.h"
#include "manager/manager_testing.h"

namespace mirelund::testing {

namespace {

/// Keeps in memory what is written; some names fail.
class MemoryStore : public FileStore {
 public:
  FileRead read(const std::string& path, std::size_t /*most*/) override {
    return {{}, written[path]};
  }
  FileFailure replace(const std::string& path, std::string_view bytes,
                      const std::optional<std::string>& /*expected*/) override {
    tried << QString::fromStdString(path);
    busy = busy && QGuiApplication::overrideCursor() != nullptr;
    const auto failure = failures.find(path);
    if (failure != failures.end()) return failure->second;
    written[path] = bytes;
    return FileFailure::None;
  }
  std::string resolved(const std::string& path) override { return path; }

  std::map<std::string, std::string> written;
  std::map<std::string, FileFailure> failures;
  QStringList tried;
  bool busy = true;
};

std::vector<Sheet> twoSheets() {
  return {{"gains", {{"fund", 0}, {"gain", 4}}, {{std::string("Alder"), Currency::whole(7)}}},
          {"totals", {{"fund", 0}}, {{std::string("Birch")}}}};
}

}  // namespace

class ExportWindowTest : public QObject {
  Q_OBJECT

  static void verifyNothing(FakePrompts& prompts, QWidget* over) {
    QCOMPARE(prompts.informed, (QStringList{"Export", "No table to export. Show a report first."}));
    QCOMPARE(prompts.over.back(), over);
    QVERIFY(prompts.initialPaths.isEmpty());
    prompts.informed.clear();
  }
  static QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
  }

 private slots:
  void aCalculatorsYearTable_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("calculate");
    QTest::addColumn<QString>("help");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("heading");
    QTest::addColumn<int>("rows");
    QTest::newRow("pension growth")
        << 0 << "PGCalculate"
        << "PGHelp"
        << "Pension growth.csv" << QByteArray("Year,Salary,Contributions,Int/Growth,Value") << 25;
    QTest::newRow("investment growth")
        << 2 << "IGCalculate"
        << "IGHelp"
        << "Investment growth.csv" << QByteArray("Year,Invested,Int/Growth,Value") << 25;
    QTest::newRow("retirement income")
        << 3 << "RICalculate"
        << "RIHelp"
        << "Retirement income.csv" << QByteArray("Year,Int/Growth,Annual Income,Value") << 25;
    QTest::newRow("capital required")
        << 5 << "CRCalculate"
        << "CRHelp"
        << "Capital required.csv" << QByteArray("Year,Invested,Int/Growth,Value") << 25;
  }

  void aCalculatorsYearTable() {
    QFETCH(int, page);
    QFETCH(QString, calculate);
    QFETCH(QString, help);
    QFETCH(QString, name);
    QFETCH(QByteArray, heading);
    QFETCH(int, rows);
    const QTemporaryDir folder;
    ProgramFixture program;
    program.openCalculations(page);
    QWidget* window = program.window("PQInvest");
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, window);

    program.click(qPrintable(calculate));
    program.prompts.paths.push_back(folder.filePath("years.csv"));
    program.key(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(program.prompts.initialPaths, QStringList{name});
    const QList<QByteArray> lines = read(folder.filePath("years.csv")).split('\n');
    QCOMPARE(lines.first(), heading + '\r');
    QCOMPARE(lines.size(), rows + 2);
    QVERIFY(lines[1].startsWith("1,"));
    QVERIFY(lines[rows].startsWith(QByteArray::number(rows) + ","));
    QVERIFY(lines.back().isEmpty());
    program.prompts.initialPaths.clear();

    // Help in its place, and an emptied box, are no tables.
    program.click(qPrintable(help));
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, window);
    program.click(qPrintable(calculate));
    program.click("ClearResults");
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, window);
  }

  // 1,210.00 at 10 % in 2 years: 121 / 0.231 = 523.8095 a year; a tenth of it is 52.3810,
  // and a tenth of 576.1905 + 523.8095 is 110.0000.
  void theNumbersHaveFourDecimals() {
    const QTemporaryDir folder;
    ProgramFixture program;
    program.openCalculations(5);
    program.type("CRInCapitalReq", "1210");
    program.key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "10");
    program.key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "2");
    program.click("CRCalculate");
    program.prompts.paths.push_back(folder.filePath("years.csv"));
    program.key(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(read(folder.filePath("years.csv")), QByteArray("Year,Invested,Int/Growth,Value\r\n"
                                                            "1,523.8095,52.3810,576.1905\r\n"
                                                            "2,523.8095,110.0000,1210.0000\r\n"));
  }

  void pagesWithoutAYearTable() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTCalculate");
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, program.window("PQInvest"));
    program.choosePage(4);
    program.click("CGCalculate");
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, program.window("PQInvest"));
  }

  void everyReportOfTheManager() {
    ManagerFixture program;
    program.openFile(kTwoFunds);
    QWidget* window = program.manager();
    program.prompts.initialPaths.clear();
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, window);

    const auto exported = [&](const QString& name) {
      program.prompts.paths.push_back(program.path(name));
      program.key(Qt::Key_E, Qt::ControlModifier);
      return program.bytes(name);
    };
    program.choose("EFunds", 0);
    QCOMPARE(exported("records.csv"),
             QByteArray("Fund,Transaction,Trade Date,Share Price,Number Shares,Comm/Fees,"
                        "Div/Unit Value,Cash Div'd,Book Value,Rec No.\r\n"
                        "Alder,B,2019-01-02,10.0000,100.0000,50.0000,,0.0000,1050.0000,1\r\n"
                        "Alder,C,2020-03-04,0.0000,0.0000,0.0000,,12.5000,-12.5000,2\r\n"));
    // Beside the database.
    QCOMPARE(program.prompts.initialPaths.takeLast(), program.path("Records.csv"));
    program.prompts.initialPaths.clear();

    program.page(kDisplayPage);
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, window);
    program.click("DDisplall");
    const QByteArray heading =
        "Fund,Transaction,Trade Date,Share Price,Number Shares,Comm Fees,Div'd Shares,Cash Div'd,"
        "Book Value\r\n";
    const QByteArray birch =
        "Birch,B,2019-02-03,20.0000,50.0000,0.0000,,0.0000,1000.0000\r\n"
        "Birch,C,2020-05-06,0.0000,0.0000,0.0000,,7.2500,-7.2500\r\n";
    QCOMPARE(exported("all.csv"),
             heading +
                 "Alder,B,2019-01-02,10.0000,100.0000,50.0000,,0.0000,1050.0000\r\n"
                 "Alder,C,2020-03-04,0.0000,0.0000,0.0000,,12.5000,-12.5000\r\n" +
                 birch);
    auto* funds = program.find<QListWidget>("DDispFunds");
    const QPoint second = funds->visualItemRect(funds->item(1)).center();
    QTest::mouseClick(funds->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(funds->viewport(), Qt::LeftButton, {}, second);
    QCOMPARE(exported("one.csv"), heading + birch);
    program.click("DDHelp");
    program.prompts.initialPaths.clear();
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, window);

    program.page(kCurrentValuePage);
    program.key(Qt::Key_E, Qt::ControlModifier);
    verifyNothing(program.prompts, window);
    program.type("CVInPrice_1", "12");
    program.type("CVInPrice_2", "25");
    program.click("CVCalc");
    // Typed afterwards, it is no price of the table in view.
    program.type("CVInPrice_2", "99");
    // 1200 - 1037.50 = 162.50, 15.6627 %; 1250 - 992.75 = 257.25, 25.9129 %; of 2450.
    QCOMPARE(exported("value.csv"),
             QByteArray("Fund Name,Number Shares,Book Value,Current Price,Current Total,Gain/Loss$,"
                        "Gain/Loss%,% 0f Total\r\n"
                        "Alder,100.0000,1037.5000,12.0000,1200.0000,162.5000,15.6627,48.9796\r\n"
                        "Birch,50.0000,992.7500,25.0000,1250.0000,257.2500,25.9129,51.0204\r\n"));
    QVERIFY(exported("value.XLSX").startsWith("PK"));
    QVERIFY(program.prompts.warned.isEmpty());
  }

  void pagesWithoutReportsHaveNothingToExport() {
    ManagerFixture program;
    auto* action = program.manager()->findChild<QAction*>("ActionExport");
    program.page(kOpenPage);
    QVERIFY(!action->isEnabled());
    program.key(Qt::Key_E, Qt::ControlModifier);
    QVERIFY(program.prompts.informed.isEmpty());
    program.page(kEntryPage);
    QVERIFY(action->isEnabled());
  }

  void aCancelledNameWritesNothing() {
    FakePrompts prompts;
    MemoryStore files;
    QVERIFY(!exportSheets(twoSheets(), "x", prompts, nullptr, files));
    QVERIFY(files.tried.isEmpty() && prompts.warned.isEmpty());
  }

  void severalSheetsAreFilesBesideEachOtherOrOneBook() {
    FakePrompts prompts;
    MemoryStore files;
    prompts.paths = {"/home/ann/mine.csv", "/home/ann/mine.xlsx"};
    QVERIFY(exportSheets(twoSheets(), "x", prompts, nullptr, files));
    QCOMPARE(files.tried, (QStringList{"/home/ann/mine.csv", "/home/ann/mine-totals.csv"}));
    QCOMPARE(files.written["/home/ann/mine.csv"], "fund,gain\r\nAlder,7.0000\r\n");
    QCOMPARE(files.written["/home/ann/mine-totals.csv"], "fund\r\nBirch\r\n");
    QVERIFY(exportSheets(twoSheets(), "x", prompts, nullptr, files));
    QCOMPARE(files.tried.size(), 3);
    QVERIFY(files.written["/home/ann/mine.xlsx"].starts_with("PK"));
    QVERIFY(prompts.confirmed.isEmpty());
    QVERIFY2(files.busy, "the pointer");
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
  }

  void aSecondFileIsAskedAboutBeforeEitherIsWritten() {
    const QTemporaryDir folder;
    const QString second = folder.filePath("mine-totals.csv");
    QFile old(second);
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    FakePrompts prompts;
    prompts.paths = {folder.filePath("mine.csv"), folder.filePath("mine.csv")};
    prompts.answers = {false, true};
    QVERIFY(!exportSheets(twoSheets(), "x", prompts, nullptr));
    QCOMPARE(prompts.confirmed, QStringList{"mine-totals.csv already exists. It is written "
                                            "together with mine.csv."});
    QVERIFY(!QFile::exists(folder.filePath("mine.csv")));
    QCOMPARE(read(second), QByteArray("old"));
    QVERIFY(exportSheets(twoSheets(), "x", prompts, nullptr));
    QCOMPARE(read(second), QByteArray("fund\r\nBirch\r\n"));
    QCOMPARE(read(folder.filePath("mine.csv")), QByteArray("fund,gain\r\nAlder,7.0000\r\n"));
  }

  void whatCannotBeWrittenIsToldWithItsReason_data() {
    QTest::addColumn<int>("failure");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, FileFailure failure, const char* reason) {
      QTest::newRow(name) << static_cast<int>(failure) << reason;
    };
    row("full", FileFailure::NoSpace, "There is not enough space for the file.");
    row("no permission", FileFailure::NoPermission,
        "You do not have permission to write this file, or to write in its folder.");
    row("read-only", FileFailure::ReadOnly, "The disk is read-only.");
    row("no folder", FileFailure::NoSuchFolder, "Check the name and the folder.");
    row("no file", FileFailure::NotAFile, "Check the name and the folder.");
    row("anything", FileFailure::Other, "Check the name and the folder.");
  }

  void whatCannotBeWrittenIsToldWithItsReason() {
    QFETCH(int, failure);
    QFETCH(QString, reason);
    FakePrompts prompts;
    MemoryStore files;
    prompts.paths = {"/d/a.csv", "/d/b.csv"};
    files.failures = {{"/d/a.csv", FileFailure{static_cast<std::uint8_t>(failure)}},
                      {"/d/b-totals.csv", FileFailure{static_cast<std::uint8_t>(failure)}}};
    QVERIFY(!exportSheets(twoSheets(), "x", prompts, nullptr, files));
    QCOMPARE(prompts.warned,
             QStringList{"The table could not be written to \"/d/a.csv\". " + reason});
    QCOMPARE(files.tried, QStringList{"/d/a.csv"});
    QVERIFY(!exportSheets(twoSheets(), "x", prompts, nullptr, files));
    QCOMPARE(prompts.warned.back(),
             "The table could not be written to \"/d/b-totals.csv\". " + reason);
    QCOMPARE(files.written.size(), 1U);
  }

  void onAFullDiskNothingIsLeft() {
    ProgramFixture program;
    program.openCalculations(5);
    program.click("CRCalculate");
    program.prompts.paths.push_back("/dev/full");
    program.key(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(program.prompts.warned.size(), 1);
    program.prompts.paths.push_back("/no/such/folder/x.xlsx");
    program.key(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(program.prompts.warned.back(),
             "The table could not be written to \"/no/such/folder/x.xlsx\". Check the name and the "
             "folder.");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ExportWindowTest)
#include "export_window_test.moc"

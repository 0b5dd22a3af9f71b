// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "charts/chart_kind.h"
#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "reached.h"

namespace mirelund {
namespace {

// The manager as its window drives it.
class ManagerTest : public testing::Test {
 protected:
  ManagerTest() { manager.DiscardDatabase(); }

  static std::size_t typeIndex(char code) { return std::string("BSCDFU").find(code); }

  BoxLeft type(EntryBox box, const std::string& text) {
    global.boxes.BoxEdited = 1;
    return manager.leaveValueBox(box, text);
  }

  void addFund(const std::string& name) { ASSERT_EQ(manager.addFund(name).message, Message::None); }

  std::string activeName() const { return manager.fundName(manager.state().ActiveFundRow); }

  void fill(char code, const std::string& price, const std::string& shares, const std::string& fees,
            const std::string& dividend) {
    ASSERT_EQ(manager.chooseType(typeIndex(code)), Message::None);
    if (!price.empty()) type(EntryBox::Price, price);
    if (!shares.empty()) type(EntryBox::Shares, shares);
    if (!fees.empty()) type(EntryBox::Fees, fees);
    if (!dividend.empty()) type(EntryBox::Dividend, dividend);
  }

  Message add(char code, const std::string& day, const std::string& price,
              const std::string& shares, const std::string& fees = "",
              const std::string& dividend = "") {
    fill(code, price, shares, fees, dividend);
    return manager.addRecord(day, activeName()).message;
  }

  const Record& record(int row) const {
    return manager.database().RecordTable[static_cast<std::size_t>(row)];
  }

  // Opens a database as the file dialog's answer would.
  Message open(const Database& database) {
    write(folder.file("Test.PQD"), writeDatabase(database));
    return manager.OpenDatabase(folder.file("Test.PQD"));
  }

  Folder folder;
  Global global;
  Manager manager{global.boxes, global.reports, global.chart};
};

TEST_F(ManagerTest, StartsEmpty) {
  EXPECT_EQ(global.reports.ComparisonTotals.rows(), 32U);
  EXPECT_EQ(global.reports.ComparisonTotals.columns(), 7U);
  EXPECT_EQ(manager.fundsText(), "Funds: 0");
  EXPECT_EQ(manager.recordsText(), "Records: 0");
  EXPECT_EQ(manager.databaseText(), "Database: ");
  EXPECT_EQ(manager.state().FileChanged, 0);
  EXPECT_EQ(manager.database().FundTable[31].name, "All Records");
  EXPECT_FALSE(manager.mustAskBeforeDiscarding());
}

TEST_F(ManagerTest, RecordsTheSixTypes) {
  addFund("Amber");
  EXPECT_EQ(manager.fundsText(), "Funds: 1");
  EXPECT_EQ(add('B', "1/2/2001", "10", "100", "50"), Message::None);
  EXPECT_EQ(add('S', "1/3/2001", "10", "100", "50"), Message::None);
  EXPECT_EQ(add('C', "1/4/2001", "", "", "", "100"), Message::None);
  EXPECT_EQ(add('D', "1/5/2001", "10", "10"), Message::None);
  EXPECT_EQ(add('F', "1/6/2001", "", "", "100"), Message::None);
  EXPECT_EQ(add('U', "1/7/2001", "10", "5"), Message::None);
  EXPECT_EQ(manager.recordsText(), "Records: 6");
  const double shares[] = {100, -100, 0, 10, 0, -5};
  const double books[] = {1050, -950, -100, 0, 100, 0};
  for (int row = 1; row <= 6; ++row) {
    EXPECT_EQ(record(row).shares, money(shares[row - 1]));
    EXPECT_EQ(record(row).bookValue, money(books[row - 1]));
    EXPECT_EQ(record(row).type, "BSCDFU"[row - 1]);
  }
  EXPECT_EQ(manager.state().FileChanged, 1);
  EXPECT_EQ(manager.state().entry.type, nullptr);
  EXPECT_EQ(manager.state().ActiveFund, 1);
}

TEST_F(ManagerTest, RefusesInTheOrderTypeDateValuesFundRecords) {
  addFund("Amber");
  EXPECT_EQ(manager.addRecord("", "").message, Message::NoType);
  fill('B', "10", "", "", "");
  EXPECT_EQ(manager.addRecord("", "").message, Message::NoDate);
  EXPECT_EQ(manager.addRecord("2/30/2001", "").message, Message::DateFormat);
  EXPECT_EQ(manager.addRecord("1/2/2001", "").message, Message::RecordNotSaved);
  type(EntryBox::Shares, "100");
  EXPECT_EQ(manager.addRecord("1/2/2001", "Birch").message, Message::FundNotInFile);
  EXPECT_EQ(manager.addRecord("1/2/2001", std::string(kNoFundText)).message,
            Message::FundNotInFile);
  // Nothing changed, and the row is left as typed.
  EXPECT_EQ(manager.recordsText(), "Records: 0");
  EXPECT_EQ(manager.state().entry.value(EntryBox::Price), money(10));
  EXPECT_EQ(manager.addRecord("1/2/2001", "Amber").message, Message::None);
}

TEST_F(ManagerTest, NeedsAnActiveFund) {
  EXPECT_EQ(manager.chooseType(0), Message::FundNotSelected);
  EXPECT_EQ(manager.checkFund("Amber"), Message::FundNotSelected);
  addFund("Amber");
  addFund("Birch");
  EXPECT_EQ(manager.checkFund("Birch"), Message::None);
  EXPECT_EQ(manager.checkFund("Amber"),
            Message::FundNotSelected);  // a fund, but not the active one
  EXPECT_EQ(manager.checkFund("Cedar"), Message::FundNotInFile);
  manager.leaveEntryPage();
  EXPECT_EQ(manager.state().ActiveFund, 0);
  EXPECT_EQ(manager.chooseType(0), Message::FundNotSelected);
  EXPECT_EQ(manager.correctRecord("Birch", "1"), Message::FundNotSelected);
  EXPECT_EQ(manager.askDelete("Birch").message, Message::FundNotSelected);
}

TEST_F(ManagerTest, FundsAreSortedAfterAdding) {
  addFund("Cedar");
  addFund("Amber");
  addFund("Birch");
  EXPECT_EQ(manager.fundNames(), (std::vector<std::string>{"Amber", "Birch", "Cedar"}));
  EXPECT_EQ(manager.state().ActiveFundRow, 2);
  EXPECT_EQ(manager.state().ActiveFund, 3);
  EXPECT_EQ(manager.state().FileChanged, 1);
}

TEST_F(ManagerTest, AnEmptyNameAddsNothing) {
  const Outcome outcome = manager.addFund("");
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_FALSE(outcome.showResults);
  EXPECT_EQ(manager.addFund("a\"b").message, Message::WrongEntry);
  EXPECT_EQ(manager.addFund("a\nb").message, Message::WrongEntry);
  EXPECT_EQ(manager.fundsText(), "Funds: 0");
  EXPECT_EQ(manager.state().FileChanged, 0);
}

TEST_F(ManagerTest, TheNineteenthFundIsRefused) {
  for (int i = 1; i <= 18; ++i) addFund("Fund " + std::to_string(i));
  EXPECT_EQ(manager.addFund("Fund 19").message, Message::MostFunds);
  EXPECT_EQ(manager.fundsText(), "Funds: 18");
}

TEST_F(ManagerTest, The601stRecordIsRefusedButCorrectionIsNot) {
  EXPECT_EQ(open(madeDatabase(2, 600)), Message::None);
  manager.chooseFund(1);
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::MostRecords);
  EXPECT_EQ(manager.recordsText(), "Records: 600");
  EXPECT_EQ(manager.state().FileChanged, 0);
  EXPECT_EQ(manager.correctRecord(activeName(), "1"), Message::None);
  EXPECT_EQ(manager.addRecord("1/2/2001", activeName()).message, Message::None);
  EXPECT_EQ(manager.recordsText(), "Records: 600");
}

TEST_F(ManagerTest, FundsOfOneNameAreChosenByTheirRow) {
  addFund("Twin");
  EXPECT_EQ(add('B', "1/2/2001", "10", "1"), Message::None);
  addFund("Twin");
  EXPECT_EQ(add('B', "1/2/2002", "10", "2"), Message::None);
  const auto number = [&](std::int16_t row) {
    return fundNumber(manager.database().FundTable[static_cast<std::size_t>(row)]);
  };
  for (const auto row : std::vector<std::int16_t>{1, 2, 1}) {
    manager.chooseFund(row);
    EXPECT_EQ(manager.state().ActiveFund, number(row));
    EXPECT_EQ(manager.checkFund("Twin"), Message::None);
  }
}

TEST_F(ManagerTest, ARecordTooLargeIsRefusedBeforeAnythingIsStored) {
  addFund("Amber");
  EXPECT_EQ(add('B', "1/2/2001", "900000000000000", "2"), Message::WrongEntry);  // its book value
  EXPECT_EQ(add('D', "1/2/2001", "900000000000000", "2"),
            Message::WrongEntry);  // its dividend value
  EXPECT_EQ(manager.recordsText(), "Records: 0");
  EXPECT_EQ(add('B', "1/2/2001", "1", "900000000000000"), Message::None);
  EXPECT_EQ(add('B', "1/2/2001", ".0001", "900000000000000"),
            Message::WrongEntry);  // total of shares
  EXPECT_EQ(add('F', "1/2/2001", "", "", "900000000000000"),
            Message::WrongEntry);  // total of book values
  addFund("Birch");
  EXPECT_EQ(add('F', "1/2/2001", "", "", "900000000000000"), Message::WrongEntry);  // grand total
  EXPECT_EQ(manager.recordsText(), "Records: 1");
  EXPECT_EQ(manager.showAllFunds().message, Message::None);
  // A value too large stands as typed, and no record is made of the row.
  ASSERT_EQ(manager.chooseType(0), Message::None);
  type(EntryBox::Price, "1");
  type(EntryBox::Shares, "1");
  EXPECT_EQ(type(EntryBox::Price, "9999999999999999").message, Message::WrongEntry);
  EXPECT_EQ(manager.addRecord("1/2/2001", "Birch").message, Message::WrongEntry);
  type(EntryBox::Price, "2");
  EXPECT_EQ(manager.addRecord("1/2/2001", "Birch").message, Message::None);
}

TEST_F(ManagerTest, CorrectionFindsTheRecordByItsNumberInTheFundsList) {
  addFund("Amber");
  EXPECT_EQ(add('B', "1/1/2001", "1", "1"), Message::None);
  EXPECT_EQ(add('B', "1/3/2001", "3", "3"), Message::None);
  addFund("Birch");
  EXPECT_EQ(add('B', "1/2/2001", "2", "2"), Message::None);
  EXPECT_EQ(add('S', "1/4/2001", "4", "4", "1"), Message::None);
  EXPECT_EQ(manager.correctRecord("Birch", "2"), Message::None);
  EXPECT_EQ(manager.state().CorrectingRecord, 4);
  EXPECT_EQ(manager.state().entry.type->listText, "Sold");
  EXPECT_EQ(manager.correctingDateText(), "1/4/2001");
  EXPECT_EQ(manager.correctingText(),
            "Correcting record 2: Add Record stores it, Escape leaves it as it is.");
  EXPECT_EQ(manager.valueText(EntryBox::Price), "4.0000");
  EXPECT_EQ(manager.valueText(EntryBox::Shares), "4.0000");  // positive again
  EXPECT_EQ(manager.valueText(EntryBox::Fees), "1.0000");
  EXPECT_EQ(manager.valueText(EntryBox::Dividend), "0.0000");
  for (const char* number : {"0", "3", "5", "601", "", "99999999999999999999", "-1"})
    EXPECT_EQ(manager.correctRecord("Birch", number), Message::NotARecord) << number;
  EXPECT_EQ(manager.state().CorrectingRecord, 4);

  // The type list is locked; another value, an earlier date.
  EXPECT_EQ(manager.chooseType(0), Message::None);
  EXPECT_EQ(manager.state().entry.type->code, 'S');
  type(EntryBox::Shares, "0");
  EXPECT_EQ(manager.addRecord("1/4/2001", "Birch").message, Message::RecordNotCorrected);
  type(EntryBox::Shares, "5");
  EXPECT_EQ(manager.addRecord("12/31/2000", "Birch").message, Message::None);
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
  EXPECT_EQ(manager.correctingText(), "");
  EXPECT_EQ(manager.recordsText(), "Records: 4");
  EXPECT_EQ(record(1).type, 'S');
  EXPECT_EQ(record(1).shares, money(-5));
  EXPECT_EQ(record(1).bookValue, money(-19));
  EXPECT_EQ(record(1).number, 1);
}

TEST_F(ManagerTest, ACorrectionToALaterDateMovesTheRecord) {
  addFund("Amber");
  for (const char* day : {"1/1/2001", "1/2/2001", "1/3/2001"})
    EXPECT_EQ(add('B', day, "1", "1"), Message::None);
  EXPECT_EQ(manager.correctRecord("Amber", "1"), Message::None);
  EXPECT_EQ(manager.addRecord("1/4/2001", "Amber").message, Message::None);
  EXPECT_EQ(record(3).date, date(2001, 1, 4));
  EXPECT_EQ(record(1).date, date(2001, 1, 2));
}

TEST_F(ManagerTest, DeleteAnotherPageAndAnotherFileCancelACorrection) {
  ASSERT_EQ(open(madeDatabase(1, 3)), Message::None);
  const auto correct = [&] {
    manager.chooseFund(1);
    ASSERT_EQ(manager.correctRecord(activeName(), "1"), Message::None);
  };
  correct();
  EXPECT_FALSE(manager.askDelete(activeName()).wholeFund);
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
  EXPECT_EQ(manager.state().entry.type, nullptr);
  correct();
  manager.leaveEntryPage();
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
  correct();
  manager.OpenDatabase(folder.file("Test.PQD"));
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
  correct();
  manager.clearEntryRow();
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
}

TEST_F(ManagerTest, DeletingRenumbersTheList) {
  addFund("Amber");
  for (int i = 1; i <= 5; ++i)
    EXPECT_EQ(add('B', "1/" + std::to_string(i) + "/2001", std::to_string(i), "1"), Message::None);
  EXPECT_EQ(manager.checkRecordNumber("6"), Message::NotARecord);
  EXPECT_EQ(manager.checkRecordNumber("3"), Message::None);
  const Outcome outcome = manager.deleteRecord("3");
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_EQ(outcome.results, manager.showRecordList().results);
  EXPECT_EQ(manager.recordsText(), "Records: 4");
  EXPECT_EQ(record(3).price, money(4));
  EXPECT_EQ(record(4).price, money(5));
  EXPECT_EQ(manager.state().FileChanged, 1);
  EXPECT_EQ(manager.deleteRecord("5").message, Message::NotARecord);
}

TEST_F(ManagerTest, TheFundGoesAfterItsLastRecord) {
  addFund("Amber");
  addFund("Birch");
  EXPECT_EQ(add('B', "1/1/2001", "1", "1"), Message::None);
  EXPECT_FALSE(manager.askDelete("Birch").wholeFund);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  EXPECT_EQ(manager.fundsText(), "Funds: 2");
  EXPECT_TRUE(manager.askDelete("Birch").wholeFund);
  EXPECT_EQ(manager.deleteFund(), Message::None);
  EXPECT_EQ(manager.fundNames(), std::vector<std::string>{"Amber"});
  EXPECT_EQ(manager.state().ActiveFund, 0);
  EXPECT_EQ(manager.state().FileChanged, 1);
}

TEST_F(ManagerTest, OfTwoFundsOfOneNameTheChosenOneGoes) {
  for (const auto chosen : std::vector<std::int16_t>{1, 2}) {
    manager.DiscardDatabase();
    addFund("Twin");
    addFund("Twin");
    manager.chooseFund(chosen);
    const std::int16_t gone = manager.state().ActiveFund;
    EXPECT_EQ(manager.deleteFund(), Message::None);
    EXPECT_NE(fundNumber(manager.database().FundTable[1]), gone);
  }
}

TEST_F(ManagerTest, ANewFundAfterADeletionSharesANumber) {
  addFund("Amber");
  addFund("Birch");
  addFund("Cedar");
  manager.chooseFund(2);
  EXPECT_EQ(manager.deleteFund(), Message::None);
  addFund("Dahlia");
  EXPECT_EQ(manager.state().ActiveFund, 3);
  EXPECT_EQ(manager.database().FundTable[2].name, "Cedar");
  EXPECT_EQ(manager.database().FundTable[2].number, "3");
  // A record of one is a record of both.
  EXPECT_EQ(add('B', "1/1/2001", "1", "1"), Message::None);
  manager.chooseFund(2);
  EXPECT_FALSE(manager.askDelete("Cedar").wholeFund);
}

TEST_F(ManagerTest, LeavingTheDateBoxChecksIt) {
  EXPECT_EQ(manager.leaveDateBox("1/2/2001"), Message::None);
  EXPECT_EQ(manager.leaveDateBox("13/2/2001"), Message::DateFormat);
  EXPECT_EQ(manager.leaveDateBox(""), Message::None);
  manager.setDateFormat(shortDateFormat("dd.MM.yy"));
  EXPECT_EQ(manager.leaveDateBox("13/2/2001"), Message::None);
  EXPECT_EQ(messageText(Message::DateFormat, manager.details(date(2026, 3, 5))),
            "Correct date format is 05.03.2026");
}

TEST_F(ManagerTest, ChoosingATypeClearsTheBoxes) {
  addFund("Amber");
  fill('B', "10", "20", "30", "");
  EXPECT_EQ(manager.chooseType(1), Message::None);
  EXPECT_EQ(manager.state().entry.value(EntryBox::Price), Currency());
  EXPECT_EQ(manager.state().entry.type->listText, "Sold");
}

TEST_F(ManagerTest, AValueBoxStoresOnlyIfEdited) {
  addFund("Amber");
  ASSERT_EQ(manager.chooseType(0), Message::None);
  EXPECT_FALSE(manager.leaveValueBox(EntryBox::Price, "12").changed);
  EXPECT_EQ(manager.state().entry.value(EntryBox::Price), Currency());
  EXPECT_EQ(type(EntryBox::Price, "1234.5").text, "1,234.5000");
  EXPECT_EQ(manager.state().entry.value(EntryBox::Price), money(1234.5));
}

TEST_F(ManagerTest, RowsThatAreNoneHaveNoName) {
  addFund("Amber");
  EXPECT_EQ(manager.fundName(0), "");
  EXPECT_EQ(manager.fundName(1), "Amber");
  EXPECT_EQ(manager.fundName(2), "");
  EXPECT_EQ(manager.correctingDateText(), "") << "nothing is corrected";
}

TEST_F(ManagerTest, OnlyAnActiveFundWithoutRecordsIsDeleted) {
  EXPECT_EQ(manager.deleteFund(), Message::FundNotSelected);
  addFund("Amber");
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  EXPECT_EQ(manager.deleteFund(), Message::FundNotSelected);
  EXPECT_EQ(manager.fundsText(), "Funds: 1");
}

// --- files ------------------------------------------------------------------------

TEST_F(ManagerTest, SavesAndOpensByteForByte) {
  addFund("Amber, \xC3\xA9");
  EXPECT_EQ(add('B', "1/2/2001", "10.5", "100", "50"), Message::None);
  EXPECT_EQ(manager.checkSave(), Message::None);
  EXPECT_EQ(manager.SaveDatabase(folder.file("Mine.PQD")).message, Message::None);
  const std::string path = folder.file("Mine.PQD");
  EXPECT_EQ(contents(path),
            "1,1,\"All Records\",\"31\"\r\n\"Amber, \xC3\xA9\",\"1\"\r\n"
            "1,10.5,100,50,0,1100,\"B\",#2001-01-02#\r\n");
  EXPECT_EQ(manager.state().FileChanged, 0);
  EXPECT_EQ(manager.state().DatabasePath, path);
  EXPECT_EQ(manager.databaseText(), "Database: Mine.PQD");
  const Database saved = manager.database();
  manager.DiscardDatabase();
  EXPECT_EQ(manager.database(), Database());
  EXPECT_EQ(manager.state().DatabasePath, "");
  EXPECT_EQ(manager.OpenDatabase(path), Message::None);
  EXPECT_EQ(manager.database(), saved);
  EXPECT_EQ(manager.state().FileChanged, 0);
}

TEST_F(ManagerTest, TheSampleLeavesNoPathToSaveUnder) {
  addFund("Amber");
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  const std::string path = folder.file("Sample.PQD");
  EXPECT_EQ(manager.SaveDatabase(path).message, Message::None);
  const Database saved = manager.database();
  manager.DiscardDatabase();
  manager.setFileDialog(FileDialog::Cancelled);
  EXPECT_EQ(manager.openSample(path), Message::None);
  EXPECT_EQ(manager.state().FileDialogMode, FileDialog::Idle);
  EXPECT_EQ(manager.database(), saved);
  EXPECT_EQ(manager.databaseText(), "Database: Sample.PQD");
  EXPECT_EQ(manager.state().DatabasePath, "");
  EXPECT_EQ(manager.state().FileChanged, 0);

  EXPECT_EQ(manager.SaveDatabase(path).message, Message::None);
  EXPECT_EQ(manager.openSample(folder.file("Missing.PQD")), Message::CannotOpen);
  EXPECT_EQ(manager.state().DatabasePath, path);
  EXPECT_EQ(manager.database(), saved);
}

TEST_F(ManagerTest, ADialogThatIsDoneLeavesTheModeIdle) {
  addFund("Amber");
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  manager.setFileDialog(FileDialog::Saving);
  EXPECT_EQ(manager.SaveDatabase(folder.file("Mine.PQD")).message, Message::None);
  EXPECT_EQ(manager.state().FileDialogMode, FileDialog::Idle);
  manager.setFileDialog(FileDialog::Opening);
  EXPECT_EQ(manager.OpenDatabase(folder.file("Mine.PQD")), Message::None);
  EXPECT_EQ(manager.state().FileDialogMode, FileDialog::Idle);
  manager.setFileDialog(FileDialog::Opening);
  EXPECT_EQ(manager.OpenDatabase(folder.file("Missing.PQD")), Message::CannotOpen);
  EXPECT_EQ(manager.state().FileDialogMode, FileDialog::Idle);
}

TEST_F(ManagerTest, NothingToSaveWithoutRecords) {
  EXPECT_EQ(manager.checkSave(), Message::NoRecords);
  addFund("Amber");
  EXPECT_EQ(manager.checkSave(), Message::NoRecords);
  EXPECT_EQ(manager.SaveDatabase(folder.file("x.PQD")).message, Message::NoRecords);
  EXPECT_FALSE(std::filesystem::exists(folder.file("x.PQD")));
}

TEST_F(ManagerTest, AFailedOpenLeavesTheDatabaseWhole) {
  addFund("Amber");
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  ASSERT_EQ(manager.SaveDatabase(folder.file("Mine.PQD")).message, Message::None);
  EXPECT_EQ(add('B', "1/3/2001", "10", "100"), Message::None);
  const Database before = manager.database();
  std::string bytes = writeDatabase(madeDatabase(3, 50));
  bytes.resize(bytes.size() - 20);
  write(folder.file("Cut.PQD"), bytes);
  for (const std::string& name :
       {std::string("Cut.PQD"), std::string("Missing.PQD"), std::string(".")}) {
    EXPECT_EQ(manager.OpenDatabase(folder.file(name)), Message::CannotOpen);
    EXPECT_EQ(manager.database(), before);
    EXPECT_EQ(manager.state().FileChanged, 1);
    EXPECT_EQ(manager.databaseText(), "Database: Mine.PQD");
    EXPECT_EQ(manager.state().ActiveFund, 1);
  }
}

// Its first record's shares have no positive counterpart to be corrected.
TEST_F(ManagerTest, AnAmountOneBelowTheRangeIsRefusedOnOpening) {
  const std::string path = folder.file("Test.PQD");
  const auto file = [](const std::string& shares) {
    return "1,1,\"All Records\",\"31\"\r\n\"Amber\",\"1\"\r\n1,.0001," + shares +
           ",0,0,0,\"U\",#2001-05-15#\r\n";
  };
  write(path, file("-922337203685477.5808"));
  EXPECT_EQ(manager.OpenDatabase(path), Message::CannotOpen);
  EXPECT_EQ(manager.recordsText(), "Records: 0");
  write(path, file("-922337203685477.5807"));
  EXPECT_EQ(manager.OpenDatabase(path), Message::None);
  EXPECT_EQ(manager.chooseFund(1).message, Message::None);
  EXPECT_EQ(manager.correctRecord("Amber", "1"), Message::None);
  EXPECT_EQ(manager.valueText(EntryBox::Shares), "922,337,203,685,477.5807");
}

TEST_F(ManagerTest, AFailedSaveLeavesTheMark) {
  addFund("Amber");
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  const Saved saved = manager.SaveDatabase(folder.file("no/such/Mine.PQD"));
  EXPECT_EQ(saved.message, Message::CannotSave);
  EXPECT_EQ(saved.reason, FileFailure::NoSuchFolder);
  EXPECT_EQ(manager.state().FileChanged, 1);
  EXPECT_EQ(manager.state().DatabasePath, "");
}

// Its row is another record's after the deletion.
TEST_F(ManagerTest, ADeletedRecordEndsACorrection) {
  addFund("Amber");
  for (const char* day : {"1/1/2001", "1/2/2001", "1/3/2001"})
    EXPECT_EQ(add('B', day, "10", "100"), Message::None);
  ASSERT_EQ(manager.correctRecord("Amber", "2"), Message::None);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
  EXPECT_EQ(manager.addRecord("1/2/2001", "Amber").message, Message::NoType);
  // What is typed for a new record stays.
  fill('B', "10", "100", "", "");
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  EXPECT_EQ(manager.addRecord("1/4/2001", "Amber").message, Message::None);
  EXPECT_EQ(manager.recordsText(), "Records: 2");
}

TEST_F(ManagerTest, AsksBeforeChangesAreLost) {
  addFund("Amber");
  EXPECT_FALSE(manager.mustAskBeforeDiscarding());  // no records: required
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  EXPECT_TRUE(manager.mustAskBeforeDiscarding());
  ASSERT_EQ(manager.SaveDatabase(folder.file("Mine.PQD")).message, Message::None);
  EXPECT_FALSE(manager.mustAskBeforeDiscarding());
  addFund("Birch");
  EXPECT_TRUE(manager.mustAskBeforeDiscarding());
  EXPECT_EQ(questionText(Question::DiscardChanges, manager.details(date(2026, 1, 1))),
            "File changed. " + folder.file("Mine.PQD") +
                " file in memory will be erased. Do you wish to go back and save it to Disk?.");
  ASSERT_EQ(manager.SaveDatabase(folder.file("Mine.PQD")).message, Message::None);
  EXPECT_EQ(manager.deleteFund(), Message::None);
  EXPECT_TRUE(manager.mustAskBeforeDiscarding());
  manager.chooseFund(1);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  EXPECT_FALSE(manager.mustAskBeforeDiscarding());  // the last record: required
}

TEST_F(ManagerTest, OpeningAnEmptyDatabaseShowsNothingElse) {
  write(folder.file("Empty.PQD"), "0,0,\"All Records\",\"31\"\r\n");
  EXPECT_EQ(manager.OpenDatabase(folder.file("Empty.PQD")), Message::None);
  EXPECT_EQ(manager.fundsText(), "Funds: 0");
  EXPECT_EQ(manager.recordsText(), "Records: 0");
  EXPECT_EQ(manager.databaseText(), "Database: Empty.PQD");
}

// --- files that another program changes ---------------------------------------------

// Two programs on one file, each with a record of its own to save.
class SharedFileTest : public ManagerTest {
 protected:
  SharedFileTest() {
    other.DiscardDatabase();
    write(path, kOne);
  }

  static Saved save(Manager& by, const std::string& to, Replacing replacing = {}) {
    return by.SaveDatabase(to, replacing);
  }

  // Opens the file and adds a record.
  static void openAndAdd(Manager& by, BoxState& boxes, const std::string& from, const char* day) {
    ASSERT_EQ(by.OpenDatabase(from), Message::None);
    by.chooseFund(1);
    ASSERT_EQ(by.chooseType(0), Message::None);
    for (const EntryBox box : {EntryBox::Price, EntryBox::Shares}) {
      boxes.BoxEdited = 1;
      by.leaveValueBox(box, "5");
    }
    ASSERT_EQ(by.addRecord(day, "Amber").message, Message::None);
  }

  // Refused, and nothing is another than before.
  static void expectRefused(Manager& by, const std::string& to) {
    const std::string file = contents(to);
    const Database before = by.database();
    const std::string name = by.state().DatabasePath;
    const Saved saved = save(by, to);
    EXPECT_EQ(saved.reason, FileFailure::Changed);
    EXPECT_EQ(saved.message, Message::CannotSave);
    EXPECT_EQ(contents(to), file);
    EXPECT_EQ(by.database(), before);
    EXPECT_EQ(by.state().FileChanged, 1);
    EXPECT_EQ(by.state().DatabasePath, name);
  }

  const std::string kOne =
      "1,1,\"All Records\",\"31\"\r\n\"Amber\",\"1\"\r\n1,2,3,0,0,6,\"B\",#2001-05-15#\r\n";
  const std::string path = folder.file("Shared.PQD");
  Global others;
  Manager other{others.boxes, others.reports, others.chart};
};

TEST_F(SharedFileTest, TheSecondToSaveIsTold) {
  openAndAdd(manager, global.boxes, path, "1/2/2002");
  openAndAdd(other, others.boxes, path, "1/3/2003");
  EXPECT_EQ(save(manager, path).message, Message::None);
  expectRefused(other, path);
  expectRefused(other, path);
  // The first may go on saving; the second may want its own in spite of it.
  EXPECT_EQ(save(manager, path).message, Message::None);
  EXPECT_EQ(save(other, path, Replacing::Anything).message, Message::None);
  EXPECT_EQ(other.state().FileChanged, 0);
  EXPECT_NE(contents(path).find("#2003-01-03#"), std::string::npos);
  EXPECT_EQ(save(other, path).message, Message::None);
  openAndAdd(manager, global.boxes, folder.file("Shared.PQD"), "1/4/2004");
  EXPECT_EQ(save(manager, path).message, Message::None);
}

TEST_F(SharedFileTest, AChangeOfAByteCounts) {
  openAndAdd(manager, global.boxes, path, "1/2/2002");
  std::string bytes = kOne;
  bytes.replace(bytes.find("Amber"), 5, "Umber");
  write(path, bytes);
  expectRefused(manager, path);
  write(path, "");
  expectRefused(manager, path);
  write(path, bytes + bytes);
  expectRefused(manager, path);
  write(path, kOne);  // the same again
  EXPECT_EQ(save(manager, path).message, Message::None);
}

TEST_F(SharedFileTest, SavingElsewhereIsTheWayOut) {
  openAndAdd(manager, global.boxes, path, "1/2/2002");
  openAndAdd(other, others.boxes, path, "1/3/2003");
  ASSERT_EQ(save(manager, path).message, Message::None);
  expectRefused(other, path);
  const std::string elsewhere = folder.file("Mine.PQD");
  EXPECT_EQ(save(other, elsewhere).message, Message::None);
  EXPECT_EQ(other.state().DatabasePath, elsewhere);
  EXPECT_NE(contents(elsewhere).find("#2003-01-03#"), std::string::npos);
  // What was opened first is still known, and what was saved is.
  EXPECT_EQ(save(other, path).reason, FileFailure::Changed);
  write(elsewhere, kOne);
  EXPECT_EQ(save(other, elsewhere).reason, FileFailure::Changed);
}

TEST_F(SharedFileTest, AFileThatWasNeverOpenedIsNotCompared) {
  openAndAdd(manager, global.boxes, path, "1/2/2002");
  write(folder.file("Unknown.PQD"), "whatever stands here");
  EXPECT_EQ(save(manager, folder.file("Unknown.PQD")).message, Message::None);
  // Nor one that could not be opened.
  write(folder.file("Broken.PQD"), "broken");
  EXPECT_EQ(manager.OpenDatabase(folder.file("Broken.PQD")), Message::CannotOpen);
  write(folder.file("Broken.PQD"), "broken otherwise");
  EXPECT_EQ(save(manager, folder.file("Broken.PQD")).message, Message::None);
}

TEST_F(SharedFileTest, ALinkIsTheFileThatItLeadsTo) {
  std::filesystem::create_symlink("Shared.PQD", folder.file("Link.PQD"));
  std::filesystem::create_directory_symlink(folder.path(), folder.file("Folder"));
  for (const char* by : {"Link.PQD", "Folder/Shared.PQD", "Folder/Link.PQD", "./Shared.PQD"}) {
    write(path, kOne);
    Manager fresh{others.boxes, others.reports, others.chart};
    fresh.DiscardDatabase();
    openAndAdd(fresh, others.boxes, folder.file(by), "1/2/2002");
    EXPECT_EQ(save(fresh, path).message, Message::None) << by;
    write(path, kOne);
    EXPECT_EQ(save(fresh, folder.file(by)).reason, FileFailure::Changed) << by;
    EXPECT_EQ(save(fresh, path).reason, FileFailure::Changed) << by;
  }
}

TEST_F(SharedFileTest, AFileThatIsGoneIsWrittenAnew) {
  openAndAdd(manager, global.boxes, path, "1/2/2002");
  std::filesystem::remove(path);
  EXPECT_EQ(save(manager, path).message, Message::None);
  EXPECT_EQ(contents(path), writeDatabase(manager.database()));
}

TEST_F(SharedFileTest, AFailedSaveKeepsWhatIsKnown) {
  openAndAdd(manager, global.boxes, path, "1/2/2002");
  EXPECT_EQ(save(manager, folder.file("no/such/Mine.PQD")).reason, FileFailure::NoSuchFolder);
  write(path, kOne + " ");
  expectRefused(manager, path);
  EXPECT_EQ(manager.OpenDatabase(path), Message::CannotOpen);
  expectRefused(manager, path);
  write(path, kOne);
  EXPECT_EQ(save(manager, path).message, Message::None);
}

TEST_F(SharedFileTest, ADiscardedDatabasesFilesAreStillKnown) {
  openAndAdd(manager, global.boxes, path, "1/2/2002");
  manager.DiscardDatabase();
  addFund("Amber");
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  write(path, kOne + " ");
  expectRefused(manager, path);
  write(path, kOne);
  EXPECT_EQ(save(manager, path).message, Message::None);
}

// --- records of funds that are not in the file --------------------------------------

// Alder and Birch, and among their records those of 3 and 77, which are no funds. Their
// amounts would take every total beyond its range.
const std::string kStrange3 =
    "3,922337203685477.5807,922337203685477.5807,9,9,922337203685477.5807,\"B\",#2019-01-15#\r\n";
const std::string kStrange77 =
    "77,0,0,-922337203685477.5807,922337203685477.5807,922337203685477.5807,\"C\",#2020-04-04#\r\n";

std::string withStrangers(const std::string& count, const std::string& strange3,
                          const std::string& strange77) {
  return count +
         ",2,\"All Records\",\"31\"\r\n"
         "\"Alder\",\"1\"\r\n"
         "\"Birch\",\"2\"\r\n"
         "1,10,100,50,0,1050,\"B\",#2019-01-02#\r\n" +
         strange3 +
         "2,20,50,0,0,1000,\"B\",#2019-02-03#\r\n"
         "1,0,0,0,12.5,-12.5,\"C\",#2020-03-04#\r\n" +
         strange77 + "2,0,0,0,7.25,-7.25,\"C\",#2020-05-06#\r\n";
}

TEST_F(ManagerTest, RecordsOfUnknownFundsCountAndStandNowhere) {
  write(folder.file("Strange.PQD"), withStrangers("6", kStrange3, kStrange77));
  ASSERT_EQ(manager.OpenDatabase(folder.file("Strange.PQD")), Message::None);
  EXPECT_EQ(manager.recordsText(), "Records: 6");
  EXPECT_EQ(manager.fundsText(), "Funds: 2");

  Global others;
  Manager plain{others.boxes, others.reports, others.chart};
  plain.DiscardDatabase();
  write(folder.file("Plain.PQD"), withStrangers("4", "", ""));
  ASSERT_EQ(plain.OpenDatabase(folder.file("Plain.PQD")), Message::None);
  const auto totals = [](const Global& shared) {
    std::vector<std::int64_t> cells;
    for (std::size_t row = 0; row < kTotalsRows; ++row)
      for (std::size_t column = 0; column < kTotalsColumns; ++column)
        cells.push_back(shared.reports.ComparisonTotals.at(row, column).tenThousandths());
    return cells;
  };
  for (const std::int16_t row : {std::int16_t{1}, std::int16_t{2}}) {
    const Outcome list = manager.chooseFund(row);
    EXPECT_EQ(list.message, Message::None);
    EXPECT_EQ(list.results, plain.chooseFund(row).results);
    EXPECT_EQ(manager.showFund(row).report.text, plain.showFund(row).report.text);
    global.boxes.BoxEdited = others.boxes.BoxEdited = 1;
    manager.leavePriceBox(row, "20");
    plain.leavePriceBox(row, "20");
  }
  const ReportShown all = manager.showAllFunds();
  EXPECT_EQ(all.message, Message::None);
  EXPECT_EQ(all.report.text, plain.showAllFunds().report.text);
  EXPECT_EQ(totals(global), totals(others));
  const Outcome values = manager.calculateCurrentValue();
  EXPECT_EQ(values.message, Message::None);
  EXPECT_EQ(values.results, plain.calculateCurrentValue().results);
  EXPECT_EQ(totals(global), totals(others));
}

TEST_F(ManagerTest, RecordsOfUnknownFundsStayWhatTheyAre) {
  const std::string path = folder.file("Strange.PQD");
  write(path, withStrangers("6", kStrange3, kStrange77));
  ASSERT_EQ(manager.OpenDatabase(path), Message::None);
  const auto saved = [&] {
    EXPECT_EQ(manager.SaveDatabase(path).message, Message::None);
    return contents(path);
  };
  EXPECT_EQ(saved(), withStrangers("6", kStrange3, kStrange77));
  manager.chooseFund(2);
  EXPECT_EQ(add('B', "1/20/2019", "10", "100"), Message::None);
  ASSERT_EQ(manager.correctRecord("Birch", "3"), Message::None);
  EXPECT_EQ(manager.addRecord("1/1/2018", "Birch").message, Message::None);
  EXPECT_EQ(manager.deleteRecord("2").message, Message::None);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  EXPECT_EQ(saved(),
            "5,2,\"All Records\",\"31\"\r\n\"Alder\",\"1\"\r\n\"Birch\",\"2\"\r\n"
            "1,10,100,50,0,1050,\"B\",#2019-01-02#\r\n" +
                kStrange3 +
                "2,20,50,0,0,1000,\"B\",#2019-02-03#\r\n"
                "1,0,0,0,12.5,-12.5,\"C\",#2020-03-04#\r\n" +
                kStrange77);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  EXPECT_TRUE(manager.askDelete("Birch").wholeFund);
  EXPECT_EQ(manager.deleteFund(), Message::None);
  EXPECT_EQ(manager.recordsText(), "Records: 4");
  EXPECT_EQ(saved(),
            "4,1,\"All Records\",\"31\"\r\n\"Alder\",\"1\"\r\n"
            "1,10,100,50,0,1050,\"B\",#2019-01-02#\r\n" +
                kStrange3 + "1,0,0,0,12.5,-12.5,\"C\",#2020-03-04#\r\n" + kStrange77);
}

// The number is the count, as of every new fund: what had it before is shown at once.
TEST_F(ManagerTest, AFundThatIsAddedListsTheRecordsOfItsNumber) {
  write(folder.file("Strange.PQD"), withStrangers("5", "3,5,7,1,0,36,\"B\",#2019-01-15#\r\n", ""));
  ASSERT_EQ(manager.OpenDatabase(folder.file("Strange.PQD")), Message::None);
  const Outcome list = manager.addFund("Cedar");
  EXPECT_EQ(manager.state().ActiveFund, 3);
  EXPECT_NE(list.results.find("1/15/2019"), std::string::npos) << list.results;
  EXPECT_FALSE(manager.askDelete("Cedar").wholeFund);
}

// --- reports and current value ------------------------------------------------------

TEST_F(ManagerTest, ReportsThatLeaveTheRangeAreMessageThree) {
  Database database = madeDatabase(1, 2);
  database.RecordTable[1].shares = database.RecordTable[2].shares = Currency::max();
  EXPECT_EQ(open(database), Message::None);
  EXPECT_EQ(manager.chooseFund(1).message, Message::WrongEntry);
  EXPECT_TRUE(manager.chooseFund(1).showResults);
  EXPECT_EQ(manager.chooseFund(1).results, "");
  EXPECT_EQ(manager.showFund(1).message, Message::WrongEntry);
  EXPECT_EQ(manager.showAllFunds().message, Message::WrongEntry);
  global.boxes.BoxEdited = 1;
  manager.leavePriceBox(1, "1");
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::WrongEntry);
  // Deleting is the way out.
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  EXPECT_EQ(manager.showFund(1).message, Message::None);
}

TEST_F(ManagerTest, CurrentValueRefusesAnEmptyFundThenAMissingPrice) {
  const auto price = [&](std::int16_t row, const std::string& text) {
    global.boxes.BoxEdited = 1;
    return manager.leavePriceBox(row, text);
  };
  addFund("Amber");
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::EmptyFund);
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::MissingPrice);
  EXPECT_EQ(manager.priceText(1), "");
  EXPECT_EQ(price(1, "0").text, "0.0000");
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::MissingPrice);
  EXPECT_EQ(price(1, "20").text, "20.0000");
  EXPECT_EQ(manager.priceText(1), "20.0000");
  EXPECT_EQ(manager.graphCurrentValue(), Message::NothingToGraph);
  const Outcome outcome = manager.calculateCurrentValue();
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_EQ(outcome.results, manager.state().CVResults);
  EXPECT_EQ(global.chart.ChartCount, 1);
  EXPECT_EQ(manager.graphCurrentValue(), Message::None);
  EXPECT_EQ(global.chart.ChartKind, ChartKind::Manager);
  EXPECT_EQ(global.reports.ComparisonTotals.at(1, 4), money(1000));

  // Reports do not disturb the chart's figures.
  manager.showAllFunds();
  EXPECT_EQ(global.reports.ComparisonTotals.at(1, 4), money(1000));

  // A changed record clears the results, not the prices.
  manager.chooseFund(1);
  EXPECT_EQ(add('B', "1/3/2001", "10", "100"), Message::None);
  EXPECT_EQ(manager.state().CVResults, "");
  EXPECT_EQ(global.chart.ChartCount, 0);
  EXPECT_EQ(manager.graphCurrentValue(), Message::NothingToGraph);
  EXPECT_EQ(manager.priceText(1), "20.0000");

  // Another fund does.
  addFund("Birch");
  EXPECT_EQ(manager.priceText(1), "");
}

TEST_F(ManagerTest, WithoutFundsThereIsATableButNothingToGraph) {
  const Outcome outcome = manager.calculateCurrentValue();
  EXPECT_EQ(outcome.message, Message::None);
  EXPECT_NE(outcome.results, "");
  EXPECT_EQ(manager.graphCurrentValue(), Message::NothingToGraph);
}

TEST_F(ManagerTest, APriceOutOfRangeGivesMessageThreeAndNoTable) {
  ASSERT_EQ(open(madeDatabase(2, 4)), Message::None);
  const auto price = [&](std::int16_t row, const std::string& text) {
    global.boxes.BoxEdited = 1;
    return manager.leavePriceBox(row, text).message;
  };
  EXPECT_EQ(price(1, "20"), Message::None);
  EXPECT_EQ(price(2, "20"), Message::None);
  ASSERT_EQ(manager.calculateCurrentValue().message, Message::None);
  for (const char* text : {"922337203685477.625", "99999999999999999999"}) {
    EXPECT_EQ(price(2, text), Message::WrongEntry) << text;
    const Outcome outcome = manager.calculateCurrentValue();
    EXPECT_EQ(outcome.message, Message::WrongEntry) << text;
    EXPECT_TRUE(outcome.showResults) << text;
    EXPECT_EQ(outcome.results, "") << text;
    EXPECT_EQ(manager.state().CVResults, "") << text;
    EXPECT_EQ(global.chart.ChartCount, 0) << text;
    EXPECT_EQ(manager.graphCurrentValue(), Message::NothingToGraph) << text;
  }
  // The price itself is in the range, what it is worth is not.
  EXPECT_EQ(price(2, "922337203685477.5"), Message::None);
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::WrongEntry);
  EXPECT_EQ(manager.state().CVResults, "");
  EXPECT_EQ(price(2, "20"), Message::None);
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::None);
  EXPECT_FALSE(manager.state().CVResults.empty());
}

TEST_F(ManagerTest, APriceIsWhatWasTypedAndNeitherZeroNorBeyondAnAmount) {
  ASSERT_EQ(open(madeDatabase(2, 4)), Message::None);
  const auto priceOf = [&](const std::string& text) {
    global.boxes.BoxEdited = 1;
    manager.leavePriceBox(2, text);
    return manager.price(2);
  };
  EXPECT_EQ(manager.price(2), std::nullopt);
  EXPECT_EQ(priceOf("0"), std::nullopt);
  EXPECT_EQ(priceOf(".0001"), Currency::fromTenThousandths(1));
  EXPECT_EQ(priceOf("99999999999999999999"), std::nullopt);
  EXPECT_EQ(priceOf("20"), money(20));
  EXPECT_EQ(manager.price(1), std::nullopt);
  // Another fund forgets them.
  manager.addFund("Fund C");
  EXPECT_EQ(manager.price(2), std::nullopt);
}

TEST_F(ManagerTest, AFundWithoutANameIsOpenedListedAndValued) {
  Database database = madeDatabase(2, 4);
  database.FundTable[2].name.clear();
  ASSERT_EQ(open(database), Message::None);
  // Sorted first, by its empty name.
  EXPECT_EQ(manager.fundNames(), (std::vector<std::string>{"", "Fund B"}));
  const Outcome list = manager.chooseFund(1);
  EXPECT_EQ(list.message, Message::None);
  EXPECT_NE(list.results.find("Bought "), std::string::npos);
  EXPECT_EQ(manager.checkFund(""), Message::None);
  EXPECT_EQ(add('B', "1/2/2001", "10", "100"), Message::None);
  EXPECT_EQ(manager.showFund(1).message, Message::None);
  EXPECT_EQ(manager.showAllFunds().report.blocks.size(), 2U);
  for (const std::int16_t row : {std::int16_t{1}, std::int16_t{2}}) {
    global.boxes.BoxEdited = 1;
    EXPECT_EQ(manager.leavePriceBox(row, "20").message, Message::None);
  }
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::None);
  ASSERT_EQ(manager.SaveDatabase(folder.file("Again.PQD")).message, Message::None);
  EXPECT_NE(contents(folder.file("Again.PQD")).find("\r\n\"\",\"2\"\r\n\"Fund B\",\"1\"\r\n"),
            std::string::npos);
}

TEST_F(ManagerTest, AFundWithoutANameNeedsNoRecord) {
  Database database = madeDatabase(1, 2);
  mirelund::addFund(database, "");
  ASSERT_EQ(open(database), Message::None);
  for (const std::int16_t row : {std::int16_t{1}, std::int16_t{2}}) {
    global.boxes.BoxEdited = 1;
    manager.leavePriceBox(row, "20");
  }
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::None);
}

TEST_F(ManagerTest, OpeningClearsTotalsAndResults) {
  ASSERT_EQ(open(madeDatabase(1, 3)), Message::None);
  global.boxes.BoxEdited = 1;
  manager.leavePriceBox(1, "20");
  EXPECT_EQ(manager.calculateCurrentValue().message, Message::None);
  EXPECT_EQ(manager.OpenDatabase(folder.file("Test.PQD")), Message::None);
  EXPECT_EQ(manager.state().CVResults, "");
  EXPECT_EQ(global.chart.ChartCount, 0);
  for (std::size_t row = 0; row < 32; ++row)
    for (std::size_t column = 0; column < 7; ++column)
      EXPECT_TRUE(global.reports.ComparisonTotals.at(row, column).isZero());
}

TEST_F(ManagerTest, DiscardingForgetsThatABoxWasTypedInto) {
  global.boxes.BoxEdited = 1;
  manager.DiscardDatabase();
  EXPECT_EQ(global.boxes.BoxEdited, 0);
}

TEST_F(ManagerTest, PrintingPutsTheHeaderInFront) {
  EXPECT_EQ(Manager::checkPrint(""), Message::NothingToPrint);
  EXPECT_EQ(Manager::checkPrint("x"), Message::None);
  manager.preparePrint("My funds", "report");
  EXPECT_EQ(global.reports.ReportLines[2], "My funds\r\nreport");
  manager.preparePrint("", "report");
  EXPECT_EQ(global.reports.ReportLines[2], "report");
  // The calculators print their own again.
  manager.DiscardDatabase();
  EXPECT_EQ(global.reports.ReportLines[2], "");
}

TEST_F(ManagerTest, NamesAreShownAsTextAndKeptAsBytes) {
  Database database = madeDatabase(2, 2);
  database.FundTable[1].name = "caf\xC3\xA9";
  database.FundTable[2].name = "caf\xE9";
  ASSERT_EQ(open(database), Message::None);
  EXPECT_EQ(manager.fundNames(), (std::vector<std::string>{"café", "café"}));
  manager.chooseFund(2);
  EXPECT_EQ(manager.checkFund("café"), Message::None);
  ASSERT_EQ(manager.SaveDatabase(folder.file("Again.PQD")).message, Message::None);
  EXPECT_EQ(contents(folder.file("Again.PQD")), contents(folder.file("Test.PQD")));
}

// One thing that a person can do to the database, drawn while a case is.
void anyStep(Manager& manager, BoxState& boxes) {
  const auto& database = manager.database();
  const std::string active = manager.fundName(manager.state().ActiveFundRow);
  switch (*anyIn(0, 8)) {
    case 0:
      manager.addFund(*rc::gen::elementOf(std::vector<std::string>{"a", "b", "zzzzzzzzzz", "~"}));
      break;
    case 1:
      if (database.FundCount > 0)
        manager.chooseFund(
            *anyIn<std::int16_t>(1, static_cast<std::int16_t>(database.FundCount + 1)));
      break;
    case 2:
      manager.correctRecord(active, std::to_string(*anyIn(0, 5)));
      break;
    case 3:
      manager.deleteRecord(std::to_string(*anyIn(0, 5)));
      break;
    case 4:
      if (manager.askDelete(active).wholeFund) manager.deleteFund();
      break;
    default:
      manager.chooseType(*anyIn<std::size_t>(0, 6));
      for (const auto box :
           {EntryBox::Price, EntryBox::Shares, EntryBox::Fees, EntryBox::Dividend}) {
        const auto* type = manager.state().entry.type;
        if (type == nullptr || type->need(box) == Need::None) continue;
        boxes.BoxEdited = 1;
        manager.leaveValueBox(box, std::to_string(*rc::gen::inRange(1, 1000)));
      }
      manager.addRecord(formatDate(*anyDate(), manager.dateFormat()), active);
  }
}

// Whatever is done, the tables stay within their limits, sorted and numbered.
TEST(Manager, KeepsItsTablesInOrder) {
  checkReaching({{"records", 0.5}}, [](Reached& reached) {
    Global global;
    Manager manager{global.boxes, global.reports, global.chart};
    manager.DiscardDatabase();
    const int steps = *anyIn(1, 60);
    for (int i = 0; i < steps; ++i) {
      anyStep(manager, global.boxes);
      const auto& database = manager.database();
      RC_ASSERT(std::ranges::is_sorted(database.funds(), {}, &Fund::name));
      RC_ASSERT(std::ranges::is_sorted(database.records(), {}, &Record::date));
      std::int16_t number = 0;
      for (const Record& record : database.records()) RC_ASSERT(record.number == ++number);
      const auto back = parseDatabase(writeDatabase(database));
      RC_ASSERT(back.has_value());
      RC_ASSERT(*back == database);
      RC_ASSERT(manager.showAllFunds().message == Message::None);
    }
    if (manager.database().RecordCount > 1) reached("records");
  });
}

// Whatever is done to the others, of any amounts.
// No fund is chosen: that is no fund's number, though a record may have it.
TEST_F(ManagerTest, FindsNoRecordOfFundZeroWithoutAFund) {
  write(folder.file("Zero.PQD"),
        "1,1,\"All Records\",\"31\"\r\n\"Alder\",\"1\"\r\n"
        "0,10,100,50,0,1050,\"B\",#2019-01-02#\r\n");
  ASSERT_EQ(manager.OpenDatabase(folder.file("Zero.PQD")), Message::None);
  EXPECT_EQ(manager.checkRecordNumber("1"), Message::NotARecord);
}

TEST(Manager, LeavesTheRecordsOfUnknownFundsAlone) {
  checkReaching({{"others", 0.5}}, [](Reached& reached) {
    const Folder folder;
    Database strange = drawnDatabase(18, *anyIn(1, 20), anyAmount(), anyAmount());
    for (Record& record : strange.records()) record.fund = Currency::whole(*anyIn(19, 60));
    strange.FundCount = 0;
    write(folder.file("Strange.PQD"), writeDatabase(strange));
    Global global;
    Manager manager{global.boxes, global.reports, global.chart};
    manager.DiscardDatabase();
    RC_ASSERT(manager.OpenDatabase(folder.file("Strange.PQD")) == Message::None);
    const auto unknown = [](const Database& database) {
      std::vector<std::string> lines;
      for (Record record : database.records()) {
        if (record.fund <= Currency::whole(18)) continue;
        Database alone;
        alone.RecordCount = 1;
        alone.RecordTable[1] = record;
        lines.push_back(writeDatabase(alone));
      }
      std::ranges::sort(lines);
      return lines;
    };
    const int steps = *anyIn(1, 40);
    for (int i = 0; i < steps; ++i) anyStep(manager, global.boxes);
    RC_ASSERT(unknown(manager.database()) == unknown(strange));
    RC_ASSERT(std::ranges::is_sorted(manager.database().records(), {}, &Record::date));
    RC_ASSERT(manager.showAllFunds().message == Message::None);
    if (manager.database().RecordCount > strange.RecordCount) reached("others");
  });
}

}  // namespace
}  // namespace mirelund

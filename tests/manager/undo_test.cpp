// SPDX-License-Identifier: GPL-3.0-or-later
// What the manager undoes and does again.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>

#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "manager/manager.h"
#include "reached.h"

namespace mirelund {
namespace {

constexpr char kTypes[] = "BSCDFU";

// A person at the manager.
class Person {
 public:
  Person() { manager.DiscardDatabase(); }

  void type(EntryBox box, const std::string& text) {
    global.boxes.BoxEdited = 1;
    manager.leaveValueBox(box, text);
  }
  // A row of the type's boxes, each with `amount`.
  void fill(char code, const std::string& amount) {
    manager.chooseType(std::string(kTypes).find(code));
    if (manager.state().entry.type == nullptr) return;
    for (const EntryBoxRule& rule : kEntryRow)
      if (rule.box != EntryBox::Date && manager.state().entry.type->need(rule.box) != Need::None)
        type(rule.box, amount);
  }
  std::string active() const { return manager.fundName(manager.state().ActiveFundRow); }
  Message add(char code, const std::string& day, const std::string& amount) {
    fill(code, amount);
    return manager.addRecord(day, active()).message;
  }
  Message correct(const std::string& number, const std::string& day, const std::string& amount) {
    if (const Message refused = manager.correctRecord(active(), number); refused != Message::None)
      return refused;
    type(manager.state().entry.type->code == 'C' ? EntryBox::Dividend : EntryBox::Price, amount);
    return manager.addRecord(day, active()).message;
  }
  Restored undo() { return manager.restore(Direction::Undo); }
  Restored redo() { return manager.restore(Direction::Redo); }
  std::string_view undoText() const { return manager.stepText(Direction::Undo); }
  std::string_view redoText() const { return manager.stepText(Direction::Redo); }
  std::string bytes() const { return writeDatabase(manager.database()); }
  bool changed() const { return manager.state().FileChanged == 1; }
  void open(const Database& database) {
    write(folder.file("Test.PQD"), writeDatabase(database));
    ASSERT_EQ(manager.OpenDatabase(folder.file("Test.PQD")), Message::None);
  }
  void price(std::int16_t row) {
    global.boxes.BoxEdited = 1;
    manager.leavePriceBox(row, "20");
  }

  Folder folder;
  Global global;
  Manager manager{global.boxes, global.reports, global.chart};
};

class Undo : public testing::Test, protected Person {};

TEST_F(Undo, HasNothingToDoAtFirst) {
  for (const auto way : {Direction::Undo, Direction::Redo}) {
    EXPECT_FALSE(manager.canRestore(way));
    const Restored restored = manager.restore(way);
    EXPECT_EQ(restored.outcome.message, Message::None);
    EXPECT_FALSE(restored.outcome.showResults);
    EXPECT_TRUE(restored.rowKept);
    EXPECT_FALSE(changed());
  }
  EXPECT_EQ(undoText(), "Undo");
  EXPECT_EQ(redoText(), "Redo");
}

TEST_F(Undo, TakesBackEachKindOfChange) {
  struct Done {
    std::string_view undo;
    std::string_view redo;
    std::string after;
  };
  std::vector<Done> day;
  const std::string begun = bytes();
  const auto did = [&](std::string_view undo, std::string_view redo) {
    EXPECT_EQ(undoText(), undo);
    EXPECT_FALSE(manager.canRestore(Direction::Redo));
    day.push_back({undo, redo, bytes()});
  };
  manager.addFund("Birch");
  did("Undo add fund", "Redo add fund");
  EXPECT_EQ(add('B', "1/2/2001", "10"), Message::None);
  did("Undo add record", "Redo add record");
  EXPECT_EQ(add('B', "1/2/2000", "11"), Message::None);
  did("Undo add record", "Redo add record");
  EXPECT_EQ(correct("1", "1/2/2002", "12"), Message::None);
  did("Undo correct record", "Redo correct record");
  EXPECT_EQ(manager.deleteRecord("2").message, Message::None);
  did("Undo delete record", "Redo delete record");
  manager.addFund("Amber");
  did("Undo add fund", "Redo add fund");
  EXPECT_EQ(manager.deleteFund(), Message::None);
  did("Undo delete fund", "Redo delete fund");

  for (int turn = 0; turn < 2; ++turn) {
    for (std::size_t i = day.size(); i-- > 0;) {
      EXPECT_EQ(undoText(), day[i].undo);
      EXPECT_TRUE(changed());
      EXPECT_TRUE(undo().outcome.showResults);
      EXPECT_EQ(redoText(), day[i].redo);
      EXPECT_EQ(bytes(), i == 0 ? begun : day[i - 1].after);
    }
    EXPECT_FALSE(manager.canRestore(Direction::Undo));
    EXPECT_FALSE(changed()) << "as it was begun";
    for (const Done& done : day) {
      EXPECT_EQ(redoText(), done.redo);
      EXPECT_TRUE(redo().outcome.showResults);
      EXPECT_EQ(bytes(), done.after);
      EXPECT_TRUE(changed());
    }
    EXPECT_FALSE(manager.canRestore(Direction::Redo));
  }
}

TEST_F(Undo, OperationsThatAreRefusedOrOnlyShowAreNoSteps) {
  manager.addFund("Amber");
  undo();
  manager.addFund("");
  manager.addFund("a\"b");
  manager.deleteFund();
  manager.showAllFunds();
  manager.chooseFund(0);
  EXPECT_EQ(add('B', "1/2/2001", "10"), Message::NoType);
  EXPECT_EQ(undoText(), "Undo");
  EXPECT_EQ(redoText(), "Redo add fund");
  redo();
  fill('B', "10");
  EXPECT_EQ(manager.addRecord("2/30/2001", "Amber").message, Message::DateFormat);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::NotARecord);
  EXPECT_EQ(undoText(), "Undo add fund");
  EXPECT_EQ(manager.checkSave(), Message::NoRecords);
}

TEST_F(Undo, EndsWhereADatabaseWasOpenedOrGivenUp) {
  manager.addFund("Amber");
  undo();
  redo();
  open(madeDatabase(2, 5));
  EXPECT_FALSE(manager.canRestore(Direction::Undo));
  manager.chooseFund(1);
  manager.deleteRecord("1");
  undo();
  EXPECT_FALSE(changed());
  EXPECT_EQ(bytes(), writeDatabase(madeDatabase(2, 5)));
  // What cannot be opened takes nothing away.
  write(folder.file("None.PQD"), "none");
  EXPECT_EQ(manager.OpenDatabase(folder.file("None.PQD")), Message::CannotOpen);
  EXPECT_TRUE(manager.canRestore(Direction::Redo));
  open(madeDatabase(2, 5));
  EXPECT_FALSE(manager.canRestore(Direction::Redo));
  manager.chooseFund(1);
  manager.deleteRecord("1");
  manager.DiscardDatabase();
  EXPECT_FALSE(manager.canRestore(Direction::Undo));
  EXPECT_FALSE(changed());
}

TEST_F(Undo, IsUnchangedWhereItWasSavedAlone) {
  manager.addFund("Amber");
  for (const char* day : {"1/1/2001", "1/2/2001"}) EXPECT_EQ(add('B', day, "1"), Message::None);
  const std::string saved = folder.file("Saved.PQD");
  ASSERT_EQ(manager.SaveDatabase(saved).message, Message::None);
  EXPECT_FALSE(changed());
  EXPECT_EQ(undoText(), "Undo add record") << "saving takes no step away";
  undo();
  EXPECT_TRUE(changed()) << "undone past what is on disk";
  EXPECT_TRUE(manager.mustAskBeforeDiscarding());
  redo();
  EXPECT_FALSE(changed());
  EXPECT_EQ(add('F', "1/3/2001", "1"), Message::None);
  undo();
  EXPECT_FALSE(changed());
  EXPECT_EQ(bytes(), contents(saved));
  // A save that fails leaves the mark where it was.
  undo();
  EXPECT_EQ(manager.SaveDatabase(folder.file("no folder/Saved.PQD")).message, Message::CannotSave);
  EXPECT_TRUE(changed());
  redo();
  EXPECT_FALSE(changed());
  undo();
  EXPECT_EQ(add('F', "1/3/2001", "1"), Message::None);
  undo();
  EXPECT_TRUE(changed()) << "what was saved can no longer be come to";
  undo();
  undo();
  EXPECT_FALSE(manager.canRestore(Direction::Undo));
  EXPECT_TRUE(changed()) << "saved since it was begun";
}

// The sort leaves them in an order of its own, from which it would not find back.
TEST_F(Undo, TheOrderOfEqualDatesComesBack) {
  manager.addFund("Amber");
  for (int i = 1; i <= 9; ++i) EXPECT_EQ(add('B', "1/5/2001", std::to_string(i)), Message::None);
  const auto orderOfTheNine = [&] {
    std::string prices;
    for (const Record& record : manager.database().records())
      if (record.date == date(2001, 1, 5)) prices += FormatNumber(record.price, "#");
    return prices;
  };
  EXPECT_EQ(orderOfTheNine(), "123456789");
  const std::string before = bytes();
  EXPECT_EQ(add('B', "1/4/2001", "10"), Message::None);
  EXPECT_NE(orderOfTheNine(), "123456789");
  const std::string after = bytes();
  undo();
  EXPECT_EQ(bytes(), before);
  redo();
  EXPECT_EQ(bytes(), after);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  undo();
  EXPECT_EQ(bytes(), after);
}

TEST_F(Undo, NumbersThatFundsShareComeBack) {
  for (const char* name : {"Amber", "Birch", "Cedar"}) manager.addFund(name);
  manager.chooseFund(2);
  EXPECT_EQ(manager.deleteFund(), Message::None);
  manager.addFund("Dahlia");
  EXPECT_EQ(manager.database().FundTable[3].number, "3");
  EXPECT_EQ(add('B', "1/1/2001", "1"), Message::None);
  undo();
  EXPECT_EQ(manager.state().ActiveFundRow, 3) << "not the other of its number";
  undo();
  EXPECT_EQ(manager.fundNames(), (std::vector<std::string>{"Amber", "Cedar"}));
  undo();
  EXPECT_EQ(manager.fundNames(), (std::vector<std::string>{"Amber", "Birch", "Cedar"}));
  EXPECT_EQ(manager.database().FundTable[2].number, "2");
  EXPECT_EQ(manager.database().FundTable[3].number, "3");
}

TEST_F(Undo, ShowsTheFundOfTheStep) {
  manager.addFund("Birch");
  EXPECT_EQ(add('B', "1/1/2001", "1"), Message::None);
  const std::string oneRecord = manager.showRecordList().results;
  EXPECT_EQ(add('B', "1/2/2001", "2"), Message::None);
  manager.addFund("Amber");
  manager.chooseFund(1);
  // The fund goes: none is active.
  EXPECT_EQ(undo().outcome.results, "");
  EXPECT_EQ(manager.state().ActiveFund, 0);
  EXPECT_EQ(manager.state().ActiveFundRow, 0);
  // A record of another fund, or of none that was chosen: its own.
  const Restored restored = undo();
  EXPECT_EQ(restored.outcome.results, oneRecord);
  EXPECT_EQ(active(), "Birch");
  EXPECT_EQ(manager.state().ActiveFund, 1);
  redo();
  redo();
  EXPECT_EQ(active(), "Amber") << "as by adding it";
  EXPECT_EQ(manager.state().ActiveFund, 2);
}

TEST_F(Undo, AFundThatStaysActiveIsFollowed) {
  manager.addFund("Birch");
  manager.addFund("Amber");
  manager.chooseFund(2);
  fill('B', "7");
  EXPECT_TRUE(undo().rowKept);
  EXPECT_EQ(active(), "Birch");
  EXPECT_EQ(manager.state().ActiveFundRow, 1);
  EXPECT_EQ(manager.state().ActiveFund, 1);
  EXPECT_EQ(manager.state().entry.value(EntryBox::Price), money(7));
  EXPECT_EQ(manager.addRecord("1/1/2001", "Birch").message, Message::None);
}

TEST_F(Undo, ARowHalfTypedStaysWithItsFundAlone) {
  manager.addFund("Amber");
  EXPECT_EQ(add('B', "1/1/2001", "1"), Message::None);
  fill('S', "3");
  EXPECT_TRUE(undo().rowKept);
  EXPECT_EQ(manager.state().entry.type->code, 'S');
  EXPECT_EQ(manager.state().entry.value(EntryBox::Shares), money(3));
  EXPECT_TRUE(redo().rowKept);
  manager.addFund("Birch");
  manager.chooseFund(2);
  fill('S', "3");
  EXPECT_FALSE(undo().rowKept) << "its fund is gone";
  EXPECT_EQ(manager.state().entry.type, nullptr);
  redo();
  manager.chooseFund(1);
  fill('S', "3");
  undo();
  EXPECT_EQ(manager.state().entry.type->code, 'S') << "another went";
  redo();
  EXPECT_EQ(active(), "Birch");
  EXPECT_EQ(manager.state().entry.type, nullptr) << "another is active";
}

// The record that is being corrected may be gone, or have another number.
TEST_F(Undo, CancelsACorrection) {
  manager.addFund("Amber");
  for (const char* day : {"1/2/2001", "1/1/2001"}) EXPECT_EQ(add('B', day, "1"), Message::None);
  EXPECT_EQ(manager.correctRecord("Amber", "2"), Message::None);
  EXPECT_FALSE(undo().rowKept);
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
  EXPECT_EQ(manager.state().entry.type, nullptr);
  EXPECT_EQ(manager.correctRecord("Amber", "1"), Message::None);
  EXPECT_FALSE(redo().rowKept);
  EXPECT_EQ(manager.state().CorrectingRecord, 0);
}

TEST_F(Undo, MakesReportsStaleAsAnyChangeDoes) {
  open(madeDatabase(2, 6));
  manager.chooseFund(1);
  manager.deleteRecord("1");
  const auto valued = [&] {
    price(1);
    price(2);
    EXPECT_EQ(manager.calculateCurrentValue().message, Message::None);
    EXPECT_EQ(global.chart.ChartCount, 2);
  };
  valued();
  const ManagerState before = manager.state();
  undo();
  EXPECT_NE(manager.state().dataRevision, before.dataRevision);
  EXPECT_EQ(manager.state().fundsRevision, before.fundsRevision);
  EXPECT_EQ(manager.state().CVResults, "");
  EXPECT_EQ(global.chart.ChartCount, 0);
  EXPECT_EQ(manager.graphCurrentValue(), Message::NothingToGraph);
  EXPECT_EQ(manager.priceText(1), "20.0000") << "prices stay while the funds do";
  manager.addFund("Amber");
  undo();
  EXPECT_EQ(manager.priceText(1), "");
  EXPECT_NE(manager.state().fundsRevision, before.fundsRevision + 1);
}

TEST_F(Undo, TellsATotalOutOfRangeAndIsDone) {
  Database database = madeDatabase(1, 2);
  for (Record& record : database.records()) record.shares = Currency::whole(900'000'000'000'000);
  open(database);
  EXPECT_EQ(manager.chooseFund(1).message, Message::WrongEntry);
  EXPECT_EQ(manager.deleteRecord("1").message, Message::None);
  const Restored restored = undo();
  EXPECT_EQ(restored.outcome.message, Message::WrongEntry);
  EXPECT_TRUE(restored.outcome.showResults);
  EXPECT_EQ(restored.outcome.results, "");
  EXPECT_EQ(bytes(), writeDatabase(database));
  EXPECT_FALSE(changed());
}

// --- any day ---------------------------------------------------------------------

// What the file was after each step of the day, from the last open on; where it was saved.
class Day : public Person {
 public:
  explicit Day(const Database& database) {
    open(database);
    after = {bytes()};
  }

  // Something that a person does, whatever comes of it.
  void act() {
    const std::uint32_t before = manager.state().dataRevision;
    switch (*anyIn(0, 13)) {
      case 0:
        manager.addFund(*rc::gen::element<std::string>("Amber", "Birch", "Birch", "Cedar"));
        break;
      case 1:
        manager.deleteFund();
        break;
      case 2:
        manager.deleteRecord(number());
        break;
      case 3:
      case 4:
        correct(number(), date(), amount());
        break;
      case 5:
        manager.correctRecord(active(), number());
        break;
      case 6:
        save();
        break;
      case 7:
        return go(Direction::Undo);
      case 8:
        return go(Direction::Redo);
      case 9:
        if (manager.database().FundCount > 0)
          manager.chooseFund(*anyIn<std::int16_t>(1, manager.database().FundCount + 1));
        break;
      default:
        add(*rc::gen::elementOf(std::string(kTypes)), date(), amount());
    }
    if (manager.state().dataRevision == before) return;
    after.resize(at + 1);
    if (saved && *saved > at) saved.reset();
    after.push_back(bytes());
    ++at;
  }

  void save() {
    const std::string path = folder.file("Day.PQD");
    if (manager.SaveDatabase(path).message != Message::None) return;
    saved = at;
    RC_ASSERT(contents(path) == bytes());
  }

  void go(Direction way) {
    const bool can = way == Direction::Undo ? at > 0 : at + 1 < after.size();
    RC_ASSERT(manager.canRestore(way) == can);
    const Restored restored = manager.restore(way);
    RC_ASSERT(restored.outcome.showResults == can);
    if (can) at = way == Direction::Undo ? at - 1 : at + 1;
  }

  // The file, byte for byte, and whether it is the one on disk.
  void check() const {
    RC_ASSERT(bytes() == after[at]);
    RC_ASSERT(changed() == (saved != at));
    RC_ASSERT(manager.canRestore(Direction::Undo) == (at > 0));
    RC_ASSERT(manager.canRestore(Direction::Redo) == (at + 1 < after.size()));
    const ManagerState& state = manager.state();
    const Fund& fund = manager.database().FundTable[static_cast<std::size_t>(state.ActiveFundRow)];
    RC_ASSERT(state.ActiveFundRow <= manager.database().FundCount);
    RC_ASSERT(state.ActiveFund == fundNumber(fund));
    std::int16_t number = 0;
    for (const Record& record : manager.database().records()) RC_ASSERT(record.number == ++number);
  }

  std::vector<std::string> after;
  std::size_t at = 0;
  std::optional<std::size_t> saved = 0;

 private:
  static std::string number() { return std::to_string(*anyIn(1, 6)); }
  // So few that dates come again.
  static std::string date() { return "1/" + std::to_string(*anyIn(1, 5)) + "/2001"; }
  static std::string amount() { return std::to_string(*anyIn(1, 1000)) + ".25"; }
};

TEST(UndoProperty, AnyDayIsUndoneToItsStartAndRedoneToItsEndByteForByte) {
  checkReaching({{"end"}, {"many steps", 0.6}, {"saved in between", 0.4}}, [](Reached& reached) {
    Day day(*anyIn(0, 2) == 0 ? Database() : *moderateDatabase());
    const int acts = *anyIn(20, 60);
    for (int i = 0; i < acts; ++i) {
      day.act();
      day.check();
    }
    while (day.at > 0) {
      day.go(Direction::Undo);
      day.check();
    }
    day.go(Direction::Undo);
    day.check();
    while (day.at + 1 < day.after.size()) {
      day.go(Direction::Redo);
      day.check();
    }
    if (day.after.size() > 5) reached("many steps");
    if (day.saved != std::optional<std::size_t>(0)) reached("saved in between");
    reached();
  });
}

}  // namespace
}  // namespace mirelund

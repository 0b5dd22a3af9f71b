// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/history.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "manager/database/data_file.h"
#include "manager/database/databases.h"

namespace mirelund {
namespace {

// A database in use and what has been done to it.
struct Used {
  template <typename Operation>
  void does(Step step, Operation operation) {
    const Database before = database;
    operation(database);
    history.add(History::made(step, 1, before, database));
  }
  void addsFund(const std::string& name) {
    does(Step::AddFund, [&](Database& changed) { addFund(changed, name); });
  }
  void goes(Direction way) {
    history.restore(way, database);
    history.move(way);
  }
  std::string names() const {
    std::string all;
    for (const Fund& fund : database.funds()) all += fund.name;
    return all;
  }

  Database database;
  History history;
};

TEST(History, StepsAreCalledAsWhatWasDone) {
  EXPECT_EQ(rowOf(kSteps, Step::AddRecord).texts,
            (StepTexts{"Undo add record", "Redo add record"}));
  EXPECT_EQ(rowOf(kSteps, Step::CorrectRecord).texts,
            (StepTexts{"Undo correct record", "Redo correct record"}));
  EXPECT_EQ(rowOf(kSteps, Step::DeleteRecord).texts,
            (StepTexts{"Undo delete record", "Redo delete record"}));
  EXPECT_EQ(rowOf(kSteps, Step::AddFund).texts, (StepTexts{"Undo add fund", "Redo add fund"}));
  EXPECT_EQ(rowOf(kSteps, Step::DeleteFund).texts,
            (StepTexts{"Undo delete fund", "Redo delete fund"}));
}

TEST(History, BeginsWithoutSteps) {
  const History history;
  EXPECT_EQ(history.next(Direction::Undo), nullptr);
  EXPECT_EQ(history.next(Direction::Redo), nullptr);
  EXPECT_TRUE(history.isSaved());
}

TEST(History, KeepsTheRowsThatDifferAlone) {
  const Database before = madeDatabase(2, 60);
  Database after = before;
  removeRecord(after, 20);
  const auto one = History::made(Step::DeleteRecord, 2, before, after);
  const HistoryStep& step = one.front();
  EXPECT_EQ(step.step, Step::DeleteRecord);
  EXPECT_EQ(step.fundRow, 2);
  EXPECT_EQ(step.records.at, 19U);
  ASSERT_EQ(step.records.before.size(), 1U);
  EXPECT_EQ(step.records.before[0], before.RecordTable[20]);
  EXPECT_TRUE(step.records.after.empty());
  EXPECT_TRUE(step.funds.before.empty());
  EXPECT_TRUE(step.funds.after.empty());
  EXPECT_LT(step.bytes, 1000U);

  addFund(after = before, "Fund BB");
  const auto another = History::made(Step::AddFund, 2, before, after);
  EXPECT_EQ(another.front().funds.at, 1U);
  EXPECT_EQ(another.front().funds.after, (std::vector<Fund>{{"Fund BB", "3"}}));
  EXPECT_TRUE(another.front().funds.before.empty());
  EXPECT_TRUE(another.front().records.after.empty());
}

TEST(History, KnowsWhichWayRemovesAFund) {
  const auto removes = [](Step step, Direction way) {
    HistoryStep made;
    made.step = step;
    return made.removesFund(way);
  };
  EXPECT_TRUE(removes(Step::AddFund, Direction::Undo));
  EXPECT_TRUE(removes(Step::DeleteFund, Direction::Redo));
  EXPECT_FALSE(removes(Step::AddFund, Direction::Redo));
  EXPECT_FALSE(removes(Step::DeleteFund, Direction::Undo));
  for (const auto step : {Step::AddRecord, Step::CorrectRecord, Step::DeleteRecord})
    for (const auto way : {Direction::Undo, Direction::Redo}) EXPECT_FALSE(removes(step, way));
}

TEST(History, GoesToAndFro) {
  Used used;
  for (const char* name : {"C", "A", "B"}) used.addsFund(name);
  for (int turn = 0; turn < 2; ++turn) {
    for (const char* names : {"AC", "C", ""}) {
      used.goes(Direction::Undo);
      EXPECT_EQ(used.names(), names);
    }
    EXPECT_EQ(used.history.next(Direction::Undo), nullptr);
    for (const char* names : {"C", "AC", "ABC"}) {
      used.goes(Direction::Redo);
      EXPECT_EQ(used.names(), names);
    }
    EXPECT_EQ(used.history.next(Direction::Redo), nullptr);
  }
}

TEST(History, LeavesNothingInRowsThatAreNotUsed) {
  Used used;
  used.addsFund("A");
  used.goes(Direction::Undo);
  EXPECT_EQ(used.database.FundTable[1], Fund());
  EXPECT_EQ(used.database.FundTable[kAllRecordsRow].name, "All Records");
  EXPECT_EQ(used.database.FundTable.size(), kFundRows);
  EXPECT_EQ(used.database.RecordTable.size(), kRecordRows);
}

TEST(History, ANewStepDropsWhatCouldBeRedone) {
  Used used;
  used.addsFund("A");
  used.addsFund("B");
  used.goes(Direction::Undo);
  used.addsFund("C");
  EXPECT_EQ(used.history.next(Direction::Redo), nullptr);
  used.goes(Direction::Undo);
  EXPECT_EQ(used.names(), "A");
}

TEST(History, IsSavedWhereItWas) {
  Used used;
  used.addsFund("A");
  EXPECT_FALSE(used.history.isSaved());
  used.addsFund("B");
  used.history.markSaved();
  EXPECT_TRUE(used.history.isSaved());
  used.addsFund("C");
  EXPECT_FALSE(used.history.isSaved());
  used.goes(Direction::Undo);
  EXPECT_TRUE(used.history.isSaved());
  used.goes(Direction::Undo);
  EXPECT_FALSE(used.history.isSaved()) << "undone past it";
  used.goes(Direction::Redo);
  EXPECT_TRUE(used.history.isSaved());
  used.addsFund("D");
  used.goes(Direction::Undo);
  EXPECT_TRUE(used.history.isSaved()) << "the step that was dropped lay behind it";
  used.goes(Direction::Undo);
  used.addsFund("E");
  EXPECT_FALSE(used.history.isSaved()) << "as many steps, but others";
  used.goes(Direction::Undo);
  EXPECT_FALSE(used.history.isSaved());
  used.goes(Direction::Undo);
  EXPECT_FALSE(used.history.isSaved()) << "where it was opened, and saved since";
  used.history.clear();
  EXPECT_TRUE(used.history.isSaved());
  EXPECT_EQ(used.history.next(Direction::Redo), nullptr);
}

TEST(History, TheOldestStepsGoWhereMemoryHasItsBound) {
  Used used;
  used.addsFund("A");
  used.history.markSaved();
  const std::size_t mostNames = kMostHistoryBytes / kMostNameBytes;
  std::size_t undone = 0;
  const auto undoAll = [&] {
    for (undone = 0; used.history.next(Direction::Undo) != nullptr; ++undone)
      used.goes(Direction::Undo);
  };
  for (std::size_t i = 0; i < mostNames; ++i) {
    used.addsFund(std::string(kMostNameBytes, 'Z'));
    used.does(Step::DeleteFund, [](Database& changed) { removeFund(changed, 2); });
  }
  undoAll();
  // A name a step, and what else a step takes.
  EXPECT_LT(undone, mostNames);
  EXPECT_GT(undone, mostNames * 99 / 100);
  EXPECT_FALSE(used.history.isSaved()) << "what was saved is behind what could be undone";
  const std::string first = writeDatabase(used.database);
  while (used.history.next(Direction::Redo) != nullptr) used.goes(Direction::Redo);
  EXPECT_EQ(used.names(), "A");
  const std::size_t could = undone;
  undoAll();
  EXPECT_EQ(undone, could) << "to undo and redo takes no more";
  EXPECT_EQ(writeDatabase(used.database), first);
}

// However two databases differ: counts, names, orders, all rows or none.
TEST(History, LeadsFromAnyDatabaseToAnyOtherAndBack) {
  rc::detail::checkGTest([] {
    const Database before = *anyDatabase();
    const Database after = *rc::gen::oneOf(anyDatabase(), rc::gen::exec([&] {
                                             Database changed = before;
                                             for (Record& record : changed.records())
                                               if (*anyIn(0, 4) == 0) record.price = *anyAmount();
                                             return changed;
                                           }));
    Used used;
    used.database = before;
    used.does(Step::CorrectRecord, [&](Database& changed) { changed = after; });
    for (int turn = 0; turn < 2; ++turn) {
      used.goes(Direction::Undo);
      RC_ASSERT(used.database == before);
      used.goes(Direction::Redo);
      RC_ASSERT(used.database == after);
    }
  });
}

}  // namespace
}  // namespace mirelund

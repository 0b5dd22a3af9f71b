// SPDX-License-Identifier: GPL-3.0-or-later
// Memory that lacks: every operation of the manager and every handler of the
// calculators is refused its first allocation, then its second, and so on until it
// succeeds. Nothing escapes, and until then nothing is another than before.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <new>
#include <sstream>

#include "calc/capital_required.h"
#include "calc/compound_gain.h"
#include "calc/investment_growth.h"
#include "calc/mortgage.h"
#include "calc/mortgage_schedule.h"
#include "calc/pension_growth.h"
#include "calc/retirement_income.h"
#include "charts/chart_data.h"
#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "manager/manager.h"

namespace {

// Counts down to the allocation that is refused, alone or with all behind it.
struct Refusal {
  long countdown = 0;  // 0: nothing is refused
  bool forGood = false;
  bool happened = false;

  bool refuses() {
    if (countdown == 0) return false;
    if (countdown > 1) {
      --countdown;
      return false;
    }
    if (!forGood) countdown = 0;
    return happened = true;
  }
};
Refusal refusal;

}  // namespace

// Not inlined: a compiler that sees malloc and free takes them for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const room = refusal.refuses() ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (room == nullptr) throw std::bad_alloc();
  return room;
}
[[gnu::noinline]] void operator delete(void* room) noexcept {
  std::free(room);
}
[[gnu::noinline]] void operator delete(void* room, std::size_t) noexcept {
  std::free(room);
}

namespace mirelund {
namespace {

// Runs `operation` while the n-th allocation is refused; whether it came to it.
template <typename Operation>
bool refused(long n, bool forGood, Operation operation) {
  refusal = {n, forGood, false};
  operation();
  refusal.countdown = 0;
  return refusal.happened;
}

Message messageOf(Message message) {
  return message;
}
template <typename Result>
Message messageOf(const Result& result) {
  return result.message;
}
Message messageOf(const MortgageOutcome& result) {
  return result.outcome.message;
}

Message messageOf(const Restored& result) {
  return result.outcome.message;
}

constexpr long kEnough = 10'000;

// Refuses one allocation after the other, in one place: what is as before can be tried
// again. `operation` returns what tells how it went; the place's `everything` is all that
// it may change, as one text. In the end it does what it does in another place.
template <typename Place, typename Operation>
void refuseInTurn(const char* name, Message failure, Operation operation,
                  const std::function<void(Place&)>& prepare = {}) {
  const auto prepared = [&prepare](Place& place) {
    if (prepare) prepare(place);
  };
  Place untroubled;
  prepared(untroubled);
  const Message expected = messageOf(operation(untroubled));
  for (const bool forGood : {true, false}) {
    Place place;
    prepared(place);
    const std::string before = place.everything();
    Message told{};
    long n = 1;
    for (; refused(n, forGood, [&] { told = messageOf(operation(place)); }); ++n) {
      ASSERT_EQ(told, failure) << name << ", allocation " << n;
      ASSERT_EQ(place.everything(), before) << name << ", allocation " << n;
      ASSERT_LT(n, kEnough) << name;
    }
    EXPECT_EQ(told, expected) << name;
    EXPECT_EQ(place.everything(), untroubled.everything()) << name;
  }
}

void put(std::ostream& out, const CurrencyTable& table) {
  for (std::size_t row = 0; row < table.rows(); ++row)
    for (std::size_t column = 0; column < table.columns(); ++column)
      out << table.at(row, column).tenThousandths() << ' ';
}

std::string textOf(const Global& global) {
  std::ostringstream out;
  const auto& [dialogs, boxes, reports, chart, tab] = global;
  for (const Currency value : boxes.InputValues) out << value.tenThousandths() << ' ';
  for (const double value : boxes.MortgageInputs) out << value << ' ';
  out << boxes.BoxEdited << ' ' << boxes.BoxText << ' ' << boxes.ExtraDecimals << '\n';
  for (const std::string& lines : reports.ReportLines) out << lines << '\n';
  put(out, reports.ComparisonTable);
  put(out, reports.ComparisonTotals);
  out << reports.ComparisonCount << ' ' << reports.StartOver << '\n'
      << static_cast<int>(chart.ChartKind) << ' ' << chart.ChartCount << ' ' << chart.ChartTitle
      << ' ' << chart.ChartPeriods << ' ' << chart.ChartPeriodsPerYear << '\n';
  for (const std::string& name : chart.ChartNames) out << name << '\n';
  return out.str();
}

// Files that are bytes by a name, and a store that can throw.
class MemoryFiles : public FileStore {
 public:
  FileRead read(const std::string& path, std::size_t) override {
    if (thrown) thrown();
    const auto found = files.find(path);
    if (found == files.end()) return {FileFailure::NoSuchFolder, {}};
    return {FileFailure::None, found->second};
  }
  FileFailure replace(const std::string& path, std::string_view bytes,
                      const std::optional<std::string>& expected) override {
    if (thrown) thrown();
    const auto found = files.find(path);
    if (found != files.end() && expected && found->second != *expected) return FileFailure::Changed;
    files[path] = std::string(bytes);
    return FileFailure::None;
  }
  std::string resolved(const std::string& path) override {
    if (thrown) thrown();
    return path;
  }

  std::map<std::string, std::string> files;
  void (*thrown)() = nullptr;
};

const std::string kPath = "/home/somebody/with a long name/Funds.PQD";
const std::string kOther = "/home/somebody/with a long name/Others.PQD";
const std::string kElsewhere = "/home/somebody/at another place.PQD";
const std::string kSecond = "The second of the funds, of a long name";
const std::string kDate = "1/2/2003";

constexpr int kStepsOfDay = 5;

// A manager at work: two funds of 30 records, the second fund chosen, everything valued,
// a record half typed, a report ready to be printed.
struct World {
  World() {
    Database database = madeDatabase(2, 60);
    database.FundTable[1].name = "First, also of a name that is not short";
    database.FundTable[2].name = kSecond;
    files.files[kPath] = files.files[kOther] = writeDatabase(database);
    manager.DiscardDatabase();
    manager.OpenDatabase(kPath);
    for (const std::int16_t row : {std::int16_t{1}, std::int16_t{2}}) price(row, "20.5");
    manager.chooseFund(2);
    type();
    manager.calculateCurrentValue();
    manager.preparePrint("A header of more than a few letters", "A report of more than a few");
    global.reports.ReportLines[1] = "A calculator's report of more than a few letters";
    global.chart.ChartNames = manager.fundNames();
  }

  void price(std::int16_t row, const char* text) {
    global.boxes.BoxEdited = 1;
    manager.leavePriceBox(row, text);
  }
  void type() {
    manager.chooseType(0);
    for (const EntryBox box : {EntryBox::Price, EntryBox::Shares, EntryBox::Fees}) {
      global.boxes.BoxEdited = 1;
      manager.leaveValueBox(box, "12.5");
    }
  }
  void edit() { global.boxes.BoxEdited = 1; }
  void graph() { global.chart.ChartKind = ChartKind::Manager; }
  void correct() { manager.correctRecord(kSecond, "3"); }
  // A day of all kinds of steps, undone to one of them.
  void undoTo(int steps) {
    emptyTheFund();
    manager.deleteFund();
    manager.chooseFund(2);
    manager.deleteRecord("5");
    correct();
    manager.addRecord(kDate, kSecond);
    type();
    manager.addRecord(kDate, kSecond);
    type();
    for (int left = kStepsOfDay; left > steps; --left) manager.restore(Direction::Undo);
  }
  void emptyTheFund() { manager.addFund("Third, which has no records at all"); }

  std::string everything() const {
    std::ostringstream out;
    const ManagerState& state = manager.state();
    out << textOf(global) << writeDatabase(manager.database()) << state.ActiveFund << ' '
        << state.ActiveFundRow << ' ' << state.CorrectingRecord << ' ' << state.FileChanged << ' '
        << static_cast<int>(state.FileDialogMode) << ' ' << state.DatabasePath << ' '
        << state.DatabaseName << ' ' << state.entry.type << ' ';
    for (const Currency value : state.entry.EntryValues) out << value.tenThousandths() << ' ';
    for (const bool beyond : state.entry.outOfRange) out << beyond << ' ';
    out << state.CVResults << state.fundsRevision << ' ' << state.dataRevision << '\n';
    for (std::int16_t row = 1; row <= kMostFunds; ++row) out << manager.priceText(row) << '\n';
    for (const auto& [path, bytes] : files.files) out << path << '\n' << bytes;
    out << manager.stepText(Direction::Undo) << manager.stepText(Direction::Redo);
    return out.str();
  }

  Global global;
  MemoryFiles files;
  Manager manager{global.boxes, global.reports, global.chart, files};
};

TEST(Memory, ThatLacksLeavesTheManagerAsItWas) {
  constexpr Message kThree = Message::WrongEntry;
  const auto refuse = [](const char* name, Message failure, auto operation,
                         const std::function<void(World&)>& prepare = {}) {
    refuseInTurn<World>(name, failure, operation, prepare);
  };
  refuse("discard", kThree, [](World& w) { return w.manager.DiscardDatabase(); });
  refuse("open", Message::CannotOpen, [](World& w) { return w.manager.OpenDatabase(kOther); });
  refuse("sample", Message::CannotOpen, [](World& w) { return w.manager.openSample(kOther); });
  refuse("save", Message::CannotSave, [](World& w) { return w.manager.SaveDatabase(kPath); });
  refuse("save elsewhere", Message::CannotSave,
         [](World& w) { return w.manager.SaveDatabase(kElsewhere); });
  refuse("choose a fund", kThree, [](World& w) { return w.manager.chooseFund(1); });
  refuse("add a fund", kThree,
         [](World& w) { return w.manager.addFund("A new fund of a name that is not short"); });
  refuse("choose a type", kThree, [](World& w) { return w.manager.chooseType(2); });
  refuse("leave the date", kThree, [](World& w) { return w.manager.leaveDateBox(kDate); });
  refuse(
      "leave a value", kThree,
      [](World& w) {
        return w.manager.leaveValueBox(EntryBox::Price, "123456789012.12345678901234567890");
      },
      &World::edit);
  refuse("add a record", kThree, [](World& w) { return w.manager.addRecord(kDate, kSecond); });
  refuse(
      "store a corrected record", kThree,
      [](World& w) { return w.manager.addRecord(kDate, kSecond); }, &World::correct);
  refuse("check the fund", kThree, [](World& w) { return w.manager.checkFund(kSecond); });
  refuse("correct a record", kThree,
         [](World& w) { return w.manager.correctRecord(kSecond, "2.0000000000000000000000"); });
  refuse(
      "ask to delete", kThree, [](World& w) { return w.manager.askDelete(kSecond); },
      &World::correct);
  refuse("check a number", kThree,
         [](World& w) { return w.manager.checkRecordNumber("2.0000000000000000000000"); });
  refuse("delete a record", kThree, [](World& w) { return w.manager.deleteRecord("2"); });
  refuse(
      "delete a fund", kThree, [](World& w) { return w.manager.deleteFund(); },
      &World::emptyTheFund);
  for (int step = 0; step < kStepsOfDay; ++step) {
    refuse(
        "undo", kThree, [](World& w) { return w.manager.restore(Direction::Undo); },
        [=](World& w) { w.undoTo(kStepsOfDay - step); });
    refuse(
        "redo", kThree, [](World& w) { return w.manager.restore(Direction::Redo); },
        [=](World& w) { w.undoTo(step); });
  }
  refuse("show the list", kThree, [](World& w) { return w.manager.showRecordList(); });
  refuse("show a fund", kThree, [](World& w) { return w.manager.showFund(1); });
  refuse("show all funds", kThree, [](World& w) { return w.manager.showAllFunds(); });
  refuse(
      "leave a price", kThree,
      [](World& w) { return w.manager.leavePriceBox(1, "123456789012.1234567890123456789"); },
      &World::edit);
  refuse("calculate", kThree, [](World& w) { return w.manager.calculateCurrentValue(); });
  refuse("graph", kThree, [](World& w) { return w.manager.graphCurrentValue(); });
  refuse("print", kThree, [](World& w) {
    return w.manager.preparePrint("Another header, which is longer than the one before it",
                                  "Another report, which is longer than the one before it");
  });
}

// They return no message: a text or nothing, and what they throw is std::bad_alloc.
TEST(Memory, ThatLacksIsAllThatATellerThrows) {
  World world;
  world.correct();
  const Manager& manager = world.manager;
  const std::string before = world.everything();
  const std::function<void()> tellers[] = {
      [&] { manager.fundNames(); },
      [&] { manager.fundName(2); },
      [&] { manager.details(date(2001, 2, 3)); },
      [&] { manager.fundsText(); },
      [&] { manager.recordsText(); },
      [&] { manager.databaseText(); },
      [&] { manager.valueText(EntryBox::Price); },
      [&] { manager.priceText(1); },
      [&] { manager.correctingDateText(); },
      [&] { messageText(Message::NoRecords, {}); },
      [&] { questionText(Question::DeleteFund, {}); },
  };
  for (const auto& teller : tellers) {
    long n = 1;
    const auto tell = [&] {
      try {
        teller();
      } catch (const std::bad_alloc&) {
      }
    };
    while (refused(n, false, tell)) ASSERT_LT(++n, kEnough);
    EXPECT_EQ(world.everything(), before);
  }
}

// --- what a file store throws -------------------------------------------------------

TEST(Manager, OutlivesAFileStoreThatThrows) {
  void (*const throws[])() = {[] { throw std::bad_alloc(); },
                              [] { throw std::length_error("too long"); },
                              [] { throw ArithmeticError("out of range"); }, [] { throw 5; }};
  for (const auto thrown : throws) {
    World world;
    world.manager.deleteRecord("1");
    world.files.thrown = thrown;
    const std::string before = world.everything();
    EXPECT_EQ(world.manager.OpenDatabase(kOther), Message::CannotOpen);
    EXPECT_EQ(world.everything(), before);
    const Saved saved = world.manager.SaveDatabase(kPath);
    EXPECT_EQ(saved.message, Message::CannotSave);
    EXPECT_EQ(saved.reason, FileFailure::Other);
    EXPECT_EQ(world.everything(), before);
    EXPECT_EQ(world.manager.state().FileChanged, 1);
    world.files.thrown = nullptr;
    EXPECT_EQ(world.manager.SaveDatabase(kPath).message, Message::None);
  }
}

// --- the calculators ----------------------------------------------------------------

struct Calculator {
  Calculator() {
    global.reports.ReportLines[1] = "A report that was there before, of more than a few letters";
    global.reports.ComparisonCount = 3;
    global.chart.ChartCount = 3;
    global.chart.ChartTitle = "A title that was there";
    fill(1000);
  }
  void fill(double amount) {
    for (std::size_t slot = 1; slot < 9; ++slot)
      global.boxes.InputValues[slot] = money(static_cast<double>(slot));
    global.boxes.InputValues[1] = global.boxes.InputValues[2] = money(amount);
    global.boxes.InputValues[2] += money(amount);
    texts = loadMortgage(global.boxes, days);
    global.boxes.MortgageInputs[1] = 100 * amount;
    global.boxes.MortgageInputs[4] = amount;
    texts.rate = "  a text that is longer than most are";
  }
  void nothing() { global.boxes.InputValues = {}; }
  void tooMuch() { fill(400'000'000'000'000); }
  void edit() { global.boxes.BoxEdited = 1; }
  void tenth() { global.reports.ComparisonCount = 9; }
  void help() { global.reports.StartOver = 1; }
  void periods() {
    global.chart.ChartKind = ChartKind::GrowthYears;
    global.chart.ChartPeriods = 24;
    global.chart.ChartPeriodsPerYear = 12;
  }

  std::string everything() const {
    std::string all = textOf(global);
    for (const auto text :
         {&MortgageTexts::principal, &MortgageTexts::rate, &MortgageTexts::term,
          &MortgageTexts::payment, &MortgageTexts::totalPmts, &MortgageTexts::numPmts,
          &MortgageTexts::daysInYear, &MortgageTexts::totIntSaved, &MortgageTexts::numYrs,
          &MortgageTexts::piPmt, &MortgageTexts::totIntPaid})
      all += texts.*text + '\n';
    return all + std::to_string(option) + std::to_string(days.DaysOption);
  }

  Global global;
  MortgageTexts texts;
  DaysInYearState days;
  std::int16_t option = 0;
};

const CompoundGainTexts kGain{"   $1,000.00", "   $2,000.00", " 3", "Of a name that is not short"};
const CapitalRequiredTexts kCapital{"   $1,000.00", " 2.00%", " 3"};
const PensionGrowthTexts kPension{"$1", "$2", "3%", "4%", "5%", "6%", "7%", "8"};
const RetirementIncomeTexts kIncome{"   $1,000.00", " 2.00%", " 3.00%", " 4"};

InvestmentGrowthTexts growth(GrowthResults results) {
  return {"$1", "$2", ContributionFrequency::Monthly, "4%", "5%", "6%", "7", results};
}

TEST(Memory, ThatLacksLeavesTheCalculatorsAsTheyWere) {
  const auto refuse = [](const char* name, auto operation) {
    for (void (Calculator::*prepare)() :
         {static_cast<void (Calculator::*)()>(nullptr), &Calculator::nothing, &Calculator::tooMuch,
          &Calculator::tenth, &Calculator::help})
      refuseInTurn<Calculator>(name, Message::WrongEntry, operation, prepare);
  };
  const auto with = [](auto calculate, const auto& texts) {
    return [calculate, &texts](Calculator& c) {
      return calculate(c.global.boxes, c.global.reports, c.global.chart, texts);
    };
  };
  refuse("compound gain", with(calculateCompoundGain, kGain));
  refuse("pension growth", with(calculatePensionGrowth, kPension));
  const InvestmentGrowthTexts complete = growth(GrowthResults::Complete);
  const InvestmentGrowthTexts comparison = growth(GrowthResults::Comparison);
  refuse("investment growth", with(calculateInvestmentGrowth, complete));
  refuse("investment growth, comparison", with(calculateInvestmentGrowth, comparison));
  for (const CapitalTargetRow& target : kCapitalTargets)
    refuse("capital required", [&](Calculator& c) {
      return calculateCapitalRequired(c.global.boxes, c.global.reports, c.global.chart,
                                      target.capitalOption, kCapital);
    });
  for (const WithdrawalChoiceRow& choice : kWithdrawalChoices)
    refuse("retirement income", [&](Calculator& c) {
      return calculateRetirementIncome(c.global.boxes, c.global.reports, c.global.chart,
                                       choice.withdrawalOption, kIncome);
    });
  for (const SolveForRow& row : kSolveFor) {
    const MortgageChoices choices{CompoundingPeriod::Monthly, PaymentFrequency::TwoWeeks,
                                  row.solveFor};
    refuse("mortgage", [&](Calculator& c) {
      return calculateMortgage(c.global.boxes, c.global.reports, c.global.chart, c.days, choices,
                               c.texts);
    });
    refuse("mortgage, leaving a box", [&](Calculator& c) {
      return RecalculateMortgage(c.global.boxes, c.days, choices, c.texts);
    });
  }
  const MortgageInput loan{10'000, 6, 2, 0, 26, 52, {}};
  refuse("payment schedule", [&](Calculator&) {
    const ShownSchedule shown = showSchedule({loan, ScheduleKind::Conventional, {}});
    return Outcome{shown.message, false, {}, false};
  });
  refuse("help", [](Calculator& c) {
    static const std::string kHelp = "A help text, which is longer than most other texts are";
    try {
      return showHelp(c.global.reports, kHelp);
    } catch (const std::bad_alloc&) {  // of the copy that is handed in
      return Outcome::failed(Message::WrongEntry);
    }
  });
}

TEST(Memory, ThatLacksLeavesBoxesAsTheyWere) {
  const BoxRule& rule = boxRule(kMortgageBoxes, "MTInPrincipal");
  refuseInTurn<Calculator>(
      "leave", Message::WrongEntry,
      [&](Calculator& c) {
        return leaveBox(c.global.boxes, rule, "1234567890123.123456789012345678901234567890");
      },
      &Calculator::edit);
  // A key, or a text, that is swallowed.
  const auto swallowed = [](const KeyPressed& key) {
    return key.passed || key.emptyFirst ? Message::None : Message::WrongEntry;
  };
  const std::string_view shown = "12345678901234567890";
  refuseInTurn<Calculator>(
      "a key", Message::WrongEntry,
      [&](Calculator& c) {
        return swallowed(pressKey(c.global.boxes, KeyFilter::Decimal, 4, shown, '1'));
      },
      &Calculator::edit);
  refuseInTurn<Calculator>(
      "a text", Message::WrongEntry,
      [&](Calculator& c) {
        return swallowed(enterText(c.global.boxes, KeyFilter::Decimal, 4, shown, shown));
      },
      &Calculator::edit);
  // Nothing to show.
  const auto unshown = [](const std::vector<ShownText>& texts) {
    return texts.empty() ? Message::WrongEntry : Message::None;
  };
  refuseInTurn<Calculator>("capital option", Message::WrongEntry, [&](Calculator& c) {
    return unshown(switchCapitalOption(c.global.boxes, c.global.reports, c.option,
                                       CapitalTarget::AnnualIncome));
  });
  refuseInTurn<Calculator>("withdrawal option", Message::WrongEntry, [&](Calculator& c) {
    return unshown(SwitchWithdrawalOption(c.global.boxes, c.global.reports, c.option,
                                          WithdrawalChoice::FixedAmount));
  });
}

TEST(Memory, ThatLacksLeavesTheChartAsItWas) {
  refuseInTurn<Calculator>(
      "periods", Message::CannotDraw,
      [](Calculator& c) { return makeChartView(c.global.boxes, c.global.reports, c.global.chart); },
      &Calculator::periods);
  const PaymentSchedule schedule =
      makeSchedule({{10'000, 6, 2, 0, 26, 52, {}}, ScheduleKind::Conventional, {}});
  refuseInTurn<Calculator>("payment schedule", Message::CannotDraw,
                           [&](Calculator&) { return scheduleChart(schedule); });
  refuseInTurn<World>(
      "funds", Message::CannotDraw,
      [](World& w) { return makeChartView(w.global.boxes, w.global.reports, w.global.chart); },
      &World::graph);
}

}  // namespace
}  // namespace mirelund

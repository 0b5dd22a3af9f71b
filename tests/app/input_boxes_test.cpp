// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/input_boxes.h"

#include <gtest/gtest.h>

#include <set>

#include "base/parse_number.h"
#include "calc/box_tables.h"

namespace mirelund {
namespace {

// The rows of all calculators.
const std::vector<BoxRule>& allRules() {
  static const std::vector<BoxRule> kRules = [] {
    std::vector<BoxRule> rules;
    forEachBox([&](int /*page*/, const BoxRule& rule) { rules.push_back(rule); });
    return rules;
  }();
  return kRules;
}

const BoxRule& rule(std::string_view name, int option = 0) {
  return boxRule(allRules(), name, option);
}

// A box under its rules alone: what the widget does, without a window.
struct Typist {
  Global& global;
  const BoxRule& rule;
  std::string text;
  int beeps = 0;

  void type(std::string_view keys) {
    for (const char key : keys) {
      const auto pressed = pressKey(global.boxes, rule.filter, rule.extraDecimals, text, key);
      if (pressed.emptyFirst) text.clear();
      if (pressed.passed)
        text += key;
      else
        ++beeps;
    }
  }
  BoxLeft leave() {
    BoxLeft left = leaveBox(global.boxes, rule, text);
    if (left.changed) text = left.text;
    return left;
  }
};

TEST(InputBoxes, AreTwentyNine) {
  std::set<std::string_view> names;
  for (const BoxRule& row : allRules()) names.insert(row.name);
  EXPECT_EQ(names.size(), 29U);
}

TEST(InputBoxes, ANameThatIsNoneThrows) {
  EXPECT_THROW(rule("CGInNothing"), std::out_of_range);
  EXPECT_EQ(rule("CRInTimeInYrs", 1).option, 0) << "no row of the option's own";
  EXPECT_EQ(rule("CRInCapitalReq", 1).option, 1);
}

struct Initial {
  const char* box;
  int option;
  const char* text;
};

constexpr Initial kInitial[] = {
    {"PGInCurrBalance", 0, "         $.00"},
    {"PGInCurrAnnSalary", 0, "   $40,000.00"},
    {"PGInAnnContribRate", 0, "  4.00%"},
    {"PGInCompAnnContribRate", 0, "  4.00%"},
    {"PGInEstSalIncrease", 0, "  4.00%"},
    {"PGInAnnIntGrowthRate", 0, " 10.00%"},
    {"PGInEstAnnFlatRate", 0, "   .00%"},
    {"PGInNumYearsToRetire", 0, " 25"},
    {"MTInPrincipal", 0, "  $100,000.00"},
    {"MTInRate", 0, " 6.500%"},
    {"MTInTerm", 0, "   25"},
    {"IGInBegBal", 0, "         $.00"},
    {"IGInEachContrib", 0, "    $1,000.00"},
    {"IGInIntGrowthRate", 0, "15.00%"},
    {"IGInAnnContribRate", 0, "  .00%"},
    {"IGInAnninFlatRate", 0, "  .00%"},
    {"IGInYearsInvested", 0, "25"},
    {"RIInCurrValue", 0, "  $100,000.00"},
    {"RIInAnnIntGrowthRate", 0, " 20.00%"},
    {"RIInAnnIncWDrawnRate", 0, " 15.00%"},
    {"RIInTimeInYrs", 0, "    25"},
    {"RIInAnnIncWDrawnRate", 1, "  $1,000.00"},
    {"RIInTimeInYrs", 1, "   .00%"},
    {"CGInCostofInvest", 0, "   $10,000.00"},
    {"CGInValueNow", 0, "   $20,000.00"},
    {"CGInNumOfYrs", 0, "  5"},
    {"CRInCapitalReq", 0, "  $100,000.00"},
    {"CRInCapitalReq", 1, "   $40,000.00"},
    {"CRInIntGrowthRate", 0, " 15.00%"},
    {"CRInIntGrowthRate", 1, " 15.00%"},
    {"CRInTimeInYrs", 0, " 25"},
};

TEST(InputBoxes, ShowTheirInitialValues) {
  for (const auto& c : kInitial) {
    Global global;
    EXPECT_EQ(loadBox(global.boxes, rule(c.box, c.option)), c.text) << c.box;
  }
}

struct Typing {
  const char* rule;
  const char* box;
  const char* keys;
  const char* typed;  // before leaving
  int beeps;
  const char* left;  // after leaving
};

constexpr Typing kTyping[] = {
    {"the first key replaces the content", "CGInCostofInvest", "5", "5", 0, "        $5.00"},
    {"two decimals, the third beeps", "CGInCostofInvest", "12.345", "12.34", 1, "       $12.34"},
    {"a second point is accepted and ends the number", "CGInCostofInvest", "1.2.3", "1.2.", 1,
     "        $1.20"},
    {"two points in a row", "CGInCostofInvest", "1..5", "1..5", 0, "        $1.00"},
    {"signs and commas are swallowed", "CGInCostofInvest", "-1,2$3", "123", 3, "      $123.00"},
    {"letters are swallowed, the content goes", "CGInCostofInvest", "x", "", 1, "         $.00"},
    {"a long amount is cut on the right", "CGInCostofInvest", "1000000000", "1000000000", 0,
     "$1,000,000,00"},
    {"three decimals in the mortgage rate", "MTInRate", "6.1255", "6.125", 1, " 6.125%"},
    {"whole years refuse the point", "CGInNumOfYrs", "1.5", "15", 1, " 15"},
    {"years in two places", "IGInYearsInvested", "7", "7", 0, " 7"},
    {"zero years show nothing", "CGInNumOfYrs", "0", "0", 0, "   "},
    {"percent in five places", "IGInIntGrowthRate", "7.5", "7.5", 0, " 7.50%"},
    {"percent in six places", "PGInAnnIntGrowthRate", "100", "100", 0, "100.00%"},
    {"percent too long for its places", "IGInIntGrowthRate", "12345", "12345", 0, "12345%"},
};

TEST(InputBoxes, FilterStoreAndRedisplay) {
  for (const auto& c : kTyping) {
    Global global;
    Typist typist{global, rule(c.box), "whatever stood there"};
    typist.type(c.keys);
    EXPECT_EQ(typist.text, c.typed) << c.rule;
    EXPECT_EQ(typist.beeps, c.beeps) << c.rule;
    EXPECT_EQ(typist.leave().message, Message::None) << c.rule;
    EXPECT_EQ(typist.text, c.left) << c.rule;
    EXPECT_EQ(global.boxes.BoxEdited, 0) << c.rule;
  }
}

TEST(InputBoxes, LeavingUntouchedChangesNothing) {
  Global global;
  const BoxRule& row = rule("CGInCostofInvest");
  const std::string text = loadBox(global.boxes, row);
  const BoxLeft left = leaveBox(global.boxes, row, text);
  EXPECT_FALSE(left.changed);
  EXPECT_EQ(global.boxes.InputValues[1], Currency::whole(10000));
}

TEST(InputBoxes, ADeletedDigitMakesAMoneyBoxZero) {
  Global global;
  const BoxRule& row = rule("CGInCostofInvest");
  loadBox(global.boxes, row);
  global.boxes.BoxEdited = 1;  // the Delete key
  EXPECT_EQ(leaveBox(global.boxes, row, "  $10,000.00").text, "         $.00");
  EXPECT_EQ(global.boxes.InputValues[1], Currency());
}

TEST(InputBoxes, YearsStopAtForty) {
  for (const BoxRule& row : allRules()) {
    if (!row.limited) continue;
    Global global;
    Typist typist{global, row, ""};
    typist.type("41");
    EXPECT_EQ(typist.leave().message, Message::YearsLimit) << row.name;
    EXPECT_EQ(ParseNumber(typist.text), 40.0) << row.name;
    typist.type("40");
    EXPECT_EQ(typist.leave().message, Message::None) << row.name;
    EXPECT_EQ(ParseNumber(typist.text), 40.0) << row.name;
    typist.type(std::string(400, '9'));
    EXPECT_EQ(typist.leave().message, Message::YearsLimit) << row.name;
    EXPECT_EQ(typist.text, RightJustify("40", row.width)) << row.name;
  }
}

TEST(InputBoxes, AnAmountOutOfRangeIsRefusedAndTheStoredOneStays) {
  for (const char* box : {"CGInCostofInvest", "MTInPrincipal"}) {
    Global global;
    const BoxRule& row = rule(box);
    Typist typist{global, row, loadBox(global.boxes, row)};
    const std::string before = typist.text;
    typist.type("999999999999999");
    const BoxLeft left = typist.leave();
    EXPECT_EQ(left.message, Message::WrongEntry);
    EXPECT_TRUE(left.refused);
    EXPECT_EQ(typist.text, before);
    typist.type(std::string(500, '9'));
    EXPECT_EQ(typist.leave().message, Message::WrongEntry);
    EXPECT_EQ(typist.text, before);
  }
}

TEST(InputBoxes, TheMortgageKeepsTheTypedDouble) {
  Global global;
  Typist typist{global, rule("MTInRate"), ""};
  typist.type("6.125");
  typist.leave();
  EXPECT_EQ(global.boxes.MortgageInputs[2], 6.125);
}

TEST(InputBoxes, TheNameIsShownAsTyped) {
  Global global;
  Typist typist{global, rule("CGInNameOfInvest"), "XYZ Mutual Fund"};
  typist.type("A & B, \"C\" 1-2");
  EXPECT_FALSE(typist.leave().changed);
  EXPECT_EQ(typist.text, "A & B, \"C\" 1-2");
  EXPECT_EQ(global.boxes.BoxEdited, 0);
}

struct Filtered {
  const char* rule;
  const char* before;
  int extraDecimals;
  char key;
  bool passes;
};

constexpr Filtered kDecimal[] = {
    {"backspace", "1", 0, 8, true},
    {"127", "1", 0, 127, true},
    {"a point", "1", 0, '.', true},
    {"a second point", "1.2", 0, '.', true},
    {"a digit", "", 0, '0', true},
    {"no limit before the point", "12345678901234567890", 0, '9', true},
    {"first decimal", "1.", 0, '5', true},
    {"second decimal", "1.2", 0, '5', true},
    {"no third decimal", "1.23", 0, '5', false},
    {"the first point counts", "1.2.", 0, '5', false},
    {"third decimal on request", "1.23", 3, '5', true},
    {"no fourth on a request of three", "1.234", 3, '5', false},
    {"fourth on a request of four", "1.234", 4, '5', true},
    {"a request below three is none", "1.23", 2, '5', false},
    {"minus", "", 0, '-', false},
    {"comma", "1", 0, ',', false},
    {"dollar", "", 0, '$', false},
    {"letter", "", 0, 'e', false},
    {"blank", "1", 0, ' ', false},
    {"slash, just below 0", "", 0, '/', false},
    {"colon, just above 9", "", 0, ':', false},
};

TEST(DecimalKeyFilter, PassesDigitsThePointAndBackspace) {
  for (const auto& c : kDecimal) {
    Global global;
    global.boxes.BoxText = c.before;
    global.boxes.ExtraDecimals = static_cast<std::int16_t>(c.extraDecimals);
    EXPECT_EQ(DecimalKeyFilter(global.boxes, c.key), c.passes ? c.key : 0) << c.rule;
  }
}

TEST(DecimalKeyFilter, UsesUpTheRequestForDecimals) {
  Global global;
  global.boxes.BoxText = "1.2";
  global.boxes.ExtraDecimals = 3;
  DecimalKeyFilter(global.boxes, '3');
  EXPECT_EQ(global.boxes.ExtraDecimals, 0);
}

TEST(WholeNumberKeyFilter, PassesDigitsAndBackspace) {
  for (int c = 1; c < 128; ++c) {
    const auto key = static_cast<char>(c);
    const bool passes = (key >= '0' && key <= '9') || c == 8 || c == 127;
    EXPECT_EQ(WholeNumberKeyFilter(key), passes ? key : 0) << c;
  }
}

// Typed, the character 127 passes every filter as backspace does; a text that enters
// at once may not hold it.
TEST(KeyFilters, TheDeleteCharacterIsTypedButNeverPasted) {
  for (const auto filter : {KeyFilter::Any, KeyFilter::Decimal, KeyFilter::WholeNumber}) {
    Global global;
    const KeyPressed pressed = pressKey(global.boxes, filter, 0, "$1.00", '\x7f');
    EXPECT_TRUE(pressed.passed);
    EXPECT_TRUE(pressed.emptyFirst);
    EXPECT_EQ(global.boxes.BoxEdited, 1);
    EXPECT_TRUE(pressKey(global.boxes, filter, 4, "1.2345", '\x7f').passed)
        << "whatever the decimals";
    const std::string character(1, '\x7f');
    for (const std::string& text :
         {character, "1" + character, character + "1", "1" + character + "2"})
      for (const std::int16_t edited : {std::int16_t{0}, std::int16_t{1}}) {
        global.boxes.BoxEdited = edited;
        const KeyPressed entered = enterText(global.boxes, filter, 0, "1", text);
        EXPECT_FALSE(entered.passed);
        EXPECT_FALSE(entered.emptyFirst);
        EXPECT_EQ(global.boxes.BoxEdited, edited) << "the box is left as it was";
      }
    EXPECT_TRUE(enterText(global.boxes, filter, 0, "", "12").passed);
  }
}

TEST(EnterText, NothingIsNoFirstKey) {
  Global global;
  const KeyPressed entered = enterText(global.boxes, KeyFilter::Decimal, 0, "$1.00", "");
  EXPECT_TRUE(entered.passed);
  EXPECT_FALSE(entered.emptyFirst) << "the content stays";
  EXPECT_EQ(global.boxes.BoxEdited, 0);
}

TEST(EnterText, TakesAllOfItOrNothing) {
  Global global;
  global.boxes.BoxEdited = 0;
  auto entered = enterText(global.boxes, KeyFilter::Decimal, 0, "$1.00", "1,250.50");
  EXPECT_FALSE(entered.passed);
  EXPECT_FALSE(entered.emptyFirst);
  EXPECT_EQ(global.boxes.BoxEdited, 0) << "a refused text leaves the box as it was";
  entered = enterText(global.boxes, KeyFilter::Decimal, 0, "$1.00", "1250.50");
  EXPECT_TRUE(entered.passed);
  EXPECT_TRUE(entered.emptyFirst);
  EXPECT_EQ(global.boxes.BoxEdited, 1);
  EXPECT_FALSE(enterText(global.boxes, KeyFilter::Decimal, 0, "1250.50", "7").passed);
  EXPECT_FALSE(enterText(global.boxes, KeyFilter::Decimal, 0, "1", "\b\b").passed);
  EXPECT_FALSE(enterText(global.boxes, KeyFilter::WholeNumber, 0, "1", "1\n2").passed);
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/input_boxes.h"

#include "app/parse_number.h"
#include "dialogs/messages.h"

namespace mirelund {

namespace {

using enum BoxLook;
using enum BoxStore;
using enum KeyFilter;
using Page = CalculatorPageIndex;

// clang-format off
constexpr BoxRule kBoxes[] = {
  {"PGInCurrBalance", Page::PensionGrowth, 0, "Current balance in account", {},
   InputValues, 1, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(0)},
  {"PGInCurrAnnSalary", Page::PensionGrowth, 0, "My current annual salary", {},
   InputValues, 2, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(40000)},
  {"PGInAnnContribRate", Page::PensionGrowth, 0, "My annual contribution rate %", {},
   InputValues, 3, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(4)},
  {"PGInCompAnnContribRate", Page::PensionGrowth, 0, "Company annual contribution rate %", {},
   InputValues, 4, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(4)},
  {"PGInEstSalIncrease", Page::PensionGrowth, 0, "Estimated annual salary increase %", {},
   InputValues, 5, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(4)},
  {"PGInAnnIntGrowthRate", Page::PensionGrowth, 0, "Annual interest/growth rate %", {},
   InputValues, 6, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(10)},
  {"PGInEstAnnFlatRate", Page::PensionGrowth, 0, "Estimated annual inflation rate %", {},
   InputValues, 7, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(0)},
  {"PGInNumYearsToRetire", Page::PensionGrowth, 0, "Number of years to retirement", {},
   InputValues, 8, WholeNumber, 0, "###", Years, 3, true, Currency::whole(25)},

  {"MTInPrincipal", Page::Mortgage, 0, "Principal amount of mortgage", {},
   MortgageInputs, 1, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(100000)},
  {"MTInRate", Page::Mortgage, 0, "Annual interest rate %", {},
   MortgageInputs, 2, Decimal, 3, "###.000", Percent, 6, false,
   Currency::fromTenThousandths(65000)},
  {"MTInTerm", Page::Mortgage, 0, "Amortization period in years", {},
   MortgageInputs, 3, WholeNumber, 0, "###", Years, 5, true, Currency::whole(25)},
  {"MTInMthPayment", Page::Mortgage, 0, "Monthly principal + interest", {},
   MortgageInputs, 4, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(0)},

  {"IGInBegBal", Page::InvestmentGrowth, 0, "Beginning balance", {},
   InputValues, 1, Decimal, 0, "###,,###.00", Money, 13, false, Currency::whole(0)},
  {"IGInEachContrib", Page::InvestmentGrowth, 0, "Amount of each contribution", {},
   InputValues, 2, Decimal, 0, "###,,###.00", Money, 13, false, Currency::whole(1000)},
  {"IGInIntGrowthRate", Page::InvestmentGrowth, 0, "Annual Interest/growth rate %", {},
   InputValues, 4, Decimal, 0, "##.00", Percent, 5, false, Currency::whole(15)},
  {"IGInAnnContribRate", Page::InvestmentGrowth, 0, "Increase annual contribution rate %", {},
   InputValues, 5, Decimal, 0, "##.00", Percent, 5, false, Currency::whole(0)},
  {"IGInAnninFlatRate", Page::InvestmentGrowth, 0, "Average annual inflation rate %", {},
   InputValues, 6, Decimal, 0, "##.00", Percent, 5, false, Currency::whole(0)},
  {"IGInYearsInvested", Page::InvestmentGrowth, 0, "Number of years invested", {},
   InputValues, 7, WholeNumber, 0, "##", Years, 2, true, Currency::whole(25)},

  {"RIInCurrValue", Page::RetirementIncome, 0, "Starting value of investments", {},
   InputValues, 1, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(100000)},
  {"RIInAnnIntGrowthRate", Page::RetirementIncome, 0, "Annual interest/growth rate %", {},
   InputValues, 2, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(20)},
  {"RIInAnnIncWDrawnRate", Page::RetirementIncome, 0, "Annual income withdrawn as a (%)", "Label32",
   InputValues, 3, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(15)},
  {"RIInAnnIncWDrawnRate", Page::RetirementIncome, 1, "Monthly amount of cash withdrawn", "Label32",
   InputValues, 3, Decimal, 0, "####,###.00", Money, 11, false, Currency::whole(1000)},
  {"RIInTimeInYrs", Page::RetirementIncome, 0, "Time in years", "Label33",
   InputValues, 4, WholeNumber, 0, "###", Years, 6, true, Currency::whole(25)},
  {"RIInTimeInYrs", Page::RetirementIncome, 1, "Increase annual income by %", "Label33",
   InputValues, 4, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(0)},

  {"CGInCostofInvest", Page::CompoundGain, 0, "Purchase cost of your investment", {},
   InputValues, 1, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(10000)},
  {"CGInValueNow", Page::CompoundGain, 0, "Present or future value", {},
   InputValues, 2, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(20000)},
  {"CGInNumOfYrs", Page::CompoundGain, 0, "Number of years invested", {},
   InputValues, 3, WholeNumber, 0, "###", Years, 3, true, Currency::whole(5)},
  {"CGInNameOfInvest", Page::CompoundGain, 0, "Name of your investment", {},
   None, 0, Any, 0, "", Text, 0, false, Currency()},

  {"CRInCapitalReq", Page::CapitalRequired, 0, "Amount of capital required $", "Label26",
   InputValues, 1, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(100000)},
  {"CRInCapitalReq", Page::CapitalRequired, 1, "Annual income required $", "Label26",
   InputValues, 1, Decimal, 0, "####,,###.00", Money, 13, false, Currency::whole(40000)},
  {"CRInIntGrowthRate", Page::CapitalRequired, 0, "Annual interest/growth rate %", {},
   InputValues, 2, Decimal, 0, "###.00", Percent, 6, false, Currency::whole(15)},
  {"CRInTimeInYrs", Page::CapitalRequired, 0, "Number of years", {},
   InputValues, 3, WholeNumber, 0, "###", Years, 3, true, Currency::whole(25)},
};
// clang-format on

constexpr char kBackspace = 8;
constexpr char kDelete = 127;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Digits that may stand behind the point; uses up the one-shot request.
std::size_t takeDecimals(Global& global) {
  if (global.ExtraDecimals < 3) return 2;
  const auto decimals = static_cast<std::size_t>(global.ExtraDecimals);
  global.ExtraDecimals = 0;
  return decimals;
}

template <typename Number>
std::string decorated(const BoxRule& rule, Number value) {
  std::string text;
  if (rule.look == Money)
    setMoney(text, value, rule.pattern, rule.width);
  else
    setColumn(text, value, rule.pattern, rule.width);
  if (rule.look == Percent) text += '%';
  return text;
}

std::string storedText(const Global& global, const BoxRule& rule) {
  return rule.store == MortgageInputs ? boxText(rule, global.MortgageInputs[rule.slot])
                                      : boxText(rule, global.InputValues[rule.slot]);
}

void store(Global& global, const BoxRule& rule, double value) {
  const Currency amount = ToCurrency(value);
  if (rule.store == MortgageInputs)
    global.MortgageInputs[rule.slot] = value;
  else
    global.InputValues[rule.slot] = amount;
}

}  // namespace

std::span<const BoxRule> boxRules() {
  return kBoxes;
}

const BoxRule& boxRule(std::string_view name, int option) {
  const BoxRule* found = nullptr;
  for (const BoxRule& rule : kBoxes)
    if (rule.name == name && (found == nullptr || rule.option == option)) found = &rule;
  if (found == nullptr) throw std::out_of_range("no such input box");
  return *found;
}

char DecimalKeyFilter(Global& global, char character) {
  if (character == kBackspace || character == kDelete || character == '.') return character;
  if (!isDigit(character)) return 0;
  const auto point = global.BoxText.find('.');
  if (point == std::string::npos) return character;
  return global.BoxText.size() < point + 1 + takeDecimals(global) ? character : '\0';
}

char WholeNumberKeyFilter(char character) {
  return isDigit(character) || character == kBackspace || character == kDelete ? character : '\0';
}

KeyPressed pressKey(Global& global, KeyFilter filter, std::int16_t extraDecimals,
                    std::string_view text, char character) {
  KeyPressed pressed;
  pressed.emptyFirst = global.BoxEdited == 0;
  global.BoxText = pressed.emptyFirst ? std::string_view() : text;
  global.ExtraDecimals = extraDecimals;
  switch (filter) {
    case Any:
      pressed.passed = true;
      break;
    case Decimal:
      pressed.passed = DecimalKeyFilter(global, character) != 0;
      break;
    case WholeNumber:
      pressed.passed = WholeNumberKeyFilter(character) != 0;
      break;
  }
  global.BoxEdited = 1;
  return pressed;
}

KeyPressed enterText(Global& global, KeyFilter filter, std::int16_t extraDecimals,
                     std::string_view text, std::string_view entering) {
  const auto editedBefore = global.BoxEdited;
  std::string shown(editedBefore == 0 ? std::string_view() : text);
  for (const char character : entering) {
    const bool isControl = static_cast<unsigned char>(character) < ' ' || character == kDelete;
    if (isControl || !pressKey(global, filter, extraDecimals, shown, character).passed) {
      global.BoxEdited = editedBefore;
      return {false, false};
    }
    shown += character;
  }
  return {editedBefore == 0 && !entering.empty(), true};
}

BoxLeft leaveBox(Global& global, const BoxRule& rule, std::string_view text) {
  BoxLeft left;
  double value = rule.look == Text ? 0.0 : ParseNumber(text);
  if (rule.limited && value > kMostYears) {
    value = kMostYears;
    left.message = message::kYearsLimit;
    left.changed = true;
    left.text = "40";
  }
  if (global.BoxEdited != 1) return left;
  global.BoxEdited = 0;
  if (rule.store == BoxStore::None) return left;
  try {
    store(global, rule, value);
  } catch (const ArithmeticError&) {
    left.message = message::kWrongEntry;
    left.refused = true;
  }
  left.changed = true;
  left.text = storedText(global, rule);
  return left;
}

std::string boxText(const BoxRule& rule, Currency value) {
  return decorated(rule, value);
}

std::string boxText(const BoxRule& rule, double value) {
  return decorated(rule, value);
}

std::string loadBox(Global& global, const BoxRule& rule) {
  store(global, rule, rule.initial.toDouble());
  return storedText(global, rule);
}

}  // namespace mirelund

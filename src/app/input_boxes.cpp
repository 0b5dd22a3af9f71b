// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/input_boxes.h"

#include "base/attempt.h"
#include "base/parse_number.h"

namespace mirelund {

namespace {

using enum BoxLook;
using enum BoxStore;
using enum KeyFilter;

constexpr char kBackspace = 8;
constexpr char kDelete = 127;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Digits that may stand behind the point; uses up the one-shot request.
std::size_t takeDecimals(BoxState& boxes) {
  if (boxes.ExtraDecimals < 3) return 2;
  const auto decimals = static_cast<std::size_t>(boxes.ExtraDecimals);
  boxes.ExtraDecimals = 0;
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

void store(BoxState& boxes, const BoxRule& rule, double value) {
  const Currency amount = ToCurrency(value);
  if (rule.store == MortgageInputs)
    boxes.MortgageInputs[rule.slot] = value;
  else
    boxes.InputValues[rule.slot] = amount;
}

KeyPressed press(BoxState& boxes, KeyFilter filter, std::int16_t extraDecimals,
                 std::string_view text, char character) {
  KeyPressed pressed;
  pressed.emptyFirst = boxes.BoxEdited == 0;
  boxes.BoxText = pressed.emptyFirst ? std::string_view() : text;
  boxes.ExtraDecimals = extraDecimals;
  switch (filter) {
    case Any:
      pressed.passed = true;
      break;
    case Decimal:
      pressed.passed = DecimalKeyFilter(boxes, character) != 0;
      break;
    case WholeNumber:
      pressed.passed = WholeNumberKeyFilter(character) != 0;
      break;
  }
  boxes.BoxEdited = 1;
  return pressed;
}

BoxLeft leave(BoxState& boxes, const BoxRule& rule, std::string_view text) {
  BoxLeft left;
  double value = rule.look == Text ? 0.0 : ParseNumber(text);
  if (rule.limited && value > kMostYears) {
    value = kMostYears;
    left.message = Message::YearsLimit;
    left.changed = true;
    left.text = "40";
  }
  if (boxes.BoxEdited != 1) return left;
  boxes.BoxEdited = 0;
  if (rule.store == BoxStore::None) return left;
  try {
    store(boxes, rule, value);
  } catch (const ArithmeticError&) {
    left.message = Message::WrongEntry;
    left.refused = true;
  }
  left.changed = true;
  left.text = boxText(boxes, rule);
  return left;
}

}  // namespace

char DecimalKeyFilter(BoxState& boxes, char character) {
  if (character == kBackspace || character == kDelete || character == '.') return character;
  if (!isDigit(character)) return 0;
  const auto point = boxes.BoxText.find('.');
  if (point == std::string::npos) return character;
  return boxes.BoxText.size() < point + 1 + takeDecimals(boxes) ? character : '\0';
}

char WholeNumberKeyFilter(char character) {
  return isDigit(character) || character == kBackspace || character == kDelete ? character : '\0';
}

KeyPressed pressKey(BoxState& boxes, KeyFilter filter, std::int16_t extraDecimals,
                    std::string_view text, char character) noexcept {
  return attempt(
      KeyPressed{},
      [&](BoxState& copy) { return press(copy, filter, extraDecimals, text, character); }, boxes);
}

KeyPressed enterText(BoxState& boxes, KeyFilter filter, std::int16_t extraDecimals,
                     std::string_view text, std::string_view entering) noexcept {
  return attempt(
      KeyPressed{},
      [&](BoxState& copy) -> KeyPressed {
        const auto editedBefore = copy.BoxEdited;
        std::string shown(editedBefore == 0 ? std::string_view() : text);
        for (const char character : entering) {
          const bool isControl =
              static_cast<unsigned char>(character) < ' ' || character == kDelete;
          if (isControl || !press(copy, filter, extraDecimals, shown, character).passed) {
            copy.BoxEdited = editedBefore;
            return {false, false};
          }
          shown += character;
        }
        return {editedBefore == 0 && !entering.empty(), true};
      },
      boxes);
}

BoxLeft leaveBox(BoxState& boxes, const BoxRule& rule, std::string_view text) noexcept {
  return attempt(
      BoxLeft{Message::WrongEntry, true, false, {}},
      [&](BoxState& copy) { return leave(copy, rule, text); }, boxes);
}

std::string boxText(const BoxState& boxes, const BoxRule& rule) {
  return rule.store == MortgageInputs ? decorated(rule, boxes.MortgageInputs[rule.slot])
                                      : decorated(rule, boxes.InputValues[rule.slot]);
}

std::string loadBox(BoxState& boxes, const BoxRule& rule) {
  store(boxes, rule, rule.initial.toDouble());
  return boxText(boxes, rule);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The green input boxes: what a row of a calculator's table says of one, and the
// rules of their four handlers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/global.h"
#include "app/report_line.h"

namespace mirelund {

/// How a stored value is shown: "$" in front, in 13 places or so; the number in
/// its places and "%" behind; the number in its places; the text as typed.
enum class BoxLook : std::uint8_t { Money, Percent, Years, Text };

enum class KeyFilter : std::uint8_t { Any, Decimal, WholeNumber };

/// Where a box stores its value.
enum class BoxStore : std::uint8_t { None, InputValues, MortgageInputs };

/// All that is known of one box. A page with two options can have a second row
/// for a box whose meaning changes with the option.
struct BoxRule {
  std::string_view name;
  int option;  ///< 0: as the page starts; 1: under the page's second option
  std::string_view label;
  std::string_view labelName;  ///< empty: the label has no name of its own
  BoxStore store;
  std::uint8_t slot;
  KeyFilter filter;
  std::int16_t extraDecimals;  ///< 0: the filter's two; else asked for before each key
  Pattern pattern;
  BoxLook look;
  std::uint8_t width;
  bool limited;  ///< more than 40 is refused with message 5
  Currency initial;
};

/// A calculator's boxes, in the order that Enter follows; behind them their rows
/// under the second option. Does not compile where a slot leaves its array, two
/// rows say different things of one box or a box has no row as the page starts.
template <std::size_t N>
consteval std::array<BoxRule, N> boxTable(const BoxRule (&rows)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    const std::size_t size = rows[i].store == BoxStore::InputValues
                                 ? std::tuple_size_v<decltype(BoxState::InputValues)>
                             : rows[i].store == BoxStore::MortgageInputs
                                 ? std::tuple_size_v<decltype(BoxState::MortgageInputs)>
                                 : 1;
    if (rows[i].slot >= size) throw "a slot outside its array";
    bool known = rows[i].option == 0;
    for (std::size_t k = 0; k < i; ++k) {
      if (rows[k].name != rows[i].name) continue;
      if (rows[k].option == rows[i].option) throw "two rows for one box";
      known = true;
    }
    if (!known) throw "no row as the page starts";
  }
  return std::to_array(rows);
}

/// The row of a box; under option 1 the option's own row where there is one. A
/// name that is not among the rows throws std::out_of_range or, where the
/// compiler looks it up, does not compile.
constexpr const BoxRule& boxRule(std::span<const BoxRule> rows, std::string_view name,
                                 int option = 0) {
  const BoxRule* found = nullptr;
  for (const BoxRule& rule : rows)
    if (rule.name == name && (found == nullptr || rule.option == option)) found = &rule;
  if (found == nullptr) throw std::out_of_range("no such input box");
  return *found;
}

/// The character to be passed on, or 0 where it is swallowed with a beep.
/// Digits, the point and backspace pass; behind a point in BoxText only as many
/// digits as ExtraDecimals asks for (3 or more; the request is used up), else 2.
char DecimalKeyFilter(BoxState& boxes, char character);

/// The character to be passed on, or 0: digits and backspace pass.
char WholeNumberKeyFilter(char character);

/// Key-press: what the typed character does to a box that shows `text`.
struct KeyPressed {
  bool emptyFirst = false;  ///< the first key replaces the whole content
  bool passed = false;      ///< else it is swallowed with a beep, as where memory lacks
};
KeyPressed pressKey(BoxState& boxes, KeyFilter filter, std::int16_t extraDecimals,
                    std::string_view text, char character) noexcept;

/// Text that enters at once (paste, drop, middle click, input method): each
/// character must pass as a typed one would, or nothing enters.
KeyPressed enterText(BoxState& boxes, KeyFilter filter, std::int16_t extraDecimals,
                     std::string_view text, std::string_view entering) noexcept;

/// Lost-focus: what the box shows afterwards.
struct BoxLeft {
  Message message = Message::None;  ///< 5, or 3 for a number out of range
  bool refused = false;             ///< nothing was stored
  bool changed = false;             ///< `text` is to be shown
  std::string text;
};
BoxLeft leaveBox(BoxState& boxes, const BoxRule& rule, std::string_view text) noexcept;

/// The stored value as the box shows it. Throws std::bad_alloc alone.
std::string boxText(const BoxState& boxes, const BoxRule& rule);

/// Stores the initial value of a numeric box and returns the text to show. Throws
/// std::bad_alloc alone.
std::string loadBox(BoxState& boxes, const BoxRule& rule);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/entry_edits.h"

#include <algorithm>
#include <utility>

#include "base/ui_text.h"
#include "manager/database/dates.h"
#include "manager/transaction_entry.h"

namespace mirelund {

DateEdit::DateEdit(BoxState& boxes, std::function<Message(std::string_view)> check, QWidget* parent)
    : FilteredEdit(boxes, KeyFilter::Any, 0, parent), check_(std::move(check)) {
  setInputMethodHints(Qt::ImhDate);
}

KeyPressed DateEdit::press(std::string_view /*text*/, char character) {
  return {false, isDateKey(character)};
}

KeyPressed DateEdit::enterAtOnce(std::string_view /*text*/, std::string_view entering) {
  const auto enters = [](char c) { return c >= ' ' && isDateKey(c); };
  return {false, std::all_of(entering.begin(), entering.end(), enters)};
}

BoxLeft DateEdit::store() {
  // What was typed here is no edit of the next box.
  boxes().BoxEdited = 0;
  BoxLeft gone;
  gone.message = check_(toStdString(text()));
  gone.refused = gone.message != Message::None;
  return gone;
}

AmountEdit::AmountEdit(BoxState& boxes, std::function<BoxLeft(std::string_view)> store,
                       QWidget* parent)
    : FilteredEdit(boxes, KeyFilter::Decimal, kEntryDecimals, parent), store_(std::move(store)) {}

BoxLeft AmountEdit::store() {
  return store_(toStdString(text()));
}

}  // namespace mirelund

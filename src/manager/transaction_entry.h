// SPDX-License-Identifier: GPL-3.0-or-later
// The entry row: its boxes, what a type asks of them, and the record that a row
// becomes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "app/input_boxes.h"
#include "base/table.h"
#include "manager/database/fund_database.h"

namespace mirelund {

/// The value boxes of the manager show their amounts with this pattern and take
/// four decimals.
inline constexpr Pattern kEntryPattern = "####,,##0.0000";
inline constexpr std::int16_t kEntryDecimals = 4;

/// A box of the entry row: its control's name and the caption above it.
struct EntryBoxRule {
  EntryBox box;
  std::string_view name;
  std::string_view caption;
};

/// In the row's order.
inline constexpr std::array<EntryBoxRule, kEntryBoxes> kEntryRow{{
    {EntryBox::Date, "EInDate", "Date"},
    {EntryBox::Price, "EInPrice", "Price of each share"},
    {EntryBox::Shares, "EInNumShrs", "Number of shares"},
    {EntryBox::Fees, "EInComm", "Commission or fee"},
    {EntryBox::Dividend, "EInCashDiv", "Cash dividend"},
}};
static_assert(standsInOrder(kEntryRow, &EntryBoxRule::box));

/// Where Enter goes from a box: the next box that the type enables. Nothing: the
/// row is complete and Enter adds the record.
std::optional<EntryBox> nextEntryBox(const TransactionType& type, EntryBox box);

/// What has been chosen and typed, but for the date's text.
struct EntryRow {
  const TransactionType* type = nullptr;  ///< null: none chosen, the boxes are hidden
  std::array<Currency, 6> EntryValues{};  ///< 1 price, 2 shares, 3 fees, 4 cash dividend
  /// Boxes that show a number beyond Currency, as typed: there is no value then.
  std::array<bool, 6> outOfRange{};

  Currency value(EntryBox box) const { return EntryValues[static_cast<std::size_t>(box)]; }
  bool isOutOfRange(EntryBox box) const { return outOfRange[static_cast<std::size_t>(box)]; }
};

/// Lost-focus of a value box: the text is stored only if it was typed into, and
/// shown with kEntryPattern. A number out of range is refused with message 3, marked,
/// and stands as typed. Used by the price boxes too.
BoxLeft leaveAmountBox(BoxState& boxes, Currency& stored, bool& outOfRange, std::string_view text);

/// What is wrong with a row, in this order: NoType, NoDate, not a date
/// (DateFormat), values that the type does not allow (RecordNotSaved, while
/// correcting RecordNotCorrected); None when nothing is, and then `date` is set.
Message checkEntry(const EntryRow& row, std::string_view dateText, const ShortDateFormat& format,
                   bool correcting, Date& date);

/// The record of a row that checkEntry accepts, without its number. Shares are
/// typed positive and stored negative where they leave the holding. Book value by
/// type: price x shares + fees (shares signed) for Bought and Sold, minus the
/// dividend for Cash Dividend, the fees for Fee Cash, else 0. Throws
/// ArithmeticError when a value or the book value is out of range.
Record buildRecord(const EntryRow& row, std::int16_t fund, Date date);

/// The row that would build this record again: shares positive whatever the type.
EntryRow entryRow(const Record& record);

}  // namespace mirelund

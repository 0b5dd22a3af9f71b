// SPDX-License-Identifier: GPL-3.0-or-later
// The six transaction types: one row each, which holds all that is known of it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace mirelund {

/// The boxes of the entry row, in the row's order. EntryValues is indexed by the
/// last four.
enum class EntryBox : std::uint8_t { Date, Price, Shares, Fees, Dividend };
inline constexpr std::size_t kEntryBoxes = 5;

/// What a transaction type asks of a box: disabled, and its value must be 0; any
/// value; more than 0 (the date: a date).
enum class Need : std::uint8_t { None, Any, Positive };

/// How the book value follows from the row: price x shares + fees, shares signed;
/// minus the cash dividend; the fees; nothing.
enum class BookRule : std::uint8_t { Trade, CashReceived, CashPaid, NoCash };

/// Characters of a type's word in the reports.
inline constexpr std::size_t kReportWordWidth = 10;

struct TransactionType {
  std::string_view listText;    ///< in the type list
  std::string_view reportWord;  ///< in the reports, kReportWordWidth characters
  char code;                    ///< in the data file
  std::array<Need, kEntryBoxes> needs;
  bool leavesHolding;     ///< the number of shares is stored negative
  bool hasDividendUnit;   ///< price x shares is shown as dividend or unit value
  bool isDividendShares;  ///< the shares stand in the dividend shares column too
  bool bringsProceeds;    ///< a sale: left out of the book value without sales
  BookRule book;
  std::string_view hint;  ///< what it is for, in a sentence

  constexpr Need need(EntryBox box) const { return needs[static_cast<std::size_t>(box)]; }
};

/// The six types, in the order of the type list.
std::span<const TransactionType> transactionTypes();

/// The type of a code; null for a character that is none.
const TransactionType* transactionType(char code);

}  // namespace mirelund

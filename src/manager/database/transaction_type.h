// SPDX-License-Identifier: GPL-3.0-or-later
// The six transaction types: one row each, which holds all that is known of it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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
  char code;                    ///< in the data file
  std::string_view listText;    ///< in the type list
  std::string_view reportWord;  ///< in the reports, kReportWordWidth characters
  std::array<Need, kEntryBoxes> needs;
  bool leavesHolding;     ///< the number of shares is stored negative
  bool hasDividendUnit;   ///< price x shares is shown as dividend or unit value
  bool isDividendShares;  ///< the shares stand in the dividend shares column too
  bool bringsProceeds;    ///< a sale: left out of the book value without sales
  BookRule book;

  constexpr Need need(EntryBox box) const { return needs[static_cast<std::size_t>(box)]; }
};

/// In the order of the type list.
// clang-format off
inline constexpr auto kTransactionTypes = [] {
  using enum Need;
  return std::array<TransactionType, 6>{{
  //                                        Date      Price     Shares    Fees      Dividend
  {'B', "Bought",          "Bought    ", {Positive, Positive, Positive, Any,      None},
   false, false, false, false, BookRule::Trade},
  {'S', "Sold",            "Sold      ", {Positive, Positive, Positive, Any,      None},
   true,  false, false, true,  BookRule::Trade},
  {'C', "Cash Dividend",   "Cash Div. ", {Positive, None,     None,     None,     Positive},
   false, false, false, false, BookRule::CashReceived},
  {'D', "Dividend Shares", "Div/Shrs. ", {Positive, Positive, Positive, None,     None},
   false, true,  true,  false, BookRule::NoCash},
  {'F', "Fee Cash",        "Fee Cash  ", {Positive, None,     None,     Positive, None},
   false, false, false, false, BookRule::CashPaid},
  {'U', "Unit Fee",        "Unit Fee  ", {Positive, Positive, Positive, None,     None},
   true,  true,  false, false, BookRule::NoCash},
  }};
}();
// clang-format on

static_assert([] {
  for (const auto& type : kTransactionTypes)
    if (type.reportWord.size() != kReportWordWidth) return false;
  return true;
}());

namespace detail {
// Every line of a report asks for its type.
inline constexpr auto kTypeOfCode = [] {
  std::array<const TransactionType*, 256> types{};
  for (const auto& type : kTransactionTypes) types[static_cast<unsigned char>(type.code)] = &type;
  return types;
}();
}  // namespace detail

/// The type of a code; null for a character that is none.
constexpr const TransactionType* transactionType(char code) {
  return detail::kTypeOfCode[static_cast<unsigned char>(code)];
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/transaction_type.h"

namespace mirelund {

namespace {

using enum Need;

// clang-format off
constexpr TransactionType kTypes[] = {
  //                                        Date      Price     Shares    Fees      Dividend
  {"Bought",          "Bought    ", 'B', {Positive, Positive, Positive, Any,      None},
   false, false, false, false, BookRule::Trade,
   "Shares bought: the price of a share, their number, and the commission, which may be 0."},
  {"Sold",            "Sold      ", 'S', {Positive, Positive, Positive, Any,      None},
   true,  false, false, true,  BookRule::Trade,
   "Shares sold: the price of a share, their number without a sign, and the commission, which may be 0."},
  {"Cash Dividend",   "Cash Div. ", 'C', {Positive, None,     None,     None,     Positive},
   false, false, false, false, BookRule::CashReceived,
   "A dividend paid out in cash: the amount alone."},
  {"Dividend Shares", "Div/Shrs. ", 'D', {Positive, Positive, Positive, None,     None},
   false, true,  true,  false, BookRule::NoCash,
   "A dividend paid in shares: their price and number; the new shares of a split are entered at a price of 0.0001."},
  {"Fee Cash",        "Fee Cash  ", 'F', {Positive, None,     None,     Positive, None},
   false, false, false, false, BookRule::CashPaid,
   "A fee paid in cash: the amount alone."},
  {"Unit Fee",        "Unit Fee  ", 'U', {Positive, Positive, Positive, None,     None},
   true,  true,  false, false, BookRule::NoCash,
   "A fee paid by giving up shares: their price and number; the shares lost in a reverse split are entered at a price of 0.0001."},
};
// clang-format on

constexpr bool everyWordHasItsWidth() {
  for (const auto& type : kTypes)
    if (type.reportWord.size() != kReportWordWidth) return false;
  return true;
}
static_assert(everyWordHasItsWidth());

// Every line of a report asks for its type.
constexpr auto kTypeOfCode = [] {
  std::array<const TransactionType*, 256> types{};
  for (const auto& type : kTypes) types[static_cast<unsigned char>(type.code)] = &type;
  return types;
}();

}  // namespace

std::span<const TransactionType> transactionTypes() {
  return kTypes;
}

const TransactionType* transactionType(char code) {
  return kTypeOfCode[static_cast<unsigned char>(code)];
}

}  // namespace mirelund

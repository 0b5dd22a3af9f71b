// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/transaction_entry.h"

#include <algorithm>

#include "base/parse_number.h"

namespace mirelund {

namespace {

bool meets(Currency value, Need need) {
  switch (need) {
    case Need::None:
      return value.isZero();
    case Need::Positive:
      return value > Currency();
    case Need::Any:
      break;
  }
  return true;
}

bool valuesMatch(const EntryRow& row) {
  for (const auto& [box, name, caption] : kEntryRow)
    if (box != EntryBox::Date && !row.isOutOfRange(box) &&
        !meets(row.value(box), row.type->need(box)))
      return false;
  return true;
}

Currency bookValue(const Record& record, BookRule rule) {
  switch (rule) {
    case BookRule::Trade:
      return record.price * record.shares + record.fees;
    case BookRule::CashReceived:
      return -record.dividend;
    case BookRule::CashPaid:
      return record.fees;
    case BookRule::NoCash:
      break;
  }
  return {};
}

}  // namespace

std::optional<EntryBox> nextEntryBox(const TransactionType& type, EntryBox box) {
  for (const auto& rule : kEntryRow)
    if (rule.box > box && type.need(rule.box) != Need::None) return rule.box;
  return std::nullopt;
}

BoxLeft leaveAmountBox(BoxState& boxes, Currency& stored, bool& outOfRange, std::string_view text) {
  BoxLeft left;
  if (boxes.BoxEdited != 1) return left;
  boxes.BoxEdited = 0;
  try {
    stored = ToCurrency(ParseNumber(text));
    outOfRange = false;
  } catch (const ArithmeticError&) {
    outOfRange = true;
    left.message = Message::WrongEntry;
    left.refused = true;
    return left;
  }
  left.changed = true;
  left.text = FormatNumber(stored, kEntryPattern);
  return left;
}

Message checkEntry(const EntryRow& row, std::string_view dateText, const ShortDateFormat& format,
                   bool correcting, Date& date) {
  if (row.type == nullptr) return Message::NoType;
  if (dateText.find_first_not_of(' ') == std::string_view::npos) return Message::NoDate;
  const auto typed = parseDate(dateText, format);
  if (!typed) return Message::DateFormat;
  if (!valuesMatch(row)) return correcting ? Message::RecordNotCorrected : Message::RecordNotSaved;
  date = *typed;
  return Message::None;
}

Record buildRecord(const EntryRow& row, std::int16_t fund, Date date) {
  require(std::ranges::count(row.outOfRange, true) == 0, kBeyondCurrency);
  Record record;
  record.fund = Currency::whole(fund);
  record.type = row.type->code;
  record.date = date;
  record.price = row.value(EntryBox::Price);
  record.shares = row.value(EntryBox::Shares);
  record.fees = row.value(EntryBox::Fees);
  record.dividend = row.value(EntryBox::Dividend);
  if (row.type->leavesHolding) record.shares = -record.shares;
  record.bookValue = bookValue(record, row.type->book);
  return record;
}

EntryRow entryRow(const Record& record) {
  const Currency shares = record.shares < Currency() ? -record.shares : record.shares;
  return {transactionType(record.type),
          {Currency(), record.price, shares, record.fees, record.dividend, Currency()},
          {}};
}

}  // namespace mirelund

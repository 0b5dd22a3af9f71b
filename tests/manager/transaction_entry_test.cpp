// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/transaction_entry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "manager/database/databases.h"

namespace mirelund {
namespace {

constexpr ShortDateFormat kFormat{};

EntryRow row(char type, double price, double shares, double fees, double dividend) {
  return {transactionType(type),
          {Currency(), money(price), money(shares), money(fees), money(dividend), Currency()}};
}

struct Built {
  const char* source;
  EntryRow row;
  double shares, book;
};

// Book values by hand.
const Built kBuilt[] = {
    {"100 x 10 + 50", row('B', 10, 100, 50, 0), 100, 1050},
    {"-(100 x 10) + 50", row('S', 10, 100, 50, 0), -100, -950},
    {"a dividend of 100", row('C', 0, 0, 0, 100), 0, -100},
    {"shares without cash", row('D', 10, 10, 0, 0), 10, 0},
    {"a fee of 100", row('F', 0, 0, 100, 0), 0, 100},
    {"units without cash", row('U', 10, 5, 0, 0), -5, 0},
    {"a split", row('D', .0001, 450, 0, 0), 450, 0},
    {"no commission", row('B', 2.5, 3, 0, 0), 3, 7.5},
    {"1.2345 x 1.1111 = 1.37165..., to four decimals", row('B', 1.2345, 1.1111, 0, 0), 1.1111,
     1.3717},
    {"-(0.0001 x 0.5) is a tie to zero, + 1", row('S', .0001, .5, 1, 0), -.5, 1},
};

TEST(BuildRecord, FollowsTheType) {
  for (const auto& c : kBuilt) {
    const Record record = buildRecord(c.row, 3, date(2001, 5, 15));
    EXPECT_EQ(record.fund, Currency::whole(3)) << c.source;
    EXPECT_EQ(record.shares, money(c.shares)) << c.source;
    EXPECT_EQ(record.bookValue, money(c.book)) << c.source;
    EXPECT_EQ(record.price, c.row.EntryValues[1]) << c.source;
    EXPECT_EQ(record.fees, c.row.EntryValues[3]) << c.source;
    EXPECT_EQ(record.dividend, c.row.EntryValues[4]) << c.source;
    EXPECT_EQ(record.type, c.row.type->code) << c.source;
    EXPECT_EQ(record.date, date(2001, 5, 15)) << c.source;
  }
}

TEST(BuildRecord, ThrowsWhenTheBookValueLeavesTheRange) {
  EXPECT_THROW(buildRecord(row('B', 9e14, 2, 0, 0), 1, date(2001, 1, 1)), ArithmeticError);
  EXPECT_THROW(buildRecord(row('S', 9e14, 2, 0, 0), 1, date(2001, 1, 1)), ArithmeticError);
  EXPECT_THROW(buildRecord(row('B', 9e14, 1, 9e14, 0), 1, date(2001, 1, 1)), ArithmeticError);
}

TEST(EntryRow, OfARecordBuildsItAgain) {
  for (const auto& c : kBuilt) {
    const Record record = buildRecord(c.row, 3, date(2001, 5, 15));
    const EntryRow again = entryRow(record);
    EXPECT_EQ(again.type, c.row.type);
    EXPECT_EQ(again.EntryValues, c.row.EntryValues) << c.source;
  }
}

struct Checked {
  EntryRow row;
  const char* date;
  Message message;
};

// The table of what each type needs, box by box, and the order of refusals.
const Checked kChecked[] = {
    {row('B', 1, 1, 0, 0), "5/15/2001", Message::None},
    {row('B', 1, 1, 1, 0), "5/15/2001", Message::None},
    {row('B', 0, 1, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('B', 1, 0, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('B', 1, 1, 0, 1), "5/15/2001", Message::RecordNotSaved},
    {row('S', 1, 1, 0, 0), "5/15/2001", Message::None},
    {row('S', 0, 1, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('S', 1, 0, 9, 0), "5/15/2001", Message::RecordNotSaved},
    {row('S', 1, 1, 0, 1), "5/15/2001", Message::RecordNotSaved},
    {row('D', 1, 1, 0, 0), "5/15/2001", Message::None},
    {row('D', 0, 1, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('D', 1, 0, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('D', 1, 1, 1, 0), "5/15/2001", Message::RecordNotSaved},
    {row('D', 1, 1, 0, 1), "5/15/2001", Message::RecordNotSaved},
    {row('U', 1, 1, 0, 0), "5/15/2001", Message::None},
    {row('U', 0, 1, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('U', 1, 0, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('U', 1, 1, 1, 0), "5/15/2001", Message::RecordNotSaved},
    {row('U', 1, 1, 0, 1), "5/15/2001", Message::RecordNotSaved},
    {row('C', 0, 0, 0, 1), "5/15/2001", Message::None},
    {row('C', 0, 0, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('C', 1, 0, 0, 1), "5/15/2001", Message::RecordNotSaved},
    {row('C', 0, 1, 0, 1), "5/15/2001", Message::RecordNotSaved},
    {row('C', 0, 0, 1, 1), "5/15/2001", Message::RecordNotSaved},
    {row('F', 0, 0, 1, 0), "5/15/2001", Message::None},
    {row('F', 0, 0, 0, 0), "5/15/2001", Message::RecordNotSaved},
    {row('F', 1, 0, 1, 0), "5/15/2001", Message::RecordNotSaved},
    {row('F', 0, 1, 1, 0), "5/15/2001", Message::RecordNotSaved},
    {row('F', 0, 0, 1, 1), "5/15/2001", Message::RecordNotSaved},
    {row('B', .0001, .0001, 0, 0), "5/15/2001", Message::None},
    {EntryRow{}, "", Message::NoType},
    {EntryRow{}, "5/15/2001", Message::NoType},
    {row('B', 0, 0, 0, 0), "", Message::NoDate},
    {row('B', 1, 1, 0, 0), "  ", Message::NoDate},
    {row('B', 0, 0, 0, 0), "2/30/2001", Message::DateFormat},
    {row('B', 1, 1, 0, 0), "today", Message::DateFormat},
};

TEST(CheckEntry, AsksForExactlyTheTypesValues) {
  for (const auto& c : kChecked) {
    Date typed;
    const std::string what = std::string(c.row.type ? 1 : 0, c.row.type ? c.row.type->code : ' ');
    EXPECT_EQ(checkEntry(c.row, c.date, kFormat, false, typed), c.message) << what << ' ' << c.date;
    if (c.message == Message::None) {
      EXPECT_EQ(typed, date(2001, 5, 15));
    }
    const Message correcting =
        c.message == Message::RecordNotSaved ? Message::RecordNotCorrected : c.message;
    EXPECT_EQ(checkEntry(c.row, c.date, kFormat, true, typed), correcting) << what;
  }
}

struct Way {
  char type;
  const char* boxes;  // D date, P price, N number of shares, C commission, V dividend, + adds
};

TEST(NextEntryBox, FollowsTheTypesOwnBoxes) {
  const auto letter = [](EntryBox box) { return "DPNCV"[static_cast<int>(box)]; };
  for (const auto& [code, boxes] : {Way{'B', "DPNC+"},
                                    {'S', "DPNC+"},
                                    {'C', "DV+"},
                                    {'D', "DPN+"},
                                    {'F', "DC+"},
                                    {'U', "DPN+"}}) {
    std::string way = "D";
    EntryBox at = EntryBox::Date;
    while (const auto next = nextEntryBox(*transactionType(code), at)) way += letter(at = *next);
    EXPECT_EQ(way + '+', boxes);
  }
}

TEST(LeaveAmountBox, StoresOnlyWhatWasTyped) {
  Global global;
  Currency stored = money(5);
  bool outOfRange = false;
  EXPECT_FALSE(leaveAmountBox(global.boxes, stored, outOfRange, "7").changed);
  EXPECT_EQ(stored, money(5));
  global.boxes.BoxEdited = 1;
  const BoxLeft left = leaveAmountBox(global.boxes, stored, outOfRange, "1234.56789");
  EXPECT_TRUE(left.changed);
  EXPECT_EQ(left.text, "1,234.5679");
  EXPECT_EQ(stored.tenThousandths(), 12345679);
  EXPECT_EQ(global.boxes.BoxEdited, 0);
  global.boxes.BoxEdited = 1;
  EXPECT_EQ(leaveAmountBox(global.boxes, stored, outOfRange, "").text, "0.0000");
  global.boxes.BoxEdited = 1;
  const BoxLeft refused =
      leaveAmountBox(global.boxes, stored = money(5), outOfRange, "999999999999999999");
  EXPECT_EQ(refused.message, Message::WrongEntry);
  EXPECT_TRUE(refused.refused);
  EXPECT_TRUE(outOfRange);
  EXPECT_FALSE(refused.changed) << "it stands as typed";
  EXPECT_EQ(stored, money(5));
  EXPECT_EQ(global.boxes.BoxEdited, 0) << "and is told once";
}

}  // namespace
}  // namespace mirelund

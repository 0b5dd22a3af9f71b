// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/entry_help.h"

#include <array>
#include <string>
#include <string_view>

#include "app/report_line.h"
#include "manager/transaction_entry.h"

namespace mirelund {

namespace {

// One row a type, as it is typed. Boxes that the type does not enable are blank.
struct SampleRow {
  char code;
  Date date;
  std::array<std::int64_t, 4> values;  // ten-thousandths
};

constexpr SampleRow kSampleRows[] = {
    {'B', *Date::of(2008, 1, 11), {109'300, 2'000'000, 249'500, 0}},
    {'S', *Date::of(2015, 2, 11), {240'200, 1'400'000, 299'500, 0}},
    {'C', *Date::of(2009, 6, 19), {0, 0, 0, 480'000}},
    {'D', *Date::of(2010, 12, 23), {189'300, 128'000, 0, 0}},
    {'F', *Date::of(2010, 1, 14), {0, 0, 125'000, 0}},
    {'U', *Date::of(2011, 10, 22), {167'900, 10'500, 0, 0}},
};

void appendSampleRow(std::string& help, const SampleRow& row, const ShortDateFormat& format) {
  constexpr std::size_t kTypeWidth = 17;
  const TransactionType& type = *transactionType(row.code);
  help += type.listText;
  help.append(kTypeWidth - type.listText.size(), ' ');
  appendDateColumn(help, row.date, format);
  for (const EntryBoxRule& rule : kEntryRow) {
    if (rule.box == EntryBox::Date) continue;
    constexpr std::size_t kValueWidth = 14;
    const auto value = row.values[static_cast<std::size_t>(rule.box) - 1];
    if (type.need(rule.box) == Need::None)
      help.append(kValueWidth, ' ');
    else
      appendColumn(help, Currency::fromTenThousandths(value), kEntryPattern, kValueWidth);
  }
  appendLine(help);
}

constexpr std::string_view kSteps[] = {
    "On startup Funds: 0. Either use Open file tab to retrieve a database file from disk or",
    "click Add Fund Name and type in the name of your first fund or company.",
    "",
    "1. Select the fund: click the Dn/Arrow of the funds list and click on its name. The name",
    "   shown in the green box is the active fund and its records are listed below.",
    "2. Select the transaction type: click its Dn/Arrow and click on one of the six types. Only",
    "   the boxes which that type needs are shown in green.",
    "3. Type in the date and the figures. Press Enter to go to the next box. Numbers have up to",
    "   four decimals. The number of shares is always typed as a positive number, for Sold and",
    "   Unit Fee also.",
    "4. Press Enter in the last box or click Add Record. The record is put in its place by date.",
    "5. Use Save file tab to save your work before you leave. Nothing is saved automatically.",
    "",
    "Entries must be exactly as shown, one line for each type. Boxes left blank are not used:",
    "",
};

constexpr std::string_view kExplanations[] = {
    "",
    "Bought and Sold: Commission can be 0. Cash Dividend: the total amount of cash received.",
    "Dividend Shares: shares received in place of cash, at the price they were counted at.",
    "Fee Cash: a fee paid in cash. Unit Fee: a fee paid by giving up shares.",
    "",
    "Stock splits: Use Dividend Shares with the number of new shares at a price of 0.0001.",
    "200 shares split 2 for 1 gives you 200 new shares: price 0.0001, number of shares 200.",
    "Reverse splits: Use Unit Fee with the reduction in shares at a price of 0.0001.",
    "300 shares become 100, the reduction is 200: price 0.0001, number of shares 200.",
    "",
    "To change a record: Click Correct and type in its number, shown in the last column (No.) of",
    "the list. Change the figures, then click Add Record. The fund and the transaction type",
    "cannot be changed. To cancel, go to another tab.",
    "To delete a record: Click Delete and type in its number. To delete a fund, delete all its",
    "records first, then click Delete once more.",
    "",
    "Limits: 18 funds and 600 records in each file.",
    "",
    "To try it out, use Open file tab to open the sample database DtaSampl.PQD. It has 6 funds",
    "and 90 records from 2008 to 2022. The names are invented.",
    "Brindlemoor Growth: Bought three times. The Div/Shrs. line number 11 at .0001 is a 2 for 1",
    "   split, 450 new shares for the 450 held.",
    "Hollowmere Energy: All shares have been sold. Number of shares is .0000 and the Book Value",
    "   is negative, more cash was received than paid out.",
    "Ostrella Small Caps: A Unit Fee every second year takes away a few shares and no cash.",
    "Quillfern Income: Two Cash Dividends every year, each lowers the Book Value.",
    "Tarnwick Bond: Dividend Shares every year add to the shares held, Fee Cash every second",
    "   year adds to the Book Value.",
    "Velmary Metals: The Unit Fee line number 6 at .0001 is a reverse split, 300 shares became",
    "   100. On the Current value tab it shows a loss.",
    "On the Current value tab enter 20.00 for each fund, then click Calculate.",
    "",
    "Book Value: A positive figure represents cash paid out by you, a negative figure cash",
    "received and .00 a none cash transaction",
};

}  // namespace

std::string entryHelp(const ShortDateFormat& format) {
  std::string help;
  for (const std::string_view line : kSteps) appendLine(help, line);
  appendLine(help,
             "Transaction            Date         Price     Number of    Commission          Cash");
  appendLine(help,
             "type                             of share        shares        or fee      dividend");
  for (const SampleRow& row : kSampleRows) appendSampleRow(help, row, format);
  for (const std::string_view line : kExplanations) appendLine(help, line);
  return help;
}

}  // namespace mirelund

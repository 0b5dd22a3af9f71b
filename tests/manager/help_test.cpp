// SPDX-License-Identifier: GPL-3.0-or-later
// The manager's help texts, whole, and what they say of the sample database.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "line_ends.h"
#include "manager/current_value_help.h"
#include "manager/database/data_file.h"
#include "manager/database/databases.h"
#include "manager/display_help.h"
#include "manager/entry_help.h"
#include "manager/reports/current_value.h"
#include "manager/reports/fund_reports.h"
#include "manager/transaction_entry.h"

namespace mirelund {
namespace {

// The text around the sample rows, whose dates are in the system's short form.
std::string entryHelpWith(const std::string& sampleRows) {
  return withCrLf(
      R"(On startup Funds: 0. Either use Open file tab to retrieve a database file from disk or
click Add Fund Name and type in the name of your first fund or company.

1. Select the fund: click the Dn/Arrow of the funds list and click on its name. The name
   shown in the green box is the active fund and its records are listed below.
2. Select the transaction type: click its Dn/Arrow and click on one of the six types. Only
   the boxes which that type needs are shown in green.
3. Type in the date and the figures. Press Enter to go to the next box. Numbers have up to
   four decimals. The number of shares is always typed as a positive number, for Sold and
   Unit Fee also.
4. Press Enter in the last box or click Add Record. The record is put in its place by date.
5. Use Save file tab to save your work before you leave. Nothing is saved automatically.

Entries must be exactly as shown, one line for each type. Boxes left blank are not used:

Transaction            Date         Price     Number of    Commission          Cash
type                             of share        shares        or fee      dividend
)" + sampleRows +
      R"(
Bought and Sold: Commission can be 0. Cash Dividend: the total amount of cash received.
Dividend Shares: shares received in place of cash, at the price they were counted at.
Fee Cash: a fee paid in cash. Unit Fee: a fee paid by giving up shares.

Stock splits: Use Dividend Shares with the number of new shares at a price of 0.0001.
200 shares split 2 for 1 gives you 200 new shares: price 0.0001, number of shares 200.
Reverse splits: Use Unit Fee with the reduction in shares at a price of 0.0001.
300 shares become 100, the reduction is 200: price 0.0001, number of shares 200.

To change a record: Click Correct and type in its number, shown in the last column (No.) of
the list. Change the figures, then click Add Record. The fund and the transaction type
cannot be changed. To cancel, go to another tab.
To delete a record: Click Delete and type in its number. To delete a fund, delete all its
records first, then click Delete once more.

Limits: 18 funds and 600 records in each file.

To try it out, use Open file tab to open the sample database DtaSampl.PQD. It has 6 funds
and 90 records from 2008 to 2022. The names are invented.
Brindlemoor Growth: Bought three times. The Div/Shrs. line number 11 at .0001 is a 2 for 1
   split, 450 new shares for the 450 held.
Hollowmere Energy: All shares have been sold. Number of shares is .0000 and the Book Value
   is negative, more cash was received than paid out.
Ostrella Small Caps: A Unit Fee every second year takes away a few shares and no cash.
Quillfern Income: Two Cash Dividends every year, each lowers the Book Value.
Tarnwick Bond: Dividend Shares every year add to the shares held, Fee Cash every second
   year adds to the Book Value.
Velmary Metals: The Unit Fee line number 6 at .0001 is a reverse split, 300 shares became
   100. On the Current value tab it shows a loss.
On the Current value tab enter 20.00 for each fund, then click Calculate.

Book Value: A positive figure represents cash paid out by you, a negative figure cash
received and .00 a none cash transaction
)");
}

TEST(HelpText, Entry) {
  EXPECT_EQ(
      entryHelp(ShortDateFormat()),
      entryHelpWith(
          "Bought            1/11/2008       10.9300      200.0000       24.9500              \n"
          "Sold              2/11/2015       24.0200      140.0000       29.9500              \n"
          "Cash Dividend     6/19/2009                                                 48.0000\n"
          "Dividend Shares  12/23/2010       18.9300       12.8000                            \n"
          "Fee Cash          1/14/2010                                   12.5000              \n"
          "Unit Fee         10/22/2011       16.7900        1.0500                            \n"));
  EXPECT_EQ(
      entryHelp(shortDateFormat("dd.MM.yyyy")),
      entryHelpWith(
          "Bought           11.01.2008       10.9300      200.0000       24.9500              \n"
          "Sold             11.02.2015       24.0200      140.0000       29.9500              \n"
          "Cash Dividend    19.06.2009                                                 48.0000\n"
          "Dividend Shares  23.12.2010       18.9300       12.8000                            \n"
          "Fee Cash         14.01.2010                                   12.5000              \n"
          "Unit Fee         22.10.2011       16.7900        1.0500                            \n"));
}

TEST(HelpText, Display) {
  EXPECT_EQ(displayHelp(), withCrLf("To show an individual fund. Double click on it.\n"
                                    "For all funds click the Display All Funds button.\n"));
}

// The last two lines end with a blank.
TEST(HelpText, CurrentValue) {
  EXPECT_EQ(currentValueHelp(),
            withCrLf("Type the current share price or whatif price beside each fund name then "
                     "click Calculate.\n"
                     "For DtaSampl enter \n"
                     "20.00 for all current price inputs. \n"));
}

// What the entry page's help says of DtaSampl.PQD, word for word.
class SampleWalk : public testing::Test {
 protected:
  static std::int16_t rowOf(const char* name) {
    for (std::int16_t row = 1; row <= sample().FundCount; ++row)
      if (sample().FundTable[static_cast<std::size_t>(row)].name == name) return row;
    ADD_FAILURE() << "no fund " << name;
    return 0;
  }
  static std::int16_t number(const char* name) {
    return fundNumber(sample().FundTable[static_cast<std::size_t>(rowOf(name))]);
  }
  static std::vector<Record> recordsOf(const char* name) {
    std::vector<Record> records;
    for (const Record& record : sample().records())
      if (record.fund == Currency::whole(number(name))) records.push_back(record);
    return records;
  }
  static std::vector<Record> recordsOf(const char* name, char type) {
    std::vector<Record> records = recordsOf(name);
    std::erase_if(records, [type](const Record& record) { return record.type != type; });
    return records;
  }
  static Currency sharesIn(const std::vector<Record>& records, std::size_t first) {
    Currency shares;
    for (std::size_t i = 0; i < first; ++i) shares += records[i].shares;
    return shares;
  }
  static std::vector<int> yearsOf(const std::vector<Record>& records) {
    std::vector<int> years;
    for (const Record& record : records) years.push_back(record.date.year());
    return years;
  }
  static const Database& sample() {
    static const Database database = parseDatabase(contents(MIRELUND_DATA "/DtaSampl.PQD")).value();
    return database;
  }
  static constexpr Currency kSplitPrice = Currency::fromTenThousandths(1);
};

struct SampleRow {
  char type;
  Date date;
  double price, shares, fees, dividend;  // as typed
};

TEST_F(SampleWalk, TheRowsShownAreRecordsOfIt) {
  const SampleRow rows[] = {{'B', date(2008, 1, 11), 10.93, 200, 24.95, 0},
                            {'S', date(2015, 2, 11), 24.02, 140, 29.95, 0},
                            {'C', date(2009, 6, 19), 0, 0, 0, 48},
                            {'D', date(2010, 12, 23), 18.93, 12.8, 0, 0},
                            {'F', date(2010, 1, 14), 0, 0, 12.5, 0},
                            {'U', date(2011, 10, 22), 16.79, 1.05, 0, 0}};
  for (const auto& row : rows) {
    const std::array<Currency, 6> typed = {Currency(), money(row.price), money(row.shares),
                                           money(row.fees), money(row.dividend)};
    EXPECT_EQ(std::ranges::count_if(sample().records(),
                                    [&](const Record& record) {
                                      return record.type == row.type && record.date == row.date &&
                                             entryRow(record).EntryValues == typed;
                                    }),
              1)
        << row.type;
  }
}

TEST_F(SampleWalk, ItHasSixFundsAndNinetyRecords) {
  EXPECT_EQ(sample().FundCount, 6);
  EXPECT_EQ(sample().RecordCount, 90);
  EXPECT_EQ(sample().records().front().date.year(), 2008);
  EXPECT_EQ(sample().records().back().date.year(), 2022);
  EXPECT_EQ(kMostFunds, 18);
  EXPECT_EQ(kMostRecords, 600);
  EXPECT_EQ(kEntryDecimals, 4);
}

TEST_F(SampleWalk, BrindlemoorGrowthIsBoughtThreeTimesAndSplit) {
  EXPECT_EQ(recordsOf("Brindlemoor Growth", 'B').size(), 3U);
  const auto records = recordsOf("Brindlemoor Growth");
  const Record& split = records.at(11 - 1);
  EXPECT_EQ(split.type, 'D');
  EXPECT_EQ(split.price, kSplitPrice);
  EXPECT_EQ(split.shares, money(450));
  EXPECT_EQ(sharesIn(records, 11 - 1), money(450));
  EXPECT_EQ(sharesIn(records, 11), money(900)) << "2 for 1";
}

TEST_F(SampleWalk, HollowmereEnergyIsSold) {
  const auto records = recordsOf("Hollowmere Energy");
  EXPECT_EQ(sharesIn(records, records.size()), Currency());
  Currency book;
  for (const Record& record : records) book += record.bookValue;
  EXPECT_LT(book, Currency());
  CurrencyTable totals(kTotalsRows, kTotalsColumns);
  const std::string list =
      recordList(sample(), number("Hollowmere Energy"), ShortDateFormat(), totals);
  EXPECT_NE(list.find("Total:                                 .0000 "), std::string::npos);
}

TEST_F(SampleWalk, OstrellaSmallCapsPaysAUnitFeeEverySecondYear) {
  const auto fees = recordsOf("Ostrella Small Caps", 'U');
  EXPECT_EQ(yearsOf(fees), (std::vector<int>{2011, 2013, 2015, 2017, 2019, 2021}));
  for (const Record& fee : fees) {
    EXPECT_LT(fee.shares, Currency());
    EXPECT_GT(fee.shares, money(-3)) << "a few";
    EXPECT_EQ(fee.bookValue, Currency());
  }
}

TEST_F(SampleWalk, QuillfernIncomePaysTwoDividendsAYear) {
  const auto dividends = recordsOf("Quillfern Income", 'C');
  std::map<int, int> counts;
  for (const Record& dividend : dividends) {
    ++counts[dividend.date.year()];
    EXPECT_LT(dividend.bookValue, Currency());
  }
  EXPECT_EQ(counts.begin()->first, 2009);
  EXPECT_EQ(counts.rbegin()->first, 2017);
  EXPECT_EQ(counts.size(), 2017U - 2009U + 1U);
  for (const auto& [year, count] : counts) EXPECT_EQ(count, 2) << year;
}

TEST_F(SampleWalk, TarnwickBondGrowsEveryYearAndPaysEverySecond) {
  const auto shares = recordsOf("Tarnwick Bond", 'D');
  EXPECT_EQ(yearsOf(shares), (std::vector<int>{2010, 2011, 2012, 2013, 2014, 2015, 2016, 2017, 2018,
                                               2019, 2020, 2021, 2022}));
  for (const Record& record : shares) EXPECT_GT(record.shares, Currency());
  const auto fees = recordsOf("Tarnwick Bond", 'F');
  EXPECT_EQ(yearsOf(fees), (std::vector<int>{2010, 2012, 2014, 2016, 2018, 2020}));
  for (const Record& fee : fees) EXPECT_GT(fee.bookValue, Currency());
}

TEST_F(SampleWalk, VelmaryMetalsIsReverseSplitAndShowsALoss) {
  const auto records = recordsOf("Velmary Metals");
  const Record& reverse = records.at(6 - 1);
  EXPECT_EQ(reverse.type, 'U');
  EXPECT_EQ(reverse.price, kSplitPrice);
  EXPECT_EQ(sharesIn(records, 6 - 1), money(300));
  EXPECT_EQ(sharesIn(records, 6), money(100));
  EXPECT_EQ(reverse.shares, money(-200)) << "the reduction";
  const std::vector<Currency> prices(6, money(20));
  CurrencyTable totals;
  currentValueTable(sample(), prices, totals);
  EXPECT_LT(totals.at(static_cast<std::size_t>(rowOf("Velmary Metals")), 4), Currency());
}

}  // namespace
}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "sample_database.h"

#include <array>
#include <cstdint>
#include <random>
#include <span>

#include "manager/transaction_entry.h"

namespace mirelund {

namespace {

constexpr int kFirstYear = 2008;
constexpr int kLastYear = 2022;
constexpr std::uint_fast32_t kSeed = 20080115;

// What happens in a fund. Splits are entered as dividend shares or unit fees at
// a price of 0.0001, and `amount` is the factor then.
enum class Event : std::uint8_t {
  Buy,   // amount: shares
  Sell,  // amount: shares
  SellAll,
  CashDividend,  // amount: cents a share
  Reinvest,      // amount: thousandths of the holding
  FeeCash,       // amount: cents
  UnitFee,       // amount: thousandths of the holding
  Split,
  ReverseSplit,
};

struct Plan {
  Event event;
  int firstYear;
  int lastYear;  // every `step` years from the first
  int step;
  int month;
  int amount;
};

struct FundPlan {
  const char* name;
  int firstPrice;  // cents, in kFirstYear
  int lastPrice;   // cents, in kLastYear, were there no split
  std::span<const Plan> plans;
};

using enum Event;

constexpr Plan kGrowth[] = {
    {Buy, 2008, 2008, 1, 1, 200}, {Buy, 2010, 2010, 1, 3, 150},
    {Buy, 2013, 2013, 1, 9, 100}, {CashDividend, 2009, 2022, 1, 6, 24},
    {Split, 2015, 2015, 1, 7, 2}, {Sell, 2019, 2019, 1, 10, 100},
};
constexpr Plan kIncome[] = {
    {Buy, 2008, 2008, 1, 4, 300},
    {Buy, 2012, 2012, 1, 5, 200},
    {CashDividend, 2009, 2017, 1, 3, 41},
    {CashDividend, 2009, 2017, 1, 9, 43},
};
constexpr Plan kBond[] = {
    {Buy, 2009, 2009, 1, 2, 400},      {Buy, 2011, 2011, 1, 11, 250},
    {Buy, 2014, 2014, 1, 5, 100},      {Reinvest, 2010, 2022, 1, 12, 31},
    {FeeCash, 2010, 2020, 2, 1, 1250},
};
constexpr Plan kSmall[] = {
    {Buy, 2010, 2010, 1, 6, 150},  {Buy, 2012, 2012, 1, 2, 120},    {Buy, 2016, 2016, 1, 8, 80},
    {Sell, 2018, 2018, 1, 4, 100}, {UnitFee, 2011, 2021, 2, 10, 7},
};
constexpr Plan kMetals[] = {
    {Buy, 2011, 2011, 1, 3, 200},         {Buy, 2013, 2013, 1, 10, 100},
    {CashDividend, 2012, 2013, 1, 8, 15}, {FeeCash, 2012, 2022, 5, 1, 2500},
    {ReverseSplit, 2016, 2016, 1, 5, 3},
};
constexpr Plan kEnergy[] = {
    {Buy, 2009, 2009, 1, 5, 180},         {Buy, 2011, 2011, 1, 7, 120},
    {CashDividend, 2010, 2014, 1, 4, 36}, {Reinvest, 2012, 2013, 1, 12, 22},
    {Sell, 2015, 2015, 1, 2, 140},        {SellAll, 2017, 2017, 1, 6, 0},
};

// In the order in which they were created, which numbers them.
constexpr FundPlan kFunds[] = {
    {"Brindlemoor Growth", 1150, 5200, kGrowth}, {"Quillfern Income", 1240, 2150, kIncome},
    {"Tarnwick Bond", 1880, 2090, kBond},        {"Ostrella Small Caps", 1420, 3100, kSmall},
    {"Velmary Metals", 4200, 1900, kMetals},     {"Hollowmere Energy", 1680, 3350, kEnergy},
};

// A fund's life, step by step in time.
class FundLife {
 public:
  FundLife(std::int16_t number, const FundPlan& plan, std::mt19937& random)
      : number_(number), plan_(plan), random_(random) {}

  template <typename Use>
  void run(Use use) {
    for (int year = kFirstYear; year <= kLastYear; ++year)
      for (int month = 1; month <= 12; ++month)
        for (const Plan& plan : plan_.plans)
          if (plan.month == month && year >= plan.firstYear && year <= plan.lastYear &&
              (year - plan.firstYear) % plan.step == 0)
            use(record(plan, year));
  }

 private:
  // 0 to count - 1; the library's own distributions differ between systems.
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  Currency price(int year) {
    const int rise = (plan_.lastPrice - plan_.firstPrice) * (year - kFirstYear);
    int cents = plan_.firstPrice + rise / (kLastYear - kFirstYear);
    cents += cents * (pick(121) - 60) / 1000;
    return Currency::fromTenThousandths(cents * factor_ / divisor_ * std::int64_t{100});
  }

  static Currency cents(std::int64_t amount) { return Currency::fromTenThousandths(amount * 100); }

  // `amount` thousandths of the holding, to three decimals as such units are.
  Currency part(int amount) const {
    return Currency::fromTenThousandths(holding_.tenThousandths() * amount / 10'000 * 10);
  }

  Record record(const Plan& plan, int year) {
    const Date date = *Date::of(year, plan.month, 1 + pick(28));
    const Currency smallest = Currency::fromTenThousandths(1);
    switch (plan.event) {
      case Buy:
        return trade('B', date, year, Currency::whole(plan.amount));
      case Sell:
        return trade('S', date, year, Currency::whole(plan.amount));
      case SellAll:
        return trade('S', date, year, holding_);
      case CashDividend:
        return enter('C', date, {}, {}, {}, perShare(plan.amount + pick(9)));
      case Reinvest: {
        const Currency shares = part(plan.amount + pick(7));
        return enter('D', date, price(year), shares);
      }
      case FeeCash:
        return enter('F', date, {}, {}, cents(plan.amount));
      case UnitFee:
        return enter('U', date, price(year), part(plan.amount));
      case Split:
        divisor_ = plan.amount;
        return enter('D', date, smallest, holding_ * Currency::whole(plan.amount - 1));
      case ReverseSplit:
        factor_ = plan.amount;
        return enter(
            'U', date, smallest,
            holding_ - Currency::fromTenThousandths(holding_.tenThousandths() / plan.amount));
    }
    return {};
  }

  // One number is drawn in each statement: the order of two in one is the compiler's.
  Record trade(char type, Date date, int year, Currency shares) {
    const Currency fee = fees();
    return enter(type, date, price(year), shares, fee);
  }

  // The cash for so many cents a share, to the cent.
  Currency perShare(int amount) const {
    return cents(holding_.tenThousandths() * amount / Currency::kScale);
  }

  Currency fees() { return cents(995 + 500 * pick(5)); }

  Record enter(char type, Date date, Currency price, Currency shares, Currency fees = {},
               Currency dividend = {}) {
    const EntryRow row{transactionType(type), {Currency(), price, shares, fees, dividend}};
    const Record record = buildRecord(row, number_, date);
    holding_ += record.shares;
    return record;
  }

  std::int16_t number_;
  const FundPlan& plan_;
  std::mt19937& random_;
  Currency holding_;
  int factor_ = 1;
  int divisor_ = 1;
};

}  // namespace

Database sampleDatabase() {
  Database database;
  for (const FundPlan& plan : kFunds) addFund(database, plan.name);
  std::mt19937 random(kSeed);  // NOLINT(cert-msc51-cpp): the same file every time
  std::int16_t number = 0;
  for (const FundPlan& plan : kFunds)
    FundLife(++number, plan, random).run([&](const Record& record) {
      database.RecordTable[static_cast<std::size_t>(++database.RecordCount)] = record;
      SortRecords(database);
    });
  return database;
}

}  // namespace mirelund

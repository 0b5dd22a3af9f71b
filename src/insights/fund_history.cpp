// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/fund_history.h"

#include <cstddef>
#include <utility>

namespace mirelund {

namespace {

// What D and U hold as a price where shares are split or merged.
constexpr Currency kSplit = Currency::fromTenThousandths(1);

// Every share costs the same.
class AveragedShares {
 public:
  const Holding& held() const { return held_; }

  void add(Currency shares, Currency cost) {
    held_.shares += shares;
    held_.cost += cost;
  }

  // The cost of so many shares, no more than are held, which go.
  Currency take(Currency shares) {
    if (shares == held_.shares) return std::exchange(held_, {}).cost;
    const Currency cost = scaled(held_.cost, shares, held_.shares);
    held_.shares = held_.shares - shares;
    held_.cost = held_.cost - cost;
    return cost;
  }

  // So many shares are held now, for the same cost.
  void split(Currency shares) { held_.shares = shares; }

 private:
  Holding held_;
};

// The oldest shares go first.
class SharesInLots {
 public:
  const Holding& held() const { return held_; }

  void add(Currency shares, Currency cost) {
    lots_.push_back({shares, cost});
    held_.shares += shares;
    held_.cost += cost;
  }

  Currency take(Currency shares) {
    if (shares == held_.shares) {
      oldest_ = lots_.size();
      return std::exchange(held_, {}).cost;
    }
    Currency cost;
    Currency left = shares;
    // There is a lot for them: fewer go than are held.
    while (!left.isZero()) {
      Holding& lot = lots_[oldest_];
      if (lot.shares > left) {
        const Currency part = scaled(lot.cost, left, lot.shares);
        lot.shares = lot.shares - left;
        lot.cost = lot.cost - part;
        cost += part;
        break;
      }
      left = left - lot.shares;
      cost += lot.cost;
      ++oldest_;
    }
    held_.shares = held_.shares - shares;
    held_.cost = held_.cost - cost;
    return cost;
  }

  // Each lot ends where its last share stands among all, scaled and rounded: lots are
  // differences of sums that do not fall, and their sum is what is held.
  void split(Currency shares) {
    if (held_.shares.isZero()) return add(shares, {});
    Currency sum;
    Currency before;
    for (std::size_t i = oldest_; i < lots_.size(); ++i) {
      sum += lots_[i].shares;
      const Currency now = scaled(sum, shares, held_.shares);
      lots_[i].shares = now - before;
      before = now;
    }
    held_.shares = shares;
  }

 private:
  Holding held_;
  std::vector<Holding> lots_;
  std::size_t oldest_ = 0;  // lots before it are gone
};

// The sign that the shares of a type have: -1, 0 or 1, or else none.
struct SharesRow {
  char type;
  int sign;
  std::string_view reason;
};

constexpr std::array<SharesRow, 6> kShares{{
    {'B', 1, "a purchase that takes shares away"},
    {'C', 0, "a cash dividend with shares"},
    {'D', 1, "dividend shares that take shares away"},
    {'F', 0, "a cash fee with shares"},
    {'S', -1, "a sale that adds shares"},
    {'U', -1, "a unit fee that adds shares"},
}};

// Every record asks for its own.
constexpr auto kRowOfType = [] {
  std::array<const SharesRow*, 256> rows{};
  for (const SharesRow& row : kShares) rows[static_cast<unsigned char>(row.type)] = &row;
  return rows;
}();

constexpr std::string_view kMoreThanHeld = "more shares given up than held";

std::string_view reasonAgainst(const Record& record, Currency held) {
  const std::int64_t shares = record.shares.tenThousandths();
  const int sign = (shares > 0 ? 1 : 0) - (shares < 0 ? 1 : 0);
  if (sign == 0) return {};
  const SharesRow& row = *kRowOfType[static_cast<unsigned char>(record.type)];
  if (row.sign != sign) return row.reason;
  return -record.shares > held ? kMoreThanHeld : std::string_view();
}

template <typename Shares, ByYear byYear>
class Accounts {
 public:
  explicit Accounts(FundHistory& history) : history_(history) {}

  void run(RecordsInOrder records) {
    makeRoom(records);
    for (const Record* record : records) {
      const std::string_view reason = reasonAgainst(*record, shares_.held().shares);
      if (!reason.empty()) {
        history_.refused = {reason, record->date};
        break;
      }
      history_.bookValue += record->bookValue;
      if constexpr (byYear == ByYear::Yes) {
        YearSums& year = yearOf(*record);
        take(*record, year.sums);
        year.closing = shares_.held();
      } else {
        take(*record, history_.sums);
      }
    }
    for (const YearSums& year : history_.years) history_.sums += year.sums;
    history_.held = shares_.held();
  }

 private:
  // All at once: growing took longer than all else.
  void makeRoom(RecordsInOrder records) {
    std::size_t disposals = 0;
    std::size_t years = 0;
    int year = 0;
    for (const Record* record : records) {
      if (record->shares < Currency()) ++disposals;
      if (record->date.year() != year) ++years;
      year = record->date.year();
    }
    history_.disposals.reserve(disposals);
    if constexpr (byYear == ByYear::Yes) history_.years.reserve(years);
  }

  YearSums& yearOf(const Record& record) {
    const int year = record.date.year();
    auto& years = history_.years;
    if (years.empty() || years.back().year != year) years.push_back({year, shares_.held(), {}, {}});
    return years.back();
  }

  void take(const Record& record, FundSums& sums) {
    switch (record.type) {
      case 'B':
        sums.bought += record.bookValue;
        return shares_.add(record.shares, record.bookValue);
      case 'S':
        sums.sold += -record.bookValue;
        return dispose(record, -record.bookValue, sums);
      case 'C':
        sums.cashDividends += -record.bookValue;
        return;
      case 'F':
        sums.cashFees += record.bookValue;
        return;
      case 'D':
        sums.other += -record.bookValue;
        return addDividend(record, sums);
      default:
        sums.other += -record.bookValue;
        return payInUnits(record, sums);
    }
  }

  void addDividend(const Record& record, FundSums& sums) {
    if (record.price == kSplit) return shares_.split(shares_.held().shares + record.shares);
    const Currency value = record.price * record.shares;
    sums.reinvested += value;
    shares_.add(record.shares, value);
  }

  void payInUnits(const Record& record, FundSums& sums) {
    const Currency left = shares_.held().shares + record.shares;
    if (record.price == kSplit) {
      if (left.isZero()) return dispose(record, {}, sums);
      return shares_.split(left);
    }
    const Currency value = record.price * -record.shares;
    sums.unitFees += value;
    dispose(record, value, sums);
  }

  void dispose(const Record& record, Currency proceeds, FundSums& sums) {
    const Currency shares = -record.shares;
    const Currency cost = shares_.take(shares);
    const Currency gain = proceeds - cost;
    sums.realised += gain;
    history_.disposals.push_back({record.date, record.type, shares, proceeds, cost, gain});
  }

  FundHistory& history_;
  Shares shares_;
};

}  // namespace

FundSums& FundSums::operator+=(const FundSums& more) {
  bought += more.bought;
  sold += more.sold;
  cashDividends += more.cashDividends;
  reinvested += more.reinvested;
  cashFees += more.cashFees;
  unitFees += more.unitFees;
  other += more.other;
  realised += more.realised;
  return *this;
}

FundHistory fundHistory(RecordsInOrder records, CostMethod method, ByYear byYear) {
  FundHistory history;
  const auto run = [&]<ByYear years>() {
    if (method == CostMethod::AverageCost)
      Accounts<AveragedShares, years>(history).run(records);
    else
      Accounts<SharesInLots, years>(history).run(records);
  };
  if (byYear == ByYear::Yes)
    run.template operator()<ByYear::Yes>();
  else
    run.template operator()<ByYear::No>();
  return history;
}

}  // namespace mirelund

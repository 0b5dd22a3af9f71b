// SPDX-License-Identifier: GPL-3.0-or-later
// What a fund's records come to: the cost of its shares by average cost or first in, first
// out, the gain of each sale, and what came and went besides.
//
//     B   shares and book value (price x shares + commission) to the holding
//     S   takes its shares' cost out; proceeds are minus its book value
//     C   a dividend in cash, minus its book value
//     D   shares, and price x shares as income and as cost; at a price of exactly 0.0001
//         a split: shares alone (with nothing held: shares that cost nothing)
//     F   a fee in cash, its book value
//     U   gives shares up: price x shares is a fee, and less their cost a gain; at 0.0001
//         a reverse split: shares alone, or with every share a disposal for nothing
//
// A book value on a D or U, which a file may hold, is "other", with its sign turned. So
//
//     value - cost + realised + income - cash fees - unit fees + other
//
// is the value less all book values, which is the current-value page's Gain/Loss$, to the
// ten-thousandth.
//
// All is exact Currency. A product is rounded once to four decimals, a tie to even. The
// cost of n of h shares is cost x n / h, rounded so; the rest stays with what is held, and
// all shares take all the cost. Whatever leaves the range throws ArithmeticError.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "base/currency.h"
#include "base/date.h"
#include "base/table.h"
#include "insights/ordered_records.h"

namespace mirelund {

/// Which shares go first.
enum class CostMethod : std::uint8_t {
  AverageCost,      ///< a share like any other: cost x shares / shares held
  FirstInFirstOut,  ///< the oldest, lot by lot; a split scales the lots
};

struct CostMethodRow {
  CostMethod method;
  std::string_view name;      ///< as the window and the reports call it
  std::string_view sentence;  ///< what it is and is not; at most 96 characters
};

inline constexpr std::array<CostMethodRow, 2> kCostMethods{{
    {CostMethod::AverageCost, "Average cost",
     "Average cost is the base for your tax return; the law of your country may differ."},
    {CostMethod::FirstInFirstOut, "First in, first out",
     "First in, first out is the base for your tax return; the law of your country may differ."},
}};
static_assert(standsInOrder(kCostMethods, &CostMethodRow::method));

/// Shares and what they cost.
struct Holding {
  Currency shares;
  Currency cost;

  friend bool operator==(const Holding&, const Holding&) = default;
};

/// What came and went, of a fund or of all, in a year or ever.
struct FundSums {
  Currency bought;         ///< book values of B
  Currency sold;           ///< proceeds of S
  Currency cashDividends;  ///< C
  Currency reinvested;     ///< D, no splits
  Currency cashFees;       ///< F
  Currency unitFees;       ///< U, no reverse splits
  Currency other;          ///< what D and U hold as book values, signs turned
  Currency realised;       ///< gains of S and U

  Currency income() const { return cashDividends + reinvested; }
  FundSums& operator+=(const FundSums& more);

  friend bool operator==(const FundSums&, const FundSums&) = default;
};

/// A sale (S) or shares given up (U): gain = proceeds - cost.
struct Disposal {
  Date date;
  char type = 'S';
  Currency shares;    ///< given up, not negative
  Currency proceeds;  ///< of U price x shares
  Currency cost;
  Currency gain;

  friend bool operator==(const Disposal&, const Disposal&) = default;
};

/// A calendar year of a fund, or of all.
struct YearSums {
  int year = 0;
  Holding opening;
  FundSums sums;
  Holding closing;

  friend bool operator==(const YearSums&, const YearSums&) = default;
};

/// Why a fund cannot be computed: a record that its type cannot make (B or D with
/// negative shares, S or U with positive, C or F with any), or more shares given up
/// than are held.
struct Refused {
  std::string_view reason;  ///< "a sale that adds shares"
  Date date;

  friend bool operator==(const Refused&, const Refused&) = default;
};

/// All that a fund's records come to. Once refused, the rest is what it was before the
/// record that is to blame.
struct FundHistory {
  std::optional<Refused> refused;
  Holding held;
  FundSums sums;
  Currency bookValue;  ///< all book values
  std::vector<Disposal> disposals;
  std::vector<YearSums> years;  ///< those that have records; none without ByYear
};

/// Whether the years are asked for, beside what the records come to in all.
enum class ByYear : bool { No, Yes };

/// Throws ArithmeticError, std::bad_alloc.
FundHistory fundHistory(RecordsInOrder records, CostMethod method, ByYear byYear = ByYear::Yes);

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Each fund's records in the order in which they count.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "manager/database/fund_database.h"

namespace mirelund {

using RecordsInOrder = std::span<const Record* const>;

/// The records of every fund number: by date; within a day B and D, then C, F, S, U;
/// otherwise as in the table. The table's own order leaves a day's records as its sort
/// happened to, and a sale before the purchase of its shares would be refused.
///
/// Points into the database, which must stay.
class OrderedRecords {
 public:
  explicit OrderedRecords(const Database& database);
  explicit OrderedRecords(Database&&) = delete;

  /// Of a fund's number, whichever fund of the table they were meant for; not of what is
  /// about to go.
  RecordsInOrder of(std::int16_t number) const&;
  void of(std::int16_t number) const&& = delete;

 private:
  std::array<const Record*, kRecordRows> records_;
  std::array<std::uint16_t, kFundRows + 1> ends_{};  // number n: ends_[n] to ends_[n + 1]
};

}  // namespace mirelund

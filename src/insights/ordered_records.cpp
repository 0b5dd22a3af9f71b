// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/ordered_records.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

namespace mirelund {

namespace {

// Within a day: what comes in before what goes out.
constexpr std::array<std::uint8_t, 256> kPlaceInDay = [] {
  std::array<std::uint8_t, 256> places{};
  std::uint8_t place = 0;
  for (const char type : {'C', 'F', 'S', 'U'}) places[static_cast<unsigned char>(type)] = ++place;
  return places;
}();

// Orders as the records do, but for those that the table orders.
std::int32_t orderOf(const Record* record) {
  constexpr std::int32_t kPlaces = 8;
  return record->date.key() * kPlaces + kPlaceInDay[static_cast<unsigned char>(record->type)];
}

static_assert(kFundRows == std::numeric_limits<std::uint32_t>::digits);

// A number that no fund can have belongs to the last slot, which no fund asks for.
std::uint8_t slot(const Record& record) {
  const auto number = static_cast<std::size_t>(record.fund.tenThousandths() / Currency::kScale);
  return static_cast<std::uint8_t>(std::min(number, kAllRecordsRow));
}

}  // namespace

OrderedRecords::OrderedRecords(const Database& database) {
  const auto table = database.records();
  std::array<std::uint8_t, kRecordRows> slots;
  for (std::size_t row = 0; row < table.size(); ++row) {
    slots[row] = slot(table[row]);
    ++ends_[slots[row] + std::size_t{1}];
  }
  std::partial_sum(ends_.begin(), ends_.end(), ends_.begin(), std::plus<std::uint16_t>());
  auto next = ends_;
  std::array<std::int32_t, kFundRows> last{};  // the order of the last record of each
  std::uint32_t unsorted = 0;                  // a bit each
  for (std::size_t row = 0; row < table.size(); ++row) {
    const std::uint8_t mine = slots[row];
    const std::int32_t order = orderOf(&table[row]);
    unsorted |= static_cast<std::uint32_t>(order < last[mine]) << mine;
    last[mine] = order;
    records_[next[mine]++] = &table[row];
  }
  for (std::size_t i = 0; unsorted != 0; ++i, unsorted >>= 1) {
    if (unsorted % 2 == 0) continue;
    const std::span<const Record*> mine(&records_[ends_[i]], std::size_t{ends_[i + 1]} - ends_[i]);
    std::ranges::stable_sort(mine, {}, orderOf);
  }
}

RecordsInOrder OrderedRecords::of(std::int16_t number) const& {
  const auto at = static_cast<std::size_t>(number);
  return {&records_[ends_[at]], std::size_t{ends_[at + 1]} - ends_[at]};
}

}  // namespace mirelund

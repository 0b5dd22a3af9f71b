// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/ordered_records.h"

#include <algorithm>

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

// A number that no fund can have belongs to the last slot, which no fund asks for.
std::size_t slot(const Record& record) {
  const auto number = static_cast<std::size_t>(record.fund.tenThousandths() / Currency::kScale);
  return std::min(number, kAllRecordsRow);
}

}  // namespace

OrderedRecords::OrderedRecords(const Database& database) {
  for (const Record& record : database.records()) ++ends_[slot(record) + 1];
  for (std::size_t i = 1; i < ends_.size(); ++i)
    ends_[i] = static_cast<std::uint16_t>(ends_[i] + ends_[i - 1]);
  auto next = ends_;
  for (const Record& record : database.records()) records_[next[slot(record)]++] = &record;
  for (std::size_t i = 0; i + 1 < ends_.size(); ++i) {
    const std::span<const Record*> mine(&records_[ends_[i]], std::size_t{ends_[i + 1]} - ends_[i]);
    if (!std::ranges::is_sorted(mine, {}, orderOf)) std::ranges::stable_sort(mine, {}, orderOf);
  }
}

RecordsInOrder OrderedRecords::of(std::int16_t number) const& {
  const auto at = static_cast<std::size_t>(number);
  return {&records_[ends_[at]], std::size_t{ends_[at + 1]} - ends_[at]};
}

}  // namespace mirelund

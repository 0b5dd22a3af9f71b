// SPDX-License-Identifier: GPL-3.0-or-later
// A typed text is a date of the calendar, shown and read back the same, or none.
// The first byte picks the format; the rest is typed. All of it is a pattern too.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "manager/database/dates.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelund;
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  ShortDateFormat format = shortDateFormat(text);
  const auto check = [&](const std::optional<Date>& date) {
    if (!date) return;
    const std::string shown = formatDate(*date, format);
    if (!Date::of(date->year(), date->month(), date->day()) || shown.size() > 10 ||
        parseDate(shown, format) != date)
      std::abort();
  };
  check(Date::of(2029, 12, 31));
  for (int i = data[0] % 6; i > 0; --i)
    std::next_permutation(format.order.begin(), format.order.end());
  check(parseDate(text.substr(1), format));
  return 0;
}

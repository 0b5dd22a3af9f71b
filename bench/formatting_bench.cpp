// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers to text and back.
#include <random>
#include <vector>

#include "app/report_line.h"
#include "base/parse_number.h"
#include "beside.h"
#include "registered.h"

namespace mirelund::bench {

namespace {

constexpr std::size_t kCount = 512;
constexpr std::size_t kWidth = 13;

// Amounts as they stand in reports, one to eight digits before the point.
std::vector<Currency> amounts() {
  std::mt19937_64 random(1);
  std::vector<Currency> all;
  std::int64_t most = 100'000;
  for (std::size_t i = 0; i < kCount; ++i) {
    all.push_back(Currency::fromTenThousandths(
        std::uniform_int_distribution<std::int64_t>(most / 10, most)(random)));
    most = most < 1'000'000'000'000 ? most * 10 : 100'000;
  }
  return all;
}

}  // namespace

void registerFormatting() {
  const auto values = amounts();
  const auto limit = [values, buffer = Buffer<32>()]() mutable {
    for (const Currency value : values) {
      buffer.restart();
      buffer.number(value.tenThousandths());
      buffer.done();
    }
  };
  beside(
      "FormatNumber and RightJustify, as the column writer", 3,
      [values, column = std::string()]() mutable {
        column.reserve(kWidth);
        for (const Currency value : values) {
          column.clear();
          appendColumn(column, value, "####,,###.00", kWidth);
          keep(column);
        }
      },
      limit);
  beside(
      "FormatNumber and RightJustify, as two calls", kForInformation,
      [values] {
        for (const Currency value : values) {
          const std::string text = RightJustify(FormatNumber(value, "####,,###.00"), kWidth);
          keep(text);
        }
      },
      limit);

  std::vector<std::string> typed;
  for (const Currency value : values) typed.push_back(FormatNumber(value, "###.00"));
  beside(
      "ParseNumber", 3,
      [typed] {
        for (const std::string& text : typed) keep(ParseNumber(text));
      },
      [typed] {
        for (const std::string& text : typed) {
          double value = 0.0;
          std::from_chars(text.data(), text.data() + text.size(), value);
          keep(value);
        }
      });
}

}  // namespace mirelund::bench

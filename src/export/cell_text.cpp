// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/cell_text.h"

#include <array>
#include <cstdlib>

namespace mirelund {

namespace {

constexpr auto kPowers = std::to_array<std::int64_t>({1, 10, 100, 1'000, 10'000});
constexpr int kMostDecimals = 4;

std::int64_t power(int exponent) {
  return kPowers.at(static_cast<std::size_t>(exponent));
}

void appendPadded(std::string& text, std::int64_t number, int digits) {
  const std::string plain = std::to_string(number);
  text.append(static_cast<std::size_t>(digits) - plain.size(), '0');
  text += plain;
}

}  // namespace

std::int64_t roundedUnits(Currency amount, int decimals) {
  const std::int64_t all = amount.tenThousandths();
  const std::int64_t step = power(kMostDecimals - decimals);
  const std::int64_t units = all / step;
  const std::int64_t twice = 2 * std::abs(all % step);
  if (twice < step || (twice == step && units % 2 == 0)) return units;
  return all < 0 ? units - 1 : units + 1;
}

std::string amountText(Currency amount, int decimals) {
  const std::int64_t units = roundedUnits(amount, decimals);
  const std::int64_t one = power(decimals);
  std::string text = units < 0 ? "-" : "";
  text += std::to_string(std::abs(units / one));
  if (decimals == 0) return text;
  text += '.';
  appendPadded(text, std::abs(units % one), decimals);
  return text;
}

std::string amountsText(const std::vector<Currency>& amounts, int decimals) {
  std::string text;
  for (const Currency amount : amounts) {
    if (!text.empty()) text += ';';
    text += amountText(amount, decimals);
  }
  return text;
}

std::string isoDate(Date date) {
  if (date == Date()) return {};
  std::string text;
  appendPadded(text, date.year(), 4);
  text += '-';
  appendPadded(text, date.month(), 2);
  text += '-';
  appendPadded(text, date.day(), 2);
  return text;
}

}  // namespace mirelund

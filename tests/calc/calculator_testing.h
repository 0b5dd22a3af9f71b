// SPDX-License-Identifier: GPL-3.0-or-later
// What tests of several calculators ask: lines of a report, widths, and that no
// report shows a number that is none.
#pragma once

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/global.h"
#include "app/report_line.h"
#include "base/currency.h"
#include "reached.h"

namespace mirelund {

inline std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = text.find(NewLine);
    lines.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + NewLine.size());
  }
  return lines;
}

/// The lines between the first underline and the second.
inline std::vector<std::string> rowsOf(std::string_view report) {
  std::vector<std::string> rows;
  bool inside = false;
  for (const auto& line : linesOf(report)) {
    if (line.starts_with("____")) {
      if (inside) break;
      inside = true;
    } else if (inside) {
      rows.push_back(line);
    }
  }
  return rows;
}

/// "nan" or "inf" where a number should stand; "inflation" may stand in a heading.
inline bool showsNoNumber(std::string_view report) {
  if (report.find("nan") != std::string_view::npos) return true;
  for (auto at = report.find("inf"); at != std::string_view::npos; at = report.find("inf", at + 1))
    if (!report.substr(at).starts_with("inflation")) return true;
  return false;
}

/// Amounts from nothing to the largest that a box stores, small ones often.
inline rc::Gen<Currency> anyAmount() {
  return rc::gen::map(
      rc::gen::oneOf(rc::gen::inRange<std::int64_t>(0, 2'000'000'000),
                     rc::gen::element<std::int64_t>(0, 1, 50, 100, 10'000, 1'000'000),
                     rc::gen::inRange<std::int64_t>(0, std::numeric_limits<std::int64_t>::max())),
      Currency::fromTenThousandths);
}

/// Rates in percent, mostly such as a person types, at times whatever fits.
inline rc::Gen<Currency> anyRate() {
  return rc::gen::oneOf(
      rc::gen::map(rc::gen::inRange<std::int64_t>(0, 300'000), Currency::fromTenThousandths),
      anyAmount());
}

/// Amounts up to 200,000 and rates up to 30 percent: with them most calculations stay
/// in range for 40 years, with any amounts and rates few do.
inline rc::Gen<Currency> usualAmount() {
  return rc::gen::map(anyIn<std::int64_t>(0, 2'000'000'000), Currency::fromTenThousandths);
}
inline rc::Gen<Currency> usualRate() {
  return rc::gen::map(anyIn<std::int64_t>(0, 300'000), Currency::fromTenThousandths);
}

inline rc::Gen<Currency> anyYears() {
  return rc::gen::map(rc::gen::inRange<std::int64_t>(0, 41), Currency::whole);
}

/// What a calculation must leave alone when it fails.
struct Shown {
  explicit Shown(const Global& global)
      : report(global.reports.ReportLines[1]),
        kind(global.chart.ChartKind),
        count(global.chart.ChartCount),
        title(global.chart.ChartTitle),
        comparisons(global.reports.ComparisonCount),
        startOver(global.reports.StartOver) {
    for (std::size_t row = 0; row < 45; ++row)
      for (std::size_t column = 0; column < kComparisonTableColumns; ++column)
        table.push_back(global.reports.ComparisonTable.at(row, column).tenThousandths());
  }
  friend bool operator==(const Shown&, const Shown&) = default;

  std::string report;
  ChartKind kind;
  std::int16_t count;
  std::string title;
  std::int16_t comparisons, startOver;
  std::vector<std::int64_t> table;
};

}  // namespace mirelund

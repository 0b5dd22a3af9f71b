// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/calculation.h"

#include <utility>

#include "app/report_line.h"

namespace mirelund {

namespace {

constexpr std::size_t kExampleWidth = 45;

}  // namespace

std::size_t wholeYears(Currency years) {
  const auto whole = years.tenThousandths() / Currency::kScale;
  require(whole >= 1 && whole <= kMostYears, "not 1 to 40 years");
  return static_cast<std::size_t>(whole);
}

void appendTableRow(std::string& report, const TableRow& row) {
  appendRow(report, {{row.period, "###", 3},
                     {row.second, "####,,###.00", 14},
                     {row.third, "####,,###.00", 14},
                     {row.value, "####,###.00", 14}});
}

void appendTotals(std::string& report, std::string_view label, const TableRow& totals) {
  report.append(label);
  appendRow(report, {{totals.second, "####,,###.00", 14},
                     {totals.third, "####,,###.00", 14},
                     {totals.value, "####,###.00", 14}});
}

void appendExample(std::string& help, std::string_view label, std::string_view value) {
  help.append(label);
  appendRight(help, value, kExampleWidth - label.size());
  help.append(NewLine);
}

void storeTable(CurrencyTable& table, std::span<const TableRow> rows, const TableRow& totals) {
  table.redimension(kComparisonTableRows, kComparisonTableColumns);
  const auto store = [&table](std::size_t at, const TableRow& row) {
    table.at(at, 1) = row.period;
    table.at(at, 2) = row.second;
    table.at(at, 3) = row.third;
    table.at(at, 4) = row.value;
  };
  std::size_t at = 0;
  for (const TableRow& row : rows) store(++at, row);
  store(++at, totals);
}

ReportTable reportTable(const TableHeadings& headings, std::span<const TableRow> rows) {
  ReportTable table{&headings, {}};
  table.values.reserve(4 * rows.size());
  for (const TableRow& row : rows)
    for (const Currency value : {row.period, row.second, row.third, row.value})
      table.values.push_back(value);
  return table;
}

void setReport(Reports& reports, std::string report) noexcept {
  clearReports(reports);
  reports.StartOver = 0;
  reports.ReportLines[1] = std::move(report);
}

Outcome replaceReport(Reports& reports, std::string report, ReportTable table) {
  Outcome outcome = Outcome::report(report);
  outcome.table = std::move(table);
  setReport(reports, std::move(report));
  return outcome;
}

}  // namespace mirelund

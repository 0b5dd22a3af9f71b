// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/currency.h"
#include "dialogs/messages.h"
#include "export/sheet.h"

namespace mirelund {

/// What a report's table is called, and the report's words for its columns, which are as
/// many as are not empty.
struct TableHeadings {
  std::string_view name;
  std::array<std::string_view, 5> columns{};
};

/// The numbers of a report's table, without its totals.
struct ReportTable {
  const TableHeadings* headings = nullptr;  ///< outlive it; null where there is no table
  /// Row by row: a whole number, then amounts.
  std::vector<Currency> values;
};

/// The same as a typed table, its amounts with four decimals; empty where there is none.
Sheet sheetOf(const ReportTable& table);

/// What a handler of core asks its window to do: show a message, and put `results`
/// into the report box when `showResults` is set.
///
/// No handler that returns one throws: what fails below it, memory too, is message 3,
/// and all but what its header names is as it was.
struct Outcome {
  Message message = Message::None;
  bool showResults = false;
  std::string results;
  /// The report box alone keeps the report: ReportLines has been emptied.
  bool handedOver = false;
  /// What `results` shows as a table, where that is one.
  ReportTable table{};

  static Outcome failed(Message why) { return {why, false, {}, false}; }
  static Outcome report(std::string text) { return {Message::None, true, std::move(text), false}; }
  /// A message, and a report box that is empty behind it.
  static Outcome emptied(Message why) { return {why, true, {}, false}; }
};

}  // namespace mirelund

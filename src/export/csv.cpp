// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/csv.h"

#include <cstddef>
#include <string_view>

#include "export/cell_text.h"

namespace mirelund {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

void appendField(std::string& out, std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += text;
    return;
  }
  out += '"';
  for (const char character : text) {
    if (character == '"') out += '"';
    out += character;
  }
  out += '"';
}

struct CellText {
  int decimals;

  std::string operator()(std::monostate /*none*/) const { return {}; }
  std::string operator()(const std::string& text) const {
    const bool formula = text.find_first_of("=+-@") == 0;
    return formula ? '\'' + text : text;
  }
  std::string operator()(std::int64_t number) const { return std::to_string(number); }
  std::string operator()(Currency amount) const { return amountText(amount, decimals); }
  std::string operator()(const std::vector<Currency>& amounts) const {
    return amountsText(amounts, decimals);
  }
  std::string operator()(Date date) const { return isoDate(date); }
};

}  // namespace

std::string csvText(const Sheet& sheet) {
  std::string out;
  for (const SheetColumn& column : sheet.columns) {
    if (&column != &sheet.columns.front()) out += ',';
    appendField(out, column.heading);
  }
  out += kLineEnd;
  for (const std::vector<Cell>& row : sheet.rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) out += ',';
      const std::string text = std::visit(CellText{sheet.columns.at(i).decimals}, row[i]);
      if (text.empty() && row.size() == 1)
        out += "\"\"";
      else
        appendField(out, text);
    }
    out += kLineEnd;
  }
  return out;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/outcome.h"

#include <cstddef>

namespace mirelund {

Sheet sheetOf(const ReportTable& table) {
  if (table.headings == nullptr) return {};
  Sheet sheet{std::string(table.headings->name), {}, {}};
  for (const std::string_view heading : table.headings->columns)
    if (!heading.empty())
      sheet.columns.push_back({std::string(heading), sheet.columns.empty() ? 0 : 4});
  const std::size_t columns = sheet.columns.size();
  for (std::size_t i = 0; i < table.values.size(); ++i) {
    const Currency value = table.values[i];
    if (i % columns == 0)
      sheet.rows.push_back({value.tenThousandths() / Currency::kScale});
    else
      sheet.rows.back().emplace_back(value);
  }
  return sheet;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// Insights without its window: what each page shows, draws and exports. Nothing here
// throws, and nothing is changed.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/table.h"
#include "charts/chart_data.h"
#include "dialogs/messages.h"
#include "export/sheet.h"
#include "insights/gains.h"
#include "manager/database/dates.h"

namespace mirelund {

enum class InsightsPage : std::uint8_t { Gains, Return, Years };

struct InsightsPageRow {
  InsightsPage page;
  std::string_view name;  ///< of the tab
};

inline constexpr std::array<InsightsPageRow, 3> kInsightsPages{{
    {InsightsPage::Gains, "Gains"},
    {InsightsPage::Return, "Return"},
    {InsightsPage::Years, "Years"},
}};
static_assert(standsInOrder(kInsightsPages, &InsightsPageRow::page));

/// What it is all made of; to be kept alive by the caller.
struct InsightsAsked {
  const Database& database;
  TypedPrices prices;  ///< one a fund, in table order
  Date date;           ///< of the valuation: see valuationDate
  CostMethod method = CostMethod::AverageCost;
  ShortDateFormat format;
};

/// The later of `wanted` and the last record: with today, the date that stands there at
/// first, and that an earlier one typed goes back to.
Date valuationDate(const Database& database, Date wanted) noexcept;

/// The reports, by page, or the message to tell: "No Records." (15) without funds, 28 for
/// a fund without records as the current-value page has it, 3 where a sum or product
/// leaves the range or memory lacks; the reports are empty then. A price box that shows a
/// number beyond Currency is message 3 too, told by whoever has the boxes.
struct InsightsShown {
  Message message = Message::None;
  std::array<std::string, kInsightsPages.size()> reports;
  /// The funds that hold shares without a price, as the gains and the return report name
  /// them too: "No price typed for: Amber Growth, Birch Income"; empty where none does.
  std::string lacking;
};
InsightsShown showInsights(const InsightsAsked& asked) noexcept;

/// Stacked bars: years as categories, and as series the income, the realised gain and the
/// fees of all funds that can be computed; fees are below 0. CannotDraw, or the message of
/// showInsights, and no series where it refuses.
ChartView insightsChart(const InsightsAsked& asked) noexcept;

/// The page as typed tables, with the heading words of the files: gains and their totals,
/// or one of the others. Message as above, and no sheets then.
struct InsightsSheets {
  Message message = Message::None;
  std::vector<Sheet> sheets;
};
InsightsSheets insightsSheets(const InsightsAsked& asked, InsightsPage page) noexcept;

}  // namespace mirelund

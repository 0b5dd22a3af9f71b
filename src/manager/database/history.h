// SPDX-License-Identifier: GPL-3.0-or-later
// The steps that led from the database as it was opened to the one in memory, to be
// undone and done again.
//
// A step keeps the rows that it changed, as they were and as they are: what lies between
// the first and the last row that differ. Adding a record to the end of a year is one row.
// Nothing is sorted when a step is undone: the order comes back as it was, whatever the
// sort makes of equal dates.
//
//       oldest                    last   next            what undo takes is the last one,
//     | add fund | add record | delete || add record |   what redo takes the next one; a new
//                                      ^ position        step drops all behind the position
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <string_view>
#include <vector>

#include "base/table.h"
#include "manager/database/fund_database.h"

namespace mirelund {

enum class Step : std::uint8_t { AddRecord, CorrectRecord, DeleteRecord, AddFund, DeleteFund };
enum class Direction : std::uint8_t { Undo, Redo };

/// What a menu calls a step, by way; with nothing to undo or redo, kNoStep.
using StepTexts = std::array<std::string_view, 2>;
struct StepRow {
  Step step;
  bool ofFunds;  ///< changes the fund table, not the records
  StepTexts texts;
};
inline constexpr std::array<StepRow, 5> kSteps{{
    {Step::AddRecord, false, {"Undo add record", "Redo add record"}},
    {Step::CorrectRecord, false, {"Undo correct record", "Redo correct record"}},
    {Step::DeleteRecord, false, {"Undo delete record", "Redo delete record"}},
    {Step::AddFund, true, {"Undo add fund", "Redo add fund"}},
    {Step::DeleteFund, true, {"Undo delete fund", "Redo delete fund"}},
}};
static_assert(standsInOrder(kSteps, &StepRow::step));
inline constexpr StepTexts kNoStep{"Undo", "Redo"};

/// Rows that took the place of others, from row `at` (counted from 0) on.
template <typename Row>
struct Exchange {
  std::size_t at = 0;
  std::vector<Row> before;
  std::vector<Row> after;
};

struct HistoryStep {
  Exchange<Fund> funds;
  Exchange<Record> records;  ///< their numbers are not kept: they are their rows
  std::size_t bytes = 0;     ///< of memory, about
  /// Of the fund added or deleted, or whose record was: its row in the table that has it.
  std::int16_t fundRow = 0;
  Step step{};

  /// True when the fund of the step is not in the table once it has gone this way.
  bool removesFund(Direction way) const noexcept {
    return step == (way == Direction::Undo ? Step::AddFund : Step::DeleteFund);
  }
};

/// What all steps may take: far more than a day's, as a record added to 600 takes some
/// hundred bytes. Beyond it the oldest go, and can no longer be undone. The largest step,
/// with 18 names as long as they can be on both sides, takes less than a tenth of it.
inline constexpr std::size_t kMostHistoryBytes = 16 * 1024 * 1024;

class History {
 public:
  /// A step that has been worked out and is not yet in the history: one, or none.
  using Made = std::list<HistoryStep>;

  /// The step from one database to the other. Throws std::bad_alloc alone.
  static Made made(Step step, std::int16_t fundRow, const Database& before, const Database& after);

  /// The step is done, and is the last; what could be redone is dropped.
  void add(Made made) noexcept;

  /// What undo or redo takes next; null where there is nothing.
  const HistoryStep* next(Direction way) const noexcept;

  /// Takes the last step back in `database`, or does the next one again; there must be
  /// one, and `database` must stand at the position. Throws std::bad_alloc alone. The
  /// history stays where it is until `move`, so that nothing has to be restored where
  /// something fails in between.
  void restore(Direction way, Database& database) const;
  void move(Direction way) noexcept;

  /// Another database took the place of the old: there are no steps, and it is as on disk.
  void clear() noexcept;
  /// The database is on disk as it is now.
  void markSaved() noexcept { saved_ = position_; }
  /// True where the database was opened or last saved.
  bool isSaved() const noexcept { return position_ == saved_; }

 private:
  std::list<HistoryStep> done_;    // the last one at the end
  std::list<HistoryStep> undone_;  // the next one at the front
  std::size_t doneBytes_ = 0;
  std::int64_t position_ = 0;  // steps from the opened database on, dropped ones too
  std::int64_t saved_ = 0;     // -1: it can no longer be come to
};

}  // namespace mirelund

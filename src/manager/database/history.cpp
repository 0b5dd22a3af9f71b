// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/database/history.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace mirelund {

namespace {

bool sameButForNumber(Record a, const Record& b) {
  a.number = b.number;
  return a == b;
}

template <typename Row, typename Same>
Exchange<Row> difference(std::span<const Row> before, std::span<const Row> after, Same same) {
  const auto [first, firstAfter] = std::ranges::mismatch(before, after, same);
  const auto [last, lastAfter] =
      std::mismatch(before.rbegin(), std::make_reverse_iterator(first), after.rbegin(),
                    std::make_reverse_iterator(firstAfter), same);
  return {static_cast<std::size_t>(first - before.begin()),
          {first, last.base()},
          {firstAfter, lastAfter.base()}};
}

std::size_t bytesOf(const std::vector<Fund>& funds) {
  std::size_t bytes = funds.size() * sizeof(Fund);
  for (const Fund& fund : funds) bytes += fund.name.size();
  return bytes;
}

std::size_t bytesOf(const HistoryStep& step) {
  return sizeof(HistoryStep) + bytesOf(step.funds.before) + bytesOf(step.funds.after) +
         (step.records.before.size() + step.records.after.size()) * sizeof(Record);
}

// Of the first `count` rows of a table; how many are in use then.
template <typename Row>
std::int16_t exchange(std::span<Row> table, std::size_t count, const Exchange<Row>& rows,
                      Direction way) {
  const auto& goes = way == Direction::Undo ? rows.after : rows.before;
  const auto& comes = way == Direction::Undo ? rows.before : rows.after;
  const auto used = table.first(count);
  const auto behind = used.subspan(rows.at + goes.size());
  std::vector<Row> fresh(used.begin(), used.begin() + static_cast<std::ptrdiff_t>(rows.at));
  fresh.insert(fresh.end(), comes.begin(), comes.end());
  fresh.insert(fresh.end(), behind.begin(), behind.end());
  std::ranges::fill(used, Row());
  std::ranges::move(fresh, table.begin());
  return static_cast<std::int16_t>(fresh.size());
}

}  // namespace

History::Made History::made(Step step, std::int16_t fundRow, const Database& before,
                            const Database& after) {
  Made made(1);
  HistoryStep& fresh = made.front();
  fresh.funds = difference(before.funds(), after.funds(), std::equal_to<>());
  fresh.records = difference(before.records(), after.records(), sameButForNumber);
  fresh.bytes = bytesOf(fresh);
  fresh.fundRow = fundRow;
  fresh.step = step;
  return made;
}

void History::add(Made made) noexcept {
  undone_.clear();
  if (saved_ > position_) saved_ = -1;
  ++position_;
  doneBytes_ += made.front().bytes;
  done_.splice(done_.end(), made);
  while (doneBytes_ > kMostHistoryBytes) {
    doneBytes_ -= done_.front().bytes;
    done_.pop_front();
  }
}

const HistoryStep* History::next(Direction way) const noexcept {
  if (way == Direction::Undo) return done_.empty() ? nullptr : &done_.back();
  return undone_.empty() ? nullptr : &undone_.front();
}

void History::restore(Direction way, Database& database) const {
  const HistoryStep& step = *next(way);
  database.FundCount =
      exchange(std::span(database.FundTable).subspan(1), database.funds().size(), step.funds, way);
  database.RecordCount = exchange(std::span(database.RecordTable).subspan(1),
                                  database.records().size(), step.records, way);
  std::int16_t number = 0;
  for (Record& record : database.records()) record.number = ++number;
}

void History::move(Direction way) noexcept {
  if (way == Direction::Undo) {
    doneBytes_ -= done_.back().bytes;
    undone_.splice(undone_.begin(), done_, std::prev(done_.end()));
    --position_;
  } else {
    doneBytes_ += undone_.front().bytes;
    done_.splice(done_.end(), undone_, undone_.begin());
    ++position_;
  }
}

void History::clear() noexcept {
  done_.clear();
  undone_.clear();
  doneBytes_ = 0;
  position_ = saved_ = 0;
}

}  // namespace mirelund

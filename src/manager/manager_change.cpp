// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager_change.h"

#include <algorithm>
#include <utility>

#include "base/file_name.h"
#include "base/parse_number.h"
#include "base/text.h"
#include "manager/database/data_file.h"

namespace mirelund {

namespace {

void namePath(ManagerState& state, const std::string& path) {
  state.DatabasePath = path;
  state.DatabaseName = fileName(path);
}

}  // namespace

std::string fundName(const Database& database, std::int16_t row) {
  if (row < 1 || row > database.FundCount) return {};
  return displayText(database.FundTable[static_cast<std::size_t>(row)].name);
}

Message checkFund(const Database& database, const ManagerState& state, std::string_view fundText) {
  if (state.ActiveFund == 0) return Message::FundNotSelected;
  if (fundText == fundName(database, state.ActiveFundRow)) return Message::None;
  for (const Fund& fund : database.funds())
    if (fundText == displayText(fund.name)) return Message::FundNotSelected;
  return Message::FundNotInFile;
}

std::int16_t recordRow(const Database& database, std::int16_t fund, std::string_view number) {
  const double position = ParseNumber(number);
  if (fund == 0 || !(position >= 1.0 && position <= database.RecordCount)) return 0;
  return findRecord(database, fund, static_cast<std::int64_t>(position));
}

void clearEntryRow(ManagerState& state, BoxState& boxes) noexcept {
  state.entry = {};
  state.CorrectingRecord = 0;
  boxes.BoxEdited = 0;
}

void leaveEntryPage(ManagerState& state, BoxState& boxes) noexcept {
  state.ActiveFund = 0;
  state.ActiveFundRow = 0;
  clearEntryRow(state, boxes);
}

// --- files -----------------------------------------------------------------------

Message Manager::Change::DiscardDatabase() {
  database_ = Database();
  const ManagerState old = std::exchange(state_, {});
  state_.fundsRevision = old.fundsRevision;
  state_.dataRevision = old.dataRevision;
  printed_.clear();
  totals_.redimension(kTotalsRows, kTotalsColumns);
  boxes_.BoxEdited = 0;
  fundsChanged();
  state_.FileChanged = 0;
  manager_.history_.clear();
  return Message::None;
}

Message Manager::Change::OpenDatabase(const std::string& path) {
  FileRead file = manager_.files_.read(path, kMostFileBytes);
  if (file.failure != FileFailure::None) return Message::CannotOpen;
  auto fresh = parseDatabase(file.bytes);
  if (!fresh) return Message::CannotOpen;
  KnownFiles read{{manager_.files_.resolved(path), std::move(file.bytes)}};
  database_ = std::move(*fresh);
  namePath(state_, path);
  mirelund::leaveEntryPage(state_, boxes_);
  totals_.redimension(kTotalsRows, kTotalsColumns);
  fundsChanged();
  state_.FileChanged = 0;
  manager_.remember(std::move(read));
  manager_.history_.clear();
  return Message::None;
}

Message Manager::Change::openSample(const std::string& path) {
  const Message refused = OpenDatabase(path);
  if (refused == Message::None) state_.DatabasePath.clear();
  return refused;
}

Saved Manager::Change::SaveDatabase(const std::string& path, Replacing replacing) {
  if (const Message refused = manager_.checkSave(); refused != Message::None) return {refused};
  const std::string place = manager_.files_.resolved(path);
  const std::string bytes = writeDatabase(database_);
  std::optional<std::string> expected;
  const auto known = manager_.known_.find(place);
  if (replacing == Replacing::Unchanged && known != manager_.known_.end()) expected = known->second;
  KnownFiles written{{place, bytes}};
  ManagerState saved = state_;
  namePath(saved, path);
  saved.FileChanged = 0;
  const FileFailure failure = manager_.files_.replace(path, bytes, expected);
  if (failure != FileFailure::None) return {Message::CannotSave, failure};
  // The file is there, and nothing can fail any more.
  std::swap(state_, saved);
  manager_.remember(std::move(written));
  manager_.history_.markSaved();
  return {};
}

// --- funds -----------------------------------------------------------------------

void Manager::Change::activate(std::int16_t row) {
  const Fund& fund = database_.FundTable.at(static_cast<std::size_t>(row));
  state_.ActiveFundRow = row;
  state_.ActiveFund = fundNumber(fund);
}

Outcome Manager::Change::chooseFund(std::int16_t row) {
  activate(row);
  mirelund::clearEntryRow(state_, boxes_);
  return showRecordList();
}

Outcome Manager::Change::addFund(std::string_view name) {
  if (name.empty()) return {};
  if (database_.FundCount == kMostFunds) return Outcome::failed(Message::MostFunds);
  if (!isFundName(name)) return Outcome::failed(Message::WrongEntry);
  const std::int16_t row = mirelund::addFund(database_, name);
  fundsChanged();
  return done(Step::AddFund, row, chooseFund(row));
}

Message Manager::Change::deleteFund() {
  if (state_.ActiveFund == 0 || FundHasRecords(database_, state_.ActiveFund))
    return Message::FundNotSelected;
  const std::int16_t row = state_.ActiveFundRow;
  removeFund(database_, row);
  mirelund::leaveEntryPage(state_, boxes_);
  fundsChanged();
  return done(Step::DeleteFund, row, Message::None);
}

// --- records ---------------------------------------------------------------------

Message Manager::Change::chooseType(std::size_t index) {
  if (state_.CorrectingRecord != 0) return Message::None;
  if (state_.ActiveFund == 0) return Message::FundNotSelected;
  mirelund::clearEntryRow(state_, boxes_);
  state_.entry.type = &transactionTypes()[index];
  return Message::None;
}

BoxLeft Manager::Change::leaveValueBox(EntryBox box, std::string_view text) {
  const auto slot = static_cast<std::size_t>(box);
  EntryRow& row = state_.entry;
  return leaveAmountBox(boxes_, row.EntryValues[slot], row.outOfRange[slot], text);
}

Outcome Manager::Change::addRecord(std::string_view dateText, std::string_view fundText) {
  Date date;
  const bool correcting = state_.CorrectingRecord != 0;
  if (const Message refused =
          checkEntry(state_.entry, dateText, manager_.format_, correcting, date);
      refused != Message::None)
    return Outcome::failed(refused);
  if (const Message refused = mirelund::checkFund(database_, state_, fundText);
      refused != Message::None)
    return Outcome::failed(refused);
  if (!correcting && database_.RecordCount == kMostRecords)
    return Outcome::failed(Message::MostRecords);
  const Record record = buildRecord(state_.entry, state_.ActiveFund, date);
  const std::int16_t row = correcting ? state_.CorrectingRecord : ++database_.RecordCount;
  database_.RecordTable[static_cast<std::size_t>(row)] = record;
  SortRecords(database_);
  checkTotals(database_);
  dataChanged();
  mirelund::clearEntryRow(state_, boxes_);
  return done(correcting ? Step::CorrectRecord : Step::AddRecord, state_.ActiveFundRow,
              showRecordList());
}

Message Manager::Change::correctRecord(std::string_view fundText, std::string_view number) {
  if (const Message refused = mirelund::checkFund(database_, state_, fundText);
      refused != Message::None)
    return refused;
  const std::int16_t row = recordRow(database_, state_.ActiveFund, number);
  if (row == 0) return Message::NotARecord;
  mirelund::clearEntryRow(state_, boxes_);
  state_.entry = entryRow(database_.RecordTable[static_cast<std::size_t>(row)]);
  state_.CorrectingRecord = row;
  return Message::None;
}

DeleteAsked Manager::Change::askDelete(std::string_view fundText) {
  if (const Message refused = mirelund::checkFund(database_, state_, fundText);
      refused != Message::None)
    return {refused, false};
  if (state_.CorrectingRecord != 0) mirelund::clearEntryRow(state_, boxes_);
  return {Message::None, !FundHasRecords(database_, state_.ActiveFund)};
}

Outcome Manager::Change::deleteRecord(std::string_view number) {
  const std::int16_t row = recordRow(database_, state_.ActiveFund, number);
  if (row == 0) return Outcome::failed(Message::NotARecord);
  // The row of a record that is being corrected is another's now.
  if (state_.CorrectingRecord != 0) mirelund::clearEntryRow(state_, boxes_);
  removeRecord(database_, row);
  dataChanged();
  return done(Step::DeleteRecord, state_.ActiveFundRow, showRecordList());
}

// --- steps -----------------------------------------------------------------------

// The end of an operation: what comes after it cannot fail.
template <typename Result>
Result Manager::Change::done(Step step, std::int16_t fundRow, Result result) {
  manager_.history_.add(History::made(step, fundRow, manager_.held_.database, database_));
  return result;
}

std::int16_t Manager::Change::rowOfFund(const Fund& fund) const {
  const auto funds = database_.funds();
  const auto found = std::ranges::find(funds, fund);
  return found == funds.end() ? std::int16_t{0}
                              : static_cast<std::int16_t>(found - funds.begin() + 1);
}

Restored Manager::Change::restore(Direction way) {
  History& history = manager_.history_;
  const HistoryStep* step = history.next(way);
  if (step == nullptr) return {};
  const Fund active = database_.FundTable[static_cast<std::size_t>(state_.ActiveFundRow)];
  history.restore(way, database_);
  if (rowOf(kSteps, step->step).ofFunds)
    fundsChanged();
  else
    dataChanged();
  activate(step->removesFund(way) ? rowOfFund(active) : step->fundRow);
  Restored restored;
  restored.rowKept = state_.CorrectingRecord == 0 &&
                     database_.FundTable[static_cast<std::size_t>(state_.ActiveFundRow)] == active;
  if (!restored.rowKept) mirelund::clearEntryRow(state_, boxes_);
  restored.outcome = showRecordList();
  history.move(way);
  state_.FileChanged = history.isSaved() ? 0 : 1;
  return restored;
}

// --- what a change makes stale ---------------------------------------------------

void Manager::Change::clearValuation() {
  state_.CVResults.clear();
  chartCount_ = 0;
}

void Manager::Change::fundsChanged() {
  prices_ = {};
  ++state_.fundsRevision;
  dataChanged();
}

void Manager::Change::dataChanged() {
  clearValuation();
  state_.FileChanged = 1;
  ++state_.dataRevision;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager.h"

#include <utility>

#include "base/file_name.h"
#include "base/parse_number.h"
#include "base/text.h"
#include "charts/chart_kind.h"
#include "manager/database/data_file.h"
#include "manager/reports/current_value.h"

namespace mirelund {

namespace {

std::string counter(std::string_view label, std::int16_t count) {
  return std::string(label) + std::to_string(count);
}

}  // namespace

Manager::Manager(BoxState& boxes, Reports& reports, ChartSelectors& chart, FileStore& files)
    : boxes_(boxes), reports_(reports), chart_(chart), files_(files) {}

void Manager::DiscardDatabase() {
  database_ = Database();
  const ManagerState old = std::exchange(state_, {});
  state_.fundsRevision = old.fundsRevision;
  state_.dataRevision = old.dataRevision;
  reports_.ReportLines[2].clear();
  reports_.ComparisonTotals.redimension(kTotalsRows, kTotalsColumns);
  boxes_.BoxEdited = 0;
  fundsChanged();
  state_.FileChanged = 0;
}

bool Manager::mustAskBeforeDiscarding() const {
  return state_.FileChanged == 1 && database_.RecordCount != 0;
}

MessageDetails Manager::details(Date today) const {
  return {formatDate(today, format_), displayText(state_.DatabasePath), {}};
}

std::string Manager::fundsText() const {
  return counter("Funds: ", database_.FundCount);
}

std::string Manager::recordsText() const {
  return counter("Records: ", database_.RecordCount);
}

std::string Manager::databaseText() const {
  return "Database: " + displayText(state_.DatabaseName);
}

std::vector<std::string> Manager::fundNames() const {
  std::vector<std::string> names;
  names.reserve(database_.funds().size());
  for (const Fund& fund : database_.funds()) names.push_back(displayText(fund.name));
  return names;
}

std::string Manager::fundName(std::int16_t row) const {
  if (row < 1 || row > database_.FundCount) return {};
  return displayText(database_.FundTable[static_cast<std::size_t>(row)].name);
}

void Manager::leaveEntryPage() {
  state_.ActiveFund = 0;
  state_.ActiveFundRow = 0;
  clearEntryRow();
}

// --- files ----------------------------------------------------------------------

Message Manager::OpenDatabase(const std::string& path) {
  state_.FileDialogMode = FileDialog::Idle;
  FileRead file = files_.read(path, kMostFileBytes);
  if (file.failure != FileFailure::None) return Message::CannotOpen;
  auto fresh = parseDatabase(file.bytes);
  if (!fresh) return Message::CannotOpen;
  database_ = std::move(*fresh);
  remember(files_.resolved(path), std::move(file.bytes));
  namePath(path);
  leaveEntryPage();
  reports_.ComparisonTotals.redimension(kTotalsRows, kTotalsColumns);
  fundsChanged();
  state_.FileChanged = 0;
  return Message::None;
}

Message Manager::checkSave() const {
  return database_.RecordCount == 0 ? Message::NoRecords : Message::None;
}

Saved Manager::SaveDatabase(const std::string& path, Replacing replacing) {
  state_.FileDialogMode = FileDialog::Idle;
  if (const Message refused = checkSave(); refused != Message::None) return {refused};
  const std::string place = files_.resolved(path);
  std::string bytes = writeDatabase(database_);
  std::optional<std::string> expected;
  const auto known = known_.find(place);
  if (replacing == Replacing::Unchanged && known != known_.end()) expected = known->second;
  const FileFailure failure = files_.replace(path, bytes, expected);
  if (failure != FileFailure::None) return {Message::CannotSave, failure};
  remember(place, std::move(bytes));
  namePath(path);
  state_.FileChanged = 0;
  return {};
}

void Manager::remember(const std::string& place, std::string bytes) {
  known_[place] = std::move(bytes);
}

void Manager::namePath(const std::string& path) {
  state_.DatabasePath = path;
  state_.DatabaseName = fileName(path);
}

// --- entry page -----------------------------------------------------------------

Outcome Manager::chooseFund(std::int16_t row) {
  clearEntryRow();
  state_.ActiveFundRow = row;
  state_.ActiveFund = fundNumber(database_.FundTable[static_cast<std::size_t>(row)]);
  return showRecordList();
}

Outcome Manager::addFund(std::string_view name) {
  if (name.empty()) return {};
  if (database_.FundCount == kMostFunds) return Outcome::failed(Message::MostFunds);
  if (!isFundName(name)) return Outcome::failed(Message::WrongEntry);
  const std::int16_t row = mirelund::addFund(database_, name);
  fundsChanged();
  return chooseFund(row);
}

Message Manager::chooseType(std::size_t index) {
  if (state_.CorrectingRecord != 0) return Message::None;
  if (state_.ActiveFund == 0) return Message::FundNotSelected;
  clearEntryRow();
  state_.entry.type = &transactionTypes()[index];
  return Message::None;
}

void Manager::clearEntryRow() {
  state_.entry = {};
  state_.CorrectingRecord = 0;
  boxes_.BoxEdited = 0;
}

Message Manager::leaveDateBox(std::string_view text) const {
  const bool empty = text.find_first_not_of(' ') == std::string_view::npos;
  return empty || parseDate(text, format_) ? Message::None : Message::DateFormat;
}

BoxLeft Manager::leaveValueBox(EntryBox box, std::string_view text) {
  const auto slot = static_cast<std::size_t>(box);
  EntryRow& row = state_.entry;
  return leaveAmountBox(boxes_, row.EntryValues[slot], row.outOfRange[slot], text);
}

std::string Manager::valueText(EntryBox box) const {
  return FormatNumber(state_.entry.value(box), kEntryPattern);
}

Outcome Manager::addRecord(std::string_view dateText, std::string_view fundText) {
  Date date;
  const bool correcting = state_.CorrectingRecord != 0;
  if (const Message refused = checkEntry(state_.entry, dateText, format_, correcting, date);
      refused != Message::None)
    return Outcome::failed(refused);
  if (const Message refused = checkFund(fundText); refused != Message::None)
    return Outcome::failed(refused);
  if (!correcting && database_.RecordCount == kMostRecords)
    return Outcome::failed(Message::MostRecords);
  try {
    const Record record = buildRecord(state_.entry, state_.ActiveFund, date);
    Database candidate = database_;
    const std::int16_t row = correcting ? state_.CorrectingRecord : ++candidate.RecordCount;
    candidate.RecordTable[static_cast<std::size_t>(row)] = record;
    SortRecords(candidate);
    checkTotals(candidate);
    database_ = std::move(candidate);
  } catch (const ArithmeticError&) {
    return Outcome::failed(Message::WrongEntry);
  }
  dataChanged();
  clearEntryRow();
  return showRecordList();
}

Message Manager::checkFund(std::string_view fundText) const {
  if (state_.ActiveFund == 0) return Message::FundNotSelected;
  if (fundText == fundName(state_.ActiveFundRow)) return Message::None;
  for (const std::string& name : fundNames())
    if (fundText == name) return Message::FundNotSelected;
  return Message::FundNotInFile;
}

Message Manager::correctRecord(std::string_view fundText, std::string_view number) {
  if (const Message refused = checkFund(fundText); refused != Message::None) return refused;
  const std::int16_t row = recordRow(number);
  if (row == 0) return Message::NotARecord;
  clearEntryRow();
  state_.entry = entryRow(database_.RecordTable[static_cast<std::size_t>(row)]);
  state_.CorrectingRecord = row;
  return Message::None;
}

std::string Manager::correctingDateText() const {
  const auto row = static_cast<std::size_t>(state_.CorrectingRecord);
  return row == 0 ? std::string() : formatDate(database_.RecordTable[row].date, format_);
}

DeleteAsked Manager::askDelete(std::string_view fundText) {
  if (const Message refused = checkFund(fundText); refused != Message::None)
    return {refused, false};
  if (state_.CorrectingRecord != 0) clearEntryRow();
  return {Message::None, !FundHasRecords(database_, state_.ActiveFund)};
}

Message Manager::checkRecordNumber(std::string_view number) const {
  return recordRow(number) == 0 ? Message::NotARecord : Message::None;
}

Outcome Manager::deleteRecord(std::string_view number) {
  const std::int16_t row = recordRow(number);
  if (row == 0) return Outcome::failed(Message::NotARecord);
  if (state_.CorrectingRecord != 0) clearEntryRow();  // its row is another's now
  removeRecord(database_, row);
  dataChanged();
  return showRecordList();
}

Message Manager::deleteFund() {
  if (state_.ActiveFund == 0 || FundHasRecords(database_, state_.ActiveFund))
    return Message::FundNotSelected;
  removeFund(database_, state_.ActiveFundRow);
  leaveEntryPage();
  fundsChanged();
  return Message::None;
}

Outcome Manager::showRecordList() {
  if (state_.ActiveFund == 0) return Outcome::report({});
  try {
    return Outcome::report(
        recordList(database_, state_.ActiveFund, format_, reports_.ComparisonTotals));
  } catch (const ArithmeticError&) {
    return Outcome::emptied(Message::WrongEntry);
  }
}

// --- display page ---------------------------------------------------------------

ReportShown Manager::showFund(std::int16_t row) {
  try {
    return {Message::None, transactionReport(database_, row, format_, reports_.ComparisonTotals)};
  } catch (const ArithmeticError&) {
    return {Message::WrongEntry, {}};
  }
}

ReportShown Manager::showAllFunds() {
  try {
    return {Message::None, allFundsReport(database_, format_, reports_.ComparisonTotals)};
  } catch (const ArithmeticError&) {
    return {Message::WrongEntry, {}};
  }
}

// --- current value --------------------------------------------------------------

std::string Manager::priceText(std::int16_t row) const {
  const auto& price = prices_[static_cast<std::size_t>(row)].value;
  return price ? FormatNumber(*price, kEntryPattern) : std::string();
}

BoxLeft Manager::leavePriceBox(std::int16_t row, std::string_view text) {
  Price& price = prices_[static_cast<std::size_t>(row)];
  Currency value;
  BoxLeft left = leaveAmountBox(boxes_, value, price.outOfRange, text);
  if (left.changed) price.value = value;
  return left;
}

Outcome Manager::calculateCurrentValue() {
  clearValuation();
  if (firstEmptyFund(database_) != 0) return Outcome::emptied(Message::EmptyFund);
  std::vector<Currency> prices;
  for (std::size_t row = 1; row <= database_.funds().size(); ++row) {
    if (prices_[row].outOfRange) return Outcome::emptied(Message::WrongEntry);
    prices.push_back(prices_[row].value.value_or(Currency()));
    if (prices.back().isZero()) return Outcome::emptied(Message::MissingPrice);
  }
  try {
    state_.CVResults = currentValueTable(database_, prices, reports_.ComparisonTotals);
  } catch (const ArithmeticError&) {
    return Outcome::emptied(Message::WrongEntry);
  }
  chart_.ChartCount = database_.FundCount;
  return Outcome::report(state_.CVResults);
}

Message Manager::graphCurrentValue() {
  if (state_.CVResults.empty() || chart_.ChartCount == 0) return Message::NothingToGraph;
  chart_.ChartKind = ChartKind::Manager;
  return Message::None;
}

// --- printing -------------------------------------------------------------------

Message Manager::checkPrint(std::string_view report) {
  return report.empty() ? Message::NothingToPrint : Message::None;
}

void Manager::preparePrint(std::string_view header, std::string_view report) {
  std::string& lines = reports_.ReportLines[2];
  lines.clear();
  if (!header.empty()) appendLine(lines, header);
  lines += report;
}

// --------------------------------------------------------------------------------

void Manager::clearValuation() {
  state_.CVResults.clear();
  chart_.ChartCount = 0;
}

void Manager::fundsChanged() {
  prices_ = {};
  ++state_.fundsRevision;
  dataChanged();
}

void Manager::dataChanged() {
  clearValuation();
  state_.FileChanged = 1;
  ++state_.dataRevision;
}

std::int16_t Manager::recordRow(std::string_view number) const {
  const double position = ParseNumber(number);
  if (state_.ActiveFund == 0 || !(position >= 1.0 && position <= database_.RecordCount)) return 0;
  return findRecord(database_, state_.ActiveFund, static_cast<std::int64_t>(position));
}

}  // namespace mirelund

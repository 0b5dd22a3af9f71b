// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager.h"

#include <utility>

#include "app/parse_number.h"
#include "app/text.h"
#include "charts/chart_kind.h"
#include "manager/current_value.h"
#include "manager/data_file.h"

namespace mirelund {

namespace {

constexpr std::int16_t kManagerWindow = 2;
constexpr std::string_view kCancelled = "1";

std::string fileName(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

std::string counter(std::string_view label, std::int16_t count) {
  return std::string(label) + std::to_string(count);
}

}  // namespace

std::string withFileEnding(std::string path) {
  const std::string name = fileName(path);
  const auto point = name.rfind('.');
  if (point == std::string::npos || point == 0) path += kFileEnding;
  return path;
}

Manager::Manager(Global& global, FileCalls& files) : global_(global), files_(files) {}

void Manager::load() {
  discard();
  global_.ActiveWindow = kManagerWindow;
}

void Manager::discard() {
  database_ = Database();
  const ManagerState old = std::exchange(state_, {});
  state_.fundsRevision = old.fundsRevision;
  state_.dataRevision = old.dataRevision;
  global_.ReportLines[2].clear();
  global_.ComparisonTotals.redimension(kTotalsRows, kTotalsColumns);
  global_.BoxEdited = 0;
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

int Manager::openDatabase(const std::string& path) {
  state_.FileDialogMode = FileDialog::Idle;
  const auto bytes = readFile(files_, path, kMostFileBytes);
  auto fresh = bytes ? parseDatabase(*bytes) : std::nullopt;
  if (!fresh) return message::kCannotOpen;
  database_ = std::move(*fresh);
  state_.DatabasePath = path;
  state_.DatabaseName = fileName(path);
  leaveEntryPage();
  global_.ComparisonTotals.redimension(kTotalsRows, kTotalsColumns);
  fundsChanged();
  state_.FileChanged = 0;
  return message::kNone;
}

int Manager::checkSave() const {
  return database_.RecordCount == 0 ? message::kNoRecords : message::kNone;
}

int Manager::saveDatabase(const std::string& path) {
  state_.FileDialogMode = FileDialog::Idle;
  if (const int refused = checkSave()) return refused;
  const std::string place = withFileEnding(path);
  if (!replaceFile(files_, place, writeDatabase(database_))) return message::kCannotSave;
  state_.DatabasePath = place;
  state_.DatabaseName = fileName(place);
  state_.FileChanged = 0;
  return message::kNone;
}

// --- entry page -----------------------------------------------------------------

Outcome Manager::chooseFund(std::int16_t row) {
  clearEntryRow();
  state_.ActiveFundRow = row;
  state_.ActiveFund = fundNumber(database_.FundTable[static_cast<std::size_t>(row)]);
  return showRecordList();
}

Outcome Manager::addFund(std::string_view answer) {
  if (answer.empty() || answer == kCancelled) return {};
  if (database_.FundCount == kMostFunds) return Outcome::failed(message::kMostFunds);
  if (!isFundName(answer)) return Outcome::failed(message::kWrongEntry);
  const std::int16_t row = mirelund::addFund(database_, answer);
  fundsChanged();
  return chooseFund(row);
}

int Manager::chooseType(std::size_t index) {
  if (state_.CorrectingRecord != 0) return message::kNone;
  if (state_.ActiveFund == 0) return message::kFundNotSelected;
  clearEntryRow();
  state_.entry.type = &transactionTypes()[index];
  return message::kNone;
}

void Manager::clearEntryRow() {
  state_.entry = {};
  state_.CorrectingRecord = 0;
  global_.BoxEdited = 0;
}

int Manager::leaveDateBox(std::string_view text) const {
  const bool empty = text.find_first_not_of(' ') == std::string_view::npos;
  return empty || parseDate(text, format_) ? message::kNone : message::kDateFormat;
}

BoxLeft Manager::leaveValueBox(EntryBox box, std::string_view text) {
  const auto slot = static_cast<std::size_t>(box);
  EntryRow& row = state_.entry;
  return leaveAmountBox(global_, row.EntryValues[slot], row.outOfRange[slot], text);
}

std::string Manager::valueText(EntryBox box) const {
  return FormatNumber(state_.entry.value(box), kEntryPattern);
}

Outcome Manager::addRecord(std::string_view dateText, std::string_view fundText) {
  Date date;
  const bool correcting = state_.CorrectingRecord != 0;
  if (const int refused = checkEntry(state_.entry, dateText, format_, correcting, date))
    return Outcome::failed(refused);
  if (const int refused = checkFund(fundText)) return Outcome::failed(refused);
  if (!correcting && database_.RecordCount == kMostRecords)
    return Outcome::failed(message::kMostRecords);
  try {
    const Record record = buildRecord(state_.entry, state_.ActiveFund, date);
    Database candidate = database_;
    const std::int16_t row = correcting ? state_.CorrectingRecord : ++candidate.RecordCount;
    candidate.RecordTable[static_cast<std::size_t>(row)] = record;
    SortRecords(candidate);
    checkTotals(candidate);
    database_ = std::move(candidate);
  } catch (const ArithmeticError&) {
    return Outcome::failed(message::kWrongEntry);
  }
  dataChanged();
  clearEntryRow();
  return showRecordList();
}

int Manager::checkFund(std::string_view fundText) const {
  if (state_.ActiveFund == 0) return message::kFundNotSelected;
  if (fundText == fundName(state_.ActiveFundRow)) return message::kNone;
  for (const std::string& name : fundNames())
    if (fundText == name) return message::kFundNotSelected;
  return message::kFundNotInFile;
}

int Manager::correctRecord(std::string_view fundText, std::string_view number) {
  if (const int refused = checkFund(fundText)) return refused;
  const std::int16_t row = recordRow(number);
  if (row == 0) return message::kNotARecord;
  clearEntryRow();
  state_.entry = entryRow(database_.RecordTable[static_cast<std::size_t>(row)]);
  state_.CorrectingRecord = row;
  return message::kNone;
}

std::string Manager::correctingDateText() const {
  const auto row = static_cast<std::size_t>(state_.CorrectingRecord);
  return row == 0 ? std::string() : formatDate(database_.RecordTable[row].date, format_);
}

DeleteAsked Manager::askDelete(std::string_view fundText) {
  if (const int refused = checkFund(fundText)) return {refused, false};
  if (state_.CorrectingRecord != 0) clearEntryRow();
  return {message::kNone, !fundHasRecords(database_, state_.ActiveFund)};
}

int Manager::checkRecordNumber(std::string_view number) const {
  return recordRow(number) == 0 ? message::kNotARecord : message::kNone;
}

Outcome Manager::deleteRecord(std::string_view number) {
  const std::int16_t row = recordRow(number);
  if (row == 0) return Outcome::failed(message::kNotARecord);
  removeRecord(database_, row);
  dataChanged();
  return showRecordList();
}

int Manager::deleteFund() {
  if (state_.ActiveFund == 0 || fundHasRecords(database_, state_.ActiveFund))
    return message::kFundNotSelected;
  removeFund(database_, state_.ActiveFundRow);
  leaveEntryPage();
  fundsChanged();
  return message::kNone;
}

Outcome Manager::showRecordList() {
  if (state_.ActiveFund == 0) return Outcome::report({});
  try {
    return Outcome::report(
        recordList(database_, state_.ActiveFund, format_, global_.ComparisonTotals));
  } catch (const ArithmeticError&) {
    return {message::kWrongEntry, true, {}};
  }
}

// --- display page ---------------------------------------------------------------

ReportShown Manager::showFund(std::int16_t row) {
  try {
    return {message::kNone, transactionReport(database_, row, format_, global_.ComparisonTotals)};
  } catch (const ArithmeticError&) {
    return {message::kWrongEntry, {}};
  }
}

ReportShown Manager::showAllFunds() {
  try {
    return {message::kNone, allFundsReport(database_, format_, global_.ComparisonTotals)};
  } catch (const ArithmeticError&) {
    return {message::kWrongEntry, {}};
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
  BoxLeft left = leaveAmountBox(global_, value, price.outOfRange, text);
  if (left.changed) price.value = value;
  return left;
}

Outcome Manager::calculateCurrentValue() {
  clearValuation();
  const auto refused = [](int number) { return Outcome{number, true, {}}; };
  if (firstEmptyFund(database_) != 0) return refused(message::kEmptyFund);
  std::vector<Currency> prices;
  for (std::size_t row = 1; row <= database_.funds().size(); ++row) {
    if (prices_[row].outOfRange) return refused(message::kWrongEntry);
    prices.push_back(prices_[row].value.value_or(Currency()));
    if (prices.back().isZero()) return refused(message::kMissingPrice);
  }
  try {
    state_.CVResults = currentValueTable(database_, prices, global_.ComparisonTotals);
  } catch (const ArithmeticError&) {
    return refused(message::kWrongEntry);
  }
  global_.ChartCount = database_.FundCount;
  return Outcome::report(state_.CVResults);
}

int Manager::graphCurrentValue() {
  if (state_.CVResults.empty() || global_.ChartCount == 0) return message::kNothingToGraph;
  global_.ChartKind = chart::kManager;
  return message::kNone;
}

// --- printing -------------------------------------------------------------------

int Manager::checkPrint(std::string_view report) {
  return report.empty() ? message::kNothingToPrint : message::kNone;
}

bool Manager::preparePrint(std::string_view report) {
  if (global_.PrintHeader == kCancelled) return false;
  std::string& lines = global_.ReportLines[2];
  lines.clear();
  if (!global_.PrintHeader.empty()) appendLine(lines, global_.PrintHeader);
  lines += report;
  return true;
}

// --------------------------------------------------------------------------------

void Manager::clearValuation() {
  state_.CVResults.clear();
  global_.ChartCount = 0;
}

void Manager::fundsChanged() {
  prices_ = {};
  global_.FundCount = database_.FundCount;
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

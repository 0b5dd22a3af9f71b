// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager.h"

#include <algorithm>
#include <utility>

#include "base/attempt.h"
#include "base/file_name.h"
#include "base/parse_number.h"
#include "base/text.h"
#include "charts/chart_kind.h"
#include "manager/database/data_file.h"
#include "manager/reports/current_value.h"

namespace mirelund {

namespace {

constexpr Message kFailed = Message::WrongEntry;

std::string counter(std::string_view label, std::int16_t count) {
  return std::string(label) + std::to_string(count);
}

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

void namePath(ManagerState& state, const std::string& path) {
  state.DatabasePath = path;
  state.DatabaseName = fileName(path);
}

}  // namespace

// An operation at work: on copies of all that it may change, but for the files.
class Manager::Change {
 public:
  Change(Manager& manager, Held& held, BoxState& boxes, CurrencyTable& totals, std::string& printed,
         std::int16_t& chartCount)
      : manager_(manager),
        database_(held.database),
        state_(held.state),
        prices_(held.prices),
        boxes_(boxes),
        totals_(totals),
        printed_(printed),
        chartCount_(chartCount) {}

  Message DiscardDatabase() {
    database_ = Database();
    const ManagerState old = std::exchange(state_, {});
    state_.fundsRevision = old.fundsRevision;
    state_.dataRevision = old.dataRevision;
    printed_.clear();
    totals_.redimension(kTotalsRows, kTotalsColumns);
    boxes_.BoxEdited = 0;
    fundsChanged();
    state_.FileChanged = 0;
    return Message::None;
  }

  Message OpenDatabase(const std::string& path) {
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
    return Message::None;
  }

  Message openSample(const std::string& path) {
    const Message refused = OpenDatabase(path);
    if (refused == Message::None) state_.DatabasePath.clear();
    return refused;
  }

  Saved SaveDatabase(const std::string& path, Replacing replacing) {
    if (const Message refused = manager_.checkSave(); refused != Message::None) return {refused};
    const std::string place = manager_.files_.resolved(path);
    const std::string bytes = writeDatabase(database_);
    std::optional<std::string> expected;
    const auto known = manager_.known_.find(place);
    if (replacing == Replacing::Unchanged && known != manager_.known_.end())
      expected = known->second;
    KnownFiles written{{place, bytes}};
    ManagerState saved = state_;
    namePath(saved, path);
    saved.FileChanged = 0;
    const FileFailure failure = manager_.files_.replace(path, bytes, expected);
    if (failure != FileFailure::None) return {Message::CannotSave, failure};
    // The file is there, and nothing can fail any more.
    std::swap(state_, saved);
    manager_.remember(std::move(written));
    return {};
  }

  Outcome chooseFund(std::int16_t row) {
    const Fund& fund = database_.FundTable.at(static_cast<std::size_t>(row));
    mirelund::clearEntryRow(state_, boxes_);
    state_.ActiveFundRow = row;
    state_.ActiveFund = fundNumber(fund);
    return showRecordList();
  }

  Outcome addFund(std::string_view name) {
    if (name.empty()) return {};
    if (database_.FundCount == kMostFunds) return Outcome::failed(Message::MostFunds);
    if (!isFundName(name)) return Outcome::failed(Message::WrongEntry);
    const std::int16_t row = mirelund::addFund(database_, name);
    fundsChanged();
    return chooseFund(row);
  }

  Message chooseType(std::size_t index) {
    if (state_.CorrectingRecord != 0) return Message::None;
    if (state_.ActiveFund == 0) return Message::FundNotSelected;
    mirelund::clearEntryRow(state_, boxes_);
    state_.entry.type = &transactionTypes()[index];
    return Message::None;
  }

  BoxLeft leaveValueBox(EntryBox box, std::string_view text) {
    const auto slot = static_cast<std::size_t>(box);
    EntryRow& row = state_.entry;
    return leaveAmountBox(boxes_, row.EntryValues[slot], row.outOfRange[slot], text);
  }

  Outcome addRecord(std::string_view dateText, std::string_view fundText) {
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
    return showRecordList();
  }

  Message correctRecord(std::string_view fundText, std::string_view number) {
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

  DeleteAsked askDelete(std::string_view fundText) {
    if (const Message refused = mirelund::checkFund(database_, state_, fundText);
        refused != Message::None)
      return {refused, false};
    if (state_.CorrectingRecord != 0) mirelund::clearEntryRow(state_, boxes_);
    return {Message::None, !FundHasRecords(database_, state_.ActiveFund)};
  }

  Outcome deleteRecord(std::string_view number) {
    const std::int16_t row = recordRow(database_, state_.ActiveFund, number);
    if (row == 0) return Outcome::failed(Message::NotARecord);
    // The row of a record that is being corrected is another's now.
    if (state_.CorrectingRecord != 0) mirelund::clearEntryRow(state_, boxes_);
    removeRecord(database_, row);
    dataChanged();
    return showRecordList();
  }

  Message deleteFund() {
    if (state_.ActiveFund == 0 || FundHasRecords(database_, state_.ActiveFund))
      return Message::FundNotSelected;
    removeFund(database_, state_.ActiveFundRow);
    mirelund::leaveEntryPage(state_, boxes_);
    fundsChanged();
    return Message::None;
  }

  // A total out of range is told, and does not keep the fund from being chosen or a
  // record from being deleted: that is the way out.
  Outcome showRecordList() {
    if (state_.ActiveFund == 0) return Outcome::report({});
    try {
      return Outcome::report(recordList(database_, state_.ActiveFund, manager_.format_, totals_));
    } catch (const ArithmeticError&) {
      return Outcome::emptied(Message::WrongEntry);
    }
  }

  ReportShown showFund(std::int16_t row) {
    return {Message::None, transactionReport(database_, row, manager_.format_, totals_)};
  }

  ReportShown showAllFunds() {
    return {Message::None, allFundsReport(database_, manager_.format_, totals_)};
  }

  BoxLeft leavePriceBox(std::int16_t row, std::string_view text) {
    Price& price = prices_.at(static_cast<std::size_t>(row));
    Currency value;
    BoxLeft left = leaveAmountBox(boxes_, value, price.outOfRange, text);
    if (left.changed) price.value = value;
    return left;
  }

  Outcome calculateCurrentValue() {
    clearValuation();
    if (firstEmptyFund(database_) != 0) return Outcome::emptied(Message::EmptyFund);
    std::vector<Currency> prices;
    for (std::size_t row = 1; row <= database_.funds().size(); ++row) {
      if (prices_[row].outOfRange) return Outcome::emptied(Message::WrongEntry);
      prices.push_back(prices_[row].value.value_or(Currency()));
      if (prices.back().isZero()) return Outcome::emptied(Message::MissingPrice);
    }
    try {
      state_.CVResults = currentValueTable(database_, prices, totals_);
    } catch (const ArithmeticError&) {
      return Outcome::emptied(Message::WrongEntry);
    }
    chartCount_ = database_.FundCount;
    return Outcome::report(state_.CVResults);
  }

  Message preparePrint(std::string_view header, std::string_view report) {
    printed_.clear();
    if (!header.empty()) appendLine(printed_, header);
    printed_ += report;
    return Message::None;
  }

 private:
  void clearValuation() {
    state_.CVResults.clear();
    chartCount_ = 0;
  }

  void fundsChanged() {
    prices_ = {};
    ++state_.fundsRevision;
    dataChanged();
  }

  void dataChanged() {
    clearValuation();
    state_.FileChanged = 1;
    ++state_.dataRevision;
  }

  Manager& manager_;
  Database& database_;
  ManagerState& state_;
  Prices& prices_;
  BoxState& boxes_;
  CurrencyTable& totals_;
  std::string& printed_;
  std::int16_t& chartCount_;
};

template <typename Result, typename... Parameters, typename... Arguments>
Result Manager::attempt(Result failed, Result (Change::*operation)(Parameters...),
                        const Arguments&... arguments) noexcept {
  return mirelund::attempt(
      std::move(failed),
      [&](Held& held, BoxState& boxes, CurrencyTable& totals, std::string& printed,
          std::int16_t& chartCount) {
        Change change(*this, held, boxes, totals, printed, chartCount);
        return (change.*operation)(arguments...);
      },
      held_, boxes_, reports_.ComparisonTotals, reports_.ReportLines[2], chart_.ChartCount);
}

Manager::Manager(BoxState& boxes, Reports& reports, ChartSelectors& chart, FileStore& files)
    : boxes_(boxes), reports_(reports), chart_(chart), files_(files) {}

Message Manager::DiscardDatabase() noexcept {
  return attempt(kFailed, &Change::DiscardDatabase);
}

bool Manager::mustAskBeforeDiscarding() const noexcept {
  return held_.state.FileChanged == 1 && held_.database.RecordCount != 0;
}

MessageDetails Manager::details(Date today) const {
  return {formatDate(today, format_), displayText(held_.state.DatabasePath), {}};
}

std::string Manager::fundsText() const {
  return counter("Funds: ", held_.database.FundCount);
}

std::string Manager::recordsText() const {
  return counter("Records: ", held_.database.RecordCount);
}

std::string Manager::databaseText() const {
  return "Database: " + displayText(held_.state.DatabaseName);
}

std::vector<std::string> Manager::fundNames() const {
  std::vector<std::string> names;
  names.reserve(held_.database.funds().size());
  for (const Fund& fund : held_.database.funds()) names.push_back(displayText(fund.name));
  return names;
}

std::string Manager::fundName(std::int16_t row) const {
  return mirelund::fundName(held_.database, row);
}

void Manager::leaveEntryPage() noexcept {
  mirelund::leaveEntryPage(held_.state, boxes_);
}

// --- files -----------------------------------------------------------------------

Message Manager::OpenDatabase(const std::string& path) noexcept {
  held_.state.FileDialogMode = FileDialog::Idle;
  return attempt(Message::CannotOpen, &Change::OpenDatabase, path);
}

Message Manager::openSample(const std::string& path) noexcept {
  held_.state.FileDialogMode = FileDialog::Idle;
  return attempt(Message::CannotOpen, &Change::openSample, path);
}

Message Manager::checkSave() const noexcept {
  return held_.database.RecordCount == 0 ? Message::NoRecords : Message::None;
}

Saved Manager::SaveDatabase(const std::string& path, Replacing replacing) noexcept {
  held_.state.FileDialogMode = FileDialog::Idle;
  return attempt(Saved{Message::CannotSave, FileFailure::Other}, &Change::SaveDatabase, path,
                 replacing);
}

// What is new stays where both have a file; nothing is allocated.
void Manager::remember(KnownFiles fresh) noexcept {
  fresh.merge(known_);
  known_.swap(fresh);
}

// --- entry page ------------------------------------------------------------------

Outcome Manager::chooseFund(std::int16_t row) noexcept {
  return attempt(Outcome::failed(kFailed), &Change::chooseFund, row);
}

Outcome Manager::addFund(std::string_view name) noexcept {
  return attempt(Outcome::failed(kFailed), &Change::addFund, name);
}

Message Manager::chooseType(std::size_t index) noexcept {
  return attempt(kFailed, &Change::chooseType, index);
}

void Manager::clearEntryRow() noexcept {
  mirelund::clearEntryRow(held_.state, boxes_);
}

Message Manager::leaveDateBox(std::string_view text) const noexcept {
  return mirelund::attempt(kFailed, [&] {
    const bool empty = text.find_first_not_of(' ') == std::string_view::npos;
    return empty || parseDate(text, format_) ? Message::None : Message::DateFormat;
  });
}

BoxLeft Manager::leaveValueBox(EntryBox box, std::string_view text) noexcept {
  return attempt(BoxLeft{kFailed, true, false, {}}, &Change::leaveValueBox, box, text);
}

std::string Manager::valueText(EntryBox box) const {
  return FormatNumber(held_.state.entry.value(box), kEntryPattern);
}

Outcome Manager::addRecord(std::string_view dateText, std::string_view fundText) noexcept {
  return attempt(Outcome::failed(kFailed), &Change::addRecord, dateText, fundText);
}

Message Manager::checkFund(std::string_view fundText) const noexcept {
  return mirelund::attempt(
      kFailed, [&] { return mirelund::checkFund(held_.database, held_.state, fundText); });
}

Message Manager::correctRecord(std::string_view fundText, std::string_view number) noexcept {
  return attempt(kFailed, &Change::correctRecord, fundText, number);
}

std::string Manager::correctingDateText() const {
  const auto row = static_cast<std::size_t>(held_.state.CorrectingRecord);
  return row == 0 ? std::string() : formatDate(held_.database.RecordTable[row].date, format_);
}

std::string Manager::correctingText() const {
  const auto row = static_cast<std::size_t>(held_.state.CorrectingRecord);
  if (row == 0) return {};
  const auto upTo = held_.database.records().first(row);
  const auto number = std::count_if(upTo.begin(), upTo.end(), [&](const Record& record) {
    return record.fund == upTo.back().fund;
  });
  return "Correcting record " + std::to_string(number) +
         ": Add Record stores it, Escape leaves it as it is.";
}

DeleteAsked Manager::askDelete(std::string_view fundText) noexcept {
  return attempt(DeleteAsked{kFailed, false}, &Change::askDelete, fundText);
}

Message Manager::checkRecordNumber(std::string_view number) const noexcept {
  return mirelund::attempt(kFailed, [&] {
    return recordRow(held_.database, held_.state.ActiveFund, number) == 0 ? Message::NotARecord
                                                                          : Message::None;
  });
}

Outcome Manager::deleteRecord(std::string_view number) noexcept {
  return attempt(Outcome::failed(kFailed), &Change::deleteRecord, number);
}

Message Manager::deleteFund() noexcept {
  return attempt(kFailed, &Change::deleteFund);
}

Outcome Manager::showRecordList() noexcept {
  return attempt(Outcome::failed(kFailed), &Change::showRecordList);
}

// --- display page ----------------------------------------------------------------

ReportShown Manager::showFund(std::int16_t row) noexcept {
  return attempt(ReportShown{kFailed, {}}, &Change::showFund, row);
}

ReportShown Manager::showAllFunds() noexcept {
  return attempt(ReportShown{kFailed, {}}, &Change::showAllFunds);
}

// --- current value ---------------------------------------------------------------

std::string Manager::priceText(std::int16_t row) const {
  const auto& price = held_.prices[static_cast<std::size_t>(row)].value;
  return price ? FormatNumber(*price, kEntryPattern) : std::string();
}

BoxLeft Manager::leavePriceBox(std::int16_t row, std::string_view text) noexcept {
  return attempt(BoxLeft{kFailed, true, false, {}}, &Change::leavePriceBox, row, text);
}

Outcome Manager::calculateCurrentValue() noexcept {
  return attempt(Outcome::failed(kFailed), &Change::calculateCurrentValue);
}

Message Manager::graphCurrentValue() noexcept {
  if (held_.state.CVResults.empty() || chart_.ChartCount == 0) return Message::NothingToGraph;
  chart_.ChartKind = ChartKind::Manager;
  return Message::None;
}

// --- printing --------------------------------------------------------------------

Message Manager::checkPrint(std::string_view report) noexcept {
  return report.empty() ? Message::NothingToPrint : Message::None;
}

Message Manager::preparePrint(std::string_view header, std::string_view report) noexcept {
  return attempt(kFailed, &Change::preparePrint, header, report);
}

}  // namespace mirelund

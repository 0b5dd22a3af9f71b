// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager.h"

#include <algorithm>
#include <utility>

#include "base/attempt.h"
#include "base/text.h"
#include "charts/chart_kind.h"
#include "manager/manager_change.h"
#include "manager/reports/report_sheets.h"

namespace mirelund {

namespace {

std::string counter(std::string_view label, std::int16_t count) {
  return std::string(label) + std::to_string(count);
}

}  // namespace

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

// --- steps -----------------------------------------------------------------------

bool Manager::canRestore(Direction way) const noexcept {
  return history_.next(way) != nullptr;
}

std::string_view Manager::stepText(Direction way) const noexcept {
  const HistoryStep* step = history_.next(way);
  const StepTexts& texts = step == nullptr ? kNoStep : rowOf(kSteps, step->step).texts;
  return texts[static_cast<std::size_t>(way)];
}

Restored Manager::restore(Direction way) noexcept {
  return attempt(Restored{Outcome::failed(kFailed)}, &Change::restore, way);
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

std::optional<Currency> Manager::price(std::int16_t row) const noexcept {
  const Price& price = held_.prices[static_cast<std::size_t>(row)];
  const bool isPrice = price.value && !price.value->isZero() && !price.outOfRange;
  return isPrice ? price.value : std::nullopt;
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

// --- exporting -------------------------------------------------------------------

namespace {

template <typename Make>
SheetMade made(bool there, Make make) noexcept {
  return mirelund::attempt(SheetMade{kFailed, {}}, [&] {
    SheetMade result;
    if (there) result.sheets.push_back(make());
    return result;
  });
}

}  // namespace

SheetMade Manager::recordSheet() const noexcept {
  return made(held_.state.ActiveFund != 0,
              [this] { return mirelund::recordSheet(held_.database, held_.state.ActiveFundRow); });
}

SheetMade Manager::fundSheet(std::int16_t row) const noexcept {
  return made(true, [&] { return transactionSheet(held_.database, row); });
}

SheetMade Manager::allFundsSheet() const noexcept {
  return made(true, [this] { return mirelund::allFundsSheet(held_.database); });
}

SheetMade Manager::currentValueSheet() const noexcept {
  return made(!held_.state.CVResults.empty(), [this] {
    const std::span<const Currency> prices(held_.state.CVPrices);
    return mirelund::currentValueSheet(held_.database, prices.first(held_.database.funds().size()));
  });
}

// --- printing --------------------------------------------------------------------

Message Manager::checkPrint(std::string_view report) noexcept {
  return report.empty() ? Message::NothingToPrint : Message::None;
}

Message Manager::preparePrint(std::string_view header, std::string_view report) noexcept {
  return attempt(kFailed, &Change::preparePrint, header, report);
}

}  // namespace mirelund

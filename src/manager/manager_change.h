// SPDX-License-Identifier: GPL-3.0-or-later
// The operations of Manager at work: what changes the database or what is chosen in it
// stands in manager_change.cpp, what only shows it in manager_showing.cpp.
#pragma once

#include <string>
#include <string_view>

#include "manager/manager.h"

namespace mirelund {

inline constexpr Message kFailed = Message::WrongEntry;

/// The name of the fund in a row as shown; empty for a row without a fund.
std::string fundName(const Database& database, std::int16_t row);

/// Message 16 unless `fundText` names the active fund; 19 when it names none.
Message checkFund(const Database& database, const ManagerState& state, std::string_view fundText);

/// The row of the record whose number in the fund's list was typed; 0 when there is none.
std::int16_t recordRow(const Database& database, std::int16_t fund, std::string_view number);

/// Empties the entry row, and cancels a correction.
void clearEntryRow(ManagerState& state, BoxState& boxes) noexcept;

/// The same, and no fund is active any more.
void leaveEntryPage(ManagerState& state, BoxState& boxes) noexcept;

/// An operation on copies of all that it may change, but for the files and the history:
/// those are changed last, when nothing can fail any more.
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

  // --- what changes -----------------------------------------------------------

  Message DiscardDatabase();
  Message OpenDatabase(const std::string& path);
  Message openSample(const std::string& path);
  Saved SaveDatabase(const std::string& path, Replacing replacing);
  Outcome chooseFund(std::int16_t row);
  Outcome addFund(std::string_view name);
  Message chooseType(std::size_t index);
  BoxLeft leaveValueBox(EntryBox box, std::string_view text);
  Outcome addRecord(std::string_view dateText, std::string_view fundText);
  Message correctRecord(std::string_view fundText, std::string_view number);
  DeleteAsked askDelete(std::string_view fundText);
  Outcome deleteRecord(std::string_view number);
  Message deleteFund();
  Restored restore(Direction way);

  // --- what shows -------------------------------------------------------------

  Outcome showRecordList();
  ReportShown showFund(std::int16_t row);
  ReportShown showAllFunds();
  BoxLeft leavePriceBox(std::int16_t row, std::string_view text);
  Outcome calculateCurrentValue();
  Message preparePrint(std::string_view header, std::string_view report);

 private:
  template <typename Result>
  Result done(Step step, std::int16_t fundRow, Result result);
  void activate(std::int16_t row);
  std::int16_t rowOfFund(const Fund& fund) const;
  void clearValuation();
  void fundsChanged();
  void dataChanged();

  Manager& manager_;
  Database& database_;
  ManagerState& state_;
  Prices& prices_;
  BoxState& boxes_;
  CurrencyTable& totals_;
  std::string& printed_;
  std::int16_t& chartCount_;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// The investment manager without its window: what each control does to the
// database in memory, and what the window shows then.
//
// Operations never show a dialog: they return a message, and what they refuse leaves everything as
// it was. None of them throws. Each works on copies of what it may change, which take its place
// when it has succeeded: whatever fails below (memory, a file store that throws, a number out of
// range) is message 3, of opening a file 13 and of saving one 25, and the database, the state and
// the shared parts are exactly as they were. What only tells a text or names throws nothing but
// std::bad_alloc, and changes nothing. Texts to show are UTF-8; names in the tables are the file's
// bytes (base/text.h: displayText). Funds are named by their row in the fund list, 1..FundCount, so
// that two of one name stay two.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/global.h"
#include "app/input_boxes.h"
#include "base/file_store.h"
#include "export/sheet.h"
#include "manager/database/fund_database.h"
#include "manager/database/history.h"
#include "manager/reports/fund_reports.h"
#include "manager/transaction_entry.h"

namespace mirelund {

/// FileDialogMode.
enum class FileDialog : std::int16_t { Idle = 0, Opening = 1, Saving = 2, Cancelled = 9 };

inline constexpr std::string_view kFileFilter = "Investment Manager Database (*.PQD)";
inline constexpr std::string_view kNoFundText = "Click dn/arrow for funds list";
inline constexpr std::string_view kFundNameCaption = "&Add Fund Name";
inline constexpr std::string_view kFundNamePrompt =
    " Type in the name of the fund or               company.";
inline constexpr std::string_view kHeaderCaption = "Input";
inline constexpr std::string_view kHeaderPrompt = "Type in one line header information.";
inline constexpr std::string_view kCorrectPrompt = "Correct record number: ";
inline constexpr std::string_view kDeletePrompt = "Delete record number: ";

/// What the window and its pages share. Only Manager changes it.
struct ManagerState {
  std::int16_t ActiveFund = 0;        ///< number of the fund chosen; 0 none
  std::int16_t ActiveFundRow = 0;     ///< its row; 0 none
  std::int16_t CorrectingRecord = 0;  ///< number of the record being corrected; 0 none
  /// 1 after any change of a record or fund, until it is saved or undone.
  std::int16_t FileChanged = 0;
  FileDialog FileDialogMode = FileDialog::Idle;
  std::string DatabasePath;  ///< full path of the file last opened or saved; bytes
  std::string DatabaseName;  ///< its file-name part; bytes
  EntryRow entry;            ///< the entry row
  std::string CVResults;     ///< the current-value table; empty when none stands
  /// The prices that it was worked out at, a fund each in table order.
  std::array<Currency, kMostFunds> CVPrices{};
  /// Changes whenever the fund list does: pages that list funds rebuild them then.
  std::uint32_t fundsRevision = 0;
  /// Changes whenever a record or fund does: reports shown are stale then.
  std::uint32_t dataRevision = 0;
};

/// What pressing Delete leads to.
struct DeleteAsked {
  Message message = Message::None;  ///< refused
  bool wholeFund = false;           ///< no records left: ask question 5, then deleteFund
};

/// A report for the display page.
struct ReportShown {
  Message message = Message::None;  ///< 3 where a total leaves the range; no report then
  FundReport report;
};

/// A report as a table to take along.
struct SheetMade {
  Message message = Message::None;  ///< 3 where a number leaves the range or memory lacks
  std::vector<Sheet> sheets;        ///< none: there is no report
};

/// What undo or redo leads to.
struct Restored {
  Outcome outcome;      ///< the active fund's list; nothing to show where nothing was restored
  bool rowKept = true;  ///< the entry row stands as typed
};

/// Whether a file may be replaced that another program has changed since it was opened
/// or saved here.
enum class Replacing : std::uint8_t { Unchanged, Anything };

/// What a save came to.
struct Saved {
  Message message = Message::None;
  FileFailure reason = FileFailure::None;  ///< of message 25
};

class Manager {
 public:
  /// What of the shared state the manager touches: that a box was typed into; its
  /// report for printing, and the totals that the chart reads; what the chart shows.
  Manager(BoxState& boxes, Reports& reports, ChartSelectors& chart,
          FileStore& files = systemFiles());

  const ManagerState& state() const noexcept { return held_.state; }
  const Database& database() const noexcept { return held_.database; }

  /// The system's short date; set before anything is shown or typed.
  void setDateFormat(const ShortDateFormat& format) noexcept { format_ = format; }
  const ShortDateFormat& dateFormat() const noexcept { return format_; }

  // --- the window -------------------------------------------------------------

  /// Form_Load and leaving: everything emptied, path and name too, so that a new
  /// database is not saved over the old file by habit; ComparisonTotals in the
  /// manager's shape.
  Message DiscardDatabase() noexcept;

  /// True when question 3 is to be asked before the database is given up, by
  /// leaving, by opening another, or by the program's end. A database without
  /// records is given up without it, whatever was changed: required.
  bool mustAskBeforeDiscarding() const noexcept;

  /// What messages and questions name: path, today in the short form.
  MessageDetails details(Date today) const;

  std::string fundsText() const;     ///< "Funds: 2"
  std::string recordsText() const;   ///< "Records: 90"
  std::string databaseText() const;  ///< "Database: DtaSampl.PQD"

  /// The fund names as shown, in table order.
  std::vector<std::string> fundNames() const;
  /// The name of the fund in a row as shown; empty for row 0.
  std::string fundName(std::int16_t row) const;

  /// Another page was chosen: a correction is cancelled, the row cleared, and a
  /// fund must be chosen again before entries are accepted.
  void leaveEntryPage() noexcept;

  // --- files ------------------------------------------------------------------

  void setFileDialog(FileDialog mode) noexcept { held_.state.FileDialogMode = mode; }

  /// Replaces the database by the file's. Message 13 for whatever is not exactly
  /// a data file; the database in memory is whole then, as before.
  Message OpenDatabase(const std::string& path) noexcept;

  /// The same, of a file that is not the person's own: it leaves its name and no
  /// path, so that saving asks for one.
  Message openSample(const std::string& path) noexcept;

  /// Message 15 when there is nothing to save: asked before the dialog.
  Message checkSave() const noexcept;

  /// Saves under the path. Message 15, or 25 for any failure: the old file stands
  /// and FileChanged stays.
  ///
  /// A file that was opened or saved here since this Manager was made, whatever name
  /// led to it and though the database was discarded in between, is compared right
  /// before it is replaced: where it holds other bytes than were read or written then,
  /// the reason is FileFailure::Changed. It is for the window to tell that in place of
  /// message 25, and to save again with Replacing::Anything, which compares nothing,
  /// where the person wants it. A file that is gone is written anew.
  Saved SaveDatabase(const std::string& path, Replacing replacing = Replacing::Unchanged) noexcept;

  // --- entry page -------------------------------------------------------------

  /// EFunds: makes the fund in `row` active, clears the entry row, cancels a
  /// correction. Returns the fund's record list.
  Outcome chooseFund(std::int16_t row) noexcept;

  /// ECreateFund with the name typed: an empty one adds nothing. The new fund is
  /// active. Message 36 at 18 funds, 3 for a name that a file cannot carry.
  Outcome addFund(std::string_view name) noexcept;

  /// ETransType: clears the boxes; the type's own are enabled. Message 16 without
  /// an active fund: the type list is to be reset. While a correction is in
  /// progress the list is locked, and nothing happens.
  Message chooseType(std::size_t index) noexcept;

  /// Pressing Delete in the type list.
  void clearEntryRow() noexcept;

  /// EInDate_LostFocus: message 30 for a text that is no date; an empty box is
  /// left in peace.
  Message leaveDateBox(std::string_view text) const noexcept;

  /// Lost-focus of a value box.
  BoxLeft leaveValueBox(EntryBox box, std::string_view text) noexcept;

  /// The texts of the row's value boxes while a correction is in progress.
  std::string valueText(EntryBox box) const;

  /// EAddaRec: adds the row as a record, or stores the corrected one. The box that
  /// has the focus is left first, so that it is stored. `fundText` is what EFunds
  /// shows. Refusals in this order: type (51), date (31, 30),
  /// values (20, 29), fund (16, 19), 600 records (35), an amount or total out of
  /// range (3); the row stays as typed. Returns the new list.
  Outcome addRecord(std::string_view dateText, std::string_view fundText) noexcept;

  /// Message 16 unless `fundText` names the active fund; 19 when it names none.
  Message checkFund(std::string_view fundText) const noexcept;

  /// ECorrectRec with the number typed: its record in the entry row. Message 16 or
  /// 19 (checkFund, also asked before the number dialog), 17.
  Message correctRecord(std::string_view fundText, std::string_view number) noexcept;
  /// The date to show in EInDate after correctRecord.
  std::string correctingDateText() const;

  /// Which record is being corrected, by its number in the fund's list, and the two
  /// ways out; empty when none is.
  std::string correctingText() const;

  /// EDelRec, first step: cancels a correction.
  DeleteAsked askDelete(std::string_view fundText) noexcept;
  /// Message 17 unless the number finds a record of the active fund; before
  /// question 4 is asked.
  Message checkRecordNumber(std::string_view number) const noexcept;
  /// After the yes to question 4. Cancels a correction. Returns the new list.
  Outcome deleteRecord(std::string_view number) noexcept;
  /// After the yes to question 5; message 16 without an active fund. The fund must
  /// have no records.
  Message deleteFund() noexcept;

  // --- undo and redo ----------------------------------------------------------

  /// True when there is a step to undo or redo: an addition, a correction or a deletion of
  /// a record, a new fund, a fund deleted, since the database was opened or begun. Saving
  /// is no step, and leaves them all. The oldest go where memory has its bound
  /// (kMostHistoryBytes).
  bool canRestore(Direction way) const noexcept;
  /// What it is called: "Undo add record"; "Undo" or "Redo" without a step.
  std::string_view stepText(Direction way) const noexcept;
  /// Takes the last step back, or does the next again: the database is exactly what it
  /// was, the order of its rows too, and FileChanged is 0 where it was opened or last
  /// saved, else 1. The step's fund becomes the active one, so that the list shows what
  /// has changed; where it is gone the fund that was active stays. A row that is being
  /// typed stays while its fund does; a correction is cancelled. Message 3 where memory
  /// lacks.
  Restored restore(Direction way) noexcept;

  /// EResults: the active fund's record list, empty without one; message 3 and an
  /// empty list where a total leaves the range.
  Outcome showRecordList() noexcept;

  // --- display page -----------------------------------------------------------

  ReportShown showFund(std::int16_t row) noexcept;
  ReportShown showAllFunds() noexcept;

  // --- current value ----------------------------------------------------------

  /// The text of a fund's price box: as stored, empty until a price was typed.
  /// Prices stay while the funds do.
  std::string priceText(std::int16_t row) const;
  /// The price of a fund; nothing until one was typed, and for 0 and a number that is no
  /// amount.
  std::optional<Currency> price(std::int16_t row) const noexcept;
  /// CVInPrice_LostFocus.
  BoxLeft leavePriceBox(std::int16_t row, std::string_view text) noexcept;

  /// CVCalc: the table, in CVResults and as the outcome's results; ChartCount the
  /// number of funds. Refusals: a fund without records (28), a price missing or 0
  /// (24), a result out of range (3); CVResults is empty then.
  Outcome calculateCurrentValue() noexcept;

  /// CVGraph: message 4 with nothing calculated; else ChartKind 8.
  Message graphCurrentValue() noexcept;

  // --- exporting --------------------------------------------------------------

  /// The active fund's record list, the transaction reports of the display page, the
  /// current-value table as it was last calculated; each is there as long as its report.
  SheetMade recordSheet() const noexcept;
  SheetMade fundSheet(std::int16_t row) const noexcept;
  SheetMade allFundsSheet() const noexcept;
  SheetMade currentValueSheet() const noexcept;

  // --- printing ---------------------------------------------------------------

  /// Message 2 for an empty report.
  static Message checkPrint(std::string_view report) noexcept;
  /// Puts the header typed, if any, and the report into ReportLines(2).
  Message preparePrint(std::string_view header, std::string_view report) noexcept;

 private:
  struct Price {
    std::optional<Currency> value;  ///< nothing until one was typed
    bool outOfRange = false;        ///< the box shows a number beyond Currency
  };
  using Prices = std::array<Price, kMostFunds + 1>;  ///< by fund row
  /// The bytes last read from or written to each file, by where it lies.
  using KnownFiles = std::map<std::string, std::string>;

  /// What is the manager's own of all that an operation may change.
  struct Held {
    Database database;
    ManagerState state;
    Prices prices;
  };
  class Change;

  template <typename Result, typename... Parameters, typename... Arguments>
  Result attempt(Result failed, Result (Change::*operation)(Parameters...),
                 const Arguments&... arguments) noexcept;
  void remember(KnownFiles fresh) noexcept;

  BoxState& boxes_;
  Reports& reports_;
  ChartSelectors& chart_;
  FileStore& files_;
  ShortDateFormat format_;
  Held held_;
  KnownFiles known_;
  History history_;
};

}  // namespace mirelund

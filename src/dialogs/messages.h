// SPDX-License-Identifier: GPL-3.0-or-later
// The program's messages and questions: their numbers, named after what they say,
// and their texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/file_store.h"

namespace mirelund {

/// Any other number is a message without a text.
enum class Message : std::int16_t {
  None = 0,
  CalculateBeforePrinting = 1,
  NothingToPrint = 2,
  WrongEntry = 3,
  NothingToGraph = 4,
  YearsLimit = 5,
  WithdrawalTooLarge = 7,
  MostComparisons = 8,
  CannotDraw = 9,
  CannotOpen = 13,
  NoRecords = 15,
  FundNotSelected = 16,
  NotARecord = 17,
  AllThreeBoxes = 18,
  FundNotInFile = 19,
  RecordNotSaved = 20,
  CannotSort = 23,
  MissingPrice = 24,
  CannotSave = 25,
  EmptyFund = 28,
  RecordNotCorrected = 29,
  DateFormat = 30,
  NoDate = 31,
  MostRecords = 35,
  MostFunds = 36,
  NoType = 51,
};

/// Any other number is a question without a text.
enum class Question : std::int16_t {
  None = 0,
  Print = 1,
  PrintInColor = 2,
  DiscardChanges = 3,
  DeleteRecord = 4,
  DeleteFund = 5,
  AnsweredYes = 6,  ///< what a question becomes by a yes; by a no it stays
};

/// What some texts name: the rest of the state a message is shown in.
struct MessageDetails {
  std::string shortDate;     ///< DateFormat: today in the system's short form
  std::string fileName;      ///< DiscardChanges
  std::string recordNumber;  ///< DeleteRecord
};

/// The text; empty for a number that has none.
std::string messageText(Message message, const MessageDetails& details = {});
std::string questionText(Question question, const MessageDetails& details = {});

/// Why a file was not saved, as one sentence for a person, told after message 25 where
/// the reason is not the name that the message speaks of: no permission, a disk that is
/// read-only, no space, a change by another program. Empty for every other reason.
std::string_view failureText(FileFailure reason);

}  // namespace mirelund

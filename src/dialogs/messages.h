// SPDX-License-Identifier: GPL-3.0-or-later
// The program's messages and questions, by number.
#pragma once

#include <string>
#include <string_view>

namespace mirelund {

/// Message numbers, named after what they tell.
namespace message {
inline constexpr int kNone = 0;
inline constexpr int kCalculateBeforePrinting = 1;
inline constexpr int kNothingToPrint = 2;
inline constexpr int kWrongEntry = 3;
inline constexpr int kNothingToGraph = 4;
inline constexpr int kYearsLimit = 5;
inline constexpr int kWithdrawalTooLarge = 7;
inline constexpr int kMostComparisons = 8;
inline constexpr int kCannotDraw = 9;
inline constexpr int kCannotOpen = 13;
inline constexpr int kNoRecords = 15;
inline constexpr int kFundNotSelected = 16;
inline constexpr int kNotARecord = 17;
inline constexpr int kAllThreeBoxes = 18;
inline constexpr int kFundNotInFile = 19;
inline constexpr int kRecordNotSaved = 20;
inline constexpr int kCannotSort = 23;
inline constexpr int kMissingPrice = 24;
inline constexpr int kCannotSave = 25;
inline constexpr int kEmptyFund = 28;
inline constexpr int kRecordNotCorrected = 29;
inline constexpr int kDateFormat = 30;
inline constexpr int kNoDate = 31;
inline constexpr int kMostRecords = 35;
inline constexpr int kMostFunds = 36;
inline constexpr int kNoType = 51;
}  // namespace message

/// Question numbers. An answered yes is kAnswerYes, any other number is no.
namespace question {
inline constexpr int kPrint = 1;
inline constexpr int kPrintInColor = 2;
inline constexpr int kDiscardChanges = 3;
inline constexpr int kDeleteRecord = 4;
inline constexpr int kDeleteFund = 5;
inline constexpr int kAnswerYes = 6;
}  // namespace question

/// What some texts name: the rest of the state a message is shown in.
struct MessageDetails {
  std::string shortDate;     ///< message 30: today in the system's short form
  std::string fileName;      ///< question 3
  std::string recordNumber;  ///< question 4
};

/// The text of a message; empty for a number that has none.
std::string messageText(int number, const MessageDetails& details = {});

/// The text of a question; empty for a number that has none.
std::string questionText(int number, const MessageDetails& details = {});

}  // namespace mirelund

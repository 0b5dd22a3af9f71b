// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/messages.h"

#include <span>

namespace mirelund {

namespace {

// One row a text: what stands before and after the detail that it names, if any.
struct Text {
  int number;
  std::string_view before;
  std::string MessageDetails::*detail = nullptr;
  std::string_view after = {};
};

constexpr Text kMessages[] = {
    {message::kCalculateBeforePrinting, "No data to print. Calculate."},
    {message::kNothingToPrint, "No data to print."},
    {message::kWrongEntry, "Wrong or missing entry, try again."},
    {message::kNothingToGraph, "No data to graph, Calculate."},
    {message::kYearsLimit, "Wrong entry, 40 years limit."},
    {message::kWithdrawalTooLarge, "Cannot withdraw Annually more than you have in Savings."},
    {message::kMostComparisons, "Maximum comparisons 10."},
    {message::kCannotDraw, "Cannot draw graph, try again."},
    {message::kCannotOpen, "File not found or wrong format. Check Filename and/or Directory."},
    {message::kNoRecords, "No Records."},
    {message::kFundNotSelected,
     "Name of active Fund must be selected and shown in green box. See Help."},
    {message::kNotARecord, "Not a valid Record number. Check number and try again."},
    {message::kAllThreeBoxes, "Must be numbers in all three boxes"},
    {message::kFundNotInFile,
     "Fund selected is not in file. Check name in Fund Name textbox. See Help."},
    {message::kRecordNotSaved,
     "Record not saved, missing entry or 0. Entries must be exactly as shown in Help."},
    {message::kCannotSort, "Cannot sort file."},
    {message::kMissingPrice, "Check, missing entry or 0."},
    {message::kCannotSave, "Bad filename, must be in the form MYFILE.PQD"},
    {message::kEmptyFund,
     "You have Added a Fund Name but have not entered a record in it."
     " Either delete the Fund name or add a record."
     " I cannot work with an empty Fund."},
    {message::kRecordNotCorrected,
     "Record not Corrected, missing entry or 0. Entries must be exactly as shown in Help."},
    {message::kDateFormat, "Correct date format is ", &MessageDetails::shortDate},
    {message::kNoDate, "Record not saved. Must have a date."},
    {message::kMostRecords,
     "Files are limited to 600 records. You will have to start a new database file."},
    {message::kMostFunds, "Funds are limited to 18. You will have to start a new File."},
    {message::kNoType, "A transaction type must be selected, click Dn/Arrow and select one."},
};

constexpr Text kQuestions[] = {
    {question::kPrint, " Continue with Printout."},
    {question::kPrintInColor, " Print in Color."},
    {question::kDiscardChanges, "File changed. ", &MessageDetails::fileName,
     " file in memory will be erased. Do you wish to go back and save it to Disk?."},
    {question::kDeleteRecord,
     "Are you sure you wish to delete record number: ", &MessageDetails::recordNumber},
    {question::kDeleteFund, "Are you sure you wish to delete the current Fund name."},
};

std::string textOf(std::span<const Text> texts, int number, const MessageDetails& details) {
  for (const Text& text : texts) {
    if (text.number != number) continue;
    std::string whole(text.before);
    if (text.detail != nullptr) whole += details.*text.detail;
    whole += text.after;
    return whole;
  }
  return {};
}

}  // namespace

std::string messageText(int number, const MessageDetails& details) {
  return textOf(kMessages, number, details);
}

std::string questionText(int number, const MessageDetails& details) {
  return textOf(kQuestions, number, details);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/messages.h"

#include <span>
#include <string_view>

namespace mirelund {

namespace {

// One row a text: what stands before and after the detail that it names, if any.
template <typename Number>
struct Text {
  Number number;
  std::string_view before;
  std::string MessageDetails::*detail = nullptr;
  std::string_view after = {};
};

constexpr Text<Message> kMessages[] = {
    {Message::CalculateBeforePrinting, "No data to print. Calculate."},
    {Message::NothingToPrint, "No data to print."},
    {Message::WrongEntry, "Wrong or missing entry, try again."},
    {Message::NothingToGraph, "No data to graph, Calculate."},
    {Message::YearsLimit, "Wrong entry, 40 years limit."},
    {Message::WithdrawalTooLarge, "Cannot withdraw Annually more than you have in Savings."},
    {Message::MostComparisons, "Maximum comparisons 10."},
    {Message::CannotDraw, "Cannot draw graph, try again."},
    {Message::CannotOpen, "File not found or wrong format. Check Filename and/or Directory."},
    {Message::NoRecords, "No Records."},
    {Message::FundNotSelected,
     "Name of active Fund must be selected and shown in green box. See Help."},
    {Message::NotARecord, "Not a valid Record number. Check number and try again."},
    {Message::AllThreeBoxes, "Must be numbers in all three boxes"},
    {Message::FundNotInFile,
     "Fund selected is not in file. Check name in Fund Name textbox. See Help."},
    {Message::RecordNotSaved,
     "Record not saved, missing entry or 0. Entries must be exactly as shown in Help."},
    {Message::CannotSort, "Cannot sort file."},
    {Message::MissingPrice, "Check, missing entry or 0."},
    {Message::CannotSave, "Bad filename, must be in the form MYFILE.PQD"},
    {Message::EmptyFund,
     "You have Added a Fund Name but have not entered a record in it."
     " Either delete the Fund name or add a record."
     " I cannot work with an empty Fund."},
    {Message::RecordNotCorrected,
     "Record not Corrected, missing entry or 0. Entries must be exactly as shown in Help."},
    {Message::DateFormat, "Correct date format is ", &MessageDetails::shortDate},
    {Message::NoDate, "Record not saved. Must have a date."},
    {Message::MostRecords,
     "Files are limited to 600 records. You will have to start a new database file."},
    {Message::MostFunds, "Funds are limited to 18. You will have to start a new File."},
    {Message::NoType, "A transaction type must be selected, click Dn/Arrow and select one."},
};

constexpr Text<Question> kQuestions[] = {
    {Question::Print, " Continue with Printout."},
    {Question::PrintInColor, " Print in Color."},
    {Question::DiscardChanges, "File changed. ", &MessageDetails::fileName,
     " file in memory will be erased. Do you wish to go back and save it to Disk?."},
    {Question::DeleteRecord,
     "Are you sure you wish to delete record number: ", &MessageDetails::recordNumber},
    {Question::DeleteFund, "Are you sure you wish to delete the current Fund name."},
};

template <typename Number>
std::string textOf(std::span<const Text<Number>> texts, Number number,
                   const MessageDetails& details) {
  for (const Text<Number>& text : texts) {
    if (text.number != number) continue;
    std::string whole(text.before);
    if (text.detail != nullptr) whole += details.*text.detail;
    whole += text.after;
    return whole;
  }
  return {};
}

}  // namespace

std::string messageText(Message message, const MessageDetails& details) {
  return textOf<Message>(kMessages, message, details);
}

std::string questionText(Question question, const MessageDetails& details) {
  return textOf<Question>(kQuestions, question, details);
}

std::string_view failureText(FileFailure reason) {
  switch (reason) {
    case FileFailure::NoPermission:
      return "You do not have permission to write this file, or to write in its folder.";
    case FileFailure::ReadOnly:
      return "The disk is read-only.";
    case FileFailure::NoSpace:
      return "There is not enough space for the file.";
    case FileFailure::Changed:
      return "The file has been changed by another program since it was opened or saved here.";
    default:
      return {};
  }
}

}  // namespace mirelund

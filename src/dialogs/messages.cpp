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
    {1, "No data to print. Calculate."},
    {2, "No data to print."},
    {3, "Wrong or missing entry, try again."},
    {4, "No data to graph, Calculate."},
    {5, "Wrong entry, 40 years limit."},
    {7, "Cannot withdraw Annually more than you have in Savings."},
    {8, "Maximum comparisons 10."},
    {9, "Cannot draw graph, try again."},
    {13, "File not found or wrong format. Check Filename and/or Directory."},
    {15, "No Records."},
    {16, "Name of active Fund must be selected and shown in green box. See Help."},
    {17, "Not a valid Record number. Check number and try again."},
    {18, "Must be numbers in all three boxes"},
    {19, "Fund selected is not in file. Check name in Fund Name textbox. See Help."},
    {20, "Record not saved, missing entry or 0. Entries must be exactly as shown in Help."},
    {23, "Cannot sort file."},
    {24, "Check, missing entry or 0."},
    {25, "Bad filename, must be in the form MYFILE.PQD"},
    {28,
     "You have Added a Fund Name but have not entered a record in it."
     " Either delete the Fund name or add a record."
     " I cannot work with an empty Fund."},
    {29, "Record not Corrected, missing entry or 0. Entries must be exactly as shown in Help."},
    {30, "Correct date format is ", &MessageDetails::shortDate},
    {31, "Record not saved. Must have a date."},
    {35, "Files are limited to 600 records. You will have to start a new database file."},
    {36, "Funds are limited to 18. You will have to start a new File."},
    {51, "A transaction type must be selected, click Dn/Arrow and select one."},
};

constexpr Text kQuestions[] = {
    {1, " Continue with Printout."},
    {2, " Print in Color."},
    {3, "File changed. ", &MessageDetails::fileName,
     " file in memory will be erased. Do you wish to go back and save it to Disk?."},
    {4, "Are you sure you wish to delete record number: ", &MessageDetails::recordNumber},
    {5, "Are you sure you wish to delete the current Fund name."},
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

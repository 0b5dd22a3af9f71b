// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/messages.h"

#include <gtest/gtest.h>

#include <map>

namespace mirelund {
namespace {

const std::map<int, std::string> kMessages = {
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
     "You have Added a Fund Name but have not entered a record in it. Either delete the Fund name "
     "or add a record. I cannot work with an empty Fund."},
    {29, "Record not Corrected, missing entry or 0. Entries must be exactly as shown in Help."},
    {30, "Correct date format is 12/10/2078"},
    {31, "Record not saved. Must have a date."},
    {35, "Files are limited to 600 records. You will have to start a new database file."},
    {36, "Funds are limited to 18. You will have to start a new File."},
    {51, "A transaction type must be selected, click Dn/Arrow and select one."},
};

TEST(Messages, EveryNumberHasItsTextAndNoOtherHasOne) {
  for (int number = -1; number <= 100; ++number) {
    const auto found = kMessages.find(number);
    EXPECT_EQ(messageText(Message{static_cast<std::int16_t>(number)}, {"12/10/2078", "", ""}),
              found == kMessages.end() ? "" : found->second)
        << number;
  }
}

TEST(Messages, EveryQuestionHasItsText) {
  const MessageDetails details{"", "/home/ann/funds.PQD", "12"};
  EXPECT_EQ(questionText(Question{1}, details), " Continue with Printout.");
  EXPECT_EQ(questionText(Question{2}, details), " Print in Color.");
  EXPECT_EQ(questionText(Question{3}, details),
            "File changed. /home/ann/funds.PQD file in memory will be erased. Do you wish to go "
            "back and save it to Disk?.");
  EXPECT_EQ(questionText(Question{4}, details),
            "Are you sure you wish to delete record number: 12");
  EXPECT_EQ(questionText(Question{5}, details),
            "Are you sure you wish to delete the current Fund name.");
  for (const int number : {-1, 0, 6, 7, 51})
    EXPECT_EQ(questionText(Question{static_cast<std::int16_t>(number)}, details), "");
}

TEST(Messages, AReasonThatIsNotTheNameHasASentence) {
  const std::map<FileFailure, std::string_view> sentences = {
      {FileFailure::None, ""},
      {FileFailure::NoSuchFolder, ""},
      {FileFailure::NoPermission,
       "You do not have permission to write this file, or to write in its folder."},
      {FileFailure::ReadOnly, "The disk is read-only."},
      {FileFailure::NoSpace, "There is not enough space for the file."},
      {FileFailure::NotAFile, ""},
      {FileFailure::TooLarge, ""},
      {FileFailure::Changed,
       "The file has been changed by another program since it was opened or saved here."},
      {FileFailure::Other, ""},
  };
  for (const auto& [reason, sentence] : sentences)
    EXPECT_EQ(failureText(reason), sentence) << static_cast<int>(reason);
}

}  // namespace
}  // namespace mirelund

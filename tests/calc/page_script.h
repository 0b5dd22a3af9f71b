// SPDX-License-Identifier: GPL-3.0-or-later
// Plays a calculator page without its window, from a script that a person could
// follow: boxes typed into by their rules, lists and options chosen, buttons
// pressed. A script file:
//
//   # what rule it shows, and where the expected numbers come from
//   page CapitalRequired
//   CRInCapitalReq = 50000        typed into a box, or chosen in a list
//   click CRCapitalChoices_1      an option button
//   press CRCalculate
//   message 3                     shown by then, of the message table
//   platform Payment is ...       shown by then, in the platform's message box
//   ----
//   the exact text of the Results box, each line end a single line feed
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/global.h"
#include "app/input_boxes.h"
#include "calc/calculation.h"
#include "calc/investment_growth.h"
#include "calc/mortgage.h"

namespace mirelund {

class PageScript {
 public:
  /// Loads the page, as a switch to its tab does.
  explicit PageScript(std::string_view page);

  /// Types `keys` into the box and leaves it, or chooses the text in the list.
  void set(std::string_view control, std::string_view text);
  /// Chooses an option button.
  void click(std::string_view option);
  void press(std::string_view button);

  const std::string& results() const { return results_; }
  /// What was shown since it was asked last: "message N" or "platform TEXT".
  std::vector<std::string> takeMessages() { return std::exchange(messages_, {}); }

 private:
  void show(const std::vector<ShownText>& texts);
  void show(const Outcome& outcome);
  void show(const MortgageOutcome& outcome);
  void recalculate();
  std::string& text(std::string_view box);
  const BoxRule& rule(std::string_view box) const;
  Outcome calculate();
  std::string help() const;

  Global global_;
  CalculatorPageIndex page_{};
  int option_ = 0;
  std::map<std::string, std::string, std::less<>> texts_;
  ContributionFrequency frequency_ = ContributionFrequency::Annually;
  GrowthResults growthResults_ = GrowthResults::Complete;
  MortgageChoices mortgage_;
  MortgageTexts mortgageTexts_;
  std::string results_;
  std::vector<std::string> messages_;
};

/// A script file's two parts, lines ended by LF.
struct ScriptFile {
  explicit ScriptFile(const std::filesystem::path& path);
  void save(const std::filesystem::path& path) const;

  std::string script;   ///< with its "----" line
  std::string results;  ///< to the end of the file
};

/// Plays the script and returns the text of the Results box with LF line ends.
/// A line that is not understood, or a message that was not shown when the
/// script says so, throws std::runtime_error naming the line.
std::string playScript(std::string_view script);

}  // namespace mirelund

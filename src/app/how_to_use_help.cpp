// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/how_to_use_help.h"

#include <string_view>

#include "app/report_line.h"
#include "base/version.h"

namespace mirelund {

namespace {

// An empty line stands between paragraphs.
constexpr std::string_view kLines[] = {
    "        Mirelund v3.5",
    "",
    "This program was written to incorporate the",
    "6 common calculations I found myself using",
    "frequently.",
    "",
    "Click on the tab name to open that module.",
    "",
    "Input boxes have a green background, to",
    "change figures, click box and start typing.",
    "Use numbers only (0 - 9) and period (.).",
    "Automatic formatting puts in the $ and %",
    "signs on leaving the box.",
    "",
    "Do not use Copy or Paste in input boxes.",
    "",
    "Each module has its own controls:",
    "'Calculate' will send the results of that",
    "calculation to the Results textbox.",
    "'Print' sends Results page to your printer.",
    "'Help' shows how to use that module.",
    "",
    "To use your word processor to format and",
    "print the Results. Right click on the text",
    "box and then on Select All, right click again",
    "on the selected text then on Copy. Open your",
    "editor and Paste the text to it.",
    "Use Courier fonts as each letter, space and",
    "number are the same width, for evenly spaced",
    "columns.",
    "",
    "All calculations are limited to 40 years.",
    "",
    "Interest/Growth rate refers to combined",
    "dividends, interest and/or the growth in",
    "price of the investment.",
    "",
    "_____________________________________________",
    "",
};

constexpr std::string_view kCredits[] = {
    "Calculators and investment manager",
    "",
    "Free software, without warranty,",
    "under the GNU General Public License,",
    "version 3 or later.",
};

// As wide as the reports that the box shows.
constexpr std::size_t kWidth = 45;

void appendCentred(std::string& text, std::string_view line) {
  if (!line.empty()) text.append((kWidth - line.size()) / 2, ' ');
  appendLine(text, line);
}

}  // namespace

std::string howToUseHelp() {
  std::string text;
  for (const std::string_view line : kLines) appendLine(text, line);
  appendCentred(text, "Mirelund, version " + std::string(kVersion));
  for (const std::string_view line : kCredits) appendCentred(text, line);
  return text;
}

}  // namespace mirelund

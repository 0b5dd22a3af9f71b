// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/how_to_use_help.h"

#include <gtest/gtest.h>

#include "line_ends.h"

namespace mirelund {
namespace {

TEST(HelpText, HowToUse) {
  EXPECT_EQ(howToUseHelp(), withCrLf("        Mirelund v3.5\n"
                                     "\n"
                                     "This program was written to incorporate the\n"
                                     "6 common calculations I found myself using\n"
                                     "frequently.\n"
                                     "\n"
                                     "Click on the tab name to open that module.\n"
                                     "\n"
                                     "Input boxes have a green background, to\n"
                                     "change figures, click box and start typing.\n"
                                     "Use numbers only (0 - 9) and period (.).\n"
                                     "Automatic formatting puts in the $ and %\n"
                                     "signs on leaving the box.\n"
                                     "\n"
                                     "Do not use Copy or Paste in input boxes.\n"
                                     "\n"
                                     "Each module has its own controls:\n"
                                     "'Calculate' will send the results of that\n"
                                     "calculation to the Results textbox.\n"
                                     "'Print' sends Results page to your printer.\n"
                                     "'Help' shows how to use that module.\n"
                                     "\n"
                                     "To use your word processor to format and\n"
                                     "print the Results. Right click on the text\n"
                                     "box and then on Select All, right click again\n"
                                     "on the selected text then on Copy. Open your\n"
                                     "editor and Paste the text to it.\n"
                                     "Use Courier fonts as each letter, space and\n"
                                     "number are the same width, for evenly spaced\n"
                                     "columns.\n"
                                     "\n"
                                     "All calculations are limited to 40 years.\n"
                                     "\n"
                                     "Interest/Growth rate refers to combined\n"
                                     "dividends, interest and/or the growth in\n"
                                     "price of the investment.\n"
                                     "\n"
                                     "_____________________________________________\n"
                                     "\n"
                                     "            Mirelund, version 3.5\n"
                                     "     Calculators and investment manager\n"
                                     "\n"
                                     "      Free software, without warranty,\n"
                                     "    under the GNU General Public License,\n"
                                     "             version 3 or later.\n"));
}

}  // namespace
}  // namespace mirelund

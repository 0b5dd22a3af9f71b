// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/current_value_help.h"

#include "app/report_line.h"

namespace mirelund {

std::string currentValueHelp() {
  std::string help;
  appendLine(help,
             "Type the current share price or whatif price beside each fund name then click "
             "Calculate.");
  appendLine(help, "For DtaSampl enter ");
  appendLine(help, "20.00 for all current price inputs. ");
  return help;
}

}  // namespace mirelund

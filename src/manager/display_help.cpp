// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/display_help.h"

#include "app/report_line.h"

namespace mirelund {

std::string displayHelp() {
  std::string help;
  appendLine(help, "To show an individual fund. Double click on it.");
  appendLine(help, "For all funds click the Display All Funds button.");
  return help;
}

}  // namespace mirelund

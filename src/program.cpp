// SPDX-License-Identifier: GPL-3.0-or-later
#include "program.h"

#include <QApplication>
#include <QFontDatabase>

#include "app/calculator_window.h"
#include "calc/pages.h"
#include "charts/chart_window.h"
#include "manager/manager_window.h"

namespace mirelund {

Program::Program(Prompts& prompts, PrintTarget& printing, Global& global)
    : start_([&]() -> PQStart::Windows {
        const auto showChart = [&](QWidget* over) {
          PQGraph(global, prompts, printing, over).exec();
        };
        return {[=, &global, &prompts, &printing] {
                  return new PQInvest(
                      {global, prompts, printing, calculatorPages(), kStartPage, showChart});
                },
                [=, &global, &prompts, &printing] {
                  return new PQManagement({global, prompts, printing, showChart});
                }};
      }()) {}

void useProgramFont() {
  const QString family = "MS Sans Serif";
  if (!QFontDatabase::hasFamily(family)) return;
  QFont font = QApplication::font();
  font.setFamily(family);
  QApplication::setFont(font);
}

}  // namespace mirelund

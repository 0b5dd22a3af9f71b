// SPDX-License-Identifier: GPL-3.0-or-later
// The page on which every fund is valued at a typed price.
#pragma once

#include <vector>

#include "manager/manager_page.h"

class QGridLayout;

namespace mirelund {

class AmountEdit;
class FundNames;

class CurrentValuePage : public ReportPage {
  Q_OBJECT

 public:
  explicit CurrentValuePage(ManagerHost& host);

  void shown() override;
  QWidget* firstControl() override;

 protected:
  void restoreReport() override;
  SheetMade sheets() override;

 private:
  void CVCalc_Click();
  void CVGraph_Click();
  void CVHelp_Click();
  void CVPrint_Click();
  void CVExit_Click();

  void makeButtons();
  void makePriceBoxes();
  void addPriceBox(QGridLayout* grid, std::int16_t fundRow);
  void enterPressedIn(std::int16_t fundRow);

  QLabel* hint_;
  FundNames* prices_ = nullptr;
  std::vector<AmountEdit*> CVInPrice_;  // by fund row, from 1
  QPushButton* CVCalc_;
  std::vector<QWidget*> behindPrices_;  // in the order of Tab
  std::uint32_t fundsShown_ = 0;
  std::uint32_t dataShown_ = 0;
};

}  // namespace mirelund

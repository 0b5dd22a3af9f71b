// SPDX-License-Identifier: GPL-3.0-or-later
// The page that lists the transactions of one fund, or of all.
#pragma once

#include "manager/manager_page.h"

class QLabel;
class QListWidget;
class QListWidgetItem;

namespace mirelund {

class DisplayPage : public ReportPage {
  Q_OBJECT

 public:
  explicit DisplayPage(ManagerHost& host);

  void shown() override;
  void restored(const Restored& step) override;
  QWidget* firstControl() override;

 protected:
  void restoreReport() override;
  SheetMade sheets() override;

 private:
  void DDispFunds_DblClick(QListWidgetItem* item);
  void DDisplall_Click();
  void DDHelp_Click();
  void DDPrint_Click();
  void DDExit_Click();

  void makeList(QHBoxLayout* row);
  void makeReportSide(QHBoxLayout* row);
  void makeButtons();
  void showFunds(std::int16_t which);
  /// The label above the report: the fund at the top of the view.
  void nameFundInView();

  // Of what a report is: the row of a fund, or one of these.
  static constexpr std::int16_t kNoFund = -1;
  static constexpr std::int16_t kAllFunds = 0;

  QListWidget* DDispFunds_;
  QLabel* DDFund_;
  FundReport shownReport_;
  std::int16_t shownFunds_ = kNoFund;
  std::uint32_t fundsShown_ = 0;
  std::uint32_t dataShown_ = 0;
};

}  // namespace mirelund

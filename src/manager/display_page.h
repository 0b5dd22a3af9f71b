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
  QWidget* firstControl() override;

 protected:
  void restoreReport() override;

 private:
  void DDispFunds_DblClick(QListWidgetItem* item);
  void DDisplall_Click();
  void DDHelp_Click();
  void DDPrint_Click();
  void DDExit_Click();

  void makeList(QHBoxLayout* row);
  void makeReportSide(QHBoxLayout* row);
  void makeButtons();
  void show(ReportShown shown);
  /// The label above the report: the fund at the top of the view.
  void nameFundInView();

  QListWidget* DDispFunds_;
  QLabel* DDFund_;
  FundReport shownReport_;
  std::uint32_t fundsShown_ = 0;
  std::uint32_t dataShown_ = 0;
};

}  // namespace mirelund

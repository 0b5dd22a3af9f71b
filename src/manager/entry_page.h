// SPDX-License-Identifier: GPL-3.0-or-later
// The page on which funds are made and transactions entered, corrected, deleted.
#pragma once

#include <array>

#include "manager/manager_page.h"

namespace mirelund {

class DropDown;
class FilteredEdit;

class EntryPage : public ReportPage {
  Q_OBJECT

 public:
  explicit EntryPage(ManagerHost& host);

  void shown() override;
  void restored(const Restored& step) override;
  QWidget* firstControl() override;

 protected:
  void restoreReport() override;
  SheetMade sheets() override;
  /// Escape gives a correction up.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void EFunds_Click(int index);
  void EFunds_KeyDown(int key);
  void ECreateFund_Click();
  void ETransType_Click(int index);
  void ETransType_KeyDown(int key);
  void EAddaRec_Click();
  void ECorrectRec_Click();
  void EDelRec_Click();
  void EHelp_Click();
  void EPrint_Click();
  void EExit_Click();

  void makeFundRow();
  void makeEntryRow();
  void makeButtons();
  FilteredEdit* makeBox(const EntryBoxRule& rule);
  FilteredEdit* edit(EntryBox box) const { return edits_[static_cast<std::size_t>(box)]; }
  void enterPressedIn(EntryBox box);

  std::string fundText() const;
  void fillFunds();
  void showRow();
  /// The list that an operation returned, or its message.
  void show(const Outcome& outcome);

  DropDown* EFunds_;
  QPushButton* ECreateFund_;
  DropDown* ETransType_;
  std::array<FilteredEdit*, kEntryBoxes> edits_{};
  QPushButton* EAddaRec_;
  QLabel* ECorrecting_;
  std::uint32_t fundsShown_ = 0;
};

}  // namespace mirelund

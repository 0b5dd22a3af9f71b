// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/calculator_page.h"
#include "calc/mortgage.h"

namespace mirelund {

class MortgagePage : public CalculatorPage {
  Q_OBJECT

 public:
  explicit MortgagePage(PageHost& host);

  void load() override;
  void controlLeft(QWidget* control) override;
  bool hasSchedule() const override { return true; }
  void showSchedule() override;

 private:
  void MTPaymentOpt_Click() { choose(SolveFor::Payment); }
  void MTPrincipalOpt_Click() { choose(SolveFor::Principal); }
  void MTTermOpt_Click() { choose(SolveFor::Years); }
  void MTIRFactor_Click(int element);
  void MTFreqPmt_LostFocus();
  void MTCalculate_Click();
  void MTHelp_Click();
  void MTPrint_Click();

  static void (MortgagePage::*clickOf(SolveFor solveFor))();
  QGroupBox* makeSolveFor();
  QGroupBox* makeDaysInYear();
  void addResultRow(QGridLayout* grid, const char* name, const QString& label, const char* said);

  /// The chosen box shows a result, white and locked; the other two take input.
  void choose(SolveFor solveFor);
  MortgageChoices choices() const;
  void readBoxes();
  void showTexts();
  void recalculate();
  void keepSolved();
  void tell(const MortgageOutcome& outcome);

  /// What a recalculation is made of.
  struct Cause {
    std::vector<std::string> boxes;
    MortgageChoices choices;
    std::int16_t daysOption;

    bool operator==(const Cause&) const = default;
  };
  Cause cause() const;

  QComboBox* MTCompPeriod_;
  QComboBox* MTFreqPmt_;
  QButtonGroup* MTIRFactor_;
  QButtonGroup* solveFor_;
  SolveFor chosen_ = SolveFor::Payment;
  DaysInYearState days_;
  MortgageTexts shown_;
  /// What the results that are shown were solved from; nothing where none are.
  std::optional<MortgageInput> solved_;
  /// Of the failure that was told last: who leaves a box without having changed
  /// anything since is not held there.
  std::optional<Cause> told_;
  /// Leaving a control tells nothing: Calculate recalculates and tells by itself,
  /// and a failure that was just told moves the focus to the payment.
  bool quiet_ = false;
};

}  // namespace mirelund

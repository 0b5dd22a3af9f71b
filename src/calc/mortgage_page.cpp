// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage_page.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <utility>

#include "app/caption.h"
#include "app/filtered_edit.h"
#include "app/result_label.h"
#include "base/ui_text.h"
#include "calc/mortgage_help.h"
#include "calc/mortgage_schedule_window.h"
#include "dialogs/prompts.h"
#include "dialogs/standing_dialog.h"

namespace mirelund {

namespace {

// The controls of MortgageTexts: the four boxes, then the result labels.
struct TextControl {
  const char* name;
  std::string MortgageTexts::*text;
  const char* label;
  const char* said = nullptr;  ///< read out instead, where two labels are alike
};

constexpr TextControl kBoxes[] = {
    {"MTInPrincipal", &MortgageTexts::principal, nullptr},
    {"MTInRate", &MortgageTexts::rate, nullptr},
    {"MTInTerm", &MortgageTexts::term, nullptr},
    {"MTInMthPayment", &MortgageTexts::payment, nullptr},
};

constexpr TextControl kTotal = {"MTTotalPmts", &MortgageTexts::totalPmts, "Total interest paid",
                                "Total interest paid, conventional mortgage"};

constexpr TextControl kResults[] = {
    {"MTNumPmts", &MortgageTexts::numPmts, "Number of payments each year"},
    {"MTDaysInYear", &MortgageTexts::daysInYear, "Number of days in year used"},
    {"MTTotIntSaved", &MortgageTexts::totIntSaved, "Interest saved v normal mortgage"},
    {"MTNumYrs", &MortgageTexts::numYrs, "Number of years to final payment"},
    {"MTPiPmt", &MortgageTexts::piPmt, "Each payment, principal + interest"},
    {"MTTotIntPaid", &MortgageTexts::totIntPaid, "Total interest paid",
     "Total interest paid, accelerated mortgage"},
};

template <typename Table>
QStringList textsOf(const Table& table) {
  QStringList texts;
  for (const auto& row : table) texts << toQString(row.text);
  return texts;
}

bool failed(const MortgageOutcome& outcome) {
  return outcome.outcome.message != Message::None || !outcome.platformMessage.empty();
}

QLabel* makeHeading(const QString& text) {
  auto* label = new Caption(text);
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  return label;
}

}  // namespace

MortgagePage::MortgagePage(PageHost& host) : CalculatorPage(host, kMortgageBoxes) {
  auto* grid = new QGridLayout;
  grid->addWidget(makeHeading("Conventional mortgage"), 0, 0, 1, 2);
  MTCompPeriod_ = addListRow(grid, "MTCompPeriod", "Interest compounding periods per year",
                             textsOf(kCompoundingPeriods));
  for (const TextControl& box : kBoxes) addBoxRow(grid, box.name);
  addResultRow(grid, kTotal.name, kTotal.label, kTotal.said);
  grid->addWidget(makeSolveFor(), 1, 2, grid->rowCount() - 1, 1, Qt::AlignTop);

  const int heading = grid->rowCount();
  grid->addWidget(makeHeading("Accelerated mortgage"), heading, 0, 1, 2);
  MTFreqPmt_ =
      addListRow(grid, "MTFreqPmt", "Frequency and type of payment", textsOf(kPaymentFrequencies));
  for (const TextControl& result : kResults)
    addResultRow(grid, result.name, result.label, result.said);
  grid->addWidget(makeDaysInYear(), heading + 1, 2, grid->rowCount() - heading - 1, 1,
                  Qt::AlignTop);
  addContent(grid);

  // The results are stops of Tab behind whatever takes input.
  QWidget* before = MTIRFactor_->button(kDaysNotApplicable);
  const auto place = [&](const TextControl& row) {
    auto* result = findChild<ResultLabel*>(row.name);
    setTabOrder(before, result);
    before = result;
  };
  place(kTotal);
  for (const TextControl& row : kResults) place(row);

  addButtons("MT", this, &MortgagePage::MTCalculate_Click, &MortgagePage::MTHelp_Click,
             &MortgagePage::MTPrint_Click);
}

void (MortgagePage::*MortgagePage::clickOf(SolveFor solveFor))() {
  switch (solveFor) {
    case SolveFor::Principal:
      return &MortgagePage::MTPrincipalOpt_Click;
    case SolveFor::Years:
      return &MortgagePage::MTTermOpt_Click;
    case SolveFor::Payment:
      break;
  }
  return &MortgagePage::MTPaymentOpt_Click;
}

QGroupBox* MortgagePage::makeSolveFor() {
  auto* frame = new QGroupBox("Select to", this);
  auto* column = new QVBoxLayout(frame);
  column->addWidget(new Caption("find:", frame));
  solveFor_ = new QButtonGroup(this);
  for (const SolveForRow& row : kSolveFor) {
    auto* option = new QRadioButton(toQString(row.caption), frame);
    option->setObjectName(toQString(row.option));
    connect(option, &QRadioButton::clicked, this, clickOf(row.solveFor));
    solveFor_->addButton(option, static_cast<int>(row.solveFor));
    column->addWidget(option, 0, Qt::AlignLeft);
  }
  return frame;
}

QGroupBox* MortgagePage::makeDaysInYear() {
  QStringList captions;
  for (const DaysInYearRow& row : kDaysInYear) captions << toQString(row.caption);
  captions << QString();  // not applicable: selected, it leaves the others unselected
  const Options options = makeOptions("MTIRFactor", "Days in year", captions);
  MTIRFactor_ = options.group;
  MTIRFactor_->button(kDaysNotApplicable)->hide();
  connect(MTIRFactor_, &QButtonGroup::idClicked, this, &MortgagePage::MTIRFactor_Click);
  // At once, not when the list is left: what is off cannot be clicked or reached.
  connect(MTFreqPmt_, &QComboBox::currentIndexChanged, this, [this] {
    for (QAbstractButton* button : MTIRFactor_->buttons())
      button->setEnabled(countsDays(choices().frequency));
  });
  return options.frame;
}

void MortgagePage::addResultRow(QGridLayout* grid, const char* name, const QString& label,
                                const char* said) {
  auto* result = new ResultLabel(this);
  result->setObjectName(name);
  result->setAccessibleName(said);
  result->setMinimumHeight(box(kBoxes[0].name)->sizeHint().height());
  addRow(grid, label, result);
}

void MortgagePage::load() {
  told_.reset();
  solved_.reset();
  MTCompPeriod_->setCurrentIndex(static_cast<int>(CompoundingPeriod::Monthly));
  MTFreqPmt_->setCurrentIndex(static_cast<int>(PaymentFrequency::BiweeklyAccelerated));
  solveFor_->button(static_cast<int>(SolveFor::Payment))->setChecked(true);
  choose(SolveFor::Payment);
  shown_ = loadMortgage(boxes(), days_);
  MTIRFactor_->button(days_.DaysOption)->setChecked(true);
  showTexts();
}

void MortgagePage::choose(SolveFor solveFor) {
  chosen_ = solveFor;
  for (const SolveForRow& row : kSolveFor) {
    BoxEdit* edit = box(row.box);
    edit->setReadOnly(row.solveFor == solveFor);
    edit->setGreen(row.solveFor != solveFor);
  }
}

MortgageChoices MortgagePage::choices() const {
  return {static_cast<CompoundingPeriod>(MTCompPeriod_->currentIndex()),
          static_cast<PaymentFrequency>(MTFreqPmt_->currentIndex()), chosen_};
}

void MortgagePage::readBoxes() {
  for (const TextControl& row : kBoxes) shown_.*row.text = textOf(row.name);
}

void MortgagePage::showTexts() {
  for (const TextControl& row : kBoxes) box(row.name)->setText(toQString(shown_.*row.text));
  const auto show = [this](const TextControl& row) {
    findChild<QLabel*>(row.name)->setText(toQString(shown_.*row.text));
  };
  show(kTotal);
  for (const TextControl& row : kResults) show(row);
}

void MortgagePage::controlLeft(QWidget* control) {
  if (control == MTFreqPmt_ || MTIRFactor_->buttons().contains(control))
    MTFreqPmt_LostFocus();
  else if (qobject_cast<BoxEdit*>(control) != nullptr)
    recalculate();
}

void MortgagePage::MTFreqPmt_LostFocus() {
  MTIRFactor_->button(leaveDaysInYear(days_, choices().frequency))->setChecked(true);
  recalculate();
}

void MortgagePage::MTIRFactor_Click(int element) {
  days_.DaysOption = static_cast<std::int16_t>(element);
}

MortgagePage::Cause MortgagePage::cause() const {
  std::vector<std::string> texts;
  for (const TextControl& row : kBoxes) texts.push_back(textOf(row.name));
  return {std::move(texts), choices(), days_.DaysOption};
}

void MortgagePage::recalculate() {
  if (quiet_) return;
  readBoxes();
  const Cause from = cause();
  const MortgageOutcome outcome = RecalculateMortgage(boxes(), days_, from.choices, shown_);
  showTexts();
  keepSolved();
  if (!failed(outcome)) told_.reset();
  if (!failed(outcome) || told_ == from) return;
  host().afterClick([this, outcome, from] {
    // The click may have chosen another unknown, or turned to another page.
    if (quiet_ || told_ == from || chosen_ != from.choices.solveFor || !isVisible()) return;
    told_ = from;
    tell(outcome);
  });
}

void MortgagePage::keepSolved() {
  solved_.reset();
  if (shown_.totIntPaid.empty()) return;
  const auto& inputs = boxes().MortgageInputs;
  solved_ = {inputs[1],           inputs[2], inputs[3], inputs[4], days_.BiweeklyPerYear,
             days_.WeeklyPerYear, choices()};
}

void MortgagePage::showSchedule() {
  if (host().prompts().cancelsAll()) return;
  if (!solved_) return host().show(Outcome::failed(Message::WrongEntry));
  StandingDialog<PQSchedule>(*solved_, host().prompts(), host().printing(), window()).wait();
}

void MortgagePage::tell(const MortgageOutcome& outcome) {
  host().show(outcome.outcome);
  if (outcome.platformMessage.empty()) return;
  host().prompts().warn(this, toQString(outcome.platformMessage));
  const QScopedValueRollback quiet(quiet_, true);
  host().moveFocusTo(box("MTInMthPayment"));
}

void MortgagePage::MTCalculate_Click() {
  {
    const QScopedValueRollback quiet(quiet_, true);
    if (!host().leaveFocused()) return;
  }
  readBoxes();
  const MortgageOutcome outcome =
      calculateMortgage(boxes(), reports(), chart(), days_, choices(), shown_);
  showTexts();
  keepSolved();
  if (failed(outcome)) told_ = cause();
  tell(outcome);
}

void MortgagePage::MTHelp_Click() {
  host().show(showHelp(reports(), mortgageHelp()));
}

void MortgagePage::MTPrint_Click() {
  host().print();
}

}  // namespace mirelund

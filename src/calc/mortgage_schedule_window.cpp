// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/mortgage_schedule_window.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/box_focus.h"
#include "app/caption.h"
#include "app/export_command.h"
#include "app/filtered_edit.h"
#include "app/option_group.h"
#include "app/report_box.h"
#include "base/ui_text.h"
#include "charts/chart_window.h"
#include "dialogs/prompts.h"
#include "dialogs/report_printer.h"
#include "dialogs/screen_room.h"

namespace mirelund {

namespace {
constexpr int kReportColumns = 69;
constexpr int kReportLines = 24;
constexpr char kHeaderCaption[] = "Input";
constexpr char kHeaderPrompt[] = "Type in one line header information.";
}  // namespace

PQSchedule::PQSchedule(const MortgageInput& mortgage, Prompts& prompts, PrintTarget& printing,
                       QWidget* over)
    : QDialog(over),
      prompts_(prompts),
      printing_(printing),
      input_{mortgage, ScheduleKind::Conventional, {}},
      boxFocus_(new BoxFocus(this, [this](Message message) { prompts_.tell(this, message); })) {
  setObjectName("PQSchedule");
  setWindowTitle("Payment schedule");
  setModal(true);
  auto* layout = new QVBoxLayout(this);
  // Below each other: beside each other they are wider than a small screen where letters
  // are large.
  layout->addWidget(makeKinds());
  auto* grid = new QGridLayout;
  SCExtra_ = addBox(grid, "SCExtra");
  SCYearly_ = addBox(grid, "SCYearly");
  grid->setColumnStretch(2, 1);
  layout->addLayout(grid);

  SCResults_ = new ReportBox("SCResults", kReportColumns, kReportLines, this);
  SCResults_->setAccessibleName("Payment schedule");
  layout->addWidget(SCResults_, 1);

  auto* row = new QHBoxLayout;
  row->addStretch();
  takingAlong_ = {addButton(row, "SCGraph", "&Graph", &PQSchedule::SCGraph_Click),
                  addButton(row, "SCPrint", "&Print", &PQSchedule::SCPrint_Click),
                  addButton(row, "SCExport", "&Export...", &PQSchedule::SCExport_Click)};
  addButton(row, "SCExit", "E&xit", &PQSchedule::SCExit_Click);
  layout->addLayout(row);

  connect(SCExtra_, &FilteredEdit::enterPressed, this,
          [this] { SCYearly_->setFocus(Qt::TabFocusReason); });
  connect(SCYearly_, &FilteredEdit::enterPressed, this,
          [this] { SCResults_->setFocus(Qt::TabFocusReason); });
  connect(boxFocus_, &BoxFocus::left, this, [this](QWidget* control) {
    if (control == SCExtra_ || control == SCYearly_) boxLeft();
  });
  resize(onScreen(*this, sizeHint()));
  calculate();
}

QGroupBox* PQSchedule::makeKinds() {
  const MortgageChoices& choices = input_.mortgage.choices;
  const QString frequency = toQString(rowOf(kPaymentFrequencies, choices.frequency).text);
  auto* frame = new QGroupBox("Schedule", this);
  auto* column = new QVBoxLayout(frame);
  SCKind_ = new QButtonGroup(this);
  tabToChosen(SCKind_);
  for (const QString& caption :
       {QString("&Conventional: Monthly"), "At the chosen &frequency: " + frequency}) {
    auto* option = new QRadioButton(caption, frame);
    const auto element = static_cast<int>(SCKind_->buttons().size());
    option->setObjectName(QString("SCKind_%1").arg(element));
    SCKind_->addButton(option, element);
    column->addWidget(option, 0, Qt::AlignLeft);
  }
  SCKind_->button(static_cast<int>(input_.kind))->setChecked(true);
  connect(SCKind_, &QButtonGroup::idClicked, this,
          [this](int element) { SCKind_Click(static_cast<ScheduleKind>(element)); });
  return frame;
}

BoxEdit* PQSchedule::addBox(QGridLayout* grid, std::string_view name) {
  constexpr int kColumns = 16;
  const BoxRule& rule = boxRule(kScheduleBoxes, name);
  auto* edit = new BoxEdit(boxes_, rule, this);
  edit->setCharacters(kColumns, kColumns);
  edit->load();
  auto* label = new Caption(toQString(rule.label), this);
  label->setObjectName(edit->objectName() + "Label");
  label->setBuddy(edit);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(edit, row, 1);
  return edit;
}

QPushButton* PQSchedule::addButton(QLayout* row, const char* name, const QString& caption,
                                   void (PQSchedule::*clicked)()) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  // A mnemonic moves no focus: what is typed counts first.
  connect(button, &QPushButton::clicked, this, [this, clicked] {
    if (boxFocus_->leaveNow()) (this->*clicked)();
  });
  row->addWidget(button);
  return button;
}

// Enter goes on, as from box to box; a button it presses.
void PQSchedule::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && qobject_cast<QPushButton*>(focusWidget()) == nullptr)
    focusNextChild();
  else
    QDialog::keyPressEvent(event);
}

void PQSchedule::SCKind_Click(ScheduleKind kind) {
  boxFocus_->leaveNow();
  if (kind == input_.kind) return;
  input_.kind = kind;
  calculate();
}

void PQSchedule::boxLeft() {
  const ExtraPayments extras{boxes_.InputValues[1], boxes_.InputValues[2]};
  if (extras == input_.extras) return;
  input_.extras = extras;
  calculate();
}

void PQSchedule::calculate() {
  shown_ = mirelund::showSchedule(input_);
  for (QPushButton* button : takingAlong_) button->setEnabled(shown_.message == Message::None);
  SCResults_->setPlainText(toQString(shown_.report));
  if (shown_.message == Message::None) return;
  // Once the window is seen: nothing is told over one that is not.
  QMetaObject::invokeMethod(
      this, [this, message = shown_.message] { prompts_.tell(this, message); },
      Qt::QueuedConnection);
}

void PQSchedule::SCGraph_Click() {
  showChart(scheduleChart(shown_.schedule), prompts_, printing_, this);
}

void PQSchedule::SCPrint_Click() {
  if (!prompts_.ask(this, Question::Print)) return;
  const auto header = prompts_.askLine(this, kHeaderCaption, kHeaderPrompt);
  if (!header) return;
  PrintReport(toQString(printedSchedule(toStdString(*header), shown_.report)),
              reportPoints(Window::Calculators), printing_, prompts_, this);
}

void PQSchedule::SCExport_Click() {
  const std::array sheets{scheduleSheet(shown_.schedule)};
  exportSheets(sheets, toQString(sheets.front().name), prompts_, this);
}

void PQSchedule::SCExit_Click() {
  accept();
}

}  // namespace mirelund

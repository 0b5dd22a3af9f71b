// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/calculator_window.h"

#include <QHBoxLayout>
#include <QMenuBar>
#include <QProxyStyle>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/action_menu.h"
#include "app/box_focus.h"
#include "app/export_command.h"
#include "app/how_to_use_help.h"
#include "app/report_box.h"
#include "app/report_divider.h"
#include "app/tab_guard.h"
#include "base/ui_text.h"
#include "dialogs/prompts.h"
#include "dialogs/report_printer.h"
#include "dialogs/screen_room.h"

namespace mirelund {

namespace {
constexpr int kReportColumns = 46;
constexpr int kReportLines = 24;

// So that six captions are whole beside a report on a screen of 1024 pixels.
class NarrowTabs : public QProxyStyle {
 public:
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    constexpr int kBesideCaption = 10;
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    return metric == PM_TabBarTabHSpace ? std::min(usual, kBesideCaption) : usual;
  }
};
}  // namespace

PQInvest::PQInvest(const Parts& parts)
    : parts_(parts),
      boxFocus_(new BoxFocus(this, [this](Message message) { prompts().tell(this, message); })) {
  setObjectName("PQInvest");
  setWindowTitle("Calculations");
  auto* layout = new QHBoxLayout(this);
  auto* side = makeLeftSide();
  Results_ = new ReportBox("Results", kReportColumns, kReportLines, this);
  layout->addWidget(new ReportDivider(side, Results_, this));
  connect(boxFocus_, &BoxFocus::left, this, [this](QWidget* control) {
    CalculatorPage* shown = page(global().CurrentTab);
    if (shown->isAncestorOf(control)) shown->controlLeft(control);
  });
  Form_Load();
  layout->setMenuBar(makeActions()->bar());
  resize(onScreen(*this, sizeHint()));
}

QWidget* PQInvest::makeLeftSide() {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  SSTab1_ = new QTabWidget(side);
  SSTab1_->setObjectName("SSTab1");
  SSTab1_->setAccessibleName("Calculators");
  layout->addWidget(SSTab1_, 1);
  for (const CalculatorPageEntry& entry : parts_.pages) {
    pages_.push_back(new PageHolder<CalculatorPage>([this, entry] {
      CalculatorPage* made = entry.make(*this);
      made->setObjectName(QString("FrameAll_%1").arg(static_cast<int>(entry.page)));
      return made;
    }));
    SSTab1_->addTab(pages_.back(), entry.caption);
    SSTab1_->setTabToolTip(SSTab1_->count() - 1, QString(entry.caption).trimmed());
    if (entry.sizesWindow) page(static_cast<int>(entry.page));
  }
  new TabGuard(SSTab1_, boxFocus_);
  // No caption is scrolled out of sight: without room they are cut.
  auto* narrow = new NarrowTabs;
  narrow->setParent(SSTab1_);
  SSTab1_->tabBar()->setStyle(narrow);
  SSTab1_->setUsesScrollButtons(false);
  SSTab1_->setElideMode(Qt::ElideRight);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(addButton("AllGraphs", "&Graph", &PQInvest::AllGraphs_Click));
  buttons->addWidget(addButton("HowToUse", "How to &use", &PQInvest::HowToUse_Click));
  buttons->addWidget(addButton("ClearResults", "Clear &results", &PQInvest::ClearResults_Click));
  buttons->addWidget(addButton("ExitProgram", "E&xit to menu", &PQInvest::ExitProgram_Click));
  layout->addLayout(buttons);
  return side;
}

ActionMenu* PQInvest::makeActions() {
  auto* actions = new ActionMenu(this, boxFocus_, SSTab1_->tabBar(), prompts());
  const auto shown = [this] { return page(global().CurrentTab); };
  actions->onButton(Command::Print, [shown] { return shown()->printButton(); });
  actions->on(Command::Export, [this] { exportTable(); });
  actions->on(Command::Exit, [this] { ExitProgram_Click(); });
  actions->on(
      Command::Schedule, [shown] { shown()->showSchedule(); },
      [shown] { return shown()->hasSchedule(); });
  actions->onButton(Command::Help, [shown] { return shown()->helpButton(); });
  connect(SSTab1_, &QTabWidget::currentChanged, actions, &ActionMenu::refresh);
  return actions;
}

CalculatorPage* PQInvest::page(int index) {
  return pages_[static_cast<std::size_t>(index)]->page(SSTab1_->tabBar());
}

QPushButton* PQInvest::addButton(const char* name, const QString& caption,
                                 void (PQInvest::*clicked)()) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(true);  // Enter presses it, as the space bar does
  connect(button, &QPushButton::clicked, this, clicked);
  return button;
}

void PQInvest::Form_Load() {
  global().dialogs.ActiveWindow = Window::Calculators;
  global().CurrentTab = 0;
  SSTab1_->setCurrentIndex(static_cast<int>(parts_.startPage));
  connect(SSTab1_, &QTabWidget::currentChanged, this, &PQInvest::SSTab1_Click);
  SSTab1_Click(static_cast<int>(parts_.startPage));
  page(global().CurrentTab)->firstControl()->setFocus(Qt::OtherFocusReason);
}

void PQInvest::SSTab1_Click(int index) {
  Results_->clear();
  resetCalculators(global().boxes, global().reports, global().chart);
  global().CurrentTab = static_cast<std::int16_t>(index);
  CalculatorPage* const chosen = page(index);
  chosen->load();
  // Whoever walks the tabs with the keys stays on them, and what stands beside the
  // pages keeps the focus too.
  const QWidget* const now = focusWidget();
  const QWidget* const holder = pages_[static_cast<std::size_t>(index)];
  if (now == holder || (now != nullptr && holder->isAncestorOf(now)))
    chosen->firstControl()->setFocus(Qt::OtherFocusReason);
}

void PQInvest::AllGraphs_Click() {
  if (Results_->document()->isEmpty() || global().chart.ChartCount == 0)
    prompts().tell(this, Message::NothingToGraph);
  else
    parts_.showChart(this);
}

void PQInvest::HowToUse_Click() {
  show(showHelp(global().reports, howToUseHelp()));
}

void PQInvest::ClearResults_Click() {
  Results_->clear();
  clearReports(global().reports);
}

void PQInvest::ExitProgram_Click() {
  close();
}

bool PQInvest::leaveFocused() {
  return boxFocus_->leaveNow();
}

void PQInvest::click(QAbstractButton* button) {
  boxFocus_->click(button);
}

void PQInvest::moveFocusTo(QWidget* control) {
  boxFocus_->moveTo(control);
}

void PQInvest::afterClick(std::function<void()> action) {
  boxFocus_->afterClick(std::move(action));
}

void PQInvest::show(const Outcome& outcome) {
  if (outcome.showResults) {
    Results_->showReport(toQString(outcome.results));
    handedOver_ = outcome.handedOver;
    table_ = outcome.table;
  }
  if (outcome.message != Message::None) prompts().tell(this, outcome.message);
}

void PQInvest::emptyReport() {
  global().reports.ReportLines[1].clear();
  Results_->clear();
}

void PQInvest::print() {
  if (Results_->document()->isEmpty())
    prompts().tell(this, Message::CalculateBeforePrinting);
  else
    PrintReport(handedOver_ ? Results_->toPlainText() : toQString(printedReport(global().reports)),
                reportPoints(global().dialogs.ActiveWindow), parts_.printing, prompts(), this);
}

void PQInvest::exportTable() {
  std::vector<Sheet> sheets;
  QString name;
  if (!Results_->document()->isEmpty() && table_.headings != nullptr) {
    sheets.push_back(sheetOf(table_));
    name = toQString(sheets.front().name);
  }
  exportSheets(sheets, name, prompts(), this, parts_.files);
}

}  // namespace mirelund

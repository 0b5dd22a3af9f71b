// SPDX-License-Identifier: GPL-3.0-or-later
#include "insights/insights_window.h"

#include <QButtonGroup>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTabWidget>
#include <QTextDocumentFragment>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "app/box_focus.h"
#include "app/caption.h"
#include "app/export_command.h"
#include "app/report_box.h"
#include "app/tab_guard.h"
#include "base/ui_text.h"
#include "charts/chart_window.h"
#include "dialogs/prompts.h"
#include "dialogs/report_printer.h"
#include "dialogs/screen_room.h"
#include "manager/entry_edits.h"
#include "manager/manager.h"
#include "manager/short_date.h"

namespace mirelund {

namespace {

constexpr int kDateCharacters = 14;
constexpr int kReportColumns = 96;
constexpr int kReportLines = 20;

struct PageEntry {
  InsightsPage page;
  const char* caption;
  const char* name;
  const char* accessibleName;
};

constexpr auto kPages = std::to_array<PageEntry>({
    {InsightsPage::Gains, "Gai&ns", "IVGains", "Gains of the funds"},
    {InsightsPage::Return, "&Return", "IVReturn", "Annual return of the funds"},
    {InsightsPage::Years, "&Years", "IVYears", "The funds year by year"},
});
static_assert(kPages.size() == kInsightsPages.size() && standsInOrder(kPages, &PageEntry::page));

struct ZoomKey {
  QKeyCombination key;
  int steps;
};

// As in the windows with menus.
constexpr ZoomKey kZoomKeys[] = {
    {Qt::CTRL | Qt::Key_Plus, 1},
    {Qt::CTRL | Qt::Key_Equal, 1},
    {Qt::CTRL | Qt::Key_Minus, -1},
    {Qt::CTRL | Qt::Key_0, 0},
};

}  // namespace

/// A date that is shown again as it is taken.
class ValuationDateEdit : public DateEdit {
 public:
  ValuationDateEdit(BoxState& boxes, std::function<BoxLeft(std::string_view)> store,
                    QWidget* parent)
      : DateEdit(boxes, {}, parent), store_(std::move(store)) {}

 protected:
  BoxLeft store() override {
    boxes().BoxEdited = 0;
    return store_(toStdString(text()));
  }

 private:
  std::function<BoxLeft(std::string_view)> store_;
};

/// One line, which gives way to the window where it is longer: all of it is its tooltip.
class ElidedLine : public QLabel {
 public:
  explicit ElidedLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }

  void setLine(const QString& line) {
    line_ = line;
    setAccessibleName(line);
    setPlainToolTip(this, line);
    setVisible(!line.isEmpty());
    elide();
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QLabel::resizeEvent(event);
    elide();
  }
  void changeEvent(QEvent* event) override {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) elide();
  }

 private:
  void elide() { setText(fontMetrics().elidedText(line_, Qt::ElideRight, width())); }

  QString line_;
};

PQInsights::PQInsights(const Parts& parts, QWidget* over)
    : QDialog(over),
      parts_(parts),
      date_(firstDate()),
      focus_(new BoxFocus(this, [this](Message message) { tell(message); })) {
  setObjectName("PQInsights");
  setWindowTitle("Insights");
  setModal(true);
  const std::int16_t funds = parts.manager.database().FundCount;
  for (std::int16_t row = 1; row <= funds; ++row) prices_.push_back(parts.manager.price(row));

  auto* column = new QVBoxLayout(this);
  column->addLayout(makeChoices());
  sentence_ = new QLabel(this);
  sentence_->setObjectName("IVSentence");
  sentence_->setWordWrap(true);
  column->addWidget(sentence_);
  makePages();
  column->addWidget(IVTabs_, 1);
  lacking_ = new ElidedLine(this);
  lacking_->setObjectName("IVLacking");
  column->addWidget(lacking_);
  column->addLayout(makeButtons());
  makeKeys();
  recalculate();
  report()->setFocus(Qt::OtherFocusReason);
  resize(onScreen(*this, sizeHint()));
}

QLayout* PQInsights::makeChoices() {
  auto* row = new QHBoxLayout;
  const ShortDateFormat& format = parts_.manager.dateFormat();
  IVDate_ = new ValuationDateEdit(
      boxes_, [this](std::string_view text) { return leaveDate(text); }, this);
  IVDate_->setObjectName("IVDate");
  IVDate_->setCharacters(kDateCharacters);
  IVDate_->setPlaceholderText(toQString(formText(format)));
  IVDate_->setText(toQString(formatDate(date_, format)));
  const QString label = "&Date of valuation";
  auto* caption = new Caption(label, this);
  caption->setBuddy(IVDate_);
  IVDate_->setAccessibleName(QString(label).remove('&'));
  row->addWidget(caption);
  row->addWidget(IVDate_);
  connect(IVDate_, &FilteredEdit::enterPressed, this, [this] {
    leaveFocused();
    IVDate_->selectAll();
  });
  connect(focus_, &BoxFocus::left, this, [this](QWidget* control) {
    if (control == IVDate_) IVDate_Left();
  });

  methods_ = new QButtonGroup(this);
  for (const CostMethodRow& method : kCostMethods) {
    auto* option = new QRadioButton('&' + toQString(method.name), this);
    const int index = static_cast<int>(method.method);
    option->setObjectName(QString("IVMethod_%1").arg(index));
    option->setChecked(method.method == method_);
    methods_->addButton(option, index);
    row->addWidget(option);
  }
  connect(methods_, &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
    if (chosen) IVMethod_Click(index);
  });
  row->addStretch();
  return row;
}

void PQInsights::makePages() {
  IVTabs_ = new QTabWidget(this);
  IVTabs_->setObjectName("IVTabs");
  IVTabs_->setAccessibleName("Insights");
  for (const PageEntry& entry : kPages) {
    auto* box = new ReportBox(entry.name, kReportColumns, kReportLines, this);
    box->setAccessibleName(entry.accessibleName);
    reports_[static_cast<std::size_t>(entry.page)] = box;
    IVTabs_->addTab(box, entry.caption);
  }
  new TabGuard(IVTabs_, focus_);
  connect(IVTabs_, &QTabWidget::currentChanged, this, &PQInsights::IVTabs_Click);
}

QLayout* PQInsights::makeButtons() {
  auto* row = new QHBoxLayout;
  addButton(row, "IVGraph", "&Graph", &PQInsights::IVGraph_Click);
  row->addStretch();
  addButton(row, "IVPrint", "&Print", &PQInsights::IVPrint_Click);
  addButton(row, "IVExport", "&Export...", &PQInsights::IVExport_Click);
  addButton(row, "IVExit", "E&xit", &PQInsights::IVExit_Click);
  return row;
}

QPushButton* PQInsights::addButton(QHBoxLayout* row, const char* name, const QString& caption,
                                   void (PQInsights::*clicked)()) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  // None is pressed by Enter elsewhere in the window.
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, clicked);
  row->addWidget(button);
  return button;
}

void PQInsights::makeKeys() {
  for (const ZoomKey& zoom : kZoomKeys)
    connect(new QShortcut(zoom.key, this), &QShortcut::activated, this,
            [this, steps = zoom.steps] { report()->zoom(steps); });
  connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this, &PQInsights::copy);
}

// Enter presses the button in focus, and no other.
void PQInsights::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
    return QDialog::keyPressEvent(event);
  if (auto* button = qobject_cast<QPushButton*>(focusWidget())) button->click();
}

// --- what is shown --------------------------------------------------------------

InsightsAsked PQInsights::asked() const {
  return {parts_.manager.database(), prices_, date_, method_, parts_.manager.dateFormat()};
}

InsightsPage PQInsights::page() const {
  return static_cast<InsightsPage>(IVTabs_->currentIndex());
}

ReportBox* PQInsights::report() const {
  return reports_[static_cast<std::size_t>(page())];
}

void PQInsights::recalculate() {
  shown_ = showInsights(asked());
  workedOut_ = date_;
  sentence_->setText(toQString(kCostMethods[static_cast<std::size_t>(method_)].sentence));
  lacking_->setLine(toQString(shown_.lacking));
  showPage();
}

void PQInsights::showPage() {
  const QString text = toQString(shown_.reports[static_cast<std::size_t>(page())]);
  if (text == report()->toPlainText()) return;
  // Two methods, or two days, are compared at one place.
  QScrollBar* const bar = report()->verticalScrollBar();
  const int line = bar->value();
  report()->setPlainText(text);
  bar->setValue(line);
}

// --- what is chosen -------------------------------------------------------------

Date PQInsights::firstDate() const {
  return valuationDate(parts_.manager.database(), today());
}

BoxLeft PQInsights::leaveDate(std::string_view text) {
  const ShortDateFormat& format = parts_.manager.dateFormat();
  const bool empty = text.find_first_not_of(' ') == std::string_view::npos;
  const auto typed = empty ? Date() : parseDate(text, format);
  BoxLeft gone;
  if (typed)
    date_ = std::max(*typed, firstDate());
  else
    gone.message = Message::DateFormat;
  gone.refused = !typed;
  // Also what was refused gives way to the date that the reports are of.
  gone.changed = true;
  gone.text = formatDate(date_, format);
  return gone;
}

void PQInsights::IVDate_Left() {
  if (date_ == workedOut_) return;
  recalculate();
  focus_->afterClick([this] { tell(shown_.message); });
}

void PQInsights::IVMethod_Click(int index) {
  leaveFocused();
  method_ = static_cast<CostMethod>(index);
  recalculate();
  tell(shown_.message);
}

void PQInsights::IVTabs_Click(int /*index*/) {
  showPage();
}

// --------------------------------------------------------------------------------

void PQInsights::IVGraph_Click() {
  if (!leaveFocused()) return;
  const ChartView view = insightsChart(asked());
  if (view.message != Message::None) return tell(view.message);
  showChart(view, parts_.prompts, parts_.printing, this);
}

void PQInsights::IVPrint_Click() {
  if (!leaveFocused()) return;
  const QString text = report()->toPlainText();
  if (const Message refused = Manager::checkPrint(toStdString(text)); refused != Message::None)
    return tell(refused);
  if (!parts_.prompts.ask(this, Question::Print)) return;
  const auto header =
      parts_.prompts.askLine(this, toQString(kHeaderCaption), toQString(kHeaderPrompt));
  if (!header) return;
  PrintReport(header->isEmpty() ? text : *header + '\n' + text, reportPoints(Window::Manager),
              parts_.printing, parts_.prompts, this);
}

void PQInsights::IVExport_Click() {
  if (!leaveFocused()) return;
  const InsightsSheets made = insightsSheets(asked(), page());
  if (made.message != Message::None) return tell(made.message);
  // Beside the database, where that has a place.
  const QString database = fromPathBytes(parts_.manager.state().DatabasePath);
  QString name = toQString(made.sheets.front().name);
  if (!database.isEmpty()) name = QFileInfo(database).dir().filePath(name);
  exportSheets(made.sheets, name, parts_.prompts, this, parts_.files);
}

void PQInsights::IVExit_Click() {
  accept();
}

void PQInsights::copy() {
  const QString selected = report()->textCursor().selection().toPlainText();
  const QString text = selected.isEmpty() ? report()->toPlainText() : selected;
  if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}

bool PQInsights::leaveFocused() {
  return focus_->leaveNow();
}

void PQInsights::tell(Message message) {
  if (message == Message::None) return;
  parts_.global.dialogs.Details = parts_.manager.details(today());
  parts_.prompts.tell(this, message);
}

void openInsights(const PQInsights::Parts& parts, QWidget* over) {
  if (parts.prompts.cancelsAll()) return;
  auto window = std::make_unique<PQInsights>(parts, over);
  if (window->refused() != Message::None) return parts.prompts.tell(over, window->refused());
  window->setAttribute(Qt::WA_DeleteOnClose);
  window.release()->show();
}

}  // namespace mirelund

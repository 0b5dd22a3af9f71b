// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QSessionManager>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include "app/action_menu.h"
#include "app/box_focus.h"
#include "app/export_command.h"
#include "app/tab_guard.h"
#include "base/text.h"
#include "base/ui_text.h"
#include "dialogs/busy_pointer.h"
#include "dialogs/prompts.h"
#include "dialogs/report_printer.h"
#include "dialogs/screen_room.h"
#include "manager/current_value_page.h"
#include "manager/display_page.h"
#include "manager/entry_page.h"
#include "manager/file_page.h"
#include "manager/short_date.h"

namespace mirelund {

namespace {

constexpr int kOpenPage = 0;
constexpr int kEntryPage = 1;
constexpr int kSavePage = 4;
// What the window has to spare when it opens, in lines.
constexpr int kSpareLines = 10;

template <typename Page>
ManagerPage* make(ManagerHost& host) {
  return new Page(host);
}

// The one data file that is dragged; empty where it is anything else.
QString databaseIn(const QMimeData& dragged) {
  const QList<QUrl> urls = dragged.urls();
  if (urls.size() != 1) return {};
  const QString path = urls.first().toLocalFile();
  return path.endsWith(".PQD", Qt::CaseInsensitive) ? path : QString();
}

struct PageEntry {
  const char* caption;
  ManagerPage* (*make)(ManagerHost& host);
  /// The window is as large as these pages ask for: they are made with it, and no
  /// other asks for more (ManagerWindowTest.noPageAsksForMore).
  bool sizesWindow = false;
};

struct Restoring {
  Command command;
  Direction way;
};

constexpr Restoring kRestoring[] = {
    {Command::Undo, Direction::Undo},
    {Command::Redo, Direction::Redo},
};

constexpr PageEntry kPages[] = {
    {"&Open file", make<OpenPage>, true},
    {"Data &entry", make<EntryPage>, true},
    {"Display f&unds", make<DisplayPage>, true},
    {"Current &value", make<CurrentValuePage>},
    {"&Save file", make<SavePage>},
};

}  // namespace

PQManagement::PQManagement(const Parts& parts)
    : parts_(parts),
      manager_(parts.global.boxes, parts.global.reports, parts.global.chart, parts.files),
      boxFocus_(new BoxFocus(this, [this](Message message) { tell(message); })) {
  setObjectName("PQManagement");
  setAcceptDrops(true);
  manager_.setDateFormat(shortDateFormat(dateLocale()));
  manager_.DiscardDatabase();
  auto* layout = new QVBoxLayout(this);
  makePages();
  actions_ = makeActions();
  layout->setMenuBar(actions_->bar());
  layout->addWidget(SSTab2_, 1);
  layout->addLayout(makeCounters());
  connect(qApp, &QGuiApplication::commitDataRequest, this, &PQManagement::endSession,
          Qt::DirectConnection);
  Form_Load();
  const QSize roomy = sizeHint() + QSize(0, kSpareLines * fontMetrics().lineSpacing());
  resize(onScreen(*this, roomy));
}

ManagerPage* PQManagement::page(int index) {
  return pages_[static_cast<std::size_t>(index)]->page(SSTab2_->tabBar());
}

void PQManagement::makePages() {
  SSTab2_ = new QTabWidget(this);
  SSTab2_->setObjectName("SSTab2");
  SSTab2_->setAccessibleName("Investment manager");
  for (const PageEntry& entry : kPages) {
    pages_.push_back(new PageHolder<ManagerPage>([this, &entry] { return entry.make(*this); }));
    SSTab2_->addTab(pages_.back(), entry.caption);
    if (entry.sizesWindow) page(SSTab2_->count() - 1);
  }
  connect(new TabGuard(SSTab2_, boxFocus_), &TabGuard::clicked, this, &PQManagement::startFilePage);
}

QLayout* PQManagement::makeCounters() {
  auto* row = new QHBoxLayout;
  const auto add = [&](const char* name, int stretch) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    row->addWidget(label, stretch);
    return label;
  };
  ENumFunds_ = add("ENumFunds", 0);
  ENumRec_ = add("ENumRec", 0);
  EDatabase_ = add("EDatabase", 1);
  // A long name gives way to the window, not the window to the name.
  EDatabase_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  row->setSpacing(4 * fontMetrics().averageCharWidth());
  return row;
}

void PQManagement::Form_Load() {
  global().dialogs.ActiveWindow = Window::Manager;
  showCounters();
  SSTab2_->setCurrentIndex(kEntryPage);
  connect(SSTab2_, &QTabWidget::currentChanged, this, &PQManagement::SSTab2_Click);
  page(kEntryPage)->shown();
  page(kEntryPage)->firstControl()->setFocus(Qt::OtherFocusReason);
}

void PQManagement::SSTab2_Click(int index) {
  manager_.leaveEntryPage();
  ManagerPage* chosen = page(index);
  chosen->shown();
  actions_->refresh();
  // Whoever walks the tabs with the keys stays on them.
  if (!SSTab2_->tabBar()->hasFocus()) chosen->firstControl()->setFocus(Qt::OtherFocusReason);
}

ActionMenu* PQManagement::makeActions() {
  auto* actions = new ActionMenu(this, boxFocus_, SSTab2_->tabBar(), prompts());
  const auto filePage = [this](int index) { return static_cast<FilePage*>(page(index)); };
  const auto savePage = [this] { return static_cast<SavePage*>(page(kSavePage)); };
  actions->on(Command::Open, [filePage] { filePage(kOpenPage)->start(); });
  actions->on(Command::Save, [savePage] { savePage()->saveAgain(); });
  actions->on(Command::SaveAs, [savePage] { savePage()->start(); });
  const auto shown = [this] { return page(SSTab2_->currentIndex()); };
  actions->onButton(Command::Print, [shown] { return shown()->printButton(); });
  actions->on(
      Command::Export, [shown] { shown()->exportShown(); },
      [shown] { return shown()->printButton() != nullptr; });
  actions->on(Command::Exit, [this] { leave(); });
  // A box takes the keys for its own typing.
  for (const Restoring& each : kRestoring)
    actions->on(
        each.command, [this, way = each.way] { restore(way); },
        [this, way = each.way] { return manager_.canRestore(way); });
  actions->on(Command::Insights, [this] { parts_.showInsights(this, manager_); });
  actions->onButton(Command::Help, [shown] { return shown()->helpButton(); });
  return actions;
}

void PQManagement::startFilePage(int index) {
  if (auto* file = qobject_cast<FilePage*>(page(index))) file->start();
}

void PQManagement::restore(Direction way) {
  const QPointer<QWidget> focus = boxFocus_->inside();
  Restored restored;
  {
    const BusyPointer busy;
    restored = manager_.restore(way);
  }
  if (!restored.outcome.showResults) return tell(restored.outcome.message);
  showCounters();
  ManagerPage* chosen = page(SSTab2_->currentIndex());
  chosen->restored(restored);
  // The control that had the focus may have gone with what was restored.
  if (focus == nullptr || !focus->isVisible() || !focus->isEnabled())
    chosen->firstControl()->setFocus(Qt::OtherFocusReason);
}

// --- leaving --------------------------------------------------------------------

void PQManagement::closeEvent(QCloseEvent* event) {
  Form_QueryUnload(event);
}

void PQManagement::Form_QueryUnload(QCloseEvent* event) {
  leaveFocused();
  event->setAccepted(mayDiscard());
  if (event->isAccepted()) manager_.DiscardDatabase();
}

void PQManagement::dragEnterEvent(QDragEnterEvent* event) {
  if (!databaseIn(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void PQManagement::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  // The program that it comes from waits until the drop is over.
  QTimer::singleShot(0, this, [this, path = databaseIn(*event->mimeData())] {
    if (QApplication::activeModalWidget() == nullptr)
      qobject_cast<OpenPage*>(page(kOpenPage))->open(path);
  });
}

bool PQManagement::keepsSession(const std::function<bool()>& mayAsk) {
  return manager_.mustAskBeforeDiscarding() && mayAsk() && !close();
}

void PQManagement::endSession(QSessionManager& session) {
  if (keepsSession([&] { return session.allowsInteraction(); })) session.cancel();
  session.release();
}

bool PQManagement::mayDiscard() {
  return !manager_.mustAskBeforeDiscarding() || !ask(Question::DiscardChanges, {});
}

void PQManagement::leave() {
  close();
}

// --- what pages ask for ---------------------------------------------------------

bool PQManagement::leaveFocused() {
  return boxFocus_->leaveNow();
}

void PQManagement::tell(Message message) {
  if (message == Message::None) return;
  global().dialogs.Details = manager_.details(today());
  prompts().tell(this, message);
}

bool PQManagement::ask(Question question, const std::string& recordNumber) {
  global().dialogs.Details = manager_.details(today());
  global().dialogs.Details.recordNumber = recordNumber;
  return prompts().ask(this, question);
}

void PQManagement::showCounters() {
  ENumFunds_->setText(toQString(manager_.fundsText()));
  ENumRec_->setText(toQString(manager_.recordsText()));
  EDatabase_->setText(toQString(manager_.databaseText()));
  for (const Restoring& each : kRestoring)
    actions_->action(each.command)->setText(toQString(manager_.stepText(each.way)));
  actions_->refresh();
  showTitle();
}

void PQManagement::showTitle() {
  // The toolkit puts its mark of changes at "[*]", and reads a doubled one as text.
  constexpr char kMark[] = "[*]";
  QString name = toQString(displayText(manager_.state().DatabaseName));
  name.replace(kMark, QString(kMark) + kMark);
  const QString caption = "Investment manager";
  setWindowTitle(name.isEmpty() ? caption + kMark : name + kMark + " - " + caption);
  setWindowModified(manager_.state().FileChanged != 0);
}

void PQManagement::showEntryPage() {
  if (SSTab2_->currentIndex() == kEntryPage)
    SSTab2_Click(kEntryPage);
  else
    SSTab2_->setCurrentIndex(kEntryPage);
}

void PQManagement::showChart() {
  parts_.showChart(this);
}

void PQManagement::print(QString report) {
  const std::string text = toStdString(report.replace("\n", toQString(NewLine)));
  if (const Message refused = Manager::checkPrint(text); refused != Message::None)
    return tell(refused);
  if (!ask(Question::Print, {})) return;
  const auto header = prompts().askLine(this, toQString(kHeaderCaption), toQString(kHeaderPrompt));
  if (!header) return;
  manager_.preparePrint(toStdString(*header), text);
  PrintReport(toQString(printedReport(global().reports)),
              reportPoints(global().dialogs.ActiveWindow), parts_.printing, prompts(), this);
}

void PQManagement::exportReport(const SheetMade& report) {
  if (report.message != Message::None) return tell(report.message);
  // Beside the database, where that has a place.
  const QString database = fromPathBytes(manager_.state().DatabasePath);
  QString name = report.sheets.empty() ? QString() : toQString(report.sheets.front().name);
  if (!database.isEmpty()) name = QFileInfo(database).dir().filePath(name);
  exportSheets(report.sheets, name, prompts(), this, parts_.files);
}

}  // namespace mirelund

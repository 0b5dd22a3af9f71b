// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/action_menu.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTextDocumentFragment>
#include <utility>

#include "app/box_focus.h"
#include "app/guide.h"
#include "app/report_box.h"
#include "base/table.h"

namespace mirelund {

namespace {

enum class Menu : std::uint8_t { File, Edit, View, Help };

struct MenuRow {
  Menu menu;
  const char* name;
  const char* caption;
};

constexpr auto kMenus = std::to_array<MenuRow>({
    {Menu::File, "MenuFile", "File"},
    {Menu::Edit, "MenuEdit", "Edit"},
    {Menu::View, "MenuView", "View"},
    {Menu::Help, "MenuHelp", "Help"},
});
static_assert(standsInOrder(kMenus, &MenuRow::menu));

struct CommandRow {
  Command command;
  Menu menu;
  bool startsGroup;
  const char* name;
  const char* text;
  QKeyCombination key = {};
  QKeyCombination otherKey = {};
};

using enum Command;
constexpr auto kShift = Qt::CTRL | Qt::SHIFT;

constexpr auto kRows = std::to_array<CommandRow>({
    {Open, Menu::File, false, "ActionOpen", "Open...", Qt::CTRL | Qt::Key_O},
    {Save, Menu::File, false, "ActionSave", "Save", Qt::CTRL | Qt::Key_S},
    {SaveAs, Menu::File, false, "ActionSaveAs", "Save as...", kShift | Qt::Key_S},
    {Print, Menu::File, true, "ActionPrint", "Print...", Qt::CTRL | Qt::Key_P},
    {Export, Menu::File, false, "ActionExport", "Export...", Qt::CTRL | Qt::Key_E},
    {Exit, Menu::File, true, "ActionExit", "Exit to menu", Qt::CTRL | Qt::Key_W},
    {Undo, Menu::Edit, false, "ActionUndo", "Undo", Qt::CTRL | Qt::Key_Z},
    {Redo, Menu::Edit, false, "ActionRedo", "Redo", kShift | Qt::Key_Z},
    {Copy, Menu::Edit, true, "ActionCopy", "Copy", Qt::CTRL | Qt::Key_C},
    {ZoomIn, Menu::View, false, "ActionZoomIn", "Larger report text", Qt::CTRL | Qt::Key_Plus,
     Qt::CTRL | Qt::Key_Equal},
    {ZoomOut, Menu::View, false, "ActionZoomOut", "Smaller report text", Qt::CTRL | Qt::Key_Minus},
    {ZoomReset, Menu::View, false, "ActionZoomReset", "Usual report text", Qt::CTRL | Qt::Key_0},
    {Schedule, Menu::View, true, "ActionSchedule", "Payment schedule...", Qt::CTRL | Qt::Key_T},
    {Insights, Menu::View, true, "ActionInsights", "Insights...", Qt::CTRL | Qt::Key_I},
    {Help, Menu::Help, false, "ActionHelp", "Help on this page", Qt::Key_F1},
    {Guide, Menu::Help, false, "ActionGuide", "Guide"},
    {About, Menu::Help, true, "ActionAbout", "About Mirelund"},
});
static_assert(kRows.size() == kCommands && standsInOrder(kRows, &CommandRow::command));

QList<QKeySequence> keysOf(const CommandRow& row) {
  QList<QKeySequence> keys;
  for (const QKeyCombination key : {row.key, row.otherKey})
    if (key.key() != Qt::Key()) keys << key;
  return keys;
}

}  // namespace

ActionMenu::ActionMenu(QWidget* window, BoxFocus* focus, QWidget* elsewhere, Prompts& prompts)
    : QObject(window), window_(window), focus_(focus), elsewhere_(elsewhere) {
  const auto reported = [this] { return hasReport(); };
  on(
      Command::Copy, [this] { copy(); }, reported);
  on(
      Command::ZoomIn, [this] { zoom(1); }, reported);
  on(
      Command::ZoomOut, [this] { zoom(-1); }, reported);
  on(
      Command::ZoomReset, [this] { zoom(0); }, reported);
  on(Command::Guide, [this, &prompts] { showGuide(prompts, window_); });
  on(Command::About, [this, &prompts] { showAbout(prompts, window_); });
}

void ActionMenu::on(Command command, std::function<void()> run, std::function<bool()> possible) {
  entry(command).run = std::move(run);
  entry(command).possible = std::move(possible);
}

void ActionMenu::onButton(Command command, const std::function<QAbstractButton*()>& button) {
  on(
      command, [button] { button()->click(); }, [button] { return button() != nullptr; });
}

QMenuBar* ActionMenu::bar() {
  bar_ = new QMenuBar(window_);
  bar_->setObjectName("MenuBar");
  // One that lives elsewhere on the desktop would not be reached by F10.
  bar_->setNativeMenuBar(false);
  std::array<QMenu*, kMenus.size()> menus{};
  for (const MenuRow& row : kMenus) {
    auto* menu = bar_->addMenu(row.caption);
    menu->setObjectName(row.name);
    connect(menu, &QMenu::aboutToShow, this, &ActionMenu::refresh);
    menus[static_cast<std::size_t>(row.menu)] = menu;
  }
  for (const CommandRow& row : kRows) {
    Entry& made = entry(row.command);
    if (!made.run) continue;
    QMenu* menu = menus[static_cast<std::size_t>(row.menu)];
    if (row.startsGroup && !menu->isEmpty()) menu->addSeparator();
    made.action = menu->addAction(row.text);
    made.action->setObjectName(row.name);
    made.action->setShortcuts(keysOf(row));
    connect(made.action, &QAction::triggered, this,
            [this, command = row.command] { trigger(command); });
  }
  connect(new QShortcut(Qt::Key_F10, window_), &QShortcut::activated, this, &ActionMenu::open);
  refresh();
  return bar_;
}

void ActionMenu::refresh() {
  for (const Entry& each : entries_)
    if (each.action != nullptr && each.possible) each.action->setEnabled(each.possible());
}

QAction* ActionMenu::action(Command command) const {
  return entries_[static_cast<std::size_t>(command)].action;
}

void ActionMenu::trigger(Command command) {
  selected_ = selection();
  if (!focus_->leaveNow()) return focus_->moveOn(elsewhere_);
  const Entry& chosen = entry(command);
  if (!chosen.possible || chosen.possible()) chosen.run();
}

void ActionMenu::open() {
  QAction* const first = bar_->actions().front();
  bar_->setActiveAction(first);
  for (QAction* command : first->menu()->actions()) {
    if (!command->isEnabled()) continue;
    first->menu()->setActiveAction(command);
    break;
  }
}

ReportBox* ActionMenu::report() const {
  for (auto* box : window_->findChildren<ReportBox*>())
    if (box->isVisibleTo(window_)) return box;
  return nullptr;
}

void ActionMenu::zoom(int steps) {
  report()->zoom(steps);
}

QString ActionMenu::selection() const {
  if (const auto* box = qobject_cast<QLineEdit*>(focus_->inside());
      box != nullptr && box->hasSelectedText())
    return box->selectedText();
  if (const auto* result = qobject_cast<QLabel*>(focus_->inside());
      result != nullptr && result->hasSelectedText())
    return result->selectedText();
  const ReportBox* shown = report();
  return shown == nullptr ? QString() : shown->textCursor().selection().toPlainText();
}

void ActionMenu::copy() {
  const QString text = selected_.isEmpty() ? report()->toPlainText() : selected_;
  if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}

}  // namespace mirelund

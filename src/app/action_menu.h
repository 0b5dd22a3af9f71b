// SPDX-License-Identifier: GPL-3.0-or-later
// The menu bar of a window and the commands in it.
//
//     File           Edit            View                Help
//     ActionOpen     ActionUndo      ActionZoomIn        ActionHelp
//     ActionSave     ActionRedo      ActionZoomOut       ActionGuide
//     ActionSaveAs   ActionCopy      ActionZoomReset     ActionAbout
//     ActionPrint                    ActionSchedule
//     ActionExport                   ActionInsights
//     ActionExit
//
// A window has those that mean something in it.
#pragma once

#include <QObject>
#include <QPointer>
#include <array>
#include <cstdint>
#include <functional>

class QAbstractButton;
class QAction;
class QMenuBar;
class QWidget;

namespace mirelund {

class BoxFocus;
class Prompts;
class ReportBox;

enum class Command : std::uint8_t {
  Open,
  Save,
  SaveAs,
  Print,
  Export,
  Exit,
  Undo,
  Redo,
  Copy,
  ZoomIn,
  ZoomOut,
  ZoomReset,
  Schedule,
  Insights,
  Help,
  Guide,
  About,
};
inline constexpr std::size_t kCommands = 17;

/// Commands by key and menu. The bar is opened by F10; no caption has a mnemonic, so
/// that each Alt key keeps the button that it has. Whatever is chosen, the focused box
/// is left first; a value that it refuses is told and nothing else happens, but the
/// focus has gone on to the tabs then, so that who chooses again means it.
///
/// Copy, the zooms of View and all of Help but the page's own are the same in every
/// window. Copy copies what is selected in the box in focus or in the report, else the
/// report.
class ActionMenu : public QObject {
  Q_OBJECT

 public:
  /// `elsewhere` takes the focus from a box whose value was refused.
  ActionMenu(QWidget* window, BoxFocus* focus, QWidget* elsewhere, Prompts& prompts);

  /// Makes a command do something, as long as `possible` says so, which is asked by
  /// refresh and before its menu is shown. To be called before `bar`.
  void on(Command command, std::function<void()> run, std::function<bool()> possible = {});
  /// A command that clicks the button of the page in view that `button` returns, and
  /// is impossible where there is none.
  void onButton(Command command, const std::function<QAbstractButton*()>& button);

  /// Makes the bar, which belongs to the window.
  QMenuBar* bar();

  /// The page, or what its commands act on, is another now.
  void refresh();

  /// The action of a command; null where the window does not have it.
  QAction* action(Command command) const;

 private:
  struct Entry {
    QAction* action = nullptr;
    std::function<void()> run;
    std::function<bool()> possible;
  };

  Entry& entry(Command command) { return entries_[static_cast<std::size_t>(command)]; }
  void trigger(Command command);
  void open();
  ReportBox* report() const;
  bool hasReport() const { return report() != nullptr; }
  void zoom(int steps);
  QString selection() const;
  void copy();

  QWidget* window_;
  BoxFocus* focus_;
  QWidget* elsewhere_;
  QMenuBar* bar_ = nullptr;
  std::array<Entry, kCommands> entries_;
  QString selected_;  ///< as it was before the box was left
};

}  // namespace mirelund

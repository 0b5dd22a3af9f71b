// SPDX-License-Identifier: GPL-3.0-or-later
// Plays the calculator window as a person does: a tab chosen, boxes typed into,
// lists and options chosen, buttons pressed, all by mouse and keys. A script file:
//
//   # what rule it shows, and where the expected numbers come from
//   page CapitalRequired          a click on its tab, which starts the page afresh
//   CRInCapitalReq = 50000        typed into a box, or chosen in a list
//   click CRCapitalChoices_1      an option button
//   press CRCalculate
//   message 3                     told by then, of the message table
//   platform Payment is ...       told by then, in the platform's message box
//   ----
//   the exact text of the Results box, each line end a single line feed
//
// A box, a list or an option is left before the next line: by a click into the
// report box, where nothing is entered and nothing is left.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <stdexcept>

#include "ui_testing.h"

namespace mirelund::testing {

/// What a person at the window could not have done, or was not told.
class NotPlayed : public std::runtime_error {
 public:
  NotPlayed(const QString& what, const QString& about)
      : std::runtime_error((what + ": " + about).toStdString()) {}
};

/// One program with its calculator window open. Whatever names a control that is
/// not on the page in front throws NotPlayed.
class PagePlayer {
 public:
  PagePlayer();

  /// Starts the page afresh, also where it is in front already; no control of it
  /// has the focus then.
  void choosePage(const QString& name);

  /// Clicks into the box and types the keys; they go where the focus is then, which
  /// a message about the box before may have kept.
  void type(const QString& box, const QString& keys);
  /// Opens the list, walks to the item and takes it.
  void choose(const QString& list, const QString& item);
  /// Clicks the option button; one that is off stays as it is.
  void click(const QString& option);
  /// Clicks into the report box.
  void leave();
  /// Strikes a key wherever the focus is.
  void strike(Qt::Key key);
  void press(const QString& button);

  /// What was told since it was asked last, in order: "message N" or "platform TEXT".
  QStringList takeTold();
  QString results() const;

  /// The controls of a kind that the page in front shows.
  template <typename Widget>
  QList<Widget*> shown() const {
    QList<Widget*> found = frontPage()->findChildren<Widget*>();
    found.removeIf([](Widget* widget) { return !widget->isVisible(); });
    return found;
  }
  /// The control of the window; null where it has none of this name and kind.
  template <typename Widget>
  Widget* find(const QString& name) const {
    return window_->findChild<Widget*>(name);
  }

 private:
  template <typename Widget>
  Widget* inFront(const QString& name) const;
  QWidget* frontPage() const;
  void clickOn(QWidget* control);
  void gather();

  ProgramFixture program_;
  QWidget* window_ = nullptr;
  QStringList told_;
};

/// A script file's two parts.
struct ScriptFile {
  explicit ScriptFile(const QString& path);

  QString script;
  QString results;  ///< to the end of the file
};

/// Plays the script and returns the text of the Results box. Throws NotPlayed for
/// a line that is not understood, a control that takes no such input, and a
/// message that was told but not announced, or announced but not told.
QString playScript(PagePlayer& player, const QString& script);

}  // namespace mirelund::testing

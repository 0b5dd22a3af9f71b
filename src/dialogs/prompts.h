// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that stops the program to tell or ask the person something.
#pragma once

#include <QString>
#include <optional>

#include "dialogs/messages.h"

class QWidget;

namespace mirelund {

/// Handed to the windows, so that a test can answer in the person's place.
/// `over` is the window in use; each dialog has it as its parent.
class Prompts {
 public:
  virtual ~Prompts() = default;

  /// The program is about to end: nothing is shown any more, whatever is asked is
  /// cancelled, and no printout begins.
  virtual bool cancelsAll() const { return false; }

  /// Shows a message of the program.
  virtual void tell(QWidget* over, Message message) = 0;
  /// Shows a text in the platform's own message box.
  virtual void warn(QWidget* over, const QString& text) = 0;
  /// The same for what is no warning, under a title of its own.
  virtual void inform(QWidget* over, const QString& title, const QString& text) = 0;
  /// Opens a page of the disk in the desktop's own browser; false where it has none.
  virtual bool browse(const QString& path) = 0;
  /// Asks in the platform's own message box; true for the button `accept`. The
  /// other is Cancel, the default.
  virtual bool confirm(QWidget* over, const QString& text, const QString& accept) = 0;
  /// Asks a question of the program; true for yes.
  virtual bool ask(QWidget* over, Question question) = 0;
  /// Asks for one line of text; nothing when cancelled. A line of exactly "1" is a
  /// cancel too.
  virtual std::optional<QString> askLine(QWidget* over, const QString& caption,
                                         const QString& prompt) = 0;
  /// Asks for a record number; nothing when cancelled.
  virtual std::optional<int> askRecordNumber(QWidget* over, const QString& prompt) = 0;
  /// Asks for a file to open or to save to; empty when cancelled. A name to save to
  /// gets the filter's ending where it has none, and is asked about if it exists. Where
  /// there are several filters, "One (*.one);;Other (*.other)", it has one of their
  /// endings in the end: the one that it was typed with, else that of the filter chosen.
  virtual QString askOpenPath(QWidget* over, const QString& title, const QString& initial,
                              const QString& filter) = 0;
  virtual QString askSavePath(QWidget* over, const QString& title, const QString& initial,
                              const QString& filter) = 0;
};

}  // namespace mirelund

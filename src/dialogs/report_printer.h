// SPDX-License-Identifier: GPL-3.0-or-later
// Reports on paper: fixed-pitch lines, drawn one by one; and pictures.
#pragma once

#include <QString>
#include <functional>
#include <memory>

class QPagedPaintDevice;
class QPainter;
class QWidget;

namespace mirelund {

class Prompts;

/// What is being printed.
class Printout {
 public:
  virtual ~Printout() = default;

  /// The pages, to be drawn on.
  virtual QPagedPaintDevice& pages() = 0;
  /// Hands over what was drawn, whole. Returns what went wrong; empty for nothing.
  virtual QString finish(bool drawn) = 0;
};

/// A PDF, which takes the place of the file `path` when it is whole and in no other
/// case (base/file_store.h).
std::unique_ptr<Printout> printoutToPdf(const QString& path, const QString& title);

/// Where printouts go; handed to the windows.
class PrintTarget {
 public:
  virtual ~PrintTarget() = default;

  /// What is to be drawn on, or null when the person cancelled. `suggestedName`
  /// names the document and, where it becomes a file, the file.
  virtual std::unique_ptr<Printout> open(QWidget* over, const QString& suggestedName) = 0;
};

/// The system's default printer; where the system has none, a PDF file that the
/// person chooses.
class SystemPrintTarget : public PrintTarget {
 public:
  explicit SystemPrintTarget(Prompts& prompts) : prompts_(prompts) {}

  std::unique_ptr<Printout> open(QWidget* over, const QString& suggestedName) override;

 private:
  Prompts& prompts_;
};

/// Prints a report behind two empty lines, in "Courier New" of so many points. The
/// page turns to landscape where its lines are too long for portrait; a line too
/// long for that is continued on the next. A heading and its first lines stay on one
/// page (dialogs/page_breaks.h). What goes wrong is told; false then, and when the
/// person cancelled.
bool PrintReport(const QString& report, int points, PrintTarget& target, Prompts& prompts,
                 QWidget* over);

/// What is drawn at the top of a page, by the painter that goes with it.
struct PrintedPicture {
  double widthMm;
  bool color;                              ///< else it is for `draw` to use greys alone
  std::function<void(double width)> draw;  ///< so many of the painter's units wide
};

/// Prints a picture, images in it without loss. The caller's painter, not begun yet,
/// is the page's while `draw` runs. What goes wrong is told.
bool printPicture(const PrintedPicture& picture, QPainter& painter, PrintTarget& target,
                  Prompts& prompts, QWidget* over);

}  // namespace mirelund

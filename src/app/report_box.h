// SPDX-License-Identifier: GPL-3.0-or-later
// A box that shows fixed-width reports: read-only, monospaced, selectable.
#pragma once

#include <QPlainTextEdit>

namespace mirelund {

/// Its text is as large as the desktop's, until it is zoomed.
class ReportBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  /// Shows `columns` characters and `lines` lines where there is room; it scrolls
  /// where there is less.
  ReportBox(const char* name, int columns, int lines, QWidget* parent = nullptr);

  /// Makes the text of every report box of the window so many points larger, or
  /// smaller; 0 makes it as large as the desktop's. Boxes that are made later are as
  /// the others are. What a box asks of its layout stays as it is.
  void zoom(int steps);

  /// Shows a report, or a help. Where it goes on from the one shown before, what is new
  /// is in view: all of it or, where it is taller than the box, its first lines.
  void showReport(const QString& report);

  /// How wide it is to show so many characters of a line.
  int widthOf(int columns) const;

  QSize sizeHint() const override { return sizeOf(columns_, lines_); }
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  /// The toolkit lets a composed text into a box that takes no typing.
  void inputMethodEvent(QInputMethodEvent* event) override;
  /// With Ctrl held a notch of the wheel is a step.
  void wheelEvent(QWheelEvent* event) override;

 private:
  void takeZoom();
  /// Frame, margins and a scroll bar.
  int edges() const;
  QSize sizeOf(int columns, int lines) const;

  int columns_;
  int lines_;
  int steps_ = 0;
  /// What the wheel has turned of the next step, in eighths of a degree.
  int turned_ = 0;
};

}  // namespace mirelund

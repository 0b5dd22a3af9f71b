// SPDX-License-Identifier: GPL-3.0-or-later
// A box that shows fixed-width reports: read-only, monospaced, selectable.
#pragma once

#include <QPlainTextEdit>

namespace mirelund {

class ReportBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  /// Shows `columns` characters and `lines` lines where there is room; it scrolls
  /// where there is less.
  ReportBox(const char* name, int columns, int lines, QWidget* parent = nullptr);

  /// Makes the text so many points larger, or smaller; 0 makes it as it was.
  void zoom(int steps);

  QSize sizeHint() const override { return sizeOf(columns_, lines_); }
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;

 private:
  QSize sizeOf(int columns, int lines) const;

  int columns_;
  int lines_;
  int steps_ = 0;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// A box that shows fixed-width reports: read-only, monospaced, selectable.
#pragma once

#include <QPlainTextEdit>

namespace mirelund {

class ReportBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  /// At least `columns` characters wide and `lines` lines high.
  ReportBox(const char* name, int columns, int lines, QWidget* parent = nullptr);
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/report_box.h"

#include <QScrollBar>
#include <QStyle>

namespace mirelund {

ReportBox::ReportBox(const char* name, int columns, int lines, QWidget* parent)
    : QPlainTextEdit(parent), columns_(columns), lines_(lines) {
  setObjectName(name);
  setAccessibleName("Results");
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setTabChangesFocus(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

  QFont fixed("Courier New", 10);
  fixed.setStyleHint(QFont::TypeWriter);
  fixed.setFixedPitch(true);
  setFont(fixed);
}

QSize ReportBox::sizeOf(int columns, int lines) const {
  const QFontMetricsF metrics(font());
  const int frame = 2 * (frameWidth() + static_cast<int>(document()->documentMargin())) +
                    style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  return {static_cast<int>(metrics.horizontalAdvance('0') * (columns + 1)) + frame,
          static_cast<int>(metrics.lineSpacing() * lines) + frame};
}

QSize ReportBox::minimumSizeHint() const {
  constexpr int kLeastColumns = 24;
  constexpr int kLeastLines = 6;
  return sizeOf(kLeastColumns, kLeastLines);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/report_box.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "app/accessible.h"

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
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    if (document()->isEmpty()) return;
    announce(this, QString("%1: new text, %2 lines").arg(accessibleName()).arg(blockCount()));
  });
}

void ReportBox::zoom(int steps) {
  constexpr int kUsual = 10;
  constexpr int kMostSteps = 40;
  steps_ = steps == 0 ? 0 : std::clamp(steps_ + steps, -kUsual / 2, kMostSteps);
  QFont zoomed = font();
  zoomed.setPointSize(kUsual + steps_);
  setFont(zoomed);
}

bool ReportBox::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    // They are the window's: nothing is edited here.
    const auto* key = static_cast<QKeyEvent*>(event);
    for (const auto command : {QKeySequence::Undo, QKeySequence::Redo, QKeySequence::Copy})
      if (key->matches(command)) return false;
  }
  return QPlainTextEdit::event(event);
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

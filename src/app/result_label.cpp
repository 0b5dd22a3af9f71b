// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/result_label.h"

#include <QFocusEvent>

#include "app/filtered_edit.h"

namespace mirelund {

ResultLabel::ResultLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFocusPolicy(Qt::StrongFocus);
  QPalette colors = palette();
  colors.setColor(QPalette::Window, Qt::white);
  colors.setColor(QPalette::WindowText, Qt::black);
  colors.setColor(QPalette::Highlight, kSelectionBlue);
  colors.setColor(QPalette::HighlightedText, Qt::white);
  setPalette(colors);
  setAutoFillBackground(true);
}

void ResultLabel::focusInEvent(QFocusEvent* event) {
  QLabel::focusInEvent(event);
  if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
    setSelection(0, static_cast<int>(text().size()));
}

void ResultLabel::focusOutEvent(QFocusEvent* event) {
  QLabel::focusOutEvent(event);
  // A window or a menu that takes the focus for a while leaves what is to be copied.
  if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
    setSelection(0, 0);
}

}  // namespace mirelund

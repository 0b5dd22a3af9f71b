// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/drop_down.h"

#include <QKeyEvent>
#include <QWheelEvent>

#include "app/filtered_edit.h"
#include "app/readable_palette.h"

namespace mirelund {

DropDown::DropDown(const char* name, const QString& initialText, QWidget* parent)
    : QComboBox(parent) {
  setObjectName(name);
  setPlaceholderText(initialText);
  // A name can be as long as it likes; the list stays as wide as its first text.
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(static_cast<int>(initialText.size()));
  QPalette colors = palette();
  // While the list is locked it lies flat, and what is chosen is dimmed but readable.
  constexpr float kDimmed = 0.33F;
  const QColor ground = colors.color(QPalette::Active, QPalette::Window);
  colors.setColor(QPalette::Disabled, QPalette::Button, ground);
  colors.setColor(QPalette::Disabled, QPalette::ButtonText,
                  between(colors.color(QPalette::Active, QPalette::ButtonText), ground, kDimmed));
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    colors.setColor(group, QPalette::Button, kInputGreen);
    colors.setColor(group, QPalette::ButtonText, Qt::black);
    colors.setColor(group, QPalette::PlaceholderText, Qt::black);
  }
  setPalette(colors);
}

void DropDown::focusInEvent(QFocusEvent* event) {
  // The style shows where the focus is from the first Tab on; it is also moved here.
  if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason)
    window()->setAttribute(Qt::WA_KeyboardFocusChange);
  QComboBox::focusInEvent(event);
}

void DropDown::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      emit keyDown(Qt::Key_Return);
      break;
    case Qt::Key_Delete:
      emit keyDown(Qt::Key_Delete);
      break;
    default:
      QComboBox::keyPressEvent(event);
  }
}

void DropDown::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
// A list to choose from, closed until it is asked for.
#pragma once

#include <QComboBox>

namespace mirelund {

/// Green like the boxes while it takes input. The wheel does not turn it: a row
/// half typed would be gone with what was chosen.
class DropDown : public QComboBox {
  Q_OBJECT

 public:
  /// `initialText` is shown while nothing is chosen.
  DropDown(const char* name, const QString& initialText, QWidget* parent = nullptr);

 signals:
  /// Enter or Delete, pressed while the list is closed.
  void keyDown(int key);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace mirelund

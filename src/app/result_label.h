// SPDX-License-Identifier: GPL-3.0-or-later
// A white field that shows a result: nothing is typed into it.
#pragma once

#include <QLabel>

namespace mirelund {

/// A stop of Tab, where its text is read, and selected for copying.
class ResultLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ResultLabel(QWidget* parent = nullptr);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace mirelund

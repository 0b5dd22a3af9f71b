// SPDX-License-Identifier: GPL-3.0-or-later
// A label of a plain text that does not wrap, measured once.
#pragma once

#include <QLabel>

namespace mirelund {

/// The toolkit's label measures its text several times for each question of its
/// layout, as if it might wrap, which is much of what opening a window of many
/// labels takes. Its size is the toolkit's.
class Caption : public QLabel {
  Q_OBJECT

 public:
  explicit Caption(const QString& text, QWidget* parent = nullptr);

  QSize sizeHint() const override { return minimumSizeHint(); }
  QSize minimumSizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  mutable QString measured_;
  mutable QSize size_;
};

}  // namespace mirelund

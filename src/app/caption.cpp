// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/caption.h"

#include <QEvent>

namespace mirelund {

Caption::Caption(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
}

QSize Caption::minimumSizeHint() const {
  ensurePolished();
  if (!size_.isValid() || measured_ != text()) {
    measured_ = text();
    const bool hasMnemonic = buddy() != nullptr && measured_.contains('&');
    size_ = fontMetrics().size(hasMnemonic ? Qt::TextShowMnemonic : 0, measured_);
  }
  return size_;
}

void Caption::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) size_ = {};
  QLabel::changeEvent(event);
}

}  // namespace mirelund

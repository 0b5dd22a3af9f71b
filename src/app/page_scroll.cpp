// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/page_scroll.h"

#include <QApplication>

namespace mirelund {

PageScroll::PageScroll(QWidget* page, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setWidget(page);
  // The ground is that of what stands around it.
  page->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*before*/, QWidget* focused) { follow(focused); });
}

PageScroll::~PageScroll() {
  disconnect(qApp, nullptr, this, nullptr);
}

QSize PageScroll::sizeHint() const {
  return widget()->sizeHint();
}

QSize PageScroll::minimumSizeHint() const {
  constexpr int kLeastCharacters = 24;
  constexpr int kLeastLines = 6;
  return {kLeastCharacters * fontMetrics().averageCharWidth(),
          kLeastLines * fontMetrics().lineSpacing()};
}

void PageScroll::follow(QWidget* focused) {
  if (focused == nullptr || !widget()->isAncestorOf(focused)) return;
  if (QGuiApplication::mouseButtons() != Qt::NoButton) return;
  // All of it or, where there is less room, its beginning.
  constexpr int kAround = 8;
  const QRect place(focused->mapTo(widget(), QPoint()), focused->size());
  ensureVisible(place.right(), place.bottom(), kAround, kAround);
  ensureVisible(place.left(), place.top(), kAround, kAround);
}

}  // namespace mirelund

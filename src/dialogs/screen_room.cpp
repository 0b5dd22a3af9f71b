// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/screen_room.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

namespace mirelund {

QSize onScreen(const QWidget& window, QSize wanted) {
  constexpr QSize kUsualFrame(16, 40);
  QSize frame;
  for (const QWidget* seen : QApplication::topLevelWidgets())
    if (seen->isVisible() && (seen->windowType() == Qt::Window || seen->windowType() == Qt::Dialog))
      frame = frame.expandedTo(seen->frameGeometry().size() - seen->size());
  if (frame.isEmpty()) frame = kUsualFrame;
  return wanted.boundedTo(window.screen()->availableSize() - frame);
}

}  // namespace mirelund

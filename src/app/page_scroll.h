// SPDX-License-Identifier: GPL-3.0-or-later
// What a page scrolls in where the window has no room for it.
#pragma once

#include <QScrollArea>

namespace mirelund {

/// Asks for the room that its page asks for, and takes less. A control that gets the
/// focus by the keys, or by the program, is scrolled into view; what is clicked stays
/// under the mouse.
class PageScroll : public QScrollArea {
  Q_OBJECT

 public:
  explicit PageScroll(QWidget* page, QWidget* parent = nullptr);
  /// What goes with the page gives its focus up when this follows none any more.
  ~PageScroll() override;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  void follow(QWidget* focused);
};

}  // namespace mirelund

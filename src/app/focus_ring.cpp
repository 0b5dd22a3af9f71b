// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/focus_ring.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QTabBar>

namespace mirelund {

namespace {

void redraw(QWidget* control) {
  if (control == nullptr) return;
  if (auto* area = qobject_cast<QAbstractScrollArea*>(control))
    area->viewport()->update();
  else
    control->update();
}

QPalette::ColorRole textRole(const QWidget* control) {
  if (qobject_cast<const QAbstractScrollArea*>(control) != nullptr ||
      qobject_cast<const QLineEdit*>(control) != nullptr)
    return QPalette::Text;
  if (qobject_cast<const QAbstractButton*>(control) != nullptr ||
      qobject_cast<const QComboBox*>(control) != nullptr)
    return control->inherits("QRadioButton") || control->inherits("QCheckBox")
               ? QPalette::WindowText
               : QPalette::ButtonText;
  return QPalette::WindowText;
}

}  // namespace

void installFocusRing() {
  QObject::connect(qApp, &QApplication::focusChanged, qApp, [](QWidget* old, QWidget* now) {
    redraw(old);
    redraw(now);
  });
}

void paintFocusRing(QWidget* painted) {
  QWidget* const focused = QApplication::focusWidget();
  if (focused == nullptr) return;
  const auto* area = qobject_cast<QAbstractScrollArea*>(focused);
  if (painted != (area == nullptr ? focused : area->viewport())) return;
  // A list that drops down and a menu bar show what is chosen in them.
  if (painted->window()->windowType() == Qt::Popup) return;
  if (qobject_cast<QMenuBar*>(focused) != nullptr) return;
  QRect place = painted->rect();
  if (const auto* tabs = qobject_cast<const QTabBar*>(focused))
    place = tabs->tabRect(tabs->currentIndex());
  constexpr int kThick = 2;
  QPainter painter(painted);
  painter.setPen(QPen(focused->palette().color(textRole(focused)), kThick));
  painter.drawRect(place.adjusted(1, 1, -1, -1));
}

}  // namespace mirelund

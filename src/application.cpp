// SPDX-License-Identifier: GPL-3.0-or-later
#include "application.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QIcon>
#include <QPixmap>
#include <QResource>
#include <QScopeGuard>
#include <QSettings>
#include <QSignalBlocker>

#include "app/accessible.h"
#include "app/focus_ring.h"
#include "app/readable_palette.h"
#include "charts/chart_accessible.h"

// The resources of a static library are there when they are asked for by name, from
// outside any namespace.
static void findResources() {
  Q_INIT_RESOURCE(icon);
}

namespace mirelund {

namespace {

bool isBlocked(const QWidget* widget) {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr && modal != widget->window() && !modal->isAncestorOf(widget);
}

QPixmap programIcon() {
  findResources();
  const QResource pixels(":/mirelund-48.rgba");
  constexpr int kSide = 48;
  return QPixmap::fromImage(QImage(pixels.data(), kSide, kSide, QImage::Format_RGBA8888));
}

// Lets a button's delayed click run off, heard by nobody.
void dropClick(QAbstractButton* button, const std::function<void()>& deliver) {
  QButtonGroup* const group = button->group();
  QAbstractButton* const chosen = group == nullptr ? nullptr : group->checkedButton();
  const QSignalBlocker quietButton(button);
  const QSignalBlocker quietGroup(group);
  deliver();
  if (chosen != nullptr) chosen->setChecked(true);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  setDesktopFileName("mirelund");
  setWindowIcon(programIcon());
  // File dialogs keep the folders that they have shown in a file of their own, and wait
  // for half a minute where a program that was killed has left it locked. No file is
  // written that nobody named: nothing can be beneath a device.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  installAccessibility();
  installChartAccessibility();
  installFocusRing();
  makeReadable();
}

void Application::makeReadable() {
  const QPalette readable = readablePalette(palette());
  if (readable != palette()) setPalette(readable);
}

bool Application::event(QEvent* event) {
  const bool done = QApplication::event(event);
  if (event->type() == QEvent::ApplicationPaletteChange) makeReadable();
  return done;
}

bool Application::notify(QObject* receiver, QEvent* event) {
  const QEvent::Type type = event->type();
  try {
    if (type == QEvent::Timer) {
      auto* button = qobject_cast<QAbstractButton*>(receiver);
      if (button != nullptr && isBlocked(button)) {
        dropClick(button, [&] { QApplication::notify(receiver, event); });
        return true;
      }
    }
    const bool done = QApplication::notify(receiver, event);
    if (type == QEvent::Paint && receiver->isWidgetType())
      paintFocusRing(static_cast<QWidget*>(receiver));
    return done;
  } catch (...) {
    failed(type == QEvent::Paint);
    return true;
  }
}

void Application::failed(bool painting) {
  if (telling_ || (painting && paintingTold_)) return;
  telling_ = true;
  paintingTold_ = paintingTold_ || painting;
  QMetaObject::invokeMethod(
      this,
      [this] {
        const auto told = qScopeGuard([this] { telling_ = false; });
        while (QWidget* popup = activePopupWidget()) popup->close();
        tell_();
      },
      Qt::QueuedConnection);
}

}  // namespace mirelund

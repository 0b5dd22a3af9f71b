// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into a program, ends it as soon as its first window is painted and tells
// the peak of its memory. The program itself knows nothing of it.
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QMetaObject>
#include <QWidget>
#include <cstdio>
#include <cstdlib>

namespace {

class Watch : public QObject {
 public:
  explicit Watch(QObject* parent) : QObject(parent) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    // The window is painted within the event that now begins; what is queued
    // comes after it.
    if (event->type() == QEvent::Paint && !painted_ && watched->isWidgetType()) {
      painted_ = true;
      QMetaObject::invokeMethod(
          this, [] { tell(); }, Qt::QueuedConnection);
    }
    return false;
  }

 private:
  static void tell() {
    QGuiApplication::sync();
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) std::_Exit(1);
    for (const QByteArray& line : status.readAll().split('\n'))
      if (line.startsWith("VmHWM:")) std::puts(line.mid(6).trimmed().constData());
    std::fflush(stdout);
    std::_Exit(0);
  }

  bool painted_ = false;
};

void watchFirstPaint() {
  qApp->installEventFilter(new Watch(qApp));
}
Q_COREAPP_STARTUP_FUNCTION(watchFirstPaint)

}  // namespace

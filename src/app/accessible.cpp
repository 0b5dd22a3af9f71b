// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/accessible.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QAccessibleWidget>
#include <QWidget>

#include "app/result_label.h"

namespace mirelund {

namespace {

class SaidAnnouncement : public QAccessibleObject {
 public:
  explicit SaidAnnouncement(Announcement* said) : QAccessibleObject(said) {}

  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(said()->about());
  }
  QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
  QString text(QAccessible::Text asked) const override {
    return asked == QAccessible::Name ? said()->text() : QString();
  }
  QAccessible::Role role() const override { return QAccessible::Notification; }
  QAccessible::State state() const override { return {}; }

 private:
  const Announcement* said() const { return static_cast<const Announcement*>(object()); }
};

// What is no control. It may have been asked for before it was put into its window.
class SaidWidget : public QAccessibleWidget {
 public:
  explicit SaidWidget(QWidget* widget) : QAccessibleWidget(widget) {}

  QAccessible::Role role() const override {
    const bool isFramed = widget()->isWindow() && widget()->windowType() == Qt::Window;
    return isFramed ? QAccessible::Window : QAccessibleWidget::role();
  }
};

// A label that shows a value: its name is the row's, and its value can be walked by
// characters and words.
class SaidResult : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit SaidResult(ResultLabel* label)
      : QAccessibleWidget(label, QAccessible::EditableText), label_(label) {}

  QString text(QAccessible::Text asked) const override {
    return asked == QAccessible::Value ? label_->text() : QAccessibleWidget::text(asked);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.selectableText = true;
    return state;
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                              : QAccessibleWidget::interface_cast(type);
  }

  void selection(int index, int* start, int* end) const override {
    const bool selected = index == 0 && label_->hasSelectedText();
    *start = selected ? label_->selectionStart() : 0;
    *end = selected ? *start + static_cast<int>(label_->selectedText().size()) : 0;
  }
  int selectionCount() const override { return label_->hasSelectedText() ? 1 : 0; }
  void addSelection(int start, int end) override { setSelection(0, start, end); }
  void removeSelection(int /*index*/) override { label_->setSelection(0, 0); }
  void setSelection(int /*index*/, int start, int end) override {
    label_->setSelection(start, end - start);
  }
  int cursorPosition() const override {
    int start = 0;
    int end = 0;
    selection(0, &start, &end);
    return end;
  }
  void setCursorPosition(int position) override { label_->setSelection(position, 0); }
  QString text(int start, int end) const override { return label_->text().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(label_->text().size()); }
  // One short line: a place in it is as good as its characters'.
  QRect characterRect(int /*offset*/) const override { return rect(); }
  int offsetAtPoint(const QPoint& point) const override { return rect().contains(point) ? 0 : -1; }
  void scrollToSubstring(int /*start*/, int /*end*/) override {}
  QString attributes(int /*offset*/, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }

 private:
  ResultLabel* label_;
};

// Asked from the object's own class upward; the toolkit's own answers come after this one.
QAccessibleInterface* make(const QString& className, QObject* object) {
  if (auto* said = qobject_cast<Announcement*>(object)) return new SaidAnnouncement(said);
  if (auto* label = qobject_cast<ResultLabel*>(object)) return new SaidResult(label);
  return className == QLatin1String("QWidget") ? new SaidWidget(static_cast<QWidget*>(object))
                                               : nullptr;
}

}  // namespace

Announcement::Announcement(QWidget* about) : QObject(about) {}

QWidget* Announcement::about() const {
  return static_cast<QWidget*>(parent());
}

void installAccessibility() {
  QAccessible::installFactory(make);
}

void announce(QWidget* about, const QString& text) {
  if (!QAccessible::isActive()) return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
  QAccessibleAnnouncementEvent event(about, text);
#else
  auto* said = about->findChild<Announcement*>({}, Qt::FindDirectChildrenOnly);
  if (said == nullptr) said = new Announcement(about);
  said->setText(text);
  QAccessibleEvent event(said, QAccessible::ObjectShow);
#endif
  QAccessible::updateAccessibility(&event);
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/window_watch.h"

#include <QApplication>
#include <QDate>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QWindow>

#include "manager/database/fund_database.h"

namespace mirelund::testing {

namespace {

// As a library prints what is no number; no word of a text.
bool showsNoNumber(const QString& text) {
  static const QRegularExpression kNoNumber(R"((?<![\w'])[-+$]?(nan|inf|infinity)(?![\w']))",
                                            QRegularExpression::CaseInsensitiveOption);
  return kNoNumber.match(text).hasMatch();
}

QString countFault(const QWidget* window, const char* name, int most) {
  const auto* label = window->findChild<QLabel*>(name);
  if (label == nullptr) return {};
  bool good = false;
  const int count = label->text().section(' ', -1).toInt(&good);
  return good && count >= 0 && count <= most ? QString() : name + (" shows " + label->text());
}

// The records of a list stand by date, numbered from 1.
QString listFault(const QString& list) {
  static const QRegularExpression kRecord(R"(^.{10}\s*(\d+)/(\d+)/(\d{4}) .* (\d+)$)");
  int number = 0;
  QDate before;
  for (const QString& line : list.split('\n')) {
    const auto found = kRecord.match(line);
    if (!found.hasMatch()) continue;
    const QDate date(found.captured(3).toInt(), found.captured(1).toInt(),
                     found.captured(2).toInt());
    if (!date.isValid() || (before.isValid() && date < before)) return "not by date: " + line;
    if (found.captured(4).toInt() != ++number) return "not numbered: " + line;
    before = date;
  }
  return {};
}

}  // namespace

QWidgetList shownWindows() {
  QWidgetList shown;
  const QWidgetList widgets = QApplication::topLevelWidgets();
  for (const QWindow* window : QGuiApplication::topLevelWindows())
    for (QWidget* widget : widgets)
      if (widget->windowHandle() == window && widget->isVisible()) shown << widget;
  return shown;
}

QWidget* frontWindow() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  const QWidgetList shown = shownWindows();
  return shown.isEmpty() ? nullptr : shown.back();
}

QString WindowWatch::reportFault(const QPlainTextEdit& box) {
  const int revision = box.document()->revision();
  const auto seen = revisions_.constFind(&box);
  if (seen != revisions_.constEnd() && *seen == revision) return {};
  if (seen == revisions_.constEnd())
    QObject::connect(&box, &QObject::destroyed, [this](QObject* gone) { revisions_.remove(gone); });
  revisions_[&box] = revision;
  const QString text = box.toPlainText();
  if (showsNoNumber(text)) return box.objectName() + " shows no number:\n" + text;
  return box.objectName() == "EResults" ? listFault(text) : QString();
}

QString WindowWatch::fault() {
  for (const QWidget* window : shownWindows()) {
    for (const auto& [name, most] :
         {std::pair("ENumFunds", int{kMostFunds}), std::pair("ENumRec", int{kMostRecords})})
      if (const QString wrong = countFault(window, name, most); !wrong.isEmpty()) return wrong;
    for (const auto* box : window->findChildren<QPlainTextEdit*>())
      if (const QString wrong = reportFault(*box); !wrong.isEmpty()) return wrong;
    for (const auto* widget : window->findChildren<QWidget*>()) {
      QString text = widget->accessibleDescription();
      if (const auto* label = qobject_cast<const QLabel*>(widget)) text += '\n' + label->text();
      if (const auto* box = qobject_cast<const QLineEdit*>(widget)) text += '\n' + box->text();
      if (showsNoNumber(text)) return widget->objectName() + " shows no number: " + text;
    }
  }
  return {};
}

}  // namespace mirelund::testing

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/report_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/accessible.h"

namespace mirelund {

namespace {
// The window keeps how far its boxes are zoomed.
constexpr char kZoom[] = "reportZoom";
constexpr int kLeastPoints = 5;
constexpr int kMostPoints = 72;

// Its size is not named, so it is the one that every control has.
QFont reportFont() {
  QFont fixed;
  fixed.setFamily("Courier New");
  fixed.setStyleHint(QFont::TypeWriter);
  fixed.setFixedPitch(true);
  return fixed;
}

int desktopPoints() {
  return static_cast<int>(std::lround(QFontInfo(QApplication::font()).pointSizeF()));
}
}  // namespace

ReportBox::ReportBox(const char* name, int columns, int lines, QWidget* parent)
    : QPlainTextEdit(parent), columns_(columns), lines_(lines) {
  setObjectName(name);
  setAccessibleName("Results");
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setTabChangesFocus(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFont(reportFont());
  if (parent != nullptr) parent->installEventFilter(this);
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    if (document()->isEmpty()) return;
    announce(this, QString("%1: new text, %2 lines").arg(accessibleName()).arg(blockCount()));
  });
}

void ReportBox::showReport(const QString& report) {
  const QString before = toPlainText();
  setPlainText(report);
  const QString now = toPlainText();
  if (before.isEmpty() || now.size() == before.size() || !now.startsWith(before)) return;
  qsizetype first = before.size();
  while (first < now.size() && now[first] == '\n') ++first;
  // Without line wrap the bar counts lines, and ends where the last is in view.
  verticalScrollBar()->setValue(static_cast<int>(QStringView(now).first(first).count('\n')));
}

void ReportBox::zoom(int steps) {
  const int desktop = desktopPoints();
  const int zoomed = steps == 0
                         ? 0
                         : std::clamp(desktop + steps_ + steps, std::min(kLeastPoints, desktop),
                                      std::max(kMostPoints, desktop)) -
                               desktop;
  window()->setProperty(kZoom, zoomed);
  for (auto* box : window()->findChildren<ReportBox*>()) box->takeZoom();
}

void ReportBox::takeZoom() {
  const int zoomed = window()->property(kZoom).toInt();
  if (zoomed == std::exchange(steps_, zoomed)) return;
  QFont font = reportFont();
  if (steps_ != 0) font.setPointSize(desktopPoints() + steps_);
  setFont(font);
}

bool ReportBox::eventFilter(QObject* watched, QEvent* event) {
  // A size that was named does not follow the desktop's by itself.
  if (watched == parent() && event->type() == QEvent::FontChange && steps_ != 0) {
    steps_ = 0;
    takeZoom();
  }
  return QPlainTextEdit::eventFilter(watched, event);
}

void ReportBox::showEvent(QShowEvent* event) {
  takeZoom();
  QPlainTextEdit::showEvent(event);
}

void ReportBox::inputMethodEvent(QInputMethodEvent* event) {
  event->ignore();
}

void ReportBox::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return QPlainTextEdit::wheelEvent(event);
  turned_ += event->angleDelta().y();
  const int steps = turned_ / QWheelEvent::DefaultDeltasPerStep;
  turned_ %= QWheelEvent::DefaultDeltasPerStep;
  if (steps != 0) zoom(steps);
  event->accept();
}

bool ReportBox::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    // They are the window's: nothing is edited here.
    const auto* key = static_cast<QKeyEvent*>(event);
    for (const auto command : {QKeySequence::Undo, QKeySequence::Redo, QKeySequence::Copy})
      if (key->matches(command)) return false;
  }
  return QPlainTextEdit::event(event);
}

int ReportBox::widthOf(int columns) const {
  const double text = QFontMetricsF(font(), this).horizontalAdvance(QString(columns, '0'));
  return static_cast<int>(std::ceil(text)) + edges();
}

int ReportBox::edges() const {
  return 2 * (frameWidth() + static_cast<int>(document()->documentMargin())) +
         style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

QSize ReportBox::sizeOf(int columns, int lines) const {
  const QFontMetricsF metrics(reportFont(), this);
  return {static_cast<int>(metrics.horizontalAdvance('0') * (columns + 1)) + edges(),
          static_cast<int>(metrics.lineSpacing() * lines) + edges()};
}

QSize ReportBox::minimumSizeHint() const {
  constexpr int kLeastColumns = 16;
  constexpr int kLeastLines = 6;
  return sizeOf(kLeastColumns, kLeastLines);
}

}  // namespace mirelund

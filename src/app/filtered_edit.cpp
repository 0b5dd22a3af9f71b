// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/filtered_edit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

#include "app/box_focus.h"
#include "base/ui_text.h"

namespace mirelund {

namespace {

// Whether a key types a character (Backspace is one): navigation does not, nor does
// a chord, whatever its text.
bool types(const QKeyEvent& event) {
  const auto held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (event.key() == Qt::Key_Backspace) return !(held & (Qt::AltModifier | Qt::MetaModifier));
  // AltGr, which some systems report as Ctrl+Alt, types characters.
  if (held != Qt::NoModifier && held != (Qt::ControlModifier | Qt::AltModifier)) return false;
  return !event.text().isEmpty() && event.text().front().category() != QChar::Other_Control;
}

// Whatever is printed on it, and whatever the locale has as its decimal point.
bool isKeypadDecimal(const QKeyEvent& event) {
  constexpr QChar kArabicPoint(0x66B);
  const QString text = event.text();
  return event.modifiers().testFlag(Qt::KeypadModifier) && (text == "," || text == kArabicPoint);
}

char asciiOf(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Backspace) return '\b';
  const QString text = event.text();
  // Any character beyond ASCII is one that no filter passes.
  return text.size() == 1 && text.front().unicode() < 127 ? text.front().toLatin1() : '\x01';
}

}  // namespace

FilteredEdit::FilteredEdit(BoxState& boxes, KeyFilter filter, std::int16_t extraDecimals,
                           QWidget* parent)
    : QLineEdit(parent), boxes_(boxes), filter_(filter), extraDecimals_(extraDecimals) {
  setFilter(filter, extraDecimals);
  setGreen(true);
  // Cutting and undoing are edits too, and so is undoing all of them.
  connect(this, &QLineEdit::textEdited, this, [this](const QString& now) {
    boxes_.BoxEdited = now == untouched_ && !isUndoAvailable() ? 0 : 1;
  });
}

void FilteredEdit::setFilter(KeyFilter filter, std::int16_t extraDecimals) {
  filter_ = filter;
  extraDecimals_ = extraDecimals;
  if (filter != KeyFilter::Any) {
    setAlignment(Qt::AlignRight);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
  }
}

void FilteredEdit::setCharacters(int characters, int least) {
  characters_ = characters;
  leastCharacters_ = least;
  takeRoom();
}

void FilteredEdit::takeRoom() {
  if (characters_ == 0) return;
  const int digit = fontMetrics().horizontalAdvance('0');
  setMinimumWidth(digit * leastCharacters_);
  setMaximumWidth(digit * characters_);
}

void FilteredEdit::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::FontChange) takeRoom();
}

QSize FilteredEdit::sizeHint() const {
  const QSize hint = QLineEdit::sizeHint();
  return characters_ > 0 ? QSize(maximumWidth(), hint.height()) : hint;
}

void FilteredEdit::setGreen(bool green) {
  QPalette colors = palette();
  colors.setColor(QPalette::Base, green ? kInputGreen : QColor(Qt::white));
  colors.setColor(QPalette::Text, Qt::black);
  colors.setColor(QPalette::PlaceholderText, kPlaceholderGray);
  colors.setColor(QPalette::Highlight, kSelectionBlue);
  colors.setColor(QPalette::HighlightedText, Qt::white);
  setPalette(colors);
}

void FilteredEdit::enter() {
  untouched_ = text();
  selectAll();
  QGuiApplication::clipboard()->clear();
}

BoxLeft FilteredEdit::leave() {
  QGuiApplication::clipboard()->clear();
  BoxLeft gone = store();
  if (gone.changed) setText(toQString(gone.text));
  untouched_ = text();
  return gone;
}

KeyPressed FilteredEdit::press(std::string_view text, char character) {
  return pressKey(boxes_, filter_, extraDecimals_, text, character);
}

KeyPressed FilteredEdit::enterAtOnce(std::string_view text, std::string_view entering) {
  return enterText(boxes_, filter_, extraDecimals_, text, entering);
}

void FilteredEdit::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    emit enterPressed();
    return;
  }
  if (isReadOnly()) {
    QLineEdit::keyPressEvent(event);
    return;
  }
  if (event->matches(QKeySequence::Paste)) {
    pasteFrom(QClipboard::Clipboard);
    return;
  }
  if (isKeypadDecimal(*event)) {
    QKeyEvent point(event->type(), Qt::Key_Period, event->modifiers(), ".");
    return keyPressEvent(&point);
  }
  if (event->key() == Qt::Key_Delete) boxes_.BoxEdited = 1;
  if (!types(*event)) {
    // Its meaning counts; its text is no input.
    QKeyEvent bare(event->type(), event->key(), event->modifiers());
    QLineEdit::keyPressEvent(&bare);
    event->setAccepted(bare.isAccepted());
    return;
  }
  const KeyPressed pressed = press(toStdString(text()), asciiOf(*event));
  if (pressed.emptyFirst) empty();
  if (pressed.passed)
    QLineEdit::keyPressEvent(event);
  else
    QApplication::beep();
}

void FilteredEdit::focusInEvent(QFocusEvent* event) {
  selectOnClick_ = event->reason() == Qt::MouseFocusReason;
  QLineEdit::focusInEvent(event);
}

void FilteredEdit::mousePressEvent(QMouseEvent* event) {
  QLineEdit::mousePressEvent(event);
  if (selectOnClick_) selectAll();
}

void FilteredEdit::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    if (QGuiApplication::clipboard()->supportsSelection()) pasteFrom(QClipboard::Selection);
    return;
  }
  QLineEdit::mouseReleaseEvent(event);
  if (selectOnClick_) selectAll();
  selectOnClick_ = false;
}

void FilteredEdit::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (QAction* action : menu->actions()) {
    if (!action->text().startsWith(QLineEdit::tr("&Paste"))) continue;
    action->disconnect();
    connect(action, &QAction::triggered, this, [this] { pasteFrom(QClipboard::Clipboard); });
  }
  menu->popup(event->globalPos());
}

void FilteredEdit::dragEnterEvent(QDragEnterEvent* event) {
  // A file is the window's, if anybody's.
  if (event->mimeData()->hasUrls())
    event->ignore();
  else
    QLineEdit::dragEnterEvent(event);
}

void FilteredEdit::dropEvent(QDropEvent* event) {
  if (isReadOnly() || event->source() == this) {
    event->ignore();
    return;
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
  if (auto* focus = window()->findChild<BoxFocus*>()) focus->moveTo(this);
  // What leaving another box told may have moved the focus on.
  if (window()->focusWidget() == this) insertAtOnce(event->mimeData()->text());
}

void FilteredEdit::inputMethodEvent(QInputMethodEvent* event) {
  // Nothing is composed in the box: only what an input method commits arrives.
  event->accept();
  if (!isReadOnly() && !event->commitString().isEmpty()) insertAtOnce(event->commitString());
}

void FilteredEdit::empty() {
  setText({});  // for good: what stood there as shown could not be typed
  emit emptied();
}

void FilteredEdit::pasteFrom(int clipboardMode) {
  insertAtOnce(QGuiApplication::clipboard()->text(static_cast<QClipboard::Mode>(clipboardMode)));
}

void FilteredEdit::insertAtOnce(QString entering) {
  // A copied line often brings its end along.
  while (entering.endsWith('\n') || entering.endsWith('\r')) entering.chop(1);
  if (isReadOnly() || entering.isEmpty()) return;
  const QString shown = text().remove(selectionStart(), static_cast<int>(selectedText().size()));
  const KeyPressed pressed =
      enterAtOnce(toStdString(hasSelectedText() ? shown : text()), toStdString(entering));
  if (!pressed.passed) {
    QApplication::beep();
    return;
  }
  if (pressed.emptyFirst) empty();
  insert(entering);
}

BoxEdit::BoxEdit(BoxState& boxes, const BoxRule& rule, QWidget* parent)
    : FilteredEdit(boxes, rule.filter, rule.extraDecimals, parent), rule_(&rule) {
  setObjectName(toQString(rule.name));
  setAccessibleName(toQString(rule.label));
}

void BoxEdit::setRule(const BoxRule& rule) {
  rule_ = &rule;
  setFilter(rule.filter, rule.extraDecimals);
  setAccessibleName(toQString(rule.label));
}

void BoxEdit::load() {
  if (rule_->store != BoxStore::None) setText(toQString(loadBox(boxes(), *rule_)));
}

BoxLeft BoxEdit::store() {
  return leaveBox(boxes(), *rule_, toStdString(text()));
}

}  // namespace mirelund

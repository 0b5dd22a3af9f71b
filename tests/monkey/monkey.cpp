// SPDX-License-Identifier: GPL-3.0-or-later
// monkey SEED EVENTS: the program under random events.
//
// A step draws a burst of actions from one table, each made of single events (a key
// down, a button up), and posts them all: no event loop runs between them but the one
// that an event itself starts. Then some time passes, and the next step follows in
// whatever loop is running by then. After each burst what the windows show and what
// stands on the disk is checked; now and then every dialog must let itself be closed.
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <cstdio>
#include <functional>
#include <vector>

#include "application.h"
#include "dialogs/dialog_prompts.h"
#include "dialogs/report_printer.h"
#include "monkey/clock.h"
#include "monkey/diary.h"
#include "monkey/draws.h"
#include "monkey/input.h"
#include "monkey/place.h"
#include "monkey/window_watch.h"
#include "program.h"

namespace mirelund::testing {
namespace {

// --- what is drawn from ---------------------------------------------------------

struct KeyRow {
  int weight;
  Qt::Key key;
  Qt::KeyboardModifiers held;
};
// Letters that spell no figure ("nan", "inf") in a fund's name.
constexpr KeyRow kKeys[] = {
    {6, Qt::Key_Return, Qt::NoModifier},   {3, Qt::Key_Enter, Qt::KeypadModifier},
    {8, Qt::Key_Tab, Qt::NoModifier},      {3, Qt::Key_Backtab, Qt::ShiftModifier},
    {3, Qt::Key_Escape, Qt::NoModifier},   {4, Qt::Key_Space, Qt::NoModifier},
    {3, Qt::Key_Delete, Qt::NoModifier},   {3, Qt::Key_Backspace, Qt::NoModifier},
    {4, Qt::Key_Down, Qt::NoModifier},     {3, Qt::Key_Up, Qt::NoModifier},
    {2, Qt::Key_Left, Qt::NoModifier},     {2, Qt::Key_Right, Qt::NoModifier},
    {1, Qt::Key_Home, Qt::NoModifier},     {1, Qt::Key_End, Qt::NoModifier},
    {1, Qt::Key_PageDown, Qt::NoModifier}, {1, Qt::Key_PageUp, Qt::NoModifier},
    {3, Qt::Key_Tab, Qt::ControlModifier}, {2, Qt::Key_Backtab, Qt::ControlModifier},
    {1, Qt::Key_Down, Qt::AltModifier},    {1, Qt::Key_F4, Qt::NoModifier},
    {1, Qt::Key_F1, Qt::NoModifier},       {1, Qt::Key_F2, Qt::NoModifier},
    {1, Qt::Key_F10, Qt::NoModifier},      {1, Qt::Key_Menu, Qt::NoModifier},
    {1, Qt::Key_A, Qt::ControlModifier},   {1, Qt::Key_Z, Qt::ControlModifier},
    {1, Qt::Key_X, Qt::ControlModifier},   {1, Qt::Key_C, Qt::ControlModifier},
    {2, Qt::Key_E, Qt::ControlModifier},   {4, Qt::Key_I, Qt::ControlModifier},
    {3, Qt::Key_T, Qt::ControlModifier},   {1, Qt::Key_Plus, Qt::ControlModifier},
    {1, Qt::Key_1, Qt::NoModifier},        {1, Qt::Key_2, Qt::NoModifier},
    {1, Qt::Key_5, Qt::NoModifier},        {1, Qt::Key_0, Qt::NoModifier},
    {1, Qt::Key_9, Qt::NoModifier},        {1, Qt::Key_Slash, Qt::NoModifier},
    {1, Qt::Key_Period, Qt::NoModifier},   {1, Qt::Key_Minus, Qt::NoModifier},
    {1, Qt::Key_B, Qt::NoModifier},        {1, Qt::Key_S, Qt::NoModifier},
    {1, Qt::Key_Q, Qt::ShiftModifier},     {1, Qt::Key_E, Qt::NoModifier},
};

struct MnemonicRow {
  int weight;
  Qt::Key key;
};
constexpr MnemonicRow kMnemonics[] = {
    {4, Qt::Key_A}, {6, Qt::Key_C}, {2, Qt::Key_D}, {3, Qt::Key_E}, {3, Qt::Key_F},
    {4, Qt::Key_G}, {2, Qt::Key_H}, {4, Qt::Key_I}, {4, Qt::Key_O}, {3, Qt::Key_P},
    {3, Qt::Key_R}, {3, Qt::Key_S}, {3, Qt::Key_U}, {3, Qt::Key_V}, {2, Qt::Key_X},
    {2, Qt::Key_Y}, {2, Qt::Key_N}, {1, Qt::Key_L}, {1, Qt::Key_Q},
};

const QStringList kTypedTexts = {
    "1",
    "2",
    "5",
    "10",
    "12",
    "30",
    "0",
    "100",
    "1000",
    "10.5",
    "7.25",
    "250000",
    ".0001",
    "40",
    "41",
    "999",
    "3/4/2005",
    "12/31/1999",
    "2/29/2004",
    "2/30/2004",
    "1/1/1980",
    "6/15/78",
    "99999999999999",
    "922337203685477.5807",
    "Amber Growth",
    "Birch & Sons",
    "",
    "-1",
};

const QStringList kOddTexts = {
    QString::fromUtf8("\xC3\xA9"),
    QString::fromUtf8("\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E"),
    QString::fromUtf8("\xF0\x9D\x84\x9E"),
    QString::fromUtf8("\xE2\x80\xAE"
                      "12.5"),
    QString::fromUtf8("e\xCC\x81\xCC\x81\xCC\x81"),
    QString::fromUtf8("\xEF\xBC\x91\xEF\xBC\x92"),
    QString::fromUtf8("\xD9\xA3\xD9\xA4"),
    QString::fromUtf8("\xEF\xBB\xBF"
                      "7"),
    QString(QChar(0xD800)),
    QString(QChar(0)),
    QString(QChar(0xFFFF)),
    "1,234.50",
    "1e999",
    "nan",
    "inf",
    "-0",
    " 12 ",
    "12\r\n",
    "1\t2",
    "a\nb\nc",
    "\"quoted\"",
    "&amp;",
    "<b>x</b>",
    "%1 %n",
    "3/4/2005",
    "3-4-2005",
    "922337203685477.5808",
    QString(5000, '9'),
    QString(40'000, 'w'),
};

// Milliseconds around the hundred after which a mnemonic's click comes.
constexpr int kWaits[] = {0, 0, 0, 0, 0, 0, 0, 1, 5, 20, 50, 90, 99, 100, 101, 150, 400};

// Warnings of the toolkit that tell nothing of this program.
constexpr const char* kKnownWarnings[] = {
    "This plugin does not support",
    "QPainter::begin(): Returned false",  // a printout that cannot be written
};

// --- the monkey -----------------------------------------------------------------

struct Event {
  std::string what;
  std::function<void()> act;
};

class Monkey : public QObject {
  Q_OBJECT

 public:
  Monkey(std::uint64_t seed, int events, Place& place, bool realTime)
      : draws_(seed), wanted_(events), place_(place), realTime_(realTime) {}

  bool done() const { return done_; }
  void setProgram(Program& program) { program_ = &program; }
  void start() { next(0); }
  QString summary() const {
    return QString("%1 bursts, %2 dialogs, %3 windows, %4 files written")
        .arg(bursts_)
        .arg(dialogs_.size())
        .arg(windows_.size())
        .arg(place_.filesSaved());
  }

 private:
  struct Action {
    int weight;
    void (Monkey::*plan)();
  };

  void step();
  void settle();
  void post();
  void next(int waitMs);
  void check();
  static bool activated();

  void plan(const std::string& what, std::function<void()> act) {
    burst_.push_back({what, std::move(act)});
  }
  void planKeyStroke(Qt::Key key, Qt::KeyboardModifiers held);
  void planClickOn(QWidget* target, QPoint place, Qt::MouseButton button, bool quickly = false);
  void planText(const QString& text);

  void planKey();
  void planMnemonic();
  void planClick();
  void planDoubleClick();
  void planFill();
  void planComposed();
  void planPaste();
  void planDrop();
  void planWheel();
  void planClose();
  void planRestore();
  void planSchedule();
  void planFileDialog(QFileDialog* dialog);

  QWidget* drawWindow();
  QWidget* drawControl(const QWidget* window);
  QPoint drawPlace(const QWidget* control);
  QString drawOddText();

  void meet(QFileDialog* dialog);
  void tameFileDialog();
  void planEnd();

  Draws draws_;
  int wanted_;
  Place& place_;
  bool realTime_;
  QPointer<Program> program_;
  WindowWatch watch_;
  std::vector<Event> burst_;
  int bursts_ = 0;
  int untilSettled_ = 0;
  int settling_ = 0;
  bool done_ = false;
  QSet<QObject*> met_;
  QStringList dialogs_;
  QStringList windows_;

  static const Action kActions[];
};

const Monkey::Action Monkey::kActions[] = {
    {14, &Monkey::planKey},        {12, &Monkey::planMnemonic}, {26, &Monkey::planClick},
    {4, &Monkey::planDoubleClick}, {16, &Monkey::planFill},     {2, &Monkey::planComposed},
    {3, &Monkey::planPaste},       {2, &Monkey::planDrop},      {2, &Monkey::planWheel},
    {1, &Monkey::planClose},       {1, &Monkey::planEnd},       {4, &Monkey::planRestore},
    {6, &Monkey::planSchedule},
};

// --- events ---------------------------------------------------------------------

QFileDialog* fileDialog() {
  for (QWidget* widget = QApplication::activeModalWidget(); widget != nullptr;
       widget = widget->parentWidget())
    if (auto* dialog = qobject_cast<QFileDialog*>(widget)) return dialog;
  return nullptr;
}

// No name of a folder is typed by chance.
bool mayType(QChar c) {
  return fileDialog() == nullptr || (c != '/' && c != '.' && c != '~');
}

void pressKey(Qt::Key key, Qt::KeyboardModifiers held) {
  if (mayType(QChar(static_cast<char16_t>(key & 0xFFFF)))) input::key(input::Way::Down, key, held);
}

void releaseKey(Qt::Key key, Qt::KeyboardModifiers held) {
  input::key(input::Way::Up, key, held);
}

std::string nameOf(const QWidget* widget) {
  const QString name = widget->objectName();
  return (name.isEmpty() ? QString(widget->metaObject()->className()) : name).toStdString();
}

void Monkey::planKeyStroke(Qt::Key key, Qt::KeyboardModifiers held) {
  const std::string name =
      QKeySequence(QKeyCombination(held & ~Qt::KeypadModifier, key)).toString().toStdString();
  plan("key " + name, [=] { pressKey(key, held); });
  plan("key up " + name, [=] { releaseKey(key, held); });
}

void Monkey::planText(const QString& text) {
  for (const QChar c : text) {
    plan(std::string("type ") + c.toLatin1(), [c] {
      if (mayType(c)) input::character(input::Way::Down, c);
    });
    plan(std::string("up ") + c.toLatin1(), [c] { input::character(input::Way::Up, c); });
  }
}

// The place in the window, which may be behind a dialog; nothing where it is gone.
void Monkey::planClickOn(QWidget* target, QPoint place, Qt::MouseButton button, bool quickly) {
  const auto mouse = [target = QPointer<QWidget>(target), place, button, quickly](input::Way way) {
    const bool isPress = way == input::Way::Down;
    if (isPress && (target == nullptr || !target->isVisible())) return;
    // What went meanwhile leaves the release to whatever is there.
    const bool isThere = target != nullptr && target->isVisible();
    const QWidget* window = isThere ? target->window() : frontWindow();
    if (window == nullptr || window->windowHandle() == nullptr) return;
    const QPoint at = isThere ? target->mapTo(window, place) : place;
    const QPoint inside(std::clamp(at.x(), 0, window->width() - 1),
                        std::clamp(at.y(), 0, window->height() - 1));
    input::mouse(way, window->windowHandle(), inside, button, isPress && quickly);
  };
  const std::string name = nameOf(target) + (button == Qt::LeftButton ? "" : " (other button)") +
                           (quickly ? " (again)" : "");
  plan("press " + name, [mouse] { mouse(input::Way::Down); });
  plan("release " + name, [mouse] { mouse(input::Way::Up); });
}

// --- draws ----------------------------------------------------------------------

QWidget* Monkey::drawWindow() {
  const QWidgetList shown = shownWindows();
  const bool any = draws_.oneIn(8);
  const int which = draws_.below(static_cast<std::size_t>(shown.size()));
  if (any && !shown.isEmpty()) return shown[which];
  return frontWindow();
}

bool isControl(const QWidget* widget) {
  return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
         qobject_cast<const QComboBox*>(widget) || qobject_cast<const QTabBar*>(widget) ||
         qobject_cast<const QAbstractSlider*>(widget) ||
         qobject_cast<const QAbstractScrollArea*>(widget->parentWidget());
}

QWidget* Monkey::drawControl(const QWidget* window) {
  QWidgetList controls;
  QWidgetList all;
  if (window != nullptr)
    for (QWidget* widget : window->findChildren<QWidget*>()) {
      if (!widget->isVisible() || widget->window() != window || widget->size().isEmpty()) continue;
      all << widget;
      if (isControl(widget)) controls << widget;
    }
  const bool any = draws_.oneIn(10);
  const QWidgetList& from = any || controls.isEmpty() ? all : controls;
  const int which = draws_.below(static_cast<std::size_t>(from.size()));
  return from.isEmpty() ? nullptr : from[which];
}

QPoint Monkey::drawPlace(const QWidget* control) {
  const bool middle = !draws_.oneIn(3);
  const int x = draws_.below(static_cast<std::size_t>(std::max(1, control->width())));
  const int y = draws_.below(static_cast<std::size_t>(std::max(1, control->height())));
  const bool isLarge = qobject_cast<const QAbstractScrollArea*>(control->parentWidget());
  if (const auto* bar = qobject_cast<const QTabBar*>(control))
    return bar->tabRect(x % std::max(1, bar->count())).center();
  return middle && !isLarge ? control->rect().center() : QPoint(x, y);
}

QString Monkey::drawOddText() {
  const bool plain = draws_.oneIn(3);
  const QString odd = draws_.from(kOddTexts);
  const QString typed = draws_.from(kTypedTexts);
  return plain ? typed : odd;
}

// --- actions --------------------------------------------------------------------

void Monkey::planKey() {
  const KeyRow& row = draws_.weighted(kKeys);
  planKeyStroke(row.key, row.held);
}

void Monkey::planMnemonic() {
  planKeyStroke(draws_.weighted(kMnemonics).key, Qt::AltModifier);
}

void Monkey::planClick() {
  const QWidget* window = drawWindow();
  QWidget* control = drawControl(window);
  const bool otherButton = draws_.oneIn(20);
  const bool stays = !draws_.oneIn(6);
  if (control == nullptr) return planKey();
  const QPoint place = drawPlace(control);
  const bool isExit = control->objectName().contains("Exit") && !window->isModal();
  // A session that ends at every second click comes to nothing.
  if (isExit && stays) return;
  planClickOn(control, place, otherButton ? Qt::RightButton : Qt::LeftButton);
}

void Monkey::planDoubleClick() {
  QWidget* control = drawControl(drawWindow());
  if (control == nullptr) return planKey();
  const QPoint place = drawPlace(control);
  planClickOn(control, place, Qt::LeftButton);
  planClickOn(control, place, Qt::LeftButton, true);
}

void Monkey::planFill() {
  const QWidget* window = frontWindow();
  QList<QLineEdit*> boxes;
  if (window != nullptr)
    for (auto* box : window->findChildren<QLineEdit*>())
      if (box->isVisible() && box->isEnabled() && !box->isReadOnly()) boxes << box;
  const int which = draws_.below(static_cast<std::size_t>(boxes.size()));
  const bool moves = !draws_.oneIn(3);
  const QString text = draws_.from(kTypedTexts);
  const bool enters = draws_.oneIn(2);
  if (boxes.isEmpty()) return planClick();
  if (moves) planClickOn(boxes[which], boxes[which]->rect().center(), Qt::LeftButton);
  planText(text);
  if (enters) planKeyStroke(Qt::Key_Return, Qt::NoModifier);
}

// No fund is called like a figure that must never be shown.
QString forFocus(const QString& text) {
  const QWidget* focus = QApplication::focusWidget();
  const bool filtered = focus != nullptr && focus->inherits("mirelund::FilteredEdit") &&
                        focus->objectName() != "CGInNameOfInvest";
  return filtered || (text != "nan" && text != "inf") ? text : "fund";
}

void Monkey::planComposed() {
  plan("compose", [text = drawOddText()] {
    QObject* focus = QGuiApplication::focusObject();
    if (focus == nullptr || fileDialog() != nullptr) return;
    QInputMethodEvent event;
    event.setCommitString(forFocus(text));
    QApplication::sendEvent(focus, &event);
  });
}

void Monkey::planPaste() {
  plan("paste", [text = drawOddText()] {
    if (fileDialog() != nullptr) return;
    QGuiApplication::clipboard()->setText(forFocus(text));
    pressKey(Qt::Key_V, Qt::ControlModifier);
    releaseKey(Qt::Key_V, Qt::ControlModifier);
    QGuiApplication::clipboard()->clear();
  });
}

void Monkey::planDrop() {
  const QString text = drawOddText();
  QWidget* control = drawControl(frontWindow());
  if (control == nullptr) return planKey();
  plan("drop on " + nameOf(control), [control = QPointer<QWidget>(control), text] {
    if (control == nullptr || !control->isVisible() || control->window() != frontWindow()) return;
    if (fileDialog() != nullptr || !control->acceptDrops()) return;
    const bool filtered = control->inherits("mirelund::FilteredEdit");
    QMimeData data;
    data.setText(filtered ? text : "dropped");
    const QPoint place = control->rect().center();
    QDragEnterEvent over(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(control, &over);
    if (control == nullptr) return;
    QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(control, &event);
  });
}

void Monkey::planWheel() {
  QWidget* control = drawControl(frontWindow());
  const bool up = draws_.oneIn(2);
  if (control == nullptr) return planKey();
  plan("wheel on " + nameOf(control), [control = QPointer<QWidget>(control), up] {
    if (control == nullptr || !control->isVisible() || control->window() != frontWindow()) return;
    const QPoint place = control->rect().center();
    QWheelEvent event(place, control->mapToGlobal(place), {}, QPoint(0, up ? 120 : -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(control, &event);
  });
}

void Monkey::planClose() {
  QWidget* window = drawWindow();
  if (window == nullptr) return;
  // As the window manager's frame does it: one behind a dialog stays.
  plan("close " + nameOf(window), [window = QPointer<QWidget>(window)] {
    if (window != nullptr && window->isVisible() && window->windowHandle() != nullptr)
      window->windowHandle()->close();
  });
}

// Undo or Redo, by its key or from the menu, which acts on the database though a box has
// the focus; where nothing can be undone, whatever else stands there.
void Monkey::planRestore() {
  const bool redoes = draws_.oneIn(3);
  const bool byKey = draws_.oneIn(2);
  if (byKey)
    return planKeyStroke(Qt::Key_Z, redoes ? Qt::ControlModifier | Qt::ShiftModifier
                                           : Qt::KeyboardModifiers(Qt::ControlModifier));
  planKeyStroke(Qt::Key_F10, Qt::NoModifier);
  planKeyStroke(Qt::Key_Right, Qt::NoModifier);
  if (redoes) planKeyStroke(Qt::Key_Down, Qt::NoModifier);
  planKeyStroke(Qt::Key_Return, Qt::NoModifier);
}

// A box of the mortgage page, which is left by the command that shows its schedule.
void Monkey::planSchedule() {
  const QWidget* window = frontWindow();
  if (window == nullptr || window->objectName() != "PQInvest") return planClick();
  constexpr int kMortgagePage = 1;
  auto* bar = window->findChild<QTabBar*>();
  planClickOn(bar, bar->tabRect(kMortgagePage).center(), Qt::LeftButton);
  planKeyStroke(Qt::Key_Tab, Qt::NoModifier);
  planKeyStroke(Qt::Key_Tab, Qt::NoModifier);
  planKeyStroke(Qt::Key_T, Qt::ControlModifier);
}

// As a signal does that ends the program.
void Monkey::planEnd() {
  const bool ends = draws_.oneIn(4);
  if (!ends) return planKey();
  plan("end", [this] {
    if (program_ != nullptr) program_->end();
  });
}

// --- file dialogs ---------------------------------------------------------------

QLineEdit* nameBox(const QFileDialog* dialog) {
  return dialog->findChild<QLineEdit*>("fileNameEdit");
}

// What leads elsewhere or comes from a thread of the dialog's, at any moment, is shut.
void Monkey::meet(QFileDialog* dialog) {
  dialog->setOption(QFileDialog::ReadOnly);
  for (auto* model : dialog->findChildren<QFileSystemModel*>())
    model->setOption(QFileSystemModel::DontWatchForChanges);
  for (const char* name :
       {"sidebar", "lookInCombo", "listView", "treeView", "toParentButton", "backButton",
        "forwardButton", "newFolderButton", "listModeButton", "detailModeButton"})
    if (auto* part = dialog->findChild<QWidget*>(name)) part->setEnabled(false);
  nameBox(dialog)->setCompleter(nullptr);
  connect(dialog, &QFileDialog::filesSelected, this, [this](const QStringList& chosen) {
    for (const QString& path : chosen) place_.name(path);
  });
}

// A path that was typed and then changed by chance may lead anywhere.
void Monkey::tameFileDialog() {
  QFileDialog* dialog = fileDialog();
  if (dialog == nullptr) return;
  if (!dialog->property("met").toBool()) meet(dialog);
  dialog->setProperty("met", true);
  QLineEdit* name = nameBox(dialog);
  const QString text = name->text();
  if ((text.contains('/') || text.contains('~')) && !place_.paths().contains(text)) name->clear();
}

void Monkey::planFileDialog(QFileDialog* dialog) {
  const QString path = draws_.from(place_.paths());
  const bool types = !draws_.oneIn(8);
  const int ending = draws_.below(4);
  plan("path " + path.left(60).toStdString(),
       [dialog = QPointer<QFileDialog>(dialog), path, types] {
         if (dialog == nullptr || !types) return;
         nameBox(dialog)->setFocus(Qt::TabFocusReason);
         nameBox(dialog)->setText(path);
       });
  if (ending < 3)
    planKeyStroke(Qt::Key_Return, Qt::NoModifier);
  else
    planKeyStroke(Qt::Key_Escape, Qt::NoModifier);
}

// --- steps ----------------------------------------------------------------------

// As a window manager does when a window is gone: the next one gets the focus.
bool Monkey::activated() {
  QWidget* window = frontWindow();
  if (window == nullptr || window->windowType() == Qt::Popup) return true;
  if (QApplication::activeWindow() == window) return true;
  window->activateWindow();
  return QApplication::activeWindow() == window;
}

void Monkey::check() {
  for (QWidget* window : shownWindows()) {
    const QString name = QString::fromStdString(nameOf(window));
    if (met_.contains(window)) continue;
    met_ << window;
    connect(window, &QObject::destroyed, this, [this](QObject* gone) { met_.remove(gone); });
    (window->isModal() ? dialogs_ : windows_) << name;
  }
  if (const QString wrong = watch_.fault(); !wrong.isEmpty()) diary::fail(wrong.toStdString());
  if (const QString wrong = place_.fault(); !wrong.isEmpty()) diary::fail(wrong.toStdString());
}

void Monkey::next(int waitMs) {
  if (realTime_) {
    QTimer::singleShot(waitMs, this, &Monkey::step);
    return;
  }
  passTime(waitMs);
  QMetaObject::invokeMethod(this, &Monkey::step, Qt::QueuedConnection);
}

void Monkey::step() {
  diary::alive();
  check();
  activated();
  if (settling_ > 0 || diary::events() >= wanted_ || ++untilSettled_ > 150) return settle();

  ++bursts_;
  constexpr int kMostInBurst = 4;
  const bool chord = draws_.oneIn(3);
  const int more = draws_.below(kMostInBurst);
  for (int left = chord ? 1 + more : 1; left > 0; --left) {
    QFileDialog* dialog = fileDialog();
    const bool answers = !draws_.oneIn(4);
    if (dialog != nullptr && QApplication::activeModalWidget() == dialog && answers)
      planFileDialog(dialog);
    else
      (this->*draws_.weighted(kActions).plan)();
  }
  const int wait = draws_.from(kWaits);
  post();
  QMetaObject::invokeMethod(
      this, [this, wait] { next(wait); }, Qt::QueuedConnection);
}

// The loops that an event starts run the next ones.
void Monkey::post() {
  for (Event& event : burst_)
    QMetaObject::invokeMethod(
        this,
        [this, event = std::move(event)] {
          tameFileDialog();
          diary::note(event.what);
          event.act();
        },
        Qt::QueuedConnection);
  burst_.clear();
}

// Every dialog lets itself be closed, by Escape or by one of its buttons.
void Monkey::settle() {
  constexpr int kMost = 60;
  constexpr int kByEscape = 4;
  static constexpr int kUntilAllClicksCame = 200;
  untilSettled_ = 0;
  tameFileDialog();
  if (++settling_ > kMost) diary::fail("a dialog does not close: " + nameOf(frontWindow()));
  QWidget* popup = QApplication::activePopupWidget();
  auto* modal = QApplication::activeModalWidget();
  if (popup == nullptr && modal == nullptr) {
    settling_ = 0;
    if (diary::events() < wanted_) return next(kUntilAllClicksCame);
    done_ = true;
    QMetaObject::invokeMethod(
        this, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    return;
  }
  QList<QPushButton*> buttons;
  for (auto* button :
       modal == nullptr ? QList<QPushButton*>() : modal->findChildren<QPushButton*>())
    if (button->isVisible() && button->isEnabled()) buttons << button;
  const int which = draws_.below(static_cast<std::size_t>(buttons.size()));
  if (popup != nullptr || settling_ % kByEscape != 0 || buttons.isEmpty())
    planKeyStroke(Qt::Key_Escape, Qt::NoModifier);
  else
    planClickOn(buttons[which], buttons[which]->rect().center(), Qt::LeftButton);
  post();
  QMetaObject::invokeMethod(
      this, [this] { next(kUntilAllClicksCame); }, Qt::QueuedConnection);
}

// --- the program ----------------------------------------------------------------

void onMessage(QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  for (const char* known : kKnownWarnings)
    if (text.contains(known)) return;
  diary::fail("the toolkit warns: " + text.toStdString());
}

// Whoever asks for the guide gets no browser beside the program.
class Person : public DialogPrompts {
 public:
  using DialogPrompts::DialogPrompts;
  bool browse(const QString& /*path*/) override { return true; }
};

int run(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: monkey SEED EVENTS\n");
    return 2;
  }
  const std::uint64_t seed = std::strtoull(argv[1], nullptr, 10);
  const int events = std::atoi(argv[2]);
  diary::begin(seed, events);
  qInstallMessageHandler(onMessage);
  // Timers take their turn among posted events, hashes keep their order.
  qputenv("QT_NO_GLIB", "1");
  qputenv("QT_HASH_SEED", "0");
  qputenv("LC_ALL", "en_US.UTF-8");
  Place place;
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  const bool realTime = qEnvironmentVariable("QT_QPA_PLATFORM") != "offscreen";
  if (!realTime) stopClock();
  Application application(argc, argv);
  application.setFailureTeller([] { diary::fail("an exception came to the event loop"); });
  useProgramFont();

  Monkey monkey(seed, events, place, realTime);
  int sessions = 0;
  monkey.start();
  while (!monkey.done()) {
    ++sessions;
    Global global;
    Person prompts(global.dialogs);
    SystemPrintTarget printing(prompts);
    Program program(prompts, printing, global);
    monkey.setProgram(program);
    program.start().show();
    QApplication::exec();
  }
  std::printf("seed %llu: %d events in %d sessions, %s\n", static_cast<unsigned long long>(seed),
              diary::events(), sessions, qPrintable(monkey.summary()));
  return 0;
}

}  // namespace
}  // namespace mirelund::testing

int main(int argc, char** argv) {
  return mirelund::testing::run(argc, argv);
}

#include "monkey.moc"

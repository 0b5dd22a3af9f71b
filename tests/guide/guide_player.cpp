// SPDX-License-Identifier: GPL-3.0-or-later
#include "guide/guide_player.h"

#include <QAbstractItemView>
#include <QAction>
#include <QEventLoop>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "base/ui_text.h"
#include "dialogs/messages.h"

namespace mirelund::testing {

namespace {

constexpr const char* kCalculations = "PQInvest";
constexpr const char* kManager = "PQManagement";
constexpr const char* kInsights = "PQInsights";

QString plain(QString caption) {
  return caption.remove('&').trimmed();
}

// The text behind the word that a line begins with.
bool begins(const QString& line, const char* word, QString& rest) {
  if (!line.startsWith(QString(word) + ' ')) return false;
  rest = line.mid(static_cast<qsizetype>(qstrlen(word)) + 1);
  return true;
}

QString textOf(QWidget* widget) {
  if (auto* label = qobject_cast<QLabel*>(widget)) return label->text();
  if (auto* button = qobject_cast<QAbstractButton*>(widget))
    return button->text() + (button->isChecked() ? " *" : "");
  if (auto* box = qobject_cast<QLineEdit*>(widget)) return box->text();
  if (auto* list = qobject_cast<QComboBox*>(widget)) return list->currentText();
  if (auto* report = qobject_cast<QPlainTextEdit*>(widget)) return report->toPlainText();
  if (auto* bar = qobject_cast<QTabBar*>(widget)) return bar->tabText(bar->currentIndex());
  return {};
}

// A line a control: its name, its text, its place in hundredths of the window.
QString contentOf(QWidget* window) {
  QStringList lines;
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    const QString text = textOf(widget);
    if (!widget->isVisible() || text.isEmpty()) continue;
    if (widget->objectName().startsWith("qt_") || widget->parent()->inherits("QComboBox")) continue;
    const QPoint at = widget->mapTo(window, QPoint());
    const auto percent = [](int part, int whole) { return QString::number(100 * part / whole); };
    lines << QStringList{widget->objectName(),
                         QString(text).replace('\n', '|'),
                         percent(at.x(), window->width()),
                         percent(at.y(), window->height()),
                         percent(widget->width(), window->width()),
                         percent(widget->height(), window->height())}
                 .join('\t');
  }
  lines.sort();
  return lines.join('\n');
}

}  // namespace

GuidePlayer::GuidePlayer(const QString& sample) {
  if (!QFile::copy(sample, folder_.filePath(QFileInfo(sample).fileName())))
    throw NotDone("no sample: " + sample);
}

void GuidePlayer::play(const QStringList& lines) {
  closed_.reset();
  playLines(lines);
}

void GuidePlayer::playLines(const QStringList& lines) {
  QString rest;
  for (qsizetype at = 0; at < lines.size(); ++at) {
    const QString& line = lines[at];
    if (begins(line, "Answer", rest)) continue;
    if (begins(line, "Message", rest)) {
      expectMessage(rest);
      continue;
    }
    if (begins(line, "Open", rest) && !rest.contains(", ")) return openAnd(rest, lines.mid(at + 1));
    answersBehind(lines, at + 1);
    if (begins(line, "Open", rest))
      open(rest);
    else if (begins(line, "Double-click", rest))
      doubleClick(rest);
    else if (begins(line, "Click", rest))
      click(rest);
    else if (begins(line, "Choose", rest))
      command(rest);
    else if (line.contains(": "))
      enter(line.section(": ", 0, 0), line.section(": ", 1));
    else
      throw NotDone("not understood: " + line);
    settle();
    const FakePrompts& prompts = program_.prompts;
    if (!prompts.answers.empty() || !prompts.lines.empty() || !prompts.numbers.empty() ||
        !prompts.paths.empty())
      throw NotDone("an answer to nothing: " + line);
    const QString next = lines.value(at + 1);
    const bool tells = !prompts.told.isEmpty() || !prompts.warned.isEmpty();
    if (tells && !begins(next, "Message", rest) && !begins(next, "Answer", rest))
      throw NotDone("told, and not in the guide: " + line);
  }
  if (!program_.prompts.told.isEmpty() || !program_.prompts.warned.isEmpty())
    throw NotDone("told, and not in the guide: " + lines.value(lines.size() - 1));
}

void GuidePlayer::answersBehind(const QStringList& lines, qsizetype at) {
  QString text;
  for (; at < lines.size() && begins(lines[at], "Answer", text); ++at) answer(text);
}

void GuidePlayer::answer(const QString& text) {
  FakePrompts& prompts = program_.prompts;
  bool number = false;
  const int value = text.toInt(&number);
  if (text == "Yes" || text == "No")
    prompts.answers.push_back(text == "Yes");
  else if (number)
    prompts.numbers.push_back(value);
  else if (text.endsWith(".PQD") || text.endsWith(".csv"))
    prompts.paths.push_back(file_ = folder_.filePath(text));
  else
    prompts.lines.push_back(text);
}

void GuidePlayer::expectMessage(const QString& text) {
  FakePrompts& prompts = program_.prompts;
  QString told;
  if (!prompts.warned.isEmpty())
    told = prompts.warned.takeFirst();
  else if (!prompts.told.isEmpty())
    told = toQString(messageText(static_cast<Message>(prompts.told.takeFirst())));
  if (told != text) throw NotDone("not told: " + text);
}

void GuidePlayer::open(const QString& what) {
  const QString window = what.section(", ", 0, 0);
  if (window != "Insights") closeInsights();
  if (window == "Insights")
    openInsights();
  else if (window == "Calculations")
    openWindow(window, kCalculations, "StartCalc");
  else
    openWindow(window, kManager, "StartStockMgmt");
  chooseTab(what.section(", ", 1));
}

void GuidePlayer::openInsights() {
  if (window_ != nullptr && window_->objectName() == kInsights) return;
  if (window_ == nullptr || window_->objectName() != kManager) throw NotDone("no manager");
  QTest::keyClick(window_, Qt::Key_I, Qt::ControlModifier);
  QWidget* const insights = program_.window(kInsights);
  const auto active = [insights] { return QApplication::activeWindow() == insights; };
  if (insights == nullptr || !QTest::qWaitFor(active)) throw NotDone("no insights");
  window_ = insights;
  window_->resize(window_->sizeHint().expandedTo(window_->size()));
}

void GuidePlayer::closeInsights() {
  if (window_ == nullptr || window_->objectName() != kInsights) return;
  click("Exit");
  window_ = program_.window(kManager);
  if (!program_.isActivated(window_)) throw NotDone("no manager behind the insights");
}

void GuidePlayer::openWindow(const QString& name, const char* objectName, const char* button) {
  if (window_ == nullptr || window_->objectName() != objectName) {
    if (window_ != nullptr) click("Exit to menu");
    if (!program_.isActivated(&program_.program.start())) throw NotDone("no start window");
    if (plain(program_.find<QPushButton>(button)->text()) != name)
      throw NotDone("no such window: " + name);
    program_.click(button);
    window_ = program_.window(objectName);
    if (window_ == nullptr) throw NotDone("does not open: " + name);
    window_->resize(window_->sizeHint().expandedTo(window_->size()));
  }
  if (!program_.isActivated(window_)) throw NotDone("not active: " + name);
}

void GuidePlayer::chooseTab(const QString& caption) {
  auto* bar = window_->findChild<QTabBar*>();
  int tab = -1;
  for (int i = 0; i < bar->count(); ++i)
    if (plain(bar->tabText(i)) == caption) tab = i;
  if (tab < 0) throw NotDone("no such tab: " + caption);
  const auto clickTab = [&](int i) {
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(i).center());
    settle();
  };
  // A calculator starts afresh when its tab comes to the front.
  if (bar->currentIndex() == tab && window_->objectName() == kCalculations)
    clickTab(tab == 0 ? 1 : 0);
  clickTab(tab);
}

template <typename Widget>
QList<Widget*> GuidePlayer::shown() const {
  if (window_ == nullptr) throw NotDone("no window yet");
  QList<Widget*> found = window_->findChildren<Widget*>();
  found.removeIf([](QWidget* widget) { return !widget->isVisible(); });
  return found;
}

void GuidePlayer::enter(const QString& label, const QString& value) {
  for (auto* list : shown<QComboBox>())
    if (list->accessibleName() == label) return choose(list, value);
  for (auto* box : shown<QLineEdit>()) {
    if (box->accessibleName() != label) continue;
    if (box->isReadOnly() || !box->isEnabled()) throw NotDone("takes no input: " + label);
    clickOn(box);
    QTest::keyClicks(box, value);
    return;
  }
  throw NotDone("no such box: " + label);
}

void GuidePlayer::choose(QComboBox* list, const QString& item) {
  const int row = list->findText(item, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (row < 0 || !list->isEnabled()) throw NotDone("not in the list: " + item);
  clickOn(list);
  QTest::keyClick(list->view(), Qt::Key_Home);
  for (int i = 0; i < row; ++i) QTest::keyClick(list->view(), Qt::Key_Down);
  QTest::keyClick(list->view(), Qt::Key_Return);
  // Without a window manager no window becomes active again by itself.
  if (!program_.isActivated(window_)) throw NotDone("not active again: " + item);
  if (list->currentIndex() != row) throw NotDone("does not take the item: " + item);
}

void GuidePlayer::clickOn(QWidget* control) {
  QTest::mouseClick(control, Qt::LeftButton);
  settle();
}

void GuidePlayer::doubleClick(const QString& item) {
  for (auto* list : shown<QListWidget>())
    for (QListWidgetItem* line : list->findItems(item, Qt::MatchExactly | Qt::MatchCaseSensitive)) {
      const QPoint place = list->visualItemRect(line).center();
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
      QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
      return;
    }
  throw NotDone("no such line: " + item);
}

QAbstractButton* GuidePlayer::button(const QString& caption) const {
  for (auto* button : shown<QAbstractButton>())
    if (plain(button->text()) == caption && button->isEnabled()) return button;
  throw NotDone("no such button: " + caption);
}

void GuidePlayer::click(const QString& caption) {
  clickOn(button(caption));
}

// A command of the menus, by its key.
void GuidePlayer::command(const QString& caption) {
  for (const QAction* action : window_->findChildren<QAction*>()) {
    if (action->text() != caption + "..." && action->text() != caption) continue;
    if (!action->isEnabled() || action->shortcut().isEmpty()) break;
    const QKeyCombination key = action->shortcut()[0];
    QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
    return settle();
  }
  throw NotDone("no such command: " + caption);
}

// The command waits for its window, so the lines are played from within.
void GuidePlayer::openAnd(const QString& command, const QStringList& lines) {
  QAction* chosen = nullptr;
  for (auto* action : window_->findChildren<QAction*>())
    if (action->text().remove("...") == command && action->isEnabled()) chosen = action;
  if (chosen == nullptr) throw NotDone("no such command: " + command);
  QWidget* const below = window_;
  std::exception_ptr failure;
  QTimer::singleShot(30, below, [&] {
    window_ = QApplication::activeModalWidget();
    if (window_ == nullptr) return;
    try {
      window_->resize(window_->sizeHint().expandedTo(window_->size()));
      // It counts as active while the window below it is.
      window_->activateWindow();
      if (!QTest::qWaitFor([this] { return QApplication::activeWindow() == window_; }))
        throw NotDone("not active: " + command);
      playLines(lines);
      // The box that was typed into last is left.
      QTest::mouseClick(shown<QPlainTextEdit>().front(), Qt::LeftButton);
      Closed seen{report(), picture({}), picture("chart-")};
      closed_ = std::move(seen);
    } catch (const std::runtime_error&) {
      failure = std::current_exception();
    }
    window_->close();
  });
  chosen->trigger();
  window_ = below;
  if (failure) std::rethrow_exception(failure);
  if (!closed_) throw NotDone("opens no window: " + command);
}

void GuidePlayer::settle() {
  // What waits for the end of a click.
  QEventLoop loop;
  QTimer::singleShot(0, &loop, &QEventLoop::quit);
  loop.exec();
}

void GuidePlayer::forget() {
  FakePrompts& prompts = program_.prompts;
  prompts.told.clear();
  prompts.warned.clear();
  prompts.answers.clear();
  prompts.lines.clear();
  prompts.numbers.clear();
  prompts.paths.clear();
}

QString GuidePlayer::report() const {
  if (closed_) return closed_->report;
  const auto boxes = shown<QPlainTextEdit>();
  if (boxes.size() != 1) throw NotDone("no report box in view");
  return boxes.front()->toPlainText();
}

QByteArray GuidePlayer::fileBytes() const {
  QFile file(file_);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage GuidePlayer::picture(const QString& name) {
  if (window_ == nullptr) throw NotDone("no window yet");
  if (closed_) return name.startsWith("chart-") ? closed_->chart : closed_->window;
  QImage image;
  const auto take = [&image](QWidget* window, const QString& more) {
    QTest::qWait(30);
    image = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
    image.setText(kPictureContent, contentOf(window) + more);
  };
  if (!name.startsWith("chart-")) {
    take(window_, {});
    return image;
  }
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, window_, [&] {
    if (QWidget* chart = program_.window("PQGraph")) {
      take(chart, "\nfigures\t" + report().replace('\n', '|') + "\t0\t0\t0\t0");
      program_.click("PQGExit");
    }
  });
  timer.start(100);
  click("Graph");
  if (image.isNull() || !program_.isActivated(window_)) throw NotDone("no chart: " + name);
  return image;
}

QString contentDifference(const QString& one, const QString& other) {
  constexpr int kNear = 4;
  constexpr int kFields = 6;
  const QStringList lines = one.split('\n');
  const QStringList others = other.split('\n');
  for (qsizetype i = 0; i < std::max(lines.size(), others.size()); ++i) {
    const QStringList a = lines.value(i).split('\t');
    const QStringList b = others.value(i).split('\t');
    bool same = a.size() == kFields && b.size() == kFields && a[0] == b[0] && a[1] == b[1];
    for (int k = 2; same && k < kFields; ++k) same = std::abs(a[k].toInt() - b[k].toInt()) <= kNear;
    if (!same) return lines.value(i) + "\n" + others.value(i);
  }
  return {};
}

}  // namespace mirelund::testing

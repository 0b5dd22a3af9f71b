// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/page_player.h"

#include <QAbstractItemView>
#include <QEventLoop>
#include <QFile>
#include <QScrollArea>
#include <QTimer>
#include <cstdlib>
#include <utility>

namespace mirelund::testing {

namespace {

const QStringList kPages = {"PensionGrowth",    "Mortgage",     "InvestmentGrowth",
                            "RetirementIncome", "CompoundGain", "CapitalRequired"};

// Lets happen what waits for the end of a click.
void settle() {
  QEventLoop loop;
  QTimer::singleShot(0, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace

PagePlayer::PagePlayer() {
  program_.prompts.whileWarned = [this] {
    gather();  // what was told before
    told_ << "platform " + program_.prompts.warned.takeLast();
  };
  program_.openCalculations(0);
  window_ = program_.window("PQInvest");
  if (window_ == nullptr) throw NotPlayed("no window", "PQInvest");
}

QWidget* PagePlayer::frontPage() const {
  return find<QTabWidget>("SSTab1")->currentWidget();
}

template <typename Widget>
Widget* PagePlayer::inFront(const QString& name) const {
  auto* control = find<Widget>(name);
  if (control == nullptr) throw NotPlayed("no such control", name);
  if (!control->isVisible()) throw NotPlayed("not on this page", name);
  return control;
}

void PagePlayer::clickOn(QWidget* control) {
  // The event goes to the control whatever lies above it; a person's would not.
  // On a screen as small as this a page scrolls.
  if (auto* scroll = frontPage()->findChild<QScrollArea*>(); scroll->isAncestorOf(control))
    scroll->ensureWidgetVisible(control);
  const QPoint place = control->rect().center();
  QWidget* hit = window_->childAt(control->mapTo(window_, place));
  if (hit != control && !control->isAncestorOf(hit))
    throw NotPlayed("out of the mouse's reach", control->objectName());
  QTest::mouseClick(control, Qt::LeftButton, {}, place);
  settle();
}

void PagePlayer::choosePage(const QString& name) {
  const auto page = static_cast<int>(kPages.indexOf(name));
  if (page < 0) throw NotPlayed("no such page", name);
  auto* tabs = find<QTabWidget>("SSTab1");
  // Only a change of the tab starts a page, and with the page before it goes the
  // focus: it would be in a control of this one.
  program_.choosePage(page == 0 ? 1 : 0);
  leave();
  program_.choosePage(page);
  settle();
  if (tabs->currentIndex() != page) throw NotPlayed("does not come to the front", name);
}

void PagePlayer::type(const QString& box, const QString& keys) {
  clickOn(inFront<QLineEdit>(box));
  for (const QChar key : keys) {
    if (key.unicode() > 127) throw NotPlayed("no such key", key);
    QTest::keyClick(QApplication::focusWidget(), key.toLatin1());
  }
}

void PagePlayer::choose(const QString& list, const QString& item) {
  auto* combo = inFront<QComboBox>(list);
  const int row = combo->findText(item, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (row < 0) throw NotPlayed("not in the list", item);
  clickOn(combo);
  QAbstractItemView* items = combo->view();
  if (!items->isVisible()) throw NotPlayed("does not open", list);
  const int steps = row - combo->currentIndex();
  for (int i = 0; i < std::abs(steps); ++i)
    QTest::keyClick(items, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
  QTest::keyClick(items, Qt::Key_Return);
  settle();
  if (combo->currentIndex() != row) throw NotPlayed("does not take the item", item);
}

void PagePlayer::click(const QString& option) {
  auto* button = inFront<QRadioButton>(option);
  clickOn(button);
  if (button->isEnabled() && !button->isChecked())
    throw NotPlayed("does not take the click", option);
}

void PagePlayer::leave() {
  clickOn(find<QPlainTextEdit>("Results")->viewport());
}

void PagePlayer::strike(Qt::Key key) {
  QTest::keyClick(QApplication::focusWidget(), key);
  settle();
}

void PagePlayer::press(const QString& button) {
  clickOn(inFront<QPushButton>(button));
}

void PagePlayer::gather() {
  FakePrompts& prompts = program_.prompts;
  for (const auto message : std::exchange(prompts.told, {}))
    told_ << QString("message %1").arg(static_cast<int>(message));
  for (const auto question : std::exchange(prompts.asked, {}))
    told_ << QString("question %1").arg(static_cast<int>(question));
}

QStringList PagePlayer::takeTold() {
  gather();
  return std::exchange(told_, {});
}

QString PagePlayer::results() const {
  return find<QPlainTextEdit>("Results")->toPlainText();
}

ScriptFile::ScriptFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw NotPlayed("cannot be read", path);
  const QString whole = QString::fromUtf8(file.readAll());
  const QString separator = "\n----\n";
  const auto at = whole.indexOf(separator);
  if (at < 0) throw NotPlayed("no results in", path);
  script = whole.left(at);
  results = whole.mid(at + separator.size());
}

namespace {

void enter(PagePlayer& player, const QString& control, const QString& text) {
  if (player.find<QComboBox>(control) != nullptr) {
    player.choose(control, text);
    return;
  }
  const auto* edit = player.find<QLineEdit>(control);
  if (edit != nullptr && edit->isReadOnly()) throw NotPlayed("takes no input", control);
  if (text.isEmpty()) throw NotPlayed("no key to type into", control);
  player.type(control, text);
  if (QApplication::focusWidget() != edit) throw NotPlayed("does not take the focus", control);
}

void playLine(PagePlayer& player, const QString& line) {
  const auto rest = [&line](QLatin1String word) { return line.mid(word.size()); };
  const auto equals = line.indexOf(" = ");
  if (line.startsWith("page ")) {
    player.choosePage(rest(QLatin1String("page ")));
  } else if (line.startsWith("press ")) {
    player.press(rest(QLatin1String("press ")));
  } else if (line.startsWith("click ")) {
    player.click(rest(QLatin1String("click ")));
    player.leave();
  } else if (equals >= 0) {
    enter(player, line.left(equals), line.mid(equals + 3));
    player.leave();
  } else {
    throw NotPlayed("not understood", line);
  }
}

}  // namespace

QString playScript(PagePlayer& player, const QString& script) {
  player.takeTold();  // what an earlier script was about
  bool hasPage = false;
  QStringList told;
  const auto nothingMore = [&told] {
    if (!told.isEmpty()) throw NotPlayed("told, and not in the script", told.front());
  };
  for (const QString& line : script.split('\n')) {
    if (line.startsWith('#') || line.isEmpty()) continue;
    if (line.startsWith("message ") || line.startsWith("platform ")) {
      if (told.isEmpty() || told.front() != line) throw NotPlayed("not told", line);
      told.removeFirst();
      continue;
    }
    nothingMore();
    hasPage = hasPage || line.startsWith("page ");
    if (!hasPage) throw NotPlayed("no page yet", line);
    playLine(player, line);
    told = player.takeTold();
  }
  nothingMore();
  if (!hasPage) throw NotPlayed("no page in", "the script");
  return player.results();
}

}  // namespace mirelund::testing

// SPDX-License-Identifier: GPL-3.0-or-later
// What window tests share: the person's place, a printer that writes files, and
// controls found by their names.
#pragma once

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPagedPaintDevice>
#include <QPlainTextEdit>
#include <QPrinterInfo>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <deque>
#include <functional>
#include <memory>

#include "application.h"
#include "dialogs/prompts.h"
#include "dialogs/report_printer.h"
#include "program.h"

/// As QTEST_MAIN, with the program's application.
#define MIRELUND_TEST_MAIN(Test)                         \
  int main(int argc, char** argv) {                      \
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);     \
    const mirelund::Application application(argc, argv); \
    Test test;                                           \
    return QTest::qExec(&test, argc, argv);              \
  }

namespace mirelund::testing {

/// Answers in the person's place and keeps what was told and asked.
class FakePrompts : public Prompts {
 public:
  QList<int> told;  // messages by number
  QStringList warned;
  QStringList confirmed;
  QList<int> asked;           // questions by number
  std::deque<bool> answers;   // no more answers: no
  std::deque<QString> lines;  // no more lines: cancelled
  std::deque<int> numbers;    // no more numbers: cancelled
  std::deque<QString> paths;  // no more paths: cancelled
  QStringList initialPaths;
  QStringList informed;  // titles and texts
  QStringList browsed;   // pages opened
  bool hasBrowser = true;
  std::function<void()> whileTold;  // what a dialog of its own would do meanwhile
  std::function<void()> whileWarned;
  QList<QWidget*> over;

  void tell(QWidget* parent, Message message) override {
    over << parent;
    told << static_cast<int>(message);
    if (whileTold) whileTold();
  }
  void warn(QWidget* parent, const QString& text) override {
    over << parent;
    warned << text;
    if (whileWarned) whileWarned();
  }
  void inform(QWidget* parent, const QString& title, const QString& text) override {
    over << parent;
    informed << title << text;
  }
  bool browse(const QString& path) override {
    browsed << path;
    return hasBrowser;
  }
  bool confirm(QWidget* parent, const QString& text, const QString& /*accept*/) override {
    over << parent;
    confirmed << text;
    return take(answers, false);
  }
  bool ask(QWidget* parent, Question question) override {
    over << parent;
    asked << static_cast<int>(question);
    return take(answers, false);
  }
  std::optional<QString> askLine(QWidget* parent, const QString& /*caption*/,
                                 const QString& /*prompt*/) override {
    over << parent;
    const QString line = take(lines, QString("1"));
    return line == "1" ? std::nullopt : std::optional(line);
  }
  std::optional<int> askRecordNumber(QWidget* parent, const QString& /*prompt*/) override {
    over << parent;
    if (numbers.empty()) return std::nullopt;
    return take(numbers, 0);
  }
  QString askOpenPath(QWidget* /*over*/, const QString& /*title*/, const QString& initial,
                      const QString& /*filter*/) override {
    initialPaths << initial;
    return take(paths, QString());
  }
  QString askSavePath(QWidget* /*over*/, const QString& /*title*/, const QString& initial,
                      const QString& /*filter*/) override {
    initialPaths << initial;
    return take(paths, QString());
  }

 private:
  template <typename T>
  static T take(std::deque<T>& from, T otherwise) {
    if (from.empty()) return otherwise;
    T first = from.front();
    from.pop_front();
    return first;
  }
};

/// Prints to a PDF file and reads the text back out of it.
class PdfTarget : public PrintTarget {
  QTemporaryDir folder_;

 public:
  QPageSize::PageSizeId pageSize = QPageSize::A4;
  QString path = folder_.filePath("out.pdf");
  bool cancelled = false;

  std::unique_ptr<Printout> open(QWidget* /*over*/, const QString& suggestedName) override {
    if (cancelled) return nullptr;
    auto printout = printoutToPdf(path, suggestedName);
    printout->pages().setPageSize(QPageSize(pageSize));
    return printout;
  }

  /// The lines of all pages, without the margin they share; `pitch` is the width
  /// of a character in points.
  QStringList lines(double pitch) const {
    QStringList found =
        run("pdftotext", {"-fixed", QString::number(pitch), "-nopgbrk", path, "-"}).split('\n');
    qsizetype margin = 1000;
    for (const QString& line : found)
      if (const auto text = line.trimmed(); !text.isEmpty())
        margin = std::min(margin, line.indexOf(text.front()));
    for (QString& line : found) line.remove(0, margin);
    while (!found.isEmpty() && found.back().isEmpty()) found.removeLast();
    return found;
  }
  QString run(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
  }
};

/// A program on the offscreen platform whose controls are found by name.
class ProgramFixture {
 public:
  ProgramFixture() : program(prompts, printing, global) {
    program.start().show();
    QVERIFY(isActivated(&program.start()));
  }
  ~ProgramFixture() {
    // A popup goes with the list that it belongs to.
    QWidgetList windows;
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (widget != &program.start() && widget->parent() == nullptr) windows << widget;
    qDeleteAll(windows);
  }

  // A window manager may be slow, or give the focus to a window that is going. A dialog's
  // window calls itself active already when the one beneath it is: the keys still go there.
  static bool isActivated(QWidget* widget) {
    constexpr int kTries = 10;
    for (int i = 0; i < kTries; ++i) {
      widget->activateWindow();
      if (QTest::qWaitForWindowActive(widget, 1000) &&
          QTest::qWaitFor([&] { return QApplication::activeWindow() == widget->window(); }, 1000))
        return true;
    }
    return false;
  }

  static QWidget* window(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (widget->objectName() == name && widget->isVisible()) return widget;
    return nullptr;
  }
  template <typename Widget = QWidget>
  static Widget* find(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* found = widget->findChild<Widget*>(name)) return found;
    qFatal("no control %s", name);
  }
  static QLineEdit* box(const char* name) { return find<QLineEdit>(name); }
  static QString results() { return find<QPlainTextEdit>("Results")->toPlainText(); }

  static void click(const char* name) { QTest::mouseClick(find(name), Qt::LeftButton); }
  static void type(const char* name, const char* keys) {
    QTest::mouseClick(box(name), Qt::LeftButton);
    QTest::keyClicks(box(name), keys);
  }
  static void drop(QLineEdit* box, const QString& text) {
    QMimeData data;
    data.setText(text);
    const QPoint place = box->rect().center();
    QDragEnterEvent over(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(box, &over);
    QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(box, &event);
  }
  static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  void openCalculations(int page) {
    click("StartCalc");
    QVERIFY(isActivated(window("PQInvest")));
    choosePage(page);
  }
  static void choosePage(int page) {
    auto* bar = find<QTabWidget>("SSTab1")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
  }

  Global global;
  FakePrompts prompts;
  PdfTarget printing;
  Program program;
};

}  // namespace mirelund::testing

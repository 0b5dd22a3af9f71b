// SPDX-License-Identifier: GPL-3.0-or-later
// What every chapter of the tour stands on: the program, its windows and
// controls found by name, and the folder for pictures and printouts.
#pragma once

#include <QApplication>
#include <QDir>
#include <QPagedPaintDevice>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include "application.h"
#include "dialogs/dialog_prompts.h"
#include "dialogs/report_printer.h"
#include "program.h"

namespace mirelund::tour {

inline QTextStream& out() {
  static QTextStream stream(stdout);
  return stream;
}

// Prints into the folder, under a number and the document's name.
class FolderTarget : public PrintTarget {
 public:
  explicit FolderTarget(QDir folder) : folder_(std::move(folder)) {}

  void setNext(const QString& name) { next_ = name; }

  std::unique_ptr<Printout> open(QWidget* /*over*/, const QString& suggestedName) override {
    auto printout = printoutToPdf(folder_.filePath(next_), suggestedName);
    printout->pages().setPageSize(QPageSize(QPageSize::A4));
    out() << "printout " << folder_.filePath(next_) << Qt::endl;
    return printout;
  }

 private:
  QDir folder_;
  QString next_;
};

class Stage {
 public:
  explicit Stage(const QDir& folder)
      : folder_(folder),
        printing_(folder),
        prompts_(global_.dialogs),
        program_(prompts_, printing_, global_) {}

 protected:
  QWidget* window(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (widget->objectName() == name && widget->isVisible()) return widget;
    qFatal("no window %s", name);
  }
  template <typename Widget = QWidget>
  Widget* find(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* found = widget->findChild<Widget*>(name)) return found;
    qFatal("no control %s", name);
  }

  // As large as it likes to be: the platform's screen is small.
  void openWindow(const char* button, const char* name) {
    click(button);
    window(name)->resize(window(name)->sizeHint().expandedTo(window(name)->size()));
  }
  void heading(const QString& text) { out() << "\n== " << text << " ==" << Qt::endl; }
  void click(const char* name) { QTest::mouseClick(find(name), Qt::LeftButton); }
  void type(const char* box, const char* keys) {
    QTest::mouseClick(find(box), Qt::LeftButton);
    QTest::keyClicks(find(box), keys);
  }
  void shot(QWidget* widget, const QString& name) {
    QTest::qWait(30);
    const QString path = folder_.filePath(name + ".png");
    if (!widget->grab().save(path)) qFatal("cannot write %s", qPrintable(path));
    out() << "picture  " << path << Qt::endl;
  }
  void shot(const char* windowName, const QString& name) { shot(window(windowName), name); }
  void tab(const char* tabs, int page) {
    auto* bar = find<QTabWidget>(tabs)->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
  }
  void report(const char* box) { out() << find<QPlainTextEdit>(box)->toPlainText() << Qt::endl; }
  // Runs `look` in the dialog that the next action opens.
  template <typename Look>
  void inDialog(const char* name, Look look) {
    QTimer::singleShot(100, qApp, [this, name, look] { look(window(name)); });
  }

  QDir folder_;
  Global global_;
  FolderTarget printing_;
  DialogPrompts prompts_;
  Program program_;
};

/// A working day in the investment manager.
void manageInvestments(const QDir& folder);

}  // namespace mirelund::tour

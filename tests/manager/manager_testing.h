// SPDX-License-Identifier: GPL-3.0-or-later
// The investment manager's window, driven by real events.
#pragma once

#include <QLabel>
#include <QListWidget>

#include "ui_testing.h"

namespace mirelund::testing {

// Dates are month, day and year in these tests, wherever they run.
inline const bool kAmericanDates = qputenv("LC_ALL", "en_US.UTF-8");

enum ManagerPageIndex { kOpenPage, kEntryPage, kDisplayPage, kCurrentValuePage, kSavePage };
enum TypeIndex { kBought, kSold, kCashDividend, kDividendShares, kFeeCash, kUnitFee };

class ManagerFixture : public ProgramFixture {
 public:
  ManagerFixture() { open(); }

  static QWidget* manager() { return window("PQManagement"); }
  void open() {
    click("StartStockMgmt");
    activate();
  }
  /// Without a window manager no window becomes active again by itself.
  static void activate() {
    manager()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(manager()));
  }

  /// What waits for the mouse to be let go has happened when it returns.
  static void click(const char* name) {
    ProgramFixture::click(name);
    QCoreApplication::processEvents();
  }
  static QString text(const char* name) { return find<QPlainTextEdit>(name)->toPlainText(); }
  static QString label(const char* name) { return find<QLabel>(name)->text(); }
  static QComboBox* list(const char* name) { return find<QComboBox>(name); }

  /// A page by the mouse. What that starts has happened when it returns.
  static void page(int index) {
    auto* bar = find<QTabWidget>("SSTab2")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    QCoreApplication::processEvents();
  }
  /// A row of a drop-down list, by its popup.
  static void choose(const char* name, int row) {
    QComboBox* box = list(name);
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::keyClick(box->view(), Qt::Key_Home);
    for (int i = 0; i < row; ++i) QTest::keyClick(box->view(), Qt::Key_Down);
    QTest::keyClick(box->view(), Qt::Key_Return);
    activate();
  }
  void addFund(const char* name) {
    prompts.lines.push_back(name);
    click("ECreateFund");
  }
  /// A record of the active fund: the date, then what Enter leads to.
  static void record(int type, const char* date, const std::vector<const char*>& values) {
    choose("ETransType", type);
    ProgramFixture::type("EInDate", date);
    for (const char* value : values) {
      key(Qt::Key_Return);
      QTest::keyClicks(QApplication::focusWidget(), value);
    }
    key(Qt::Key_Return);
  }
  /// Opens a file with the bytes; the folder goes with the fixture.
  void openFile(const QByteArray& bytes) {
    prompts.paths.push_back(file("test.PQD", bytes));
    page(kOpenPage);
  }
  QString file(const QString& name, const QByteArray& bytes) const {
    QFile out(path(name));
    if (!out.open(QIODevice::WriteOnly)) qFatal("cannot write");
    out.write(bytes);
    return out.fileName();
  }
  QString path(const QString& name) const { return folder.filePath(name); }
  QByteArray bytes(const QString& name) const {
    QFile in(path(name));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(none)");
  }
  QList<int> takeTold() { return std::exchange(prompts.told, {}); }
  QList<int> takeAsked() { return std::exchange(prompts.asked, {}); }

  QTemporaryDir folder;
};

/// Two funds, whose records interleave, one purchase and one dividend each.
inline const QByteArray kTwoFunds =
    "4,2,\"All Records\",\"31\"\r\n"
    "\"Alder\",\"1\"\r\n"
    "\"Birch\",\"2\"\r\n"
    "1,10,100,50,0,1050,\"B\",#2019-01-02#\r\n"
    "2,20,50,0,0,1000,\"B\",#2019-02-03#\r\n"
    "1,0,0,0,12.5,-12.5,\"C\",#2020-03-04#\r\n"
    "2,0,0,0,7.25,-7.25,\"C\",#2020-05-06#\r\n";

}  // namespace mirelund::testing

// SPDX-License-Identifier: GPL-3.0-or-later
// The two pages of the data file: what opening and saving do, and the button.
#pragma once

#include "manager/manager_page.h"

namespace mirelund {

/// A text, a button that starts, a way out.
class FilePage : public ManagerPage {
  Q_OBJECT

 public:
  using ManagerPage::ManagerPage;

  void shown() override;
  QWidget* firstControl() override { return start_; }

  /// What the button does, and choosing the page with the mouse.
  virtual void start() = 0;

 protected:
  /// What the page is made of; made once, by the constructor of a page.
  struct Look {
    const char* title;
    const char* explanation;
    const char* button;
    const char* caption;
    const char* exit;
    const char* doneLabel;
  };
  template <typename Page>
  void make(const Look& look, Page* page, void (Page::*started)(), void (Page::*left)()) {
    addTexts(look);
    auto* row = new QHBoxLayout;
    start_ = addButton(row, look.button, look.caption, page, started);
    addButtons(row);
    row->addStretch();
    addButton(row, look.exit, "E&xit to menu", page, left);
    addEnd(row, look);
  }

  /// More to begin with, behind the first button.
  virtual void addButtons(QHBoxLayout* row);

  void setDone(const QString& text);

 private:
  void addTexts(const Look& look);
  void addEnd(QHBoxLayout* row, const Look& look);

  QPushButton* start_ = nullptr;
  QLabel* done_ = nullptr;
};

/// OpenDatabase: the database in memory is replaced by a file's.
class OpenPage : public FilePage {
  Q_OBJECT

 public:
  explicit OpenPage(ManagerHost& host);
  void start() override { OFOpen_Click(); }
  /// The same with a path at hand.
  void open(const QString& path);

 private:
  void OFOpen_Click();
  void OFSample_Click();
  void OFExit_Click();
  void addButtons(QHBoxLayout* row) override;
  /// Leaves the box in focus; false where what is unsaved is to stay.
  bool mayReplace();
  void load(const QString& path);
  void show(Message refused);
};

/// SaveDatabase: the database in memory is written to a file.
class SavePage : public FilePage {
  Q_OBJECT

 public:
  explicit SavePage(ManagerHost& host);
  void start() override { SFSave_Click(); }
  /// Saves to the file that the database was opened from or saved to last, unasked;
  /// asks for a name where there is none.
  void saveAgain();

 private:
  void SFSave_Click();
  /// True where there is something to save; what is in the focused box counts.
  bool begin();
  void saveTo(const QString& path);
  void SFExit_Click();
  /// Asks first where another program has changed the file.
  Saved save(const QString& path);
};

}  // namespace mirelund

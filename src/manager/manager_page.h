// SPDX-License-Identifier: GPL-3.0-or-later
// What the manager window knows of its pages, and they of it.
#pragma once

#include <QBoxLayout>
#include <QPushButton>
#include <QWidget>
#include <string>
#include <string_view>

#include "manager/manager.h"

class QLabel;
class QPlainTextEdit;

namespace mirelund {

class Prompts;

/// What a page may ask of the window around it.
class ManagerHost {
 public:
  virtual ~ManagerHost() = default;

  virtual Manager& manager() = 0;
  virtual Global& global() = 0;
  virtual Prompts& prompts() = 0;
  /// The window, for what opens over it.
  virtual QWidget* over() = 0;

  /// Leaves the focused box, so that its value is stored, and tells what waits to
  /// be told; false when the value was refused. To be called first by whatever
  /// reads a box or opens a dialog.
  virtual bool leaveFocused() = 0;
  /// Shows a message, if it is one.
  virtual void tell(Message message) = 0;
  virtual bool ask(Question question, const std::string& recordNumber = {}) = 0;
  /// True unless there are unsaved changes that the person wants to go back to.
  virtual bool mayDiscard() = 0;
  /// After any change: the numbers of funds and records and the file's name.
  virtual void showCounters() = 0;
  virtual void showEntryPage() = 0;
  virtual void showChart() = 0;
  /// Prints a report, or tells that there is none.
  virtual void print(QString report) = 0;
  /// Writes a report to a file that the person names, or tells that there is none.
  virtual void exportReport(const SheetMade& report) = 0;
  /// Leaves the manager, unless the person stays.
  virtual void leave() = 0;
};

/// A page of the manager window.
class ManagerPage : public QWidget {
  Q_OBJECT

 public:
  explicit ManagerPage(ManagerHost& host);

  /// The page was chosen: it shows the database as it is now.
  virtual void shown() = 0;
  /// A step has been undone or redone while the page is in view: it shows the database
  /// as it is now.
  virtual void restored(const Restored& /*step*/) { shown(); }
  /// Where the focus starts.
  virtual QWidget* firstControl() = 0;
  /// The page's buttons, where it has them.
  virtual QPushButton* helpButton() const { return nullptr; }
  virtual QPushButton* printButton() const { return nullptr; }
  /// Exports the report in view, on a page that has reports.
  virtual void exportShown() {}

 protected:
  ManagerHost& host() const { return host_; }
  Manager& manager() const { return host_.manager(); }

  QVBoxLayout* column() const { return column_; }

  /// A button at the end of a row; controls are made in the order in which Tab
  /// walks them. Enter presses it, as the space bar does.
  template <typename Page>
  QPushButton* addButton(QBoxLayout* row, const char* name, const QString& caption, Page* page,
                         void (Page::*clicked)()) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, page, clicked);
    row->addWidget(button);
    return button;
  }

  /// A label and the control that it is the buddy of.
  QLabel* addLabel(const QString& text, QWidget* control);

 private:
  ManagerHost& host_;
  QVBoxLayout* column_;
};

/// A page with a report box, whose Help takes the report's place and gives it back.
class ReportPage : public ManagerPage {
  Q_OBJECT

 public:
  using ManagerPage::ManagerPage;

  QPushButton* helpButton() const override { return help_; }
  QPushButton* printButton() const override { return print_; }
  void exportShown() override;

 protected:
  /// The box, last in the order of Tab.
  QPlainTextEdit* makeReport(const char* name, const QString& accessibleName, int columns);
  QPlainTextEdit* report() const { return report_; }

  template <typename Page>
  void addHelpButton(QBoxLayout* row, const char* name, Page* page, void (Page::*clicked)()) {
    help_ = addButton(row, name, "&Help", page, clicked);
  }

  template <typename Page>
  void addPrintButton(QBoxLayout* row, const char* name, Page* page, void (Page::*clicked)()) {
    print_ = addButton(row, name, "&Print", page, clicked);
  }

  /// Shows a report, in place of Help where that is open.
  void showReport(std::string_view text);
  /// The Help button.
  void toggleHelp(std::string_view helpText);
  bool helpShown() const { return helpShown_; }
  /// Puts the report back into the box when Help closes.
  virtual void restoreReport() = 0;
  /// The report as a table.
  virtual SheetMade sheets() = 0;

  void printShown();

 private:
  void setHelpShown(bool shown);

  QPlainTextEdit* report_ = nullptr;
  QPushButton* help_ = nullptr;
  QPushButton* print_ = nullptr;
  bool helpShown_ = false;
};

/// A name as it fits into so many characters of a label.
QString elidedName(const QWidget* label, const QString& name, int characters);

}  // namespace mirelund

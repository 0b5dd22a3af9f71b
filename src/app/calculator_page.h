// SPDX-License-Identifier: GPL-3.0-or-later
// What the calculator window knows of its pages, and they of it.
#pragma once

#include <QBoxLayout>
#include <QButtonGroup>
#include <QFrame>
#include <QGroupBox>
#include <QPushButton>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/global.h"
#include "app/input_boxes.h"
#include "app/shown_text.h"

class QComboBox;
class QGridLayout;
class QLabel;

namespace mirelund {

class BoxEdit;
class PrintTarget;
class Prompts;

/// What a page may ask of the window around it.
class PageHost {
 public:
  virtual ~PageHost() = default;

  virtual Global& global() = 0;
  virtual Prompts& prompts() = 0;
  virtual PrintTarget& printing() = 0;

  /// Leaves the focused box, so that its value is stored; false when the value
  /// was refused, which the person has been told.
  virtual bool leaveFocused() = 0;
  /// Gives `button` the focus and clicks it, as one mouse click does.
  virtual void click(QAbstractButton* button) = 0;
  /// Moves the focus, at once even where a dialog has just been closed.
  virtual void moveFocusTo(QWidget* control) = 0;
  /// Runs `action` now or, while a click is under way, when it is over.
  virtual void afterClick(std::function<void()> action) = 0;
  /// Shows a handler's report and message.
  virtual void show(const Outcome& outcome) = 0;
  /// Empties ReportLines(1) and the report box.
  virtual void emptyReport() = 0;
  /// Prints the report, or tells that none is on screen.
  virtual void print() = 0;
};

/// A calculator's page: a frame with the boxes of its rows, their labels,
/// and the buttons Calculate, Help and Print.
class CalculatorPage : public QFrame {
  Q_OBJECT

 public:
  /// `boxes` are the rows of the page's boxes, which outlive it.
  CalculatorPage(PageHost& host, std::span<const BoxRule> boxes);

  /// Fills the page with its initial values.
  virtual void load();

  /// A control of the page was left: a box, whose value is stored by then, a
  /// list or a button.
  virtual void controlLeft(QWidget* /*control*/) {}

  /// Whether showSchedule shows a window where each payment goes.
  virtual bool hasSchedule() const { return false; }
  virtual void showSchedule() {}

  /// Where the focus starts: the control that Tab reaches first.
  QWidget* firstControl();

  QPushButton* helpButton() const { return help_; }
  QPushButton* printButton() const { return print_; }

 protected:
  PageHost& host() { return host_; }
  BoxState& boxes() { return host_.global().boxes; }
  Reports& reports() { return host_.global().reports; }
  ChartSelectors& chart() { return host_.global().chart; }

  BoxEdit* box(std::string_view name) const;
  std::string textOf(std::string_view name) const;

  /// Gives the boxes the rules of an option, and shows the texts that the option
  /// routine of core returned.
  void setOption(int option, const std::vector<ShownText>& texts);

  /// The grid's next row: a label and the control it is the buddy of.
  static QLabel* addRow(QGridLayout* grid, const QString& label, QWidget* control);
  /// The same for one of the page's boxes.
  void addBoxRow(QGridLayout* grid, std::string_view name);
  void addAllBoxRows(QGridLayout* grid);
  /// A drop-down list in the grid's next row.
  QComboBox* addListRow(QGridLayout* grid, const char* name, const QString& label,
                        const QStringList& items);

  /// What stands above the buttons. Controls are made in the order in which
  /// Tab walks them.
  void addContent(QLayout* content) { layout_->addLayout(content); }
  void addWidget(QWidget* widget) { layout_->addWidget(widget); }

  /// Option buttons NAME_0 upward in a frame, which the page has to place.
  struct Options {
    QGroupBox* frame;
    QButtonGroup* group;
  };
  Options makeOptions(const char* name, const QString& title, const QStringList& captions);

  /// The page's three buttons, named by its prefix; made last.
  template <typename Page>
  void addButtons(const char* prefix, Page* page, void (Page::*calculate)(), void (Page::*help)(),
                  void (Page::*print)()) {
    auto* row = new QHBoxLayout;
    calculate_ = addButton(row, prefix, "Calculate", "&Calculate");
    connect(calculate_, &QPushButton::clicked, page, calculate);
    help_ = addButton(row, prefix, "Help", "&Help");
    connect(help_, &QPushButton::clicked, page, help);
    print_ = addButton(row, prefix, "Print", "&Print");
    connect(print_, &QPushButton::clicked, page, print);
    layout_->addStretch();
    addContent(row);
  }

 private:
  QPushButton* addButton(QHBoxLayout* row, const char* prefix, const char* role,
                         const char* caption);
  void enterPressedIn(const BoxEdit* box);

  PageHost& host_;
  std::span<const BoxRule> rules_;
  std::vector<BoxEdit*> edits_;
  QVBoxLayout* layout_;
  QPushButton* calculate_ = nullptr;
  QPushButton* help_ = nullptr;
  QPushButton* print_ = nullptr;
};

/// Which page a page is; listed with the pages.
enum class CalculatorPageIndex : std::int16_t;

/// A page as the window's list has it.
struct CalculatorPageEntry {
  CalculatorPageIndex page;
  const char* caption;
  CalculatorPage* (*make)(PageHost& host);
  /// The window is as large as this page asks for: it is made with the window, and no
  /// other page asks for more (CalculatorWindowTest.noPageAsksForMore).
  bool sizesWindow = false;
};

}  // namespace mirelund

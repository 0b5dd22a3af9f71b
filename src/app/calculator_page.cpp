// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/calculator_page.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <algorithm>
#include <stdexcept>

#include "app/caption.h"
#include "app/filtered_edit.h"
#include "app/option_group.h"
#include "base/ui_text.h"

namespace mirelund {

namespace {
// Behind labels, controls and what a page puts beside them.
constexpr int kFreeColumn = 3;
}  // namespace

CalculatorPage::CalculatorPage(PageHost& host, std::span<const BoxRule> boxes)
    : host_(host), rules_(boxes), layout_(new QVBoxLayout(this)) {}

void CalculatorPage::load() {
  for (BoxEdit* box : edits_) box->load();
}

QWidget* CalculatorPage::firstControl() {
  const auto takesFocus = [this](const QWidget* control) {
    const auto* option = qobject_cast<const QRadioButton*>(control);
    return isAncestorOf(control) && (control->focusPolicy() & Qt::TabFocus) != 0 &&
           control->isEnabled() && (option == nullptr || option->isChecked());
  };
  QWidget* control = nextInFocusChain();
  while (!takesFocus(control)) control = control->nextInFocusChain();
  return control;
}

BoxEdit* CalculatorPage::box(std::string_view name) const {
  for (BoxEdit* box : edits_)
    if (box->rule().name == name) return box;
  throw std::out_of_range("no such box on this page");
}

std::string CalculatorPage::textOf(std::string_view name) const {
  return toStdString(box(name)->text());
}

void CalculatorPage::setOption(int option, const std::vector<ShownText>& texts) {
  for (BoxEdit* box : edits_) box->setRule(boxRule(rules_, box->rule().name, option));
  for (const ShownText& text : texts) {
    const QString name = toQString(text.control);
    if (auto* edit = findChild<BoxEdit*>(name))
      edit->setText(toQString(text.text));
    else
      findChild<QLabel*>(name)->setText(toQString(text.text));
  }
}

QLabel* CalculatorPage::addRow(QGridLayout* grid, const QString& label, QWidget* control) {
  const int row = grid->rowCount();
  auto* text = new Caption(label);
  text->setBuddy(control);
  if (control->accessibleName().isEmpty()) control->setAccessibleName(label);
  grid->addWidget(text, row, 0);
  grid->addWidget(control, row, 1);
  grid->setColumnStretch(kFreeColumn, 1);
  return text;
}

void CalculatorPage::addBoxRow(QGridLayout* grid, std::string_view name) {
  const BoxRule& rule = boxRule(rules_, name);
  auto* edit = new BoxEdit(boxes(), rule, this);
  // Wide enough for the longest text that its field can show.
  constexpr int kColumns = 16;
  const int columns = rule.look == BoxLook::Text ? 2 * kColumns : kColumns;
  edit->setCharacters(columns, columns);
  QLabel* label = addRow(grid, toQString(rule.label), edit);
  label->setObjectName(rule.labelName.empty() ? edit->objectName() + "Label"
                                              : toQString(rule.labelName));
  edits_.push_back(edit);
  connect(edit, &FilteredEdit::enterPressed, this, [this, edit] { enterPressedIn(edit); });
}

void CalculatorPage::addAllBoxRows(QGridLayout* grid) {
  for (const BoxRule& rule : rules_)
    if (rule.option == 0) addBoxRow(grid, rule.name);
}

QComboBox* CalculatorPage::addListRow(QGridLayout* grid, const char* name, const QString& label,
                                      const QStringList& items) {
  auto* list = new QComboBox(this);
  list->setObjectName(name);
  list->addItems(items);
  addRow(grid, label, list);
  return list;
}

CalculatorPage::Options CalculatorPage::makeOptions(const char* name, const QString& title,
                                                    const QStringList& captions) {
  const Options options{new QGroupBox(title, this), new QButtonGroup(this)};
  auto* column = new QVBoxLayout(options.frame);
  for (int element = 0; element < captions.size(); ++element) {
    auto* button = new QRadioButton(captions[element], options.frame);
    button->setObjectName(QString("%1_%2").arg(name).arg(element));
    options.group->addButton(button, element);
    column->addWidget(button, 0, Qt::AlignLeft);
  }
  tabToChosen(options.group);
  return options;
}

QPushButton* CalculatorPage::addButton(QHBoxLayout* row, const char* prefix, const char* role,
                                       const char* caption) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QString(prefix) + role);
  button->setAutoDefault(true);  // Enter presses it, as the space bar does
  row->addWidget(button);
  return button;
}

void CalculatorPage::enterPressedIn(const BoxEdit* box) {
  auto next = std::find(edits_.begin(), edits_.end(), box);
  do {
    ++next;
  } while (next != edits_.end() && (*next)->isReadOnly());
  if (next != edits_.end())
    (*next)->setFocus(Qt::TabFocusReason);
  else
    host_.click(calculate_);
}

}  // namespace mirelund

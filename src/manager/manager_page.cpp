// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/manager_page.h"

#include <QLabel>

#include "app/caption.h"
#include "app/report_box.h"
#include "app/short_names.h"
#include "base/ui_text.h"

namespace mirelund {

namespace {
constexpr int kReportLines = 16;
}

ManagerPage::ManagerPage(ManagerHost& host) : host_(host), column_(new QVBoxLayout(this)) {}

QLabel* ManagerPage::addLabel(const QString& text, QWidget* control) {
  auto* label = new Caption(text, this);
  label->setBuddy(control);
  if (control->accessibleName().isEmpty()) control->setAccessibleName(text);
  return label;
}

QPlainTextEdit* ReportPage::makeReport(const char* name, const QString& accessibleName,
                                       int columns) {
  report_ = new ReportBox(name, columns, kReportLines, this);
  report_->setAccessibleName(accessibleName);
  return report_;
}

void ReportPage::showReport(std::string_view text) {
  setHelpShown(false);
  report_->setPlainText(toQString(text));
}

void ReportPage::toggleHelp(std::string_view helpText) {
  if (helpShown_) {
    setHelpShown(false);
    restoreReport();
  } else {
    setHelpShown(true);
    report_->setPlainText(toQString(helpText));
  }
}

void ReportPage::setHelpShown(bool shown) {
  helpShown_ = shown;
  help_->setText(shown ? "Close &Help" : "&Help");
}

void ReportPage::printShown() {
  host().leaveFocused();
  host().print(report_->toPlainText());
}

void ReportPage::exportShown() {
  host().exportReport(helpShown_ ? SheetMade() : sheets());
}

QString elidedName(const QWidget* label, const QString& name, int characters) {
  const QFontMetricsF metrics(label->font());
  return shortNames({name}, metrics, characters * metrics.averageCharWidth()).front();
}

}  // namespace mirelund

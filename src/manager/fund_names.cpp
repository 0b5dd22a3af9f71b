// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/fund_names.h"

#include <QEvent>
#include <QLabel>
#include <algorithm>
#include <cmath>

#include "app/short_names.h"
#include "base/ui_text.h"

namespace mirelund {

namespace {

// Wants the whole name's width, whatever it shows of it.
class FundName : public QLabel {
 public:
  FundName(const QString& name, QWidget* parent) : QLabel(parent), name_(name.left(kMost)) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  }

  QSize sizeHint() const override {
    const double width = QFontMetricsF(font()).horizontalAdvance(name_);
    return {static_cast<int>(std::ceil(width)), fontMetrics().height()};
  }
  QSize minimumSizeHint() const override {
    return sizeHint().boundedTo({kLeast * fontMetrics().averageCharWidth(), kMost * kMost});
  }

 private:
  // Characters: of a longer name no more is asked for, of a shorter window no less kept.
  static constexpr int kMost = 60;
  static constexpr int kLeast = 10;

  QString name_;
};

}  // namespace

QLabel* FundNames::addName(const QString& name, QWidget* control) {
  auto* label = new FundName(name, this);
  label->setBuddy(control);
  setPlainToolTip(label, name);
  names_ << name;
  labels_.push_back(label);
  return label;
}

bool FundNames::event(QEvent* event) {
  const bool known = QWidget::event(event);
  // The layout has had it before.
  if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) fit();
  return known;
}

void FundNames::fit() {
  if (labels_.empty()) return;
  std::vector<double> widths;
  for (const QLabel* label : labels_) widths.push_back(label->width());
  const QStringList shown = shortNames(names_, QFontMetricsF(labels_.front()->font()), widths);
  for (std::size_t i = 0; i < labels_.size(); ++i)
    labels_[i]->setText(QString(shown[static_cast<qsizetype>(i)]).replace('&', "&&"));
}

}  // namespace mirelund

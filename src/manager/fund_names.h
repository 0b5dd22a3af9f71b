// SPDX-License-Identifier: GPL-3.0-or-later
// The names of funds beside their boxes.
#pragma once

#include <QWidget>
#include <vector>

class QLabel;

namespace mirelund {

/// Holds controls and the names that stand beside them. A name is as wide as its text
/// where there is room; where there is less, all names are shortened as
/// app/short_names.h says, each to the width that the layout has left it.
class FundNames : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  /// The label of a control; pointing at it shows the whole name.
  QLabel* addName(const QString& name, QWidget* control);

 protected:
  bool event(QEvent* event) override;

 private:
  void fit();

  QStringList names_;
  std::vector<QLabel*> labels_;
};

}  // namespace mirelund

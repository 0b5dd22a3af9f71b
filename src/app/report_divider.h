// SPDX-License-Identifier: GPL-3.0-or-later
// What stands beside a report, the report, and the divider between them.
#pragma once

#include <QSplitter>

namespace mirelund {

class ReportBox;

/// The divider can be moved; a double click on it makes room for the widest report.
/// Until then they share: the report's columns are whole, and the side has the rest, up
/// to what it asks for but at least half of that. What neither asks for the report has.
class ReportDivider : public QSplitter {
  Q_OBJECT

 public:
  ReportDivider(QWidget* side, ReportBox* report, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void giveSide(int width);

  QWidget* side_;
  ReportBox* report_;
  bool moved_ = false;
};

}  // namespace mirelund

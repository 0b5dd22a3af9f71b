// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/report_divider.h"

#include <QEvent>
#include <algorithm>

#include "app/report_box.h"

namespace mirelund {

namespace {
// The pension report, the widest, and one to spare.
constexpr int kWidestReport = 60;
}  // namespace

ReportDivider::ReportDivider(QWidget* side, ReportBox* report, QWidget* parent)
    : QSplitter(parent), side_(side), report_(report) {
  setObjectName("ReportDivider");
  addWidget(side);
  addWidget(report);
  setChildrenCollapsible(false);
  setStretchFactor(1, 1);
  connect(this, &QSplitter::splitterMoved, this, [this] { moved_ = true; });
  QSplitterHandle* const divider = handle(1);
  divider->installEventFilter(this);
  divider->setToolTip(QString("Drag to move; double click for %1 columns").arg(kWidestReport));
}

QSize ReportDivider::sizeHint() const {
  // The toolkit's own forgets the divider.
  return QSplitter::sizeHint() + QSize(handleWidth(), 0);
}

bool ReportDivider::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonDblClick) return QSplitter::eventFilter(watched, event);
  moved_ = true;
  giveSide(width() - handleWidth() - report_->widthOf(kWidestReport));
  return true;
}

void ReportDivider::resizeEvent(QResizeEvent* event) {
  QSplitter::resizeEvent(event);
  if (moved_) return;
  const int asked = side_->sizeHint().width();
  const int rest = width() - handleWidth() - report_->sizeHint().width();
  giveSide(std::clamp(rest, asked / 2, asked));
}

void ReportDivider::giveSide(int width) {
  setSizes({std::max(width, 0), std::max(this->width() - handleWidth() - width, 0)});
}

}  // namespace mirelund

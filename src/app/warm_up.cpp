// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/warm_up.h"

#include <QGroupBox>
#include <QPixmap>
#include <QVBoxLayout>

#include "app/caption.h"
#include "app/report_box.h"

namespace mirelund {

void warmUp() {
  QWidget unseen;
  auto* layout = new QVBoxLayout(&unseen);
  layout->addWidget(new QGroupBox("Frame"));
  auto* heading = new Caption("Heading");
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  layout->addWidget(heading);
  auto* report = new ReportBox("WarmUp", 1, 1, &unseen);
  report->setPlainText("Report");
  layout->addWidget(report);
  unseen.grab();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_window.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "app/export_command.h"
#include "base/ui_text.h"
#include "charts/bar_chart_widget.h"
#include "charts/chart_files.h"
#include "dialogs/busy_pointer.h"
#include "dialogs/prompts.h"
#include "dialogs/report_printer.h"
#include "dialogs/screen_room.h"
#include "dialogs/standing_dialog.h"

namespace mirelund {

namespace {

constexpr double kTwipsPerInch = 1440.0;
constexpr QSize kPrintedTwips(9530, 6350);
constexpr QSize kWindowTwips(9580, 6765);

QSize pixels(QSize twips, const QWidget& on) {
  return {static_cast<int>(twips.width() / kTwipsPerInch * on.logicalDpiX()),
          static_cast<int>(twips.height() / kTwipsPerInch * on.logicalDpiY())};
}

}  // namespace

PQGraph::PQGraph(Global& global, Prompts& prompts, PrintTarget& printing, QWidget* over)
    : PQGraph(
          [&global](ManagerView manager) {
            return makeChartView(global.boxes, global.reports, global.chart, manager);
          },
          prompts, printing, over) {}

PQGraph::PQGraph(const ChartView& view, Prompts& prompts, PrintTarget& printing, QWidget* over)
    : PQGraph([&view](ManagerView) { return view; }, prompts, printing, over) {
  // Without the manager's buttons nothing asks again.
  viewOf_ = nullptr;
}

PQGraph::PQGraph(ViewOf viewOf, Prompts& prompts, PrintTarget& printing, QWidget* over)
    : QDialog(over), viewOf_(std::move(viewOf)), prompts_(prompts), printing_(printing) {
  setObjectName("PQGraph");
  setModal(true);
  auto* layout = new QVBoxLayout(this);
  MSChart1_ = new BarChart(this);
  MSChart1_->setObjectName("MSChart1");
  layout->addWidget(MSChart1_, 1);

  auto* row = new QHBoxLayout;
  managerButtons_ = {
      addButton(row, "CVGainDollars", "Gain/loss in &dollars", &PQGraph::CVGainDollars_Click),
      addButton(row, "CVGainPercent", "Gain/loss in per&cent", &PQGraph::CVGainPercent_Click),
      addButton(row, "CVTotValue", "Current &value", &PQGraph::CVTotValue_Click)};
  row->addStretch();
  auto* along = new QHBoxLayout;
  along->addStretch();
  takingAlong_ = {addButton(along, "PQGSave", "&Save as...", &PQGraph::PQGSave_Click),
                  addButton(along, "PQGCopy", "C&opy", &PQGraph::PQGCopy_Click)};
  const int behindStretch = row->count();
  addButton(row, "PQGPrint", "&Print", &PQGraph::PQGPrint_Click);
  addButton(row, "PQGExit", "E&xit", &PQGraph::PQGExit_Click)->setFocus();
  layout->addLayout(row);
  Form_Load();
  // Beside the manager's there is no room in large letters.
  if (managerButtons_.front()->isVisibleTo(this))
    layout->insertLayout(layout->count() - 1, along);
  else
    row->insertLayout(behindStretch, along);
  resize(openingSize());
}

QPushButton* PQGraph::addButton(QLayout* row, const char* name, const QString& caption,
                                void (PQGraph::*clicked)()) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, clicked);
  row->addWidget(button);
  return button;
}

void PQGraph::Form_Load() {
  ChartView view = viewOf_(ManagerView::GainDollars);
  for (QPushButton* button : managerButtons_) button->setVisible(view.managerButtons);
  show(std::move(view));
}

void PQGraph::showManagerView(ManagerView view) {
  show(viewOf_(view));
}

void PQGraph::show(ChartView view) {
  setWindowTitle(toQString(view.caption));
  const Message message = view.message;
  MSChart1_->setView(std::move(view));
  if (message != Message::None) prompts_.tell(this, message);
}

// Larger where large letters ask for it and the screen has room.
QSize PQGraph::openingSize() const {
  return onScreen(*this, pixels(kWindowTwips, *this).expandedTo(sizeHint()));
}

void PQGraph::drawPrinted(QCPPainter& painter, double width, bool color) {
  // Black on white, whatever the desktop's theme.
  const QPalette screen = palette();
  setPalette(QApplication::style()->standardPalette());
  for (QPushButton* button : takingAlong_) button->hide();
  resize(pixels(kPrintedTwips, *this));
  painter.scale(width / this->width(), width / this->width());

  // The window as an image finer than a screen's, its chart as lines and letters.
  constexpr double kFiner = 4.0;
  QImage window(size() * kFiner, QImage::Format_RGB32);
  window.setDevicePixelRatio(kFiner);
  window.fill(Qt::white);
  render(&window, {}, QRegion(rect()) - MSChart1_->geometry());
  if (!color) window.convertTo(QImage::Format_Grayscale8);
  painter.drawImage(QRectF(rect()), window);
  painter.translate(MSChart1_->pos());
  MSChart1_->print(painter, color);

  for (QPushButton* button : takingAlong_) button->show();
  resize(openingSize());
  setPalette(screen);
}

void PQGraph::PQGSave_Click() {
  QStringList filters;
  for (const ChartFile& file : kChartFiles) filters << toQString(file.filter);
  const QString path = prompts_.askSavePath(this, "Save chart",
                                            windowTitle() + toQString(kChartFiles.front().ending),
                                            filters.join(";;"));
  if (path.isEmpty()) return;
  const ChartFile& file = chartFile(toPathBytes(path));
  writeExport(
      path, "chart", [&] { return file.bytes(*MSChart1_); }, prompts_, this);
}

void PQGraph::PQGCopy_Click() {
  QGuiApplication::clipboard()->setMimeData(chartToCopy(*MSChart1_));
}

void PQGraph::PQGPrint_Click() {
  if (!prompts_.ask(this, Question::Print)) return;
  const bool color = prompts_.ask(this, Question::PrintInColor);
  constexpr double kMmPerInch = 25.4;
  QCPPainter painter;
  const auto draw = [&](double width) {
    const BusyPointer busy;
    drawPrinted(painter, width, color);
  };
  printPicture({kPrintedTwips.width() / kTwipsPerInch * kMmPerInch, color, draw}, painter,
               printing_, prompts_, this);
}

void PQGraph::PQGExit_Click() {
  accept();
}

void showChart(const ChartView& view, Prompts& prompts, PrintTarget& printing, QWidget* over) {
  if (prompts.cancelsAll()) return;
  StandingDialog<PQGraph>(view, prompts, printing, over).wait();
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_files.h"

#include <QBuffer>
#include <QMimeData>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "base/file_name.h"
#include "base/ui_text.h"
#include "charts/bar_chart_widget.h"

namespace mirelund {

namespace {

constexpr int kFiner = 2;
constexpr double kPointsPerInch = 72.0;

using Bytes = std::optional<std::string>;

QString titleOf(const BarChart& chart) {
  return chart.accessibleName();
}

Bytes taken(const QBuffer& buffer, bool drawn) {
  return drawn ? Bytes(buffer.data().toStdString()) : std::nullopt;
}

Bytes pngOf(BarChart& chart) {
  QBuffer buffer;
  return taken(buffer, chart.image(kFiner).save(&buffer, "PNG"));
}

// So many of the paper's units for one of the widget's.
bool drawn(BarChart& chart, QPaintDevice& paper, double scale) {
  QCPPainter painter;
  if (!painter.begin(&paper)) return false;
  painter.scale(scale, scale);
  chart.print(painter, true);
  return painter.end();
}

Bytes svgOf(BarChart& chart) {
  QBuffer buffer;
  QSvgGenerator paper;
  paper.setOutputDevice(&buffer);
  paper.setSize(chart.size());
  paper.setViewBox(QRect(QPoint(), chart.size()));
  paper.setTitle(titleOf(chart));
  return taken(buffer, drawn(chart, paper, 1.0));
}

Bytes pdfOf(BarChart& chart) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter paper(&buffer);
  paper.setTitle(titleOf(chart));
  paper.setCreator("Mirelund");
  const QSizeF points = QSizeF(chart.size()) * kPointsPerInch / chart.logicalDpiX();
  paper.setPageSize(QPageSize(points, QPageSize::Point, {}, QPageSize::ExactMatch));
  paper.setPageMargins(QMarginsF());
  return taken(buffer, drawn(chart, paper, static_cast<double>(paper.width()) / chart.width()));
}

}  // namespace

const std::array<ChartFile, 3> kChartFiles{{
    {".png", "PNG image (*.png)", pngOf},
    {".svg", "SVG drawing (*.svg)", svgOf},
    {".pdf", "PDF document (*.pdf)", pdfOf},
}};

const ChartFile& chartFile(std::string_view path) {
  const std::string ending = endingOf(path);
  for (const ChartFile& file : kChartFiles)
    if (file.ending == ending) return file;
  return kChartFiles.front();
}

QMimeData* chartToCopy(BarChart& chart) {
  auto* copied = new QMimeData;
  copied->setImageData(chart.image(kFiner));
  copied->setText(toQString(valuesText(chart.view())));
  return copied;
}

}  // namespace mirelund

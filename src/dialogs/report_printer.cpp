// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/report_printer.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <utility>

#include "dialogs/prompts.h"

namespace mirelund {

namespace {

constexpr double kMarginMm = 12.0;

QFont reportFont(int points) {
  QFont font("Courier New", points);
  font.setStyleHint(QFont::TypeWriter);
  font.setFixedPitch(true);
  font.setBold(false);
  return font;
}

QStringList linesOf(const QString& text) {
  QString plain = text;
  plain.replace("\r\n", "\n");
  QStringList lines = plain.split('\n');
  if (lines.back().isEmpty()) lines.removeLast();
  return lines;
}

void tellFailure(Prompts& prompts, QWidget* over, const QPrinter& printer) {
  const QString file = printer.outputFileName();
  prompts.warn(over, file.isEmpty()
                         ? QString("The printer \"%1\" did not take the printout. Nothing was "
                                   "printed.")
                               .arg(printer.printerName())
                         : QString("The printout could not be written to \"%1\". Check the "
                                   "folder and the free space.")
                               .arg(file));
}

// A PDF that ends with its end mark has been written whole.
bool isComplete(const QString& path) {
  QFile file(path);
  // A device is no place for a document, and can be read without end.
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return false;
  constexpr qint64 kTail = 64;
  file.seek(std::max<qint64>(0, file.size() - kTail));
  return file.read(kTail).contains("%%EOF");
}

// Draws on a printer and checks that it began, ended and left its file.
template <typename Draw>
bool printChecked(QPrinter& printer, Prompts& prompts, QWidget* over, Draw draw) {
  QPainter painter;
  bool good = painter.begin(&printer);
  if (good) {
    draw(painter);
    good = painter.end() && printer.printerState() != QPrinter::Error;
  }
  if (good && !printer.outputFileName().isEmpty()) good = isComplete(printer.outputFileName());
  if (!good) tellFailure(prompts, over, printer);
  return good;
}

double columnsThatFit(const QPrinter& printer, const QFont& font) {
  return printer.pageLayout().paintRect(QPageLayout::Point).width() /
         (QFontMetricsF(font, &printer).horizontalAdvance('0') * 72.0 / printer.logicalDpiX());
}

// The lines, those longer than `columns` in pieces.
QStringList broken(const QStringList& lines, qsizetype columns) {
  QStringList pieces;
  for (const QString& line : lines)
    for (qsizetype at = 0; at == 0 || at < line.size(); at += columns)
      pieces << line.mid(at, columns);
  return pieces;
}

void drawLines(QPrinter& printer, QPainter& painter, const QFont& font, const QStringList& lines) {
  painter.setFont(font);
  const QFontMetricsF metrics(font, &printer);
  const double pitch = metrics.lineSpacing();
  const double height = printer.pageLayout().paintRectPixels(printer.resolution()).height();
  double baseline = metrics.ascent();
  for (const QString& line : lines) {
    if (baseline + metrics.descent() > height) {
      printer.newPage();
      baseline = metrics.ascent();
    }
    painter.drawText(QPointF(0.0, baseline), line);
    baseline += pitch;
  }
}

}  // namespace

std::unique_ptr<QPrinter> SystemPrintTarget::open(QWidget* over, const QString& suggestedName) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setDocName(suggestedName);
  // Without a printer the class is silently a PDF printer without a file name.
  if (QPrinterInfo::defaultPrinter().isNull() && QPrinterInfo::availablePrinterNames().isEmpty()) {
    const QString path = prompts_.askSavePath(over, "No printer found: save as PDF",
                                              suggestedName + ".pdf", "PDF document (*.pdf)");
    if (path.isEmpty()) return nullptr;
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(path);
  }
  return printer;
}

bool PrintReport(const QString& report, int points, PrintTarget& target, Prompts& prompts,
                 QWidget* over) {
  QStringList lines = QStringList{"", ""} + linesOf(report);

  const auto printer = target.open(over, "Mirelund report");
  if (printer == nullptr) return false;
  const QFont font = reportFont(points);
  const QMarginsF margins(kMarginMm, kMarginMm, kMarginMm, kMarginMm);
  printer->setPageMargins(margins, QPageLayout::Millimeter);
  const auto longest =
      std::max_element(lines.begin(), lines.end(),
                       [](const QString& a, const QString& b) { return a.size() < b.size(); });
  if (static_cast<double>(longest->size()) > columnsThatFit(*printer, font))
    printer->setPageOrientation(QPageLayout::Landscape);
  lines =
      broken(lines, std::max<qsizetype>(1, static_cast<qsizetype>(columnsThatFit(*printer, font))));
  return printChecked(*printer, prompts, over,
                      [&](QPainter& painter) { drawLines(*printer, painter, font, lines); });
}

bool printImage(const QImage& image, double widthMm, bool color, PrintTarget& target,
                Prompts& prompts, QWidget* over) {
  const auto printer = target.open(over, "Mirelund chart");
  if (printer == nullptr) return false;
  printer->setPageMargins(QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm),
                          QPageLayout::Millimeter);
  printer->setColorMode(color ? QPrinter::Color : QPrinter::GrayScale);
  return printChecked(*printer, prompts, over, [&](QPainter& painter) {
    const double width = widthMm / 25.4 * printer->resolution();
    const QRectF area(0.0, 0.0, width, width * image.height() / image.width());
    painter.drawImage(area, color ? image : image.convertToFormat(QImage::Format_Grayscale8));
  });
}

}  // namespace mirelund

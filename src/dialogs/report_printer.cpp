// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/report_printer.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "base/file_store.h"
#include "base/ui_text.h"
#include "dialogs/page_breaks.h"
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

class PaperPrintout : public Printout {
 public:
  explicit PaperPrintout(const QString& title) : printer_(QPrinter::HighResolution) {
    printer_.setDocName(title);
  }

  QPagedPaintDevice& pages() override { return printer_; }
  QString finish(bool drawn) override {
    if (drawn && printer_.printerState() != QPrinter::Error) return {};
    return QString("The printer \"%1\" did not take the printout. Nothing was printed.")
        .arg(printer_.printerName());
  }

 private:
  QPrinter printer_;
};

class PdfPrintout : public Printout {
 public:
  PdfPrintout(const QString& path, const QString& title) : path_(path), writer_(&bytes_) {
    bytes_.open(QIODevice::WriteOnly);
    writer_.setTitle(title);
    writer_.setCreator("Mirelund");
  }

  QPagedPaintDevice& pages() override { return writer_; }
  QString finish(bool drawn) override {
    const QByteArray& whole = bytes_.data();
    const FileFailure failure =
        drawn ? systemFiles().replace(toPathBytes(path_),
                                      {whole.data(), static_cast<std::size_t>(whole.size())})
              : FileFailure::Other;
    if (failure == FileFailure::None) return {};
    const std::string_view reason = failureText(failure);
    return QString("The printout could not be written to \"%1\". %2")
        .arg(path_, reason.empty() ? QString("Check the name and the folder.") : toQString(reason));
  }

 private:
  QString path_;
  QBuffer bytes_;
  QPdfWriter writer_;
};

// Draws the pages and checks that they began, ended and were taken.
template <typename Draw>
bool printChecked(Printout& printout, QPainter& painter, Prompts& prompts, QWidget* over,
                  Draw draw) {
  bool drawn = painter.begin(&printout.pages());
  if (drawn) {
    draw();
    drawn = painter.end();
  }
  const QString failure = printout.finish(drawn);
  if (!failure.isEmpty()) prompts.warn(over, failure);
  return failure.isEmpty();
}

double columnsThatFit(QPagedPaintDevice& pages, const QFont& font) {
  return pages.pageLayout().paintRect(QPageLayout::Point).width() /
         (QFontMetricsF(font, &pages).horizontalAdvance('0') * 72.0 / pages.logicalDpiX());
}

// The lines, those longer than `columns` in pieces.
QStringList broken(const QStringList& lines, qsizetype columns) {
  QStringList pieces;
  for (const QString& line : lines)
    for (qsizetype at = 0; at == 0 || at < line.size(); at += columns)
      pieces << line.mid(at, columns);
  return pieces;
}

std::size_t linesThatFit(double height, const QFontMetricsF& metrics) {
  const double below = height - metrics.ascent() - metrics.descent();
  return below < 0.0 ? 1 : static_cast<std::size_t>(below / metrics.lineSpacing()) + 1;
}

void drawLines(QPagedPaintDevice& pages, QPainter& painter, const QFont& font,
               const QStringList& lines) {
  painter.setFont(font);
  const QFontMetricsF metrics(font, &pages);
  const double height = pages.pageLayout().paintRectPixels(pages.logicalDpiY()).height();
  std::vector<std::string> texts;
  for (const QString& line : lines) texts.push_back(toStdString(line));
  const std::vector<std::size_t> starts = pageStarts(texts, linesThatFit(height, metrics));

  auto next = std::next(starts.begin());
  double baseline = metrics.ascent();
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (next != starts.end() && std::cmp_equal(i, *next)) {
      ++next;
      pages.newPage();
      baseline = metrics.ascent();
    }
    painter.drawText(QPointF(0.0, baseline), lines[i]);
    baseline += metrics.lineSpacing();
  }
}

}  // namespace

std::unique_ptr<Printout> printoutToPdf(const QString& path, const QString& title) {
  return std::make_unique<PdfPrintout>(path, title);
}

std::unique_ptr<Printout> SystemPrintTarget::open(QWidget* over, const QString& suggestedName) {
  // Without a printer the toolkit's is silently a PDF printer without a file name.
  if (!QPrinterInfo::defaultPrinter().isNull() || !QPrinterInfo::availablePrinterNames().isEmpty())
    return std::make_unique<PaperPrintout>(suggestedName);
  const QString path = prompts_.askSavePath(over, "No printer found: save as PDF",
                                            suggestedName + ".pdf", "PDF document (*.pdf)");
  return path.isEmpty() ? nullptr : printoutToPdf(path, suggestedName);
}

bool PrintReport(const QString& report, int points, PrintTarget& target, Prompts& prompts,
                 QWidget* over) {
  if (prompts.cancelsAll()) return false;
  QStringList lines = QStringList{"", ""} + linesOf(report);

  const auto printout = target.open(over, "Mirelund report");
  if (printout == nullptr) return false;
  QPagedPaintDevice& pages = printout->pages();
  const QFont font = reportFont(points);
  const QMarginsF margins(kMarginMm, kMarginMm, kMarginMm, kMarginMm);
  pages.setPageMargins(margins, QPageLayout::Millimeter);
  const auto longest =
      std::max_element(lines.begin(), lines.end(),
                       [](const QString& a, const QString& b) { return a.size() < b.size(); });
  if (static_cast<double>(longest->size()) > columnsThatFit(pages, font))
    pages.setPageOrientation(QPageLayout::Landscape);
  lines =
      broken(lines, std::max<qsizetype>(1, static_cast<qsizetype>(columnsThatFit(pages, font))));
  QPainter painter;
  return printChecked(*printout, painter, prompts, over,
                      [&] { drawLines(pages, painter, font, lines); });
}

bool printPicture(const PrintedPicture& picture, QPainter& painter, PrintTarget& target,
                  Prompts& prompts, QWidget* over) {
  if (prompts.cancelsAll()) return false;
  const auto printout = target.open(over, "Mirelund chart");
  if (printout == nullptr) return false;
  QPagedPaintDevice& pages = printout->pages();
  pages.setPageMargins(QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm),
                       QPageLayout::Millimeter);
  if (auto* printer = dynamic_cast<QPrinter*>(&pages))
    printer->setColorMode(picture.color ? QPrinter::Color : QPrinter::GrayScale);
  return printChecked(*printout, painter, prompts, over, [&] {
    painter.setRenderHint(QPainter::LosslessImageRendering);
    constexpr double kMmPerInch = 25.4;
    picture.draw(picture.widthMm / kMmPerInch * pages.logicalDpiX());
  });
}

}  // namespace mirelund

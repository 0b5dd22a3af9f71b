// SPDX-License-Identifier: GPL-3.0-or-later
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "dialogs/report_printer.h"

#include "app/report_line.h"
#include "ui_testing.h"

namespace mirelund::testing {

class ReportPrinterTest : public QObject {
  Q_OBJECT

  // `count` lines of exactly `columns` characters, each one different.
  static std::string report(int count, int columns) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
      std::string line = "Line " + std::to_string(i) + " ";
      while (std::ssize(line) < columns) line += static_cast<char>('a' + line.size() % 26);
      appendLine(text, line);
    }
    return text;
  }
  static QStringList linesOf(const std::string& text) {
    QStringList lines = QString::fromStdString(text).remove('\r').split('\n');
    lines.removeLast();
    return lines;
  }
  static bool isLandscape(const PdfTarget& target) {
    const QRegularExpression size("Page size: +([0-9.]+) x ([0-9.]+)");
    const auto found = size.match(target.run("pdfinfo", {target.path}));
    return found.captured(1).toDouble() > found.captured(2).toDouble();
  }

 private slots:
  void everyLineIsPrintedWhole_data() {
    QTest::addColumn<int>("window");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("letter");
    QTest::addColumn<bool>("landscape");
    QTest::addColumn<double>("pitch");
    for (const bool letter : {false, true}) {
      const char* paper = letter ? "Letter" : "A4";
      // 11 points for the calculators, their longest line is 59 columns wide.
      QTest::addRow("45 columns, %s", paper) << 1 << 45 << 30 << letter << false << 6.59;
      QTest::addRow("59 columns, %s", paper) << 1 << 59 << 30 << letter << false << 6.59;
      QTest::addRow("480 rows, %s", paper) << 1 << 45 << 493 << letter << false << 6.59;
      // 10 points for the manager, up to 96 columns.
      QTest::addRow("85 columns, %s", paper) << 2 << 85 << 30 << letter << false << 6.0;
      QTest::addRow("96 columns, %s", paper) << 2 << 96 << 120 << letter << true << 6.0;
    }
  }

  void everyLineIsPrintedWhole() {
    QFETCH(int, window);
    QFETCH(int, columns);
    QFETCH(int, lines);
    QFETCH(bool, letter);
    QFETCH(bool, landscape);
    QFETCH(double, pitch);
    FakePrompts prompts;
    PdfTarget target;
    target.pageSize = letter ? QPageSize::Letter : QPageSize::A4;
    const QString text = QString::fromStdString(report(lines, columns));
    QVERIFY(PrintReport(text, reportPoints(Window(window)), target, prompts, nullptr));
    QStringList printed = target.lines(pitch);
    printed.removeAll("");  // between the pages
    QCOMPARE(printed, linesOf(report(lines, columns)));
    QCOMPARE(isLandscape(target), landscape);
  }

  void theFontHasItsSize() {
    FakePrompts prompts;
    PdfTarget target;
    const QString text = QString::fromStdString(report(1, 40));
    for (const int points : {11, 10}) {
      QVERIFY(PrintReport(text, points, target, prompts, nullptr));
      // A character of Courier's metrics is 0.6 of the font's size wide.
      const QString boxes = target.run("pdftotext", {"-bbox", target.path, "-"});
      const QRegularExpression word("xMin=\"([0-9.]+)\".*xMax=\"([0-9.]+)\".*>(Line)<");
      const auto found = word.match(boxes);
      const double width =
          (found.captured(2).toDouble() - found.captured(1).toDouble()) / 4.0 / 0.6;
      QVERIFY2(std::abs(width - points) < 0.1, qPrintable(boxes));
    }
  }

  void aLineThatFitsNoPageIsContinued() {
    FakePrompts prompts;
    PdfTarget target;
    QVERIFY(PrintReport(QString(300, 'x') + "\r\nTwo\r\n", 10, target, prompts, nullptr));
    const QStringList printed = target.lines(6.0);
    QCOMPARE(printed.size(), 4);
    QCOMPARE(printed.mid(0, 3).join(""), QString(300, 'x'));
    QCOMPARE(printed.back(), "Two");
    QVERIFY(isLandscape(target));
  }

  // Funds of one record, of two, and so on: their headings meet each place of a page.
  void aHeadingAndItsFirstLinesStayOnOnePage() {
    constexpr int kFunds = 40;
    const std::string underline(90, '_');
    std::string report;
    for (int fund = 1; fund <= kFunds; ++fund) {
      const std::string number = std::to_string(fund);
      for (const std::string& line : {"Fund" + number + "-above", "Fund" + number + "-heading"})
        appendLine(report, line);
      appendLine(report, underline);
      for (int record = 1; record <= fund; ++record)
        appendLine(report, "Fund" + number + "-record" + std::to_string(record) + ".");
      appendLine(report, underline);
      appendLine(report, "Fund" + number + "-total");
      appendLine(report, "Fund" + number + "-average");
    }
    FakePrompts prompts;
    PdfTarget target;
    QVERIFY(PrintReport(QString::fromStdString(report), 10, target, prompts, nullptr));
    const QStringList pages = target.run("pdftotext", {target.path, "-"}).split('\f');
    QVERIFY(pages.size() > 10);
    for (int fund = 1; fund <= kFunds; ++fund) {
      const auto word = [&](const QString& end) { return QString("Fund%1-%2").arg(fund).arg(end); };
      const QString last = QString("record%1.").arg(fund);
      const QString second = fund < 2 ? last : "record2.";
      for (const QString& page : pages) {
        QCOMPARE(page.contains(word("heading")), page.contains(word("above")));
        QCOMPARE(page.contains(word("record1.")), page.contains(word("above")));
        QCOMPARE(page.contains(word(second)), page.contains(word("above")));
        QCOMPARE(page.contains(word("total")), page.contains(word(last)));
        QCOMPARE(page.contains(word("average")), page.contains(word(last)));
      }
    }
    // None is lost or moved.
    QStringList printed = target.lines(6.0);
    printed.removeAll("");
    QCOMPARE(printed, linesOf(report));
  }

  // What stood at the place stays, unless the new document is whole.
  void aDocumentThatCannotBeWrittenIsTold_data() {
    QTest::addColumn<QString>("reason");
    QTest::newRow("a pipe, which nobody reads") << "Check the name and the folder.";
    QTest::newRow("a device") << "Check the name and the folder.";
    QTest::newRow("no such folder") << "Check the name and the folder.";
    QTest::newRow("no space") << "There is not enough space for the file.";
  }

  void aDocumentThatCannotBeWrittenIsTold() {
    QFETCH(QString, reason);
    const QString place = QTest::currentDataTag();
    FakePrompts prompts;
    PdfTarget target;
    const QByteArray old = "%PDF, what was printed before";
    QFile file(target.path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(old);
    file.close();
    if (place.startsWith("a pipe")) {
      target.path += ".pipe";
      QCOMPARE(mkfifo(qPrintable(target.path), 0600), 0);
    }
    if (place == "a device") target.path = "/dev/full";
    if (place == "no such folder") target.path = "/nowhere/at/all.pdf";
    signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    if (place == "no space") {
      const rlimit little{1000, usual.rlim_max};
      setrlimit(RLIMIT_FSIZE, &little);
    }
    const bool printed = PrintReport("One\r\n", 11, target, prompts, nullptr);
    setrlimit(RLIMIT_FSIZE, &usual);
    QVERIFY(!printed);
    QCOMPARE(
        prompts.warned,
        QStringList{
            QString("The printout could not be written to \"%1\". %2").arg(target.path, reason)});
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), old);
    QDir folder = QFileInfo(file).dir();
    folder.remove(QFileInfo(target.path + ".pipe").fileName());
    QCOMPARE(folder.entryList(QDir::Files | QDir::Hidden), QStringList{"out.pdf"});
  }

  void whereThereIsNoPrinterAPdfIsOffered() {
    if (!QPrinterInfo::availablePrinterNames().isEmpty()) return;
    FakePrompts prompts;
    SystemPrintTarget target(prompts);
    QVERIFY(target.open(nullptr, "Mirelund report") == nullptr);
    QCOMPARE(prompts.initialPaths, QStringList{"Mirelund report.pdf"});
    QTemporaryDir folder;
    prompts.paths = {folder.filePath("mine.pdf")};
    QVERIFY(PrintReport("One\r\n", 11, target, prompts, nullptr));
    QVERIFY(QFile::exists(folder.filePath("mine.pdf")));
    QVERIFY(prompts.warned.isEmpty());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ReportPrinterTest)
#include "report_printer_test.moc"

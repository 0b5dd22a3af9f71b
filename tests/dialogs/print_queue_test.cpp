// SPDX-License-Identifier: GPL-3.0-or-later
// Printing as a person does, on the system's default printer: a real queue, which
// tests/with_print_queue lays. What arrives has been another language on its way and
// is no text any more: it is compared, as it looks, with the document itself.
#include <QTimer>

#include "ui_testing.h"

namespace mirelund::testing {

namespace {

constexpr int kDpi = 100;

QString run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  process.waitForFinished();
  return QString::fromUtf8(process.readAllStandardOutput());
}

QList<QImage> pagesOf(const QString& path) {
  const QTemporaryDir folder;
  run("pdftoppm", {"-r", QString::number(kDpi), "-gray", "-png", path, folder.filePath("page")});
  QList<QImage> pages;
  for (const QString& name : QDir(folder.path()).entryList(QDir::Files, QDir::Name))
    pages << QImage(folder.filePath(name)).convertToFormat(QImage::Format_Grayscale8);
  return pages;
}

// The ink of any quarter inch's square, 0 to 255 a point, against that of the other
// page, whose letters may be drawn lighter or darker throughout and a point aside: a
// letter that is missing makes 5.3 and more, another way to draw letters 3.9 at the most.
constexpr double kMostRedrawn = 4.6;

double ink(const QImage& page, QRect square) {
  square &= page.rect();
  int sum = 0;
  for (int y = square.top(); y <= square.bottom(); ++y)
    for (int x = square.left(); x <= square.right(); ++x) sum += 255 - qGray(page.pixel(x, y));
  return sum;
}

double largestDifference(const QImage& one, const QImage& other) {
  constexpr int kCell = kDpi / 4;
  const double darker = ink(one, one.rect()) / ink(other, other.rect());
  double largest = 0.0;
  for (int top = 0; top + kCell <= one.height(); top += kCell)
    for (int left = 0; left + kCell <= one.width(); left += kCell) {
      const QRect square(left, top, kCell, kCell);
      double least = 255.0 * kCell * kCell;
      for (const int x : {-1, 0, 1})
        for (const int y : {-1, 0, 1})
          least = std::min(
              least, std::abs(ink(one, square) - darker * ink(other, square.translated(x, y))));
      largest = std::max(largest, least);
    }
  return largest / (kCell * kCell);
}

// The program, printing on the default printer.
struct Printing {
  Printing() : target(prompts), program(prompts, target, global) {
    program.start().show();
    QVERIFY(ProgramFixture::isActivated(&program.start()));
    ProgramFixture::click("StartCalc");
    QVERIFY(ProgramFixture::isActivated(ProgramFixture::window("PQInvest")));
  }
  ~Printing() {
    QWidgetList windows;
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window != &program.start() && window->parent() == nullptr) windows << window;
    qDeleteAll(windows);
  }

  Global global;
  FakePrompts prompts;
  SystemPrintTarget target;
  Program program;
};

}  // namespace

class PrintQueueTest : public QObject {
  Q_OBJECT

  static constexpr int kPatienceMs = 100'000;

  // What the queue has made of the document, when it is done with it.
  static QString arrived(const QString& name) {
    const QDir folder(qEnvironmentVariable("MIRELUND_PRINTED"));
    QStringList found;
    const auto done = [&] {
      found = folder.entryList({name + "*.pdf"});
      return found.size() == 1 && run("lpstat", {"-W", "not-completed", "-o"}).isEmpty();
    };
    return QTest::qWaitFor(done, kPatienceMs) ? folder.filePath(found.front()) : QString();
  }

  static void verifyWhole(const QList<QImage>& expected, const QString& path) {
    QVERIFY2(!path.isEmpty(), "nothing arrived");
    const QList<QImage> pages = pagesOf(path);
    QCOMPARE(pages.size(), expected.size());
    for (qsizetype i = 0; i < pages.size(); ++i) {
      QCOMPARE(pages[i].size(), expected[i].size());
      const double difference = largestDifference(pages[i], expected[i]);
      QVERIFY2(difference < kMostRedrawn,
               qPrintable(QString("page %1: %2").arg(i + 1).arg(difference)));
    }
  }

 private slots:
  void initTestCase() {
    QVERIFY2(QPrinterInfo::defaultPrinterName() == "PDF", "to be run by tests/with_print_queue");
  }

  void aLetterThatIsMissingIsSeen() {
    const auto printed = [](const char* line) {
      FakePrompts prompts;
      PdfTarget target;
      PrintReport(line, 11, target, prompts, nullptr);
      return pagesOf(target.path).value(0);
    };
    const QImage whole = printed("Amount of capital required:  $100,000.00\r\n");
    QVERIFY(largestDifference(whole, printed("Amount of ca ital required:  $100,000.00\r\n")) >
            kMostRedrawn);
    QVERIFY(largestDifference(whole, printed("Amount of capital required:  $100,000. 0\r\n")) >
            kMostRedrawn);
    QCOMPARE(largestDifference(whole, whole), 0.0);
  }

  // More than a page of it.
  void aReportArrivesWhole() {
    const auto print = [] {
      ProgramFixture::choosePage(1);
      for (int mortgage = 0; mortgage < 9; ++mortgage) ProgramFixture::click("MTCalculate");
      ProgramFixture::click("MTPrint");
    };
    QList<QImage> expected;
    {
      ProgramFixture program;
      program.openCalculations(0);
      print();
      expected = pagesOf(program.printing.path);
      QVERIFY(expected.size() > 1);
    }
    Printing printing;
    print();
    QCOMPARE(printing.prompts.warned, QStringList());
    verifyWhole(expected, arrived("Mirelund_report"));
  }

  void aChartArrivesWhole() {
    const auto print = [](FakePrompts& prompts) {
      prompts.answers = {true, true};
      ProgramFixture::choosePage(1);
      ProgramFixture::click("MTCalculate");
      QTimer::singleShot(50, qApp, [] {
        ProgramFixture::click("PQGPrint");
        ProgramFixture::click("PQGExit");
      });
      ProgramFixture::click("AllGraphs");
      QCOMPARE(prompts.warned, QStringList());
    };
    QList<QImage> expected;
    {
      ProgramFixture program;
      program.openCalculations(0);
      print(program.prompts);
      expected = pagesOf(program.printing.path);
      QCOMPARE(expected.size(), 1);
    }
    Printing printing;
    print(printing.prompts);
    QCOMPARE(printing.prompts.asked, (QList<int>{1, 2}));
    verifyWhole(expected, arrived("Mirelund_chart"));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::PrintQueueTest)
#include "print_queue_test.moc"

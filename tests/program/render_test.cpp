// SPDX-License-Identifier: GPL-3.0-or-later
// Every window and dialog, drawn in each look: fonts of 9 and 18 points, light, dark, right to
// left. It runs once for each scale of the desktop (QT_SCALE_FACTOR). No text may be cut, and
// every text and focus mark has its contrast.
//
// With MIRELUND_PICTURES in the environment the pictures are left in that folder.
#include <QLabel>
#include <QListWidget>
#include <QStyleFactory>

#include "calc/mortgage_schedule_window.h"
#include "charts/bar_chart_widget.h"
#include "charts/chart_window.h"
#include "dialogs/input_dialogs.h"
#include "dialogs/message_dialogs.h"
#include "insights/insights_window.h"
#include "manager/manager.h"
#include "rendering.h"
#include "ui_testing.h"

namespace mirelund::testing {

namespace {

constexpr int kSmallFont = 9;
constexpr int kLargeFont = 18;

struct Look {
  int points = kSmallFont;
  bool dark = false;
  bool reversed = false;
};

QPalette darkPalette() {
  QPalette dark(QColor(0x31, 0x36, 0x3b));
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const QColor text =
        group == QPalette::Disabled ? QColor(0x80, 0x80, 0x80) : QColor(0xef, 0xf0, 0xf1);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::BrightText, QPalette::ToolTipText})
      dark.setColor(group, role, text);
    dark.setColor(group, QPalette::Window, QColor(0x31, 0x36, 0x3b));
    dark.setColor(group, QPalette::Button, QColor(0x31, 0x36, 0x3b));
    dark.setColor(group, QPalette::Base, QColor(0x23, 0x26, 0x29));
    dark.setColor(group, QPalette::AlternateBase, QColor(0x31, 0x36, 0x3b));
    dark.setColor(group, QPalette::ToolTipBase, QColor(0x31, 0x36, 0x3b));
    dark.setColor(group, QPalette::Highlight, QColor(0x2a, 0x82, 0xda));
    dark.setColor(group, QPalette::HighlightedText, QColor(0xff, 0xff, 0xff));
    QColor faint = text;
    faint.setAlpha(0x80);
    dark.setColor(group, QPalette::PlaceholderText, faint);
  }
  return dark;
}

// The desktop's settings while it lives.
class Desktop {
 public:
  explicit Desktop(const Look& look)
      : font_(QApplication::font()), palette_(QApplication::palette()) {
    QFont font = font_;
    font.setPointSize(look.points);
    QApplication::setFont(font);
    QApplication::setPalette(look.dark ? darkPalette() : QApplication::style()->standardPalette());
    QApplication::setLayoutDirection(look.reversed ? Qt::RightToLeft : Qt::LeftToRight);
  }
  ~Desktop() {
    QApplication::setFont(font_);
    QApplication::setPalette(palette_);
    QApplication::setLayoutDirection(Qt::LeftToRight);
  }
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

 private:
  QFont font_;
  QPalette palette_;
};

}  // namespace

class RenderTest : public QObject {
  Q_OBJECT

  const bool keepsPictures_ = qEnvironmentVariableIsSet("MIRELUND_PICTURES");
  QStringList faults_;
  QString look_;
  QStringList walked_;

  void keep(const Picture& taken, const QString& name) const {
    const QImage& picture = taken.pixels;
    if (!keepsPictures_) return;
    const QString folder = qEnvironmentVariable("MIRELUND_PICTURES");
    picture.save(QString("%1/%2-%3-%4.png")
                     .arg(folder, name, look_)
                     .arg(qRound(100 * picture.devicePixelRatio())));
  }

  void add(const QString& view, const QStringList& faults) {
    for (const QString& fault : faults)
      if (!fault.isEmpty()) faults_ << view + ": " + fault;
  }

  // A window as it opens, where the screen is large enough.
  void look(QWidget* window, const QString& view) {
    window->resize(window->sizeHint().expandedTo(window->size()));
    QCoreApplication::processEvents();
    if (QWidget* focused = QApplication::focusWidget()) focused->clearFocus();
    const Picture picture = pictureOf(window);
    keep(picture, view);
    add(view, cutTexts(window));
    add(view, faintTexts(window, picture));
  }

  // Tab goes through all that takes the focus; each is compared with itself before.
  void walk(QWidget* window, const QString& view) {
    // What is drawn for the focus depends on no font, and the buttons of all pages are alike.
    if (QApplication::font().pointSize() != kSmallFont) return;
    QVERIFY(ProgramFixture::isActivated(window));
    if (QWidget* focused = QApplication::focusWidget()) focused->clearFocus();
    const Picture without = pictureOf(window);
    QTest::keyClick(window, Qt::Key_Tab);
    QWidget* const first = QApplication::focusWidget();
    if (first == nullptr) return add(view, {"nothing takes the focus"});
    constexpr int kMost = 60;
    QWidget* control = first;
    for (int i = 0; i < kMost && (i == 0 || control != first); ++i) {
      const QString name = window->objectName() + control->objectName();
      if (!walked_.contains(name) || control->objectName().isEmpty()) {
        walked_ << name;
        const Picture with = pictureOf(window, around(control));
        add(view, {faintMark(control, without, with)});
        add(view + ", in focus", faintTextsOf(control, with));
        if (keepsPictures_) keep(pictureOf(window), view + "-on-" + control->objectName());
      }
      QTest::keyClick(control, Qt::Key_Tab);
      control = QApplication::focusWidget();
    }
  }

  void lookAndWalk(QWidget* window, const QString& view) {
    look(window, view);
    walk(window, view);
  }

  void calculators(ProgramFixture& program) {
    program.openCalculations(0);
    QWidget* const window = program.window("PQInvest");
    const char* const prefixes[] = {"PG", "MT", "IG", "RI", "CG", "CR"};
    const char* const options[] = {
        "", "", "IGResultsChoice_1", "RIWDrawalChoice_1", "", "CRCapitalChoices_1"};
    for (int page = 0; page < 6; ++page) {
      const QString name = QString("calculator-%1").arg(prefixes[page]);
      program.choosePage(page);
      look(window, name);
      if (*options[page] != '\0') program.click(options[page]);
      program.click(qPrintable(QString(prefixes[page]) + "Calculate"));
      lookAndWalk(window, name + "-report");
      if (page == 1) {
        chart(program, "chart-mortgage");
        schedule(program);
      }
    }
    chart(program, "chart-capital");
    program.click("ExitProgram");
    QTRY_VERIFY(program.program.start().isVisible());
  }

  void chart(ProgramFixture& program, const QString& view) {
    PQGraph window(program.global, program.prompts, program.printing, nullptr);
    window.setVisible(true);
    QVERIFY(ProgramFixture::isActivated(&window));
    window.findChild<BarChart*>("MSChart1")->replot();
    lookAndWalk(&window, view);
  }

  void schedule(ProgramFixture& program) {
    MortgageInput mortgage{100'000, 6.5, 25, 0, 26.07142857, 52.14285714, {}};
    mortgage.choices.frequency = PaymentFrequency::BiweeklyAccelerated;
    PQSchedule window(mortgage, program.prompts, program.printing, nullptr);
    window.setVisible(true);
    QVERIFY(ProgramFixture::isActivated(&window));
    lookAndWalk(&window, "schedule");
    program.find<QRadioButton>("SCKind_1")->click();
    look(&window, "schedule-frequency");
  }

  void manager(ProgramFixture& program) {
    program.click("StartStockMgmt");
    QWidget* const window = program.window("PQManagement");
    QVERIFY(ProgramFixture::isActivated(window));
    auto* tabs = program.find<QTabWidget>("SSTab2");
    lookAndWalk(window, "manager-start");
    program.prompts.paths = {MIRELUND_DATA "/DtaSampl.PQD"};
    tabs->setCurrentIndex(0);
    lookAndWalk(window, "manager-open");
    program.click("OFOpen");
    QCOMPARE(tabs->currentIndex(), 1);
    choose("EFunds", 0);
    choose("ETransType", 0);
    lookAndWalk(window, "manager-entry");
    program.prompts.numbers = {1};
    program.click("ECorrectRec");
    look(window, "manager-correcting");
    tabs->setCurrentIndex(2);
    auto* funds = program.find<QListWidget>("DDispFunds");
    funds->setCurrentRow(2);
    QTest::keyClick(funds, Qt::Key_Return);
    lookAndWalk(window, "manager-display");
    tabs->setCurrentIndex(3);
    for (int fund = 1; fund <= 6; ++fund)
      program.type(qPrintable(QString("CVInPrice_%1").arg(fund)), "20");
    program.click("CVCalc");
    lookAndWalk(window, "manager-value");
    program.global.chart.ChartKind = ChartKind::Manager;
    for (int fund = 1; fund <= 6; ++fund)
      program.global.chart.ChartNames.push_back(
          QString("A fund of a long name %1").arg(fund).toStdString());
    chart(program, "chart-manager");
    tabs->setCurrentIndex(4);
    lookAndWalk(window, "manager-save");
    program.prompts.answers = {false};
    window->close();
  }

  // Of the sample, a price missing.
  void insights(ProgramFixture& program) {
    Global global;
    Manager sample(global.boxes, global.reports, global.chart);
    sample.openSample(MIRELUND_DATA "/DtaSampl.PQD");
    for (std::int16_t fund = 1; fund <= 5; ++fund) {
      global.boxes.BoxEdited = 1;
      sample.leavePriceBox(fund, "20");
    }
    PQInsights window({sample, program.global, program.prompts, program.printing}, nullptr);
    window.show();
    QVERIFY(ProgramFixture::isActivated(&window));
    auto* tabs = window.findChild<QTabWidget*>("IVTabs");
    for (int page = 0; page < tabs->count(); ++page) {
      tabs->setCurrentIndex(page);
      lookAndWalk(&window, QString("insights-%1").arg(page));
    }
  }

  static void choose(const char* list, int row) {
    auto* choice = ProgramFixture::find<QComboBox>(list);
    choice->setFocus(Qt::TabFocusReason);
    while (choice->currentIndex() < row) QTest::keyClick(choice, Qt::Key_Down);
  }

  void dialog(QDialog& dialog, const QString& view) {
    dialog.show();
    QVERIFY(ProgramFixture::isActivated(&dialog));
    lookAndWalk(&dialog, view);
  }

  void dialogs() {
    Global global;
    for (const Message message : {Message::NothingToGraph, Message::WrongEntry}) {
      global.dialogs.MessageNumber = message;
      AMsgbox box(global.dialogs, nullptr);
      dialog(box, "message");
    }
    global.dialogs.QuestionNumber = Question::DiscardChanges;
    AllYesNo question(global.dialogs, nullptr);
    dialog(question, "question");
    PrinterHeaderInput header(global.dialogs, "Input", "Type in one line header information.",
                              nullptr);
    dialog(header, "header");
    FundCurValInput number("Type in the number of the record.", nullptr);
    dialog(number, "number");
  }

 private slots:
  // What the checks are there for, each planted once.
  void theChecksSeeWhatIsWrong() {
    const auto shown = [](auto plant, auto check) {
      QWidget window;
      window.resize(400, 200);
      plant(&window);
      window.show();
      QCoreApplication::processEvents();
      return check(&window);
    };
    const auto label = [](QWidget* parent, const QString& text, QRect place) {
      auto* made = new QLabel(text, parent);
      made->setGeometry(place);
      return made;
    };
    const QString text = "A text of some length";
    const auto cut = [](QWidget* window) { return cutTexts(window).join('\n'); };
    QCOMPARE(shown([&](QWidget* w) { label(w, text, {5, 5, 300, 40}); }, cut), "");
    QVERIFY(shown([&](QWidget* w) { label(w, text, {5, 5, 60, 40}); }, cut).contains("is cut"));
    QVERIFY(shown([&](QWidget* w) { label(w, text, {300, 5, 300, 40}); }, cut).contains("is cut"));
    QVERIFY(shown([&](QWidget* w) { label(w, text, {5, 5, 300, 8}); }, cut).contains("is cut"));
    const auto wrapped = [&](int height) {
      return shown([&](QWidget* w) { label(w, text, {5, 5, 60, height})->setWordWrap(true); }, cut);
    };
    QCOMPARE(wrapped(150), "");
    QVERIFY(wrapped(30).contains("is cut"));
    QVERIFY(shown(
                [&](QWidget* w) {
                  (new QPushButton(text, w))->setGeometry(5, 5, 70, 30);
                  auto* box = new QLineEdit(text, w);
                  box->setObjectName("Box");
                  box->setGeometry(5, 50, 70, 30);
                  auto* list = new QComboBox(w);
                  list->addItems({"short", text});
                  list->setGeometry(5, 90, 80, 30);
                  (new QRadioButton(text, w))->setGeometry(5, 130, 70, 30);
                  auto* tabs = new QTabBar(w);
                  tabs->setUsesScrollButtons(false);
                  for (int i = 0; i < 3; ++i) tabs->addTab(text);
                  tabs->setElideMode(Qt::ElideRight);
                  tabs->setGeometry(120, 5, 150, 30);
                },
                cut)
                .count("is cut") == 7);
    QVERIFY(shown(
                [&](QWidget* w) {
                  label(w, text, {5, 5, 200, 40});
                  label(w, text, {5, 20, 200, 40});
                },
                cut)
                .contains("lies over"));

    const auto faint = [](QWidget* window) {
      return faintTexts(window, pictureOf(window)).join('\n');
    };
    const auto inked = [&](const QColor& ink) {
      return shown(
          [&](QWidget* w) {
            QPalette colors;
            colors.setColor(QPalette::WindowText, ink);
            colors.setColor(QPalette::Window, Qt::white);
            w->setPalette(colors);
            label(w, text, {5, 5, 300, 40});
          },
          faint);
    };
    QCOMPARE(inked(Qt::black), "");
    QVERIFY(inked(QColor(0x80, 0x80, 0x80)).contains("is faint"));

    // The focus's mark is drawn in the text's colour.
    const auto marked = [&](const QColor& ink) {
      return shown(
          [&](QWidget* w) {
            QPalette colors;
            colors.setColor(QPalette::WindowText, ink);
            colors.setColor(QPalette::Window, Qt::white);
            w->setPalette(colors);
            label(w, text, {5, 5, 300, 40})->setFocusPolicy(Qt::StrongFocus);
          },
          [](QWidget* w) {
            auto* control = w->findChild<QLabel*>();
            if (!ProgramFixture::isActivated(w)) return QString("not active");
            control->clearFocus();
            const Picture without = pictureOf(w);
            control->setFocus(Qt::TabFocusReason);
            return faintMark(control, without, pictureOf(w, around(control)));
          });
    };
    QCOMPARE(marked(Qt::black), "");
    QVERIFY(marked(QColor(0xa0, 0xa0, 0xa0)).contains("focus is faint"));
  }

  void everyTextIsWholeAndStandsOut_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("dark");
    QTest::addColumn<bool>("reversed");
    for (const int points : {kSmallFont, kLargeFont}) {
      QTest::addRow("light-%d", points) << points << false << false;
      QTest::addRow("dark-%d", points) << points << true << false;
      QTest::addRow("reversed-%d", points) << points << false << true;
    }
  }

  void everyTextIsWholeAndStandsOut() {
    QFETCH(int, points);
    QFETCH(bool, dark);
    QFETCH(bool, reversed);
    const Desktop desktop({points, dark, reversed});
    look_ = QTest::currentDataTag();
    faults_.clear();
    walked_.clear();
    {
      ProgramFixture program;
      lookAndWalk(&program.program.start(), "start");
      calculators(program);
      manager(program);
      insights(program);
    }
    dialogs();
    faults_.removeDuplicates();
    for (const QString& fault : faults_) qWarning().noquote() << fault;
    QCOMPARE(faults_.size(), 0);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::RenderTest)
#include "render_test.moc"

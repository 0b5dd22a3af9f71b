// SPDX-License-Identifier: GPL-3.0-or-later
// Every window as a screen reader has it: what Tab comes to, in its order, each with its
// role, its name and its value; and what holds of everything else that is read.
#include <QAccessible>
#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QTimer>
#include <map>

#include "app/result_label.h"
#include "calc/mortgage_schedule_window.h"
#include "charts/bar_chart_widget.h"
#include "charts/chart_window.h"
#include "dialogs/input_dialogs.h"
#include "dialogs/message_dialogs.h"
#include "insights/insights_window.h"
#include "manager/manager.h"
#include "ui_testing.h"

namespace mirelund::testing {

namespace {

QAccessibleInterface* said(QWidget* widget) {
  return QAccessible::queryAccessibleInterface(widget);
}

QString roleText(QAccessible::Role role) {
  static const std::map<QAccessible::Role, QString> kRoles = {
      {QAccessible::Window, "frame"},        {QAccessible::Dialog, "dialog"},
      {QAccessible::AlertMessage, "dialog"}, {QAccessible::PushButton, "button"},
      {QAccessible::RadioButton, "option"},  {QAccessible::EditableText, "text"},
      {QAccessible::ComboBox, "choice"},     {QAccessible::List, "list"},
      {QAccessible::PageTabList, "tabs"},    {QAccessible::PageTab, "tab"},
      {QAccessible::Chart, "chart"},         {QAccessible::ListItem, "item"},
      {QAccessible::StaticText, "label"},    {QAccessible::Grouping, "group"},
      {QAccessible::MenuItem, "menu item"},
  };
  const auto found = kRoles.find(role);
  return found == kRoles.end() ? "role " + QString::number(role) : found->second;
}

// A list to choose from has what is chosen as its name, on some systems, and its label by
// the relation to it.
QString nameOf(QAccessibleInterface* iface) {
  if (iface->role() == QAccessible::ComboBox)
    for (const auto& [other, relation] : iface->relations(QAccessible::Label))
      return other->text(QAccessible::Name);
  return iface->text(QAccessible::Name);
}

// "role name = value", "(read only)" or "(on)" behind it.
QString described(QAccessibleInterface* iface) {
  QString text = roleText(iface->role()) + ' ' + nameOf(iface);
  const QString value = iface->text(QAccessible::Value).trimmed();
  const bool hasOwn = iface->role() != QAccessible::List && !value.contains('\n');
  if (hasOwn && !value.isEmpty()) text += " = " + value;
  const QAccessible::State state = iface->state();
  if (state.readOnly) text += " (read only)";
  if (state.checked) text += " (on)";
  return text;
}

// What has the focus, or is chosen within what has it.
QString focused() {
  QWidget* widget = QApplication::focusWidget();
  return widget == nullptr ? "nothing" : described(said(widget));
}

// Presses Tab until it comes round.
QStringList walked() {
  constexpr int kMost = 60;
  QStringList stops;
  QWidget* const first = QApplication::focusWidget();
  for (int i = 0; i < kMost; ++i) {
    stops << focused();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (QApplication::focusWidget() == first) return stops;
  }
  return stops << "and so on";
}

bool hasMarkup(const QString& text) {
  return Qt::mightBeRichText(text) || text.contains("&lt;") || text.contains("&amp;");
}

// What is wrong with anything that is shown; empty when all is well.
class Laws {
 public:
  static QString broken(QWidget* window) {
    Laws laws;
    laws.root(window);
    laws.walk(said(window), 0);
    return laws.faults_.join('\n');
  }

 private:
  void root(QWidget* window) {
    const QAccessible::Role role = said(window)->role();
    const auto wanted =
        qobject_cast<QDialog*>(window) == nullptr ? QAccessible::Window : QAccessible::Dialog;
    if (role != wanted) faults_ << "a window is a " + roleText(role);
    if (said(window)->text(QAccessible::Name).isEmpty()) faults_ << "a window without a name";
  }

  void walk(QAccessibleInterface* iface, int depth) {
    constexpr int kDeepest = 40;
    if (iface == nullptr || depth > kDeepest) return;
    if (iface->state().invisible && depth > 0) return;
    look(iface);
    for (int i = 0; i < iface->childCount(); ++i) {
      QAccessibleInterface* child = iface->child(i);
      if (child != nullptr && iface->indexOfChild(child) != i)
        faults_ << "not where its parent has it: " + described(child);
      walk(child, depth + 1);
    }
  }

  void look(QAccessibleInterface* iface) {
    const QString name = nameOf(iface);
    const QString description = iface->text(QAccessible::Description);
    if (hasMarkup(description)) faults_ << "markup is read: " + description;
    const QRegularExpression mnemonic("&\\w");
    if (mnemonic.match(name).hasMatch()) faults_ << "a mnemonic's mark is read: " + name;
    const QAccessible::State state = iface->state();
    if (state.focusable && !state.disabled && name.isEmpty())
      faults_ << "no name: " + described(iface);
    const auto* widget = qobject_cast<QWidget*>(iface->object());
    const bool handsOn = widget != nullptr && widget->focusProxy() != nullptr;
    if (iface->role() == QAccessible::Client && state.focusable && !handsOn)
      faults_ << "no role: " + described(iface);
    const QString key = iface->text(QAccessible::Accelerator);
    // A label has its control's, a list the key that opens it.
    const bool isOwn = iface->role() != QAccessible::StaticText &&
                       iface->role() != QAccessible::ComboBox &&
                       iface->role() != QAccessible::PageTabList;
    if (isOwn && !key.isEmpty()) {
      const auto [place, isNew] = keys_.try_emplace(key.toLower(), name);
      if (!isNew) faults_ << key + " is of " + place->second + " and of " + name;
    }
  }

  QStringList faults_;
  std::map<QString, QString> keys_;
};

// What is announced while it lives.
class Ear {
 public:
  Ear() {
    heard_.clear();
    QAccessible::installUpdateHandler(hear);
  }
  ~Ear() { QAccessible::installUpdateHandler(nullptr); }
  Ear(const Ear&) = delete;
  Ear& operator=(const Ear&) = delete;

  static const QStringList& heard() { return heard_; }

 private:
  static void hear(QAccessibleEvent* event) {
    QAccessibleInterface* from = event->accessibleInterface();
    if (from == nullptr) return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (event->type() == QAccessible::Announcement)
      heard_ << static_cast<QAccessibleAnnouncementEvent*>(event)->message();
#endif
    if (event->type() == QAccessible::ObjectShow && from->role() == QAccessible::Notification)
      heard_ << from->text(QAccessible::Name);
    if (event->type() == QAccessible::Focus && from->role() == QAccessible::ListItem)
      heard_ << from->text(QAccessible::Name);
  }

  static inline QStringList heard_;
};

// Compared line by line, so that a failure tells where.
void compareLines(const QStringList& found, const QStringList& expected) {
  for (qsizetype i = 0; i < std::min(found.size(), expected.size()); ++i)
    QCOMPARE(found[i], expected[i]);
  QCOMPARE(found.join('\n'), expected.join('\n'));
}

}  // namespace

class ScreenReaderTest : public QObject {
  Q_OBJECT

  // Walks a window from its tabs on, behind which every page ends alike.
  static void compareWalk(const char* window, const char* tabs, const QStringList& expected) {
    QCoreApplication::processEvents();
    ProgramFixture::find<QTabWidget>(tabs)->tabBar()->setFocus(Qt::TabFocusReason);
    compareLines(walked(), expected);
    QCOMPARE(Laws::broken(ProgramFixture::window(window)), "");
  }

  static void openManager(ProgramFixture& program) {
    program.click("StartStockMgmt");
    QVERIFY(program.isActivated(program.window("PQManagement")));
    program.prompts.paths = {MIRELUND_DATA "/DtaSampl.PQD"};
    program.find<QTabWidget>("SSTab2")->setCurrentIndex(0);
    program.click("OFOpen");
  }

  static void choose(const char* list, int row) {
    auto* choice = ProgramFixture::find<QComboBox>(list);
    choice->setFocus(Qt::TabFocusReason);
    while (choice->currentIndex() < row) QTest::keyClick(choice, Qt::Key_Down);
  }

  // A dialog as it is shown, walked from where its focus starts.
  static void compareDialog(QDialog& dialog, const QString& name, const QStringList& expected) {
    dialog.show();
    QVERIFY(ProgramFixture::isActivated(&dialog));
    QCOMPARE(described(said(&dialog)), "dialog " + name);
    compareLines(walked(), expected);
    QCOMPARE(Laws::broken(&dialog), "");
  }

 private slots:
  void initTestCase() { QTRY_VERIFY(QAccessible::isActive()); }

  void theStartWindow() {
    ProgramFixture program;
    QCOMPARE(described(said(&program.program.start())), "frame Mirelund");
    compareLines(walked(),
                 {"button Calculations", "button Investment manager", "button Exit program"});
    QCOMPARE(Laws::broken(&program.program.start()), "");
  }

  void everyCalculator_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("stops");
    QTest::newRow("pension growth")
        << 0
        << QStringList{"tabs Pension growth",
                       "text Current balance in account = $.00",
                       "text My current annual salary = $40,000.00",
                       "text My annual contribution rate % = 4.00%",
                       "text Company annual contribution rate % = 4.00%",
                       "text Estimated annual salary increase % = 4.00%",
                       "text Annual interest/growth rate % = 10.00%",
                       "text Estimated annual inflation rate % = .00%",
                       "text Number of years to retirement = 25"};
    // The results come behind all that takes input.
    QTest::newRow("mortgage")
        << 1
        << QStringList{"tabs Mortgage tables",
                       "choice Interest compounding periods per year = Monthly",
                       "text Principal amount of mortgage = $100,000.00",
                       "text Annual interest rate % = 6.500%",
                       "text Amortization period in years = 25",
                       "text Monthly principal + interest = $675.21 (read only)",
                       "option Payment (on)",
                       "choice Frequency and type of payment = Biweekly(acl)",
                       "option 365 (on)",
                       "text Total interest paid, conventional mortgage = $102,562.15 (read only)",
                       "text Number of payments each year = 26 (read only)",
                       "text Number of days in year used = 365.00 (read only)",
                       "text Interest saved v normal mortgage = $21,004.87 (read only)",
                       "text Number of years to final payment = 20.68 (read only)",
                       "text Each payment, principal + interest = $337.60 (read only)",
                       "text Total interest paid, accelerated mortgage = $81,557.27 (read only)"};
    QTest::newRow("investment growth")
        << 2
        << QStringList{"tabs Invested growth",
                       "text Beginning balance = $.00",
                       "text Amount of each contribution = $1,000.00",
                       "choice Frequency of contribution = Annually",
                       "text Annual Interest/growth rate % = 15.00%",
                       "text Increase annual contribution rate % = .00%",
                       "text Average annual inflation rate % = .00%",
                       "text Number of years invested = 25",
                       "option Complete calculation (on)"};
    QTest::newRow("retirement income")
        << 3
        << QStringList{"tabs Retired income",
                       "option Percentage of current value (on)",
                       "text Starting value of investments = $100,000.00",
                       "text Annual interest/growth rate % = 20.00%",
                       "text Annual income withdrawn as a (%) = 15.00%",
                       "text Time in years = 25"};
    QTest::newRow("compound gain")
        << 4
        << QStringList{"tabs Compound gain", "text Purchase cost of your investment = $10,000.00",
                       "text Present or future value = $20,000.00",
                       "text Number of years invested = 5",
                       "text Name of your investment = XYZ Mutual Fund"};
    QTest::newRow("capital required")
        << 5
        << QStringList{"tabs  Capital required", "option Amount of capital required (on)",
                       "text Amount of capital required $ = $100,000.00",
                       "text Annual interest/growth rate % = 15.00%", "text Number of years = 25"};
  }

  void everyCalculator() {
    QFETCH(int, page);
    QFETCH(QStringList, stops);
    ProgramFixture program;
    program.openCalculations(page);
    QCOMPARE(described(said(program.window("PQInvest"))), "frame Calculations");
    stops << "button Calculate"
          << "button Help"
          << "button Print"
          << "button Graph"
          << "button How to use"
          << "button Clear results"
          << "button Exit to menu"
          << "text Results (read only)";
    compareWalk("PQInvest", "SSTab1", stops);
  }

  void theNamesFollowTheOption() {
    ProgramFixture program;
    program.openCalculations(3);
    program.click("RIWDrawalChoice_1");
    compareWalk("PQInvest", "SSTab1",
                {"tabs Retired income", "option Fixed amount monthly (on)",
                 "text Starting value of investments = $100,000.00",
                 "text Annual interest/growth rate % = 20.00%",
                 "text Monthly amount of cash withdrawn = $1,000.00",
                 "text Increase annual income by % = .00%", "button Calculate", "button Help",
                 "button Print", "button Graph", "button How to use", "button Clear results",
                 "button Exit to menu", "text Results (read only)"});
  }

  // What the laws are there for, each broken once.
  void theLawsSeeWhatIsWrong() {
    const auto brokenBy = [](auto plant) {
      QWidget window;
      window.setWindowTitle("A window");
      auto* layout = new QVBoxLayout(&window);
      plant(&window, layout);
      window.show();
      return Laws::broken(&window);
    };
    const auto addButton = [](QLayout* layout, const QString& text) {
      auto* button = new QPushButton(text);
      layout->addWidget(button);
      return button;
    };
    QCOMPARE(brokenBy([&](QWidget*, QLayout* layout) { addButton(layout, "&Good"); }), "");
    QCOMPARE(brokenBy([](QWidget* window, QLayout*) { window->setWindowTitle({}); }),
             "a window without a name");
    QCOMPARE(brokenBy([&](QWidget*, QLayout* layout) {
               addButton(layout, "&Print");
               addButton(layout, "&Pause");
             }),
             "Alt+P is of Print and of Pause");
    QCOMPARE(brokenBy([](QWidget*, QLayout* layout) { layout->addWidget(new QLineEdit); }),
             "no name: text ");
    QCOMPARE(brokenBy([](QWidget*, QLayout* layout) {
               auto* bare = new QWidget;
               bare->setFocusPolicy(Qt::StrongFocus);
               bare->setAccessibleName("Bare");
               bare->setFixedSize(20, 20);
               layout->addWidget(bare);
             }),
             "no role: role 10 Bare");
    QCOMPARE(brokenBy([&](QWidget*, QLayout* layout) {
               addButton(layout, "Fund")->setToolTip("<b>Fund</b>");
             }),
             "markup is read: <b>Fund</b>");
    QCOMPARE(brokenBy([&](QWidget*, QLayout* layout) {
               addButton(layout, "Go")->setAccessibleName("&Go");
             }),
             "a mnemonic's mark is read: &Go");
    QLineEdit stray;
    stray.setAccessibleName("Stray");
    QVERIFY(Laws::broken(&stray).startsWith("a window is a text"));
  }

  // By characters and words, as any text; and its value follows the boxes.
  void aResultIsReadAsText() {
    ProgramFixture program;
    program.openCalculations(1);
    auto* result = program.find<ResultLabel>("MTTotalPmts");
    program.box("MTInPrincipal")->setFocus(Qt::TabFocusReason);
    program.key(Qt::Key_Tab);
    result->setFocus(Qt::TabFocusReason);
    QCOMPARE(result->selectedText(), result->text());
    QAccessibleTextInterface* text = said(result)->textInterface();
    QVERIFY(text != nullptr);
    QCOMPARE(text->characterCount(), 13);
    QCOMPARE(text->text(0, text->characterCount()).trimmed(), "$102,562.15");
    int start = -1;
    int end = -1;
    QCOMPARE(text->textAtOffset(12, QAccessible::CharBoundary, &start, &end), "5");
    QCOMPARE(start, 12);
    QCOMPARE(end, 13);
    QCOMPARE(text->selectionCount(), 1);
    text->selection(0, &start, &end);
    QCOMPARE(start, 0);
    QCOMPARE(end, 13);
    program.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().trimmed(), "$102,562.15");
    text->setSelection(0, 2, 6);
    QCOMPARE(result->selectedText(), "$102");
    QCOMPARE(text->cursorPosition(), 6);
    text->removeSelection(0);
    QCOMPARE(text->selectionCount(), 0);
    text->addSelection(0, 3);
    text->setCursorPosition(1);
    QCOMPARE(result->selectedText(), "");
    text->attributes(0, &start, &end);
    QCOMPARE(end, 13);
    QCOMPARE(text->offsetAtPoint(text->characterRect(0).center()), 0);
    QCOMPARE(text->offsetAtPoint({-1, -1}), -1);

    program.type("MTInRate", "6");
    program.key(Qt::Key_Tab);
    QCOMPARE(said(result)->text(QAccessible::Value).trimmed(), "$93,290.42");
  }

  // Enter walks the boxes and ends with Calculate: no result lies on its way.
  void enterPassesTheResultsBy() {
    ProgramFixture program;
    program.openCalculations(1);
    program.box("MTInPrincipal")->setFocus(Qt::TabFocusReason);
    QStringList stops;
    for (int i = 0; i < 4; ++i) {
      stops << QApplication::focusWidget()->objectName();
      program.key(Qt::Key_Return);
    }
    QCOMPARE(stops, (QStringList{"MTInPrincipal", "MTInRate", "MTInTerm", "MTCalculate"}));
  }

  void everyPageOfTheManager_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("stops");
    QTest::newRow("open") << 0
                          << QStringList{"tabs Open file", "button Choose a file...",
                                         "button Open the sample", "button Exit to menu"};
    QTest::newRow("entry") << 1
                           << QStringList{"tabs Data entry",
                                          "choice Fund name = Brindlemoor Growth",
                                          "button Add Fund Name",
                                          "choice Transaction type = Bought",
                                          "text Date",
                                          "text Price of each share",
                                          "text Number of shares",
                                          "text Commission or fee",
                                          "button Add Record",
                                          "button Correct",
                                          "button Delete",
                                          "button Help",
                                          "button Print",
                                          "button Exit to menu",
                                          "text Records of the active fund (read only)"};
    QTest::newRow("display") << 2
                             << QStringList{"tabs Display funds",
                                            "list Funds",
                                            "button Display All Funds",
                                            "text Transactions of the funds (read only)",
                                            "button Help",
                                            "button Print",
                                            "button Exit to menu"};
    QTest::newRow("current value") << 3
                                   << QStringList{"tabs Current value",
                                                  "text Price of Brindlemoor Growth",
                                                  "text Price of Hollowmere Energy",
                                                  "text Price of Ostrella Small Caps",
                                                  "text Price of Quillfern Income",
                                                  "text Price of Tarnwick Bond",
                                                  "text Price of Velmary Metals",
                                                  "button Calculate",
                                                  "button Graph",
                                                  "button Help",
                                                  "button Print",
                                                  "button Exit to menu",
                                                  "text Current value of the funds (read only)"};
    QTest::newRow("save") << 4
                          << QStringList{"tabs Save file", "button Choose a name...",
                                         "button Exit to menu"};
  }

  void everyPageOfTheManager() {
    QFETCH(int, page);
    QFETCH(QStringList, stops);
    ProgramFixture program;
    openManager(program);
    QCOMPARE(roleText(said(program.window("PQManagement"))->role()), "frame");
    program.find<QTabWidget>("SSTab2")->setCurrentIndex(page);
    if (page == 1) {
      choose("EFunds", 0);
      choose("ETransType", 0);
    }
    compareWalk("PQManagement", "SSTab2", stops);
  }

  // A tooltip is a description, and tooltips of names are written as markup.
  void aNameIsDescribedAsItStands() {
    ProgramFixture program;
    openManager(program);
    program.prompts.lines = {"R & D <b>Fund</b>"};
    program.find<QTabWidget>("SSTab2")->setCurrentIndex(1);
    program.click("ECreateFund");
    program.find<QTabWidget>("SSTab2")->setCurrentIndex(3);
    QCoreApplication::processEvents();
    QWidget* box = nullptr;
    for (auto* each : program.find("CVCalc")->parentWidget()->findChildren<QLineEdit*>())
      if (said(each)->text(QAccessible::Name) == "Price of R & D <b>Fund</b>") box = each;
    QVERIFY(box != nullptr);
    for (auto* label : program.find("CVCalc")->parentWidget()->findChildren<QLabel*>())
      if (label->buddy() == box)
        QCOMPARE(said(label)->text(QAccessible::Description), "R & D <b>Fund</b>");
  }

  void theMessage() {
    Global global;
    global.dialogs.MessageNumber = Message::WrongEntry;
    AMsgbox dialog(global.dialogs, nullptr);
    compareDialog(dialog, "Mirelund", {"button OK"});
    QCOMPARE(said(dialog.findChild<QPushButton*>("AMsgExit"))->text(QAccessible::Description),
             "Wrong or missing entry, try again.");
  }

  void theQuestion() {
    Global global;
    global.dialogs.QuestionNumber = Question::Print;
    AllYesNo dialog(global.dialogs, nullptr);
    compareDialog(dialog, "Mirelund", {"button Yes", "button No"});
    QCOMPARE(said(&dialog)->text(QAccessible::Description), " Continue with Printout.");
  }

  void theOneLineDialog() {
    Global global;
    PrinterHeaderInput dialog(global.dialogs, "Input", "Type in one line header information.",
                              nullptr);
    compareDialog(
        dialog, "Input",
        {"text Type in one line header information.", "button Continue Printout", "button Cancel"});
  }

  void theNumberDialog() {
    FundCurValInput dialog("Type in the number.", nullptr);
    compareDialog(dialog, "Mirelund",
                  {"text Type in the number.", "button Accept", "button Cancel"});
  }

  void thePaymentSchedule() {
    FakePrompts prompts;
    PdfTarget printing;
    PQSchedule window({100'000, 6.5, 25, 0, 26.07142857, 52.14285714, {}}, prompts, printing,
                      nullptr);
    compareDialog(window, "Payment schedule",
                  {"option Conventional: Monthly (on)", "text Extra with each payment = $.00",
                   "text Extra once a year = $.00", "text Payment schedule (read only)",
                   "button Graph", "button Print", "button Export...", "button Exit"});
    const Ear ear;
    window.findChild<QRadioButton*>("SCKind_1")->click();
    QVERIFY2(ear.heard().join('\n').contains("Payment schedule: new text"),
             qPrintable(ear.heard().join('\n')));
  }

  void theInsights() {
    ProgramFixture program;
    Global global;
    Manager sample(global.boxes, global.reports, global.chart);
    sample.setDateFormat(shortDateFormat("MM/dd/yyyy"));
    sample.openSample(MIRELUND_DATA "/DtaSampl.PQD");
    PQInsights window({sample, program.global, program.prompts, program.printing}, nullptr);
    // The date is today's.
    const QString date = window.findChild<QLineEdit*>("IVDate")->text();
    const QStringList behind = {"button Graph",
                                "button Print",
                                "button Export...",
                                "button Exit",
                                "text Date of valuation = " + date,
                                "option Average cost (on)"};
    compareDialog(
        window, "Insights",
        QStringList{"text Gains of the funds (read only)"} + behind + QStringList{"tabs Gains"});
    for (const char* stops : {"Return|text Annual return of the funds (read only)",
                              "Years|text The funds year by year (read only)"}) {
      const QStringList parts = QString(stops).split('|');
      const Ear ear;
      QTest::keyClick(&window, Qt::Key_Tab, Qt::ControlModifier);
      QVERIFY(Ear::heard().join('\n').contains(": new text, "));
      window.findChild<QTabWidget*>("IVTabs")->currentWidget()->setFocus(Qt::TabFocusReason);
      compareLines(walked(), QStringList{parts[1]} + behind + QStringList{"tabs " + parts[0]});
      QCOMPARE(Laws::broken(&window), "");
    }
  }

  void theChartIsAListOfItsBars() {
    ProgramFixture program;
    program.openCalculations(1);
    program.click("MTCalculate");
    PQGraph window(program.global, program.prompts, program.printing, nullptr);
    auto* chart = window.findChild<BarChart*>("MSChart1");
    window.setVisible(true);
    QVERIFY(ProgramFixture::isActivated(&window));
    chart->replot();
    compareLines(walked(), {"button Exit", "chart Total interest paid", "button Save as...",
                            "button Copy", "button Print"});
    QCOMPARE(Laws::broken(&window), "");

    QAccessibleInterface* list = said(chart);
    QCOMPARE(described(said(&window)), "dialog Mortgage comparisons");
    QCOMPARE(list->childCount(), 2);
    QCOMPARE(list->child(2), nullptr);
    const QString conventional = "Comparison 1, Conventional: $102,562.15";
    const QString chosen = "Comparison 1, At the chosen frequency: $81,557.27";
    QCOMPARE(described(list->child(0)), "item " + conventional + " (read only)");
    QCOMPARE(described(list->child(1)), "item " + chosen + " (read only)");
    for (int bar = 0; bar < 2; ++bar) {
      const QRect place = list->child(bar)->rect();
      QVERIFY(place.height() > 10);
      QCOMPARE(list->childAt(place.center().x(), place.center().y()), list->child(bar));
      QCOMPARE(list->child(bar)->parent(), list);
    }
    QCOMPARE(list->childAt(-1, -1), nullptr);

    const Ear ear;
    chart->setFocus(Qt::TabFocusReason);
    for (const auto key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_End,
                           Qt::Key_Home, Qt::Key_Down, Qt::Key_Up})
      QTest::keyClick(chart, key);
    QCOMPARE(Ear::heard(), (QStringList{conventional, chosen, chosen, conventional, chosen,
                                        conventional, chosen, conventional}));
    QCOMPARE(list->focusChild(), list->child(0));
    QVERIFY(list->child(0)->state().focused);
    QVERIFY(!list->child(1)->state().focused);
    QCOMPARE(list->text(QAccessible::Value), conventional);
    QTest::keyClick(chart, Qt::Key_Escape);  // its window's
    QVERIFY(!window.isVisible());
  }

  void aChartWithoutBarsIsEmpty() {
    Global global;
    FakePrompts prompts;
    PdfTarget printing;
    PQGraph window(global, prompts, printing, nullptr);
    auto* chart = window.findChild<BarChart*>("MSChart1");
    QCOMPARE(said(chart)->childCount(), 0);
    QTest::keyClick(chart, Qt::Key_Right);
    QCOMPARE(chart->chosenBar(), -1);
  }

  // Whatever has the focus, once for each report, and nothing for an empty box.
  void aNewReportIsAnnounced() {
    ProgramFixture program;
    program.openCalculations(4);
    {
      const Ear ear;
      program.click("CGCalculate");
      QCOMPARE(Ear::heard().size(), 1);
      QVERIFY2(QRegularExpression("^Results: new text, \\d+ lines$")
                   .match(Ear::heard().front())
                   .hasMatch(),
               qPrintable(Ear::heard().front()));
      program.click("CGCalculate");
      QCOMPARE(Ear::heard().size(), 2);
      program.click("ClearResults");
      QCOMPARE(Ear::heard().size(), 2);
    }
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::ScreenReaderTest)
#include "screen_reader_test.moc"

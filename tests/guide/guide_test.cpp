// SPDX-License-Identifier: GPL-3.0-or-later
// Plays every page of the guide in the program and holds what it says against what is
// shown: reports and files line by line, formulas and numbers worked out, pictures by
// what they were taken of.
#include <QAction>
#include <QDir>
#include <QKeySequence>
#include <QSet>
#include <QShortcut>
#include <algorithm>

#include "app/global.h"
#include "base/ui_text.h"
#include "calc/investment_growth.h"
#include "calc/mortgage.h"
#include "calc/pages.h"
#include "guide/grammar.h"
#include "guide/guide_page.h"
#include "guide/guide_player.h"
#include "insights/annual_return.h"
#include "manager/database/data_file.h"

namespace mirelund::testing {

namespace {

// Dates are month, day and year in the guide, wherever its test runs.
[[maybe_unused]] const bool kAmericanDates = qputenv("LC_ALL", "en_US.UTF-8");

const QDir kGuide(MIRELUND_GUIDE);

QString textOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw BadPage("cannot be read: " + path);
  return QString::fromUtf8(file.readAll());
}

// The program's own numbers, by the names that the guide's checks use.
Quantities limitsOfTheProgram() {
  Quantities limits = {
      {"calculators", static_cast<double>(calculatorPages().size())},
      {"most years", kMostYears},
      {"most comparisons", kMostComparisons},
      {"most funds", kMostFunds},
      {"most records", kMostRecords},
      {"most bytes of a name", kMostNameBytes},
      {"transaction types", static_cast<double>(transactionTypes().size())},
      {"largest amount", Currency::max().toDouble()},
      {"days of a year", kDaysOfAYear},
  };
  for (const ContributionFrequencyRow& row : kContributionFrequencies)
    limits["periods " + toQString(row.text)] = row.periodsPerYear;
  for (const CompoundingPeriodRow& row : kCompoundingPeriods)
    limits["compounded " + toQString(row.text)] = row.timesPerYear;
  for (const PaymentFrequencyRow& row : kPaymentFrequencies) {
    limits["payments " + toQString(row.text)] = row.paymentsPerYear;
    limits["parts " + toQString(row.text)] = row.parts / row.times;
  }
  for (const DaysInYearRow& row : kDaysInYear) {
    const QString days = toQString(row.caption);
    limits["days " + days] = row.days.toDouble();
    limits["two weeks of " + days] = row.biweeklyPerYear;
    limits["weeks of " + days] = row.weeklyPerYear;
  }
  const auto sample = parseDatabase(textOf(MIRELUND_DATA "/DtaSampl.PQD").toStdString());
  limits["funds of the sample"] = sample->FundCount;
  limits["records of the sample"] = sample->RecordCount;
  for (int year = 9999; Date::of(year, 1, 1); --year) limits["first year"] = year;
  return limits;
}

const Quantities kLimits = limitsOfTheProgram();

GuidePage pageOf(const QString& name) {
  return {name, textOf(kGuide.filePath(name))};
}

QStringList pages() {
  return kGuide.entryList({"*.md"}, QDir::Files, QDir::Name);
}

// What is wrong with a block of a page that has been played up to it.
QString fault(GuidePlayer& player, const GuideBlock& block) {
  switch (block.kind) {
    case BlockKind::Inputs:
      player.play(block.lines);
      return {};
    case BlockKind::Report:
      return difference(block.lines, player.report());
    case BlockKind::File:
      return difference(block.lines, QString::fromUtf8(player.fileBytes()));
    case BlockKind::Picture: {
      const QImage kept(kGuide.filePath("images/" + block.name + ".png"));
      if (kept.isNull()) return "no picture";
      const QString now = player.picture(block.name).text(kPictureContent);
      const QString differs = contentDifference(kept.text(kPictureContent), now);
      return differs.isEmpty()
                 ? differs
                 : "not what is shown now (scripts/pictures takes it anew):\n" + differs;
    }
    case BlockKind::Grammar:
      break;
  }
  return {};
}

QStringList faultsOf(const char* markdown) {
  return GuidePage("page", QString::fromUtf8(markdown)).faults(kLimits);
}

}  // namespace

class GuideTest : public QObject {
  Q_OBJECT

 private slots:
  static void initTestCase() { useProgramFont(); }

  void saysWhatTheProgramShows_data() {
    QTest::addColumn<QString>("name");
    for (const QString& name : pages()) QTest::newRow(qPrintable(name)) << name;
  }

  void saysWhatTheProgramShows() {
    QFETCH(QString, name);
    try {
      const GuidePage page = pageOf(name);
      GuidePlayer player(MIRELUND_DATA "/DtaSampl.PQD");
      for (const GuideBlock& block : page.blocks) {
        const QString wrong = fault(player, block);
        QVERIFY2(wrong.isEmpty(),
                 qPrintable(QString("%1:%2: %3").arg(name).arg(block.line).arg(wrong)));
      }
    } catch (const std::runtime_error& wrong) {
      QFAIL(wrong.what());
    }
  }

  void somethingStandsForEveryNumber_data() { saysWhatTheProgramShows_data(); }

  void somethingStandsForEveryNumber() {
    QFETCH(QString, name);
    try {
      const QStringList faults = pageOf(name).faults(kLimits);
      QVERIFY2(faults.isEmpty(), qPrintable('\n' + faults.join('\n')));
    } catch (const BadPage& wrong) {
      QFAIL(wrong.what());
    }
  }

  void hasAPageForEach() {
    for (const char* page :
         {"index", "compound-gain", "capital-required", "investment-growth", "mortgage",
          "payment-schedule", "pension-growth", "retirement-income", "begin-a-database",
          "add-records", "correct-and-delete", "look-at-funds", "current-value", "insights",
          "open-and-save", "print", "data-file", "menus-and-keys"})
      QVERIFY2(pages().contains(QString(page) + ".md"), page);
  }

  void everyCalculatorHasFormulasAnExampleAndPictures() {
    for (const char* name : {"compound-gain", "capital-required", "investment-growth", "mortgage",
                             "pension-growth", "retirement-income"}) {
      const GuidePage page = pageOf(QString(name) + ".md");
      const auto count = [&](BlockKind kind) {
        return std::count_if(page.blocks.begin(), page.blocks.end(),
                             [&](const GuideBlock& block) { return block.kind == kind; });
      };
      QVERIFY2(!page.formulas.isEmpty(), name);
      QVERIFY2(count(BlockKind::Inputs) > 0 && count(BlockKind::Report) > 0, name);
      QVERIFY2(count(BlockKind::Picture) >= 2, name);
    }
  }

  void noPictureIsLeftOver() {
    QStringList used;
    for (const QString& name : pages())
      for (const GuideBlock& block : pageOf(name).blocks)
        if (block.kind == BlockKind::Picture) used << block.name + ".png";
    used.sort();
    QCOMPARE(QDir(kGuide.filePath("images")).entryList(QDir::Files, QDir::Name), used);
  }

  void everyKeyIsAnActionS() {
    QSet<QKeySequence> keys;
    for (const auto& [button, window] :
         {std::pair{"StartStockMgmt", "PQManagement"}, std::pair{"StartCalc", "PQInvest"}}) {
      ProgramFixture program;
      program.click(button);
      for (auto* action : program.window(window)->findChildren<QAction*>())
        for (const QKeySequence& key : action->shortcuts()) keys << key;
      for (auto* shortcut : program.window(window)->findChildren<QShortcut*>())
        keys << shortcut->key();
    }
    static const QRegularExpression kKey("`((?:Ctrl|Alt|F\\d)[^`]*)`");
    int found = 0;
    for (const QString& name : pages())
      for (auto key = kKey.globalMatch(textOf(kGuide.filePath(name))); key.hasNext(); ++found) {
        QString said = key.next().captured(1);
        said.replace("+plus", "++").replace("+minus", "+-");
        QVERIFY2(said == "Ctrl" || keys.contains(QKeySequence(said)),
                 qPrintable(name + ": " + said));
      }
    QVERIFY(found >= 5);
  }

  // --- the data file's grammar ------------------------------------------------------

  void theGrammarIsTheProgramS_data() {
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* rule, const QByteArray& bytes) {
      QTest::newRow(rule) << bytes;
    };
    QFile sample(MIRELUND_DATA "/DtaSampl.PQD");
    QVERIFY(sample.open(QIODevice::ReadOnly));
    row("the sample", sample.readAll());
    const QByteArray head = "1,1,\"All Records\",\"31\"\r\n\"Alder\",\"1\"\r\n";
    const QByteArray record = "1,10.5,100,50,0,1100,\"B\",#2001-05-15#\r\n";
    row("one record", head + record);
    row("empty", "0,0,\"All Records\",\"31\"\r\n");
    row("line feeds alone", QByteArray(head + record).replace("\r\n", "\n"));
    row("no last line end", (head + record).chopped(2));
    row("no line end before the last", QByteArray(head + record).replace("\"1\"\r\n", "\"1\""));
    row("nothing at all", "");
    row("a blank behind the comma", QByteArray(head + record).replace("10.5,", "10.5, "));
    row("no quotes", QByteArray(head + record).replace("\"Alder\"", "Alder"));
    row("a quote in a name", QByteArray(head + record).replace("Alder", "Al\"der"));
    row("no date", QByteArray(head + record).replace("#2001-05-15#", "2001-05-15"));
    row("a date of one digit", QByteArray(head + record).replace("-05-", "-5-"));
    row("another type", QByteArray(head + record).replace("\"B\"", "\"X\""));
    row("a small letter", QByteArray(head + record).replace("\"B\"", "\"b\""));
    row("more behind", head + record + "1\r\n");
    row("a field more", QByteArray(head + record).replace("#\r\n", "#,1\r\n"));
    row("a field fewer", QByteArray(head + record).replace("100,50,", "100,"));
    for (const char* amount : {"0",
                               ".5",
                               "0.5",
                               "-.25",
                               "-0.25",
                               "10.5000",
                               "922337203685477",
                               "00",
                               "01",
                               "+1",
                               "1e3",
                               "1.",
                               ".",
                               "-",
                               "-0",
                               "-.0",
                               "-0.00",
                               "-00.5",
                               "1,000",
                               "10.50001",
                               "1.2.3",
                               "$1",
                               " 1",
                               "1234567890123456",
                               "-0.0001",
                               "-10.0"})
      row(amount, QByteArray(head + record).replace(",10.5,", QByteArray(",") + amount + ","));
    for (const char* type : {"B", "S", "C", "D", "F", "U"})
      row(type, QByteArray(head + record).replace("\"B\"", QByteArray("\"") + type + "\""));
    for (const char* number : {"0", "1", "9", "10", "30", "01", "-1", "1.0", "A", ""})
      row(qPrintable(QString("fund ") + number),
          QByteArray(head + record).replace("\"1\"", QByteArray("\"") + number + "\""));
    for (const char* number : {"1", "31", "999999999", "0", "07", "1234567890"})
      row(qPrintable(QString("all ") + number),
          QByteArray(head + record).replace("\"31\"", QByteArray("\"") + number + "\""));
  }

  void theGrammarIsTheProgramS() {
    QFETCH(QByteArray, bytes);
    QStringList rules;
    for (const GuideBlock& block : pageOf("data-file.md").blocks)
      if (block.kind == BlockKind::Grammar) rules += block.lines;
    const QRegularExpression grammar = recognizer(rules);
    QVERIFY2(grammar.isValid(), qPrintable(grammar.errorString()));
    QCOMPARE(grammar.match(QString::fromUtf8(bytes)).hasMatch(),
             parseDatabase(bytes.toStdString()).has_value());
  }

  // --- the test itself --------------------------------------------------------------

  void formulas_data() {
    QTest::addColumn<QString>("formula");
    QTest::addColumn<double>("value");
    const auto row = [](const char* formula, double value) {
      QTest::newRow(formula) << QString(formula) << value;
    };
    row("1 + 2 \\cdot 3", 7);
    row("(1 + 2) \\times 3", 9);
    row("2^3 2", 16);
    row("2^{1/2}", std::sqrt(2));
    row("2^13", 6);  // a single sign, then a product
    row("-2^2", -4);
    row("7 - 2 - 1", 4);
    row("8 / 2 / 2", 2);
    row("\\frac{1 + 2}{4}", 0.75);
    row("\\left(1 + a\\right)^{n} - 1", 3);
    row("a n", 2);
    row("a (a + n)", 3);
    row("2 v_{t-1}", 10);
    row("v_1", 4);
    row("a'", 8);
    row("\\ln(v_1 / n)", std::log(2));
    row("\\frac{\\ln v_1 - \\ln n}{2}", std::log(2) / 2);
    row("\\lfloor 100 \\cdot 1.239 \\rfloor / 100", 1.23);
    row("\\text{cash in hand} + a", 10);
    row("\\pi_0 \\, n", 6);
  }

  void formulas() {
    QFETCH(QString, formula);
    QFETCH(double, value);
    const Quantities known = {{"a", 1},
                              {"n", 2},
                              {"v_{t-1}", 5},
                              {"v_1", 4},
                              {"a'", 8},
                              {"\\pi_0", 3},
                              {"\\text{cash in hand}", 9}};
    QVERIFY(std::abs(valueOf(formula, known) - value) < 1e-12);
  }

  void badFormulas() {
    for (const char* formula : {"", "1 +", "(1", "1)", "x", "\\frac{1}", "1 ? 2", "1 / 0",
                                "\\ln(0 - 1)", "\\sqrt{2}", "\\text{open"}) {
      bool refused = false;
      try {
        valueOf(formula, {});
      } catch (const BadFormula&) {
        refused = true;
      }
      QVERIFY2(refused, formula);
    }
  }

  void numbers() {
    QCOMPARE(numbersIn("$1,234.50 in 12 years, at .5 %, in 2020."),
             (QStringList{"1,234.50", "12", ".5", "2020"}));
    QCOMPARE(numbersIn("F10, v_1, 2nd, a.b, x2"), QStringList());
    QCOMPARE(numbersIn("#2001-05-15# 1,.0001,-50"),
             (QStringList{"2001", "05", "15", "1", ".0001", "50"}));
  }

  void findsWhatNothingStandsFor() {
    QCOMPARE(faultsOf("A gain of 7 %.\n").size(), 1);
    QCOMPARE(faultsOf("A gain of 7 %.\n\n```report\nGain 7\n```\n"), QStringList());
    QCOMPARE(faultsOf("1. A step.\n\n![A](images/a7.png) [b](b.md#7)\n"), QStringList());
    QCOMPARE(faultsOf("Up to 40.\n<!-- check\nprogram most years = 40\n-->\n"), QStringList());
    QCOMPARE(faultsOf("Up to 41.\n<!-- check\nprogram most years = 41\n-->\n").size(), 2);
    QCOMPARE(faultsOf("<!-- check\nprogram most wishes = 3\n-->\n").size(), 1);
    QCOMPARE(faultsOf("$$ a = 3 $$\n").size(), 1);
    QCOMPARE(faultsOf("$$ a = 3 $$\n<!-- check\nsolve a\nhand 2 a = 6\n-->\nIt is 6.\n"),
             QStringList());
    QCOMPARE(faultsOf("$$ a = 3 $$\n<!-- check\nsolve a\nhand 2 a = 7\n-->\n").size(), 1);
    QCOMPARE(faultsOf("$$ a = 3 $$\n<!-- check\nsolve a\nreport 2 a = 6\n-->\n").size(), 1);
    QCOMPARE(faultsOf("<!-- check\nlet a = 5\n-->\n").size(), 1);
    QCOMPARE(faultsOf("```inputs\na: 5\n```\n<!-- check\nlet a = 5 / 100\n-->\n"), QStringList());
    QCOMPARE(faultsOf("It is 6.\n<!-- check\nhand 6 = 6\n-->\n").size(), 1);
    QCOMPARE(faultsOf("It is 6.\n<!-- inputs\na: 6\n-->\n"), QStringList());
    QCOMPARE(faultsOf("It is `Ctrl+6`, and 100 %.\n"), QStringList());
    QCOMPARE(faultsOf("<!-- check\nhand x = 1\nguess 3\n-->\n").size(), 2);
    for (const char* bad : {"```\nx\n```\n", "```report\n", "<!-- check\n", "$$ a + b $$\n"}) {
      bool refused = false;
      try {
        faultsOf(bad);
      } catch (const BadPage&) {
        refused = true;
      }
      QVERIFY2(refused, bad);
    }
  }

  void findsWhatIsNotShown() {
    const QString shown = "a\nb  \nc\nd\n";
    QCOMPARE(difference({"a", "b", "c", "d"}, shown), "");
    QCOMPARE(difference({"a", "...", "d"}, shown), "");
    QCOMPARE(difference({"...", "c", "..."}, shown), "");
    QCOMPARE(difference({"...", "a", "c"}, "a\nb\na\nc"), "");
    QCOMPARE(difference({"a", "...", "a", "c", "..."}, "a\na\na\nc\nd"), "");
    QVERIFY(!difference({"a", "b", "c"}, shown).isEmpty());
    QVERIFY(!difference({"a", "c", "..."}, shown).isEmpty());
    QVERIFY(!difference({"...", "e"}, shown).isEmpty());
    QVERIFY(!difference({"a", "b", "c", "d", "e"}, shown).isEmpty());
  }

  void doesNothingThatAPersonCannot() {
    GuidePlayer player(MIRELUND_DATA "/DtaSampl.PQD");
    for (const QStringList& lines :
         {QStringList{"Click Calculate"}, QStringList{"Open Lottery, Win"},
          QStringList{"Open Calculations, Lottery"}, QStringList{"Win"},
          QStringList{"Open Calculations, Compound gain", "Click Win"},
          QStringList{"Open Calculations, Compound gain", "Price: 3"},
          QStringList{"Open Calculations, Compound gain", "Message Well done."},
          QStringList{"Open Calculations, Compound gain", "Click Calculate", "Answer Yes"},
          QStringList{"Open Calculations, Compound gain", "Click Print", "Click Calculate"}}) {
      bool refused = false;
      try {
        player.play(lines);
      } catch (const NotDone&) {
        refused = true;
      }
      QVERIFY2(refused, qPrintable(lines.join(", ")));
      player.forget();
    }
  }

  void tellsContentsApart() {
    const QString one = "a\tText\t1\t2\t3\t4\nb\tMore\t5\t6\t7\t8";
    QCOMPARE(contentDifference(one, one), "");
    QCOMPARE(contentDifference(one, QString(one).replace("\t5\t6", "\t7\t4")), "");
    QVERIFY(!contentDifference(one, QString(one).replace("\t5\t6", "\t15\t6")).isEmpty());
    QVERIFY(!contentDifference(one, QString(one).replace("More", "Less")).isEmpty());
    QVERIFY(!contentDifference(one, one.section('\n', 0, 0)).isEmpty());
    QVERIFY(!contentDifference(one, "").isEmpty());
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::GuideTest)
#include "guide_test.moc"

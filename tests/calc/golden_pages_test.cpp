// SPDX-License-Identifier: GPL-3.0-or-later
// Plays every script in golden/ on the pages and compares the report character
// for character.
#include <QDir>

#include "calc/page_player.h"

namespace mirelund::testing {

class GoldenPagesTest : public QObject {
  Q_OBJECT

  std::unique_ptr<PagePlayer> player_;
  const QDir golden_{MIRELUND_GOLDEN};

  QStringList names() const {
    QStringList names = golden_.entryList({"*.txt"}, QDir::Files, QDir::Name);
    for (QString& name : names) name.chop(4);
    return names;
  }

 private slots:
  void initTestCase() { player_ = std::make_unique<PagePlayer>(); }
  void cleanupTestCase() { player_.reset(); }

  void reports_data() {
    QTest::addColumn<QString>("path");
    for (const QString& name : names())
      QTest::newRow(qPrintable(name)) << golden_.filePath(name + ".txt");
  }

  void reports() {
    QFETCH(QString, path);
    QString played;
    QString expected;
    try {
      const ScriptFile file(path);
      expected = file.results;
      played = playScript(*player_, file.script);
    } catch (const NotPlayed& failure) {
      QFAIL(failure.what());
    }
    // Line by line: a failure then shows the line.
    QCOMPARE(played.split('\n'), expected.split('\n'));
  }

  void areTwentyOfEachCalculator() {
    for (const char* calculator : {"compound_gain", "capital_required", "investment_growth",
                                   "pension_growth", "mortgage", "retirement_income"}) {
      const auto count = names().filter(QRegularExpression(QString("^%1_").arg(calculator))).size();
      QVERIFY2(count >= 20, calculator);
    }
  }

  void refusesWhatItDoesNotUnderstand_data() {
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("reason");
    const auto bad = [](const char* rule, const char* script, const char* reason) {
      QTest::newRow(rule) << script << reason;
    };
    bad("no page", "CRInTimeInYrs = 5\n", "no page yet: CRInTimeInYrs = 5");
    bad("an unknown page", "page Lottery\n", "no such page: Lottery");
    bad("an unknown button", "page CapitalRequired\npress CRGuess\n", "no such control: CRGuess");
    bad("a button of another page", "page CapitalRequired\npress MTCalculate\n",
        "not on this page: MTCalculate");
    bad("an unknown box", "page CapitalRequired\nCRInWhatever = 5\n",
        "no such control: CRInWhatever");
    bad("a box of another page", "page CapitalRequired\nMTInTerm = 5\n",
        "not on this page: MTInTerm");
    bad("a box that shows the result", "page Mortgage\nMTInMthPayment = 5\n",
        "takes no input: MTInMthPayment");
    bad("no key for a box", "page CapitalRequired\nCRInTimeInYrs = \n",
        "no key to type into: CRInTimeInYrs");
    bad("an unknown option", "page CapitalRequired\nclick CRWhatever_1\n",
        "no such control: CRWhatever_1");
    bad("an option of another page", "page CapitalRequired\nclick RIWDrawalChoice_1\n",
        "not on this page: RIWDrawalChoice_1");
    bad("an option that is not shown", "page Mortgage\nclick MTIRFactor_6\n",
        "not on this page: MTIRFactor_6");
    bad("a box clicked for an option", "page CapitalRequired\nclick CRInTimeInYrs\n",
        "no such control: CRInTimeInYrs");
    bad("not in the list", "page InvestmentGrowth\nIGInMonthsYrs = Daily\n",
        "not in the list: Daily");
    bad("a list of another page", "page Mortgage\nIGInMonthsYrs = Monthly\n",
        "not on this page: IGInMonthsYrs");
    bad("a message that was not told", "page CapitalRequired\npress CRCalculate\nmessage 3\n",
        "not told: message 3");
    bad("another message than was told", "page CapitalRequired\nCRInTimeInYrs = 41\nmessage 3\n",
        "not told: message 3");
    bad("a message told at the end", "page CapitalRequired\nCRInTimeInYrs = 41\n",
        "told, and not in the script: message 5");
    bad("a message told before the next line",
        "page CapitalRequired\nCRInTimeInYrs = 41\npress CRCalculate\nmessage 5\n",
        "told, and not in the script: message 5");
    bad("a text of the platform that was not told",
        "page Mortgage\nMTInRate = 0\nplatform Payment is too large.\n",
        "not told: platform Payment is too large.");
    bad("no sense", "page CapitalRequired\nhello\n", "not understood: hello");
    bad("nothing at all", "", "no page in: the script");
  }

  void refusesWhatItDoesNotUnderstand() {
    QFETCH(QString, script);
    QFETCH(QString, reason);
    QString refused;
    try {
      playScript(*player_, script);
    } catch (const NotPlayed& failure) {
      refused = failure.what();
    }
    QCOMPARE(refused, reason);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::GoldenPagesTest)
#include "golden_pages_test.moc"

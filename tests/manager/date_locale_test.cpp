// SPDX-License-Identifier: GPL-3.0-or-later
// Dates are typed, stored and shown in the form that the desktop's variables say.
#include "manager_testing.h"

namespace mirelund::testing {

namespace {

// The form of each locale is the short form of its country, from the common locale
// data: the order of day, month and year, and what stands between them.
struct Country {
  const char* name;
  const char* order;
  char separator;
};
constexpr Country kMonthFirst{"en_US.UTF-8", "MDY", '/'};
constexpr Country kCountries[] = {
    kMonthFirst,
    {"en_GB.UTF-8", "DMY", '/'},
    {"en_AU.UTF-8", "DMY", '/'},
    {"en_CA.UTF-8", "YMD", '-'},
    {"en_ZA.UTF-8", "YMD", '/'},
    {"en_IE.UTF-8", "DMY", '/'},
    {"en_IN.UTF-8", "DMY", '/'},
    {"de_DE.UTF-8", "DMY", '.'},
    {"de_AT", "DMY", '.'},
    {"de_CH.ISO8859-1", "DMY", '.'},
    {"fr_FR.UTF-8@euro", "DMY", '/'},
    {"fr_CA.UTF-8", "YMD", '-'},
    {"it_IT.UTF-8", "DMY", '/'},
    {"es_ES.UTF-8", "DMY", '/'},
    {"pt_BR.UTF-8", "DMY", '/'},
    {"nl_NL.UTF-8", "DMY", '-'},
    {"da_DK.UTF-8", "DMY", '.'},
    {"nb_NO.UTF-8", "DMY", '.'},
    {"sv_SE.UTF-8", "YMD", '-'},
    {"fi_FI.UTF-8", "DMY", '.'},
    {"pl_PL.UTF-8", "DMY", '.'},
    {"ru_RU.UTF-8", "DMY", '.'},
    {"lt_LT.UTF-8", "YMD", '-'},
    {"hu_HU.UTF-8", "YMD", '.'},
    {"ja_JP.UTF-8", "YMD", '/'},
    {"zh_CN.UTF-8", "YMD", '/'},
    {"C", "MDY", '/'},
    {"POSIX", "MDY", '/'},
    {"C.UTF-8", "MDY", '/'},
    {"xx_YY.UTF-8", "MDY", '/'},
};

void set(const char* variable, const QString& value) {
  if (value.isEmpty())
    qunsetenv(variable);
  else
    qputenv(variable, value.toUtf8());
}

// The 3rd of April 2005 in an order.
QString inOrder(const Country& country) {
  QStringList parts;
  for (const char* part = country.order; *part != 0; ++part)
    parts << (*part == 'D' ? "3" : *part == 'M' ? "4" : "2005");
  return parts.join(country.separator);
}

QList<int> numbersOf(const QString& date) {
  QList<int> numbers;
  for (const QString& part :
       QString(date).replace(QRegularExpression("[^0-9]"), " ").split(' ', Qt::SkipEmptyParts))
    numbers << part.toInt();
  return numbers;
}

}  // namespace

class DateLocaleTest : public QObject {
  Q_OBJECT

  static void row(const QString& all, const QString& time, const QString& lang,
                  const Country& country) {
    QTest::newRow(qPrintable(QString("LC_ALL=%1 LC_TIME=%2 LANG=%3").arg(all, time, lang)))
        << all << time << lang << inOrder(country) << QString(QChar(country.separator));
  }

 private slots:
  void cleanupTestCase() { qputenv("LC_ALL", "en_US.UTF-8"); }

  void typedStoredAndShown_data() {
    QTest::addColumn<QString>("all");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("lang");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("separator");
    for (const Country& country : kCountries) {
      row({}, country.name, "en_US.UTF-8", country);
      row({}, country.name, "de_DE.UTF-8", country);
      row({}, {}, country.name, country);
    }
    row("sv_SE.UTF-8", "en_US.UTF-8", "de_DE.UTF-8", kCountries[18]);
    row("C", "en_GB.UTF-8", "de_DE.UTF-8", kMonthFirst);
    row({}, {}, {}, kMonthFirst);
  }

  void typedStoredAndShown() {
    QFETCH(QString, all);
    QFETCH(QString, time);
    QFETCH(QString, lang);
    QFETCH(QString, typed);
    QFETCH(QString, separator);
    set("LC_ALL", all);
    set("LC_TIME", time);
    set("LANG", lang);
    ManagerFixture program;
    program.addFund("Alder");
    program.record(kFeeCash, qPrintable(typed), {"3"});
    QCOMPARE(program.takeTold(), QList<int>{});
    program.prompts.paths = {program.path("date.PQD")};
    program.page(kSavePage);
    QVERIFY2(program.bytes("date.PQD").contains("#2005-04-03#"),
             program.bytes("date.PQD").constData());
    program.page(kDisplayPage);
    program.click("DDisplall");
    const QStringList lines = program.text("DDResults").split('\n');
    const auto fee = std::find_if(lines.begin(), lines.end(),
                                  [](const QString& line) { return line.contains("Fee Cash"); });
    QVERIFY(fee != lines.end());
    const QStringList words = fee->simplified().split(' ');
    const auto shown = std::find_if(words.begin(), words.end(),
                                    [](const QString& word) { return word.contains("2005"); });
    QVERIFY2(shown != words.end(), qPrintable(*fee));
    QCOMPARE(numbersOf(*shown), numbersOf(typed));
    QVERIFY2(shown->contains(separator), qPrintable(*shown));
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::DateLocaleTest)
#include "date_locale_test.moc"

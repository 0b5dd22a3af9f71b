// SPDX-License-Identifier: GPL-3.0-or-later
// The names beside the price boxes.
#include "manager/fund_names.h"

#include <QSet>

#include "manager/manager_testing.h"

namespace mirelund::testing {

class FundNamesTest : public QObject {
  Q_OBJECT

  static QByteArray database(const QStringList& names) {
    QByteArray bytes = "0," + QByteArray::number(names.size()) + ",\"All Records\",\"31\"\r\n";
    for (qsizetype i = 0; i < names.size(); ++i)
      bytes += "\"" + names[i].toUtf8() + "\",\"" + QByteArray::number(i + 1) + "\"\r\n";
    return bytes;
  }
  static QList<QLabel*> labels(QWidget* window) {
    QList<QLabel*> found;
    for (auto* label : window->findChildren<QLabel*>())
      if (label->buddy() != nullptr && label->buddy()->objectName().startsWith("CVInPrice"))
        found << label;
    return found;
  }
  static QStringList texts(QWidget* window) {
    QStringList found;
    for (const QLabel* label : labels(window)) found << label->text();
    return found;
  }

 private slots:
  void fewNamesAreShownWhole() {
    ManagerFixture program;
    const QStringList names{"Birch & Co", "The Brindlemoor International Growth Fund, class A"};
    program.openFile(database(names));
    program.page(kCurrentValuePage);
    QTRY_COMPARE(texts(program.manager()), (QStringList{"Birch && Co", names[1]}));
  }

  void manyLongNamesStayApart() {
    ManagerFixture program;
    QStringList names;
    for (int i = 1; i <= 18; ++i)
      names << "Northern International Growth Fund, class " + QString::number(i) + " of many";
    names.sort();
    program.openFile(database(names));
    program.page(kCurrentValuePage);
    program.manager()->resize(700, 500);
    QTest::qWait(50);
    const auto shortened = [&] {
      const QStringList shown = texts(program.manager());
      if (QSet<QString>(shown.begin(), shown.end()).size() != 18) return false;
      for (const QLabel* label : labels(program.manager())) {
        if (label->fontMetrics().horizontalAdvance(label->text()) > label->width() + 1)
          return false;
        const QStringList parts = label->text().split(QChar(0x2026));
        const QString whole = label->buddy()->accessibleName();
        if (parts.size() != 2 || !whole.contains(parts[0]) || !whole.endsWith(parts[1]))
          return false;
      }
      return true;
    };
    QTRY_VERIFY2(shortened(), qPrintable(texts(program.manager()).join("; ")));
    // A wide window shows them whole, and is made narrow again.
    const int narrow = program.manager()->width();
    program.manager()->resize(2'400, 700);
    QTRY_COMPARE(texts(program.manager()), names);
    program.manager()->resize(narrow, 500);
    QTRY_VERIFY(shortened());
    QCOMPARE(program.manager()->width(), narrow);
  }

  void aNameOfManyThousandCharactersAsksForAWindowsWidth() {
    QWidget window;
    auto* box = new QWidget(&window);
    FundNames names(&window);
    QLabel* label = names.addName(QString(50'000, 'x'), box);
    QVERIFY(label->sizeHint().width() < 70 * QFontMetricsF(label->font()).horizontalAdvance("x"));
    QVERIFY(label->minimumSizeHint().width() < label->sizeHint().width());
    QCOMPARE(label->buddy(), box);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::FundNamesTest)
#include "fund_names_test.moc"

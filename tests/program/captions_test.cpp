// SPDX-License-Identifier: GPL-3.0-or-later
// The captions that a window manager is told, of the program as it is started.
#include "ui_testing.h"

namespace mirelund::testing {

class CaptionsTest : public QObject {
  Q_OBJECT

  static QStringList captions() {
    QProcess tree;
    tree.start("xwininfo", {"-root", "-tree"});
    tree.waitForFinished(5'000);
    const QString text = QString::fromUtf8(tree.readAllStandardOutput());
    QStringList found;
    const QRegularExpression caption("\"([^\"]*)\": \\(");
    for (auto match = caption.globalMatch(text); match.hasNext();)
      found << match.next().captured(1);
    return found;
  }

 private slots:
  void nothingStandsBehindThem_data() {
    QTest::addColumn<QString>("play");
    QTest::addColumn<QString>("caption");
    QTest::newRow("start") << "Nothing Mouse"
                           << "Mirelund";
    QTest::newRow("calculators") << "StartCalc Mouse"
                                 << "Calculations";
    QTest::newRow("chart") << "StartCalc Mouse, SSTab1 1, MTCalculate Mouse, AllGraphs Mouse"
                           << "Mortgage comparisons";
  }

  void nothingStandsBehindThem() {
    QFETCH(QString, play);
    QFETCH(QString, caption);
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("MIRELUND_PLAY", play);
    environment.insert("LC_ALL", "C.UTF-8");
    program.setProcessEnvironment(environment);
    program.start(MIRELUND_PLAYER, QStringList());
    constexpr int kPatienceMs = 15'000;
    QVERIFY2(QTest::qWaitFor([&] { return captions().contains(caption); }, kPatienceMs),
             qPrintable(captions().join("; ")));
    for (const QString& each : captions())
      QVERIFY2(!each.contains(QChar(0x2014)), qPrintable(each));
    program.kill();
    program.waitForFinished();
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::CaptionsTest)
#include "captions_test.moc"

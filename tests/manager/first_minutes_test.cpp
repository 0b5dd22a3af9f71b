// SPDX-License-Identifier: GPL-3.0-or-later
// What the manager says to whoever has nothing in it yet, and the ways to have
// something: the sample, and a file that is dropped.
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QRegularExpression>

#include "manager_testing.h"

namespace mirelund::testing {

class FirstMinutesTest : public QObject {
  Q_OBJECT

  static QString toBegin() {
    return ManagerFixture::find<QPlainTextEdit>("EResults")->placeholderText();
  }

  static QMimeData* dragged(const QString& path) {
    auto* data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(path)});
    return data;
  }
  // The page is chosen by the keys, which start nothing.
  static void openSample(ManagerFixture& program) {
    program.find<QTabWidget>("SSTab2")->setCurrentIndex(kOpenPage);
    program.click("OFSample");
  }
  // As a desktop's file manager drops it, on whatever is at that place of the window.
  static bool drop(QWidget* on, const QMimeData* data) {
    const QPoint place = on->rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(on, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(QPointF(place), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(on, &event);
    QCoreApplication::processEvents();
    return event.isAccepted();
  }

 private slots:
  void anEmptyDatabaseSaysHowToBegin() {
    ManagerFixture program;
    QVERIFY(toBegin().startsWith(
        "To begin, add a fund name, choose a transaction type and type the row."));
    QVERIFY(toBegin().contains("sample"));
    program.addFund("Alder");
    QCOMPARE(toBegin(), "");
    program.prompts.answers = {true};
    program.click("EDelRec");
    QCOMPARE(program.label("ENumFunds"), "Funds: 0");
    QVERIFY(!toBegin().isEmpty());
    program.openFile(kTwoFunds);
    QCOMPARE(toBegin(), "");
  }

  void theDateBoxShowsItsForm() {
    ManagerFixture program;
    QCOMPARE(program.box("EInDate")->placeholderText(), "mm/dd/yyyy");
    program.addFund("Alder");
    program.choose("ETransType", kBought);
    const QLineEdit* box = program.box("EInDate");
    QVERIFY(box->width() > box->fontMetrics().horizontalAdvance(box->placeholderText()));
  }

  void everyTypeIsExplainedInASentence() {
    const ManagerFixture program;
    const QComboBox* types = ManagerFixture::list("ETransType");
    QSet<QString> sentences;
    for (int i = 0; i < types->count(); ++i) {
      const QString sentence = types->itemData(i, Qt::ToolTipRole).toString();
      static const QRegularExpression kSentence("^[A-Z][^.]*(0\\.0001)?\\.$");
      QVERIFY2(kSentence.match(sentence).hasMatch(), qPrintable(sentence));
      sentences.insert(sentence);
    }
    QCOMPARE(sentences.size(), 6);
  }

  void theSampleOpensWithoutAPath() {
    ManagerFixture program;
    openSample(program);
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("EDatabase"), "Database: DtaSampl.PQD");
    QVERIFY(program.label("ENumRec") != "Records: 0");
    QCOMPARE(program.find<QTabWidget>("SSTab2")->currentIndex(), static_cast<int>(kEntryPage));
    program.page(kSavePage);
    QCOMPARE(program.prompts.initialPaths.back(), "");
  }

  void theSampleAsksAboutWhatIsUnsaved() {
    ManagerFixture program;
    program.addFund("Alder");
    program.record(kFeeCash, "1/1/2021", {"3"});
    program.prompts.answers = {true};  // back to it
    openSample(program);
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QCOMPARE(program.label("ENumRec"), "Records: 1");
    program.prompts.answers = {false};
    program.click("OFSample");
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QCOMPARE(program.label("EDatabase"), "Database: DtaSampl.PQD");
  }

  void aDroppedFileOpens_data() {
    QTest::addColumn<QString>("on");
    for (const char* on : {"PQManagement", "EResults", "EFunds", "EInDate"})
      QTest::newRow(on) << on;
  }

  void aDroppedFileOpens() {
    QFETCH(QString, on);
    ManagerFixture program;
    program.addFund("Cedar");
    program.record(kFeeCash, "1/1/2021", {"3"});
    program.choose("ETransType", kFeeCash);
    QWidget* target = on == "PQManagement" ? program.manager() : program.find(on.toLatin1());
    if (auto* report = qobject_cast<QPlainTextEdit*>(target)) target = report->viewport();
    const QString path = program.file("test.pqd", kTwoFunds);
    program.prompts.answers = {true};  // back to what is unsaved
    const std::unique_ptr<QMimeData> data(dragged(path));
    QVERIFY(drop(target, data.get()));
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QCOMPARE(program.label("ENumRec"), "Records: 1");
    program.prompts.answers = {false};
    QVERIFY(drop(target, data.get()));
    QCOMPARE(program.takeAsked(), QList<int>{3});
    QCOMPARE(program.takeTold(), QList<int>{});
    QCOMPARE(program.label("EDatabase"), "Database: test.pqd");
    QCOMPARE(program.label("ENumRec"), "Records: 4");
  }

  void aDroppedFileThatIsNoDatabaseIsRefused() {
    ManagerFixture program;
    const std::unique_ptr<QMimeData> broken(dragged(program.file("broken.PQD", "1,2\r\n")));
    QVERIFY(drop(program.manager(), broken.get()));
    QCOMPARE(program.takeTold(), QList<int>{13});
    QCOMPARE(program.label("EDatabase"), "Database: ");
  }

  void nothingElseIsTaken() {
    ManagerFixture program;
    QMimeData two;
    two.setUrls({QUrl::fromLocalFile(program.file("a.PQD", kTwoFunds)),
                 QUrl::fromLocalFile(program.file("b.PQD", kTwoFunds))});
    QVERIFY(!drop(program.manager(), &two));
    QMimeData far;
    far.setUrls({QUrl("https://example.org/a.PQD")});
    QVERIFY(!drop(program.manager(), &far));
    const std::unique_ptr<QMimeData> other(dragged(program.file("a.txt", kTwoFunds)));
    QVERIFY(!drop(program.manager(), other.get()));
    QMimeData text;
    text.setText("3");
    QVERIFY(!drop(program.manager(), &text));
    // A text goes on entering a box.
    program.addFund("Alder");
    program.choose("ETransType", kFeeCash);
    QVERIFY(drop(program.box("EInComm"), &text));
    QCOMPARE(program.box("EInComm")->text(), "3");
  }

  // What stands over the window is answered first.
  void nothingOpensUnderADialog() {
    ManagerFixture program;
    const std::unique_ptr<QMimeData> data(dragged(program.file("test.PQD", kTwoFunds)));
    QDialog over(program.manager());
    over.setModal(true);
    over.show();
    QVERIFY(drop(program.manager(), data.get()));
    QCOMPARE(program.label("EDatabase"), "Database: ");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::FirstMinutesTest)
#include "first_minutes_test.moc"

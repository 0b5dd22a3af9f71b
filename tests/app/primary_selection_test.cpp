// SPDX-License-Identifier: GPL-3.0-or-later
// The X11 primary selection, which only a real X server has.
#include <QClipboard>

#include "app/filtered_edit.h"
#include "calc/box_tables.h"
#include "ui_testing.h"

namespace mirelund::testing {

class PrimarySelectionTest : public QObject {
  Q_OBJECT

 private slots:
  void aMiddleClickIsFiltered_data() {
    QTest::addColumn<int>("page");
    forEachBox([](int page, const BoxRule& rule) {
      if (rule.option == 0) QTest::newRow(std::string(rule.name).c_str()) << page;
    });
  }

  void aMiddleClickIsFiltered() {
    QFETCH(int, page);
    QVERIFY(QGuiApplication::clipboard()->supportsSelection());
    ProgramFixture program;
    program.openCalculations(page);
    auto* edit = program.find<BoxEdit>(QTest::currentDataTag());
    const bool isName = edit->rule().filter == KeyFilter::Any;
    const QString initial = edit->text();
    QTest::mouseClick(edit, Qt::LeftButton);
    QGuiApplication::clipboard()->setText("1,0x", QClipboard::Selection);
    QTest::mouseClick(edit, Qt::MiddleButton);
    QCOMPARE(edit->text(), isName ? "1,0x" : initial);
    if (isName) edit->clear();
    QGuiApplication::clipboard()->setText("15", QClipboard::Selection);
    QTest::mouseClick(edit, Qt::MiddleButton);
    QCOMPARE(edit->text(), edit->isReadOnly() ? initial : "15");
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::PrimarySelectionTest)
#include "primary_selection_test.moc"

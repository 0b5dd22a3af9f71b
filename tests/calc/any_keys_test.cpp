// SPDX-License-Identifier: GPL-3.0-or-later
// Any keys, in any box, in any order: every page answers with a report or with a
// message of its table.
#include <rapidcheck.h>

#include <QLabel>

#include "calc/page_player.h"

namespace mirelund::testing {

namespace {

struct PageMessages {
  const char* page;
  const char* prefix;
  QStringList messages;
};

const std::vector<PageMessages>& pages() {
  static const std::vector<PageMessages> kPages = {
      {"CompoundGain", "CG", {"message 3", "message 5", "message 8", "message 18"}},
      {"CapitalRequired", "CR", {"message 3", "message 5"}},
      {"InvestmentGrowth", "IG", {"message 3", "message 5", "message 8"}},
      {"PensionGrowth", "PG", {"message 3", "message 5"}},
      {"RetirementIncome", "RI", {"message 3", "message 5", "message 7"}},
      {"Mortgage",
       "MT",
       {"message 3", "message 5", "message 8",
        "platform Payment is too small, repayment would take over 40 years.",
        "platform Payment is too large. Greater than principal."}}};
  return kPages;
}

// RapidCheck's first cases are small: here a case is as large as the last.
template <typename Number>
Number within(Number first, Number end) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(first, end));
}

template <typename Widget>
QString anyOf(const QList<Widget*>& controls) {
  return controls[within<qsizetype>(0, controls.size())]->objectName();
}

}  // namespace

class AnyKeysTest : public QObject {
  Q_OBJECT

  std::unique_ptr<PagePlayer> player_;

  /// What is entered: the boxes' texts, the items and the options chosen.
  QStringList entered() const {
    QStringList entered;
    for (const auto* box : player_->shown<QLineEdit>()) entered << box->text();
    for (const auto* list : player_->shown<QComboBox>()) entered << list->currentText();
    for (const auto* option : player_->shown<QRadioButton>())
      if (option->isChecked()) entered << option->objectName();
    return entered;
  }

  bool showsNoNumber() const {
    QStringList texts = entered();
    texts << player_->results();
    for (const auto* label : player_->shown<QLabel>()) texts << label->text();
    // "inflation" may stand in a heading.
    static const QRegularExpression kNone("(?<![a-z])(nan|inf)(?![a-z])",
                                          QRegularExpression::CaseInsensitiveOption);
    return !texts.filter(kNone).isEmpty();
  }

  void enterAnything() {
    static const auto kKeys = rc::gen::weightedElement<char>({{6, '0'},
                                                              {2, '1'},
                                                              {2, '5'},
                                                              {2, '9'},
                                                              {1, '.'},
                                                              {1, '-'},
                                                              {1, 'x'},
                                                              {1, ','},
                                                              {1, '\b'}});
    const auto options = player_->shown<QRadioButton>();
    const auto lists = player_->shown<QComboBox>();
    const int way = within(0, 5);
    if (way == 0 && !options.isEmpty()) {
      const QString option = anyOf(options);
      RC_LOG() << "click " << option.toStdString() << std::endl;
      player_->click(option);
    } else if (way == 1 && !lists.isEmpty()) {
      const QString list = anyOf(lists);
      const int row = within(0, player_->find<QComboBox>(list)->count());
      const QString item = player_->find<QComboBox>(list)->itemText(row);
      RC_LOG() << list.toStdString() << " = " << item.toStdString() << std::endl;
      player_->choose(list, item);
    } else {
      const QString box = anyOf(player_->shown<QLineEdit>());
      const auto length = within<std::size_t>(3, 20);
      const auto keys = *rc::gen::container<std::string>(length, kKeys);
      RC_LOG() << box.toStdString() << " = " << keys << std::endl;
      player_->type(box, QString::fromStdString(keys));
    }
  }

  /// By a key, by the mouse, or not yet.
  void leaveAnyWay() {
    constexpr Qt::Key kLeaving[] = {Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return};
    const auto way = within<std::size_t>(0, std::size(kLeaving) + 2);
    RC_LOG() << "left in way " << way << std::endl;
    if (way < std::size(kLeaving))
      player_->strike(kLeaving[way]);
    else if (way == std::size(kLeaving))
      player_->leave();
  }

  void assertOfTheTable(const QStringList& told, const PageMessages& page) {
    for (const QString& message : told) {
      RC_LOG() << "told: " << message.toStdString() << std::endl;
      RC_ASSERT(page.messages.contains(message));
    }
    RC_ASSERT(!showsNoNumber());
  }

 private slots:
  void initTestCase() {
    // The same cases every time, unless others are asked for.
    if (!qEnvironmentVariableIsSet("RC_PARAMS")) qputenv("RC_PARAMS", "seed=20240229");
    player_ = std::make_unique<PagePlayer>();
  }
  void cleanupTestCase() { player_.reset(); }

  void endInAReportOrAMessage() {
    int cases = 0;
    int answered = 0;  // with something entered that the page did not start with
    int reports = 0;
    QVERIFY(rc::check([&] {
      ++cases;
      const auto page = *rc::gen::elementOf(pages());
      RC_LOG() << "page " << page.page << std::endl;
      player_->choosePage(page.page);
      player_->takeTold();
      const QStringList initial = entered();
      const int presses = within(1, 6);
      bool counts = false;
      bool reported = false;
      for (int press = 0; press < presses; ++press) {
        const int steps = within(3, 8);
        for (int step = 0; step < steps; ++step) {
          enterAnything();
          leaveAnyWay();
          assertOfTheTable(player_->takeTold(), page);
        }
        counts = counts || entered() != initial;
        // A report of before would be no answer.
        RC_LOG() << "press" << std::endl;
        player_->press("ClearResults");
        player_->takeTold();
        player_->press(QString(page.prefix) + "Calculate");
        const QStringList told = player_->takeTold();
        assertOfTheTable(told, page);
        RC_ASSERT(!told.isEmpty() || !player_->results().isEmpty());
        reported = reported || !player_->results().isEmpty();
      }
      answered += counts ? 1 : 0;
      reports += reported ? 1 : 0;
    }));
    qInfo("%d cases, %d answered, %d reports", cases, answered, reports);
    QVERIFY(10 * answered >= 9 * cases);
    QVERIFY(2 * reports >= cases);
  }
};

}  // namespace mirelund::testing

MIRELUND_TEST_MAIN(mirelund::testing::AnyKeysTest)
#include "any_keys_test.moc"

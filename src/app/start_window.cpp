// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start_window.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "app/warm_up.h"
#include "base/ui_text.h"
#include "base/version.h"

namespace mirelund {

PQStart::PQStart(Windows windows) : windows_(std::move(windows)) {
  setObjectName("PQStart");
  setWindowTitle("Mirelund");

  auto* layout = new QVBoxLayout(this);
  auto* title = new QLabel("Mirelund v" + toQString(kVersion), this);
  title->setAlignment(Qt::AlignCenter);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  title->setFont(large);
  layout->addWidget(title);

  auto* calculations = addButton("StartCalc", "Calculations", QKeySequence("Alt+C"));
  auto* manager = addButton("StartStockMgmt", "Investment manager", QKeySequence("Alt+I"));
  auto* exit = addButton("StartExit", "Exit program", QKeySequence("Alt+E"));
  connect(calculations, &QPushButton::clicked, this, &PQStart::StartCalc_Click);
  connect(manager, &QPushButton::clicked, this, &PQStart::StartStockMgmt_Click);
  connect(exit, &QPushButton::clicked, this, &PQStart::StartExit_Click);
  makeWhileHeld(calculations, windows_.calculations);
  makeWhileHeld(manager, windows_.manager);
  manager->setEnabled(static_cast<bool>(windows_.manager));
  calculations->setFocus();

  const int unit = fontMetrics().averageCharWidth();
  layout->setContentsMargins(6 * unit, 4 * unit, 6 * unit, 4 * unit);
  layout->setSpacing(2 * unit);
}

QPushButton* PQStart::addButton(const char* name, const QString& caption,
                                const QKeySequence& mnemonic) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setShortcut(mnemonic);
  button->setToolTip(mnemonic.toString(QKeySequence::NativeText));
  button->setAutoDefault(true);
  button->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
  layout()->addWidget(button);
  return button;
}

void PQStart::StartCalc_Click() {
  openInstead(windows_.calculations);
}

void PQStart::StartStockMgmt_Click() {
  openInstead(windows_.manager);
}

void PQStart::StartExit_Click() {
  QApplication::quit();
}

PQStart::~PQStart() {
  if (half_ == nullptr) return;
  half_->disconnect(this);
  // Hidden while it is whole: what loses the focus may be heard by its pages.
  half_->hide();
  delete half_.data();
}

bool PQStart::event(QEvent* event) {
  const bool done = QWidget::event(event);
  // When it has been seen, and not before.
  constexpr int kSeenMs = 50;
  if (event->type() == QEvent::Paint && !std::exchange(warm_, true))
    QTimer::singleShot(kSeenMs, this, warmUp);
  return done;
}

bool PQStart::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Close) return QWidget::eventFilter(watched, event);
  const bool dialogStands = QApplication::activeModalWidget() != nullptr;
  // What waited for a dialog goes on in the window, when the dialog's loop is over.
  constexpr int kOwnLoop = 1;
  const bool dialogGoes = QThread::currentThread()->loopLevel() > kOwnLoop;
  if (!dialogStands && !dialogGoes) return QWidget::eventFilter(watched, event);
  event->ignore();
  constexpr int kSoonMs = 10;
  if (!dialogStands) QTimer::singleShot(kSoonMs, half_.data(), &QWidget::close);
  return true;
}

void PQStart::makeWhileHeld(QPushButton* button, const Make& make) {
  connect(button, &QPushButton::pressed, this, [this, button, &make] {
    // When the button has been seen to go down.
    QTimer::singleShot(0, this, [this, button, &make] {
      if (!button->isDown() || half_ != nullptr) return;
      ready_ = {&make, std::unique_ptr<QWidget>(make())};
      ready_.window->grab();  // its texts and lists are measured
    });
  });
  // Let go beside the button, there is no click.
  connect(button, &QPushButton::released, this,
          [this] { QTimer::singleShot(0, this, [this] { ready_ = {}; }); });
}

void PQStart::openInstead(const Make& make) {
  // Two mnemonics in one go are two clicks, the second on a window that is gone.
  if (half_ != nullptr) return;
  QWidget* const window = ready_.make == &make ? ready_.window.release() : make();
  half_ = window;
  window->installEventFilter(this);
  window->setAttribute(Qt::WA_DeleteOnClose);
  connect(window, &QObject::destroyed, this, &QWidget::show);
  window->show();
  window->activateWindow();
  hide();
}

}  // namespace mirelund

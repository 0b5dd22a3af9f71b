// SPDX-License-Identifier: GPL-3.0-or-later
// A place in a tab widget whose page is made when it is first asked for: making all
// pages is most of what opening a window of many would take.
#pragma once

#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <utility>

#include "app/page_scroll.h"

namespace mirelund {

template <typename Page>
class PageHolder : public QWidget {
 public:
  /// The page that `make` returns is given to the holder.
  explicit PageHolder(std::function<Page*()> make) : make_(std::move(make)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
  }

  /// The page, made by now. Its controls come behind `before` in the order of Tab, as
  /// they would had they been made with the window.
  Page* page(QWidget* before) {
    if (page_ == nullptr) {
      page_ = make_();
      auto* scroll = new PageScroll(page_, this);
      layout()->addWidget(scroll);
      page_->show();
      scroll->show();
      for (QWidget* control = page_->nextInFocusChain(); page_->isAncestorOf(control);) {
        QWidget* const next = control->nextInFocusChain();
        if (control->focusPolicy() != Qt::NoFocus) {
          QWidget::setTabOrder(before, control);
          before = control;
        }
        control = next;
      }
    }
    return page_;
  }

 private:
  std::function<Page*()> make_;
  Page* page_ = nullptr;
};

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/option_group.h"

#include <QAbstractButton>
#include <QButtonGroup>

namespace mirelund {

void tabToChosen(QButtonGroup* options) {
  QObject::connect(options, &QButtonGroup::buttonToggled, options,
                   [options](QAbstractButton* chosen, bool on) {
                     if (!on || chosen->isHidden()) return;
                     for (QAbstractButton* button : options->buttons())
                       button->setFocusPolicy(button == chosen ? Qt::StrongFocus : Qt::ClickFocus);
                   });
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QButtonGroup;

namespace mirelund {

/// Tab comes to the option button that is chosen, also where nobody has chosen it; to
/// one that is hidden it does not.
void tabToChosen(QButtonGroup* options);

}  // namespace mirelund

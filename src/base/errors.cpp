// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/errors.h"

namespace mirelund {

void refuse(const char* what) {
  throw ArithmeticError(what);
}

}  // namespace mirelund

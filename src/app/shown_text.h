// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace mirelund {

/// A control and the text it is to show, as option routines return them.
struct ShownText {
  std::string_view control;
  std::string text;
};

}  // namespace mirelund

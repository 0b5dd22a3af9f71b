// SPDX-License-Identifier: GPL-3.0-or-later
// The one trap: an operation that a window calls comes to its end, or has changed
// nothing.
#pragma once

#include <tuple>
#include <type_traits>
#include <utility>

namespace mirelund {

/// What `operation` returns, which is given copies of `parts` to work on. They take the
/// parts' place when it has come to its end. Whatever it throws: `failed`, and the parts
/// are as they were, so that nothing has to be restored. Anything else that it changes,
/// it changes after all that can fail.
template <typename Result, typename Operation, typename... Parts>
Result attempt(Result failed, Operation operation, Parts&... parts) noexcept {
  static_assert((std::is_nothrow_move_assignable_v<Parts> && ...));
  static_assert(std::is_nothrow_move_constructible_v<Result>);
  try {
    std::tuple<Parts...> copies(parts...);
    Result result = std::apply(operation, copies);
    std::apply([&parts...](Parts&... changed) noexcept { ((parts = std::move(changed)), ...); },
               copies);
    return result;
  } catch (...) {
    return failed;
  }
}

}  // namespace mirelund

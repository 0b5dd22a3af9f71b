// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs' part of the shared state: what is told or asked, and the answers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/messages.h"

namespace mirelund {

/// The window in use.
enum class Window : std::int16_t { None = 0, Calculators = 1, Manager = 2 };

/// PrintHeader when its dialog was cancelled; a typed line of just this is a
/// cancel too.
inline constexpr std::string_view kCancelledLine = "1";

struct DialogState {
  Message MessageNumber = Message::None;
  Question QuestionNumber = Question::None;  ///< AnsweredYes after a yes
  MessageDetails Details;                    ///< what messages and questions name
  std::string PrintHeader;                   ///< the line typed last, or kCancelledLine
  Window ActiveWindow = Window::None;
  /// The program is about to end: every dialog counts as cancelled, unseen.
  bool cancelsAll = false;
};

/// Points of the font that a report of the window is printed in.
constexpr int reportPoints(Window window) {
  return window == Window::Manager ? 10 : 11;
}

}  // namespace mirelund

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>

#include "dialogs/messages.h"

namespace mirelund {

/// What a handler of core asks its window to do: show a message, and put `results`
/// into the report box when `showResults` is set.
///
/// No handler that returns one throws: what fails below it, memory too, is message 3,
/// and all but what its header names is as it was.
struct Outcome {
  Message message = Message::None;
  bool showResults = false;
  std::string results;
  /// The report box alone keeps the report: ReportLines has been emptied.
  bool handedOver = false;

  static Outcome failed(Message why) { return {why, false, {}, false}; }
  static Outcome report(std::string text) { return {Message::None, true, std::move(text), false}; }
  /// A message, and a report box that is empty behind it.
  static Outcome emptied(Message why) { return {why, true, {}, false}; }
};

}  // namespace mirelund

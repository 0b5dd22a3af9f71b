// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGuiApplication>

namespace mirelund {

/// The hourglass pointer, for as long as it lives. No dialog may open meanwhile.
class BusyPointer {
 public:
  BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace mirelund

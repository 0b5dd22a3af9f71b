// SPDX-License-Identifier: GPL-3.0-or-later
// The system's requests to end, as events.
#pragma once

#include <QObject>

namespace mirelund {

/// Takes SIGTERM, SIGINT and SIGHUP for as long as the program runs; one that was
/// ignored when it started (nohup) stays ignored. SIGXFSZ and SIGPIPE are ignored:
/// what was written then fails, and says so.
class EndSignals : public QObject {
  Q_OBJECT

 public:
  explicit EndSignals(QObject* parent = nullptr);

 signals:
  /// From the event loop.
  void arrived();
};

}  // namespace mirelund

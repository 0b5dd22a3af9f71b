// SPDX-License-Identifier: GPL-3.0-or-later
#include "end_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>

namespace mirelund {

namespace {

// Read by the event loop, written by the handler, which may do little else.
int ends[2] = {-1, -1};

void note(int /*signal*/) {
  const int kept = errno;
  const char byte = 0;
  // A full pipe has enough to say.
  if (write(ends[1], &byte, 1) < 0) errno = kept;
}

void take(int signal) {
  struct sigaction old {};
  if (sigaction(signal, nullptr, &old) != 0 || old.sa_handler == SIG_IGN) return;
  struct sigaction taken {};
  taken.sa_handler = note;
  taken.sa_flags = SA_RESTART;
  sigaction(signal, &taken, nullptr);
}

}  // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent) {
  signal(SIGXFSZ, SIG_IGN);
  signal(SIGPIPE, SIG_IGN);
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;  // the signals end the program then
  auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this] {
    char bytes[64];
    while (read(ends[0], bytes, sizeof bytes) > 0) continue;
    emit arrived();
  });
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) take(signal);
}

}  // namespace mirelund

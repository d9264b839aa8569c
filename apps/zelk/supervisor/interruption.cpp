// SPDX-License-Identifier: Apache-2.0
#include "supervisor/interruption.h"

namespace cli {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t stop_requested = 0;

extern "C" void request_stop(int) {
  stop_requested = 1;
}

}  // namespace

Interruption::Interruption() {
  stop_requested = 0;
  sigset_t blocked;
  sigemptyset(&blocked);
  struct sigaction action = {};
  action.sa_handler = request_stop;
  for (const int number : kSignals) {
    struct sigaction current = {};
    sigaction(number, nullptr, &current);
    if (current.sa_handler == SIG_IGN) continue;
    sigaction(number, &action, nullptr);
    sigaddset(&blocked, number);
  }
  sigprocmask(SIG_BLOCK, &blocked, &_previous_mask);
}

Interruption::~Interruption() {
  sigprocmask(SIG_SETMASK, &_previous_mask, nullptr);
}

bool Interruption::requested() const {
  if (stop_requested != 0) return true;
  // One that came while nothing was waited for.
  sigset_t pending;
  sigpending(&pending);
  for (const int number : kSignals) {
    if (sigismember(&pending, number) == 1) return true;
  }
  return false;
}

}  // namespace cli

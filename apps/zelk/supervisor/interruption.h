// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_INTERRUPTION_H
#define ZELK_APPS_SUPERVISOR_INTERRUPTION_H

#include <csignal>

namespace cli {

// Turns SIGINT, SIGTERM and SIGHUP into a request to stop in an orderly way, for as long as the
// object lives. Signals that are ignored stay so. At most one object at a time.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  bool requested() const;
  // Signals arrive only while waiting with this mask, so that none is lost between a look at
  // requested() and the wait.
  const sigset_t& mask_while_waiting() const { return _previous_mask; }

 private:
  sigset_t _previous_mask;
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_INTERRUPTION_H

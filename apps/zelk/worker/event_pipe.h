// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_EVENT_PIPE_H
#define ZELK_APPS_WORKER_EVENT_PIPE_H

#include "exchange/messages.h"

namespace cli {

// A worker's end of the pipe that tells its supervisor what happens.
class EventPipe {
 public:
  explicit EventPipe(int events) : _events(events) {}

  // Throws std::system_error when the supervisor is gone.
  void send(const Event& event) const;

 private:
  int _events;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_EVENT_PIPE_H

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_ORDER_PIPE_H
#define ZELK_APPS_WORKER_ORDER_PIPE_H

#include <optional>

#include "exchange/frames.h"
#include "exchange/messages.h"

namespace cli {

// A worker's end of its two pipes.
class OrderPipe {
 public:
  OrderPipe(int orders, int events) : _orders(orders), _events(events) {}

  // Waits for an order. Nothing when the supervisor is gone.
  std::optional<Order> receive();
  // Throws std::system_error when the supervisor is gone.
  void send(const Event& event) const;

 private:
  int _orders;
  int _events;
  FrameReader _frames;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_ORDER_PIPE_H

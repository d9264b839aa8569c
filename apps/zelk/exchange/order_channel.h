// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_ORDER_CHANNEL_H
#define ZELK_APPS_EXCHANGE_ORDER_CHANNEL_H

#include <deque>
#include <optional>
#include <string>

#include "exchange/descriptor.h"
#include "exchange/frames.h"
#include "exchange/messages.h"

namespace cli {

// Orders travel over a pair of sockets, because these carry descriptors as well: a worker gets its
// document as a descriptor opened for reading, never as a name that it could open for writing.

struct OrderWithDocument {
  Order order;
  Descriptor document;  // of an OpenOrder and a PagesOrder
};

// The supervisor's end. The descriptor given is not owned and does not block.
class OrderSender {
 public:
  void add(OrderWithDocument order);
  bool has_pending() const { return !_pending.empty(); }
  // Sends what can be sent without waiting.
  void send(int socket);

 private:
  struct Message {
    std::string bytes;
    Descriptor document;
  };
  std::deque<Message> _pending;
};

// The worker's end.
class OrderReceiver {
 public:
  explicit OrderReceiver(int socket) : _socket(socket) {}
  // Waits for an order. Nothing when the supervisor is gone. A document is missing when the
  // process has no descriptor left for it.
  std::optional<OrderWithDocument> receive();

 private:
  bool receive_some();

  int _socket;
  FrameReader _frames;
  std::deque<Descriptor> _documents;
};

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_ORDER_CHANNEL_H

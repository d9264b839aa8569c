// SPDX-License-Identifier: Apache-2.0
#include "exchange/order_channel.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace cli {
namespace {

// Room for one descriptor beside a message.
union Control {
  cmsghdr aligned;
  char bytes[CMSG_SPACE(sizeof(int))];
};

void attach(msghdr& message, Control& control, int descriptor) {
  message.msg_control = &control;
  message.msg_controllen = sizeof control;
  cmsghdr* const header = CMSG_FIRSTHDR(&message);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(sizeof descriptor);
  std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
}

Descriptor attached(msghdr& message) {
  const cmsghdr* const header = CMSG_FIRSTHDR(&message);
  if (header == nullptr || header->cmsg_type != SCM_RIGHTS) return {};
  int descriptor = -1;
  std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
  return Descriptor(descriptor);
}

bool has_document(const Order& order) {
  return std::holds_alternative<OpenOrder>(order) || std::holds_alternative<PagesOrder>(order);
}

}  // namespace

void OrderSender::add(OrderWithDocument order) {
  _pending.push_back({encode_frame(encode_order(order.order)), std::move(order.document)});
}

void OrderSender::send(int socket) {
  while (!_pending.empty()) {
    Message& next = _pending.front();
    iovec part = {next.bytes.data(), next.bytes.size()};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    Control control = {};
    if (next.document.is_open()) attach(message, control, next.document.number());
    const ssize_t count = sendmsg(socket, &message, MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;  // full, or the worker is gone, which its events tell
    next.document = Descriptor();
    next.bytes.erase(0, static_cast<std::size_t>(count));
    if (next.bytes.empty()) _pending.pop_front();
  }
}

std::optional<OrderWithDocument> OrderReceiver::receive() {
  do {
    while (const std::optional<std::string> body = _frames.next()) {
      std::optional<Order> order = decode_order(*body);
      if (!order) continue;
      OrderWithDocument received{std::move(*order), {}};
      if (has_document(received.order) && !_documents.empty()) {
        received.document = std::move(_documents.front());
        _documents.pop_front();
      }
      return received;
    }
  } while (receive_some());
  return {};
}

bool OrderReceiver::receive_some() {
  std::array<char, 1 << 16> buffer;
  iovec part = {buffer.data(), buffer.size()};
  Control control = {};
  msghdr message = {};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = &control;
  message.msg_controllen = sizeof control;
  const ssize_t count = recvmsg(_socket, &message, MSG_CMSG_CLOEXEC);
  if (count < 0 && errno == EINTR) return true;
  if (count <= 0) return false;
  if (Descriptor document = attached(message); document.is_open()) {
    _documents.push_back(std::move(document));
  }
  _frames.feed({buffer.data(), static_cast<std::size_t>(count)});
  return true;
}

}  // namespace cli

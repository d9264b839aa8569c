// SPDX-License-Identifier: Apache-2.0
#include "worker/order_pipe.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace cli {

std::optional<Order> OrderPipe::receive() {
  for (;;) {
    while (const std::optional<std::string> body = _frames.next()) {
      if (std::optional<Order> order = decode_order(*body)) return order;
    }
    char buffer[1 << 16];
    const ssize_t count = read(_orders, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return {};
    _frames.feed({buffer, static_cast<std::size_t>(count)});
  }
}

void OrderPipe::send(const Event& event) const {
  const std::string frame = encode_frame(encode_event(event));
  std::string_view rest = frame;
  while (!rest.empty()) {
    const ssize_t count = write(_events, rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw std::system_error(errno, std::generic_category(), "events");
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace cli

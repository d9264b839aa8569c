// SPDX-License-Identifier: Apache-2.0
#include "worker/event_pipe.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "exchange/frames.h"

namespace cli {

void EventPipe::send(const Event& event) const {
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

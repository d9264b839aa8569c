// SPDX-License-Identifier: Apache-2.0
#include "console/message_stream.h"

#include <unistd.h>

#include <cerrno>

namespace cli {

void write_message(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<size_t>(written));
  }
}

}  // namespace cli

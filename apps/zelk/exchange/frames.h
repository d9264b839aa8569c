// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_FRAMES_H
#define ZELK_APPS_EXCHANGE_FRAMES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

// Messages on a pipe between supervisor and worker. An engine runs in the same process and may
// write to any descriptor, so a frame carries a magic word, its length and checksums of both header
// and body; a reader skips whatever lies between two frames.

// A body of at most kLongestFrame bytes as a frame.
std::string encode_frame(std::string_view body);

constexpr std::size_t kLongestFrame = std::size_t{1} << 24;

class FrameReader {
 public:
  void feed(std::string_view bytes) {
    if (_bytes.size() <= 2 * kLongestFrame) _bytes += bytes;  // beyond that nothing can be a frame
  }
  // The next complete body; nothing until more bytes come.
  std::optional<std::string> next();

 private:
  std::string _bytes;
  int _damaged_bodies = 0;
};

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_FRAMES_H

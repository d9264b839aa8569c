// SPDX-License-Identifier: Apache-2.0
// What a worker's pipe may carry: frames between stray bytes, cut anywhere, and messages that are
// none. What is read as a message has to survive writing.
#include "exchange/messages.h"

#include <algorithm>

#include "exchange/frames.h"
#include "fuzz_input.h"

namespace {

void check_message(std::string_view bytes) {
  if (const auto order = cli::decode_order(bytes)) {
    const std::string written = cli::encode_order(*order);
    const auto again = cli::decode_order(written);
    require(again && cli::encode_order(*again) == written, "an order comes back as it was");
  }
  if (const auto event = cli::decode_event(bytes)) {
    const std::string written = cli::encode_event(*event);
    const auto again = cli::decode_event(written);
    require(again && cli::encode_event(*again) == written, "an event comes back as it was");
  }
}

// Noise and frames in turns. Noise that looks like a frame itself would be waited for, so it is
// kept from holding the first byte of their magic word.
void check_stream(FuzzInput& input) {
  cli::FrameReader reader;
  while (!input.empty()) {
    std::string stream(input.text(64));
    std::replace(stream.begin(), stream.end(), '\xF5', '.');
    const std::string body(input.text(512));
    if (input.below(2) == 0) stream += "\xF5zelk\xF6\r\n";  // the magic word of no frame
    stream += cli::encode_frame(body);
    const auto cut = static_cast<std::size_t>(input.below(256)) % stream.size();
    reader.feed(std::string_view(stream).substr(0, cut));
    std::optional<std::string> last = reader.next();
    reader.feed(std::string_view(stream).substr(cut));
    while (std::optional<std::string> next = reader.next()) last = std::move(next);
    require(last == body, "a frame arrives, whatever lies before it");
    check_message(body);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check_message(FuzzInput(data, size).rest());
  cli::FrameReader reader;
  reader.feed(FuzzInput(data, size).rest());
  while (const std::optional<std::string> body = reader.next()) check_message(*body);
  FuzzInput input(data, size);
  check_stream(input);
  return 0;
}

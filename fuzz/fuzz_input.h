// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_FUZZ_INPUT_H
#define ZELK_FUZZ_FUZZ_INPUT_H

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// The bytes of one input, taken from the front. An input that is used up gives zeros and empty
// texts.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size)
      : _bytes(size == 0 ? "" : reinterpret_cast<const char*>(data), size) {}

  bool empty() const { return _bytes.empty(); }
  std::string_view take(std::size_t size) {
    const std::string_view taken = _bytes.substr(0, size);
    _bytes.remove_prefix(taken.size());
    return taken;
  }
  std::string_view rest() { return take(_bytes.size()); }
  // A text of at most `longest` bytes behind a length in two bytes.
  std::string_view text(std::size_t longest) {
    return take(std::min<std::size_t>(number<std::uint16_t>(), longest));
  }
  // An integer of any value.
  template <typename Number>
  Number number() {
    Number value = 0;
    const std::string_view bytes = take(sizeof value);
    if (!bytes.empty()) std::memcpy(&value, bytes.data(), bytes.size());
    return value;
  }
  // An integer from 0 to limit - 1, of one byte where that is enough.
  int below(int limit) {
    return limit <= 256 ? number<std::uint8_t>() % limit : number<std::uint16_t>() % limit;
  }

 private:
  std::string_view _bytes;
};

// A broken promise ends the program, which the fuzzer counts as a crash.
inline void require(bool kept, const char* promise) {
  if (kept) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

// A path in the folder of temporary files that no other process has.
inline std::string scratch_path(const std::string& name) {
  const char* const folder = std::getenv("TMPDIR");
  return std::string(folder != nullptr ? folder : "/tmp") + "/zelk-fuzz-" +
         std::to_string(getpid()) + "-" + name;
}

#endif  // ZELK_FUZZ_FUZZ_INPUT_H

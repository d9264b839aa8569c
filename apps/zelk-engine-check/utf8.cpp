// SPDX-License-Identifier: Apache-2.0
#include "utf8.h"

#include <bit>
#include <cstdint>

namespace engine_check {

std::optional<std::wstring> from_utf8(const std::string& text) {
  constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};  // by number of bytes
  std::wstring wide;
  for (std::size_t i = 0; i < text.size();) {
    const auto first = static_cast<std::uint8_t>(text[i]);
    const int ones = std::countl_one(first);
    const int bytes = ones == 0 ? 1 : ones;
    if (ones == 1 || ones > 4 || i + static_cast<std::size_t>(bytes) > text.size()) return {};
    std::uint32_t code = first & (ones == 0 ? 0x7FU : 0x7FU >> ones);
    for (int k = 1; k < bytes; ++k) {
      const auto next = static_cast<std::uint8_t>(text[i + static_cast<std::size_t>(k)]);
      if ((next & 0xC0) != 0x80) return {};
      code = code << 6 | (next & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (code < kSmallest[bytes] || code > 0x10FFFF || surrogate) return {};
    wide.push_back(static_cast<wchar_t>(code));
    i += static_cast<std::size_t>(bytes);
  }
  return wide;
}

}  // namespace engine_check

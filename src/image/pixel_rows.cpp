// SPDX-License-Identifier: Apache-2.0
#include "image/pixel_rows.h"

#include <cstdint>
#include <cstring>

namespace zelk {

void bgra_to_bgr(unsigned char* destination, const unsigned char* source, std::size_t pixels) {
  // Four pixels at a time, as three words: the byte order of the platform is little endian.
  for (; pixels >= 4; pixels -= 4, source += 16, destination += 12) {
    std::uint32_t in[4];
    std::memcpy(in, source, sizeof in);
    const std::uint32_t out[3] = {(in[0] & 0x00FFFFFFU) | in[1] << 24,
                                  (in[1] >> 8 & 0x0000FFFFU) | in[2] << 16,
                                  (in[2] >> 16 & 0x000000FFU) | in[3] << 8};
    std::memcpy(destination, out, sizeof out);
  }
  for (; pixels > 0; --pixels, source += 4, destination += 3) {
    std::memcpy(destination, source, 3);
  }
}

}  // namespace zelk

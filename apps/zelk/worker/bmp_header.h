// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_BMP_HEADER_H
#define ZELK_APPS_WORKER_BMP_HEADER_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "worker/picture_stream.h"

namespace cli {

// A BMP file whose header FreeImage does not read as it is meant: one of the versions with colour
// masks in the header (52, 56, 108 and 124 bytes), or 32 bits a pixel laid out by masks.
struct BmpHeader {
  ReplacedStart start;  // the header of 40 bytes that says the same
  // Where the bits of a pixel of 32 bits lie: red, green, blue, alpha; alpha may be 0. Nothing:
  // FreeImage knows.
  std::optional<std::array<std::uint32_t, 4>> masks;
};

// Nothing for files that FreeImage reads by itself, and for damaged ones.
std::optional<BmpHeader> read_bmp_header(const std::string& path);

// Puts samples of a bitmap of 32 bits a pixel, decoded without masks, where FreeImage has them.
// Without an alpha mask every pixel becomes opaque.
void arrange_samples(FIBITMAP* bitmap, const std::array<std::uint32_t, 4>& masks);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_BMP_HEADER_H

// SPDX-License-Identifier: Apache-2.0
#include "raster.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tesseract_engine {
namespace {

// Brightness of a pixel given as blue, green, red, in the weights of ITU-R BT.601.
inline std::uint32_t brightness(const unsigned char* bgr) {
  return (bgr[0] * 29U + bgr[1] * 150U + bgr[2] * 77U + 128U) >> 8;
}

// Leptonica packs pixels into 32-bit words, the leftmost pixel in the highest bits.
void grey_row(const unsigned char* bgr, int width, std::uint32_t* words) {
  for (; width >= 4; width -= 4, bgr += 12) {
    *words++ = (brightness(bgr) << 24) | (brightness(bgr + 3) << 16) | (brightness(bgr + 6) << 8) |
               brightness(bgr + 9);
  }
  std::uint32_t last = 0;
  for (int i = 0; i < width; ++i, bgr += 3) last |= brightness(bgr) << (24 - 8 * i);
  if (width > 0) *words = last;
}

const unsigned char* row_of(const Raster& raster, int y) {
  return raster.rows + static_cast<std::size_t>(y) * static_cast<std::size_t>(raster.line_bytes);
}

std::uint32_t* row_of(Pix* pix, int y) {
  return pixGetData(pix) + static_cast<std::size_t>(y) * static_cast<std::size_t>(pixGetWpl(pix));
}

std::int64_t used_bytes(const Raster& raster) {
  return (static_cast<std::int64_t>(raster.width) * raster.bits + 7) / 8;
}

}  // namespace

bool is_too_large(std::int64_t width, std::int64_t height) {
  return width > kLongestSide || height > kLongestSide || width * height > kMostPixels;
}

bool is_well_formed(const Raster& raster) {
  if (raster.rows == nullptr || raster.width <= 0 || raster.height <= 0) return false;
  if (raster.bits != 1 && raster.bits != 8 && raster.bits != 24) return false;
  return raster.line_bytes >= used_bytes(raster);
}

PixPtr to_pix(const Raster& raster) {
  PixPtr pix(pixCreateNoInit(raster.width, raster.height, raster.bits == 1 ? 1 : 8));
  if (!pix) return pix;
  const auto bytes = static_cast<std::size_t>(used_bytes(raster));
  for (int y = 0; y < raster.height; ++y) {
    if (raster.bits == 24) {
      grey_row(row_of(raster, y), raster.width, row_of(pix.get(), y));
    } else {
      std::memcpy(row_of(pix.get(), y), row_of(raster, y), bytes);
    }
  }
  if (raster.bits != 24) pixEndianByteSwap(pix.get());
  pixSetPadBits(pix.get(), 0);
  return pix;
}

bool read_size(const char* path, int& width, int& height) {
  return pixReadHeader(path, nullptr, &width, &height, nullptr, nullptr, nullptr) == 0;
}

PixPtr read_pix(const char* path) {
  PixPtr file(pixRead(path));
  if (!file) return {};
  if (pixGetDepth(file.get()) == 1 && pixGetColormap(file.get()) == nullptr) return file;
  return PixPtr(pixConvertTo8(file.get(), 0));
}

int estimated_resolution(const Pix* pix) {
  constexpr double kPageInches = 11.69;  // the long side of A4
  const double longest = std::max(pixGetWidth(pix), pixGetHeight(pix));
  return static_cast<int>(std::clamp(longest / kPageInches, 150.0, 600.0));
}

}  // namespace tesseract_engine

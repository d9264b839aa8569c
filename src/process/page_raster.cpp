// SPDX-License-Identifier: Apache-2.0
#include "process/page_raster.h"

#include <FreeImage.h>

#include <climits>
#include <cstddef>
#include <cstring>

#include "image/pixel_rows.h"

namespace ofd {

unsigned dots_per_meter(int dots_per_inch) {
  const double dots = dots_per_inch * 1000.0 / 25.4;
  int meter_x = dots < 0 ? INT_MIN : INT_MAX;
  if (dots > INT_MIN && dots < INT_MAX) meter_x = static_cast<int>(dots);
  return static_cast<unsigned>(meter_x);
}

void stamp_resolution(FIBITMAP* dib, int dots_per_inch) {
  FreeImage_SetDotsPerMeterX(dib, dots_per_meter(dots_per_inch));
  FreeImage_SetDotsPerMeterY(dib, dots_per_meter(dots_per_inch));
}

bool page_to_raster(FIBITMAP* dib, zelk::MDIB& image) {
  constexpr int kEngineResolution = 300;
  const unsigned image_width = FreeImage_GetWidth(dib);
  const unsigned image_height = FreeImage_GetHeight(dib);
  const unsigned char* const bits = FreeImage_GetBits(dib);
  if (bits == nullptr || FreeImage_GetBPP(dib) != 24) return false;
  if (image_width > INT_MAX || image_height > INT_MAX) return false;
  // Clearing a page first would cost as much again as copying it.
  const int made = image.InitUncleared(static_cast<int>(image_width),
                                       static_cast<int>(image_height), 24, kEngineResolution);
  if (made != 1) return false;
  const std::size_t row_bytes = std::size_t{3} * image_width;
  const auto pitch = static_cast<std::size_t>(image.m_nLineLength);
  zelk::copy_rows_flipped(
      image.m_lpBuf, pitch, bits, FreeImage_GetPitch(dib), image_height,
      [row_bytes, pitch](unsigned char* destination, const unsigned char* source) {
        std::memcpy(destination, source, row_bytes);
        std::memset(destination + row_bytes, 0, pitch - row_bytes);
      });
  return true;
}

}  // namespace ofd

// SPDX-License-Identifier: Apache-2.0
#include "worker/float_picture.h"

#include <FreeImage.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace cli {
namespace {

struct Range {
  float least = 0.0F;
  float largest = 1.0F;
};

unsigned samples_of(FIBITMAP* picture) {
  switch (FreeImage_GetImageType(picture)) {
    case FIT_RGBAF:
      return 4;
    case FIT_RGBF:
      return 3;
    default:
      return 1;
  }
}

const float* row_of(FIBITMAP* picture, unsigned y) {
  return reinterpret_cast<const float*>(FreeImage_GetScanLine(picture, static_cast<int>(y)));
}

Range colour_range(FIBITMAP* picture, unsigned samples) {
  const unsigned colours = std::min(samples, 3U);
  Range range;
  float least = INFINITY;
  float largest = -INFINITY;
  for (unsigned y = 0; y < FreeImage_GetHeight(picture); ++y) {
    const float* pixel = row_of(picture, y);
    for (unsigned x = 0; x < FreeImage_GetWidth(picture); ++x, pixel += samples) {
      for (unsigned colour = 0; colour < colours; ++colour) {
        if (!std::isfinite(pixel[colour])) continue;
        least = std::min(least, pixel[colour]);
        largest = std::max(largest, pixel[colour]);
      }
    }
  }
  if (least < range.least || largest > range.largest) range = {least, largest};
  return range;
}

BYTE small_sample(float sample, const Range& range) {
  if (std::isnan(sample)) return 0;
  // As double: the difference of two floats may be more than a float holds.
  const double width = static_cast<double>(range.largest) - range.least;
  const double place = width > 0 ? (static_cast<double>(sample) - range.least) / width : 1.0;
  return static_cast<BYTE>(std::lround(255.0 * std::clamp(place, 0.0, 1.0)));
}

}  // namespace

PageBitmap small_samples_of_floats(FIBITMAP* picture) {
  const unsigned samples = samples_of(picture);
  const Range range = colour_range(picture, samples);
  const unsigned bytes = std::max(samples, 3U);
  PageBitmap result(FreeImage_Allocate(static_cast<int>(FreeImage_GetWidth(picture)),
                                       static_cast<int>(FreeImage_GetHeight(picture)),
                                       static_cast<int>(8 * bytes)));
  if (result == nullptr) throw std::bad_alloc();
  for (unsigned y = 0; y < FreeImage_GetHeight(picture); ++y) {
    const float* from = row_of(picture, y);
    BYTE* to = FreeImage_GetScanLine(result.get(), static_cast<int>(y));
    for (unsigned x = 0; x < FreeImage_GetWidth(picture); ++x, from += samples, to += bytes) {
      to[FI_RGBA_RED] = small_sample(from[0], range);
      to[FI_RGBA_GREEN] = small_sample(from[samples > 1 ? 1 : 0], range);
      to[FI_RGBA_BLUE] = small_sample(from[samples > 1 ? 2 : 0], range);
      if (bytes == 4) to[FI_RGBA_ALPHA] = small_sample(from[3], Range());
    }
  }
  return result;
}

}  // namespace cli

// SPDX-License-Identifier: Apache-2.0
//
// From the rasters that callers hand over to the pictures that Tesseract reads.
#ifndef ZELK_TESSERACT_RASTER_H
#define ZELK_TESSERACT_RASTER_H

#include <allheaders.h>

#include <memory>

namespace tesseract_engine {

struct PixDeleter {
  void operator()(Pix* pix) const { pixDestroy(&pix); }
};
using PixPtr = std::unique_ptr<Pix, PixDeleter>;

// Tesseract keeps coordinates in 16 bits.
constexpr int kLongestSide = 32767;

// A raster of the caller's, as qv_set_image_data receives it.
struct Raster {
  const unsigned char* rows = nullptr;  // top row first
  int width = 0;
  int height = 0;
  int bits = 0;        // 1: a set bit is black; 8: grey; 24: blue, green, red
  int line_bytes = 0;  // from one row to the next
};

// True when every pixel of the raster can be read and Tesseract can hold the picture.
bool is_acceptable(const Raster& raster);

// The picture of an acceptable raster: 1 bit a pixel for 1 bit, 8-bit grey for all else, because
// Tesseract looks at brightness only. Null when memory runs out.
PixPtr to_pix(const Raster& raster);

// The picture of an image file in the same two forms; null when it cannot be read or is too large.
PixPtr read_pix(const char* path);

// The resolution in dots per inch to assume for a picture of unknown origin.
int estimated_resolution(const Pix* pix);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_RASTER_H

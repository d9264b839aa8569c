// SPDX-License-Identifier: Apache-2.0
//
// From the rasters that callers hand over to the pictures that Tesseract reads.
#ifndef ZELK_TESSERACT_RASTER_H
#define ZELK_TESSERACT_RASTER_H

#include <allheaders.h>

#include <cstdint>
#include <memory>

namespace tesseract_engine {

struct PixDeleter {
  void operator()(Pix* pix) const { pixDestroy(&pix); }
};
using PixPtr = std::unique_ptr<Pix, PixDeleter>;

// Tesseract keeps coordinates in 16 bits.
constexpr int kLongestSide = 32767;

// An A0 sheet at 300 dpi has 140 million. Reading takes 1 byte a pixel of a blank page and 3 of a
// full one, and time in proportion: this keeps a page well within 2 GB.
constexpr int kMostPixels = 200'000'000;

// A raster of the caller's, as qv_set_image_data receives it.
struct Raster {
  const unsigned char* rows = nullptr;  // top row first
  int width = 0;
  int height = 0;
  int bits = 0;        // 1: a set bit is black; 8: grey; 24: blue, green, red
  int line_bytes = 0;  // from one row to the next
};

// True for a side beyond kLongestSide or more pixels than kMostPixels.
bool is_too_large(std::int64_t width, std::int64_t height);

// True when the raster has pixels, in a known format, and all of them can be read.
bool is_well_formed(const Raster& raster);

// The picture of a well-formed raster that is not too large: 1 bit a pixel for 1 bit, 8-bit grey
// for all else, because Tesseract looks at brightness only. Null when memory runs out.
PixPtr to_pix(const Raster& raster);

// The size that an image file declares; false when it cannot be told.
bool read_size(const char* path, int& width, int& height);

// The picture of an image file in the same two forms; null when it cannot be read.
PixPtr read_pix(const char* path);

// The resolution in dots per inch to assume for a picture of unknown origin.
int estimated_resolution(const Pix* pix);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_RASTER_H

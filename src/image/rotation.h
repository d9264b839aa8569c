// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_IMAGE_ROTATION_H
#define ZELK_IMAGE_ROTATION_H

#include <cstddef>

// The pixel moves that the turns of a raster are made of.

namespace zelk {

// A raster's row table read from its first row down (step 1) or from its last row up (step -1).
class Rows {
 public:
  Rows(unsigned char* const* first, std::ptrdiff_t step) : first_(first), step_(step) {}
  unsigned char* operator[](std::ptrdiff_t row) const { return first_[row * step_]; }

 private:
  unsigned char* const* first_;
  std::ptrdiff_t step_;
};

// Both moves take the source's size in pixels and 1, 8 or 24 bits per pixel. The destination has
// the size that results, is zero before, and does not overlap the source. Nothing beyond the pixels
// of a source row has any influence; nothing beyond the pixels of a destination row is written.

// Pixel x of row y becomes pixel y of row x.
void transpose(Rows src, Rows dst, int width, int height, int bitCount);

// Pixel x of a row becomes pixel width - 1 - x of the same row. At 1 bit only the whole bytes of a
// row are moved: its last width mod 8 pixels are dropped.
void mirror(Rows src, Rows dst, int width, int height, int bitCount);

}  // namespace zelk

#endif  // ZELK_IMAGE_ROTATION_H

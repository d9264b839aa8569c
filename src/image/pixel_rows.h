// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_IMAGE_PIXEL_ROWS_H
#define ZELK_IMAGE_PIXEL_ROWS_H

#include <cstddef>

namespace zelk {

// Copies rows between a raster with the top row first and one with the bottom row first, in either
// direction: copy_row(destination row, source row) is called for each. Pitches are bytes from one
// row to the next.
template <class CopyRow>
void copy_rows_flipped(unsigned char* destination, std::size_t destination_pitch,
                       const unsigned char* source, std::size_t source_pitch, std::size_t rows,
                       CopyRow copy_row) {
  for (std::size_t row = 0; row < rows; ++row) {
    copy_row(destination + (rows - 1 - row) * destination_pitch, source + row * source_pitch);
  }
}

// The same for rows of `width` pixels of four bytes (blue, green, red, alpha) in the source and of
// three in the destination: alpha is dropped.
void copy_flipped_without_alpha(unsigned char* destination, std::size_t destination_pitch,
                                const unsigned char* source, std::size_t source_pitch,
                                std::size_t width, std::size_t rows);

}  // namespace zelk

#endif  // ZELK_IMAGE_PIXEL_ROWS_H

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_IMAGE_PIXEL_ROWS_H
#define ZELK_IMAGE_PIXEL_ROWS_H

#include <cstddef>

namespace zelk {

// Processors foresee writes that go upwards in memory, not from one row to the row above it.
inline void prefetch_start_of_row(const unsigned char* row, std::size_t pitch) {
  constexpr std::size_t kCacheLine = 64;
  const std::size_t size = pitch < 1024 ? pitch : 1024;
  for (std::size_t i = 0; i < size; i += kCacheLine) __builtin_prefetch(row + i, 1);
}

// Copies rows between a raster with the top row first and one with the bottom row first, in either
// direction: copy_row(destination row, source row) is called for each. Pitches are bytes from one
// row to the next.
template <class CopyRow>
void copy_rows_flipped(unsigned char* destination, std::size_t destination_pitch,
                       const unsigned char* source, std::size_t source_pitch, std::size_t rows,
                       CopyRow copy_row) {
  for (std::size_t row = 0; row < rows; ++row) {
    unsigned char* const target = destination + (rows - 1 - row) * destination_pitch;
    if (row + 1 < rows) prefetch_start_of_row(target - destination_pitch, destination_pitch);
    copy_row(target, source + row * source_pitch);
  }
}

// The same for rows of `width` pixels of four bytes (blue, green, red, alpha) in the source and of
// three in the destination: alpha is dropped.
void copy_flipped_without_alpha(unsigned char* destination, std::size_t destination_pitch,
                                const unsigned char* source, std::size_t source_pitch,
                                std::size_t width, std::size_t rows);

}  // namespace zelk

#endif  // ZELK_IMAGE_PIXEL_ROWS_H

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_CHECK_GUARDED_RASTER_H
#define ZELK_ENGINE_CHECK_GUARDED_RASTER_H

#include <cstddef>

#include "grey_page.h"

namespace engine_check {

enum class Padding { kZero, kNoise };

// A raster as hosts hand it over, in memory that may only be read and ends where the raster ends:
// an engine that writes to it or reads behind it crashes.
class GuardedRaster {
 public:
  // `bits` is 1 (a set bit is black), 8 or 24. With `roomy` there is padding behind every row, even
  // where the pixels fill a multiple of 4 bytes.
  GuardedRaster(const GreyPage& page, int bits, Padding padding = Padding::kZero,
                bool roomy = false);
  ~GuardedRaster();
  GuardedRaster(const GuardedRaster&) = delete;
  GuardedRaster& operator=(const GuardedRaster&) = delete;

  const unsigned char* rows() const { return rows_; }
  int width() const { return width_; }
  int height() const { return height_; }
  int bits() const { return bits_; }
  int line_bytes() const { return line_bytes_; }

  // From now on reading it is a crash too.
  void withdraw();

 private:
  void fill(const GreyPage& page, Padding padding);

  int width_;
  int height_;
  int bits_;
  int line_bytes_;
  void* memory_ = nullptr;
  std::size_t memory_bytes_ = 0;
  unsigned char* rows_ = nullptr;
};

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_GUARDED_RASTER_H

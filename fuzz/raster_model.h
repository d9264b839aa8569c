// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_RASTER_MODEL_H
#define ZELK_FUZZ_RASTER_MODEL_H

#include <map>
#include <utility>
#include <vector>

#include "fuzz_input.h"

namespace zelk {
class MDIB;
}

// What a zelk::MDIB should be, told without rows, bits or bytes: a map of values by place.
struct RasterModel {
  using Place = std::pair<int, int>;  // column, row

  bool init(int new_width, int new_height, int new_bits, int dots_per_inch, bool clear = true);
  bool copy(const RasterModel* source);
  // Turns `source` into this raster, which may be the same one.
  bool turn_from(const RasterModel& source, unsigned option);
  bool turn_in_place(unsigned option);
  void unload();

  bool is_empty() const { return !has_pixels; }
  // Value of a pixel, 0 to 1, 255 or 0xFFFFFF.
  unsigned pixel(int x, int y) const {
    const auto found = pixels.find({x, y});
    return found == pixels.end() ? 0 : found->second;
  }

  bool has_pixels = false;
  int width = 0;
  int height = 0;
  int bits = 0;
  int resolution_x = 300;
  int resolution_y = 300;
  std::map<Place, unsigned> pixels;  // those that are not 0
};

// A width or height: small, or now and then one that has to be refused.
int any_side(FuzzInput& input);

// Gives up to 31 pixels of both the same values; nothing in an empty raster.
void draw(FuzzInput& input, zelk::MDIB& dib, RasterModel& model);

// Ends the program when the raster is not what the model says.
void compare(const zelk::MDIB& dib, const RasterModel& model);

#endif  // ZELK_FUZZ_RASTER_MODEL_H

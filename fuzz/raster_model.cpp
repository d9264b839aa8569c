// SPDX-License-Identifier: Apache-2.0
#include "raster_model.h"

#include <climits>
#include <cstdint>

#include "image/MDIB.h"

namespace {

unsigned pixel_of(const zelk::MDIB& dib, int x, int y) {
  const unsigned char* const row = dib.m_lpLine[y];
  if (dib.IsBW()) return row[x / 8] >> (7 - x % 8) & 1U;
  if (dib.IsGray()) return row[x];
  const unsigned char* const bgr = row + std::ptrdiff_t{3} * x;
  return bgr[0] | bgr[1] * 0x100U | bgr[2] * 0x10000U;
}

// Of the value, a raster keeps as many bits as a pixel has.
void draw_pixel(zelk::MDIB& dib, RasterModel& model, int x, int y, unsigned value) {
  unsigned char* const row = dib.m_lpLine[y];
  if (dib.IsBW()) {
    const unsigned mask = 0x80U >> (x % 8);
    value &= 1;
    row[x / 8] = static_cast<unsigned char>(value != 0 ? row[x / 8] | mask : row[x / 8] & ~mask);
  } else if (dib.IsGray()) {
    row[x] = static_cast<unsigned char>(value &= 0xFF);
  } else {
    value &= 0xFFFFFF;
    for (int i = 0; i < 3; ++i) row[3 * x + i] = static_cast<unsigned char>(value >> 8 * i);
  }
  model.pixels[{x, y}] = value;
}

}  // namespace

int any_side(FuzzInput& input) {
  constexpr int kRefused[] = {0, -1, INT_MIN, INT_MIN + 1};
  const int choice = input.below(100);
  return choice < 4 ? kRefused[choice] : choice - 3;
}

bool RasterModel::init(int new_width, int new_height, int new_bits, int dots_per_inch, bool clear) {
  const bool same = width == new_width && height == new_height && bits == new_bits && has_pixels;
  if (clear || !same) pixels.clear();
  if (same) return true;
  unload();
  width = new_width;
  height = new_height;
  bits = new_bits;
  const bool has_depth = bits == 1 || bits == 8 || bits == 24;
  if (width <= 0 || height <= 0 || !has_depth) return false;
  if ((std::int64_t{width} * bits + 31) / 32 * 4 > INT_MAX) return false;
  has_pixels = true;
  resolution_x = resolution_y = dots_per_inch;
  return true;
}

bool RasterModel::copy(const RasterModel* source) {
  unload();
  if (source->is_empty()) return false;
  init(source->width, source->height, source->bits, source->resolution_x);
  pixels = source->pixels;
  return true;
}

bool RasterModel::turn_from(const RasterModel& source, unsigned option) {
  if (option < 1 || option > 3 || source.is_empty()) return false;
  const RasterModel from = source;
  const bool is_half = option == 2;
  const bool onto_itself = &source == this;
  init(is_half ? from.width : from.height, is_half ? from.height : from.width, from.bits,
       from.resolution_x);
  if (onto_itself) return true;
  // The half turn of a black and white raster moves whole bytes only.
  const int moved = is_half && bits == 1 ? from.width / 8 * 8 : from.width;
  for (const auto& [place, value] : from.pixels) {
    const auto [x, y] = place;
    if (x >= moved) continue;
    const Place target = is_half       ? Place(from.width - 1 - x, from.height - 1 - y)
                         : option == 1 ? Place(from.height - 1 - y, x)
                                       : Place(y, from.width - 1 - x);
    pixels[target] = value;
  }
  return true;
}

bool RasterModel::turn_in_place(unsigned option) {
  const RasterModel from = *this;
  if (option < 1 || option > 3 || from.is_empty()) return false;
  return turn_from(from, option);
}

void RasterModel::unload() {
  has_pixels = false;
  width = height = bits = 0;
  pixels.clear();
}

void draw(FuzzInput& input, zelk::MDIB& dib, RasterModel& model) {
  for (int count = input.below(32); count > 0 && !dib.IsEmpty(); --count) {
    const int x = input.below(model.width);
    const int y = input.below(model.height);
    draw_pixel(dib, model, x, y, input.number<std::uint32_t>());
  }
}

void compare(const zelk::MDIB& dib, const RasterModel& model) {
  require(dib.IsEmpty() == model.is_empty(), "a raster has pixels exactly when it should");
  require(dib.m_nWidth == model.width && dib.m_nHeight == model.height, "the size is right");
  require(dib.m_nBitCount == model.bits, "the bit count is right");
  require(dib.m_nResolutionX == model.resolution_x && dib.m_nResolutionY == model.resolution_y,
          "the resolutions are right");
  for (int y = 0; y < model.height && !dib.IsEmpty(); ++y) {
    for (int x = 0; x < model.width; ++x) {
      require(pixel_of(dib, x, y) == model.pixel(x, y), "every pixel is in its place");
    }
  }
}

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_CHECK_GREY_PAGE_H
#define ZELK_ENGINE_CHECK_GREY_PAGE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace engine_check {

// A page in grey, 0 is black; rows top first, without padding.
struct GreyPage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;

  std::uint8_t at(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
};

GreyPage uniform_page(int width, int height, std::uint8_t grey);

// The same pixels on every call.
GreyPage noise_page(int width, int height);

// Five lines of capitals in one column, 1000 x 460 pixels, about 200 dots per inch.
GreyPage bundled_page();

// The upper rows of a page.
GreyPage top_of(const GreyPage& page, int rows);

// An image file in any format that the library reads. Throws std::runtime_error when it cannot.
GreyPage read_image_file(const std::string& path);

// A BMP file, 24 bits a pixel. Throws std::runtime_error when it cannot be written.
void write_bmp(const GreyPage& page, const std::string& path);

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_GREY_PAGE_H

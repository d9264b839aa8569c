// SPDX-License-Identifier: Apache-2.0
#include "grey_page.h"

#include <algorithm>
#include <random>

namespace engine_check {

GreyPage uniform_page(int width, int height, std::uint8_t grey) {
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  return {width, height, std::vector<std::uint8_t>(count, grey)};
}

GreyPage noise_page(int width, int height) {
  GreyPage page = uniform_page(width, height, 0);
  std::mt19937 random(1);  // the same noise in every run
  for (std::uint8_t& pixel : page.pixels) pixel = static_cast<std::uint8_t>(random() >> 24);
  return page;
}

GreyPage top_of(const GreyPage& page, int rows) {
  GreyPage top = page;
  top.height = std::min(rows, page.height);
  top.pixels.resize(static_cast<std::size_t>(top.height) * static_cast<std::size_t>(top.width));
  return top;
}

}  // namespace engine_check

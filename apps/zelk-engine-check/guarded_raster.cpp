// SPDX-License-Identifier: Apache-2.0
#include "guarded_raster.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <random>
#include <system_error>

namespace engine_check {
namespace {

int used_bytes(int width, int bits) {
  return (width * bits + 7) / 8;
}

int row_bytes(int width, int bits, bool roomy) {
  const int used = used_bytes(width, bits);
  const int natural = (used + 3) / 4 * 4;
  return roomy && natural == used ? natural + 4 : natural;
}

void fill_row(const GreyPage& page, int y, int bits, unsigned char* row) {
  for (int x = 0; x < page.width; ++x) {
    const std::uint8_t grey = page.at(x, y);
    if (bits == 1) {
      if (grey < 128) row[x / 8] = static_cast<unsigned char>(row[x / 8] | 0x80 >> x % 8);
    } else if (bits == 8) {
      row[x] = grey;
    } else {
      std::fill_n(row + std::ptrdiff_t{3} * x, 3, grey);
    }
  }
}

}  // namespace

GuardedRaster::GuardedRaster(const GreyPage& page, int bits, Padding padding, bool roomy)
    : width_(page.width),
      height_(page.height),
      bits_(bits),
      line_bytes_(row_bytes(page.width, bits, roomy)) {
  const auto bytes = static_cast<std::size_t>(line_bytes_) * static_cast<std::size_t>(height_);
  const auto block = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t usable = (bytes + block - 1) / block * block;
  memory_bytes_ = usable + block;
  memory_ =
      mmap(nullptr, memory_bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory_ == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
  rows_ = static_cast<unsigned char*>(memory_) + (usable - bytes);
  fill(page, padding);
  mprotect(memory_, memory_bytes_, PROT_READ);
  mprotect(static_cast<unsigned char*>(memory_) + usable, block, PROT_NONE);
}

GuardedRaster::~GuardedRaster() {
  munmap(memory_, memory_bytes_);
}

void GuardedRaster::fill(const GreyPage& page, Padding padding) {
  std::mt19937 random(2);  // the same noise in every run
  for (int y = 0; y < height_; ++y) {
    unsigned char* const row = rows_ + static_cast<std::ptrdiff_t>(y) * line_bytes_;
    fill_row(page, y, bits_, row);
    for (int i = used_bytes(width_, bits_); i < line_bytes_; ++i) {
      row[i] = padding == Padding::kNoise ? static_cast<unsigned char>(random() >> 24) : 0;
    }
  }
}

void GuardedRaster::withdraw() {
  mprotect(memory_, memory_bytes_, PROT_NONE);
}

}  // namespace engine_check

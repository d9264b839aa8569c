// SPDX-License-Identifier: Apache-2.0
// The PDF reader's copy from four to three bytes a pixel, against a memcpy of the page into touched
// memory.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "image/pixel_rows.h"

namespace {

struct Size {
  explicit Size(const benchmark::State& state)
      : width(static_cast<std::size_t>(state.range(0))),
        height(static_cast<std::size_t>(state.range(1))),
        pitch((3 * width + 3) / 4 * 4) {}
  const std::size_t width;
  const std::size_t height;
  const std::size_t pitch;
};

void BM_page_memcpy(benchmark::State& state) {
  const Size size(state);
  const std::vector<unsigned char> source(size.pitch * size.height, 0x5A);
  std::vector<unsigned char> page(source.size());
  for (auto _ : state) {
    std::memcpy(page.data(), source.data(), page.size());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_page_memcpy)->Args({1653, 2338})->Args({2480, 3508})->Unit(benchmark::kMillisecond);

void BM_page_without_alpha(benchmark::State& state) {
  const Size size(state);
  const std::vector<unsigned char> source(4 * size.width * size.height, 0x5A);
  std::vector<unsigned char> page(size.pitch * size.height);
  for (auto _ : state) {
    zelk::copy_flipped_without_alpha(page.data(), size.pitch, source.data(), 4 * size.width,
                                     size.width, size.height);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_page_without_alpha)
    ->Args({1653, 2338})
    ->Args({2480, 3508})
    ->Unit(benchmark::kMillisecond);

}  // namespace

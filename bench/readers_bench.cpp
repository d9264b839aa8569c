// SPDX-License-Identifier: Apache-2.0
// The PDF reader's copy from four to three bytes a pixel, against a memcpy of the page into touched
// memory.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "image/pixel_rows.h"
#include "side_by_side.h"

namespace {

void BM_PageWithoutAlpha(benchmark::State& state) {
  const auto width = static_cast<std::size_t>(state.range(0));
  const auto height = static_cast<std::size_t>(state.range(1));
  const std::size_t pitch = (3 * width + 3) / 4 * 4;
  const std::vector<unsigned char> rendered(4 * width * height, 0x5A);
  const std::vector<unsigned char> copied(pitch * height, 0x5A);
  std::vector<unsigned char> page(copied.size());
  bench::sideBySide(
      state,
      [&] {
        zelk::copy_flipped_without_alpha(page.data(), pitch, rendered.data(), 4 * width, width,
                                         height);
        benchmark::ClobberMemory();
      },
      [&] {
        std::memcpy(page.data(), copied.data(), page.size());
        benchmark::ClobberMemory();
      });
}
BENCHMARK(BM_PageWithoutAlpha)
    ->Args({1653, 2338})
    ->Args({2480, 3508})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

// SPDX-License-Identifier: Apache-2.0
// What a page costs between the reader and the engine, against the same bytes set and copied once
// in a fresh block.
#include <FreeImage.h>
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "process/page_raster.h"
#include "side_by_side.h"

namespace {

void BM_PageToRaster(benchmark::State& state) {
  FIBITMAP* const dib = FreeImage_Allocate(2480, 3508, 24, 0, 0, 0);
  const std::size_t size = std::size_t{FreeImage_GetPitch(dib)} * FreeImage_GetHeight(dib);
  std::memset(FreeImage_GetBits(dib), 0x5A, size);
  bench::sideBySide(
      state,
      [dib] {
        zelk::MDIB image;
        ofd::stamp_resolution(dib, 300);
        benchmark::DoNotOptimize(ofd::page_to_raster(dib, image));
        benchmark::ClobberMemory();
      },
      [dib, size] {
        const std::unique_ptr<unsigned char[]> block(new unsigned char[size]);
        std::memset(block.get(), 0, size);
        benchmark::DoNotOptimize(block.get());
        std::memcpy(block.get(), FreeImage_GetBits(dib), size);
        benchmark::ClobberMemory();
      });
  FreeImage_Unload(dib);
}
BENCHMARK(BM_PageToRaster)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

// SPDX-License-Identifier: Apache-2.0
// What a page costs between the reader and the engine, against the same bytes set and copied once.
#include <FreeImage.h>
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "process/page_raster.h"

namespace {

constexpr int kWidth = 2480;
constexpr int kHeight = 3508;

class Page {
 public:
  Page() : dib(FreeImage_Allocate(kWidth, kHeight, 24, 0, 0, 0)) {
    std::memset(FreeImage_GetBits(dib), 0x5A, size());
  }
  ~Page() { FreeImage_Unload(dib); }
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  std::size_t size() const { return std::size_t{FreeImage_GetPitch(dib)} * kHeight; }

  FIBITMAP* const dib;
};

void report(benchmark::State& state, const Page& page) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page.size()));
}

// The reference: a fresh block of the same size, set and filled.
void BM_page_memset_and_memcpy(benchmark::State& state) {
  const Page page;
  for (auto _ : state) {
    const std::unique_ptr<unsigned char[]> block(new unsigned char[page.size()]);
    std::memset(block.get(), 0, page.size());
    benchmark::DoNotOptimize(block.get());
    std::memcpy(block.get(), FreeImage_GetBits(page.dib), page.size());
    benchmark::ClobberMemory();
  }
  report(state, page);
}
BENCHMARK(BM_page_memset_and_memcpy)->Unit(benchmark::kMillisecond);

void BM_page_to_raster(benchmark::State& state) {
  const Page page;
  for (auto _ : state) {
    zelk::MDIB image;
    ofd::stamp_resolution(page.dib, 300);
    benchmark::DoNotOptimize(ofd::page_to_raster(page.dib, image));
    benchmark::ClobberMemory();
  }
  report(state, page);
}
BENCHMARK(BM_page_to_raster)->Unit(benchmark::kMillisecond);

}  // namespace

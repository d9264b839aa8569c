// SPDX-License-Identifier: Apache-2.0
// Whether the pages of a long TIFF document cost more than those of a short one: 2,000 pages, from
// the file to the raster that an engine is handed, against 500.
#include <benchmark/benchmark.h>
#include <tiffio.h>

#include <FreeImage.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "process/page_raster.h"
#include "readers/tiffreader.h"
#include "side_by_side.h"

namespace {

constexpr int kLong = 2000;
constexpr int kShort = 500;

// Lines of marks, black on white, in fax coding: what a scanner makes of a page of text.
void write_page(TIFF* tiff, std::uint32_t width, std::uint32_t height) {
  constexpr std::uint32_t kLine = 40;
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, height);
  std::vector<unsigned char> row((width + 7) / 8);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < row.size(); ++x) {
      const bool marked = y % kLine < kLine / 2 && (x * 7 + y / 4) % 5 < 2;
      row[x] = marked ? 0x3C : 0;
    }
    TIFFWriteScanline(tiff, row.data(), y, 0);
  }
  TIFFWriteDirectory(tiff);
}

class Document {
 public:
  Document(int pages, std::uint32_t width, std::uint32_t height)
      : _path(std::filesystem::temp_directory_path() /
              ("zelk_bench_" + std::to_string(pages) + ".tif")) {
    TIFF* const tiff = TIFFOpen(_path.c_str(), "w");
    for (int page = 0; page < pages; ++page) write_page(tiff, width, height);
    TIFFClose(tiff);
  }
  ~Document() { std::filesystem::remove(_path); }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  void read() const {
    tiffreader reader;
    const int pages = reader.load_image(_path.c_str(), 200);
    for (int id = 0; id < pages; ++id) {
      FIBITMAP* const page = reader.get_cur_image(id);
      zelk::MDIB image;
      benchmark::DoNotOptimize(ofd::page_to_raster(page, image));
      FreeImage_Unload(page);
    }
    reader.free_image();
  }

 private:
  const std::filesystem::path _path;
};

void BM_TiffPages(benchmark::State& state) {
  const auto width = static_cast<std::uint32_t>(state.range(0));
  const auto height = static_cast<std::uint32_t>(state.range(1));
  const Document long_one(kLong, width, height);
  const Document short_one(kShort, width, height);
  for ([[maybe_unused]] auto _ : state) {
    const double seconds = bench::secondsOf([&] { long_one.read(); });
    const double reference = bench::secondsOf([&] { short_one.read(); });
    state.SetIterationTime(seconds);
    state.counters["ours_s"] = seconds;
    state.counters["reference_s"] = reference;
  }
}
// A page of A4 at 200 dots per inch, and next to none.
BENCHMARK(BM_TiffPages)->Args({1654, 2339})->Args({16, 16})->Iterations(1)->UseManualTime();

}  // namespace

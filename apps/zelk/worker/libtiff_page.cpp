// SPDX-License-Identifier: Apache-2.0
#include "worker/libtiff_page.h"

#include <FreeImage.h>
#include <tiffio.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include "worker/input_file.h"

namespace cli {
namespace {

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

tmsize_t read_some(thandle_t file, void* buffer, tmsize_t size) {
  return static_cast<tmsize_t>(
      std::fread(buffer, 1, static_cast<std::size_t>(size), static_cast<FILE*>(file)));
}

tmsize_t write_nothing(thandle_t, void*, tmsize_t) {
  return 0;
}

toff_t seek(thandle_t file, toff_t offset, int origin) {
  auto* const stream = static_cast<FILE*>(file);
  if (fseeko(stream, static_cast<off_t>(offset), origin) != 0) return static_cast<toff_t>(-1);
  return static_cast<toff_t>(ftello(stream));
}

int leave_open(thandle_t) {
  return 0;
}

toff_t size_of(thandle_t file) {
  const toff_t place = seek(file, 0, SEEK_CUR);
  const toff_t size = seek(file, 0, SEEK_END);
  seek(file, place, SEEK_SET);
  return size;
}

// Null unless libtiff can make a picture of the page.
Tiff open_page(FILE* file, std::uint64_t place) {
  if (file == nullptr) return nullptr;
  // "m": a file that shrinks while it is mapped would end the process.
  Tiff tiff(TIFFClientOpen("", "rm", file, read_some, write_nothing, seek, leave_open, size_of,
                           nullptr, nullptr));
  char reason[1024] = "";
  if (tiff == nullptr || TIFFSetSubDirectory(tiff.get(), place) != 1) return nullptr;
  if (TIFFRGBAImageOK(tiff.get(), reason) != 1) return nullptr;
  return tiff;
}

PictureHeader header_of(TIFF* tiff) {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  float x_resolution = 0.0F;
  float y_resolution = 0.0F;
  std::uint16_t unit = RESUNIT_INCH;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
  TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &x_resolution);
  TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &y_resolution);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
  PictureHeader header;
  header.width = width;
  header.height = height;
  const double per_meter = unit == RESUNIT_CENTIMETER ? 100.0 : 1.0 / 0.0254;
  const double dots = std::round(std::max(x_resolution, y_resolution) * per_meter);
  constexpr double kMost = std::numeric_limits<int>::max();
  if (dots > 0.0 && dots < kMost) header.dots_per_meter = static_cast<unsigned>(dots);
  return header;
}

// libtiff's colours are multiplied with alpha already.
BYTE on_white(std::uint32_t colour, std::uint32_t alpha) {
  return static_cast<BYTE>(std::min(colour + 255U - alpha, 255U));
}

}  // namespace

std::optional<PictureHeader> libtiff_header(const std::string& path, std::uint64_t place) {
  const InputFile file = open_input(path);
  const Tiff tiff = open_page(file.get(), place);
  if (tiff == nullptr) return std::nullopt;
  return header_of(tiff.get());
}

PageBitmap libtiff_bitmap(const std::string& path, std::uint64_t place) {
  const InputFile file = open_input(path);
  const Tiff tiff = open_page(file.get(), place);
  if (tiff == nullptr) return nullptr;
  const PictureHeader header = header_of(tiff.get());
  constexpr unsigned kMostPixels = std::numeric_limits<int>::max();
  if (header.width > kMostPixels || header.height > kMostPixels) return nullptr;
  PageBitmap bitmap(
      FreeImage_Allocate(static_cast<int>(header.width), static_cast<int>(header.height), 24));
  if (bitmap == nullptr) throw std::bad_alloc();
  std::vector<std::uint32_t> pixels(std::size_t{header.width} * header.height);
  TIFFSetField(tiff.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  constexpr int kGoOnAfterErrors = 0;
  if (TIFFReadRGBAImageOriented(tiff.get(), header.width, header.height, pixels.data(),
                                ORIENTATION_BOTLEFT, kGoOnAfterErrors) != 1) {
    return nullptr;
  }
  const std::uint32_t* from = pixels.data();
  for (unsigned y = 0; y < header.height; ++y) {
    BYTE* to = FreeImage_GetScanLine(bitmap.get(), static_cast<int>(y));
    for (unsigned x = 0; x < header.width; ++x, ++from, to += 3) {
      to[FI_RGBA_RED] = on_white(TIFFGetR(*from), TIFFGetA(*from));
      to[FI_RGBA_GREEN] = on_white(TIFFGetG(*from), TIFFGetA(*from));
      to[FI_RGBA_BLUE] = on_white(TIFFGetB(*from), TIFFGetA(*from));
    }
  }
  return bitmap;
}

}  // namespace cli

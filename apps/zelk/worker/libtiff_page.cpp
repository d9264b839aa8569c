// SPDX-License-Identifier: Apache-2.0
#include "worker/libtiff_page.h"

#include <FreeImage.h>
#include <tiffio.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <vector>

namespace cli {
namespace {

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

// Null unless libtiff can make a picture of the page.
Tiff open_page(const std::string& path, std::uint64_t place) {
  // "m": a file that shrinks while it is mapped would end the process.
  Tiff tiff(TIFFOpen(path.c_str(), "rm"));
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
  const Tiff tiff = open_page(path, place);
  if (tiff == nullptr) return std::nullopt;
  return header_of(tiff.get());
}

PageBitmap libtiff_bitmap(const std::string& path, std::uint64_t place) {
  const Tiff tiff = open_page(path, place);
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

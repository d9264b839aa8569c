// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_CLI_WORKER_PICTURES_H
#define ZELK_TESTS_CLI_WORKER_PICTURES_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "worker/document_pages.h"

// An uncompressed page of a TIFF file, with what FreeImage cannot write.
struct TiffPage {
  unsigned width = 1;
  unsigned height = 1;
  unsigned bits = 8;           // of a sample
  unsigned samples = 3;        // of a pixel
  unsigned photometric = 2;    // 0 white is zero, 1 black is zero, 2 RGB, 5 CMYK, 6 YCbCr
  unsigned format = 1;         // of samples: 1 unsigned, 2 signed, 3 floating point
  unsigned orientation = 0;    // 0 leaves the tag out
  unsigned dots_per_inch = 0;  // 0 leaves the tags out
  bool alpha = false;          // the last sample is alpha
  bool names_samples = true;   // false leaves the tag for the samples of a pixel out
  unsigned tile = 0;           // side of the one square tile that the page is; 0: a strip
  std::string pixels;
};

enum class TiffLayout { kLittleEndian, kBigEndian };

void write_tiff_pages(const std::string& path, const std::vector<TiffPage>& pages,
                      TiffLayout layout = TiffLayout::kLittleEndian);

// Values as bytes, the least byte first.
template <class Number>
std::string bytes_of(std::initializer_list<Number> values) {
  std::string bytes;
  for (const Number value : values) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  return bytes;
}

// A JPEG of make_bitmap's picture with an EXIF orientation.
void write_jpeg_with_orientation(const std::string& path, unsigned width, unsigned height,
                                 int orientation);

// Red, green, blue.
using Colour = std::array<int, 3>;

// The colours of a bitmap of 24 bits a pixel, the top row first. Empty for any other bitmap.
std::vector<std::vector<Colour>> colours_of(FIBITMAP* bitmap);

// The colours of a document's page, prepared without any option.
std::vector<std::vector<Colour>> prepared_colours(const std::string& path, int index = 0);

// True when two bitmaps have the same kind, size and bytes.
bool are_equal(FIBITMAP* a, FIBITMAP* b);

#endif  // ZELK_TESTS_CLI_WORKER_PICTURES_H

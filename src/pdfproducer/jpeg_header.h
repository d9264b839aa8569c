// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_JPEG_HEADER_H
#define ZELK_PDFPRODUCER_JPEG_HEADER_H

#include <string_view>

namespace zelk::pdf {

struct JpegHeader {
  int width = 0;       // pixels
  int height = 0;      // pixels
  int components = 0;  // 1 grey, 3 colour, 4 cyan, magenta, yellow and black
  // Adobe's programs store four components with 255 for no ink and mark the file as theirs.
  bool inverted = false;
  double dots_per_inch_x = 72;
  double dots_per_inch_y = 72;
};

// Reads the segments in front of the compressed data. The density is 72 unless the file gives one
// for both directions. Throws Error (kImage, with the reason) for anything that a viewer of PDF
// cannot decode as JPEG: other data, headers that end early, arithmetic coding, lossless coding,
// other than 8 bits or 1, 3 or 4 components.
JpegHeader read_jpeg_header(std::string_view jpeg);

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_JPEG_HEADER_H

// SPDX-License-Identifier: Apache-2.0
// The producer's reading of JPEG headers: what it accepts is within a PDF's limits, and decided by
// the headers alone.
#include "fuzz_input.h"
#include "pdfproducer/error.h"
#include "pdfproducer/jpeg_header.h"

namespace {

using zelk::pdf::JpegHeader;

bool read(std::string_view jpeg, JpegHeader& header) {
  // A copy of exactly this size, so that reading beyond it is seen.
  const std::string bytes(jpeg);
  try {
    header = zelk::pdf::read_jpeg_header(bytes);
    return true;
  } catch (const zelk::pdf::Error& error) {
    require(error.number() == zelk::pdf::ErrorNumber::kImage, "a refusal is about the image");
    return false;
  }
}

bool is_side(int pixels) {
  return pixels >= 1 && pixels <= 0xFFFF;
}

bool is_density(double dots_per_inch) {
  return dots_per_inch >= 1 && dots_per_inch <= 0xFFFF * 2.54;
}

bool same(const JpegHeader& one, const JpegHeader& other) {
  return one.width == other.width && one.height == other.height &&
         one.components == other.components && one.inverted == other.inverted &&
         one.dots_per_inch_x == other.dots_per_inch_x &&
         one.dots_per_inch_y == other.dots_per_inch_y;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view jpeg = FuzzInput(data, size).rest();
  JpegHeader header;
  if (!read(jpeg, header)) return 0;
  require(is_side(header.width) && is_side(header.height), "an accepted picture has a size");
  require(header.components == 1 || header.components == 3 || header.components == 4,
          "an accepted picture has 1, 3 or 4 components");
  require(!header.inverted || header.components == 4, "only four components are inverted");
  require(is_density(header.dots_per_inch_x) && is_density(header.dots_per_inch_y),
          "densities are positive");
  JpegHeader longer;
  require(read(std::string(jpeg) + "\xFF\xC8more", longer) && same(header, longer),
          "what follows the headers changes nothing");
  return 0;
}

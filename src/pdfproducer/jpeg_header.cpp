// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/jpeg_header.h"

#include "pdfproducer/error.h"

namespace zelk::pdf {

namespace {

constexpr int kStartOfImage = 0xD8;
constexpr int kEndOfImage = 0xD9;
constexpr int kStartOfScan = 0xDA;
constexpr int kJfif = 0xE0;
constexpr int kAdobe = 0xEE;
constexpr double kCentimetresPerInch = 2.54;

[[noreturn]] void refuse(const char* reason) {
  throw Error(ErrorNumber::kImage, std::string("not a JPEG image that can be placed: ") + reason);
}

int byte_at(std::string_view bytes, std::size_t position) {
  if (position >= bytes.size()) refuse("its headers end early");
  return static_cast<unsigned char>(bytes[position]);
}

int word_at(std::string_view bytes, std::size_t position) {
  return byte_at(bytes, position) << 8 | byte_at(bytes, position + 1);
}

bool is_frame(int marker) {
  const bool table = marker == 0xC4 || marker == 0xC8 || marker == 0xCC;
  return marker >= 0xC0 && marker <= 0xCF && !table;
}

bool stands_alone(int marker) {
  return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7);
}

void read_frame(int marker, std::string_view body, JpegHeader& header) {
  // Baseline, extended and progressive: those that a PDF viewer has to know.
  if (marker > 0xC2) refuse("its way of coding has no place in a PDF");
  if (byte_at(body, 0) != 8) refuse("its samples are not 8 bits wide");
  header.height = word_at(body, 1);
  header.width = word_at(body, 3);
  header.components = byte_at(body, 5);
  if (header.width == 0 || header.height == 0) refuse("it has no size");
  if (header.components != 1 && header.components != 3 && header.components != 4) {
    refuse("it has other than 1, 3 or 4 components");
  }
  byte_at(body, 5 + 3 * static_cast<std::size_t>(header.components));
}

void read_density(std::string_view body, JpegHeader& header) {
  if (body.size() < 12 || body.substr(0, 5) != std::string_view("JFIF\0", 5)) return;
  const int unit = byte_at(body, 7);
  const int x = word_at(body, 8);
  const int y = word_at(body, 10);
  if ((unit != 1 && unit != 2) || x == 0 || y == 0) return;
  const double per_inch = unit == 2 ? kCentimetresPerInch : 1;
  header.dots_per_inch_x = x * per_inch;
  header.dots_per_inch_y = y * per_inch;
}

}  // namespace

JpegHeader read_jpeg_header(std::string_view jpeg) {
  if (jpeg.empty()) refuse("there is no data");
  if (jpeg.size() < 2 || word_at(jpeg, 0) != (0xFF00 | kStartOfImage)) {
    refuse("it does not begin like one");
  }
  JpegHeader header;
  bool adobe = false;
  for (std::size_t position = 2;;) {
    if (byte_at(jpeg, position) != 0xFF) refuse("a marker is missing");
    while (byte_at(jpeg, position) == 0xFF) ++position;
    const int marker = byte_at(jpeg, position++);
    if (stands_alone(marker)) continue;
    if (marker == 0 || marker == kStartOfImage || marker == kEndOfImage) {
      refuse("a marker is out of place");
    }
    const auto length = static_cast<std::size_t>(word_at(jpeg, position));
    if (length < 2) refuse("a segment has no length");
    if (length > jpeg.size() - position) refuse("its headers end early");
    const std::string_view body = jpeg.substr(position + 2, length - 2);
    position += length;
    if (marker == kJfif) read_density(body, header);
    if (marker == kAdobe && body.substr(0, 5) == "Adobe") adobe = true;
    if (is_frame(marker)) read_frame(marker, body, header);
    if (marker == kStartOfScan) break;
  }
  if (header.components == 0) refuse("it has no frame");
  header.inverted = adobe && header.components == 4;
  return header;
}

}  // namespace zelk::pdf

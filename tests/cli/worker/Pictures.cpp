// SPDX-License-Identifier: Apache-2.0
#include "cli/worker/Pictures.h"

#include <cstring>

#include "support/Documents.h"

namespace {

class TiffBytes {
 public:
  explicit TiffBytes(bool big_endian) : _big_endian(big_endian) {}

  std::string number(std::uint32_t value, unsigned bytes) const {
    std::string text(bytes, '\0');
    for (unsigned i = 0; i < bytes; ++i) {
      text[_big_endian ? bytes - 1 - i : i] = static_cast<char>(value >> 8 * i & 0xFF);
    }
    return text;
  }

  // A field of up to one value in place; a number of 16 bits lies at the value's start.
  std::string field(unsigned tag, unsigned type, unsigned count, std::uint32_t value) const {
    const bool is_short = type == 3 && count == 1;
    return number(tag, 2) + number(type, 2) + number(count, 4) +
           (is_short ? number(value, 2) + number(0, 2) : number(value, 4));
  }

 private:
  bool _big_endian;
};

constexpr unsigned kShort = 3;
constexpr unsigned kLong = 4;
constexpr unsigned kRational = 5;

// A page's pixels, bits a sample and resolution, then its directory; `next` names the next one.
std::string page_bytes(const TiffPage& page, const TiffBytes& tiff, std::size_t start) {
  const auto place = [start](const std::string& bytes) {
    return static_cast<std::uint32_t>(start + 4 + bytes.size());
  };
  std::string bytes = page.pixels + std::string(page.pixels.size() % 2, '\0');
  const std::uint32_t bits_place = place(bytes);
  for (unsigned i = 0; i < page.samples; ++i) bytes += tiff.number(page.bits, 2);
  const std::uint32_t resolution_place = place(bytes);
  bytes += tiff.number(page.dots_per_inch, 4) + tiff.number(1, 4);

  std::vector<std::string> fields;
  const auto add = [&](unsigned tag, unsigned type, unsigned count, std::uint32_t value) {
    fields.push_back(tiff.field(tag, type, count, value));
  };
  add(256, kLong, 1, page.width);
  add(257, kLong, 1, page.height);
  add(258, kShort, page.samples, page.samples == 1 ? page.bits : bits_place);
  add(259, kShort, 1, 1);
  add(262, kShort, 1, page.photometric);
  const auto pixels_place = static_cast<std::uint32_t>(start + 4);
  const auto pixels_size = static_cast<std::uint32_t>(page.pixels.size());
  if (page.tile == 0) add(273, kLong, 1, pixels_place);
  if (page.orientation != 0) add(274, kShort, 1, page.orientation);
  if (page.names_samples) add(277, kShort, 1, page.samples);
  if (page.tile == 0) add(278, kLong, 1, page.height);
  if (page.tile == 0) add(279, kLong, 1, pixels_size);
  if (page.dots_per_inch != 0) {
    add(282, kRational, 1, resolution_place);
    add(283, kRational, 1, resolution_place);
    add(296, kShort, 1, 2);
  }
  if (page.tile != 0) {
    add(322, kLong, 1, page.tile);
    add(323, kLong, 1, page.tile);
    add(324, kLong, 1, pixels_place);
    add(325, kLong, 1, pixels_size);
  }
  if (page.alpha) add(338, kShort, 1, 2);
  if (page.format != 1 && page.samples == 1) add(339, kShort, 1, page.format);
  if (page.photometric == 6) add(530, kShort, 2, 0x00010001);

  const std::uint32_t directory = place(bytes);
  bytes += tiff.number(static_cast<std::uint32_t>(fields.size()), 2);
  for (const std::string& field : fields) bytes += field;
  return tiff.number(directory, 4) + bytes;
}

}  // namespace

void write_tiff_pages(const std::string& path, const std::vector<TiffPage>& pages,
                      TiffLayout layout) {
  const bool big_endian = layout == TiffLayout::kBigEndian;
  const TiffBytes tiff(big_endian);
  std::string bytes = (big_endian ? "MM" : "II") + tiff.number(42, 2);
  // Each page begins where the header or the directory before it names the next directory.
  for (const TiffPage& page : pages) bytes += page_bytes(page, tiff, bytes.size());
  write_file(path, bytes + tiff.number(0, 4));
}

void write_jpeg_with_orientation(const std::string& path, unsigned width, unsigned height,
                                 int orientation) {
  write_image(path, width, height, 7, FIF_JPEG);
  const std::string jpeg = read_file(path);
  const std::string exif =
      std::string("Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 24) +
      static_cast<char>(orientation) + std::string(7, '\0');
  const std::string segment =
      std::string("\xFF\xE1\0", 3) + static_cast<char>(exif.size() + 2) + exif;
  write_file(path, jpeg.substr(0, 2) + segment + jpeg.substr(2));
}

std::vector<std::vector<Colour>> colours_of(FIBITMAP* bitmap) {
  std::vector<std::vector<Colour>> rows;
  if (bitmap == nullptr || FreeImage_GetBPP(bitmap) != 24) return rows;
  for (unsigned y = FreeImage_GetHeight(bitmap); y-- > 0;) {
    const BYTE* pixel = FreeImage_GetScanLine(bitmap, static_cast<int>(y));
    rows.emplace_back();
    for (unsigned x = 0; x < FreeImage_GetWidth(bitmap); ++x, pixel += 3) {
      rows.back().push_back({pixel[FI_RGBA_RED], pixel[FI_RGBA_GREEN], pixel[FI_RGBA_BLUE]});
    }
  }
  return rows;
}

std::vector<std::vector<Colour>> prepared_colours(const std::string& path, int index) {
  cli::DocumentPages pages(path, {}, "");
  return colours_of(pages.prepare(index).bitmap.get());
}

bool are_equal(FIBITMAP* a, FIBITMAP* b) {
  if (a == nullptr || b == nullptr || FreeImage_GetBPP(a) != FreeImage_GetBPP(b)) return false;
  if (FreeImage_GetWidth(a) != FreeImage_GetWidth(b)) return false;
  if (FreeImage_GetHeight(a) != FreeImage_GetHeight(b)) return false;
  for (unsigned y = 0; y < FreeImage_GetHeight(a); ++y) {
    const auto row = static_cast<int>(y);
    if (std::memcmp(FreeImage_GetScanLine(a, row), FreeImage_GetScanLine(b, row),
                    FreeImage_GetLine(a)) != 0) {
      return false;
    }
  }
  return true;
}

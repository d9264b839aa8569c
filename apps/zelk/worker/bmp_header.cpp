// SPDX-License-Identifier: Apache-2.0
#include "worker/bmp_header.h"

#include <FreeImage.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

#include "worker/input_file.h"

namespace cli {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kPlainHeader = kFileHeader + 40;  // what FreeImage reads
constexpr std::size_t kMasks = 16;
constexpr std::size_t kColours = 1024;  // bytes of the largest palette

constexpr std::uint32_t kNoCompression = 0;
constexpr std::uint32_t kBitFields = 3;
constexpr std::uint32_t kAlphaBitFields = 6;

std::uint32_t number_at(const std::string& bytes, std::size_t place, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[place + i])) << 8 * i;
  }
  return value;
}

void put_number(std::string& bytes, std::size_t place, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) bytes[place + i] = static_cast<char>(value >> 8 * i & 0xFF);
}

bool has_masks_in_header(std::uint32_t header_size) {
  return header_size == 52 || header_size == 56 || header_size == 108 || header_size == 124;
}

// The fields of a file, by their places from its start.
struct Fields {
  explicit Fields(const std::string& bytes)
      : pixels(number_at(bytes, 10, 4)),
        header_size(number_at(bytes, 14, 4)),
        bits(number_at(bytes, 28, 2)),
        compression(number_at(bytes, 30, 4)) {}
  bool has_masks() const { return compression == kBitFields || compression == kAlphaBitFields; }

  std::uint32_t pixels;
  std::uint32_t header_size;
  std::uint32_t bits;
  std::uint32_t compression;
};

std::array<std::uint32_t, 4> masks_of(const std::string& bytes, const Fields& fields) {
  std::array<std::uint32_t, 4> masks = {};
  for (std::size_t i = 0; i < 4; ++i) masks[i] = number_at(bytes, kPlainHeader + 4 * i, 4);
  const bool has_alpha = fields.header_size > 52 || fields.compression == kAlphaBitFields;
  if (!has_alpha) masks[3] = 0;
  return masks;
}

// The plain header, with masks behind it where FreeImage takes them from there, or the palette.
std::string plain_start(const std::string& bytes, const Fields& fields) {
  std::string start = bytes.substr(0, kPlainHeader);
  put_number(start, 14, 40);
  if (fields.bits == 16 && fields.has_masks()) {
    put_number(start, 30, kBitFields);
    start += bytes.substr(kPlainHeader, 12);
  } else if (fields.bits == 32) {
    put_number(start, 30, kNoCompression);
  } else if (fields.bits <= 8) {
    const std::size_t colours = kFileHeader + fields.header_size;
    start += bytes.substr(colours, std::min<std::size_t>(kColours, fields.pixels - colours));
  }
  put_number(start, 10, static_cast<std::uint32_t>(start.size()));
  return start;
}

std::uint8_t sample(std::uint32_t pixel, std::uint32_t mask) {
  const int shift = std::countr_zero(mask);
  const std::uint64_t most = mask >> shift;
  return static_cast<std::uint8_t>((((pixel & mask) >> shift) * 255ULL + most / 2) / most);
}

}  // namespace

std::optional<BmpHeader> read_bmp_header(const std::string& path) {
  std::string bytes(kFileHeader + 124 + kColours, '\0');
  InputStream file(path);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  if (bytes.size() < kPlainHeader + kMasks || !bytes.starts_with("BM")) return {};
  const Fields fields(bytes);
  const bool is_masked_picture = fields.bits == 32 && fields.has_masks();
  const bool is_newer = has_masks_in_header(fields.header_size);
  if (!is_newer && !(fields.header_size == 40 && is_masked_picture)) return {};
  if (fields.pixels < kFileHeader + fields.header_size) return {};
  if (kFileHeader + fields.header_size > bytes.size()) return {};
  BmpHeader header{{plain_start(bytes, fields), fields.pixels}, std::nullopt};
  if (is_masked_picture) header.masks = masks_of(bytes, fields);
  return header;
}

void arrange_samples(FIBITMAP* bitmap, const std::array<std::uint32_t, 4>& masks) {
  constexpr int kPlaces[] = {FI_RGBA_RED, FI_RGBA_GREEN, FI_RGBA_BLUE, FI_RGBA_ALPHA};
  if (FreeImage_GetBPP(bitmap) != 32) return;
  for (unsigned y = 0; y < FreeImage_GetHeight(bitmap); ++y) {
    BYTE* pixel = FreeImage_GetScanLine(bitmap, static_cast<int>(y));
    for (unsigned x = 0; x < FreeImage_GetWidth(bitmap); ++x, pixel += 4) {
      std::uint32_t value = 0;
      std::memcpy(&value, pixel, sizeof value);
      for (std::size_t i = 0; i < masks.size(); ++i) {
        const BYTE without_mask = kPlaces[i] == FI_RGBA_ALPHA ? 255 : 0;
        pixel[kPlaces[i]] = masks[i] != 0 ? sample(value, masks[i]) : without_mask;
      }
    }
  }
  FreeImage_SetTransparent(bitmap, masks[3] != 0);
}

}  // namespace cli

// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_damage.h"

#include <FreeImage.h>
#include <fmt/format.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>

#include "worker/input_file.h"

namespace cli {
namespace {

// A file that is read from its start; what lies behind its end is zero.
class File {
 public:
  explicit File(const std::string& path) : _stream(path) {
    _stream.seekg(0, std::ios::end);
    _size = _stream ? static_cast<std::uint64_t>(_stream.tellg()) : 0;
    _stream.seekg(0);
  }
  std::uint64_t size() const { return _size; }
  std::uint64_t position() { return _stream ? static_cast<std::uint64_t>(_stream.tellg()) : _size; }
  void seek(std::uint64_t place) { _stream.seekg(static_cast<std::streamoff>(place)); }

  template <std::size_t Count>
  std::array<unsigned char, Count> read() {
    std::array<unsigned char, Count> bytes = {};
    _stream.read(reinterpret_cast<char*>(bytes.data()), Count);
    return bytes;
  }
  std::uint32_t big_endian() {
    const auto bytes = read<4>();
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
  }
  std::uint32_t little_endian() {
    const auto bytes = read<4>();
    return std::uint32_t{bytes[3]} << 24 | std::uint32_t{bytes[2]} << 16 |
           std::uint32_t{bytes[1]} << 8 | bytes[0];
  }
  // Of the next `length` bytes.
  std::uint32_t checksum(std::uint64_t length) {
    uLong sum = crc32(0, nullptr, 0);
    std::array<unsigned char, 1 << 14> block = {};
    while (length > 0) {
      const auto count =
          static_cast<std::streamsize>(std::min<std::uint64_t>(length, block.size()));
      if (!_stream.read(reinterpret_cast<char*>(block.data()), count)) break;
      sum = crc32(sum, block.data(), static_cast<uInt>(count));
      length -= static_cast<std::uint64_t>(count);
    }
    return static_cast<std::uint32_t>(sum);
  }

 private:
  InputStream _stream;
  std::uint64_t _size = 0;
};

std::string missing_bytes(const File& file, std::uint64_t told) {
  return fmt::format("the file is cut off: it has {} of the {} bytes that its header tells",
                     file.size(), told);
}

std::string png_damage(File& file) {
  constexpr std::uint64_t kSignature = 8;
  constexpr std::uint64_t kAround = 12;  // length, name and checksum of a chunk
  for (std::uint64_t place = kSignature;;) {
    if (place == file.size()) {
      return place == kSignature ? "the file holds no more than its signature"
                                 : "the file is cut off: its last chunk, IEND, is missing";
    }
    if (file.size() - place < kAround) return "the file is cut off between two chunks";
    file.seek(place);
    const std::uint64_t length = file.big_endian();
    const auto bytes = file.read<4>();
    const std::string name(bytes.begin(), bytes.end());
    const bool is_name = std::all_of(bytes.begin(), bytes.end(),
                                     [](unsigned char letter) { return std::isalpha(letter); });
    if (!is_name) return fmt::format("there is no chunk where one should be, at byte {}", place);
    if (length > file.size() - place - kAround) {
      return fmt::format("the file is cut off within its chunk {}", name);
    }
    file.seek(place + 4);
    const std::uint32_t expected = file.checksum(length + 4);
    if (file.big_endian() != expected)
      return fmt::format("the checksum of its chunk {} is wrong", name);
    if (name == "IEND") return "";
    place += length + kAround;
  }
}

// Walks the segments up to the data of the picture.
std::string jpeg_damage(File& file) {
  constexpr int kStartOfScan = 0xDA;
  file.seek(2);
  while (file.position() + 4 <= file.size()) {
    const std::uint64_t place = file.position();
    const auto head = file.read<4>();
    if (head[0] != 0xFF)
      return fmt::format("there is no segment where one should be, at byte {}", place);
    if (head[1] == kStartOfScan) return "";
    file.seek(place + 2 + (std::uint64_t{head[2]} << 8 | head[3]));
  }
  return file.size() <= 4 ? "the file holds no more than its signature"
                          : "the file is cut off before the data of the picture";
}

std::string tiff_damage(File& file) {
  const bool is_little = file.read<1>()[0] == 'I';
  file.seek(4);
  const std::uint64_t directory = is_little ? file.little_endian() : file.big_endian();
  if (directory + 2 <= file.size()) return "";
  return fmt::format("the file is cut off: its directory is at byte {}, it has {} bytes", directory,
                     file.size());
}

std::string bmp_damage(File& file) {
  file.seek(2);
  const std::uint64_t told = file.little_endian();
  return file.size() < told ? missing_bytes(file, told) : "";
}

std::string webp_damage(File& file) {
  file.seek(4);
  const std::uint64_t told = std::uint64_t{file.little_endian()} + 8;
  return file.size() < told ? missing_bytes(file, told) : "";
}

std::string gif_damage(File& file) {
  if (file.size() <= 13) return "the file holds no more than its header";
  file.seek(file.size() - 1);
  return file.read<1>()[0] == 0x3B ? "" : "the file is cut off: its end mark is missing";
}

}  // namespace

std::string picture_damage(const std::string& path, int format) {
  File file(path);
  switch (format) {
    case FIF_PNG:
      return png_damage(file);
    case FIF_JPEG:
      return jpeg_damage(file);
    case FIF_TIFF:
      return tiff_damage(file);
    case FIF_BMP:
      return bmp_damage(file);
    case FIF_WEBP:
      return webp_damage(file);
    case FIF_GIF:
      return gif_damage(file);
    default:
      return "";
  }
}

}  // namespace cli

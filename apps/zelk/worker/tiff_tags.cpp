// SPDX-License-Identifier: Apache-2.0
#include "worker/tiff_tags.h"

#include <cstdint>
#include <unordered_set>

#include "worker/input_file.h"

namespace cli {
namespace {

// Whole numbers of a TIFF file, in either byte order, in the classic layout or that of BigTIFF.
class TiffFile {
 public:
  explicit TiffFile(const std::string& path) : _file(open_input(path)) {
    _little_endian = byte() == 'I';
    byte();
    _big = number(2) == 43;
    if (_big) number(4);  // size of offsets, padding
  }

  std::uint64_t number(int bytes) {
    std::uint64_t value = 0;
    for (int i = 0; i < bytes; ++i) {
      value |= static_cast<std::uint64_t>(byte() & 0xFF)
               << 8 * (_little_endian ? i : bytes - 1 - i);
    }
    return value;
  }
  std::uint64_t offset() { return number(_big ? 8 : 4); }
  std::uint64_t count() { return number(_big ? 8 : 2); }
  // A whole number of 16 or 32 bits, in the place that a field has for its value.
  std::uint64_t value(bool is_short) {
    const int size = is_short ? 2 : 4;
    const std::uint64_t value = number(size);
    number((_big ? 8 : 4) - size);
    return value;
  }

  void seek(std::uint64_t place) {
    _good = _good && fseeko(_file.get(), static_cast<off_t>(place), SEEK_SET) == 0;
  }
  bool good() const { return _good; }

 private:
  int byte() {
    const int value = _good ? std::getc(_file.get()) : EOF;
    _good = _good && value != EOF;
    return value;
  }

  InputFile _file;
  bool _good = _file != nullptr;
  bool _little_endian = true;
  bool _big = false;
};

enum Tag {
  kImageWidth = 256,
  kImageLength = 257,
  kPhotometric = 262,
  kOrientation = 274,
  kSamplesPerPixel = 277,
  kXResolution = 282,
  kYResolution = 283,
};

// A directory, of which only those with both sides of a picture are pages.
struct Directory {
  TiffTags tags;
  bool has_width = false;
  bool has_height = false;
};

void read_field(TiffFile& file, Directory& directory) {
  constexpr std::uint64_t kShort = 3;
  const auto tag = static_cast<int>(file.number(2));
  const bool is_short = file.number(2) == kShort;
  file.offset();  // how many values
  const auto value = static_cast<int>(file.value(is_short));
  if (!file.good()) return;
  if (tag == kImageWidth) directory.has_width = true;
  if (tag == kImageLength) directory.has_height = true;
  TiffTags& tags = directory.tags;
  if (tag == kPhotometric) tags.photometric = value;
  if (tag == kSamplesPerPixel) tags.samples = value;
  if (tag == kOrientation) tags.orientation = value;
  if (tag == kXResolution || tag == kYResolution) tags.has_resolution = true;
}

}  // namespace

std::vector<TiffTags> read_tiff_tags(const std::string& path) {
  constexpr std::uint64_t kMostFields = 4096;
  std::vector<TiffTags> pages;
  std::unordered_set<std::uint64_t> seen;
  TiffFile file(path);
  for (std::uint64_t place = file.offset(); place != 0 && file.good() && seen.insert(place).second;
       place = file.offset()) {
    file.seek(place);
    const std::uint64_t fields = file.count();
    if (fields > kMostFields) break;
    Directory directory;
    directory.tags.place = place;
    for (std::uint64_t i = 0; i < fields && file.good(); ++i) read_field(file, directory);
    if (!directory.has_width || !directory.has_height) break;
    pages.push_back(directory.tags);
  }
  return pages;
}

ReplacedStart start_at_directory(const std::string& path, std::uint64_t place) {
  std::string header(16, '\0');
  InputStream file(path);
  file.read(header.data(), static_cast<std::streamsize>(header.size()));
  const bool is_little_endian = header[0] == 'I';
  const bool is_big_tiff = header[is_little_endian ? 2 : 3] == 43;
  const std::size_t size = is_big_tiff ? 8 : 4;
  if (file.gcount() < static_cast<std::streamsize>(2 * size)) return {};
  for (std::size_t i = 0; i < size; ++i) {
    header[size + (is_little_endian ? i : size - 1 - i)] = static_cast<char>(place >> 8 * i & 0xFF);
  }
  header.resize(2 * size);
  return {header, header.size()};
}

int orientation_left_to_apply(const TiffTags& tags) {
  constexpr int kYCbCr = 6;
  constexpr int kCieLab = 8;
  constexpr int kItuLab = 10;
  if (tags.orientation < 1 || tags.orientation > 8) return 1;
  const bool mirrored =
      tags.photometric == kYCbCr || (tags.photometric >= kCieLab && tags.photometric <= kItuLab);
  if (!mirrored) return tags.orientation;
  constexpr int kLeft[] = {1, 1, 1, 1, 5, 7, 5, 7};
  return kLeft[tags.orientation - 1];
}

}  // namespace cli

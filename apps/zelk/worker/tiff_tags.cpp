// SPDX-License-Identifier: Apache-2.0
#include "worker/tiff_tags.h"

#include <cstdint>
#include <cstdio>

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
  std::uint64_t value_bytes() const { return _big ? 8 : 4; }

  void seek(std::uint64_t place) {
    _good = _good && fseeko(_file.get(), static_cast<off_t>(place), SEEK_SET) == 0;
  }
  std::uint64_t place() const { return static_cast<std::uint64_t>(ftello(_file.get())); }
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

void read_field(TiffFile& file, TiffTags& tags) {
  constexpr int kPhotometric = 262;
  constexpr int kOrientation = 274;
  constexpr int kXResolution = 282;
  constexpr int kYResolution = 283;
  const auto tag = static_cast<int>(file.number(2));
  file.number(2);  // type: the numbers wanted here are 16 bits wide in every file
  file.offset();   // how many values
  const std::uint64_t value_place = file.place();
  const auto value = static_cast<int>(file.number(2));
  if (!file.good()) return;
  if (tag == kPhotometric) tags.photometric = value;
  if (tag == kOrientation) tags.orientation = value;
  if (tag == kXResolution || tag == kYResolution) tags.has_resolution = true;
  file.seek(value_place + file.value_bytes());
}

}  // namespace

std::vector<TiffTags> read_tiff_tags(const std::string& path, int page_count) {
  constexpr std::uint64_t kMostFields = 4096;
  std::vector<TiffTags> pages;
  TiffFile file(path);
  for (std::uint64_t directory = file.offset();
       directory != 0 && pages.size() < static_cast<std::size_t>(page_count);
       directory = file.offset()) {
    file.seek(directory);
    const std::uint64_t fields = file.count();
    if (!file.good() || fields > kMostFields) break;
    TiffTags tags;
    for (std::uint64_t field = 0; field < fields && file.good(); ++field) read_field(file, tags);
    pages.push_back(tags);
    if (!file.good()) break;
  }
  return pages;
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

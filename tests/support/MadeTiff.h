// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_SUPPORT_MADETIFF_H
#define ZELK_TESTS_SUPPORT_MADETIFF_H

#include <cstdint>
#include <string>
#include <vector>

struct MadePage {
  std::uint32_t side;                       // pixels
  std::vector<std::uint32_t> thumbnails{};  // sides: each is the thumbnail of the one before
  std::uint32_t private_tags = 0;           // how many tags that only their maker knows
};

// A TIFF file put together by hand, so that it may say what no program would write: uncompressed
// grey squares whose pixels, 16 bytes of 0x80 for all of them, need not be there.
class MadeTiff {
 public:
  explicit MadeTiff(const std::vector<MadePage>& pages) {
    std::vector<std::uint32_t> links;
    for (const MadePage& page : pages) {
      link(links);
      add(page.side, page.thumbnails, 0, page.private_tags, links);
    }
    set(_strip_places, place());
  }
  std::string bytes() const { return _text + std::string(16, '\x80'); }

 private:
  struct Entry {
    std::uint32_t tag, value;
  };

  std::uint32_t place() const { return static_cast<std::uint32_t>(_text.size()); }

  // Makes the link of the directory before, or that of the header, lead here.
  void link(std::vector<std::uint32_t>& links) {
    if (links.empty()) links = {4};
    set(links, place());
    links.clear();
  }
  void set(const std::vector<std::uint32_t>& places, std::uint32_t value) {
    for (const std::uint32_t at : places) _text.replace(at, 4, little_endian(value, 4));
  }

  void add(std::uint32_t side, const std::vector<std::uint32_t>& thumbnails, std::size_t next,
           std::uint32_t private_tags, std::vector<std::uint32_t>& links) {
    constexpr std::uint32_t kStripOffsets = 273;
    constexpr std::uint32_t kSubIfds = 330;
    std::vector<Entry> entries = {{256, side}, {257, side}, {258, 8},
                                  {259, 1},    {262, 1},    {273, 0},
                                  {277, 1},    {278, side}, {279, side * side}};
    const bool has_thumbnail = next < thumbnails.size();
    if (has_thumbnail) entries.push_back({kSubIfds, 0});
    for (std::uint32_t i = 0; i < private_tags; ++i) entries.push_back({60000 + i, i});
    std::vector<std::uint32_t> thumbnail_link;
    _text += little_endian(static_cast<std::uint32_t>(entries.size()), 2);
    for (const auto& [tag, value] : entries) {
      _text += little_endian(tag, 2) + little_endian(4, 2) + little_endian(1, 4);
      if (tag == kStripOffsets) _strip_places.push_back(place());
      if (tag == kSubIfds) thumbnail_link.push_back(place());
      _text += little_endian(value, 4);
    }
    links.push_back(place());
    _text += little_endian(0, 4);
    if (!has_thumbnail) return;
    set(thumbnail_link, place());
    std::vector<std::uint32_t> none;
    add(thumbnails[next], thumbnails, next + 1, 0, none);
  }

  static std::string little_endian(std::uint32_t value, int bytes) {
    std::string text;
    for (int shift = 0; shift < 8 * bytes; shift += 8)
      text += static_cast<char>(value >> shift & 0xFF);
    return text;
  }

  std::string _text = std::string("II*\0\0\0\0\0", 8);
  std::vector<std::uint32_t> _strip_places;
};

inline std::string made_tiff(const std::vector<MadePage>& pages) {
  return MadeTiff(pages).bytes();
}

#endif  // ZELK_TESTS_SUPPORT_MADETIFF_H

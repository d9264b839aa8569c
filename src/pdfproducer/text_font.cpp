// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/text_font.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace zelk::pdf {

namespace {

using CodeMap = std::map<std::uint16_t, char16_t>;

// A viewer need not accept more entries in one block.
constexpr std::size_t kMostEntries = 100;

std::string hex(unsigned value, int digits) {
  std::string text;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    text.push_back("0123456789ABCDEF"[value >> shift & 0xF]);
  }
  return text;
}

std::string code_text(unsigned code) {
  return '<' + hex(code, code < 0x80 ? 2 : 4) + '>';
}

// The entries of a block are alike, so a block for each kind.
std::string blocks(const std::vector<std::string>& entries, const char* kind) {
  std::string text;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const std::size_t left = entries.size() - i;
    if (i % kMostEntries == 0) {
      text += std::to_string(std::min(left, kMostEntries)) + " begin" + kind + '\n';
    }
    text += entries[i];
    if (i % kMostEntries == kMostEntries - 1 || left == 1)
      text += std::string("\nend") + kind + '\n';
  }
  return text;
}

std::string entries(const CodeMap& characters) {
  std::vector<std::string> single;
  std::vector<std::string> ranges;
  for (auto first = characters.begin(); first != characters.end();) {
    auto last = first;
    auto next = std::next(first);
    // Only the last byte may differ within a range. Codes are never neighbours across two rows.
    while (next != characters.end() && next->first == last->first + 1 &&
           next->second == last->second + 1 && next->second >> 8 == first->second >> 8) {
      last = next++;
    }
    const std::string unicode = '<' + hex(first->second, 4) + '>';
    if (last == first) {
      single.push_back(code_text(first->first) + unicode);
    } else {
      ranges.push_back(code_text(first->first) + code_text(last->first) + unicode);
    }
    first = next;
  }
  return blocks(single, "bfchar") + blocks(ranges, "bfrange");
}

// Without this map some viewers give ASCII as full-width letters.
std::string to_unicode_map(const CodeMap& characters, std::string_view code_space) {
  std::string map =
      "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CMapType 2 def\n/CMapName/Adobe-Identity-UCS def\n"
      "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n";
  map.append(code_space).append(entries(characters));
  return map + "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n";
}

// CIDs 1 to 95 and 814 to 939 are the half-width glyphs, 7716 the half-width space.
int write_glyphs(ObjectFile& file) {
  const int descriptor = file.reserve();
  file.add(descriptor,
           QPDFObjectHandle::parse("<< /Type /FontDescriptor /FontName /STSong-Light /Flags 6 "
                                   "/FontBBox [-25 -254 1000 880] /ItalicAngle 0 /Ascent 880 "
                                   "/Descent -120 /CapHeight 880 /StemV 93 >>"));
  auto glyphs = QPDFObjectHandle::parse(
      "<< /Type /Font /Subtype /CIDFontType0 /BaseFont /STSong-Light "
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (GB1) /Supplement 0 >> "
      "/DW 1000 /W [1 95 500 814 939 500 7716 7716 500] >>");
  glyphs.replaceKey("/FontDescriptor", ObjectFile::reference(descriptor));
  const int number = file.reserve();
  file.add(number, glyphs);
  return number;
}

int write_font(ObjectFile& file, int glyphs, const std::string& encoding, const CodeMap& characters,
               std::string_view code_space) {
  const int map = file.reserve();
  file.add_stream(map, QPDFObjectHandle::newDictionary(), to_unicode_map(characters, code_space),
                  Coding::kDeflate);
  auto font = QPDFObjectHandle::parse("<< /Type /Font /Subtype /Type0 >>");
  font.replaceKey("/BaseFont", QPDFObjectHandle::newName("/STSong-Light-" + encoding));
  font.replaceKey("/Encoding", QPDFObjectHandle::newName('/' + encoding));
  font.replaceKey("/DescendantFonts",
                  QPDFObjectHandle::newArray(std::vector{ObjectFile::reference(glyphs)}));
  font.replaceKey("/ToUnicode", ObjectFile::reference(map));
  const int number = file.reserve();
  file.add(number, font);
  return number;
}

}  // namespace

void TextFont::Used::add(const GbkCharacter& character) {
  auto& characters = character.plane == GbkPlane::kGb2312 ? _gb2312 : _extension;
  characters.emplace(character.code, character.unicode);
}

void TextFont::Used::add(const Used& other) {
  _gb2312.insert(other._gb2312.begin(), other._gb2312.end());
  _extension.insert(other._extension.begin(), other._extension.end());
}

const char* TextFont::resource_name(GbkPlane plane) {
  return plane == GbkPlane::kGb2312 ? "/G" : "/K";
}

double TextFont::width(const GbkCharacter& character) {
  return character.is_half_width() ? 0.5 : 1;
}

void TextFont::write(ObjectFile& file, int resources, const Used& used) {
  const int glyphs = write_glyphs(file);
  auto fonts = QPDFObjectHandle::newDictionary();
  const auto add = [&](GbkPlane plane, const char* encoding, const CodeMap& characters,
                       std::string_view code_space) {
    if (characters.empty()) return;
    const int font = write_font(file, glyphs, encoding, characters, code_space);
    fonts.replaceKey(resource_name(plane), ObjectFile::reference(font));
  };
  add(GbkPlane::kGb2312, kEncoding, used._gb2312,
      "2 begincodespacerange\n<00><80>\n<A1A1><FEFE>\nendcodespacerange\n");
  add(GbkPlane::kExtension, "GBK-EUC-H", used._extension,
      "1 begincodespacerange\n<8140><FEFE>\nendcodespacerange\n");
  file.add(resources, fonts);
}

}  // namespace zelk::pdf

// SPDX-License-Identifier: Apache-2.0
#include "worker/foreign_content.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "exchange/names.h"
#include "worker/input_file.h"

namespace cli {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kStart = 4096;  // bytes that are looked at

struct Signature {
  std::size_t offset;
  std::string_view bytes;
  const char* name;
};

constexpr Signature kSignatures[] = {
    {0, "PK\x03\x04"sv, "a ZIP archive"},
    {0, "PK\x05\x06"sv, "an empty ZIP archive"},
    {0, "\x1F\x8B"sv, "a gzip archive"},
    {0, "BZh"sv, "a bzip2 archive"},
    {0,
     "\xFD"
     "7zXZ\0"sv,
     "an xz archive"},
    {0, "7z\xBC\xAF\x27\x1C"sv, "a 7-Zip archive"},
    {0, "Rar!\x1A\x07"sv, "a RAR archive"},
    {0, "\x28\xB5\x2F\xFD"sv, "a Zstandard archive"},
    {257, "ustar"sv, "a tar archive"},
    {0, "\xD0\xCF\x11\xE0"sv, "an Office document of the old kind"},
    {0, "{\\rtf"sv, "a Rich Text document"},
    {0, "%!PS"sv, "a PostScript document"},
    {0, "AT&TFORM"sv, "a DjVu document"},
    {4, "ftypheic"sv, "a HEIF picture"},
    {4, "ftypheix"sv, "a HEIF picture"},
    {4, "ftypmif1"sv, "a HEIF picture"},
    {4, "ftypavif"sv, "an AVIF picture"},
    {4, "ftyp"sv, "a video"},
    {4, "jP  \r\n"sv, "a JPEG 2000 picture"},
    {4, "JXL \r\n"sv, "a JPEG XL picture"},
    {0, "\xFF\x4F\xFF\x51"sv, "a JPEG 2000 picture"},
    {0, "\xFF\x0A"sv, "a JPEG XL picture"},
    {0, "8BPS"sv, "a Photoshop picture"},
    {0, "\x00\x00\x01\x00"sv, "an icon"},
    {0,
     "\x7F"
     "ELF"sv,
     "a program"},
    {0, "MZ"sv, "a program"},
};

std::string start_of(const std::string& path) {
  std::string start(kStart, '\0');
  InputStream file(path);
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<std::size_t>(file.gcount()));
  return start;
}

// Its first tag counts; spaces, a byte order mark and the case of letters do not.
std::string markup_of(std::string_view start) {
  if (start.starts_with("\xEF\xBB\xBF")) start.remove_prefix(3);
  start.remove_prefix(std::min(start.find_first_not_of(" \t\r\n"), start.size()));
  std::string words(start.substr(0, 512));
  std::transform(words.begin(), words.end(), words.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  if (words.starts_with("<!doctype html") || words.starts_with("<html")) return "an HTML page";
  if (words.starts_with("<svg") ||
      (words.starts_with("<?xml") && words.find("<svg") != words.npos)) {
    return "an SVG drawing";
  }
  return words.starts_with("<?xml") ? "an XML document" : "";
}

bool is_text(std::string_view start) {
  const bool is_cut = start.size() == kStart;
  while (!start.empty()) {
    const auto first = static_cast<unsigned char>(start.front());
    const bool is_control = first < 0x20 && "\t\n\r\f"sv.find(start.front()) == start.npos;
    const std::size_t length = utf8_character_length(start);
    if (length == 0) return is_cut && start.size() < 4;
    if (is_control || first == 0x7F) return false;
    start.remove_prefix(length);
  }
  return true;
}

}  // namespace

std::string foreign_content(const std::string& path) {
  const std::string start = start_of(path);
  if (start.empty()) return "";
  for (const Signature& known : kSignatures) {
    const std::string_view all(start);
    if (all.size() >= known.offset && all.substr(known.offset).starts_with(known.bytes)) {
      return known.name;
    }
  }
  std::string markup = markup_of(start);
  if (!markup.empty()) return markup;
  return is_text(start) ? "a text" : "";
}

bool holds_only_zeros(const std::string& path) {
  InputStream file(path);
  std::string block(std::size_t{1} << 16, '\0');
  bool is_empty = true;
  for (;;) {
    file.read(block.data(), static_cast<std::streamsize>(block.size()));
    const auto count = static_cast<std::size_t>(file.gcount());
    if (count == 0) return !is_empty;
    is_empty = false;
    if (std::string_view(block.data(), count).find_first_not_of('\0') != std::string::npos) {
      return false;
    }
  }
}

}  // namespace cli

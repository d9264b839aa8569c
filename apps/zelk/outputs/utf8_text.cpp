// SPDX-License-Identifier: Apache-2.0
#include "outputs/utf8_text.h"

#include "exchange/names.h"

namespace cli {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

unsigned char byte_at(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

}  // namespace

std::string displayable(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = utf8_character_length(text.substr(at));
    if (text[at] == '\r' || text[at] == '\f') {
      const bool pair = text.substr(at, 2) == "\r\n";
      if (!pair) result += '\n';
    } else if (length == 0 || (byte_at(text, at) < 0x20 && text[at] != '\t' && text[at] != '\n')) {
      result += kReplacement;
    } else {
      result += text.substr(at, length);
    }
    at += length == 0 ? 1 : length;
  }
  return result;
}

std::string html_escaped(std::string_view text) {
  std::string result;
  for (const char byte : text) {
    switch (byte) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      case '\'':
        result += "&#39;";
        break;
      default:
        result += byte;
    }
  }
  return result;
}

std::size_t utf16_length(std::string_view text) {
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const unsigned char byte = byte_at(text, at);
    units += byte >= 0xF0 ? 2 : static_cast<std::size_t>((byte & 0xC0) != 0x80);
  }
  return units;
}

std::string utf8_of(char16_t unit) {
  const auto bits = [unit](int shift, int mask) { return static_cast<char>(unit >> shift & mask); };
  const auto next = [&](int shift) { return static_cast<char>(0x80 | bits(shift, 0x3F)); };
  if (unit < 0x80) return {bits(0, 0x7F)};
  if (unit < 0x800) return {static_cast<char>(0xC0 | bits(6, 0x1F)), next(0)};
  if (unit >= 0xD800 && unit < 0xE000) return std::string(kReplacement);
  return {static_cast<char>(0xE0 | bits(12, 0x0F)), next(6), next(0)};
}

}  // namespace cli

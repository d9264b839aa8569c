// SPDX-License-Identifier: Apache-2.0
#include "console/columns.h"

#include <locale.h>
#include <wchar.h>

#include <vector>

#include "exchange/names.h"

namespace cli {
namespace {

constexpr std::string_view kCut = "...";

struct Character {
  size_t start;
  int columns;
};

char32_t decode(std::string_view character) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(character[i]); };
  if (character.size() == 1) return byte(0);
  char32_t value = byte(0) & (0x7FU >> character.size());
  for (size_t i = 1; i < character.size(); ++i) value = (value << 6) | (byte(i) & 0x3FU);
  return value;
}

std::vector<Character> measure(std::string_view text) {
  // The widths of characters are the C library's, in a locale that is there whatever the user set.
  const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  const locale_t before = utf8 == nullptr ? nullptr : uselocale(utf8);
  std::vector<Character> characters;
  for (size_t i = 0; i < text.size();) {
    const size_t length = utf8_character_length(text.substr(i));
    int columns = 1;
    if (length > 0) columns = wcwidth(static_cast<wchar_t>(decode(text.substr(i, length))));
    characters.push_back({i, columns < 0 ? 1 : columns});
    i += length == 0 ? 1 : length;
  }
  if (utf8 != nullptr) {
    uselocale(before);
    freelocale(utf8);
  }
  return characters;
}

}  // namespace

int columns_of(std::string_view text) {
  int columns = 0;
  for (const Character& character : measure(text)) columns += character.columns;
  return columns;
}

std::string fit_columns(std::string_view text, int columns) {
  if (columns_of(text) <= columns) return std::string(text);
  int left = columns - static_cast<int>(kCut.size());
  if (left < 1) return "";
  const std::vector<Character> characters = measure(text);
  size_t start = text.size();
  for (size_t i = characters.size(); i-- > 0;) {
    left -= characters[i].columns;
    if (left < 0) break;
    // A combining mark stays with what it combines with.
    if (characters[i].columns > 0) start = characters[i].start;
  }
  return std::string(kCut) + std::string(text.substr(start));
}

}  // namespace cli

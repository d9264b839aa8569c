// SPDX-License-Identifier: Apache-2.0
#include "script.h"

#include <iconv.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace tesseract_engine {
namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// In ascending order.
constexpr Range kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},
    {0xA960, 0xA97F}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE4F},   {0xFF01, 0xFF60},
    {0xFFE0, 0xFFE6}, {0x1B000, 0x1B2FF}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD},
};

constexpr Range kWidePunctuation[] = {
    {0x3001, 0x3003}, {0x3008, 0x3011}, {0x3014, 0x301F}, {0xFE30, 0xFE4F},
    {0xFF01, 0xFF0F}, {0xFF1A, 0xFF20}, {0xFF3B, 0xFF40}, {0xFF5B, 0xFF60},
};

constexpr Range kNoLetters[] = {
    {0x00, 0x40},     {0x5B, 0x60},     {0x7B, 0xA9},     {0xAB, 0xB4},     {0xB6, 0xB9},
    {0xBB, 0xBF},     {0xD7, 0xD7},     {0xF7, 0xF7},     {0x2000, 0x2BFF}, {0x2E00, 0x2E7F},
    {0x2FF0, 0x3004}, {0x3007, 0x3020}, {0x3030, 0x303F}, {0x30FB, 0x30FB}, {0x3200, 0x33FF},
    {0xE000, 0xF8FF}, {0xFE10, 0xFE6F}, {0xFF00, 0xFF20}, {0xFF3B, 0xFF40}, {0xFF5B, 0xFF65},
    {0xFFE0, 0xFFFF},
};

constexpr const char32_t* kLigatures[] = {U"ff", U"fi", U"fl", U"ffi", U"ffl", U"st", U"st"};

template <std::size_t N>
bool contains(const Range (&ranges)[N], char32_t code) {
  const auto* range = std::lower_bound(std::begin(ranges), std::end(ranges), code,
                                       [](const Range& r, char32_t c) { return r.last < c; });
  return range != std::end(ranges) && range->first <= code;
}

void append_utf8(std::string& out, char32_t code) {
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) code = 0xFFFD;
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | (code >> 6));
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | (code >> 12));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | (code >> 18));
    put(0x80 | ((code >> 12) & 0x3F));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

}  // namespace

bool is_wide(char32_t code) {
  return contains(kWide, code);
}

bool is_wide_punctuation(char32_t code) {
  return contains(kWidePunctuation, code);
}

bool is_letter(char32_t code) {
  return !contains(kNoLetters, code);
}

bool takes_two_bytes_in_gbk(char32_t code) {
  if (code < 0x80) return false;
  auto* const converter = iconv_open("GBK", "UTF-8");
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return false;
  std::string utf8;
  append_utf8(utf8, code);
  char gbk[4];
  char* in = utf8.data();
  char* out = gbk;
  std::size_t in_left = utf8.size();
  std::size_t out_left = sizeof gbk;
  iconv(converter, &in, &in_left, &out, &out_left);
  iconv_close(converter);
  return out - gbk == 2;
}

bool keeps_blank(char32_t before, char32_t after) {
  if (is_wide_punctuation(before) || is_wide_punctuation(after)) return false;
  return !(is_wide(before) && is_wide(after));
}

bool blank_between(const Word& before, const Word& after) {
  if (!after.blank_before || before.characters.empty() || after.characters.empty()) return false;
  return keeps_blank(before.characters.back().text.back(), after.characters.front().text.front());
}

std::u32string letters(const Character& character) {
  std::u32string out;
  for (const char32_t code : character.text) {
    if (code >= 0xFB00 && code <= 0xFB06) {
      out += kLigatures[code - 0xFB00];
    } else {
      out.push_back(code);
    }
  }
  return out;
}

std::string to_utf8(const std::u32string& text) {
  std::string out;
  out.reserve(text.size() * 3);
  for (const char32_t code : text) append_utf8(out, code);
  return out;
}

}  // namespace tesseract_engine

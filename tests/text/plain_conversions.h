// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_TEXT_PLAIN_CONVERSIONS_H
#define ZELK_TESTS_TEXT_PLAIN_CONVERSIONS_H

#include <cstddef>
#include <string>
#include <vector>

// A second implementation of the conversions between UTF-8 and UTF-16, written for plainness: whole
// vectors, one character at a time, ranges instead of bits.
namespace plain {

using Units = std::vector<unsigned short>;

struct Expected {
  std::size_t bytesRead = 0;
  Units units;  // with the zero unit when a NUL was met
  bool terminated = false;
};

// The value of the sequence at `at`, or -1; moves `at` behind it.
inline long sequence(const std::string& text, std::size_t& at) {
  const int lead = static_cast<unsigned char>(text[at++]);
  if (lead <= 0x7F) return lead;
  const int folded = lead >= 0xC0 ? lead : lead + 0x40;
  if (folded >= 0xF8) return -1;
  const int more = folded >= 0xF0 ? 3 : folded >= 0xE0 ? 2 : 1;
  long value = folded - (more == 3 ? 0xF0 : more == 2 ? 0xE0 : 0xC0);
  for (int i = 0; i < more; ++i) {
    if (at == text.size()) return -1;
    const int next = static_cast<unsigned char>(text[at]);
    if (next <= 0x7F) return -1;
    value = value * 64 + next % 64;
    ++at;
  }
  return value;
}

inline Expected expectUnits(const std::string& text) {
  Expected result;
  while (result.bytesRead < text.size() && !result.terminated) {
    long value = sequence(text, result.bytesRead);
    result.terminated = value == 0;
    if (value == -1) value = '?';
    if (value < 0x10000) {
      result.units.push_back(static_cast<unsigned short>(value));
    } else {
      const long offset = (value - 0x10000) % 0x100000;
      result.units.push_back(static_cast<unsigned short>(0xD800 + offset / 1024));
      result.units.push_back(static_cast<unsigned short>(0xDC00 + offset % 1024));
    }
  }
  return result;
}

inline std::string bytesOf(long value) {
  const auto tail = [](long bits) { return static_cast<char>(0x80 + bits % 64); };
  if (value < 0x80) return {static_cast<char>(value)};
  if (value < 0x800) return {static_cast<char>(0xC0 + value / 64), tail(value)};
  if (value < 0x10000) {
    return {static_cast<char>(0xE0 + value / 4096), tail(value / 64), tail(value)};
  }
  return {static_cast<char>(0xF0 + value / 262144), tail(value / 4096), tail(value / 64),
          tail(value)};
}

// The characters of a text without zeros, each as its bytes.
inline std::vector<std::string> expectCharacters(const Units& units) {
  std::vector<std::string> characters;
  for (std::size_t i = 0; i < units.size(); ++i) {
    long value = units[i];
    if (value >= 0xD800 && value <= 0xDFFF) {
      const bool alone = i + 1 == units.size();
      value = alone ? '?' : 0x10000 + (value % 1024) * 1024 + units[i + 1] % 1024;
      ++i;
    }
    characters.push_back(bytesOf(value));
  }
  return characters;
}

}  // namespace plain

#endif  // ZELK_TESTS_TEXT_PLAIN_CONVERSIONS_H

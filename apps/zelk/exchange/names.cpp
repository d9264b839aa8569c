// SPDX-License-Identifier: Apache-2.0
#include "exchange/names.h"

#include <fmt/format.h>

namespace cli {
namespace {

unsigned byte_at(std::string_view bytes, std::size_t index) {
  return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
}

std::string escaped_byte(std::string_view bytes, std::size_t index) {
  return fmt::format("\\x{:02X}", byte_at(bytes, index));
}

bool is_utf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t length = utf8_character_length(bytes.substr(i));
    if (length == 0) return false;
    i += length;
  }
  return true;
}

std::string without_controls(std::string_view bytes, std::string_view kept) {
  std::string line;
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t length = utf8_character_length(bytes.substr(i));
    const std::size_t taken = length == 0 ? 1 : length;
    const bool stays = kept.find(bytes[i]) != std::string_view::npos;
    if (is_control_character(bytes.substr(i), length) && !stays) {
      for (std::size_t k = 0; k < taken; ++k) line += escaped_byte(bytes, i + k);
    } else {
      line += bytes.substr(i, taken);
    }
    i += taken;
  }
  return line;
}

}  // namespace

std::size_t utf8_character_length(std::string_view bytes) {
  if (bytes.empty()) return 0;
  const unsigned first = byte_at(bytes, 0);
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4) return 0;
  const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte_at(bytes, i) & 0xC0) != 0x80) return 0;
  }
  // The second byte tells overlong forms, surrogates and what lies beyond Unicode.
  const unsigned second = byte_at(bytes, 1);
  const bool wrong = (first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
                     (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90);
  return wrong ? 0 : length;
}

bool is_control_character(std::string_view bytes, std::size_t length) {
  const unsigned first = byte_at(bytes, 0);
  if (length == 0) return first >= 0x80 && first < 0xA0;
  if (length == 2) return first == 0xC2 && byte_at(bytes, 1) < 0xA0;
  return length == 1 && (first < 0x20 || first == 0x7F);
}

ShownName shown_name(std::string_view bytes) {
  if (is_utf8(bytes)) return {std::string(bytes), false};
  ShownName shown{"", true};
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t length = utf8_character_length(bytes.substr(i));
    if (length == 0 || bytes[i] == '\\') {
      shown.text += escaped_byte(bytes, i++);
    } else {
      shown.text += bytes.substr(i, length);
      i += length;
    }
  }
  return shown;
}

std::string line_name(std::string_view bytes) {
  return without_controls(bytes, "");
}

std::string lines_text(std::string_view bytes) {
  return without_controls(bytes, "\n");
}

}  // namespace cli

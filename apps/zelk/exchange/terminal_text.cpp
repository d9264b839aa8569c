// SPDX-License-Identifier: Apache-2.0
#include "exchange/terminal_text.h"

#include <utility>

#include "exchange/names.h"

namespace cli {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::size_t kLongestCharacter = 4;
constexpr std::string_view kKept = "\t\n\f";

// Whether more bytes could make a character, or a line end, of these last ones of a block.
bool is_unfinished(std::string_view last) {
  if (last == "\r") return true;
  if (last.size() >= kLongestCharacter) return false;
  for (const char* const ending :
       {"\x80", "\xA0", "\x80\x80", "\xA0\x80", "\x80\x80\x80", "\xA0\x80\x80"}) {
    if (utf8_character_length(std::string(last) + ending) > last.size()) return true;
  }
  return false;
}

std::string shown(std::string_view character, std::size_t length) {
  const bool kept = kKept.find(character[0]) != std::string_view::npos;
  if (length == 0 || (is_control_character(character, length) && !kept)) {
    return std::string(kReplacement);
  }
  return std::string(character.substr(0, length));
}

}  // namespace

std::string TerminalText::take(std::string_view bytes) {
  const std::string text = std::exchange(_waiting, "") + std::string(bytes);
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view ahead = std::string_view(text).substr(at);
    const std::size_t length = utf8_character_length(ahead);
    if (ahead == "\r" || (length == 0 && is_unfinished(ahead))) {
      _waiting = ahead;
      break;
    }
    if (!ahead.starts_with("\r\n")) result += shown(ahead, length);
    at += length == 0 ? 1 : length;
  }
  return result;
}

std::string TerminalText::rest() {
  return _waiting.empty() ? "" : (_waiting.clear(), std::string(kReplacement));
}

}  // namespace cli

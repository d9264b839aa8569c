// SPDX-License-Identifier: Apache-2.0
#include "supervisor/worker_log.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "exchange/names.h"

namespace cli {
namespace {

constexpr std::size_t kTail = 4096;
constexpr std::size_t kLongestCharacter = 4;

// How many bytes at the end may be the beginning of a character.
std::size_t cut_off(std::string_view bytes) {
  const std::size_t most = std::min(bytes.size(), kLongestCharacter - 1);
  for (std::size_t count = 1; count <= most; ++count) {
    const auto first = static_cast<unsigned char>(bytes[bytes.size() - count]);
    if (first < 0x80) return 0;
    if (first < 0xC0) continue;  // behind the first byte
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    return count < length ? count : 0;
  }
  return 0;
}

std::string visible(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t length = utf8_character_length(bytes);
    const std::string_view character = bytes.substr(0, std::max<std::size_t>(1, length));
    if (character == "\n" || character == "\t") {
      text += character;
    } else {
      text += length == 0 ? shown_name(character).text : line_name(character);
    }
    bytes.remove_prefix(character.size());
  }
  return text;
}

}  // namespace

std::string WorkerLog::add(std::string_view bytes) {
  _pending += bytes;
  const std::string whole = _pending.substr(0, _pending.size() - cut_off(_pending));
  _pending.erase(0, whole.size());
  std::string text = visible(whole);
  _tail += text;
  if (_tail.size() > kTail) _tail.erase(0, _tail.size() - kTail);
  return text;
}

std::string WorkerLog::last_words() const {
  std::string words;
  std::istringstream lines(_tail);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) words += (words.empty() ? "" : "; ") + line;
  }
  return words;
}

}  // namespace cli

// SPDX-License-Identifier: Apache-2.0
#include "text_promises.h"

#include <cmath>

#include "text/StringFormat.h"

using qv::StringFormat;

plain::Units units_of(const std::string& text) {
  plain::Units units;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    const unsigned unit =
        static_cast<unsigned char>(text[i]) + 256U * static_cast<unsigned char>(text[i + 1]);
    if (unit == 0) break;
    units.push_back(static_cast<unsigned short>(unit));
  }
  return units;
}

namespace {

// The bytes that a buffer holds afterwards, dots where nothing was written.
std::string expected_buffer(const plain::Units& units, int capacity, int& written) {
  std::string bytes;
  bool whole = true;
  for (const std::string& character : plain::expectCharacters(units)) {
    whole = whole && size_of(bytes) + size_of(character) <= capacity;
    if (whole) bytes += character;
  }
  written = size_of(bytes);
  if (whole && written < capacity) bytes += '\0';
  bytes.resize(static_cast<std::size_t>(capacity), '.');
  return bytes;
}

std::string all_bytes(const plain::Units& units) {
  std::string bytes;
  for (const std::string& character : plain::expectCharacters(units)) bytes += character;
  return bytes;
}

// Cells of the units, with bits above the low 16 that must not count.
std::wstring cells_of(const plain::Units& units) {
  std::wstring cells;
  for (const unsigned short unit : units) {
    cells += static_cast<wchar_t>(unit % 3U == 0 ? unit : unit | unit % 7U << 24U);
  }
  return cells;
}

}  // namespace

void units_to_bytes(const std::string& text, int capacity) {
  plain::Units units = units_of(text);
  int expected = 0;
  const std::string buffer = expected_buffer(units, capacity, expected);
  const int total = size_of(all_bytes(units));
  units.push_back(0);
  std::string out(buffer.size(), '.');
  require(StringFormat::utf16toutf8(out.data(), units.data(), capacity) == expected,
          "utf16toutf8 tells the bytes written");
  require(out == buffer, "utf16toutf8 writes whole characters and no more");
  require(StringFormat::utf16toutf8(nullptr, units.data(), 0) == total,
          "utf16toutf8 measures without a buffer");
}

void cells_to_bytes(const std::string& text, int capacity) {
  const plain::Units units = units_of(text);
  const std::wstring cells = cells_of(units);
  int expected = 0;
  const std::string buffer = expected_buffer(units, capacity, expected);
  std::string out(buffer.size(), '.');
  require(StringFormat::wchartoutf8(out.data(), cells.c_str(), capacity) == expected,
          "wchartoutf8 tells the bytes written");
  require(out == buffer, "wchartoutf8 writes whole characters and no more");
  require(StringFormat::wstrtostr(cells) == all_bytes(units), "wstrtostr converts everything");
}

void decoded_character(const std::string& text) {
  if (!text.empty()) {
    const char* next = text.data();
    std::size_t at = 0;
    const int decoded = StringFormat::decodeUtf8(next, text.data() + text.size());
    require(decoded == plain::sequence(text, at), "decodeUtf8 gives the character");
    require(next == text.data() + at, "decodeUtf8 stops behind the character");
  }
  const plain::Units units = units_of(text);
  if (units.empty()) return;
  const unsigned short* next = units.data();
  const int decoded = StringFormat::decodeUtf16(next, units.data() + units.size());
  const std::string bytes = decoded < 0 ? "?" : plain::bytesOf(decoded);
  require(bytes == plain::expectCharacters(units).front(), "decodeUtf16 gives the character");
  require(next - units.data() == (decoded > 0xFFFF ? 2 : 1), "decodeUtf16 stops behind it");
}

void encoded_character(int character) {
  const bool is_short = character >= 0 && character <= 0xFFFF;
  std::string bytes(4, '.');
  int length = 0;
  StringFormat::encodeUtf8(character, bytes.data(), length);
  bytes.resize(static_cast<std::size_t>(length));
  // Four bytes carry the low 21 bits; the second implementation needs one above 16 to take four.
  const long kept = character & 0x1FFFFF;
  std::string expected = plain::bytesOf(is_short || kept > 0xFFFF ? kept : kept + 0x10000);
  if (!is_short && kept <= 0xFFFF) expected[1] = static_cast<char>(expected[1] - 0x10);
  require(bytes == expected, "encodeUtf8 gives the bytes");

  unsigned short pair[2] = {};
  int count = 0;
  StringFormat::encodeUtf16(character, pair, count);
  const std::int64_t offset = (std::int64_t{character} - 0x10000) & 0xFFFFF;
  require(count == (is_short ? 1 : 2), "encodeUtf16 tells the units");
  require(is_short ? pair[0] == character
                   : pair[0] == 0xD800 + offset / 1024 && pair[1] == 0xDC00 + offset % 1024,
          "encodeUtf16 gives the units");
}

void numbers_in_text(const std::string& text, int base) {
  const plain::Units units = units_of(text);
  const std::wstring cells = cells_of(units);
  const std::string bytes = all_bytes(units);
  require(StringFormat::wcstol(cells.c_str(), nullptr, base) ==
              static_cast<int>(std::strtol(bytes.c_str(), nullptr, base)),
          "wcstol parses as the C library does");
  require(StringFormat::wstrtoi(cells.c_str()) ==
              static_cast<int>(std::strtol(bytes.c_str(), nullptr, 10)),
          "wstrtoi parses as the C library does");
  const double value = StringFormat::wstrtof(cells.c_str());
  const double expected = std::strtod(bytes.c_str(), nullptr);
  require(value == expected || (std::isnan(value) && std::isnan(expected)),
          "wstrtof parses as the C library does");
}

void numbers_to_text(int number) {
  char expected[16];
  const int length = std::snprintf(expected, sizeof expected, "%d", number);
  std::string narrow(12, '.');
  std::wstring wide(12, L'.');
  require(StringFormat::_itostr(number, narrow.data(), 10) == length, "_itostr tells the length");
  require(StringFormat::_itowstr(number, wide.data(), 10) == length, "_itowstr tells the length");
  require(narrow.data() == std::string_view(expected), "_itostr writes decimal");
  require(std::string(wide.begin(), wide.begin() + length) == expected, "_itowstr too");
}

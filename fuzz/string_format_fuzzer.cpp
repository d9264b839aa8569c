// SPDX-License-Identifier: Apache-2.0
// Every conversion of StringFormat against the plain second implementation of the tests.
#include <vector>

#include "fuzz_input.h"
#include "text/StringFormat.h"
#include "text/plain_conversions.h"
#include "text_promises.h"

using qv::StringFormat;

namespace {

void bytes_to_units(const std::string& text) {
  const plain::Expected expected = plain::expectUnits(text);
  plain::Units out(text.size() + 1, 0xEEEE);
  const int read = StringFormat::utf8toutf16(out.data(), text.data(), size_of(text));
  require(read == static_cast<int>(expected.bytesRead), "utf8toutf16 tells the bytes read");
  plain::Units padded = expected.units;
  padded.resize(out.size(), 0xEEEE);
  require(out == padded, "utf8toutf16 writes what it should and no more");
  const int units = StringFormat::utf8toutf16(nullptr, text.data(), size_of(text));
  require(units == size_of(expected.units) - (expected.terminated ? 1 : 0), "units are counted");
}

void bytes_to_cells(const std::string& text, int capacity) {
  const plain::Expected expected = plain::expectUnits(text + '\0');
  const std::wstring wide(expected.units.begin(), expected.units.end() - 1);
  require(StringFormat::strtowstr(text) == wide, "strtowstr converts up to the zero");
  std::wstring cells(static_cast<std::size_t>(capacity), L'.');
  std::wstring filled = wide;
  filled.resize(cells.size(), L'\0');
  const int result = StringFormat::utf8towchar(cells.data(), text.c_str(), capacity);
  const int needed = static_cast<int>(expected.bytesRead);
  require(result == (needed > capacity ? needed : 0), "utf8towchar tells the room it needs");
  if (result != 0) filled.assign(cells.size(), L'.');
  require(cells == filled, "utf8towchar fills all cells or none");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const int capacity = input.below(256);
  const auto number = input.number<std::int32_t>();
  const int base = input.below(40);
  const std::string text(input.rest());
  bytes_to_units(text);
  bytes_to_cells(text, capacity);
  units_to_bytes(text, capacity);
  cells_to_bytes(text, capacity);
  decoded_character(text);
  encoded_character(number);
  numbers_in_text(text, base);
  numbers_to_text(number);
  return 0;
}

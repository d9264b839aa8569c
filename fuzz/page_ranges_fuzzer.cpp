// SPDX-License-Identifier: Apache-2.0
// Page ranges against a reading of their text one character at a time and a look at every page.
#include "options/page_ranges.h"

#include <climits>

#include "fuzz_input.h"

namespace {

// A number from 1 up at the start of the text, which it moves behind; 0 where there is none.
std::int64_t number_at(std::string_view& text) {
  std::int64_t value = 0;
  while (!text.empty() && text[0] >= '0' && text[0] <= '9') {
    value = std::min<std::int64_t>(10 * value + (text[0] - '0'), std::int64_t{INT_MAX} + 1);
    text.remove_prefix(1);
  }
  return value > INT_MAX ? 0 : value;
}

// The page's choice; false for a text that is none.
bool choose(std::string_view text, int page, bool& chosen) {
  chosen = false;
  for (;;) {
    const std::int64_t first = number_at(text);
    std::int64_t last = first;
    if (first == 0) return false;
    if (text.starts_with('-')) {
      text.remove_prefix(1);
      last = text.empty() || text[0] == ',' ? INT_MAX : number_at(text);
    }
    if (last < first) return false;
    chosen = chosen || (page >= first && page <= last);
    if (text.empty()) return true;
    if (text[0] != ',') return false;
    text.remove_prefix(1);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const int page_count = input.below(256);
  const std::string_view text = input.rest();
  const auto ranges = cli::parse_page_ranges(text);
  bool chosen = false;
  require(ranges.has_value() == choose(text, 1, chosen), "ranges are what their text says");
  if (!ranges) return 0;
  std::vector<int> expected;
  for (int page = 1; page <= page_count; ++page) {
    if (choose(text, page, chosen) && chosen) expected.push_back(page);
  }
  require(cli::choose_pages(*ranges, page_count) == expected, "each chosen page comes once");
  return 0;
}

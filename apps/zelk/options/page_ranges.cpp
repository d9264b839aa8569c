// SPDX-License-Identifier: Apache-2.0
#include "options/page_ranges.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace cli {
namespace {

// A whole number from 1 up; nothing for anything else.
std::optional<int> parse_page(std::string_view text) {
  int page = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), page);
  if (error != std::errc() || end != text.data() + text.size() || page < 1) return std::nullopt;
  return page;
}

std::optional<PageRange> parse_range(std::string_view text) {
  const size_t dash = text.find('-');
  const std::optional<int> first = parse_page(text.substr(0, dash));
  if (!first) return std::nullopt;
  if (dash == std::string_view::npos) return PageRange{*first, *first};
  if (dash + 1 == text.size()) return PageRange{*first, 0};
  const std::optional<int> last = parse_page(text.substr(dash + 1));
  if (!last || *last < *first) return std::nullopt;
  return PageRange{*first, *last};
}

}  // namespace

std::optional<PageRanges> parse_page_ranges(std::string_view text) {
  PageRanges ranges;
  for (size_t start = 0; start <= text.size();) {
    const size_t comma = std::min(text.find(',', start), text.size());
    const std::optional<PageRange> range = parse_range(text.substr(start, comma - start));
    if (!range) return std::nullopt;
    ranges.push_back(*range);
    start = comma + 1;
  }
  return ranges;
}

std::vector<int> choose_pages(const PageRanges& ranges, int page_count) {
  std::vector<int> pages;
  const PageRanges all{{1, 0}};
  for (const PageRange& range : ranges.empty() ? all : ranges) {
    const int last = range.last == 0 ? page_count : std::min(range.last, page_count);
    // The number behind the last page need not be an int.
    for (std::int64_t page = range.first; page <= last; ++page) {
      pages.push_back(static_cast<int>(page));
    }
  }
  std::sort(pages.begin(), pages.end());
  pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
  return pages;
}

}  // namespace cli

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_PAGE_RANGES_H
#define ZELK_APPS_OPTIONS_PAGE_RANGES_H

#include <optional>
#include <string_view>
#include <vector>

namespace cli {

// Pages chosen by "3-7,12,20-": numbers from 1, an open end runs to the last page.
struct PageRange {
  int first = 1;
  int last = 0;  // 0: the document's last page
};
using PageRanges = std::vector<PageRange>;

// Nothing for a text that is no list of ranges, for page 0 and for ranges that run backwards.
std::optional<PageRanges> parse_page_ranges(std::string_view text);

// The chosen pages of a document, ascending, each once; all of them when `ranges` is empty.
std::vector<int> choose_pages(const PageRanges& ranges, int page_count);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_PAGE_RANGES_H

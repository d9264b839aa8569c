// SPDX-License-Identifier: Apache-2.0
#include "options/page_ranges.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using Pages = std::vector<int>;

Pages chosen(const char* text, int page_count) {
  return cli::choose_pages(cli::parse_page_ranges(text).value(), page_count);
}

TEST(PageRanges, ChooseEachPageOnceInOrder) {
  EXPECT_EQ(chosen("3-5,12,4,1", 20), (Pages{1, 3, 4, 5, 12}));
}

TEST(PageRanges, OpenEndRunsToTheLastPage) {
  EXPECT_EQ(chosen("2,5-", 7), (Pages{2, 5, 6, 7}));
}

TEST(PageRanges, PagesBeyondTheDocumentAreNoPages) {
  EXPECT_EQ(chosen("2-2000000000,9", 3), (Pages{2, 3}));
  EXPECT_EQ(chosen("4-", 3), Pages());
}

TEST(PageRanges, EndAtTheGreatestPageNumberThereIs) {
  EXPECT_EQ(chosen("2147483646-", INT_MAX), (Pages{INT_MAX - 1, INT_MAX}));
  EXPECT_EQ(chosen("2147483647", INT_MAX), Pages{INT_MAX});
}

TEST(PageRanges, NoneChosenMeansAll) {
  EXPECT_EQ(cli::choose_pages({}, 3), (Pages{1, 2, 3}));
}

TEST(PageRanges, OtherTextsAreNoRanges) {
  for (const char* text : {"", ",", "1,", ",1", "0", "0-3", "5-3", "-3", "1--3", "+1", "1-2-3", "a",
                           "1 2", "99999999999", "1-99999999999", "1.5"}) {
    EXPECT_FALSE(cli::parse_page_ranges(text)) << text;
  }
}

}  // namespace

// SPDX-License-Identifier: Apache-2.0
#include "console/columns.h"

#include <gtest/gtest.h>

namespace {

using cli::columns_of;
using cli::fit_columns;

TEST(Columns, HanCharactersTakeTwo) {
  EXPECT_EQ(columns_of("scan"), 4);
  EXPECT_EQ(columns_of("扫描"), 4);
  EXPECT_EQ(columns_of("e\u0301"), 1);
  EXPECT_EQ(columns_of("\xFF\xFE"), 2);
}

TEST(Columns, TextThatFitsStays) {
  EXPECT_EQ(fit_columns("扫描.png", 8), "扫描.png");
  EXPECT_EQ(fit_columns("", 0), "");
}

TEST(Columns, LongTextKeepsItsEndAndWholeCharacters) {
  EXPECT_EQ(fit_columns("folder/scan.png", 11), "...scan.png");
  EXPECT_EQ(fit_columns("一二三四", 7), "...三四");
  EXPECT_EQ(fit_columns("一二三四", 6), "...四");
  EXPECT_EQ(fit_columns("abcde\u0301", 4), "...e\u0301");
  EXPECT_EQ(fit_columns("abc扫\u0301", 4), "...");
  EXPECT_EQ(fit_columns("abcdef", 3), "");
}

TEST(Columns, NothingIsWiderThanAsked) {
  const std::string text = "扫描/e\u0301\xFF-long name of a document.tiff";
  for (int columns = 0; columns < 50; ++columns) {
    EXPECT_LE(columns_of(fit_columns(text, columns)), columns);
  }
}

}  // namespace

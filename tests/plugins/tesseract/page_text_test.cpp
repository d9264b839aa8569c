// SPDX-License-Identifier: Apache-2.0
#include "page_text.h"

#include <gtest/gtest.h>

#include "plugins/tesseract/PageBuilding.h"

namespace {

using namespace tesseract_engine;

TEST(PageText, LinesEndWithALineFeedAndParagraphsAreSeparatedByAnEmptyLine) {
  Page page;
  page.blocks.push_back({{}, {line({word(U"one", 0, 10)}, true), line({word(U"two", 0, 10)})}});
  page.blocks.back().lines.push_back(line({word(U"three", 0, 10)}, true));
  page.blocks.push_back({{}, {line({word(U"four", 0, 10)}, true)}});
  EXPECT_EQ(page_text(page), U"one\ntwo\n\nthree\n\nfour\n");
}

TEST(PageText, APageWithoutLinesIsEmptyText) {
  EXPECT_EQ(page_text(Page()), U"");
}

TEST(PageText, BlanksStandBetweenLatinWordsAndNotBetweenHanCharacters) {
  EXPECT_EQ(line_text(line({word(U"two", 0, 10), word(U"words", 40, 10, true)})), U"two words");
  EXPECT_EQ(line_text(line({word(U"汉", 0, 30), word(U"字", 40, 30, true)})), U"汉字");
}

TEST(PageText, ABlankBesideALatinWordIsKeptOnlyWhereOneWasSeen) {
  EXPECT_EQ(line_text(line({word(U"为", 0, 30), word(U"Linux", 40, 10, true)})), U"为 Linux");
  EXPECT_EQ(line_text(line({word(U"为", 0, 30), word(U"Linux", 40, 10)})), U"为Linux");
}

TEST(PageText, LigaturesAreWrittenAsLetters) {
  EXPECT_EQ(line_text(line({word(U"ﬁﬂe", 0, 10)})), U"fifle");
}

}  // namespace

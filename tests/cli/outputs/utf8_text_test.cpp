// SPDX-License-Identifier: Apache-2.0
#include "outputs/utf8_text.h"

#include <gtest/gtest.h>

namespace {

TEST(Utf8Text, DisplayableTextHasLineFeedsAndNoControlCharacters) {
  EXPECT_EQ(cli::displayable("a\r\nb\rc\fd\n\te"), "a\nb\nc\nd\n\te");
  EXPECT_EQ(cli::displayable(std::string("a\0b\x1B\xFF中", 8)), "a\uFFFDb\uFFFD\uFFFD中");
}

TEST(Utf8Text, HtmlSyntaxIsEscaped) {
  EXPECT_EQ(cli::html_escaped("<a href=\"'&amp;'\">"),
            "&lt;a href=&quot;&#39;&amp;amp;&#39;&quot;&gt;");
}

TEST(Utf8Text, LengthsAreThoseOfUtf16) {
  EXPECT_EQ(cli::utf16_length(""), 0U);
  EXPECT_EQ(cli::utf16_length("aé中😀"), 5U);
}

TEST(Utf8Text, CodeUnitsBecomeUtf8) {
  EXPECT_EQ(cli::utf8_of(u'a') + cli::utf8_of(u'é') + cli::utf8_of(u'中'), "aé中");
  EXPECT_EQ(cli::utf8_of(0xD83D), "\uFFFD");
}

}  // namespace

// SPDX-License-Identifier: Apache-2.0
#include "outputs/utf8_text.h"

#include <gtest/gtest.h>

namespace {

TEST(Utf8Text, KnowsCharactersFromOtherBytes) {
  for (const std::string text : {"a", "\x7F", "\u0080", "é", "߿", "ࠀ", "中", "\uFFFF", "😀",
                                 "\xF4\x8F\xBF\xBF", "\xED\x9F\xBF"}) {
    EXPECT_EQ(cli::utf8_length(text, 0), text.size()) << text;
    EXPECT_EQ(cli::utf8_length(text.substr(0, text.size() - 1), 0), 0U) << "cut short";
  }
  for (const char* text :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xE4\xB8z", "\xC3z", "\xF0\x9F\x98z"}) {
    EXPECT_EQ(cli::utf8_length(text, 0), 0U) << text;
  }
}

TEST(Utf8Text, NamesThatAreUtf8AreShownUnchanged) {
  const cli::ShownName name = cli::shown_name("a\\x41 中\n😀");
  EXPECT_EQ(name.text, "a\\x41 中\n😀");
  EXPECT_FALSE(name.is_escaped);
}

TEST(Utf8Text, OtherNamesCanBeGotBack) {
  const cli::ShownName name = cli::shown_name("\\x41\xFF\xE4\xB8中\x80");
  EXPECT_EQ(name.text, "\\\\x41\\xFF\\xE4\\xB8中\\x80");
  EXPECT_TRUE(name.is_escaped);
}

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

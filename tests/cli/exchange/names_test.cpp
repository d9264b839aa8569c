// SPDX-License-Identifier: Apache-2.0
#include "exchange/names.h"

#include <gtest/gtest.h>

namespace {

using cli::line_name;
using cli::shown_name;

TEST(Names, Utf8NamesAreShownAsTheyAre) {
  for (const char* name : {"scan.png", "扫描 1.tif", "ä\\b.pdf", "\U0001F4C4.png", ""}) {
    EXPECT_EQ(shown_name(name).text, name);
    EXPECT_FALSE(shown_name(name).escaped);
  }
}

TEST(Names, BytesThatAreNotUtf8AreEscaped) {
  const cli::ShownName shown = shown_name("扫\xFF-\xE6\x89.png");
  EXPECT_EQ(shown.text, "扫\\xFF-\\xE6\\x89.png");
  EXPECT_TRUE(shown.escaped);
}

TEST(Names, EscapedNamesTellTheirBackslashes) {
  EXPECT_EQ(shown_name("\xFF\\xFF").text, "\\xFF\\x5CxFF");
}

TEST(Names, MalformedSequencesHaveNoLength) {
  for (const char* bytes : {"\x80", "\xC0\xAF", "\xC1\x81", "\xE0\x9F\xBF", "\xED\xA0\x80",
                            "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xC3"}) {
    EXPECT_EQ(cli::utf8_character_length(bytes), 0U) << bytes;
  }
  EXPECT_EQ(cli::utf8_character_length("\xED\x9F\xBF"), 3U);
  EXPECT_EQ(cli::utf8_character_length("\xF4\x8F\xBF\xBF"), 4U);
  EXPECT_EQ(cli::utf8_character_length("\xC3\xA4z"), 2U);
}

TEST(Names, ControlCharactersDoNotReachATerminal) {
  EXPECT_EQ(line_name("a\nb\x1B[2J\x7F.png"), "a\\x0Ab\\x1B[2J\\x7F.png");
  EXPECT_EQ(line_name("a\xC2\x9B"
                      "1m"),
            "a\\xC2\\x9B1m");
  EXPECT_EQ(line_name("\x9B"
                      "1m"),
            "\\x9B1m");
  EXPECT_EQ(line_name("ä扫\xC2\xA0\xFF.png"), "ä扫\xC2\xA0\xFF.png");
}

TEST(Names, TextsOfSeveralLinesKeepThem) {
  EXPECT_EQ(cli::lines_text("a\nb\x1B\tc\n"), "a\nb\\x1B\\x09c\n");
}

}  // namespace

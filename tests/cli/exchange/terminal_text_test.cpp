// SPDX-License-Identifier: Apache-2.0
#include "exchange/terminal_text.h"

#include <gtest/gtest.h>

namespace {

// What a terminal gets of a text that comes in blocks of so many bytes.
std::string shown(const std::string& text, std::size_t block = 1000) {
  cli::TerminalText terminal;
  std::string result;
  for (std::size_t at = 0; at < text.size(); at += block) {
    result += terminal.take(std::string_view(text).substr(at, block));
  }
  return result + terminal.rest();
}

const char* const kText = "tab\there\r\nform\f feed\nä 扫描 \U0001F4C4 \xC2\xA0.\n";
const char* const kShown = "tab\there\nform\f feed\nä 扫描 \U0001F4C4 \xC2\xA0.\n";

TEST(TerminalText, LeavesTextAsItIs) {
  EXPECT_EQ(shown(kText), kShown);
}

TEST(TerminalText, ReplacesCommands) {
  EXPECT_EQ(shown("a\x1B[2Jb\x07\x7F\b"), "a\uFFFD[2Jb\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(shown("\xC2\x9B"
                  "31m"),
            "\uFFFD31m");
  EXPECT_EQ(shown("hidden\rshown"), "hidden\uFFFDshown");
  EXPECT_EQ(shown(std::string("\0", 1)), "\uFFFD");
}

TEST(TerminalText, ReplacesBytesThatAreNoCharacters) {
  EXPECT_EQ(shown("\x9B\xFF.\xE6\x89"), "\uFFFD\uFFFD.\uFFFD");
  EXPECT_EQ(shown("\xE6\x89.end\xC3"), "\uFFFD\uFFFD.end\uFFFD");
}

TEST(TerminalText, BlocksMayEndAnywhere) {
  for (std::size_t block = 1; block < 12; ++block) {
    EXPECT_EQ(shown(kText, block), kShown) << block;
    EXPECT_EQ(shown("\xC2\x9B\xF0\x9F\x93\r", block), shown("\xC2\x9B\xF0\x9F\x93\r")) << block;
  }
}

}  // namespace

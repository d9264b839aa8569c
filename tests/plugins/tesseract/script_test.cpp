// SPDX-License-Identifier: Apache-2.0
#include "script.h"

#include <gtest/gtest.h>

namespace {

using namespace tesseract_engine;

TEST(Script, HanKanaAndFullWidthFormsAreWideAndLatinIsNot) {
  for (const char32_t code : {U'汉', U'，', U'。', U'《', U'ア', U'：', char32_t{0x20000}}) {
    EXPECT_TRUE(is_wide(code)) << static_cast<unsigned>(code);
  }
  for (const char32_t code : {U'a', U'é', U'.', U'“', U'—', U'Ж', char32_t{0x10FFFF}}) {
    EXPECT_FALSE(is_wide(code)) << static_cast<unsigned>(code);
  }
}

TEST(Script, LettersOfAllScriptsAreLettersAndNothingElseIs) {
  for (const char32_t code :
       {U'a', U'Z', U'é', U'ß', U'Ж', U'汉', U'か', U'ア', U'한', U'ﬁ', U'Ａ'}) {
    EXPECT_TRUE(is_letter(code)) << static_cast<unsigned>(code);
  }
  for (const char32_t code :
       {U'7', U' ', U'.', U'×', U'“', U'—', U'①', U'、', U'〇', U'￥', U'，'}) {
    EXPECT_FALSE(is_letter(code)) << static_cast<unsigned>(code);
  }
}

TEST(Script, BlanksStandBesideLatinTextOnly) {
  EXPECT_TRUE(keeps_blank(U'a', U'b'));
  EXPECT_TRUE(keeps_blank(U'为', U'L'));
  EXPECT_TRUE(keeps_blank(U'5', U'或'));
  EXPECT_FALSE(keeps_blank(U'汉', U'字'));
  EXPECT_FALSE(keeps_blank(U's', U'、'));
  EXPECT_FALSE(keeps_blank(U'。', U'A'));
}

TEST(Script, LigaturesComeApart) {
  const auto text = [](char32_t code) { return letters({{}, {code}, 0}); };
  EXPECT_EQ(text(U'ﬀ'), U"ff");
  EXPECT_EQ(text(U'ﬁ'), U"fi");
  EXPECT_EQ(text(U'ﬂ'), U"fl");
  EXPECT_EQ(text(U'ﬃ'), U"ffi");
  EXPECT_EQ(text(U'ﬄ'), U"ffl");
  EXPECT_EQ(text(U'x'), U"x");
}

TEST(Script, Utf8OfEachLength) {
  EXPECT_EQ(to_utf8(U"aé汉\U0001F600"), "aé汉\xF0\x9F\x98\x80");
}

TEST(Script, Utf8OfSurrogatesAndBeyondUnicodeIsTheReplacementCharacter) {
  EXPECT_EQ(to_utf8({char32_t{0xD800}}), "\xEF\xBF\xBD");
  EXPECT_EQ(to_utf8({char32_t{0x110000}}), "\xEF\xBF\xBD");
}

}  // namespace

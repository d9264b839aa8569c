// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "process/MainProcess.h"

namespace {

TEST(MainProcess, ResultsAreEmptyBeforeAnyRecognition) {
  ofd::MainProcess process{};
  EXPECT_STREQ(process.get_ocr_string(), "");
  EXPECT_STREQ(process.get_ocr_string_unicode(), L"");
  EXPECT_STREQ(process.get_ocr_json_buffer(0), "");
  EXPECT_STREQ(process.get_ocr_json_buffer_unicode(0), L"");
}

TEST(MainProcess, JsonIndexOutOfRangeGivesEmptyText) {
  ofd::MainProcess process{};
  process._ocr_array_jsonbuffer = {"{1}", "{2}"};
  EXPECT_STREQ(process.get_ocr_json_buffer(1), "{2}");
  for (const int index : {-1, 2, -2147483647 - 1, 2147483647}) {
    EXPECT_STREQ(process.get_ocr_json_buffer(index), "");
    EXPECT_STREQ(process.get_ocr_json_buffer_unicode(index), L"");
  }
}

TEST(MainProcess, NarrowJsonIsTheEntryItself) {
  ofd::MainProcess process{};
  process._ocr_array_jsonbuffer = {"{1}"};
  EXPECT_EQ(process.get_ocr_json_buffer(0), process._ocr_array_jsonbuffer[0].c_str());
}

TEST(MainProcess, WideJsonHoldsOneUtf16UnitInEachCell) {
  ofd::MainProcess process{};
  process._ocr_array_jsonbuffer = {"a\xE4\xB8\xAD\xF0\x9F\x98\x80"};
  const wchar_t expected[] = {L'a', 0x4E2D, 0xD83D, 0xDE00, 0};
  EXPECT_STREQ(process.get_ocr_json_buffer_unicode(0), expected);
}

TEST(MainProcess, WideJsonOfABadIndexEmptiesTheTextBefore) {
  ofd::MainProcess process{};
  process._ocr_array_jsonbuffer = {"{1}"};
  const wchar_t* const text = process.get_ocr_json_buffer_unicode(0);
  EXPECT_EQ(text, process._json_buffer_unicode.c_str());
  const wchar_t* const empty = process.get_ocr_json_buffer_unicode(-5);
  EXPECT_STREQ(empty, L"");
  EXPECT_NE(empty, process._json_buffer_unicode.c_str());
  EXPECT_TRUE(process._json_buffer_unicode.empty());
}

TEST(MainProcess, FailedPageIsIndistinguishableFromABadIndex) {
  ofd::MainProcess process{};
  process._ocr_array_jsonbuffer = {""};
  EXPECT_STREQ(process.get_ocr_json_buffer(0), "");
  EXPECT_STREQ(process.get_ocr_json_buffer_unicode(0), L"");
}

TEST(MainProcess, InvalidUtf8InJsonBecomesQuestionMarks) {
  ofd::MainProcess process{};
  process._ocr_array_jsonbuffer = {"a\xF8z"};
  EXPECT_STREQ(process.get_ocr_json_buffer_unicode(0), L"a?z");
}

}  // namespace

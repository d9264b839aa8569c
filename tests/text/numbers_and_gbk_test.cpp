// SPDX-License-Identifier: Apache-2.0
// Decimal numbers and GBK, the conversions of text/StringFormat.h that are not between forms of
// Unicode.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "support/HeapGrowth.h"
#include "text/StringFormat.h"

namespace {

using qv::StringFormat;
using namespace std::string_literals;

std::string gbk(const std::string& utf8) {
  const std::unique_ptr<char, decltype(&std::free)> block(UTF8toANSI(utf8), &std::free);
  return block.get();
}

}  // namespace

TEST(StringFormat, NumbersParseTheStartOfAText) {
  static_assert(std::is_same_v<decltype(StringFormat::wstrtof(L"")), double>);
  EXPECT_DOUBLE_EQ(StringFormat::wstrtof(L" \t-12.5e1 mm"), -125.0);
  EXPECT_EQ(StringFormat::wstrtoi(L"  42px"), 42);
  EXPECT_EQ(StringFormat::wstrtoi(L"-7"), -7);
}

TEST(StringFormat, NumbersTextWithoutANumberIsZero) {
  EXPECT_EQ(StringFormat::wstrtof(L"\u4E2D"), 0.0);
  EXPECT_EQ(StringFormat::wstrtoi(L""), 0);
  EXPECT_EQ(StringFormat::wcstol(L"x", nullptr, 10), 0);
}

TEST(StringFormat, NumbersIntegersKeepTheLow32Bits) {
  EXPECT_EQ(StringFormat::wstrtoi(L"4294967338"), 42);
  EXPECT_EQ(StringFormat::wstrtoi(L"2147483648"), INT_MIN);
  EXPECT_EQ(StringFormat::wstrtoi(L"99999999999999999999"), -1);
}

TEST(StringFormat, NumbersWcstolNeverWritesItsEndPointer) {
  wchar_t mark = L'm';
  wchar_t* end = &mark;
  EXPECT_EQ(StringFormat::wcstol(L"0x1A", &end, 16), 26);
  EXPECT_EQ(end, &mark);
  EXPECT_EQ(mark, L'm');
  EXPECT_EQ(StringFormat::wcstol(L"0x1A", &end, 0), 26);
  EXPECT_EQ(StringFormat::wcstol(L"777", &end, 8), 511);
}

TEST(StringFormat, NumbersItostrWritesDecimalWithATerminator) {
  const std::pair<int, std::string_view> cases[] = {
      {0, "0"}, {7, "7"}, {-10, "-10"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"}};
  for (const auto& [value, text] : cases) {
    std::array<char, 13> buffer;
    buffer.fill('.');
    EXPECT_EQ(StringFormat::_itostr(value, buffer.data(), 10), static_cast<int>(text.size()));
    EXPECT_EQ(buffer.data(), text);
    EXPECT_EQ(buffer[text.size() + 1], '.');
  }
}

TEST(StringFormat, NumbersItowstrWritesDecimalWithATerminator) {
  std::array<wchar_t, 13> buffer;
  buffer.fill(L'.');
  EXPECT_EQ(StringFormat::_itowstr(INT_MIN, buffer.data(), 10), 11);
  EXPECT_EQ(std::wstring(buffer.data(), 13), L"-2147483648\0."s);
  EXPECT_EQ(StringFormat::_itowstr(0, buffer.data(), 10), 1);
  EXPECT_EQ(std::wstring(buffer.data()), L"0");
}

TEST(StringFormat, NumbersOtherRadicesWriteNothing) {
  char narrow[] = "..";
  wchar_t wide[] = L"..";
  EXPECT_EQ(StringFormat::_itostr(255, narrow, 16), 0);
  EXPECT_EQ(StringFormat::_itowstr(255, wide, 16), 0);
  EXPECT_STREQ(narrow, "..");
  EXPECT_STREQ(wide, L"..");
}

TEST(Utf8ToAnsi, GivesGbk) {
  EXPECT_EQ(gbk("Scan"), "Scan");
  EXPECT_EQ(gbk("\xE4\xB8\xAD\xE6\x96\x87"), "\xD6\xD0\xCE\xC4");
  EXPECT_EQ(gbk("\xE9\x95\x95"), "\xE9\x46");  // beyond GB 2312
}

TEST(Utf8ToAnsi, EmptyTextIsATerminatedBlock) {
  EXPECT_EQ(gbk(""), "");
  EXPECT_EQ(gbk("\0hidden"s), "");
}

TEST(Utf8ToAnsi, NothingBehindAnEmbeddedNulIsConverted) {
  const std::unique_ptr<char, decltype(&std::free)> block(UTF8toANSI("ab\0cd"s), &std::free);
  EXPECT_EQ(std::string(block.get(), 8), "ab\0\0\0\0\0\0"s);
}

TEST(Utf8ToAnsi, StopsBeforeACharacterWithoutAGbkForm) {
  EXPECT_EQ(gbk("\xE4\xB8\xAD\xF0\x9F\x98\x80\xE6\x96\x87"), "\xD6\xD0");
}

TEST(Utf8ToAnsi, StopsBeforeAMalformedOrIncompleteSequence) {
  EXPECT_EQ(gbk("ab\xFFzz"), "ab");
  EXPECT_EQ(gbk("ab\xE4\xB8"), "ab");
}

TEST(Utf8ToAnsi, LeavesNothingBehind) {
  EXPECT_LT(heap_growth(1000, [] { gbk("text"); }), 1000);
}

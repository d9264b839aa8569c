// SPDX-License-Identifier: Apache-2.0
#include "text/StringFormat.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace {

using qv::StringFormat;
using namespace std::string_literals;
using Units = std::vector<unsigned short>;

// One decoding: the code point and how many bytes or units it used.
using Step = std::pair<int, std::ptrdiff_t>;

Step decodeBytes(const std::string& bytes) {
  const char* next = bytes.data();
  const int character = StringFormat::decodeUtf8(next, bytes.data() + bytes.size());
  return {character, next - bytes.data()};
}

Step decodeUnits(const Units& units) {
  const unsigned short* next = units.data();
  const int character = StringFormat::decodeUtf16(next, units.data() + units.size());
  return {character, next - units.data()};
}

// Encoders are called at index 1, to see that they append, and once more without a buffer.
std::string encodeBytes(int character) {
  std::string out(6, '.');
  int length = 1;
  StringFormat::encodeUtf8(character, out.data(), length);
  int measured = 1;
  StringFormat::encodeUtf8(character, nullptr, measured);
  EXPECT_EQ(measured, length);
  EXPECT_EQ(out.front(), '.');
  EXPECT_EQ(out.substr(static_cast<std::size_t>(length)), std::string(6U - unsigned(length), '.'));
  return out.substr(1, static_cast<std::size_t>(length - 1));
}

Units encodeUnits(int character) {
  Units out(4, 0xEEEE);
  int length = 1;
  StringFormat::encodeUtf16(character, out.data(), length);
  int measured = 1;
  StringFormat::encodeUtf16(character, nullptr, measured);
  EXPECT_EQ(measured, length);
  EXPECT_EQ(out.front(), 0xEEEE);
  EXPECT_EQ(out.back(), 0xEEEE);
  return {out.begin() + 1, out.begin() + length};
}

constexpr unsigned short kUntouched = 0xEEEE;

// Result and buffer of utf8toutf16; the buffer keeps kUntouched where nothing was written.
std::pair<int, Units> toUnits(const std::string& bytes, int count) {
  Units out(bytes.size() + 2, kUntouched);
  const int result = StringFormat::utf8toutf16(out.data(), bytes.c_str(), count);
  while (!out.empty() && out.back() == kUntouched) out.pop_back();
  return {result, out};
}

// Result and buffer of utf16toutf8 with the given capacity; untouched bytes stay '.'.
std::pair<int, std::string> toBytes(Units units, int capacity) {
  units.push_back(0);
  std::string out(16, '.');
  const int result = StringFormat::utf16toutf8(out.data(), units.data(), capacity);
  return {result, out};
}

std::string wideToBytes(const std::wstring& wide) {
  std::string out(64, '.');
  const int result = StringFormat::wchartoutf8(out.data(), wide.c_str(), 64);
  return out.substr(0, static_cast<std::size_t>(result));
}

}  // namespace

TEST(StringFormat, DecodeUtf8ReadsOneToFourBytes) {
  EXPECT_EQ(decodeBytes("A"), Step(0x41, 1));
  EXPECT_EQ(decodeBytes("\xC3\xA9!"), Step(0xE9, 2));
  EXPECT_EQ(decodeBytes("\xE4\xB8\xAD!"), Step(0x4E2D, 3));
  EXPECT_EQ(decodeBytes("\xF0\x9F\x98\x80!"), Step(0x1F600, 4));
}

TEST(StringFormat, DecodeUtf8NulByteIsZero) {
  EXPECT_EQ(decodeBytes("\0A"s), Step(0, 1));
}

TEST(StringFormat, DecodeUtf8StopsOnAByteThatCannotContinue) {
  EXPECT_EQ(decodeBytes("\xC3\x28"), Step(-1, 1));
  EXPECT_EQ(decodeBytes("\xE4\xB8\x28"), Step(-1, 2));
  EXPECT_EQ(decodeBytes("\xF0\x9F\x98\x28"), Step(-1, 3));
  EXPECT_EQ(decodeBytes("\x85\x41"), Step(-1, 1));
}

TEST(StringFormat, DecodeUtf8StopsAtTheEnd) {
  EXPECT_EQ(decodeBytes("\xC3"), Step(-1, 1));
  EXPECT_EQ(decodeBytes("\xE4\xB8"), Step(-1, 2));
  EXPECT_EQ(decodeBytes("\xF0\x9F\x98"), Step(-1, 3));
}

TEST(StringFormat, DecodeUtf8NullEndIsNeverMet) {
  const char* next = "\xE4\xB8\xAD";
  EXPECT_EQ(StringFormat::decodeUtf8(next, nullptr), 0x4E2D);
}

TEST(StringFormat, DecodeUtf8OverlongNulIsZero) {
  EXPECT_EQ(decodeBytes("\xC0\x80"), Step(0, 2));
  EXPECT_EQ(decodeBytes("\xE0\x80\x80"), Step(0, 3));
  EXPECT_EQ(decodeBytes("\xF0\x80\x80\x80"), Step(0, 4));
}

TEST(StringFormat, DecodeUtf8AcceptsSurrogatesAndValuesBeyondUnicode) {
  EXPECT_EQ(decodeBytes("\xED\xA0\x80"), Step(0xD800, 3));
  EXPECT_EQ(decodeBytes("\xF7\xBF\xBF\xBF"), Step(0x1FFFFF, 4));
}

TEST(StringFormat, DecodeUtf8LeadBytesAreClassifiedWithoutBit0x40) {
  const std::string rest(3, '\xC1');  // any byte from 0x80 on continues
  for (int lead = 0x80; lead <= 0xFF; ++lead) {
    const int row = lead & 0x3F;  // 0x80 to 0xBF behave as 0xC0 to 0xFF
    const Step expected = row < 0x20   ? Step((lead & 0x1F) << 6 | 1, 2)
                          : row < 0x30 ? Step((lead & 0x0F) << 12 | 1 << 6 | 1, 3)
                          : row < 0x38 ? Step((lead & 0x07) << 18 | 1 << 12 | 1 << 6 | 1, 4)
                                       : Step(-1, 1);
    EXPECT_EQ(decodeBytes(static_cast<char>(lead) + rest), expected) << lead;
  }
}

TEST(StringFormat, EncodeUtf8TakesOneToFourBytesByValue) {
  EXPECT_EQ(encodeBytes(0), "\0"s);
  EXPECT_EQ(encodeBytes(0x7F), "\x7F");
  EXPECT_EQ(encodeBytes(0x80), "\xC2\x80");
  EXPECT_EQ(encodeBytes(0x7FF), "\xDF\xBF");
  EXPECT_EQ(encodeBytes(0x800), "\xE0\xA0\x80");
  EXPECT_EQ(encodeBytes(0xD800), "\xED\xA0\x80");
  EXPECT_EQ(encodeBytes(0xFFFF), "\xEF\xBF\xBF");
  EXPECT_EQ(encodeBytes(0x10000), "\xF0\x90\x80\x80");
  EXPECT_EQ(encodeBytes(0x1FFFFF), "\xF7\xBF\xBF\xBF");
}

TEST(StringFormat, EncodeUtf8DropsBitsAboveBit20) {
  EXPECT_EQ(encodeBytes(0x200041), "\xF0\x80\x81\x81");
  EXPECT_EQ(encodeBytes(-1), "\xF7\xBF\xBF\xBF");
  EXPECT_EQ(encodeBytes(INT_MIN), "\xF0\x80\x80\x80");
}

TEST(StringFormat, DecodeUtf16ReadsUnitsAndPairs) {
  EXPECT_EQ(decodeUnits({0x4E2D, 0x41}), Step(0x4E2D, 1));
  EXPECT_EQ(decodeUnits({0xE000, 0x41}), Step(0xE000, 1));
  EXPECT_EQ(decodeUnits({0xD83D, 0xDE00, 0x41}), Step(0x1F600, 2));
}

TEST(StringFormat, DecodeUtf16AnySurrogateTakesAnyUnitBehindIt) {
  EXPECT_EQ(decodeUnits({0xD800, 0x0041}), Step(0x10041, 2));
  EXPECT_EQ(decodeUnits({0xDC01, 0xD802}), Step(0x10402, 2));
  EXPECT_EQ(decodeUnits({0xDFFF, 0xFFFF}), Step(0x10FFFF, 2));
}

TEST(StringFormat, DecodeUtf16SurrogateBeforeTheEndOrAZeroIsMalformed) {
  EXPECT_EQ(decodeUnits({0xD83D}), Step(-1, 1));
  EXPECT_EQ(decodeUnits({0xDE00, 0}), Step(-1, 1));
}

TEST(StringFormat, EncodeUtf16TakesOneUnitUpTo0xFFFF) {
  EXPECT_EQ(encodeUnits(0), Units{0});
  EXPECT_EQ(encodeUnits(0xD800), Units{0xD800});
  EXPECT_EQ(encodeUnits(0xFFFF), Units{0xFFFF});
  EXPECT_EQ(encodeUnits(0x10000), (Units{0xD800, 0xDC00}));
  EXPECT_EQ(encodeUnits(0x10FFFF), (Units{0xDBFF, 0xDFFF}));
}

TEST(StringFormat, EncodeUtf16WrapsBeyondUnicode) {
  EXPECT_EQ(encodeUnits(0x110000), (Units{0xD800, 0xDC00}));
  EXPECT_EQ(encodeUnits(-1), (Units{0xDBBF, 0xDFFF}));
  EXPECT_EQ(encodeUnits(INT_MIN), (Units{0xDBC0, 0xDC00}));
}

TEST(StringFormat, Utf8ToUtf16MalformedSequencesBecomeQuestionMarks) {
  EXPECT_EQ(toUnits("\xC3\x28", 2), std::pair(2, (Units{'?', 0x28})));
  EXPECT_EQ(toUnits("\x85\x41", 2), std::pair(2, (Units{'?', 0x41})));
  EXPECT_EQ(toUnits("\xF8\xFF", 2), std::pair(2, (Units{'?', '?'})));
  EXPECT_EQ(toUnits("\xE4\xB8\xAD", 2), std::pair(2, Units{'?'}));
}

TEST(StringFormat, Utf8ToUtf16CountsBytesWithABufferAndUnitsWithout) {
  EXPECT_EQ(toUnits("A\0"s, 2), std::pair(2, (Units{0x41, 0})));
  EXPECT_EQ(StringFormat::utf8toutf16(nullptr, "A\0", 2), 1);
  EXPECT_EQ(toUnits("\xE4\xB8\xAD", 4), std::pair(4, (Units{0x4E2D, 0})));
  EXPECT_EQ(StringFormat::utf8toutf16(nullptr, "\xE4\xB8\xAD", 4), 1);
  EXPECT_EQ(StringFormat::utf8toutf16(nullptr, "\xF0\x9F\x98\x80", 4), 2);
}

TEST(StringFormat, Utf8ToUtf16WritesNoTerminatorWithoutANul) {
  EXPECT_EQ(toUnits("\xF0\x9F\x98\x80", 4), std::pair(4, (Units{0xD83D, 0xDE00})));
  EXPECT_EQ(toUnits("abc", 2), std::pair(2, (Units{'a', 'b'})));
}

TEST(StringFormat, Utf8ToUtf16StopsAtANulPlainOrOverlong) {
  EXPECT_EQ(toUnits("a\0b"s, 3), std::pair(2, (Units{'a', 0})));
  EXPECT_EQ(toUnits("a\xC0\x80"s + "b", 4), std::pair(3, (Units{'a', 0})));
  const std::string text = std::string(40, 'x') + "\0yz"s;
  EXPECT_EQ(toUnits(text, 43).first, 41);
}

TEST(StringFormat, Utf8ToUtf16NegativeCountGoesUpToTheNul) {
  EXPECT_EQ(toUnits("abc", -1), std::pair(4, (Units{'a', 'b', 'c', 0})));
  EXPECT_EQ(toUnits("", INT_MIN), std::pair(1, Units{0}));
  EXPECT_EQ(StringFormat::utf8toutf16(nullptr, "\xE4\xB8\xAD\xC3", -7), 2);
}

TEST(StringFormat, Utf8ToUtf16ZeroCountReadsAndWritesNothing) {
  EXPECT_EQ(toUnits("abc", 0), std::pair(0, Units{}));
  EXPECT_EQ(StringFormat::utf8toutf16(nullptr, nullptr, 0), 0);
}

TEST(StringFormat, Utf16ToUtf8SurrogateSwallowsTheNextUnit) {
  EXPECT_EQ(toBytes({0xD800, 0x0041}, 16), std::pair(4, "\xF0\x90\x81\x81\0..........."s));
  EXPECT_EQ(toBytes({0xD800}, 16), std::pair(1, "?\0.............."s));
}

TEST(StringFormat, Utf16ToUtf8EndsOnAWholeCharacterWithATerminatorOnlyIfItFits) {
  const Units text = {0x4E2D, 0x6587, 0x5B57};
  const std::string bytes = "\xE4\xB8\xAD\xE6\x96\x87\xE5\xAD\x97";
  EXPECT_EQ(toBytes(text, 8), std::pair(6, bytes.substr(0, 6) + ".........."));
  EXPECT_EQ(toBytes(text, 9), std::pair(9, bytes + "......."));
  EXPECT_EQ(toBytes(text, 10), std::pair(9, bytes + "\0......"s));
}

TEST(StringFormat, Utf16ToUtf8AlmostNoRoomOrNoneIsKept) {
  EXPECT_EQ(toBytes({'a'}, 0), std::pair(0, std::string(16, '.')));
  EXPECT_EQ(toBytes({'a'}, -5), std::pair(0, std::string(16, '.')));
  EXPECT_EQ(toBytes({}, 0), std::pair(0, std::string(16, '.')));
  EXPECT_EQ(toBytes({}, 1), std::pair(0, "\0..............."s));
  EXPECT_EQ(toBytes({'a', 'b'}, 1), std::pair(1, "a..............."s));
}

TEST(StringFormat, Utf16ToUtf8WithoutABufferTheCapacityIsIgnored) {
  const Units text = {0x41, 0xE9, 0x4E2D, 0xD83D, 0xDE00, 0};
  EXPECT_EQ(StringFormat::utf16toutf8(nullptr, text.data(), 0), 10);
  EXPECT_EQ(StringFormat::utf16toutf8(nullptr, text.data(), 3), 10);
}

TEST(StringFormat, Utf8ToWcharRefusesATextThatMayNotFit) {
  std::array<wchar_t, 6> cells;
  cells.fill(L'.');
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "abc", 3), 4);
  EXPECT_EQ(std::wstring(cells.data(), 6), L"......");
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "abc", -1), 4);
  EXPECT_EQ(std::wstring(cells.data(), 6), L"......");
}

TEST(StringFormat, Utf8ToWcharFillsTheRestWithZeros) {
  std::array<wchar_t, 6> cells;
  cells.fill(L'.');
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "abc", 4), 0);
  EXPECT_EQ(std::wstring(cells.data(), 6), L"abc\0.."s);
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "\xC3\xA9", 5), 0);
  EXPECT_EQ(std::wstring(cells.data(), 6), L"\u00E9\0\0\0\0."s);
}

TEST(StringFormat, Utf8ToWcharComparesBytesWithCells) {
  std::array<wchar_t, 4> cells{};
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "\xE4\xB8\xAD", 3), 4);
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "\xE4\xB8\xAD", 4), 0);
  EXPECT_EQ(cells[0], 0x4E2D);
}

TEST(StringFormat, Utf8ToWcharKeepsSurrogatePairsInTwoCells) {
  std::array<wchar_t, 5> cells{};
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "\xF0\x9F\x98\x80", 5), 0);
  EXPECT_EQ(cells[0], 0xD83D);
  EXPECT_EQ(cells[1], 0xDE00);
  EXPECT_EQ(cells[2], 0);
}

TEST(StringFormat, Utf8ToWcharNothingBehindAnOverlongNulNeedsRoom) {
  std::array<wchar_t, 4> cells;
  cells.fill(L'.');
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "a\xC0\x80 and more", 2), 3);
  EXPECT_EQ(std::wstring(cells.data(), 4), L"....");
  EXPECT_EQ(StringFormat::utf8towchar(cells.data(), "a\xC0\x80 and more", 3), 0);
  EXPECT_EQ(std::wstring(cells.data(), 4), L"a\0\0."s);
}

TEST(StringFormat, WcharToUtf8ReadsTheLow16BitsOfACell) {
  EXPECT_EQ(wideToBytes({wchar_t{0x1F600}}), "\xEF\x98\x80");
  EXPECT_EQ(wideToBytes({wchar_t{0xD83D}, wchar_t{0xDE00}}), "\xF0\x9F\x98\x80");
}

TEST(StringFormat, WcharToUtf8ACellWhoseLow16BitsAreZeroEndsTheText) {
  EXPECT_EQ(wideToBytes({L'a', wchar_t{0x10000}, L'b'}), "a");
}

TEST(StringFormat, WcharToUtf8FollowsTheCapacityRules) {
  std::string out(8, '.');
  EXPECT_EQ(StringFormat::wchartoutf8(out.data(), L"\u4E2D\u6587", 5), 3);
  EXPECT_EQ(out, "\xE4\xB8\xAD.....");
  EXPECT_EQ(StringFormat::wchartoutf8(out.data(), L"\u4E2D\u6587", 7), 6);
  EXPECT_EQ(out, "\xE4\xB8\xAD\xE6\x96\x87\0."s);
  EXPECT_EQ(StringFormat::wchartoutf8(nullptr, L"\u4E2D\u6587", 0), 6);
}

TEST(StringFormat, WcharToUtf8APathLongerThanItsBufferFillsItWithoutATerminator) {
  std::array<char, 257> path;
  path.fill('.');
  const std::wstring wide(300, L'p');
  EXPECT_EQ(StringFormat::wchartoutf8(path.data(), wide.c_str(), 256), 256);
  EXPECT_EQ(std::string(path.data(), 257), std::string(256, 'p') + '.');
}

TEST(StringFormat, StringsConvertBothWays) {
  const std::string bytes = "A\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80";
  const std::wstring wide = {L'A', wchar_t{0xE9}, wchar_t{0x4E2D}, wchar_t{0xD83D},
                             wchar_t{0xDE00}};
  EXPECT_EQ(StringFormat::strtowstr(bytes), wide);
  EXPECT_EQ(StringFormat::wstrtostr(wide), bytes);
  EXPECT_EQ(StringFormat::strtowstr(""), L"");
  EXPECT_EQ(StringFormat::wstrtostr(L""), "");
}

TEST(StringFormat, StringsEndAtAnEmbeddedZero) {
  EXPECT_EQ(StringFormat::strtowstr("ab\0cd"s), L"ab");
  EXPECT_EQ(StringFormat::wstrtostr(L"ab\0cd"s), "ab");
  EXPECT_EQ(StringFormat::wstrtostr({L'a', wchar_t{0xD800}, L'\0', L'b'}), "a?");
}

TEST(StringFormat, StringsATrailingSurrogateIsAQuestionMark) {
  EXPECT_EQ(StringFormat::wstrtostr({L'a', wchar_t{0xD83D}}), "a?");
}

TEST(StringFormat, StringsBlocksOfAsciiMeetOtherTextAtEveryOffset) {
  for (std::size_t before = 0; before < 40; ++before) {
    const std::string bytes = std::string(before, 'b') + "\xE4\xB8\xAD" + std::string(40, 'a');
    const std::wstring wide = std::wstring(before, L'b') + L'\u4E2D' + std::wstring(40, L'a');
    EXPECT_EQ(StringFormat::strtowstr(bytes), wide);
    EXPECT_EQ(StringFormat::wstrtostr(wide), bytes);
  }
}

TEST(StringFormat, StringsEndAtAZeroInsideALongRunOfAscii) {
  for (std::size_t before = 0; before < 40; ++before) {
    const std::string bytes = std::string(before, 'b') + '\0' + std::string(40, 'a');
    EXPECT_EQ(StringFormat::strtowstr(bytes), std::wstring(before, L'b'));
    for (const wchar_t zero : {wchar_t{0}, wchar_t{0x10000}}) {
      const std::wstring wide = std::wstring(before, L'b') + zero + std::wstring(40, L'a');
      EXPECT_EQ(StringFormat::wstrtostr(wide), std::string(before, 'b'));
    }
  }
}

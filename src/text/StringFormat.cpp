// SPDX-License-Identifier: Apache-2.0
#include "text/StringFormat.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>

namespace qv {
namespace {

// Most of what passes here is ASCII in long runs, the JSON around the characters. Both directions
// test this many characters at once and go one by one only through blocks that hold anything else.
constexpr std::ptrdiff_t kBlock = 16;

int clampToInt(std::size_t value) {
  return static_cast<int>(std::min<std::size_t>(value, INT_MAX));
}

unsigned unitAt(const char* text) {
  return static_cast<unsigned char>(*text);
}
unsigned unitAt(const unsigned short* text) {
  return *text;
}
unsigned unitAt(const wchar_t* text) {
  return static_cast<std::uint16_t>(*text);
}

unsigned orQuestionMark(int decoded) {
  return decoded < 0 ? '?' : static_cast<unsigned>(decoded);
}

// True when a block holds ASCII only and no zero: neither c nor c - 1 then leaves the low seven
// bits.
bool isPlainBlock(const char* text) {
  std::array<std::uint64_t, kBlock / 8> words;
  std::memcpy(words.data(), text, sizeof words);
  std::uint64_t bits = 0;
  for (const std::uint64_t word : words) bits |= word | (word - 0x0101010101010101U);
  return (bits & 0x8080808080808080U) == 0;
}

template <typename Unit>
bool isPlainBlock(const Unit* text) {
  unsigned bits = 0;
  for (std::ptrdiff_t i = 0; i < kBlock; ++i) bits |= unitAt(text + i) | (unitAt(text + i) - 1);
  return bits < 0x80;
}

template <typename To, typename From>
void copyPlainBlock(To* out, const From* text) {
  for (std::ptrdiff_t i = 0; i < kBlock; ++i) out[i] = static_cast<To>(unitAt(text + i));
}

// ---- single characters; encoders return the length and with a null destination only measure
// ----------

// Adds so many continuation bytes to the bits of the first one; -1 at the first that is none.
int decodeContinuations(int count, unsigned value, const char*& text, const char* end) {
  for (; count > 0; --count) {
    if (text == end || unitAt(text) < 0x80) return -1;
    value = value << 6 | (unitAt(text++) & 0x3F);
  }
  return static_cast<int>(value);
}

int decodeBytes(const char*& text, const char* end) {
  const unsigned lead = unitAt(text++);
  if (lead < 0x80) return static_cast<int>(lead);
  if ((lead & 0x20) == 0) return decodeContinuations(1, lead & 0x1F, text, end);
  if ((lead & 0x10) == 0) return decodeContinuations(2, lead & 0x0F, text, end);
  if ((lead & 0x08) == 0) return decodeContinuations(3, lead & 0x07, text, end);
  return -1;
}

template <typename Unit>
int decodeUnits(const Unit*& text, const Unit* end) {
  const unsigned first = unitAt(text++);
  if (first < 0xD800 || first > 0xDFFF) return static_cast<int>(first);
  if (text == end || unitAt(text) == 0) return -1;
  const unsigned second = unitAt(text++);
  return static_cast<int>(((first & 0x3FF) << 10 | (second & 0x3FF)) + 0x10000);
}

template <typename Unit>
int encodeUnits(unsigned character, Unit* out) {
  if (character <= 0xFFFF) {
    if (out) out[0] = static_cast<Unit>(character);
    return 1;
  }
  if (out) {
    const unsigned offset = character - 0x10000;
    out[0] = static_cast<Unit>(0xD800 | (offset >> 10 & 0x3FF));
    out[1] = static_cast<Unit>(0xDC00 | (offset & 0x3FF));
  }
  return 2;
}

int encodedLength(unsigned character) {
  return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

int encodeBytes(unsigned character, char* out) {
  const int length = encodedLength(character);
  if (!out) return length;
  const auto tail = [character](int shift) {
    return static_cast<char>(0x80 | (character >> shift & 0x3F));
  };
  switch (length) {
    case 1:
      out[0] = static_cast<char>(character);
      break;
    case 2:
      out[0] = static_cast<char>(0xC0 | character >> 6);
      out[1] = tail(0);
      break;
    case 3:
      out[0] = static_cast<char>(0xE0 | character >> 12);
      out[1] = tail(6);
      out[2] = tail(0);
      break;
    default:
      out[0] = static_cast<char>(0xF0 | (character >> 18 & 0x07));
      out[1] = tail(12);
      out[2] = tail(6);
      out[3] = tail(0);
  }
  return length;
}

// ---- whole texts
// -----------------------------------------------------------------------------------

struct Decoded {
  std::size_t bytes;  // read, an ending NUL included
  std::size_t units;  // produced, the zero unit not counted
};

// Converts up to the first NUL or the end; with a null destination only counts.
template <typename Unit>
Decoded bytesToUnits(Unit* out, const char* const text, const char* const end) {
  std::size_t units = 0;
  const char* next = text;
  while (next != end) {
    const char* const blockEnd = next + std::min(kBlock, end - next);
    if (blockEnd - next == kBlock && isPlainBlock(next)) {
      if (out) copyPlainBlock(out + units, next);
      units += kBlock;
      next = blockEnd;
    }
    while (next < blockEnd) {
      const int decoded = decodeBytes(next, end);
      if (decoded == 0) {
        if (out) out[units] = 0;
        return {static_cast<std::size_t>(next - text), units};
      }
      units += static_cast<std::size_t>(
          encodeUnits(orQuestionMark(decoded), out ? out + units : nullptr));
    }
  }
  return {static_cast<std::size_t>(next - text), units};
}

// Converts up to the first zero unit or the end and returns the bytes written; with a null
// destination only counts. Writes no terminator where there is no room for one.
template <typename Unit>
std::size_t unitsToBytes(char* out, std::size_t capacity, const Unit* next, const Unit* const end) {
  std::size_t count = 0;
  while (next != end && unitAt(next) != 0) {
    const Unit* const blockEnd = next + std::min(kBlock, end - next);
    if (blockEnd - next == kBlock && capacity - count >= kBlock && isPlainBlock(next)) {
      if (out) copyPlainBlock(out + count, next);
      count += kBlock;
      next = blockEnd;
    }
    while (next < blockEnd && unitAt(next) != 0) {
      const unsigned character = orQuestionMark(decodeUnits(next, end));
      if (capacity - count < static_cast<std::size_t>(encodedLength(character))) return count;
      count += static_cast<std::size_t>(encodeBytes(character, out ? out + count : nullptr));
    }
  }
  if (out && count < capacity) out[count] = 0;
  return count;
}

template <typename Unit>
int unitsToBoundedBytes(char* out, int capacity, const Unit* text, const Unit* end) {
  const std::size_t room = out ? static_cast<std::size_t>(std::max(capacity, 0)) : SIZE_MAX;
  return clampToInt(unitsToBytes(out, room, text, end));
}

std::string narrow(const wchar_t* text, const wchar_t* end) {
  const std::size_t capacity = 4 * static_cast<std::size_t>(end - text) + 1;
  const std::unique_ptr<char[]> scratch(new char[capacity]);
  return std::string(scratch.get(), unitsToBytes(scratch.get(), capacity, text, end));
}

std::string narrow(const wchar_t* text) {
  return narrow(text, text + std::wcslen(text));
}

}  // namespace

int StringFormat::decodeUtf8(const char*& pszUTF8, const char* pszUTF8End) {
  return decodeBytes(pszUTF8, pszUTF8End);
}

void StringFormat::encodeUtf8(int nUChar, char* pszUTF8, int& nUTF8Len) {
  nUTF8Len += encodeBytes(static_cast<unsigned>(nUChar), pszUTF8 ? pszUTF8 + nUTF8Len : nullptr);
}

int StringFormat::decodeUtf16(const unsigned short*& pwszUTF16, const unsigned short* pszUTF16End) {
  return decodeUnits(pwszUTF16, pszUTF16End);
}

void StringFormat::encodeUtf16(int nUChar, unsigned short* pwszUTF16, int& nUTF16Len) {
  nUTF16Len +=
      encodeUnits(static_cast<unsigned>(nUChar), pwszUTF16 ? pwszUTF16 + nUTF16Len : nullptr);
}

int StringFormat::utf8toutf16(unsigned short* pwszUTF16, const char* pszUTF8, int nUTF8Count) {
  // No sequence runs across a NUL, so an end behind the first one is never met before it.
  const char* const end =
      nUTF8Count < 0 ? pszUTF8 + std::strlen(pszUTF8) + 1 : pszUTF8 + nUTF8Count;
  const Decoded decoded = bytesToUnits(pwszUTF16, pszUTF8, end);
  return clampToInt(pwszUTF16 ? decoded.bytes : decoded.units);
}

int StringFormat::utf16toutf8(char* pszUTF8, const unsigned short* pwszUTF16, int nUTF8Count) {
  const unsigned short* end = pwszUTF16;
  while (*end != 0) ++end;
  return unitsToBoundedBytes(pszUTF8, nUTF8Count, pwszUTF16, end);
}

int StringFormat::utf8towchar(wchar_t* pwszDest, const char* pszSrc, int nWcharLen) {
  const auto capacity = static_cast<std::size_t>(std::max(nWcharLen, 0));
  const char* const end = pszSrc + std::strlen(pszSrc) + 1;
  if (static_cast<std::size_t>(end - pszSrc) > capacity) {
    // An overlong NUL may end the text early enough to fit after all.
    const std::size_t needed = bytesToUnits<wchar_t>(nullptr, pszSrc, end).bytes;
    if (needed > capacity) return clampToInt(needed);
  }
  const std::size_t units = bytesToUnits(pwszDest, pszSrc, end).units;
  std::fill(pwszDest + units, pwszDest + capacity, L'\0');
  return 0;
}

int StringFormat::wchartoutf8(char* pszDest, const wchar_t* pwszSrc, int nCharLen) {
  return unitsToBoundedBytes(pszDest, nCharLen, pwszSrc, pwszSrc + std::wcslen(pwszSrc));
}

std::wstring StringFormat::strtowstr(const std::string& s) {
  const char* const end = s.data() + s.size() + 1;
  std::wstring wide(bytesToUnits<wchar_t>(nullptr, s.data(), end).units, L'\0');
  bytesToUnits(wide.data(), s.data(), end);
  return wide;
}

std::string StringFormat::wstrtostr(const std::wstring& ws) {
  return narrow(ws.data(), ws.data() + ws.size());
}

double StringFormat::wstrtof(const wchar_t* str) {
  return std::strtod(narrow(str).c_str(), nullptr);
}

int StringFormat::wstrtoi(const wchar_t* str) {
  return wcstol(str, nullptr, 10);
}

int StringFormat::wcstol(const wchar_t* str, wchar_t** /*endptr*/, int ibase) {
  return static_cast<int>(std::strtol(narrow(str).c_str(), nullptr, ibase));
}

int StringFormat::_itostr(int val, char* buf, int nRadix) {
  if (nRadix != 10) return 0;
  char* const end = std::to_chars(buf, buf + 11, val).ptr;
  *end = '\0';
  return static_cast<int>(end - buf);
}

int StringFormat::_itowstr(int val, wchar_t* buf, int nRadix) {
  std::array<char, 12> digits;
  const int length = _itostr(val, digits.data(), nRadix);
  if (length > 0) std::copy_n(digits.data(), length + 1, buf);
  return length;
}

}  // namespace qv

char* UTF8toANSI(const std::string& text) {
  std::size_t inputLeft = std::strlen(text.c_str());
  std::size_t outputLeft = 4 * inputLeft;
  // GBK is never longer than the UTF-8 it comes from, so a zero remains behind it.
  auto* const block = static_cast<char*>(std::calloc(std::max<std::size_t>(outputLeft, 1), 1));
  if (block == nullptr) return nullptr;
  auto* const converter = iconv_open("GBK", "UTF-8");
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return block;
  char* input = const_cast<char*>(text.c_str());
  char* output = block;
  iconv(converter, &input, &inputLeft, &output, &outputLeft);
  iconv_close(converter);
  return block;
}

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TEXT_STRINGFORMAT_H
#define ZELK_TEXT_STRINGFORMAT_H

#include <string>

namespace qv {

// Conversions between UTF-8, UTF-16, wide text and decimal numbers.
//
// Wide text holds UTF-16: one code unit in each 32-bit cell, so a character outside the Basic
// Multilingual Plane takes two cells, its surrogate pair. Where wide text is read, only the low 16
// bits of a cell count.
//
// No conversion fails on malformed text: each malformed sequence becomes one question mark and the
// conversion goes on where the decoder stopped. Surrogates that stand alone in UTF-8 and overlong
// forms are not malformed; they convert as they decode, and an overlong NUL ends the text like a
// plain one.
//
// Every operation is reentrant. Text without a count ends at its first zero. Destinations must not
// overlap their sources. Results that do not fit an int are given as the greatest int.
class StringFormat {
 public:
  // Decodes one character and moves the pointer behind what was used. Returns the code point (0 to
  // 0x1FFFFF, not checked for range), 0 for a NUL byte, or -1 for a malformed sequence. The byte at
  // the pointer is always read and used; the end is compared for equality, before each further
  // byte.
  //
  // Bit 0x40 of a lead byte is not looked at, so 0x80 to 0xBF lead sequences as 0xC0 to 0xFF do. A
  // byte below 0x80 where a continuation is due is left for the next call.
  static int decodeUtf8(const char*& pszUTF8, const char* pszUTF8End);

  // Writes one character as 1 to 4 bytes at index nUTF8Len and moves the index on; with a null
  // buffer only the index moves. Values above 0xFFFF and negative ones take four bytes and lose all
  // above bit 20.
  static void encodeUtf8(int nUChar, char* pszUTF8, int& nUTF8Len);

  // Decodes one character and moves the pointer behind what was used. Returns the code point, or -1
  // for a surrogate that is followed by the end or by a zero unit; that zero stays. Any surrogate,
  // high or low, is taken as a first half, and any unit behind it as its second half. A null end is
  // never met.
  static int decodeUtf16(const unsigned short*& pwszUTF16, const unsigned short* pszUTF16End);

  // Writes one character as 1 or 2 units at index nUTF16Len and moves the index on; with a null
  // buffer only the index moves. Surrogate values are written unchanged. Negative values and those
  // above 0x10FFFF take two units and keep the 20 low bits of their distance from 0x10000.
  static void encodeUtf16(int nUChar, unsigned short* pwszUTF16, int& nUTF16Len);

  // Converts nUTF8Count bytes, or fewer if a NUL comes first; a negative count means up to the NUL.
  //
  // With a buffer: returns the number of BYTES READ, an ending NUL included. A zero unit is written
  // only for a NUL that was met. The buffer must hold one unit for each byte read; that is not
  // checked. Without one (null): returns the number of UNITS NEEDED, the zero unit not counted.
  static int utf8toutf16(unsigned short* pwszUTF16, const char* pszUTF8, int nUTF8Count);

  // Converts text that ends at its first zero unit into at most nUTF8Count bytes. Returns the bytes
  // written, the terminator not counted. Stops before the first character that does not fit and
  // then writes no terminator; a text that fills the buffer exactly has none either. With a null
  // buffer the capacity is ignored and the length needed is returned.
  static int utf16toutf8(char* pszUTF8, const unsigned short* pwszUTF16, int nUTF8Count);

  // Converts to wide text in a buffer of nWcharLen cells. Returns 0 on success, with every cell
  // behind the text set to zero. A text that takes more BYTES, terminator included, than there are
  // cells is refused: the buffer stays untouched and that number of bytes, always enough as a
  // capacity, is returned.
  static int utf8towchar(wchar_t* pwszDest, const char* pszSrc, int nWcharLen);

  // Converts wide text to UTF-8 in a buffer of nCharLen bytes, with the result and the rules about
  // terminators of utf16toutf8.
  static int wchartoutf8(char* pszDest, const wchar_t* pwszSrc, int nCharLen);

  // Conversions of whole strings; an embedded zero ends the text. They throw only when memory runs
  // out.
  static std::wstring strtowstr(const std::string& s);
  static std::string wstrtostr(const std::wstring& ws);

  // Numbers at the start of wide text, parsed as the C library does in the current locale; 0 where
  // there is none. The integer forms keep the low 32 bits of the parsed long. wcstol never writes
  // endptr.
  static double wstrtof(const wchar_t* str);
  static int wstrtoi(const wchar_t* str);
  static int wcstol(const wchar_t* str, wchar_t** endptr, int ibase);

  // Write a number in decimal with a terminator and return the characters before it, 1 to 11; the
  // buffer must hold 12. A radix other than 10 writes nothing and returns 0.
  static int _itostr(int val, char* buf, int nRadix);
  static int _itowstr(int val, wchar_t* buf, int nRadix);
};

}  // namespace qv

// Converts UTF-8, up to its first NUL, to GBK. Returns terminated text in a block that the caller
// releases with free, or null when memory runs out. Conversion stops at the first sequence that is
// malformed or has no GBK form; the text before it is returned.
char* UTF8toANSI(const std::string& text);

#endif  // ZELK_TEXT_STRINGFORMAT_H

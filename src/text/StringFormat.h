// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TEXT_STRINGFORMAT_H
#define ZELK_TEXT_STRINGFORMAT_H

#include <string>

namespace qv {

class StringFormat {
 public:
  static int decodeUtf8(const char*& pszUTF8, const char* pszUTF8End);
  static void encodeUtf8(int nUChar, char* pszUTF8, int& nUTF8Len);
  static int decodeUtf16(const unsigned short*& pwszUTF16, const unsigned short* pszUTF16End);
  static void encodeUtf16(int nUChar, unsigned short* pwszUTF16, int& nUTF16Len);
  static int utf8toutf16(unsigned short* pwszUTF16, const char* pszUTF8, int nUTF8Count);
  static int utf16toutf8(char* pszUTF8, const unsigned short* pwszUTF16, int nUTF8Count);
  static int utf8towchar(wchar_t* pwszDest, const char* pszSrc, int nWcharLen);
  static int wchartoutf8(char* pszDest, const wchar_t* pwszSrc, int nCharLen);
  static std::wstring strtowstr(const std::string& s);
  static std::string wstrtostr(const std::wstring& ws);
  static double wstrtof(const wchar_t* str);
  static int wstrtoi(const wchar_t* str);
  static int wcstol(const wchar_t* str, wchar_t** endptr, int ibase);
  static int _itostr(int val, char* buf, int nRadix);
  static int _itowstr(int val, wchar_t* buf, int nRadix);
};

}  // namespace qv

char* UTF8toANSI(const std::string& text);

#endif  // ZELK_TEXT_STRINGFORMAT_H

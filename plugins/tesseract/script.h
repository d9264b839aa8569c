// SPDX-License-Identifier: Apache-2.0
//
// The little that laying out text needs to know about code points.
#ifndef ZELK_TESSERACT_SCRIPT_H
#define ZELK_TESSERACT_SCRIPT_H

#include <string>

#include "page.h"

namespace tesseract_engine {

// True for what is set in a square: Han, kana, Hangul, full-width forms and East Asian punctuation.
bool is_wide(char32_t code);

// True for East Asian punctuation, which carries its own white space.
bool is_wide_punctuation(char32_t code);

// True for letters of any script, Han characters and kana included; false for digits, punctuation
// and symbols.
bool is_letter(char32_t code);

// True for what GBK, the encoding of searchable PDFs, holds in two bytes: the fonts of such PDFs
// draw it an em wide, everything else half an em.
bool takes_two_bytes_in_gbk(char32_t code);

// True when white space seen between these two characters is part of the text. It is between Latin
// words and between a Latin word and a Han character; it is not between Han characters nor beside
// East Asian punctuation.
bool keeps_blank(char32_t before, char32_t after);

// True when a blank of the text stands between two neighbouring words of a line.
bool blank_between(const Word& before, const Word& after);

// The characters of a word, ligatures (U+FB00 to U+FB06) as their letters.
std::u32string letters(const Character& character);

// UTF-8 of `text`; what is no Unicode scalar value becomes U+FFFD.
std::string to_utf8(const std::u32string& text);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_SCRIPT_H

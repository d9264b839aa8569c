// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_PAGE_BUILDING_H
#define ZELK_TESTS_PAGE_BUILDING_H

#include <string>
#include <utility>
#include <vector>

#include "page.h"

// A word of characters of equal width, from `left` on.
inline tesseract_engine::Word word(const std::u32string& text, int left, int character_width,
                                   bool blank_before = false) {
  tesseract_engine::Word out;
  out.blank_before = blank_before;
  out.confidence = 90;
  int x = left;
  for (const char32_t code : text) {
    out.characters.push_back({{x, 10, x + character_width, 40}, std::u32string(1, code), 91});
    x += character_width;
  }
  out.box = {left, 10, x, 40};
  return out;
}

// A line of these words, its bottom at 50.
inline tesseract_engine::Line line(std::vector<tesseract_engine::Word> words,
                                   bool starts_paragraph = false) {
  tesseract_engine::Line out;
  out.box = {words.front().box.left, 10, words.back().box.right, 50};
  out.confidence = 89.6;
  out.starts_paragraph = starts_paragraph;
  out.words = std::move(words);
  return out;
}

#endif  // ZELK_TESTS_PAGE_BUILDING_H

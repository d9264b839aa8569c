// SPDX-License-Identifier: Apache-2.0
//
// What was read on one page: blocks, their lines, words and characters, in reading order. Boxes are
// tight, in pixels of the page, origin at the top left corner, y downwards; right and bottom lie
// just outside. Confidences go from 0 to 100.
#ifndef ZELK_TESSERACT_PAGE_H
#define ZELK_TESSERACT_PAGE_H

#include <string>
#include <vector>

namespace tesseract_engine {

struct Box {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

struct Character {
  Box box;
  std::u32string text;  // one character; a ligature or a combined form may take several code points
  double confidence = 0;
};

struct Word {
  Box box;
  double confidence = 0;
  bool blank_before = false;  // white space was seen between this word and the one before it
  std::vector<Character> characters;
};

struct Line {
  Box box;
  double confidence = 0;
  bool vertical = false;          // characters run from top to bottom
  bool starts_paragraph = false;  // also true for the first line of a block
  std::vector<Word> words;
};

struct Block {
  Box box;
  std::vector<Line> lines;
};

struct Page {
  int width = 0;
  int height = 0;
  int resolution = 0;  // dots per inch, estimated
  std::string
      languages;       // the list that read the page, as Tesseract writes it: "eng", "chi_sim+eng"
  std::string reader;  // version of Tesseract
  std::vector<Block> blocks;
};

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_PAGE_H

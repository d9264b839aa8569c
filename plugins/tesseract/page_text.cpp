// SPDX-License-Identifier: Apache-2.0
#include "page_text.h"

#include "script.h"

namespace tesseract_engine {

std::u32string line_text(const Line& line) {
  std::u32string text;
  const Word* before = nullptr;
  for (const Word& word : line.words) {
    if (before != nullptr && blank_between(*before, word)) text.push_back(U' ');
    for (const Character& character : word.characters) text += letters(character);
    before = &word;
  }
  return text;
}

std::u32string page_text(const Page& page) {
  std::u32string text;
  for (const Block& block : page.blocks) {
    for (const Line& line : block.lines) {
      if (line.starts_paragraph && !text.empty()) text.push_back(U'\n');
      text += line_text(line);
      text.push_back(U'\n');
    }
  }
  return text;
}

}  // namespace tesseract_engine

// SPDX-License-Identifier: Apache-2.0
#include "worker/pdf_text_layout.h"

#include <algorithm>
#include <cstdlib>

#include "cells.h"
#include "page.h"
#include "script.h"

namespace cli {
namespace {

using tesseract_engine::Box;
using tesseract_engine::Line;
using tesseract_engine::Word;

constexpr char32_t kLineEnd = U'\n';
// What PDFium makes of a hyphen at the end of a line. No line end follows it.
constexpr char32_t kHyphenAtLineEnd = 2;

bool is_blank(char32_t code) {
  constexpr char32_t kNoBreakSpace = 0xA0;
  constexpr char32_t kIdeographicSpace = 0x3000;
  return code <= U' ' || code == 0x7F || code == kNoBreakSpace || code == kIdeographicSpace ||
         (code >= 0x2000 && code <= 0x200F) || code == 0xFEFF;
}

bool is_outside(const PdfCharacter& character, int width, int height) {
  return character.right <= 0 || character.bottom <= 0 || character.left >= width ||
         character.top >= height;
}

bool has_place(const PdfCharacter& character) {
  return character.left < character.right;
}

Box box_of(const PdfCharacter& character) {
  return {character.left, character.top, character.right, character.bottom};
}

Box united(const Box& a, const Box& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

// Gathers characters into one line after the other.
class LineBuilder {
 public:
  void add(const PdfCharacter& character) {
    const char32_t code = character.code == kHyphenAtLineEnd ? U'-' : character.code;
    if (is_blank(code)) {
      _blank_before = true;
      return;
    }
    if (_line.words.empty() || _blank_before) start_word();
    Word& word = _line.words.back();
    const Box box = box_of(character);
    word.box = word.characters.empty() ? box : united(word.box, box);
    word.characters.push_back({box, std::u32string(1, code), 100.0});
    _baselines.push_back(character.baseline);
  }

  // Also without a character: nothing is added then.
  void end_line(std::vector<Line>& lines) {
    if (!_line.words.empty()) {
      find_box();
      lines.push_back(std::move(_line));
    }
    _line = Line();
    _baselines.clear();
    _blank_before = false;
  }

 private:
  void start_word() {
    Word word;
    word.blank_before = _blank_before && !_line.words.empty();
    _line.words.push_back(word);
    _blank_before = false;
  }

  // Upright lines stand on the baseline that most of their characters share.
  void find_box() {
    _line.box = _line.words.front().box;
    for (const Word& word : _line.words) _line.box = united(_line.box, word.box);
    const Box& first = _line.words.front().characters.front().box;
    const Box& last = _line.words.back().characters.back().box;
    _line.vertical = std::abs(last.top - first.top) > std::abs(last.left - first.left);
    if (_line.vertical) return;
    const auto middle = _baselines.begin() + static_cast<std::ptrdiff_t>(_baselines.size() / 2);
    std::nth_element(_baselines.begin(), middle, _baselines.end());
    _line.box.bottom = *middle;
  }

  Line _line;
  std::vector<int> _baselines;
  bool _blank_before = false;
};

std::vector<Line> lines_of(const std::vector<PdfCharacter>& characters, int width, int height) {
  std::vector<Line> lines;
  LineBuilder builder;
  for (const PdfCharacter& character : characters) {
    if (character.code == kLineEnd) {
      builder.end_line(lines);
    } else if (is_blank(character.code) && character.code != kHyphenAtLineEnd) {
      builder.add(character);
    } else if (has_place(character) && !is_outside(character, width, height)) {
      builder.add(character);
      if (character.code == kHyphenAtLineEnd) builder.end_line(lines);
    }
  }
  builder.end_line(lines);
  return lines;
}

std::u32string text_of(const Line& line) {
  std::u32string text;
  const Word* before = nullptr;
  for (const Word& word : line.words) {
    if (before != nullptr && tesseract_engine::blank_between(*before, word)) text += U' ';
    for (const auto& character : word.characters) text += tesseract_engine::letters(character);
    before = &word;
  }
  return text + U'\n';
}

}  // namespace

std::optional<PageText> laid_out_text(const std::vector<PdfCharacter>& characters, int width,
                                      int height) {
  tesseract_engine::Block block;
  block.lines = lines_of(characters, width, height);
  if (block.lines.empty()) return std::nullopt;
  const double pitch = tesseract_engine::han_pitch({block});
  PageText result;
  for (const Line& line : block.lines) {
    result.text += tesseract_engine::to_utf8(text_of(line));
    const std::vector<OCR_CHAR> cells = tesseract_engine::advance_cells(line, pitch);
    result.characters.insert(result.characters.end(), cells.begin(), cells.end());
  }
  return result;
}

}  // namespace cli

// SPDX-License-Identifier: Apache-2.0
#include "page_reader.h"

#include <tesseract/unichar.h>

#include <algorithm>
#include <memory>

namespace tesseract_engine {
namespace {

using tesseract::PageIterator;
using tesseract::PageIteratorLevel;
using tesseract::ResultIterator;
using tesseract::RIL_BLOCK;
using tesseract::RIL_PARA;
using tesseract::RIL_SYMBOL;
using tesseract::RIL_TEXTLINE;
using tesseract::RIL_WORD;

Box box_of(const PageIterator& it, PageIteratorLevel level) {
  Box box;
  it.BoundingBox(level, &box.left, &box.top, &box.right, &box.bottom);
  return box;
}

// Where Tesseract could not tell the ink of a character from its neighbours' it reports a box
// higher than the line; the line's own box is tight.
Box clipped(const Box& box, const Box& line) {
  const Box part{std::max(box.left, line.left), std::max(box.top, line.top),
                 std::min(box.right, line.right), std::min(box.bottom, line.bottom)};
  return part.left < part.right && part.top < part.bottom ? part : box;
}

double confidence_of(const ResultIterator& it, PageIteratorLevel level) {
  return std::clamp<double>(it.Confidence(level), 0, 100);
}

bool is_vertical(const PageIterator& it) {
  tesseract::Orientation orientation{};
  tesseract::WritingDirection direction{};
  tesseract::TextlineOrder order{};
  float deskew = 0;
  it.Orientation(&orientation, &direction, &order, &deskew);
  return direction == tesseract::WRITING_DIRECTION_TOP_TO_BOTTOM ||
         orientation == tesseract::ORIENTATION_PAGE_LEFT ||
         orientation == tesseract::ORIENTATION_PAGE_RIGHT;
}

// Builds the tree of a page from a walk over its symbols.
class Builder {
 public:
  void add(const ResultIterator& it) {
    note_beginnings(it);
    Character character{box_of(it, RIL_SYMBOL), character_at(it), confidence_of(it, RIL_SYMBOL)};
    if (character.text.empty()) return;
    open(it);
    Line& line = blocks_.back().lines.back();
    character.box = clipped(character.box, line.box);
    line.words.back().characters.push_back(std::move(character));
  }

  std::vector<Block> take() { return std::move(blocks_); }

 private:
  // Asked from the inside out, because each question costs Tesseract a walk over the line.
  void note_beginnings(const ResultIterator& it) {
    if (!it.IsAtBeginningOf(RIL_WORD)) return;
    pending_word_ = true;
    if (!it.IsAtBeginningOf(RIL_TEXTLINE)) return;
    pending_line_ = true;
    if (it.IsAtBeginningOf(RIL_PARA)) pending_paragraph_ = true;
    if (it.IsAtBeginningOf(RIL_BLOCK)) pending_block_ = true;
  }

  // Nothing is opened before a character is there to be put in.
  void open(const ResultIterator& it) {
    if (pending_block_) blocks_.push_back({box_of(it, RIL_BLOCK), {}});
    std::vector<Line>& lines = blocks_.back().lines;
    if (pending_line_) {
      lines.push_back({box_of(it, RIL_TEXTLINE),
                       confidence_of(it, RIL_TEXTLINE),
                       is_vertical(it),
                       pending_paragraph_ || pending_block_,
                       {}});
      pending_paragraph_ = false;
    }
    if (pending_word_) {
      Line& line = lines.back();
      line.words.push_back({clipped(box_of(it, RIL_WORD), line.box),
                            confidence_of(it, RIL_WORD),
                            it.BlanksBeforeWord() > 0,
                            {}});
    }
    pending_block_ = pending_line_ = pending_word_ = false;
  }

  std::vector<Block> blocks_;
  bool pending_block_ = false;
  bool pending_paragraph_ = false;
  bool pending_line_ = false;
  bool pending_word_ = false;
};

}  // namespace

std::vector<Box> text_lines(tesseract::TessBaseAPI& api) {
  std::vector<Box> boxes;
  const std::unique_ptr<PageIterator> it(api.AnalyseLayout());
  if (!it) return boxes;
  do {
    const Box box = box_of(*it, RIL_TEXTLINE);
    if (box.right > box.left && box.bottom > box.top) boxes.push_back(box);
  } while (it->Next(RIL_TEXTLINE));
  return boxes;
}

std::u32string character_at(const ResultIterator& it) {
  const std::unique_ptr<char[]> utf8(it.GetUTF8Text(RIL_SYMBOL));
  std::u32string text;
  if (!utf8) return text;
  for (const auto code : tesseract::UNICHAR::UTF8ToUTF32(utf8.get())) {
    if (code > ' ') text.push_back(static_cast<char32_t>(code));
  }
  return text;
}

std::vector<Block> read_blocks(tesseract::TessBaseAPI& api) {
  Builder builder;
  const std::unique_ptr<ResultIterator> it(api.GetIterator());
  if (it && !it->Empty(RIL_SYMBOL)) {
    do {
      builder.add(*it);
    } while (it->Next(RIL_SYMBOL));
  }
  return builder.take();
}

}  // namespace tesseract_engine

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESSERACT_PAGE_READER_H
#define ZELK_TESSERACT_PAGE_READER_H

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <string>
#include <vector>

#include "page.h"

namespace tesseract_engine {

// The boxes of the text lines that layout analysis finds on the page that `api` holds, in its
// order.
std::vector<Box> text_lines(tesseract::TessBaseAPI& api);

// The character at which `it` stands, white space removed.
std::u32string character_at(const tesseract::ResultIterator& it);

// What `api` has recognised. Words, lines and blocks without a character are left out.
std::vector<Block> read_blocks(tesseract::TessBaseAPI& api);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_PAGE_READER_H

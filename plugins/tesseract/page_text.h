// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESSERACT_PAGE_TEXT_H
#define ZELK_TESSERACT_PAGE_TEXT_H

#include <string>

#include "page.h"

namespace tesseract_engine {

// The text of a line without a line end; ligatures as their letters, blanks as keeps_blank() says.
std::u32string line_text(const Line& line);

// The text of the page: each line ended by a line feed, an empty line between paragraphs. Empty
// when nothing was read.
std::u32string page_text(const Page& page);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_PAGE_TEXT_H

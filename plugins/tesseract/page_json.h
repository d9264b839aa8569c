// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESSERACT_PAGE_JSON_H
#define ZELK_TESSERACT_PAGE_JSON_H

#include <cstddef>
#include <string>

#include "page.h"

namespace tesseract_engine {

// The page as JSON text in UTF-8, as docs/engine-json.md describes it, of at most `limit` bytes.
// Where it would be longer it leaves out characters, then words; empty when even lines are too
// long.
std::string page_json(const Page& page, std::size_t limit);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_PAGE_JSON_H

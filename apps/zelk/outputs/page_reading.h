// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OUTPUTS_PAGE_READING_H
#define ZELK_APPS_OUTPUTS_PAGE_READING_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "exchange/page_record.h"

namespace cli {

// A piece of a page's text and where it lies on the picture.
struct PlacedText {
  // UTF-16 code units of the text, as scripts count them; no length where the text does not hold
  // what lies there.
  std::size_t start = 0;
  std::size_t length = 0;
  std::array<std::int64_t, 4> box = {};  // left, top, right, bottom in pixels, on the picture
  int confidence = -1;                   // 0 to 100; -1 when unknown
};

// What was read on a page, for people.
struct PageReading {
  std::string text;      // displayable UTF-8
  std::string language;  // tag for HTML; empty when unknown
  std::int64_t width = 0;
  std::int64_t height = 0;  // pixels, of the picture that the boxes belong to
  std::vector<PlacedText> words;
  std::vector<PlacedText> characters;
};

// Of the engine's JSON where that has the form of docs/engine-json.md, else of the record's text
// and characters.
PageReading read_page(const PageRecord& record);

}  // namespace cli

#endif  // ZELK_APPS_OUTPUTS_PAGE_READING_H

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_READ_DOCUMENT_H
#define ZELK_FUZZ_READ_DOCUMENT_H

#include <FreeImage.h>

#include <algorithm>

#include "file_in_memory.h"
#include "readers/basereader.h"

// Reads a file's first pages with a reader of the given kind, the way the page loop does, and lets
// go of everything. Every page has to be a bitmap of 24 bits whose pixels are all there.
template <typename Reader>
void read_document(std::string_view bytes, int dots_per_inch, int most_pages) {
  FreeImage_SetOutputMessage(nullptr);
  basereader* const reader = new Reader;
  const int pages = reader->load_image(file_in_memory(bytes).c_str(), dots_per_inch);
  for (int page = 0; page < std::min(pages, most_pages); ++page) {
    FIBITMAP* const dib = reader->get_cur_image(page);
    if (dib == nullptr) continue;
    require(FreeImage_GetBPP(dib) == 24 && FreeImage_GetBits(dib) != nullptr, "a page is 24-bit");
    std::uint64_t sum = 0;
    for (unsigned row = 0; row < FreeImage_GetHeight(dib); ++row) {
      const BYTE* const line = FreeImage_GetScanLine(dib, static_cast<int>(row));
      for (unsigned i = 0; i < 3 * FreeImage_GetWidth(dib); ++i) sum += line[i];
    }
    require(sum <= std::uint64_t{765} * FreeImage_GetWidth(dib) * FreeImage_GetHeight(dib),
            "pixels can be read");
    FreeImage_Unload(dib);
  }
  require(reader->get_cur_image(-1) == nullptr, "there is no page before the first");
  require(reader->get_cur_image(std::max(pages, 0)) == nullptr, "nor behind the last");
  reader->free_image();
  delete_reader(reader);
}

#endif  // ZELK_FUZZ_READ_DOCUMENT_H

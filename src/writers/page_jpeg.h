// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_WRITERS_PAGE_JPEG_H
#define ZELK_WRITERS_PAGE_JPEG_H

#include <string>

struct FIBITMAP;

// The JPEG that a searchable PDF holds of a 24-bit page bitmap: FreeImage's encoder with its own
// settings; the header carries the bitmap's resolution in dots per inch. Empty when the bitmap
// cannot become one, for example because a side is longer than 65,500 pixels.
std::string encode_page_jpeg(FIBITMAP* dib);

#endif  // ZELK_WRITERS_PAGE_JPEG_H

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PROCESS_PAGE_RASTER_H
#define ZELK_PROCESS_PAGE_RASTER_H

#include "image/MDIB.h"

struct FIBITMAP;

namespace ofd {

// A page bitmap's dots per metre, truncated to a whole number (200 dots per inch are 7874).
// Resolutions beyond an int saturate.
unsigned dots_per_meter(int dots_per_inch);

// Writes a resolution into both axes of a page bitmap.
void stamp_resolution(FIBITMAP* dib, int dots_per_inch);

// Copies a 24-bit page bitmap into the raster that the engine is handed: 24 bits a pixel, bytes
// unchanged, top row first, a resolution of 300 whatever the bitmap's is. False when no raster can
// be made of it.
bool page_to_raster(FIBITMAP* dib, zelk::MDIB& image);

}  // namespace ofd

#endif  // ZELK_PROCESS_PAGE_RASTER_H

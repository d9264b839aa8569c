// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_PREPARATION_H
#define ZELK_APPS_WORKER_PICTURE_PREPARATION_H

#include "worker/document_pages.h"
#include "worker/picture_header.h"

namespace cli {

// What is recognised of a decoded picture: a new bitmap of 24 bits a pixel, upright by the header's
// orientation. A plain picture comes out as FreeImage_ConvertTo24Bits makes it. Beyond that:
// - transparency lies on white; a picture without a single opaque pixel is taken to have none;
// - of 16-bit samples the high byte counts;
// - floating point samples are taken from 0 (black) to 1 (white), those that reach beyond and whole
//   numbers of other kinds from their least to their largest.
// Throws UnreadablePage for a kind of picture that has no colours, std::bad_alloc without memory.
PageBitmap prepared_picture(FIBITMAP* decoded, const PictureHeader& header);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_PREPARATION_H

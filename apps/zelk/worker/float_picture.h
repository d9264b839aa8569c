// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_FLOAT_PICTURE_H
#define ZELK_APPS_WORKER_FLOAT_PICTURE_H

#include "worker/document_pages.h"

namespace cli {

// A picture of floating point samples (grey, RGB, RGBA) with 8 bits a sample: 24 bits a pixel, 32
// with transparency. 0 becomes 0 and 1 becomes 255 when all colours lie between; otherwise the
// least becomes 0 and the largest 255. Samples that are no numbers become 0.
PageBitmap small_samples_of_floats(FIBITMAP* picture);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_FLOAT_PICTURE_H

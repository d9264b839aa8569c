// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_ANY_PAGE_H
#define ZELK_FUZZ_ANY_PAGE_H

#include <FreeImage.h>

#include <memory>
#include <vector>

#include "fuzz_input.h"
#include "writers/pdfwriter.h"

// Pages that an input describes.

using OwnedBitmap = std::unique_ptr<FIBITMAP, decltype(&FreeImage_Unload)>;

// Up to 11 characters, with edges of small numbers or of any.
std::vector<OCR_CHAR> any_characters(FuzzInput& input);

// At most 20 by 20 pixels, with any resolution.
OwnedBitmap any_bitmap(FuzzInput& input);

// The JPEG of a bitmap with any size told beside it; now and then one that is cut short and has to
// be refused.
PagePicture any_picture(FuzzInput& input, FIBITMAP* dib);

#endif  // ZELK_FUZZ_ANY_PAGE_H

// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PDF_HANDLES_H
#define ZELK_READERS_PDF_HANDLES_H

#include <memory>

#include "readers/pdfium_api.h"

// What PDFium hands out, given back at the end of its scope.
namespace pdf {

template <auto Release>
struct Releaser {
  template <class Handle>
  void operator()(Handle* handle) const {
    Release(handle);
  }
};
using Page = std::unique_ptr<fpdf_page_t__, Releaser<FPDF_ClosePage>>;
using TextPage = std::unique_ptr<fpdf_textpage_t__, Releaser<FPDFText_ClosePage>>;
using Bitmap = std::unique_ptr<fpdf_bitmap_t__, Releaser<FPDFBitmap_Destroy>>;

}  // namespace pdf

#endif  // ZELK_READERS_PDF_HANDLES_H
